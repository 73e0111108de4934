#include "Framework/Base/EmbeddedResources.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string ContentOfResourceFile(std::string_view name) {
    const std::ifstream file(GAUGELINE_RESOURCES_DIRECTORY + ('/' + std::string(name)), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

TEST(EmbeddedResourcesTest, EveryResourceHoldsTheBytesOfItsFile) {
    ASSERT_FALSE(EmbeddedResources().empty());
    for (const EmbeddedResource& resource : EmbeddedResources()) {
        EXPECT_EQ(resource.content, ContentOfResourceFile(resource.name)) << resource.name;
        EXPECT_EQ(FindEmbeddedResource(resource.name).data(), resource.content.data()) << resource.name;
    }
}

TEST(EmbeddedResourcesTest, AnUnknownNameIsToldApartFromAnEmptyFile) {
    for (const std::string_view name : {"", "Strings", "Strings/200", "strings/200.txt", "/Strings/200.txt"}) {
        EXPECT_EQ(FindEmbeddedResource(name).data(), nullptr) << name;
    }
}

}  // namespace
