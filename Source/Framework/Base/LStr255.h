#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class LStr255;

/// A text handed to an operation of `LStr255`, in whichever form the caller has it. It points into the caller's text,
/// so it is a parameter type and nothing else. A null C string is the empty text.
class TextArgument {
public:
    // NOLINTBEGIN(google-explicit-constructor): converting is what it is for
    TextArgument(const char* text) : m_view(text == nullptr ? std::string_view() : std::string_view(text)) {}
    TextArgument(std::string_view text) : m_view(text) {}
    TextArgument(const std::string& text) : m_view(text) {}
    TextArgument(const LStr255& text);
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] std::string_view View() const { return m_view; }

private:
    std::string_view m_view;
};

/// A text of at most 255 characters: a length byte, the characters, and a NUL that the length does not count. Whatever
/// fills it, the first 255 characters are kept. Every operation accepts a part of the text itself as its argument.
///
/// A value. Not locked: an object that several threads use needs a lock of its owner.
class LStr255 {
public:
    static constexpr std::size_t kMaxLength = 255;

    /// Negative, 0 or positive as `left` sorts before, equals or sorts after `right`. Equality asks it and nothing
    /// else.
    using CompareFunc = int (*)(std::string_view left, std::string_view right);

    LStr255() = default;
    explicit LStr255(const char* text);
    explicit LStr255(std::string_view text);
    LStr255(const LStr255& other) = default;
    virtual ~LStr255() = default;

    /// The characters and the comparison function of `other`.
    LStr255& operator=(const LStr255& other) = default;

    // These keep the comparison function.
    LStr255& operator=(const char* text);
    LStr255& operator=(std::string_view text);

    /// Adds as much of the text as there is room for.
    LStr255& Append(TextArgument text);
    LStr255& operator+=(TextArgument text) { return Append(text); }
    LStr255& operator+=(char character);
    /// Adds the number in decimal digits, with a '-' in front when it is negative.
    LStr255& operator+=(std::int32_t number);

    /// Takes out `count` characters from the position `start` (the first character has position 1), or as many as there
    /// are. A position outside the text names no characters.
    void Remove(std::uint8_t start, std::uint8_t count);

    // These compare byte for byte. Every text begins and ends with the empty text.
    [[nodiscard]] bool BeginsWith(TextArgument text) const;
    [[nodiscard]] bool EndsWith(TextArgument text) const;

    [[nodiscard]] std::uint8_t Length() const { return m_text[0]; }

    /// The comparison function of equality tests; null brings back the exact comparison that a new text has. In a
    /// comparison of two texts the one on the left side decides.
    void SetCompareFunc(CompareFunc function);
    [[nodiscard]] CompareFunc GetCompareFunc() const { return m_compare; }

    [[nodiscard]] bool operator==(const LStr255& other) const { return *this == other.View(); }
    [[nodiscard]] bool operator==(const char* other) const { return *this == TextArgument(other).View(); }
    [[nodiscard]] bool operator==(std::string_view other) const { return m_compare(View(), other) == 0; }

    /// The stored text, length byte first. The pointers and views are good as long as the object is not changed.
    [[nodiscard]] const unsigned char* ConstTextPtr() const { return m_text.data(); }
    [[nodiscard]] std::string_view View() const { return {CStr(), Length()}; }
    [[nodiscard]] const char* CStr() const { return reinterpret_cast<const char*>(&m_text[1]); }

    /// Becomes entry `index` (from 1) of the string list `listID`; the empty text when there is no such list or entry.
    /// Throws std::runtime_error when the list's resource is not written as a string list.
    void LoadFromList(int listID, int index);

private:
    static int CompareExactly(std::string_view left, std::string_view right) { return left.compare(right); }

    void Assign(std::string_view text);
    void SetLength(std::size_t length);

    std::array<unsigned char, kMaxLength + 2> m_text{};
    CompareFunc m_compare = CompareExactly;
};

inline TextArgument::TextArgument(const LStr255& text) : m_view(text.View()) {}
