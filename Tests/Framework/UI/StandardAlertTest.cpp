#include "Framework/UI/StandardAlert.h"

#include "Support/TestWindow.h"

#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <gmock/gmock.h>

#include <algorithm>

namespace {

using testing::IsEmpty;
using testing::StartsWith;

class StandardAlertTest : public testing::Test {
protected:
    /// Shows an alert whose answer is written down.
    void Show(const std::string& message) {
        StandardAlert::Show(m_test.Window(), message, "Do this & that.",
                            [this, message] { m_answered.push_back(message); });
    }

    static void Press(Qt::Key key) { QTest::keyClick(ShownAlerts().front(), key); }

    TestWindow m_test{R"(<pbut id="10" width="80" height="26" text="Start"/>)"};
    std::vector<std::string> m_answered;
};

}  // namespace

TEST_F(StandardAlertTest, ReturnsAtOnceAndHoldsItsOwnWindowOnly) {
    m_test.Window().Shell()->move(60, 50);
    Show("It <failed> & stays.");
    ASSERT_EQ(ShownAlerts().size(), 1U);
    const QMessageBox* box = ShownAlerts().front();
    EXPECT_EQ(box->windowModality(), Qt::WindowModal);
    EXPECT_EQ(box->parentWidget(), m_test.Window().Shell());
    EXPECT_EQ(box->windowTitle(), "Test");
    const QPoint off = box->frameGeometry().center() - box->parentWidget()->frameGeometry().center();
    EXPECT_LE(off.manhattanLength(), 40) << "not in the middle of its window";
    EXPECT_THAT(m_answered, IsEmpty());
    const QList<QLabel*> labels = box->findChildren<QLabel*>();
    EXPECT_TRUE(
        std::ranges::any_of(labels, [](QLabel* label) { return AccessibleName(*label) == "It <failed> & stays."; }));
    Press(Qt::Key_Return);
}

TEST_F(StandardAlertTest, LaterAlertsWaitTheirTurnAndEnterAndEscapeAnswerEachOnce) {
    Show("One.");
    Show("Two.");
    StandardAlert::Show(m_test.Window(), "Three.", "", [this] {
        m_answered.emplace_back("Three.");
        Show("Five.");
    });
    Show("Four.");
    std::vector<std::string> shown;
    for (const char* message : {"One.", "Two.", "Three.", "Four.", "Five."}) {
        ASSERT_EQ(ShownAlerts().size(), 1U);
        EXPECT_THAT(TextOf(*ShownAlerts().front()), StartsWith(message));
        Press(shown.empty() ? Qt::Key_Escape : Qt::Key_Return);
        shown.emplace_back(message);
        EXPECT_EQ(m_answered, shown);
    }
    EXPECT_TRUE(RunEventsUntil([&] { return m_test.Window().Shell()->findChildren<QMessageBox*>().isEmpty(); }));
}

TEST_F(StandardAlertTest, AWindowThatGoesTakesItsAlertsAlongUnanswered) {
    Show("One.");
    Show("Two.");
    m_test.Destroy();
    EXPECT_THAT(ShownAlerts(), IsEmpty());
    EXPECT_THAT(m_answered, IsEmpty());
}
