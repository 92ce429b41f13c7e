#include "stage/binary/loaded_library.h"

#include <utility>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace stage {
namespace {

#ifdef _WIN32

std::string last_error_text() {
    const DWORD code = GetLastError();
    char text[512];
    DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, code, 0, text, sizeof text, nullptr);
    while (length > 0 && static_cast<unsigned char>(text[length - 1]) <= ' ') --length;
    return std::string(text, length) + " (error " + std::to_string(code) + ")";
}

void *open_library(const std::filesystem::path &file) {
    // Libraries that the file itself needs are looked for beside it first.
    return LoadLibraryExW(file.c_str(), nullptr,
                          file.is_absolute() ? LOAD_WITH_ALTERED_SEARCH_PATH : 0);
}

void close_library(void *handle) {
    FreeLibrary(static_cast<HMODULE>(handle));
}

void *look_up(void *handle, const char *name) {
    return reinterpret_cast<void *>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

#else

std::string last_error_text() {
    const char *text = dlerror();
    return text ? text : "unknown reason";
}

void *open_library(const std::filesystem::path &file) {
    return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void close_library(void *handle) {
    dlclose(handle);
}

void *look_up(void *handle, const char *name) {
    return dlsym(handle, name);
}

#endif

}  // namespace

LoadedLibrary::LoadedLibrary(const std::filesystem::path &file)
    : file_(file.has_parent_path() ? std::filesystem::absolute(file) : file) {
    handle_ = open_library(file_);
    if (!handle_) {
        throw LibraryError("cannot load " + file_.string() + ": " + last_error_text());
    }
}

LoadedLibrary::~LoadedLibrary() {
    close();
}

LoadedLibrary::LoadedLibrary(LoadedLibrary &&other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)), file_(std::move(other.file_)) {}

LoadedLibrary &LoadedLibrary::operator=(LoadedLibrary &&other) noexcept {
    if (this != &other) {
        close();
        handle_ = std::exchange(other.handle_, nullptr);
        file_ = std::move(other.file_);
    }
    return *this;
}

void LoadedLibrary::close() noexcept {
    if (handle_) close_library(std::exchange(handle_, nullptr));
}

void *LoadedLibrary::find_symbol(const char *name) const noexcept {
    return handle_ ? look_up(handle_, name) : nullptr;
}

void *LoadedLibrary::symbol(const char *name) const {
    void *const address = find_symbol(name);
    if (!address) throw LibraryError(file_.string() + " does not export " + name);
    return address;
}

}  // namespace stage
