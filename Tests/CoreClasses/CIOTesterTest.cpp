#include "CoreClasses/CIOTester.h"

#include "CoreClasses/EngineTest.h"
#include "Framework/Base/LThread.h"
#include "Framework/UI/LTimerTask.h"
#include "GUI/CIOTesterDlg.h"
#include "GUI/Commands.h"
#include "Platform/Clock.h"

#include <QCloseEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include <csignal>
#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

namespace {

using testing::AnyOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

/// Goes a hundred times as fast as the system's clock, so that threads which sleep in turn get on quickly and yet leave
/// the event loop room. In force from construction to destruction.
class HurriedClock final : public Clock {
public:
    HurriedClock() { Replace(this); }
    ~HurriedClock() override { Replace(nullptr); }
    HurriedClock(const HurriedClock&) = delete;
    HurriedClock& operator=(const HurriedClock&) = delete;

    std::uint64_t Microseconds() override { return kHurry * m_system.Microseconds(); }
    std::uint32_t LocalSeconds() override { return static_cast<std::uint32_t>(Microseconds() / 1'000'000); }
    std::tm LocalDateTime() override { return m_system.LocalDateTime(); }
    void SleepMilliseconds(std::uint32_t ms) override { m_system.SleepMilliseconds(ms / kHurry + 1); }

private:
    static constexpr std::uint32_t kHurry = 100;

    Clock& m_system = Current();
};

/// Moments at which a user may want to leave.
enum class Moment { Idle, Selecting, BeforeWorkerStarts, Running };

using WayOut = std::function<void(CIOTester&)>;

/// Runs the whole program, its timer thread included, and leaves it at a moment of its life.
class ProgramRun {
public:
    ProgramRun(Moment moment, const WayOut& leave) : m_moment(moment), m_leave(leave) {
        m_events.callOnTimeout([this] { LookAndLeave(); });
    }

    /// Tests the folder, keeps a log, and answers the program's exit status.
    int Run(const TemporaryFolder& folder, const std::string& log) {
        const CString before = std::exchange(IOTestParameters::sm_defaultPath, CString(folder.Colon()));
        m_application.emplace();
        m_log = log;
        m_events.start(1);
        const int status = m_application->Run();
        m_events.stop();
        std::raise(SIGTERM);  // asked again while the logs are still open: that must not end the process here
        m_application.reset();
        IOTestParameters::sm_defaultPath = before;
        return status;
    }

private:
    /// In each turn of the event loop.
    void LookAndLeave() {
        LTimerTask::RunDue();  // the clock of the test runs ahead of the system's timers
        CIOTesterDlg& window = *m_application->MainWindow();
        if (m_hasLeft || !window.Shell()->isActiveWindow()) {
            return;
        }
        if (m_moment != Moment::Idle && !window.TestIsStarted()) {
            static_cast<void>(window.Output().SetOutputFile(m_log.c_str()));
            window.OnStart();
        }
        m_hasLeft = HasCome(window);
        if (m_hasLeft) {
            m_leave(*m_application);
        }
    }

    [[nodiscard]] bool HasCome(CIOTesterDlg& window) const {
        switch (m_moment) {
            case Moment::Idle:
            case Moment::Selecting:
                return true;
            case Moment::BeforeWorkerStarts:
                return window.GetDescriptorForPaneID(36).Length() != 0;
            case Moment::Running:
                return window.GetDescriptorForPaneID(37).Length() != 0;
        }
        return true;
    }

    Moment m_moment;
    const WayOut& m_leave;
    std::string m_log;
    std::optional<CIOTester> m_application;
    QTimer m_events;
    bool m_hasLeft = false;
};

}  // namespace

TEST(CIOTesterTest, EveryWayOutEndsTheProgramInOrderAtAnyMoment) {
    const std::vector<std::pair<const char*, WayOut>> ways{
        {"window manager", [](CIOTester& program) { program.MainWindow()->Shell()->close(); }},
        {"key",
         [](CIOTester& program) { QTest::keyClick(program.MainWindow()->Shell(), Qt::Key_Q, Qt::ControlModifier); }},
        {"close command", [](CIOTester& program) { program.MainWindow()->ProcessCommand(kCommandClose); }},
        {"quit command", [](CIOTester& program) { program.ObeyCommand(kCommandQuitNow, nullptr); }},
        {"signal", [](CIOTester& /*program*/) { std::raise(SIGTERM); }},
        {"with the settings open", [](CIOTester& program) {
             program.MainWindow()->OnClickSettings();
             program.MainWindow()->Shell()->close();
         }}};
    for (const Moment moment : {Moment::Idle, Moment::Selecting, Moment::BeforeWorkerStarts, Moment::Running}) {
        for (const auto& [name, leave] : ways) {
            SCOPED_TRACE(testing::Message() << name << ' ' << static_cast<int>(moment));
            const HurriedClock clock;
            const TemporaryFolder folder;
            const TemporaryFolder logs;
            EXPECT_EQ(ProgramRun(moment, leave).Run(folder, logs.Colon("output")), 0);
            EXPECT_THAT(LThread::JoinFinished(100'000), IsEmpty());
            EXPECT_TRUE(std::filesystem::is_empty(folder.Native())) << "scratch files are left";
            if (moment != Moment::Idle) {
                const std::string last = MessagesOf(logs.Native("output")).back();  // before the closing banner
                EXPECT_THAT(last,
                            AnyOf(StartsWith("Selecting "), StartsWith("Test stopped "), HasSubstr("measurement")));
            }
        }
    }
}
