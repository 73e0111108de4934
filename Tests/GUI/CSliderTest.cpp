#include "GUI/CSlider.h"

#include "Framework/UI/TRegistrar.h"
#include "GUI/CScroll.h"
#include "Support/TestWindow.h"

#include <QTest>
#include <gmock/gmock.h>

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

TEST_F(CSliderTest, AJumpIsToldOnceAndTheThumbIsHeldFromThere) {
    Press(1, 160);
    EXPECT_THAT(m_test->Told(), ElementsAre(Told{650, 80}));
    Drag(1, 160);
    EXPECT_THAT(m_test->Told(), IsEmpty()) << "the thumb moved although the pointer did not";
    Drag(1, 0);
    EXPECT_THAT(m_test->Told(), ElementsAre(Told{650, 0}));
    Release(1);
    Press(2, 131);  // the track begins at 12
    EXPECT_THAT(m_test->Told(), ElementsAre(Told{550, 63}));
    Release(2);
    Press(2, 140);
    EXPECT_THAT(m_test->Told(), IsEmpty()) << "a press near the thumb moved it";
    Drag(2, 400);
    EXPECT_THAT(m_test->Told(), ElementsAre(Told{550, 100}));
    Release(2);
}
