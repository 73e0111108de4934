#include "SupportingClasses/ORBFSLoader.h"

#include "Platform/ColonPath.h"
#include "Platform/FileSystem.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>

namespace {

using InitFunc = bool (*)();
using MainObjectFunc = void* (*)();

std::optional<std::string> PlugInPath(std::string_view name) {
    std::error_code failed;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", failed);
    if (failed) {
        return std::nullopt;
    }
    return (program.parent_path() / "PlugIns" / name).string();
}

std::optional<std::string> NativePathOf(std::string_view path) {
    if (path.find(':') != std::string_view::npos) {
        return ColonPath::ToNative(path);
    }
    return path.find('/') != std::string_view::npos ? std::string(path) : PlugInPath(path);
}

bool OnlyRootCanChange(const std::filesystem::path& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && status.st_uid == 0 && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

void Unload(std::unique_ptr<SharedLibrary>& bundle, ORBFSLoader::CleanupFunc cleanup) {
    if (bundle != nullptr && cleanup != nullptr) {
        cleanup();
    }
    bundle.reset();
}

/// Loads from a fixed place into `bundle`; returns the main object.
void* LoadInstalled(const char* path, std::unique_ptr<SharedLibrary>& bundle, ORBFSLoader::CleanupFunc& cleanup) {
    void* mainObject = nullptr;
    if (const auto file = ORBFSLoader::RootsOwnFile(path)) {
        ORBFSLoader::LoadLibrary(file->c_str(), bundle, cleanup, mainObject);
    }
    return mainObject;
}

}  // namespace

void ORBFSLoader::LoadORBFSLibrary() {
    t_orbfsClientPtr = static_cast<ORBFSClient*>(LoadInstalled(kClientPath, t_orbfsBundleRef, t_orbfsCleanupFunc));
    t_orbfsAdminPtr =
        static_cast<ORBFSAdmin*>(LoadInstalled(kAdminPath, t_orbfsAdminBundleRef, t_orbfsAdminCleanupFunc));
}

void ORBFSLoader::UnLoadORBFSLibrary() {
    Unload(t_orbfsBundleRef, t_orbfsCleanupFunc);
    t_orbfsClientPtr = nullptr;
    Unload(t_orbfsAdminBundleRef, t_orbfsAdminCleanupFunc);
    t_orbfsAdminPtr = nullptr;
}

void ORBFSLoader::LoadLibrary(const char* path, std::unique_ptr<SharedLibrary>& bundle, CleanupFunc& cleanup,
                              void*& mainObject) {
    mainObject = nullptr;
    const std::optional<std::string> nativePath = path == nullptr ? std::nullopt : NativePathOf(path);
    if (!nativePath || !FileSystem::Exists(*nativePath)) {
        return;
    }
    bundle = std::make_unique<SharedLibrary>(SharedLibrary::Load(*nativePath));
    // A library that stays loaded without having been started must not be shut down by the function of an earlier one.
    cleanup = nullptr;
    if (!bundle->IsLoaded()) {
        bundle.reset();
        return;
    }
    const auto init = bundle->Find<InitFunc>("MacDLLInit");
    if (init == nullptr) {
        return;
    }
    if (!init()) {
        bundle.reset();
        return;
    }
    cleanup = bundle->Find<CleanupFunc>("MacDLLCleanup");
    const auto getMainObject = bundle->Find<MainObjectFunc>("GetSharedLibraryMainObject");
    mainObject = getMainObject == nullptr ? nullptr : getMainObject();
    if (mainObject == nullptr) {
        bundle.reset();
    }
}

std::optional<std::string> ORBFSLoader::RootsOwnFile(const std::string& nativePath) {
    std::error_code failed;
    const std::filesystem::path file = std::filesystem::canonical(nativePath, failed);
    if (failed) {
        return std::nullopt;
    }
    for (std::filesystem::path path = file; OnlyRootCanChange(path); path = path.parent_path()) {
        if (path == path.root_path()) {
            return file.string();
        }
    }
    return std::nullopt;
}
