#pragma once

#include "Platform/SharedLibrary.h"

#include <memory>
#include <optional>
#include <string>

class ORBFSClient;
class ORBFSAdmin;

/// The shared-storage system's two client libraries, which are installed apart from the program. Each is
///
///     not loaded -> loaded with a main object -> not loaded again,
///
/// or loaded without a main object when it has no "MacDLLInit". A library that is missing or refuses leaves its members
/// null and is no error: the program then has no shared-storage client.
///
/// Not locked: the main thread loads, and the main thread or the shutdown thread unloads, one after the other.
class ORBFSLoader {
public:
    using CleanupFunc = void (*)();

    static constexpr const char* kClientPath = "/usr/lib/quarn/ORBFS_X.so";
    static constexpr const char* kAdminPath = "/usr/lib/quarn/ORBFSAdmin_X.so";

    ORBFSLoader() = delete;

    /// Loads and starts both libraries from their fixed places, where only what root alone could have put there counts.
    static void LoadORBFSLibrary();

    /// Shuts down and releases what is loaded; a second call does nothing.
    static void UnLoadORBFSLibrary();

    /// Loads and starts one library. `path` is a colon path, a native path (it has a '/' and no ':'), or the name of a
    /// file in the PlugIns folder beside the program. `mainObject` becomes the library's main object, or null. `bundle`
    /// stays as it is when there is no such file, and is null after any other failure except a missing "MacDLLInit".
    /// `cleanup` becomes the function that is to be called before `bundle` is released, null when there is none.
    static void LoadLibrary(const char* path, std::unique_ptr<SharedLibrary>& bundle, CleanupFunc& cleanup,
                            void*& mainObject);

    /// The file behind all links, when nobody but root can change it or any folder on the way to it; none otherwise.
    [[nodiscard]] static std::optional<std::string> RootsOwnFile(const std::string& nativePath);

    static inline std::unique_ptr<SharedLibrary> t_orbfsBundleRef;
    static inline CleanupFunc t_orbfsCleanupFunc = nullptr;  ///< good only while the library is loaded
    static inline ORBFSClient* t_orbfsClientPtr = nullptr;   ///< the library's own
    static inline std::unique_ptr<SharedLibrary> t_orbfsAdminBundleRef;
    static inline CleanupFunc t_orbfsAdminCleanupFunc = nullptr;
    static inline ORBFSAdmin* t_orbfsAdminPtr = nullptr;
};
