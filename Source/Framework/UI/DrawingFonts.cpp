#include "Framework/UI/DrawingFonts.h"

#include "Framework/UI/Drawing.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <algorithm>
#include <cmath>
#include <deque>

namespace Drawing {

namespace {

/// "1234.00", six digits and a point of half their width, is to stand apart from its neighbours where the chart's
/// divisions are 33 pixels apart: 4.55 pixels a digit at a size of 10, which is narrower than the common sans faces
/// are.
constexpr double kDigitWidthForSize = 0.455;
/// Narrower than this no face is legible.
constexpr int kNarrowestPercent = 70;

QFont LabelFont(int pixels) {
    QFont font;
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans"), QStringLiteral("Liberation Sans"),
                      QStringLiteral("sans-serif")});
    font.setPixelSize(pixels);
    font.setStyleStrategy(QFont::PreferAntialias);
    // Sharp baselines and letters as wide as at any other scale.
    font.setHintingPreference(QFont::PreferVerticalHinting);
    font.setKerning(false);
    const double digitWidth = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
    if (digitWidth > 0.0) {
        const double percent = std::floor(100.0 * kDigitWidthForSize * pixels / digitWidth);
        font.setStretch(std::clamp(static_cast<int>(percent), kNarrowestPercent, 100));
    }
    return font;
}

QFont ProgramFont(int pixels) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(pixels);
    return font;
}

struct Entry {
    int number;
    int pixels;
    QFont programFont;  ///< the program's font when the entry was made
    ReadyFont ready;
};

/// The few fonts in use, at addresses that stay.
std::deque<Entry>& Fonts() {
    static std::deque<Entry> fonts;
    return fonts;
}

/// Fonts must not outlive the application object.
void ForgetFonts() {
    Fonts().clear();
}

}  // namespace

const ReadyFont* FindFont(int number, int pixels) {
    if (qGuiApp == nullptr) {
        return nullptr;
    }
    std::deque<Entry>& fonts = Fonts();
    const auto isWanted = [&](const Entry& entry) {
        return entry.number == number && entry.pixels == pixels &&
               (number == kLabelFont || entry.programFont == QGuiApplication::font());
    };
    if (const auto found = std::ranges::find_if(fonts, isWanted); found != fonts.end()) {
        return &found->ready;
    }
    if (fonts.empty()) {
        qAddPostRoutine(ForgetFonts);
    }
    const QFont font = number == kLabelFont ? LabelFont(std::max(pixels, 1)) : ProgramFont(std::max(pixels, 1));
    fonts.push_back({.number = number,
                     .pixels = pixels,
                     .programFont = QGuiApplication::font(),
                     .ready = {.font = font, .metrics = QFontMetricsF(font)}});
    return &fonts.back().ready;
}

double WidthOf(const ReadyFont& font, std::string_view text) {
    return font.metrics.horizontalAdvance(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace Drawing
