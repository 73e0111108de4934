#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace Fuzz {

/// Ends the process, which the fuzzer takes for a finding, when the property does not hold.
inline void Require(bool holds, const char* property, std::string_view subject = {}) {
    if (!holds) {
        std::fprintf(stderr, "does not hold: %s [%.*s]\n", property, static_cast<int>(subject.size()), subject.data());
        std::abort();
    }
}

/// The parts between the separators, one more than there are separators.
inline std::vector<std::string> Split(std::string_view text, char separator) {
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == separator) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

/// What the program does with one input; throws nothing.
void Run(const std::string& input);

}  // namespace Fuzz

// NOLINTNEXTLINE(misc-definitions-in-headers): each program has one
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Fuzz::Run({reinterpret_cast<const char*>(data), size});
    return 0;
}
