#include "SupportingClasses/ORBFSLoader.h"

#include "Platform/ColonPath.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

TEST(ORBFSLoaderTest, EachKindOfLibraryEndsAsItsEntryPointsSay) {
    using Loader = ORBFSLoader;
    // Whether the library stays loaded, has an object and a cleanup; its calls when it is loaded and unloaded twice.
    for (const auto& [name, staysLoaded, hasObject, hasCleanup, calls] :
         {std::tuple{"Good.so", true, true, true, "init object init object cleanup cleanup "},
          {"WithoutCleanup.so", true, true, false, "init object init object "},
          {"WithoutInit.so", true, false, false, ""},
          {"Refusing.so", false, false, false, "init init "},
          {"NullObject.so", false, false, true, "init object init object "},
          {"WithoutObject.so", false, false, true, "init init "}}) {
        const std::string native =
            std::filesystem::read_symlink("/proc/self/exe").replace_filename(std::string("PlugIns/") + name);
        for (const std::string& path : {native, ColonPath::FromNative(native).value(), std::string(name)}) {
            SCOPED_TRACE(path);
            // Reads the calls after the loader has let go; had it not, those of the round before would be there too.
            const SharedLibrary hold = SharedLibrary::Load(native);
            ASSERT_TRUE(hold.IsLoaded());
            void* object = &object;
            Loader::t_orbfsCleanupFunc = Loader::t_orbfsAdminCleanupFunc = [] { ADD_FAILURE() << "an earlier one's"; };
            Loader::LoadLibrary(path.c_str(), Loader::t_orbfsAdminBundleRef, Loader::t_orbfsAdminCleanupFunc, object);
            Loader::LoadLibrary(path.c_str(), Loader::t_orbfsBundleRef, Loader::t_orbfsCleanupFunc, object);
            EXPECT_EQ(Loader::t_orbfsBundleRef != nullptr, staysLoaded);
            EXPECT_EQ(object != nullptr, hasObject);
            EXPECT_EQ(Loader::t_orbfsCleanupFunc != nullptr, hasCleanup);
            Loader::UnLoadORBFSLibrary();
            Loader::UnLoadORBFSLibrary();
            EXPECT_STREQ(hold.Find<const char* (*)()>("BundleCalls")(), calls);
        }
    }
}

TEST(ORBFSLoaderTest, AMissingFileLeavesTheBundleAndAFileThatIsNoLibraryClearsIt) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("Text.so")) << "no library";
    for (const std::string& path : {folder.Native("Text.so"), folder.Native("Missing.so"), folder.Colon("Missing.so"),
                                    std::string("Nowhere:Good.so"), std::string("Missing.so")}) {
        auto bundle = std::make_unique<SharedLibrary>();
        ORBFSLoader::CleanupFunc cleanup = nullptr;
        void* object = &cleanup;
        ORBFSLoader::LoadLibrary(path.c_str(), bundle, cleanup, object);
        EXPECT_EQ(bundle == nullptr, path == folder.Native("Text.so")) << path;
        EXPECT_EQ(object, nullptr) << path;
    }
}

TEST(ORBFSLoaderTest, OnlyAFileThatRootAloneCanChangeIsTrusted) {
    const TemporaryFolder folder;  // below a folder in which everybody may write
    std::ofstream(folder.Native("Own.so")) << "mine";
    std::filesystem::create_symlink("/bin/sh", folder.Native("Link.so"));
    EXPECT_EQ(ORBFSLoader::RootsOwnFile(folder.Native("Own.so")), std::nullopt);
    EXPECT_EQ(ORBFSLoader::RootsOwnFile("/proc/self/no such file"), std::nullopt);
    EXPECT_EQ(ORBFSLoader::RootsOwnFile(folder.Native("Link.so")), std::filesystem::canonical("/bin/sh").string());
}
