#include "Framework/Base/StringList.h"
#include "Fuzz/FuzzSupport.h"

#include <algorithm>
#include <map>
#include <optional>
#include <stdexcept>

// The input is a file of texts.

namespace {

using Fuzz::Require;

/// The list's texts that are not empty. A number that has one stands in the content.
std::map<int, std::string> TextsOf(const StringList& list, const std::string& content) {
    std::map<int, std::string> texts;
    for (std::size_t i = 0; i < content.size(); ++i) {
        const int number = std::atoi(content.substr(i, 5).c_str());
        if (const std::string_view text = list.Entry(number); !text.empty()) {
            texts[number] = text;
        }
    }
    return texts;
}

std::string Written(const std::map<int, std::string>& texts) {
    std::string content;
    for (const auto& [number, text] : texts) {
        Require(number >= 1 && number <= 32767 && text.size() <= 255, "numbers and lengths are in range", text);
        content += std::to_string(number) + " = ";
        for (const char c : text) {
            content += c == '\n' ? "\\n" : c == '\r' ? "\\r" : c == '\\' ? "\\\\" : std::string(1, c);
        }
        content += "\r\n";
    }
    return content;
}

/// Lines that are no comment and have a text behind their '='.
std::ptrdiff_t CountTexts(const std::vector<std::string>& lines) {
    return std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
        const std::size_t first = line.find_first_not_of(" \t");
        const std::size_t equals = line.find('=');
        return equals != std::string::npos && line[first] != '#' &&
               line.find_first_not_of(" \r", equals + 1) != std::string::npos;
    });
}

}  // namespace

void Fuzz::Run(const std::string& input) {
    const std::vector<std::string> lines = Split(input, '\n');
    std::optional<StringList> list;
    try {
        list = StringList::Parse(input);
    } catch (const std::runtime_error& fault) {
        int line = 0;
        Require(std::sscanf(fault.what(), "string list, line %d: ", &line) == 1 && line >= 1 &&
                    line <= static_cast<int>(lines.size()),
                "what is wrong is told with its line", fault.what());
        return;
    }
    const std::map<int, std::string> texts = TextsOf(*list, input);
    const std::string written = Written(texts);
    Require(TextsOf(StringList::Parse(written), written) == texts, "texts that are written can be read again", input);
    Require(static_cast<std::ptrdiff_t>(texts.size()) >= CountTexts(lines), "no text is lost", input);
}
