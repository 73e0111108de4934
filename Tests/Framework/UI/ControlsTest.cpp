#include "Framework/UI/ControlLinks.h"
#include "Framework/UI/GWorld.h"
#include "Framework/UI/LCaption.h"
#include "Framework/UI/LGroupBox.h"
#include "Framework/UI/LPicture.h"
#include "Framework/UI/LRadioGroupView.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/LStdCheckBox.h"
#include "Framework/UI/LStdPopupMenu.h"
#include "Framework/UI/Look.h"
#include "Framework/UI/TRegistrar.h"
#include "Support/TestWindow.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Told = MessageRecorder::Told;

constexpr auto kThreeItems = R"(items="Alpha|Beta|Gamma")";

std::string Popup(const std::string& attributes) {
    return "<popm id=\"10\" left=\"10\" top=\"10\" width=\"160\" height=\"26\" message=\"100\" " + attributes + "/>";
}

QString AccessibleName(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

}  // namespace

TEST(ControlsTest, ControlsKeepTheirStateAndBroadcastWithoutAWindow) {
    struct Case {
        const char* xml;
        std::int32_t asked;
        std::int32_t kept;
    };
    const Case cases[] = {
        {R"(<cbox message="5"/>)", 1, 1},
        {R"(<cbox message="5"/>)", 7, 1},
        {R"(<popm message="5" items="a|b|c"/>)", 3, 3},
        {R"(<popm message="5" items="a|b|c"/>)", 9, 3},
        {R"(<popm message="5" items="a|b|c" value="2" min="0"/>)", 0, 0},
        {R"(<lbox message="5" items="a|b|c"/>)", 2, 2},
    };
    for (const Case& tried : cases) {
        SCOPED_TRACE(tried.xml);
        LStream record = Record(tried.xml);
        const auto pane = PaneClasses::Create(record);
        MessageRecorder recorder;
        dynamic_cast<LControl&>(*pane).AddListener(&recorder);
        pane->SetValue(tried.asked);
        pane->SetValue(tried.asked);
        EXPECT_EQ(pane->GetValue(), tried.kept);
        EXPECT_THAT(recorder.Take(), ElementsAre(Told{5, tried.kept}));
        pane->SetDescriptor(LStr255("Words"));
        EXPECT_EQ(pane->GetDescriptor(), "Words");
    }
}

TEST(ControlsTest, AButtonIsPressedByMouseSpaceEnterAndItsKey) {
    TestWindow test(R"(<pbut id="10" width="100" height="28" text="Start" key="Ctrl+R" message="250"/>)");
    auto& button = test.Widget<QPushButton>(10);
    button.setFocus();
    // A change of the text must not cost the button its key.
    test.Pane<LStdButton>(10).SetDescriptor(LStr255("Start & go"));
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Space);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(test.Told().size(), 3U);
    QTest::keyClick(&button, Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(RunEventsUntil([&] { return !test.Told().empty(); })) << "its key does nothing";
    EXPECT_EQ(button.text(), "Start && go");
    EXPECT_EQ(button.toolTip(), "(Ctrl+R)");

    test.Pane<LStdButton>(10).Disable();
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(test.Window().Shell(), Qt::Key_R, Qt::ControlModifier);
    EXPECT_THAT(test.Told(), IsEmpty());
}

TEST(ControlsTest, AnAltKeyUnderlinesItsLetter) {
    TestWindow test(R"(<pbut id="10" text="Stop &amp; go" key="Alt+T"/><cbox id="11" text="Loop" key="Alt+X"/>)");
    EXPECT_EQ(test.Widget<QPushButton>(10).text(), "S&top && go");
    EXPECT_EQ(test.Widget<QAbstractButton>(11).text(), "Loop");
    EXPECT_EQ(test.Widget<QAbstractButton>(11).shortcut(), QKeySequence("Alt+X"));
}

