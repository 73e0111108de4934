#include "GUI/Axis.h"

#include "GUI/GraphPoint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>

namespace {

TEST(AxisTest, LabelsShowCutOffHundredthsAndBeginFurtherLeftWithEveryDigit) {
    const std::tuple<float, const char*, int> cases[] = {
        {0.009F, "0.00", 29},   {0.99F, "0.99", 29},       {5.05F, "5.05", 29},        {10.0F, "10.00", 36},
        {100.0F, "100.00", 43}, {1234.25F, "1234.25", 50}, {99999.0F, "99999.00", 57}, {7.5e6F, "7500000.00", 63}};
    for (const auto& [value, label, indent] : cases) {
        EXPECT_EQ(Axis::LabelText(value), label);
        EXPECT_EQ(Axis::YLabelIndent(value), indent) << value;
    }
}

std::string Labels(const Axis& axis, int kind) {
    std::string labels;
    for (const float value : axis.LabelValues(kind)) {
        labels += Axis::LabelText(value) + " ";
    }
    return labels;
}

TEST(AxisTest, LabelsAreSummedUpInSinglePrecisionBelowAnExactTop) {
    Axis axis;
    axis.set_noOfDivisions(10);
    EXPECT_EQ(Labels(axis, Axis::kXAxis), "0.00 0.11 0.22 0.33 0.44 0.55 0.66 0.77 0.88 1.00 ");
    axis.set_maxValue(0.06F);
    axis.set_noOfDivisions(7);
    EXPECT_EQ(Labels(axis, Axis::kYAxis), "0.00 0.01 0.02 0.03 0.04 0.04 0.06 ");
    axis.set_maxValue(0.0F);
    EXPECT_EQ(Labels(axis, Axis::kYAxis), "0.00 ");
}

TEST(PlotScaleTest, MapsValuesToTruncatedPixelsAndStaysWithinReach) {
    Axis x;
    x.set_maxValue(40.0F);
    Axis y;
    y.set_minValue(2.0F);
    y.set_maxValue(12.0F);
    const PlotScale scale({.v = 15, .h = 80}, {.v = 225, .h = 580}, x, y);
    EXPECT_EQ(scale.OffsetOf(0.0F, 2.0F), (PixelOffset{.dx = 0, .dy = 0}));
    EXPECT_EQ(scale.OffsetOf(40.0F, 12.0F), (PixelOffset{.dx = 500, .dy = 210}));
    EXPECT_EQ(scale.OffsetOf(10.07F, 2.999F), (PixelOffset{.dx = 125, .dy = 20}));
    EXPECT_EQ(scale.OffsetOf(20.0F, 1.0F), (PixelOffset{.dx = 250, .dy = -21}));
    constexpr int farthest = 1 << 24;
    EXPECT_EQ(scale.OffsetOf(1e30F, -1e30F), (PixelOffset{.dx = farthest, .dy = -farthest}));
    EXPECT_EQ(scale.OffsetOf(std::nanf(""), 2.0F), (PixelOffset{.dx = 0, .dy = 0}));
    y.set_maxValue(2.0F);
    const PlotScale flat({.v = 15, .h = 80}, {.v = 225, .h = 580}, x, y);
    EXPECT_EQ(flat.OffsetOf(4.0F, 77.0F), (PixelOffset{.dx = 50, .dy = 0}));
}

}  // namespace
