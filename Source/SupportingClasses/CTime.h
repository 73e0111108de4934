#pragma once

#include "SupportingClasses/CString.h"

#include <cstdint>

/// The clock as the program reads and prints it. Callable from any thread.
class CTime {
public:
    CTime() = delete;

    /// Whole seconds since the start of 1904, local time.
    [[nodiscard]] static std::uint32_t GetCurrentTime();

    /// The local date and time in English whatever the locale: "Mon January 5, 2004 09:03:07".
    [[nodiscard]] static CString GetCurrentDateTime();

    /// Writes the time of day of `seconds` into `buffer`, which has room for at least 10 bytes, and returns a pointer
    /// into it. Hours, and minutes after no hours, are left out when they are 0: "07", "01:05", "01:01:01". Durations
    /// of a day or more begin again at "00".
    static char* FormatTime(std::uint32_t seconds, char* buffer);
};
