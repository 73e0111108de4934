#include "SupportingClasses/CTime.h"

#include "Platform/Clock.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <ctime>
#include <string_view>

namespace {

constexpr auto kNumberTexts = std::to_array<std::string_view>(
    {"0",  "1",  "2",  "3",  "4",  "5",  "6",  "7",  "8",  "9",  "10", "11", "12", "13", "14",
     "15", "16", "17", "18", "19", "20", "21", "22", "23", "24", "25", "26", "27", "28", "29",
     "30", "31", "32", "33", "34", "35", "36", "37", "38", "39", "40", "41", "42", "43", "44",
     "45", "46", "47", "48", "49", "50", "51", "52", "53", "54", "55", "56", "57", "58", "59"});
static_assert(kNumberTexts.size() == 60);

constexpr auto kMonthNames =
    std::to_array<std::string_view>({"January", "February", "March", "April", "May", "June", "July", "August",
                                     "September", "October", "November", "December"});

constexpr auto kDayNames = std::to_array<std::string_view>({"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"});

constexpr std::uint32_t kSecondsPerDay = 86'400;

std::string_view NumberText(std::uint32_t number) {
    return number < kNumberTexts.size() ? kNumberTexts[number] : kNumberTexts[0];
}

template <std::size_t N>
std::string_view NameAt(const std::array<std::string_view, N>& names, int index) {
    return index >= 0 && index < static_cast<int>(N) ? names[static_cast<std::size_t>(index)] : std::string_view();
}

void AppendTwoDigits(CString& text, int number) {
    if (number < 10) {
        text += '0';
    }
    text += number;
}

char* AppendTwoDigits(char* end, std::uint32_t number) {
    if (number < 10) {
        *end++ = '0';
    }
    const std::string_view digits = NumberText(number);
    return std::copy(digits.begin(), digits.end(), end);
}

}  // namespace

std::uint32_t CTime::GetCurrentTime() {
    return Clock::Current().LocalSeconds();
}

CString CTime::GetCurrentDateTime() {
    const std::tm now = Clock::Current().LocalDateTime();
    CString text(NameAt(kDayNames, now.tm_wday));
    text += ' ';
    text += NameAt(kMonthNames, now.tm_mon);
    text += ' ';
    text += now.tm_mday;
    text += ", ";
    text += now.tm_year + 1900;
    text += ' ';
    AppendTwoDigits(text, now.tm_hour);
    text += ':';
    AppendTwoDigits(text, now.tm_min);
    text += ':';
    AppendTwoDigits(text, now.tm_sec);
    return text;
}

char* CTime::FormatTime(std::uint32_t seconds, char* buffer) {
    const std::uint32_t timeOfDay = seconds % kSecondsPerDay;
    const std::uint32_t hour = timeOfDay / 3600;
    const std::uint32_t minute = timeOfDay / 60 % 60;
    char* end = buffer;
    if (hour != 0) {
        end = AppendTwoDigits(end, hour);
        *end++ = ':';
    }
    if (hour != 0 || minute != 0) {
        end = AppendTwoDigits(end, minute);
        *end++ = ':';
    }
    end = AppendTwoDigits(end, timeOfDay % 60);
    *end = '\0';
    return buffer;
}
