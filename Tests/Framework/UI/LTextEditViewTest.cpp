#include "Framework/UI/LTextEditView.h"

#include "Framework/UI/LEditField.h"
#include "Framework/UI/TRegistrar.h"
#include "Framework/UI/WidgetTexts.h"
#include "Support/TestWindow.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void Paste(QLineEdit& edit, const QString& text) {
    QApplication::clipboard()->setText(text);
    edit.paste();
}

/// Writes down keys and changes; swallows arrow keys.
class KeyedField final : public LTextEditView {
public:
    using LTextEditView::LTextEditView;

    bool HandleKeyPress(EditKey key) override {
        m_keys.push_back(key);
        return key != EditKey::Other;
    }

    std::vector<EditKey> m_keys;
    int m_changes = 0;

protected:
    void UserChangedText() override { ++m_changes; }
};

}  // namespace

TEST(LTextEditViewTest, InputThatDoesNotFitIsRefusedAsAWhole) {
    TestWindow test(R"(<edit id="10" width="100" height="26"/>)");
    auto& field = test.Pane<LEditField>(10);
    auto& edit = test.Widget<QLineEdit>(10);
    Paste(edit, QString(254, 'a'));
    Paste(edit, QString::fromUtf8("ä"));
    EXPECT_EQ(field.GetDescriptor().Length(), 254) << "a character of two bytes has no room in one";
    Paste(edit, "b");
    EXPECT_EQ(field.GetDescriptor().Length(), 255);
    QTest::keyClicks(&edit, "c");
    EXPECT_EQ(edit.text().size(), 255);
}

TEST(LTextEditViewTest, AFieldForDigitsTakesNothingElseFromTheUser) {
    TestWindow test(R"(<edit id="10" width="100" height="26" digitsOnly="yes" text="unlimited"/>)");
    auto& field = test.Pane<LEditField>(10);
    EXPECT_EQ(field.GetDescriptor(), "unlimited");
    field.SetDescriptor(LStr255(""));
    QTest::keyClicks(&test.Widget<QLineEdit>(10), "1x-0 2");
    EXPECT_EQ(field.GetDescriptor(), "102");
}

TEST(LTextEditViewTest, OnlyTheUsersChangesAreBroadcast) {
    TestWindow test(R"(<edit id="10" width="100" height="26" message="12"/>)");
    auto& field = test.Pane<LEditField>(10);
    field.SetDescriptor(LStr255("Media:"));
    EXPECT_THAT(test.Told(), IsEmpty());
    EXPECT_EQ(test.Widget<QLineEdit>(10).text(), "Media:");
    QTest::keyClicks(&test.Widget<QLineEdit>(10), "T");
    EXPECT_EQ(test.Told().size(), 1U);
    EXPECT_EQ(field.GetDescriptor(), "Media:T");
}

TEST(LTextEditViewTest, SelectionAndDeletionAreTheSameWithAndWithoutAWindow) {
    TestWindow test(R"(<edit id="10" width="100" height="26"/>)");
    LStream record = Record("<edit/>");
    LEditField alone(&record);
    for (LTextEditView* field : std::initializer_list<LTextEditView*>{&test.Pane<LEditField>(10), &alone}) {
        SCOPED_TRACE(field == &alone ? "alone" : "in a window");
        field->SetDescriptor(LStr255("größer"));
        EXPECT_EQ(field->GetSelection(), (TextSelection{6, 6}));
        field->SetSelection({2, 4});
        EXPECT_EQ(field->GetSelection(), (TextSelection{2, 4}));
        field->DeleteBackward();
        EXPECT_EQ(field->GetDescriptor(), "grer");
        field->DeleteBackward();
        EXPECT_EQ(field->GetDescriptor(), "ger");
        EXPECT_EQ(field->GetSelection(), (TextSelection{1, 1}));
        field->SetSelection({-3, 99});
        EXPECT_EQ(field->GetSelection(), (TextSelection{0, 3}));
        field->SelectAll();
        field->DeleteBackward();
        field->DeleteBackward();
        EXPECT_EQ(field->GetDescriptor(), "");
    }
}

TEST(LTextEditViewTest, KeysComeToThePaneFirstAndModifiersDoNot) {
    TRegistrar<KeyedField>::Register("Keyd");
    TestWindow test(R"(<Keyd id="10" width="100" height="26" text="ab"/>)");
    auto& field = test.Pane<KeyedField>(10);
    auto& edit = test.Widget<QLineEdit>(10);
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_Shift);
    QTest::keyClick(&edit, Qt::Key_Control);
    QTest::keyClick(&edit, Qt::Key_Up);
    QTest::keyClick(&edit, Qt::Key_Down);
    QTest::keyClick(&edit, Qt::Key_C);
    QInputMethodEvent composed;
    composed.setCommitString("d");
    QApplication::sendEvent(&edit, &composed);
    EXPECT_THAT(field.m_keys, ElementsAre(EditKey::UpArrow, EditKey::DownArrow, EditKey::Other, EditKey::Other));
    EXPECT_EQ(field.GetDescriptor(), "abcd");
    EXPECT_EQ(field.m_changes, 2);
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(field.GetDescriptor(), "ab") << "typing cannot be undone";
}

TEST(LTextEditViewTest, ColoursOfItsOwnLeaveTheDisabledFieldGrey) {
    TestWindow test(R"(<edit id="10" width="100" height="26" text="MMMM"/>)");
    auto& field = test.Pane<LEditField>(10);
    auto& edit = test.Widget<QLineEdit>(10);
    const QColor grey = edit.palette().color(QPalette::Disabled, QPalette::Text);
    field.SetTextColors({.red = 0, .green = 65535, .blue = 0}, {.red = 0, .green = 0, .blue = 65535});
    EXPECT_EQ(edit.palette().color(QPalette::Active, QPalette::Text), QColor(0, 255, 0));
    EXPECT_EQ(edit.grab().toImage().pixelColor(96, 13), QColor(0, 0, 255));
    EXPECT_EQ(edit.palette().color(QPalette::Disabled, QPalette::Text), grey);
}

TEST(LTextEditViewTest, TextsKeepWholeCharactersOnBothWays) {
    struct Case {
        std::string pane;
        QString widget;
    };
    const Case cases[] = {{"plain", "plain"},           {"gr\xC3\xB6", QString::fromUtf8("grö")},
                          {"cut \xC3", "cut "},         {"cut \xE2\x82", "cut "},
                          {"cut \xF0\x9F\x98", "cut "}, {"", ""}};
    for (const Case& tried : cases) {
        EXPECT_EQ(WidgetTexts::FromPane(tried.pane), tried.widget);
    }
    const LStr255 cut = WidgetTexts::ToPane(QString(254, 'a') + QString::fromUtf8("€"));
    EXPECT_EQ(cut.Length(), 254);
}
