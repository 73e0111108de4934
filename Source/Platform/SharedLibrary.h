#pragma once

#include <string>

/// A shared library loaded by path, released with the object. Copies are not made: one object, one hold on the library.
class SharedLibrary {
public:
    SharedLibrary() = default;
    ~SharedLibrary();
    SharedLibrary(SharedLibrary&& other) noexcept;
    SharedLibrary& operator=(SharedLibrary&& other) noexcept;
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;

    /// Loads the library at an absolute native path with all its references resolved; an object that is not loaded when
    /// that fails. The library's own start-up code runs.
    [[nodiscard]] static SharedLibrary Load(const std::string& nativePath);

    [[nodiscard]] bool IsLoaded() const { return m_handle != nullptr; }

    /// The function of that name, null when the library has none. `Function` is the pointer type it is known to have.
    template <typename Function>
    [[nodiscard]] Function Find(const char* name) const {
        return reinterpret_cast<Function>(Address(name));
    }

    void Release();

private:
    [[nodiscard]] void* Address(const char* name) const;

    void* m_handle = nullptr;
};
