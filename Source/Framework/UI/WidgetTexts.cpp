#include "Framework/UI/WidgetTexts.h"

#include <QByteArray>
#include <QKeySequence>
#include <QString>

namespace {

/// Whether the byte continues a character, in UTF-8.
bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// How many bytes the character takes that begins with this one.
std::size_t LengthOfCharacter(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte < 0xC0U) {
        return 1;
    }
    return byte < 0xE0U ? 2 : byte < 0xF0U ? 3 : 4;
}

std::string_view WithoutCutCharacter(std::string_view text) {
    std::size_t begin = text.size();
    while (begin > 0 && IsContinuation(text[begin - 1])) {
        --begin;
    }
    const bool isCut = begin > 0 && begin - 1 + LengthOfCharacter(text[begin - 1]) > text.size();
    return isCut ? text.substr(0, begin - 1) : text;
}

}  // namespace

QString WidgetTexts::FromPane(std::string_view text) {
    const std::string_view whole = WithoutCutCharacter(text);
    return QString::fromUtf8(whole.data(), static_cast<qsizetype>(whole.size()));
}

LStr255 WidgetTexts::ToPane(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    const std::string_view all(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return LStr255(WithoutCutCharacter(all.substr(0, LStr255::kMaxLength)));
}

QString WidgetTexts::Face(std::string_view text, std::string_view key) {
    QString face = FromPane(text).replace(QLatin1Char('&'), QLatin1String("&&"));
    constexpr std::string_view kAlt = "Alt+";
    if (key.size() == kAlt.size() + 1 && key.starts_with(kAlt)) {
        const qsizetype letter = face.indexOf(QLatin1Char(key.back()), 0, Qt::CaseInsensitive);
        if (letter >= 0) {
            face.insert(letter, QLatin1Char('&'));
        }
    }
    return face;
}

QString WidgetTexts::ToolTip(std::string_view text, std::string_view key) {
    QString tip = FromPane(text);
    if (!key.empty()) {
        const QKeySequence sequence(FromPane(key), QKeySequence::PortableText);
        const QString keyText = QLatin1Char('(') + sequence.toString(QKeySequence::NativeText) + QLatin1Char(')');
        tip += tip.isEmpty() ? keyText : QLatin1Char(' ') + keyText;
    }
    return tip;
}
