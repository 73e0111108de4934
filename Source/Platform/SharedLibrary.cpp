#include "Platform/SharedLibrary.h"

#include <utility>

#include <dlfcn.h>

SharedLibrary::~SharedLibrary() {
    Release();
}

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept : m_handle(std::exchange(other.m_handle, nullptr)) {}

SharedLibrary& SharedLibrary::operator=(SharedLibrary&& other) noexcept {
    if (this != &other) {
        Release();
        m_handle = std::exchange(other.m_handle, nullptr);
    }
    return *this;
}

SharedLibrary SharedLibrary::Load(const std::string& nativePath) {
    SharedLibrary library;
    library.m_handle = ::dlopen(nativePath.c_str(), RTLD_NOW | RTLD_LOCAL);
    return library;
}

void SharedLibrary::Release() {
    if (m_handle != nullptr) {
        ::dlclose(std::exchange(m_handle, nullptr));
    }
}

void* SharedLibrary::Address(const char* name) const {
    return m_handle == nullptr ? nullptr : ::dlsym(m_handle, name);
}
