#include "Programs/CommandLine/TypedPath.h"

#include "Platform/ColonPath.h"

#include <filesystem>
#include <system_error>

namespace {

bool IsNative(std::string_view typed) {
    return typed.starts_with('/') || typed.starts_with("./") || typed.starts_with("../") ||
           typed.find(':') == std::string_view::npos;
}

std::string Absolute(std::string_view native) {
    std::error_code failed;
    const std::filesystem::path absolute = std::filesystem::absolute(native, failed);
    return failed ? std::string(native) : absolute.string();
}

}  // namespace

std::string BothForms(const std::string& colon, const std::optional<std::string>& native) {
    if (!native || colon.empty()) {
        return colon.empty() ? native.value_or("") : colon;
    }
    return colon + " (" + *native + ")";
}

std::string TypedPath::Text() const {
    return BothForms(colon, native);
}

TypedPath ResolveTypedPath(std::string_view typed) {
    TypedPath path{.colon = std::string(typed), .native = std::nullopt};
    if (IsNative(typed)) {
        const std::string absolute = Absolute(typed);
        path.colon = ColonPath::FromNative(absolute).value_or("");
        path.native = absolute;
    }
    if (!path.colon.empty()) {
        path.native = ColonPath::ToNative(path.colon);
    }
    return path;
}
