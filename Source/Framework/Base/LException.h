#pragma once

#include <stdexcept>
#include <string>

/// What the framework throws: a programming error or a missing resource. The program stops with its text.
class LException : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A pane, window or object that must be there is not, or is of another class.
class LNilPointerException final : public LException {
public:
    explicit LNilPointerException(const std::string& what) : LException("missing or of the wrong class: " + what) {}
};

/// A resource is missing or not written as it should be.
class LResourceException final : public LException {
public:
    using LException::LException;
};

/// `pointer` itself, or the nil-pointer exception naming `what`.
template <typename T>
[[nodiscard]] T* ThrowIfNil(T* pointer, const std::string& what) {
    if (pointer == nullptr) {
        throw LNilPointerException(what);
    }
    return pointer;
}
