#include "Framework/UI/LMenuBar.h"

#include "Framework/UI/LStdButton.h"
#include "Framework/UI/TRegistrar.h"
#include "Support/TestWindow.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <gmock/gmock.h>

#include <utility>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kButtons = R"(<pbut id="15" width="80" height="26" text="Start" message="250"/>
    <pbut id="16" width="80" height="26" text="Stop" message="350" key="Ctrl+." enabled="no"/>)";

constexpr auto kMenus = R"(<menubar><menu text="&amp;Test"><item text="Start" key="Ctrl+R" message="250"/>
    <item text="Stop" key="Ctrl+." message="350"/><separator/><item text="Minimise" key="Ctrl+M" message="130"/>
    <item text="Quit" key="Ctrl+Q" command="10"/><item text="New" command="2"/></menu></menubar>)";

/// Writes down what its menus ask of it.
class MenuWindow final : public LWindow, public LListener {
public:
    using LWindow::LWindow;

    void ListenToMessage(MessageT message, void* /*ioParam*/) override { m_asked.push_back(message); }
    bool ObeyCommand(CommandT command, void* /*ioParam*/) override {
        m_asked.push_back(command);
        return true;
    }
    bool FindCommandStatus(CommandT command) override { return command == 10; }

    std::vector<std::int32_t> m_asked;
};

class LMenuBarTest : public testing::Test {
protected:
    LMenuBarTest() {
        TRegistrar<MenuWindow>::Register("MenW");
        m_test = std::make_unique<TestWindow>(kButtons, "MenW");
        m_bar = dynamic_cast<QMainWindow*>(m_test->Window().Shell())->menuBar();
        LMenuBar::Fill(Record(kMenus), m_test->Window(), *m_bar);
        static_cast<void>(RunEventsUntil([&] { return m_bar->isVisible(); }));
        m_test->Pane<LStdButton>(15).AddListener(&Window());
        m_test->Pane<LStdButton>(16).AddListener(&Window());
    }

    [[nodiscard]] MenuWindow& Window() { return dynamic_cast<MenuWindow&>(m_test->Window()); }
    [[nodiscard]] QMenu& Menu() { return *m_bar->actions().front()->menu(); }
    [[nodiscard]] QAction& Item(int index) { return *Menu().actions().at(index); }

    void PressKey(Qt::Key key) { QTest::keyClick(m_test->Window().Shell(), key, Qt::ControlModifier); }

    std::unique_ptr<TestWindow> m_test;
    QMenuBar* m_bar = nullptr;
};

}  // namespace

TEST_F(LMenuBarTest, ItemsAndKeysDoWhatCanBeDoneNow) {
    for (const int index : {0, 1, 3, 4, 5}) {  // the control of 1 is disabled, the command of 5 cannot be given
        Item(index).trigger();
    }
    EXPECT_THAT(std::exchange(Window().m_asked, {}), ElementsAre(250, 130, 10));
    const auto whatIsEnabled = [&] {
        Menu().popup({0, 0});
        std::vector enabled{Item(0).isEnabled(), Item(1).isEnabled(), Item(4).isEnabled(), Item(5).isEnabled()};
        Menu().close();
        return enabled;
    };
    EXPECT_THAT(whatIsEnabled(), ElementsAre(true, false, true, false));
    m_test->Pane<LStdButton>(15).Disable();
    m_test->Pane<LStdButton>(16).Enable();
    EXPECT_THAT(whatIsEnabled(), ElementsAre(false, true, true, false));
    PressKey(Qt::Key_R);
    EXPECT_THAT(Window().m_asked, IsEmpty());
    m_test->Pane<LStdButton>(15).Enable();  // which the menu has not shown yet
    PressKey(Qt::Key_R);
    PressKey(Qt::Key_M);
    EXPECT_THAT(Window().m_asked, ElementsAre(250, 130));
}

TEST_F(LMenuBarTest, AKeyThatAButtonHasIsShownAndLeftToTheButton) {
    EXPECT_EQ(Item(1).text(), "Stop\tCtrl+.");
    m_test->Pane<LStdButton>(16).Enable();
    PressKey(Qt::Key_Period);
    EXPECT_TRUE(RunEventsUntil([&] { return !Window().m_asked.empty(); }));
    EXPECT_THAT(Window().m_asked, ElementsAre(350));
}
