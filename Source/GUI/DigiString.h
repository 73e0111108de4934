#pragma once

#include "Framework/UI/LView.h"

#include <cstdint>
#include <string>
#include <string_view>

/// A readout: one value as a row of seven-segment characters in a sunken bevel. Laid out for a frame 126 pixels wide
/// and at least 25 high; content is centred on the line 63 pixels right of the left edge and starts at the top edge.
///
/// The owner sets a value and colours and then asks for a draw; setters draw nothing. Main thread only.
class DigiString final : public LView {
public:
    static constexpr int kLongKind = 0;
    static constexpr int kFloatKind = 1;
    static constexpr int kStringKind = 2;

    explicit DigiString(const SPaneInfo& info) : LView(info) {}
    explicit DigiString(LStream* stream) : LView(stream) {}

    // The value last set is the one shown.

    /// Negative numbers have no digits of their own: their cell stays unlit.
    void setLongValue(std::int32_t value);
    /// Shown with two decimals, cut off and not rounded.
    void setFloatValue(float value);
    /// A time (two fields or three of two digits, with colons between), "OVERFLOW", "LOOP", a number, the empty text
    /// for an empty readout, or any single character for a dash. Not copied: the text has to stay as long as the pane
    /// may draw.
    void setStringValue(const char* text);
    [[nodiscard]] std::int32_t getLongValue() const { return m_longValue; }
    [[nodiscard]] float getFloatValue() const { return m_floatValue; }
    [[nodiscard]] const char* getStringValue() const { return m_stringValue; }

    void setBackColor(const RGBColor& color) { m_backColor = color; }
    [[nodiscard]] const RGBColor& getBackColor() const { return m_backColor; }
    /// The colour of what is not lit comes first.
    void setTextColor(const RGBColor& unlit, const RGBColor& lit);

    void DrawSelf() override;

    /// The value as a text: what is shown, with times and words spelt out. Empty when the readout shows nothing.
    [[nodiscard]] std::string AccessibleValue() const override;

    /// Background and bevel.
    void clear();
    void drawNumber(std::int32_t number);
    void drawFloat(float number);
    void drawString(const char* text);
    /// `colonCount` is 1 or 2. Draws on what `clear` left.
    void drawTime(const char* text, int colonCount);

    /// 1 for every number up to 9, negative ones too.
    [[nodiscard]] static int calcNoOfDigits(std::int32_t number);
    /// Every character is a digit, and one that is not "1" to "9" is worth 0. Stops at the largest 32-bit number.
    [[nodiscard]] static std::int32_t strToLong(std::string_view text);
    [[nodiscard]] static int charToInt(char character);
    /// `base` raised to `exponent`, modulo 2^32; 1 for an exponent below 1.
    [[nodiscard]] static std::int32_t pow(int base, int exponent);

private:
    /// Draws one cell at `x` and answers where the next one begins.
    int DrawDigit(int x, int digit);
    int DrawCharacter(int x, char character);
    int DrawRestoredZero(int x);
    void DrawWord(int x, std::string_view letters);

    std::int32_t m_longValue = 0;
    float m_floatValue = 0.0F;
    const char* m_stringValue = "";
    std::int32_t m_valueKind = kStringKind;
    RGBColor m_backColor;
    RGBColor m_litColor;
    RGBColor m_unlitColor;
    bool m_zeroFlag = false;  ///< the string being drawn began with a zero, and one is to be shown
};
