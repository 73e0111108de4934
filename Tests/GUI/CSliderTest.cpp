#include "GUI/CSlider.h"

#include "Framework/UI/TRegistrar.h"
#include "GUI/CScroll.h"
#include "Support/TestWindow.h"

#include <QAbstractSlider>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Told = MessageRecorder::Told;

/// Both kinds, 200 wide with the values 0 to 100: the thumb's place is twice the value.
class CSliderTest : public testing::Test {
protected:
    CSliderTest() {
        TRegistrar<CSlider>::Register("Sldr");
        TRegistrar<CScroll>::Register("Scrl");
        m_test = std::make_unique<TestWindow>(
            R"(<Sldr id="1" width="200" height="24" min="0" max="100" value="50" message="650"/>
               <Scrl id="2" top="40" width="200" height="20" min="0" max="100" value="50" message="550"/>)");
    }

    void Press(PaneIDT id, int x) { QTest::mousePress(&m_test->Widget<QWidget>(id), Qt::LeftButton, {}, {x, 10}); }
    void Drag(PaneIDT id, int x) { QTest::mouseMove(&m_test->Widget<QWidget>(id), {x, 10}); }
    void Release(PaneIDT id) { QTest::mouseRelease(&m_test->Widget<QWidget>(id), Qt::LeftButton, {}, {0, 10}); }

    std::unique_ptr<TestWindow> m_test;
};

}  // namespace

TEST_F(CSliderTest, AClickJumpsUnlessItIsNearTheThumb) {
    struct Case {
        PaneIDT pane;
        int x;
        std::int32_t value;
    };
    // A slider's reach is 15 on either side, a scroll bar's 30; a scroll bar's track begins at 12.
    const Case cases[] = {{1, 110, 50}, {1, 115, 50}, {1, 85, 50},  {1, 120, 60}, {1, 84, 42},
                          {1, 0, 0},    {1, 199, 99}, {2, 70, 50},  {2, 130, 50}, {2, 131, 63},
                          {2, 12, 0},   {2, 3, 0},    {2, 200, 100}};
    for (const Case& tried : cases) {
        SCOPED_TRACE(testing::Message() << "pane " << tried.pane << " at " << tried.x);
        m_test->Pane<LControl>(tried.pane).SetValue(50);
        Press(tried.pane, tried.x);
        EXPECT_EQ(m_test->Pane<LControl>(tried.pane).GetValue(), tried.value);
        Release(tried.pane);
    }
}

TEST_F(CSliderTest, AJumpIsToldOnceAndTheThumbIsHeldFromThere) {
    Press(1, 160);
    EXPECT_THAT(m_test->Told(), ElementsAre(Told{650, 80}));
    Drag(1, 160);
    EXPECT_THAT(m_test->Told(), IsEmpty()) << "the thumb moved although the pointer did not";
    Drag(1, 0);
    EXPECT_EQ(m_test->Pane<CSlider>(1).GetValue(), 0);
    Release(1);
    EXPECT_FALSE(m_test->Widget<QAbstractSlider>(1).isSliderDown());
}

TEST_F(CSliderTest, APressNearTheThumbDragsIt) {
    Press(2, 110);
    EXPECT_THAT(m_test->Told(), IsEmpty());
    Drag(2, 400);
    EXPECT_THAT(m_test->Told(), ElementsAre(Told{550, 100}));
    Release(2);
}

TEST_F(CSliderTest, WithoutARangeAClickDoesNothing) {
    for (const PaneIDT id : {1, 2}) {
        auto& control = m_test->Pane<LControl>(id);
        control.SetMinValue(5);
        control.SetMaxValue(5);
        Press(id, 190);
        Drag(id, 20);
        EXPECT_EQ(control.GetValue(), 5);
        Release(id);
    }
}

TEST_F(CSliderTest, AClickJumpsWithoutAWindowToo) {
    LStream record = Record(R"(<Sldr width="200" height="24" min="5" max="65" value="5"/>)");
    CSlider slider(&record);
    slider.ClickSelf({.whereLocal = {.v = 10, .h = 100}});
    EXPECT_EQ(slider.GetValue(), 35);
}
