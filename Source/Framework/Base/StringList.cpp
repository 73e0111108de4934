#include "Framework/Base/StringList.h"

#include "Framework/Base/EmbeddedResources.h"

#include <algorithm>
#include <charconv>
#include <mutex>
#include <stdexcept>

namespace {

constexpr int kHighestNumber = 32767;
constexpr std::size_t kLongestText = 255;
constexpr std::string_view kBlanks = " \t";

std::string_view WithoutLeadingBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(kBlanks)));
    return text;
}

/// Takes the number and the '=' with the blank after it off the front of `line`.
int TakeNumber(std::string_view& line) {
    int number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    if (error != std::errc() || number < 1 || number > kHighestNumber) {
        throw std::runtime_error("an entry begins with a number from 1 to 32767");
    }
    line = WithoutLeadingBlanks(line.substr(static_cast<std::size_t>(end - line.data())));
    if (!line.starts_with('=')) {
        throw std::runtime_error("a '=' is missing after the number");
    }
    line.remove_prefix(line.starts_with("= ") ? 2 : 1);
    return number;
}

char EscapedCharacter(char letter) {
    switch (letter) {
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case '\\':
            return '\\';
        default:
            throw std::runtime_error("a backslash stands before n, r or a backslash only");
    }
}

std::string Unescape(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t backslash = text.find('\\');
        plain += text.substr(0, backslash);
        if (backslash == std::string_view::npos) {
            break;
        }
        if (backslash + 1 == text.size()) {
            throw std::runtime_error("a backslash ends the line");
        }
        plain += EscapedCharacter(text[backslash + 1]);
        text.remove_prefix(backslash + 2);
    }
    return plain;
}

}  // namespace

StringList StringList::Parse(std::string_view content) {
    StringList list;
    for (int lineNumber = 1; !content.empty(); ++lineNumber) {
        const std::size_t length = std::min(content.size(), content.find('\n'));
        std::string_view line = content.substr(0, length);
        content.remove_prefix(std::min(content.size(), length + 1));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        try {
            list.AddLine(line);
        } catch (const std::runtime_error& fault) {
            throw std::runtime_error("string list, line " + std::to_string(lineNumber) + ": " + fault.what());
        }
    }
    return list;
}

const StringList* StringList::Find(int listID) {
    static std::mutex mutex;
    static std::map<int, StringList> lists;  // guarded by mutex; its elements stay where they are
    const std::scoped_lock lock(mutex);
    if (const auto known = lists.find(listID); known != lists.end()) {
        return &known->second;
    }
    const std::string name = "Strings/" + std::to_string(listID) + ".txt";
    const std::string_view content = FindEmbeddedResource(name);
    if (content.data() == nullptr) {
        return nullptr;
    }
    return &lists.emplace(listID, Parse(content)).first->second;
}

std::string_view StringList::Entry(int index) const {
    const auto entry = m_entries.find(index);
    return entry == m_entries.end() ? std::string_view() : std::string_view(entry->second);
}

void StringList::AddLine(std::string_view line) {
    line = WithoutLeadingBlanks(line);
    if (line.empty() || line.starts_with('#')) {
        return;
    }
    const int number = TakeNumber(line);
    std::string text = Unescape(line);
    if (text.size() > kLongestText) {
        throw std::runtime_error("the text is longer than 255 characters");
    }
    if (!m_entries.emplace(number, std::move(text)).second) {
        throw std::runtime_error("the number " + std::to_string(number) + " is given twice");
    }
}
