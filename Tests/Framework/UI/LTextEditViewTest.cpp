#include "Framework/UI/LTextEditView.h"

#include "Framework/UI/LEditField.h"
#include "Support/TestWindow.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <gmock/gmock.h>

using testing::IsEmpty;

TEST(LTextEditViewTest, InputThatDoesNotFitIsRefusedAsAWhole) {
    TestWindow test(R"(<edit id="10" width="100" height="26"/>)");
    auto& field = test.Pane<LEditField>(10);
    auto& edit = test.Widget<QLineEdit>(10);
    edit.insert(QString(254, 'a'));
    edit.insert(QString::fromUtf8("ä"));
    edit.insert(QChar(u'\0'));
    EXPECT_EQ(field.GetDescriptor().Length(), 254) << "a character of two bytes has no room in one";
    QTest::keyClicks(&edit, "bc");
    EXPECT_EQ(field.GetDescriptor().Length(), 255);
}

TEST(LTextEditViewTest, OnlyTheUsersChangesAreBroadcast) {
    TestWindow test(R"(<edit id="10" width="100" height="26" digitsOnly="yes" message="12"/>)");
    auto& field = test.Pane<LEditField>(10);
    field.SetDescriptor(LStr255("unlimited"));
    EXPECT_THAT(test.Told(), IsEmpty());
    test.Widget<QLineEdit>(10).selectAll();
    QTest::keyClicks(&test.Widget<QLineEdit>(10), "1x-0 2");
    EXPECT_EQ(test.Told().size(), 3U);
    EXPECT_EQ(field.GetDescriptor(), "102");
    QInputMethodEvent composed;
    composed.setCommitString("7");
    QApplication::sendEvent(test.Pane<LEditField>(10).Peer(), &composed);
    EXPECT_EQ(field.GetDescriptor(), "1027");
    EXPECT_EQ(test.Told().size(), 1U);
}

TEST(LTextEditViewTest, SelectionAndDeletionAreTheSameWithAndWithoutAWindow) {
    TestWindow test(R"(<edit id="10" width="100" height="26"/>)");
    LStream record = Record("<edit/>");
    LEditField alone(&record);
    for (LTextEditView* field : std::initializer_list<LTextEditView*>{&test.Pane<LEditField>(10), &alone}) {
        SCOPED_TRACE(field == &alone ? "alone" : "in a window");
        field->SetDescriptor(LStr255("größer"));
        field->SetSelection({2, 4});
        field->DeleteBackward();
        field->DeleteBackward();
        EXPECT_EQ(field->GetDescriptor(), "ger");
        EXPECT_EQ(field->GetSelection(), (TextSelection{1, 1}));
        field->SelectAll();
        EXPECT_EQ(field->GetSelection(), (TextSelection{0, 3}));
        field->DeleteBackward();
        field->DeleteBackward();
        EXPECT_EQ(field->GetDescriptor(), "");
    }
}
