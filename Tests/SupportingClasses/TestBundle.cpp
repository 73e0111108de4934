// A client library for the loader's tests; each build of it leaves out or changes one entry point. The entry points
// note their calls in a text, which a test reads through a hold of its own on the library.

#include <cstring>

namespace {

char g_calls[256];  // NOLINT: a test reads it as a C string

void Note(const char* call) {
    std::strncat(g_calls, call, sizeof g_calls - std::strlen(g_calls) - 1);
}

}  // namespace

extern "C" {

const char* BundleCalls() {
    return g_calls;
}

#ifndef BUNDLE_WITHOUT_INIT
bool MacDLLInit() {
    Note("init ");
#ifdef BUNDLE_REFUSES
    return false;
#else
    return true;
#endif
}
#endif

#ifndef BUNDLE_WITHOUT_CLEANUP
void MacDLLCleanup() {
    Note("cleanup ");
}
#endif

#ifndef BUNDLE_WITHOUT_MAIN_OBJECT_ENTRY
void* GetSharedLibraryMainObject() {
    Note("object ");
#ifdef BUNDLE_HAS_NULL_OBJECT
    return nullptr;
#else
    return g_calls;
#endif
}
#endif
}
