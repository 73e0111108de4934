#include "Framework/Base/LException.h"
#include "Framework/UI/LPane.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/TRegistrar.h"
#include "Fuzz/FuzzSupport.h"

#include <cerrno>
#include <limits>
#include <memory>

// The input is the text of a layout. It is read, and its panes are made, without the widgets that show them.

namespace {

using Fuzz::Require;

constexpr int kDeepest = 100;

bool IsWholeNumber(const std::string& text) {
    const std::string digits = text.substr(text.starts_with('-') ? 1 : 0);
    errno = 0;
    const long number = std::strtol(text.c_str(), nullptr, 10);
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos && errno == 0 &&
           number == static_cast<std::int32_t>(number);
}

/// What `read` answers, or `refused` when it throws, naming the attribute.
template <typename T, typename Read>
T Try(const std::string& attribute, T refused, const Read& read) {
    try {
        return read();
    } catch (const LResourceException& fault) {
        Require(std::string(fault.what()).find("attribute " + attribute) != std::string::npos, "it is told", attribute);
        return refused;
    }
}

void CheckAttribute(const LStream& stream, const std::string& name) {
    const std::string text = stream.Text(name, "7");
    const auto number = Try<std::int64_t>(name, INT64_MAX, [&] { return stream.Number(name, 7); });
    Require(number == (IsWholeNumber(text) ? std::stol(text) : INT64_MAX), "a number is the one in the text", text);
    const int flag = Try(name, 2, [&] { return int{stream.Flag(name, true)}; });
    Require(flag == (text == "yes" || !stream.Has(name) ? 1 : text == "no" ? 0 : 2), "a flag is yes or no", text);
}

/// The panes of the record and their attributes as a text that can be read again.
std::string Written(const LStream& stream, int depth = 0) {
    Require(depth < kDeepest, "the depth is limited");
    std::string text = '<' + stream.ClassID();
    for (const char* name : {"id", "left", "top", "width", "visible", "text", "key", "items", "value", "x"}) {
        CheckAttribute(stream, name);
        text += stream.Has(name) ? ' ' + std::string(name) + "=\"" : "";
        for (const char c : stream.Text(name)) {
            const bool isPlain = c < 0 || (c > ' ' && c != '<' && c != '&' && c != '"');
            text += isPlain ? std::string(1, c) : "&#" + std::to_string(c) + ';';
        }
        text += stream.Has(name) ? "\"" : "";
    }
    text += '>';
    for (const LStream& inside : stream.SubPanes()) {
        text += Written(inside, depth + 1);
    }
    return text + "</" + stream.ClassID() + '>';
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    static const bool areRegistered = (PaneClasses::RegisterFrameworkClasses(), true);
    try {
        LStream stream = LStream::Parse(input, "layout 7");
        const std::string written = Written(stream);
        Require(areRegistered && Written(LStream::Parse(written, "layout 7")) == written, "it can be read again",
                written);
        static_cast<void>(PaneClasses::CreateWithSubPanes(stream));
    } catch (const LResourceException& fault) {
        Require(std::string_view(fault.what()).starts_with("layout 7, "), "a refusal names the layout", fault.what());
    }
}
