#include "SupportingClasses/ORBFSLoader.h"

#include "Platform/ColonPath.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <dlfcn.h>

namespace {

std::string PlugIn(const std::string& name) {
    return std::filesystem::read_symlink("/proc/self/exe").replace_filename("PlugIns/" + name).string();
}

bool IsInMemory(const std::string& path) {
    void* const handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) {
        ::dlclose(handle);
    }
    return handle != nullptr;
}

/// A hold of the test's own, so that the calls can be read after the loader has released the library.
class CallReader {
public:
    explicit CallReader(const std::string& path) : m_library(SharedLibrary::Load(path)) {}
    [[nodiscard]] std::string Calls() const { return m_library.Find<const char* (*)()>("BundleCalls")(); }

private:
    SharedLibrary m_library;
};

struct Loaded {
    std::unique_ptr<SharedLibrary> bundle;
    ORBFSLoader::CleanupFunc cleanup = nullptr;
    void* mainObject = nullptr;
};

Loaded Load(const std::string& path) {
    Loaded loaded;
    loaded.mainObject = &loaded;
    ORBFSLoader::LoadLibrary(path.c_str(), loaded.bundle, loaded.cleanup, loaded.mainObject);
    return loaded;
}

}  // namespace

TEST(ORBFSLoaderTest, EachKindOfLibraryEndsAsItsEntryPointsSay) {
    struct Case {
        const char* name;
        bool staysLoaded;
        bool hasObject;
        bool hasCleanup;
        const char* calls;
    };
    for (const Case& c : {Case{"Good.so", true, true, true, "init object "},
                          {"WithoutCleanup.so", true, true, false, "init object "},
                          {"WithoutInit.so", true, false, false, ""},
                          {"Refusing.so", false, false, false, "init "},
                          {"NullObject.so", false, false, true, "init object "},
                          {"WithoutObject.so", false, false, true, "init "}}) {
        SCOPED_TRACE(c.name);
        const std::string path = PlugIn(c.name);
        {
            const CallReader reader(path);
            const Loaded loaded = Load(path);
            EXPECT_EQ(loaded.bundle != nullptr, c.staysLoaded);
            EXPECT_EQ(loaded.mainObject != nullptr, c.hasObject);
            EXPECT_EQ(loaded.cleanup != nullptr, c.hasCleanup);
            EXPECT_EQ(reader.Calls(), c.calls);
        }
        EXPECT_FALSE(IsInMemory(path));
        EXPECT_EQ(Load(path).bundle != nullptr, c.staysLoaded) << "without another hold on it";
        EXPECT_FALSE(IsInMemory(path));
    }
}

TEST(ORBFSLoaderTest, FindsLibrariesByNativePathColonPathAndBareName) {
    const std::string native = PlugIn("Good.so");
    for (const std::string& path : {native, ColonPath::FromNative(native).value(), std::string("Good.so")}) {
        const Loaded loaded = Load(path);
        EXPECT_NE(loaded.mainObject, nullptr) << path;
        EXPECT_TRUE(IsInMemory(native)) << path;
    }
}

TEST(ORBFSLoaderTest, AMissingFileLeavesTheBundleAndAFileThatIsNoLibraryClearsIt) {
    const TemporaryFolder folder;
    std::ofstream(folder.Native("Text.so")) << "no library";
    Loaded loaded = Load("Good.so");
    const SharedLibrary* const before = loaded.bundle.get();
    for (const std::string& path : {folder.Native("Missing.so"), folder.Colon("Missing.so"),
                                    std::string("No such volume:Good.so"), std::string("Missing.so")}) {
        ORBFSLoader::LoadLibrary(path.c_str(), loaded.bundle, loaded.cleanup, loaded.mainObject);
        EXPECT_EQ(loaded.bundle.get(), before) << path;
        EXPECT_EQ(loaded.mainObject, nullptr) << path;
    }
    ORBFSLoader::LoadLibrary(nullptr, loaded.bundle, loaded.cleanup, loaded.mainObject);
    EXPECT_EQ(loaded.bundle.get(), before);
    ORBFSLoader::LoadLibrary(folder.Native("Text.so").c_str(), loaded.bundle, loaded.cleanup, loaded.mainObject);
    EXPECT_EQ(loaded.bundle, nullptr);
    EXPECT_EQ(loaded.mainObject, nullptr);
}

TEST(ORBFSLoaderTest, UnloadingShutsEachLibraryDownOnce) {
    const CallReader client(PlugIn("Good.so"));
    const CallReader admin(PlugIn("WithoutInit.so"));
    Loaded good = Load("Good.so");
    ORBFSLoader::t_orbfsBundleRef = std::move(good.bundle);
    ORBFSLoader::t_orbfsCleanupFunc = good.cleanup;
    ORBFSLoader::t_orbfsClientPtr = static_cast<ORBFSClient*>(good.mainObject);
    // The place of the second library is taken by one that was never started, after one that was.
    Loaded second = Load("NullObject.so");
    ASSERT_NE(second.cleanup, nullptr);
    ORBFSLoader::LoadLibrary("WithoutInit.so", second.bundle, second.cleanup, second.mainObject);
    ORBFSLoader::t_orbfsAdminBundleRef = std::move(second.bundle);
    ORBFSLoader::t_orbfsAdminCleanupFunc = second.cleanup;

    for (int call = 1; call <= 2; ++call) {
        ORBFSLoader::UnLoadORBFSLibrary();
        EXPECT_EQ(ORBFSLoader::t_orbfsBundleRef, nullptr);
        EXPECT_EQ(ORBFSLoader::t_orbfsClientPtr, nullptr);
        EXPECT_EQ(ORBFSLoader::t_orbfsAdminBundleRef, nullptr);
        EXPECT_EQ(client.Calls(), "init object cleanup ");
        EXPECT_EQ(admin.Calls(), "");
        EXPECT_EQ(ORBFSLoader::t_orbfsCleanupFunc, good.cleanup) << "kept, and not used while nothing is loaded";
    }
}

TEST(ORBFSLoaderTest, OnlyAFileThatRootAloneCanChangeIsTrusted) {
    EXPECT_EQ(ORBFSLoader::RootsOwnFile("/proc/self/no such file"), std::nullopt);
    EXPECT_NE(ORBFSLoader::RootsOwnFile("/bin/sh"), std::nullopt);

    const TemporaryFolder folder;  // below a folder in which everybody may write
    std::ofstream(folder.Native("Own.so")) << "mine";
    EXPECT_EQ(ORBFSLoader::RootsOwnFile(folder.Native("Own.so")), std::nullopt);
    std::filesystem::create_symlink("/bin/sh", folder.Native("Link.so"));
    EXPECT_EQ(ORBFSLoader::RootsOwnFile(folder.Native("Link.so")), std::filesystem::canonical("/bin/sh").string())
        << "what is loaded is the file behind the link, which can be exchanged";
}

TEST(ORBFSLoaderTest, WithoutInstalledLibrariesEverythingStaysNull) {
    if (std::filesystem::exists(ORBFSLoader::kClientPath) || std::filesystem::exists(ORBFSLoader::kAdminPath)) {
        GTEST_SKIP() << "the shared-storage client is installed here";
    }
    ORBFSLoader::LoadORBFSLibrary();
    EXPECT_EQ(ORBFSLoader::t_orbfsBundleRef, nullptr);
    EXPECT_EQ(ORBFSLoader::t_orbfsClientPtr, nullptr);
    EXPECT_EQ(ORBFSLoader::t_orbfsAdminBundleRef, nullptr);
    EXPECT_EQ(ORBFSLoader::t_orbfsAdminPtr, nullptr);
}
