#include "Framework/Base/LException.h"
#include "Framework/UI/LPane.h"
#include "Framework/UI/LStream.h"
#include "Framework/UI/TRegistrar.h"
#include "Fuzz/FuzzSupport.h"

#include <memory>
#include <string>

// The input is the text of a layout. It is read, and its panes are made, without the widgets that show them.

namespace {

using Fuzz::Require;

constexpr int kDeepest = 100;

/// A number that is taken is the one in the text; a refusal names its attribute.
void CheckNumber(const LStream& stream, const std::string& name) {
    const std::string text = stream.Text(name, "7");
    try {
        Require(stream.Number(name, 7) == std::stol(text), "a number is the one in the text", text);
        Require(text.find_first_not_of("-0123456789") == std::string::npos, "and there is nothing else", text);
    } catch (const LResourceException& fault) {
        Require(std::string(fault.what()).find("attribute " + name) != std::string::npos, "it is told", name);
    }
}

/// The panes of the record and their attributes as a text that can be read again.
std::string Written(const LStream& stream, int depth = 0) {
    Require(depth < kDeepest, "the depth is limited");
    std::string text = '<' + stream.ClassID();
    for (const char* name : {"id", "left", "top", "width", "visible", "text", "key", "items", "value", "x"}) {
        CheckNumber(stream, name);
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
