#include "Programs/CommandLine/Console.h"

#include <cstdlib>
#include <iostream>
#include <string>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr std::size_t kUsualColumns = 80;

bool IsTerminal(int descriptor) {
    const char* type = std::getenv("TERM");
    return ::isatty(descriptor) == 1 && type != nullptr && std::string_view(type) != "dumb";
}

bool ColoursAreWelcome() {
    const char* refusal = std::getenv("NO_COLOR");
    return refusal == nullptr || *refusal == '\0';
}

std::size_t ErrorColumns() {
    ::winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

}  // namespace

Console Console::System() {
    const bool errIsTerminal = IsTerminal(STDERR_FILENO);
    return {.out = std::cout,
            .err = std::cerr,
            .outHasColour = ColoursAreWelcome() && IsTerminal(STDOUT_FILENO),
            .errHasColour = ColoursAreWelcome() && errIsTerminal,
            .errIsLive = errIsTerminal,
            .errColumns = ErrorColumns};
}

std::string Coloured(std::string_view text, Colour colour, bool hasColour) {
    const char* code = "";
    switch (colour) {
        case Colour::Plain:
            return std::string(text);
        case Colour::Green:
            code = "\033[32m";
            break;
        case Colour::Yellow:
            code = "\033[33m";
            break;
        case Colour::Red:
            code = "\033[31m";
            break;
    }
    return hasColour ? code + std::string(text) + "\033[0m" : std::string(text);
}
