#include "GUI/CPicture.h"

#include "Framework/UI/GWorld.h"

#include <gtest/gtest.h>

namespace {

TEST(CPictureTest, LampIsLitOnEveryOtherDrawFromTheFirstOn) {
    CPicture lamp(SPaneInfo{.width = 26, .height = 20});
    const Rect frame{.top = 0, .left = 0, .bottom = 20, .right = 26};
    const RGBColor green{.red = 0, .green = 0xFFFF, .blue = 0};
    for (const bool isLit : {true, false, true}) {
        GWorld image(frame, 1.0);
        lamp.DrawInto(image);
        const RGBColor expected = isLit ? green : RGBColor();
        // The oval touches the middles of the sides and leaves the corners black.
        for (const auto& [x, y] : {std::pair{13, 10}, {0, 10}, {25, 10}, {13, 0}, {13, 19}}) {
            EXPECT_EQ(image.PixelAt(x, y), expected) << x << ", " << y;
        }
        EXPECT_EQ(image.PixelAt(2, 2), RGBColor());
    }
}

}  // namespace
