#include "Framework/UI/LCaption.h"
#include "Framework/UI/LStdButton.h"
#include "Framework/UI/LStdPopupMenu.h"
#include "Support/TestWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <gmock/gmock.h>

using testing::IsEmpty;

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

TEST(ControlsTest, PopupItemsAreCountedFromOne) {
    TestWindow test(R"(<popm id="10" width="160" height="26" message="100" items="Alpha|Beta|Gamma"/>)");
    auto& popup = test.Pane<LStdPopupMenu>(10);
    auto& widget = test.Widget<QComboBox>(10);
    EXPECT_EQ(popup.GetValue(), 1);
    EXPECT_EQ(popup.GetItemText(3), "Gamma");
    EXPECT_EQ(popup.GetItemText(4), "");
    popup.SetValue(9);
    EXPECT_EQ(widget.currentText(), "Gamma");
    popup.SetMinValue(0);
    popup.SetValue(0);
    EXPECT_EQ(widget.currentIndex(), -1) << "an item is still ticked";
    popup.RemoveAllItems();
    popup.AppendItem(LStr255("Only"));
    EXPECT_EQ(widget.currentIndex(), -1) << "an appended item ticks itself";
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
    EXPECT_EQ(AccessibleName(label), "Path: " + path);
    QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&label, &event);
    EXPECT_EQ(QToolTip::text().toStdString(), "<p>Media:Tests &amp; more:a &lt;long&gt; path:file.mov</p>");
    QToolTip::hideText();
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

TEST(ControlsTest, EveryControlHasANameAndRoomForALargerFontAndTakesTheKeyboardUnlessItOnlyShows) {
    const QFont usual = QApplication::font();
    QFont larger = usual;
    larger.setPointSizeF(usual.pointSizeF() * 1.2);
    QApplication::setFont(larger);
    TestWindow test(kEveryControl);
    for (PaneIDT id = 10; id <= 20; ++id) {
        SCOPED_TRACE(id);
        auto& widget = test.Widget<QWidget>(id);
        EXPECT_FALSE(AccessibleName(widget).empty());
        const bool onlyShows = id == 15 || id == 16 || id == 18 || id == 20;
        EXPECT_EQ((widget.focusPolicy() & Qt::TabFocus) != 0, !onlyShows);
        EXPECT_TRUE(id > 16 || widget.height() >= widget.fontMetrics().height());
        const bool hintsAtMoreThanItsText = id == 13 || id == 14 || id > 16;
        EXPECT_TRUE(hintsAtMoreThanItsText || widget.width() >= widget.minimumSizeHint().width());
    }
    QApplication::setFont(usual);
}
