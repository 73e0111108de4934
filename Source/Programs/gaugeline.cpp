#include "CoreClasses/CIOTester.h"
#include "Framework/Base/LThread.h"
#include "Framework/UI/Look.h"
#include "Framework/UI/PaneWidget.h"
#include "SupportingClasses/IOTesterConsts.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

// The desktop program. It takes no command line.

namespace {

/// How long the end of the process waits for threads, in ms; by then every test has ended.
constexpr std::uint32_t kJoinMS = 2000;

/// A missing resource or a programming error: nothing the user did, and nothing to go on with.
int FailWith(const std::exception& failure) {
    std::fprintf(stderr, "gaugeline: %s\n", failure.what());
    QMessageBox::critical(nullptr, kProgramName, QString::fromUtf8(failure.what()));
    return EXIT_FAILURE;
}

int RunApplication() {
    try {
        CIOTester application;
        return application.Run();
    } catch (const std::exception& failure) {
        return FailWith(failure);
    }
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const QApplication system(argumentCount, arguments);
    QApplication::setApplicationDisplayName(kProgramName);
    QApplication::setApplicationVersion(kProgramVersion);
    Look::Apply();
    InstallPaneAccessibility();
    const int status = RunApplication();
    for (const std::string& name : LThread::JoinFinished(kJoinMS)) {
        std::fprintf(stderr, "gaugeline: the thread %s still runs at the end\n", name.c_str());
    }
    return status;
}
