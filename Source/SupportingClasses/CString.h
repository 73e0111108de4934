#pragma once

#include "Framework/Base/LStr255.h"

/// The program's text value: at most 255 characters, with the trimming and path helpers that its paths and log lines
/// need. A value; not locked.
class CString : public LStr255 {
public:
    using LStr255::LStr255;
    using LStr255::operator=;

    CString() = default;
    CString(const CString& other) = default;
    /// The characters and the comparison function of a text that need not be a `CString`.
    explicit CString(const LStr255& other) : LStr255(other) {}
    ~CString() override = default;

    CString& operator=(const CString& other) = default;

    /// Number of characters, 0 to 255.
    [[nodiscard]] int GetLength() const { return Length(); }

    /// The stored text, length byte first; good as long as this object is not changed.
    [[nodiscard]] const unsigned char* GetUChars() const { return ConstTextPtr(); }

    /// The text as a C string in a buffer that every object shares, one buffer for each thread: good until the calling
    /// thread's next `GetChars`. Where two texts are needed at once, use `CStr`.
    [[nodiscard]] const char* GetChars() const;

    void Empty() { Remove(1, 255); }

    /// Whether the text has no characters other than spaces.
    [[nodiscard]] bool IsEmpty() const;

    // Only the space character is trimmed; tabs and other white space stay.
    void TrimLeft();
    void TrimRight();

    /// Cuts a colon path down to its folder: whatever follows the last ':' goes, all of it when there is none. Returns
    /// a copy of what is left.
    CString StripFileName();

    /// Becomes the program's text of that number (from 1); the empty text when there is none.
    void LoadString(int index);
};
