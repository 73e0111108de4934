#include "Framework/Base/EmbeddedResources.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

TEST(EmbeddedResourcesTest, EveryResourceHoldsTheBytesOfItsFileAndAnUnknownNameIsNoEmptyFile) {
    ASSERT_FALSE(EmbeddedResources().empty());
    for (const EmbeddedResource& resource : EmbeddedResources()) {
        const std::ifstream file(GAUGELINE_RESOURCES_DIRECTORY + ('/' + std::string(resource.name)), std::ios::binary);
        ASSERT_TRUE(file.is_open()) << resource.name;
        std::ostringstream content;
        content << file.rdbuf();
        EXPECT_EQ(resource.content, content.str()) << resource.name;
        EXPECT_EQ(FindEmbeddedResource(resource.name).data(), resource.content.data()) << resource.name;
    }
    EXPECT_EQ(FindEmbeddedResource("Strings/200").data(), nullptr);
}