TEST(ControlsTest, AnArrowButtonRepeatsAndPointsTheWayItsLayoutSays) {
    TestWindow test(R"(<butn id="10" width="24" height="24" arrow="left" message="560"/>)");
    auto& button = test.Widget<QToolButton>(10);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(test.Told().size(), 1U);
    EXPECT_EQ(button.arrowType(), Qt::LeftArrow);
    EXPECT_TRUE(button.autoRepeat());
}

TEST(ControlsTest, ACheckBoxTellsItsValueOncePerClick) {
    TestWindow test(R"(<cbox id="10" width="100" height="22" text="Loop" message="9"/>)");
    auto& box = test.Widget<QAbstractButton>(10);
    QTest::mouseClick(&box, Qt::LeftButton, {}, {8, 11});
    EXPECT_THAT(test.Told(), ElementsAre(Told{9, 1}));
    test.Pane<LStdCheckBox>(10).SetValue(0);
    EXPECT_FALSE(box.isChecked());
    EXPECT_THAT(test.Told(), ElementsAre(Told{9, 0}));
}

TEST(ControlsTest, OneRadioButtonOfAGroupIsOn) {
    TestWindow test(
        R"(<rgpv id="20" width="200" height="80" message="77"><cbox id="21" value="1" width="90" height="22"/>
        <cbox id="22" top="24" width="90" height="22"/><cbox id="23" top="48" width="90" height="22"/></rgpv>)");
    auto& group = test.Pane<LRadioGroupView>(20);
    EXPECT_EQ(group.GetCurrentRadioID(), 21);

    QTest::mouseClick(&test.Widget<QAbstractButton>(22), Qt::LeftButton, {}, {8, 11});
    EXPECT_EQ(group.GetCurrentRadioID(), 22);
    EXPECT_FALSE(test.Widget<QAbstractButton>(21).isChecked());
    QTest::mouseClick(&test.Widget<QAbstractButton>(22), Qt::LeftButton, {}, {8, 11});
    EXPECT_TRUE(test.Widget<QAbstractButton>(22).isChecked()) << "its own click switches it off";
    group.SetCurrentRadioID(23);
    EXPECT_EQ(group.GetCurrentRadioID(), 23);
    EXPECT_THAT(test.Told(), ElementsAre(Told{77, 22}, Told{77, 23}));
}

TEST(ControlsTest, PopupItemsAreCountedFromOne) {
    TestWindow test(Popup(kThreeItems));
    auto& popup = test.Pane<LStdPopupMenu>(10);
    auto& widget = test.Widget<QComboBox>(10);
    EXPECT_EQ(popup.GetValue(), 1);
    EXPECT_EQ(popup.GetMaxValue(), 3);
    EXPECT_EQ(popup.GetItemText(3), "Gamma");
    for (const int item : {-1, 0, 4}) {
        EXPECT_EQ(popup.GetItemText(item), "");
    }
    popup.SetMaxValue(4);
    popup.AppendItem(LStr255("Delta"));
    popup.SetItemText(2, LStr255("Second"));
    popup.SetValue(4);
    EXPECT_EQ(widget.currentText(), "Delta");
    EXPECT_EQ(widget.itemText(1), "Second");
    popup.SetMinValue(0);
    popup.SetValue(0);
    EXPECT_EQ(widget.currentIndex(), -1) << "an item is still ticked";

    popup.RemoveAllItems();
    EXPECT_EQ(popup.CountItems() + widget.count() + popup.GetMaxValue() + popup.GetValue(), 0);
    popup.AppendItem(LStr255("Only"));
    EXPECT_EQ(widget.currentIndex(), -1) << "an appended item ticks itself";
}

TEST(ControlsTest, APopupFollowsTheWheelOnlyWhileItHasTheKeyboard) {
    TestWindow test(Popup(kThreeItems) + R"(<edit id="11" top="50" width="80" height="26"/>)");
    auto& widget = test.Widget<QComboBox>(10);
    const auto turnWheel = [&] {
        QWheelEvent event({5, 5}, widget.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&widget, &event);
    };
    test.Widget<QLineEdit>(11).setFocus();
    turnWheel();
    EXPECT_EQ(test.Pane<LStdPopupMenu>(10).GetValue(), 1);
    widget.setFocus();
    turnWheel();
    EXPECT_EQ(test.Pane<LStdPopupMenu>(10).GetValue(), 2);
}

