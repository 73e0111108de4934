#include "Framework/Base/EmbeddedResources.h"

#include <algorithm>

std::string_view FindEmbeddedResource(std::string_view name) {
    const auto resources = EmbeddedResources();
    const auto found = std::ranges::find(resources, name, &EmbeddedResource::name);
    return found == resources.end() ? std::string_view{} : found->content;
}
