#include "Framework/UI/Look.h"

#include "Support/TestWindow.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

using Look::Contrast;
using Look::Role;

/// The contrast ratio as accessibility guidelines define it, 1 to 21.
double ContrastOf(Role one, Role other, Contrast contrast) {
    const auto luminance = [contrast](Role role) {
        const RGBColor color = Look::ColorOf(role, contrast);
        const auto linear = [](std::uint16_t part) {
            const double share = part / 65535.0;
            return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue) + 0.05;
    };
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return lighter / darker;
}

}  // namespace

TEST(LookTest, TextsAndTheFocusStandOutOnEverythingTheyStandOn) {
    for (const Contrast contrast : {Contrast::Normal, Contrast::High}) {
        const double least = contrast == Contrast::High ? 7 : 4.5;
        for (const Role text : {Role::Text, Role::CaptionText, Role::QuietText, Role::AlarmText}) {
            for (const Role ground : {Role::Window, Role::Field, Role::Button, Role::ButtonPressed}) {
                EXPECT_GE(ContrastOf(text, ground, contrast), least)
                    << static_cast<int>(text) << " on " << static_cast<int>(ground);
            }
        }
        EXPECT_GE(ContrastOf(Role::Text, Role::ButtonHover, contrast), least);
        EXPECT_GE(ContrastOf(Role::OnAccent, Role::Accent, contrast), least);
        for (const Role ground : {Role::Window, Role::Field, Role::Button}) {
            EXPECT_GE(ContrastOf(Role::Focus, ground, contrast), 3);
        }
    }
}

TEST(LookTest, ButtonsLookDifferentInEveryState) {
    TestWindow test(R"(<pbut id="10" left="20" top="20" width="100" height="28" text="Same"/>
        <pbut id="11" left="20" top="60" width="100" height="28" text="Same" enabled="no"/>
        <pbut id="12" left="20" top="100" width="100" height="28" text="Same" default="yes"/>)");
    auto& button = test.Widget<QPushButton>(10);
    button.clearFocus();
    std::set<std::string> looks;
    const auto add = [&looks](QWidget& widget) {
        const QImage image = widget.grab().toImage();
        looks.emplace(reinterpret_cast<const char*>(image.constBits()), static_cast<std::size_t>(image.sizeInBytes()));
    };
    for (const PaneIDT id : {10, 11, 12}) {
        add(test.Widget<QPushButton>(id));
    }
    button.setFocus();
    add(button);
    button.setDown(true);
    add(button);
    EXPECT_EQ(looks.size(), 5U);
}

TEST(LookTest, TheDesktopsFontAndWishForContrastAreFollowed) {
    const QFont before = QApplication::font();
    EXPECT_EQ(Look::ContrastInForce(), Contrast::Normal);
    qputenv("GTK_THEME", "HighContrastInverse");
    Look::Apply();
    EXPECT_EQ(Look::ContrastInForce(), Contrast::High);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(Qt::black));
    EXPECT_EQ(QApplication::font(), before);
    qputenv("GTK_THEME", "Adwaita");
    Look::Apply();
}
