#pragma once

#include "Framework/Base/LException.h"
#include "Framework/Base/LStr255.h"
#include "Framework/UI/LStream.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What several classes read from a layout record in the same way. Each throws `LResourceException`, naming layout,
/// pane and attribute, for what cannot be read.
namespace LayoutAttributes {

/// The exception of an attribute that cannot have the value that it has.
[[nodiscard]] LResourceException Unreadable(const LStream& stream, const std::string& attribute);

/// A word of an attribute and what it stands for.
template <typename T>
struct Word {
    std::string_view text;
    T meaning;
};

/// An attribute that is one of a few words.
template <typename T>
[[nodiscard]] T OneOf(const LStream& stream, const std::string& attribute, std::span<const Word<T>> words,
                      T otherwise) {
    if (!stream.Has(attribute)) {
        return otherwise;
    }
    for (const Word<T>& word : words) {
        if (stream.Text(attribute) == word.text) {
            return word.meaning;
        }
    }
    throw Unreadable(stream, attribute);
}

/// "items": texts separated by '|'; none when it is missing or empty.
[[nodiscard]] std::vector<LStr255> Items(const LStream& stream);

/// "key": one key combination such as "Ctrl+R"; empty when it is missing.
[[nodiscard]] std::string Key(const LStream& stream);

/// Numbers separated by spaces.
[[nodiscard]] std::vector<std::int32_t> Numbers(const LStream& stream, const std::string& attribute);

}  // namespace LayoutAttributes
