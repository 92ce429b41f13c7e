// A dynamic library held open for the life of an object.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

namespace stage {

// A library that cannot be opened, or lacks a symbol. what() is one line with the file and reason.
struct LibraryError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Move-only. Closing the library at the end of its life invalidates every symbol taken from it.
class LoadedLibrary {
  public:
    // Opens a library with all its symbols resolved and none of them made global. A path with a
    // folder part is taken as it stands, relative ones from the working directory; a bare file name
    // is looked up on the system's search path. Throws LibraryError.
    explicit LoadedLibrary(const std::filesystem::path &file);
    ~LoadedLibrary();

    LoadedLibrary(LoadedLibrary &&other) noexcept;
    LoadedLibrary &operator=(LoadedLibrary &&other) noexcept;

    // Address of an exported symbol; null when there is none of that name.
    void *find_symbol(const char *name) const noexcept;

    // The same; throws LibraryError instead of giving null.
    void *symbol(const char *name) const;

    // The symbol as a function pointer of type F. That F is the right type is the caller's promise.
    template <typename F>
    F *function(const char *name) const {
        return reinterpret_cast<F *>(symbol(name));
    }

    const std::filesystem::path &file() const { return file_; }

  private:
    void close() noexcept;

    void *handle_ = nullptr;
    std::filesystem::path file_;
};

}  // namespace stage
