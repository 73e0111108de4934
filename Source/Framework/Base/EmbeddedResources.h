#pragma once

#include <span>
#include <string_view>

/// A file of the Resources folder as it was compiled into the program.
struct EmbeddedResource {
    std::string_view name;     ///< Its path below Resources/, with forward slashes: "Strings/200.txt".
    std::string_view content;  ///< Its bytes, unchanged; they live as long as the program.
};

/// All resources of the program, in the order of the build's list. Callable from any thread.
[[nodiscard]] std::span<const EmbeddedResource> EmbeddedResources();

/// The content of one resource by its path below Resources/. The view has a null data() when there is no such
/// resource; an empty file has a size of 0 and a data() that is not null. Callable from any thread.
[[nodiscard]] std::string_view FindEmbeddedResource(std::string_view name);