namespace {

/// Tells when its list is opened and closed.
class NoticingPopup final : public LStdPopupMenu {
public:
    using LStdPopupMenu::LStdPopupMenu;

    void ClickSelf(const SMouseDownEvent& event) override {
        BroadcastMessage(-1);
        LStdPopupMenu::ClickSelf(event);
    }
    void ClickEnded() override { BroadcastMessage(-2); }
};

}  // namespace

TEST(ControlsTest, APopupTellsAChoiceBeforeTheEndOfTheClick) {
    TRegistrar<NoticingPopup>::Register("NPop");
    TestWindow test(R"(<NPop id="10" width="160" height="26" message="100" items="Alpha|Beta"/>)");
    auto& widget = test.Widget<QComboBox>(10);
    const auto isOpen = [&] { return widget.view()->isVisible(); };
    for (const auto& [key, told] : {std::pair{Qt::Key_Return, std::vector<Told>{{-1, -1}, {100, 2}, {-2, -1}}},
                                    std::pair{Qt::Key_Escape, std::vector<Told>{{-1, -1}, {-2, -1}}}}) {
        QTest::mousePress(&widget, Qt::LeftButton);
        ASSERT_TRUE(RunEventsUntil(isOpen));
        QTest::keyClick(widget.view(), Qt::Key_Down);
        QTest::keyClick(widget.view(), key);
        std::vector<Told> all;
        EXPECT_TRUE(RunEventsUntil([&] {
            for (const Told& one : test.Told()) {
                all.push_back(one);
            }
            return !isOpen() && !all.empty() && all.back() == Told{-2, -1};
        }));
        EXPECT_EQ(all, told);
    }
}

