#include "Framework/UI/LTrackControl.h"

#include "Framework/UI/LScrollBar.h"
#include "Framework/UI/LSlider.h"
#include "Framework/UI/TRegistrar.h"
#include "Support/TestWindow.h"

#include <QScrollBar>
#include <QSlider>
#include <QTest>
#include <gmock/gmock.h>

#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Told = MessageRecorder::Told;
using TrackGeometry::Track;

}  // namespace

TEST(LTrackControlTest, AThumbStandsWhereItsValueIsAndComesBackToIt) {
    const Track tracks[] = {{200, 16, 0, 10}, {200, 16, -50, 50}, {300, 60, 5, 65}, {184, 16, 5, 6}};
    for (const Track& track : tracks) {
        EXPECT_EQ(TrackGeometry::ThumbBegin(track, track.minimum), 0);
        EXPECT_EQ(TrackGeometry::ThumbBegin(track, track.maximum), track.length - track.thumbLength);
        for (std::int32_t value = track.minimum; value <= track.maximum; ++value) {
            EXPECT_EQ(TrackGeometry::ValueOfThumb(track, TrackGeometry::ThumbBegin(track, value)), value);
        }
    }
    using Limits = std::numeric_limits<std::int32_t>;
    const Track whole{300, 20, Limits::min(), Limits::max()};
    EXPECT_EQ(TrackGeometry::ValueOfThumb(whole, -1000), Limits::min());
    EXPECT_EQ(TrackGeometry::ValueOfThumb(whole, 1000), Limits::max());
    EXPECT_EQ(TrackGeometry::ThumbBegin({10, 20, 7, 7}, 7), 0);
}

TEST(LTrackControlTest, APressAnywhereTakesHoldOfTheThumb) {
    TRegistrar<LScrollBar>::Register("Tscr");
    TestWindow test(
        R"(<Tscr id="10" width="300" height="20" min="0" max="100" value="50" pageStep="25" message="4"/>)");
    auto& bar = test.Pane<LScrollBar>(10);
    auto& widget = test.Widget<QScrollBar>(10);
    QTest::mousePress(&widget, Qt::LeftButton, {}, {20, 10});
    EXPECT_THAT(test.Told(), IsEmpty());
    const int travel = 300 - bar.ThumbLength();
    QTest::mouseMove(&widget, {20 + travel / 4, 10});
    EXPECT_THAT(test.Told(), ElementsAre(Told{4, 75}));
    QTest::mouseMove(&widget, {2000, 10});
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, {2000, 10});
    EXPECT_THAT(test.Told(), ElementsAre(Told{4, 100}));
    QTest::mouseMove(&widget, {20, 10});
    EXPECT_EQ(bar.GetValue(), 100) << "a thumb that was let go still moves";
    bar.SetVisibleCount(5);
    QTest::keyClick(&widget, Qt::Key_PageUp);
    QTest::keyClick(&widget, Qt::Key_Left);
    EXPECT_EQ(bar.GetValue(), 94);
}

TEST(LTrackControlTest, NewBoundsMoveTheValueWithoutBroadcastingIt) {
    TRegistrar<LSlider>::Register("Tsld");
    TestWindow test(R"(<Tsld id="10" width="200" height="24" min="0" max="100" value="50" message="650"/>)");
    auto& slider = test.Pane<LSlider>(10);
    slider.SetMaxValue(20);
    slider.SetMinValue(10);
    slider.SetMaxValue(60);
    EXPECT_EQ(slider.GetValue(), 20);
    EXPECT_EQ(test.Widget<QSlider>(10).value(), 20);
    EXPECT_THAT(test.Told(), IsEmpty());
    test.Widget<QSlider>(10).setValue(33);
    EXPECT_THAT(test.Told(), ElementsAre(Told{650, 33}));
}
