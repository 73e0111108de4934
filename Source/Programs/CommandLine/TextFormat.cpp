#include "Programs/CommandLine/TextFormat.h"

#include "SupportingClasses/IOTesterConsts.h"

#include <cinttypes>
#include <cstdarg>
#include <cstdio>

std::string TextFormat::Print(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, arguments);
    va_end(arguments);
    std::string text(static_cast<std::size_t>(length > 0 ? length : 0), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    return text;
}

std::string TextFormat::Duration(std::uint64_t seconds) {
    const std::uint64_t days = seconds / 86'400;
    const std::uint64_t hours = seconds / 3600 % 24;
    const std::uint64_t minutes = seconds / 60 % 60;
    if (days > 0) {
        return Print("%" PRIu64 "d %02" PRIu64 ":%02" PRIu64 ":%02" PRIu64, days, hours, minutes, seconds % 60);
    }
    if (hours > 0) {
        return Print("%" PRIu64 ":%02" PRIu64 ":%02" PRIu64, hours, minutes, seconds % 60);
    }
    return Print("%" PRIu64 ":%02" PRIu64, minutes, seconds % 60);
}

std::string TextFormat::Milliseconds(std::uint64_t microseconds) {
    const int decimals = microseconds < 1000 ? 3 : microseconds < 10'000 ? 2 : microseconds < 100'000 ? 1 : 0;
    return Print("%.*f", decimals, static_cast<double>(microseconds) / 1e3);
}

std::string TextFormat::MegabytesPerSecond(double rateKBps) {
    const double rate = rateKBps / 1024.0;
    const int decimals = rate >= 1000.0 ? 0 : rate >= 100.0 ? 1 : rate >= 1.0 || rate == 0.0 ? 2 : 3;
    return Print("%.*f", decimals, rate);
}

std::string TextFormat::Megabytes(std::uint64_t bytes) {
    return Print("%.1f", static_cast<double>(bytes) / kBytesPerMB);
}

std::string TextFormat::Count(std::uint64_t number, const char* noun) {
    return Print("%" PRIu64 " %s%s", number, noun, number == 1 ? "" : "s");
}
