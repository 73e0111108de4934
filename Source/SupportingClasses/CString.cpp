#include "SupportingClasses/CString.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr int kProgramStringList = 200;

}  // namespace

const char* CString::GetChars() const {
    thread_local std::array<char, kMaxLength + 1> buffer;
    std::memcpy(buffer.data(), CStr(), GetUChars()[0] + 1U);
    return buffer.data();
}

bool CString::IsEmpty() const {
    return View().find_first_not_of(' ') == std::string_view::npos;
}

void CString::TrimLeft() {
    const std::string_view text = View();
    *this = text.substr(std::min(text.size(), text.find_first_not_of(' ')));
}

void CString::TrimRight() {
    const std::string_view text = View();
    *this = text.substr(0, text.find_last_not_of(' ') + 1);  // npos + 1 is 0: nothing is left of a text of spaces
}

CString CString::StripFileName() {
    const std::string_view text = View();
    *this = text.substr(0, text.rfind(':') + 1);
    return *this;
}

void CString::LoadString(int index) {
    LoadFromList(kProgramStringList, index);
}
