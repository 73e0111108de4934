#include "Framework/Base/LStr255.h"

#include "Framework/Base/StringList.h"

#include <algorithm>
#include <charconv>
#include <cstring>

LStr255::LStr255(const char* text) {
    Assign(TextArgument(text).View());
}

LStr255::LStr255(std::string_view text) {
    Assign(text);
}

LStr255& LStr255::operator=(const char* text) {
    Assign(TextArgument(text).View());
    return *this;
}

LStr255& LStr255::operator=(std::string_view text) {
    Assign(text);
    return *this;
}

LStr255& LStr255::Append(TextArgument text) {
    const std::string_view added = text.View().substr(0, kMaxLength - Length());
    if (!added.empty()) {
        std::memmove(&m_text[1U + Length()], added.data(), added.size());
        SetLength(Length() + added.size());
    }
    return *this;
}

LStr255& LStr255::operator+=(char character) {
    return Append(std::string_view(&character, 1));
}

LStr255& LStr255::operator+=(std::int32_t number) {
    std::array<char, 11> digits{};  // "-2147483648"
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return Append(std::string_view(digits.data(), end));
}

void LStr255::Remove(std::uint8_t start, std::uint8_t count) {
    if (start == 0 || start > Length()) {
        return;
    }
    const std::size_t before = start - 1U;
    const std::size_t removed = std::min<std::size_t>(count, Length() - before);
    const std::size_t after = Length() - before - removed;
    std::memmove(&m_text[start], &m_text[start + removed], after);
    SetLength(before + after);
}

bool LStr255::BeginsWith(TextArgument text) const {
    return View().starts_with(text.View());
}

bool LStr255::EndsWith(TextArgument text) const {
    return View().ends_with(text.View());
}

void LStr255::SetCompareFunc(CompareFunc function) {
    m_compare = function == nullptr ? CompareExactly : function;
}

void LStr255::LoadFromList(int listID, int index) {
    const StringList* list = StringList::Find(listID);
    Assign(list == nullptr ? std::string_view() : list->Entry(index));
}

void LStr255::Assign(std::string_view text) {
    const std::string_view kept = text.substr(0, kMaxLength);
    if (!kept.empty()) {
        std::memmove(&m_text[1], kept.data(), kept.size());
    }
    SetLength(kept.size());
}

void LStr255::SetLength(std::size_t length) {
    m_text[0] = static_cast<unsigned char>(length);
    m_text[length + 1] = 0;
}
