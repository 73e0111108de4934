#pragma once

#include <map>
#include <string>
#include <string_view>

/// The program's texts of one list, by number. Its resource file has one entry a line:
///
///     # A comment.
///     15 = The test could not be started.
///
/// Blanks may stand before and after the number; one blank after the '=' belongs to it and the rest of the line is the
/// text, in which \n, \r and \\ stand for a line feed, a carriage return and a backslash. Numbers run from 1 to 32767
/// and may leave gaps. Lines end in a line feed, with or without a carriage return before it; empty lines do not count.
class StringList {
public:
    /// Throws std::runtime_error with the line's number for a line that is not an entry, a number given twice, an
    /// unknown escape and a text longer than 255 characters.
    [[nodiscard]] static StringList Parse(std::string_view content);

    /// The list of the resource "Strings/<listID>.txt", read at its first use; null when there is no such resource.
    /// Throws as `Parse`. From any thread; the list lives as long as the program.
    [[nodiscard]] static const StringList* Find(int listID);

    /// The text of that number, empty for a number without an entry.
    [[nodiscard]] std::string_view Entry(int index) const;

private:
    void AddLine(std::string_view line);

    std::map<int, std::string> m_entries;
};