TEST(ControlsTest, ACaptionNamesPanesWithoutNamesAndBringsTheKeyboard) {
    TestWindow test(R"(<capt left="5" width="70" height="20" text="Duration:" key="Alt+D" for="30"/>
        <view id="30" left="80" width="200" height="40"><edit id="31" width="80" height="26"/>
        <edit id="32" left="90" width="80" height="26" accessibleName="Unit"/></view>
        <pbut id="33" top="50" width="80" height="26" text="Elsewhere"/>)");
    EXPECT_EQ(AccessibleName(test.Widget<QLineEdit>(31)), "Duration");
    EXPECT_EQ(AccessibleName(test.Widget<QLineEdit>(32)), "Unit");
    test.Widget<QPushButton>(33).setFocus();
    QTest::keyClick(test.Window().Shell(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(RunEventsUntil([&] { return test.Widget<QLineEdit>(31).hasFocus(); }));
}

TEST(ControlsTest, ACaptionThatIsTooLongShowsTheWholeTextAsToolTip) {
    TestWindow test(R"(<capt id="10" width="90" height="20" elide="middle" style="value" accessibleName="Path"/>)");
    const std::string path = "Media:Tests & more:a <long> path:file.mov";
    test.Pane<LCaption>(10).SetDescriptor(LStr255(path.c_str()));
    auto& label = test.Widget<QLabel>(10);
    EXPECT_EQ(AccessibleName(label).toStdString(), "Path: " + path);
    QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&label, &event);
    EXPECT_EQ(QToolTip::text().toStdString(), "<p>Media:Tests &amp; more:a &lt;long&gt; path:file.mov</p>");
    QToolTip::hideText();
}

TEST(ControlsTest, TabVisitsPanesInTheOrderOfTheTabGroup) {
    TestWindow test(R"(<edit id="10" width="80" height="26"/><edit id="11" top="30" width="80" height="26"/>
        <edit id="12" top="60" width="80" height="26"/><tabg order="12 10 11"/>)");
    test.Widget<QLineEdit>(12).setFocus();
    for (const PaneIDT next : {10, 11, 12}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        EXPECT_TRUE(test.Widget<QLineEdit>(next).hasFocus()) << next;
    }
}

TEST(ControlsTest, AListenerIsLinkedToBroadcastersAtEveryDepth) {
    TestWindow test(R"(<gbox id="20" text="Group &amp; more" width="200" height="100">
        <view width="100" height="50"><pbut id="21" width="80" height="26" message="3"/></view></gbox>)");
    test.Pane<LStdButton>(21).BroadcastValueMessage();
    EXPECT_EQ(test.Told().size(), 1U);
    EXPECT_EQ(test.Widget<QGroupBox>(20).title(), "Group && more");
}

TEST(ControlsTest, APictureStandsInTheMiddleOfItsFrame) {
    const auto colorAt = [](const char* picture, int x, int y) {
        LStream record = Record(std::string("<pict width=\"24\" height=\"20\" picture=\"") + picture + "\"/>");
        LPicture pane(&record);
        GWorld image({.top = 0, .left = 0, .bottom = 20, .right = 24}, 1);
        pane.DrawInto(image);
        return image.PixelAt(x, y);
    };
    const RGBColor signal = Look::ColorOf(Look::Role::Signal);
    EXPECT_EQ(colorAt("window-part", 2, 8), Look::ColorOf(Look::Role::QuietText));
    EXPECT_EQ(colorAt("window-part", 7, 4), signal);
    EXPECT_EQ(colorAt("window-part", 12, 1), RGBColor());
    EXPECT_EQ(colorAt("follow-newest", 7, 9), signal);
    EXPECT_EQ(colorAt("follow-newest", 19, 10), RGBColor());
}

namespace {

/// Controls at the sizes of the program's windows.
constexpr auto kEveryControl = R"xml(<pbut id="10" width="120" height="28" text="Settings"/>
    <pbut id="11" width="120" height="28" text="Choose..." key="Alt+C"/>
    <cbox id="12" width="230" height="22" text="Loop until stopped"/><popm id="13" width="240" height="26"
    items="Profile-A Reads (~ 4 MB/s)" accessibleName="Test"/><edit id="14" width="80" height="26" text="2" accessibleName="Duration"/>
    <capt id="15" width="126" height="18" text="Average MB/s"/><capt id="16" width="160" height="24" text="Profile-C Reads" style="strong"/>
    <butn id="17" width="24" height="24" accessibleName="Back"/><pict id="18" width="20" height="24" picture="window-part"/>
    <lbox id="19" width="90" height="90" accessibleName="List"/><gbox id="20" width="90" height="90" text="Group"/>)xml";

}  // namespace

TEST(ControlsTest, EveryControlHasAnAccessibleNameAndTakesTheKeyboardUnlessItOnlyShows) {
    TestWindow test(kEveryControl);
    for (PaneIDT id = 10; id <= 20; ++id) {
        SCOPED_TRACE(id);
        auto& widget = test.Widget<QWidget>(id);
        EXPECT_FALSE(AccessibleName(widget).isEmpty());
        const bool onlyShows = id == 15 || id == 16 || id == 18 || id == 20;
        EXPECT_EQ((widget.focusPolicy() & Qt::TabFocus) != 0, !onlyShows);
    }
}

TEST(ControlsTest, AFontTwentyPercentLargerIsNotClipped) {
    const QFont usual = QApplication::font();
    QFont larger = usual;
    larger.setPointSizeF(usual.pointSizeF() * 1.2);
    QApplication::setFont(larger);
    {
        TestWindow test(kEveryControl);
        for (PaneIDT id = 10; id <= 16; ++id) {
            SCOPED_TRACE(id);
            auto& widget = test.Widget<QWidget>(id);
            EXPECT_GE(widget.height(), widget.fontMetrics().height());
            if (id != 13 && id != 14) {  // whose hints ask for room beyond their texts
                EXPECT_GE(widget.width(), widget.minimumSizeHint().width());
            }
        }
    }
    QApplication::setFont(usual);
}
