#include "Framework/UI/Look.h"
#include "Framework/UI/PaneWidget.h"
#include "Framework/UI/TRegistrar.h"

#include <QApplication>
#include <gtest/gtest.h>

/// Tests of windows have one application object for all, on a platform without a screen.
int main(int argc, char** argv) {
    // Nothing of the desktop that the tests happen to run on.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("GTK_THEME", "Adwaita");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qunsetenv("QT_SCALE_FACTOR");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    Look::Apply();
    InstallPaneAccessibility();
    PaneClasses::RegisterFrameworkClasses();
    return RUN_ALL_TESTS();
}
