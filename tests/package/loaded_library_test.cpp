#include "stage/binary/loaded_library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

#include "support/paths.h"

namespace {

using stage::LibraryError;
using stage::LoadedLibrary;

#ifdef _WIN32
constexpr const char *kLibrary = "kernel32.dll";
constexpr const char *kFunction = "GetTickCount";
#else
constexpr const char *kLibrary = "libm.so.6";
constexpr const char *kFunction = "fabs";
#endif

TEST(LoadedLibrary, finds_a_symbol_of_a_system_library) {
    const LoadedLibrary library(kLibrary);
    EXPECT_NE(library.find_symbol(kFunction), nullptr);
    EXPECT_EQ(library.symbol(kFunction), library.find_symbol(kFunction));
}

TEST(LoadedLibrary, an_unknown_symbol_is_null_or_an_error_that_names_it) {
    const LoadedLibrary library(kLibrary);
    EXPECT_EQ(library.find_symbol("no_such_symbol"), nullptr);
    EXPECT_THAT([&] { library.symbol("no_such_symbol"); },
                testing::ThrowsMessage<LibraryError>(testing::HasSubstr("no_such_symbol")));
}

TEST(LoadedLibrary, a_missing_file_is_an_error_that_names_it) {
    EXPECT_THAT([] { LoadedLibrary("no/such/plugin.aex"); },
                testing::ThrowsMessage<LibraryError>(testing::HasSubstr("plugin.aex")));
}

TEST(LoadedLibrary, a_file_that_is_no_library_is_an_error) {
    EXPECT_THROW(LoadedLibrary(paths::source() + "/CMakeLists.txt"), LibraryError);
}

TEST(LoadedLibrary, moves_and_leaves_the_source_empty) {
    LoadedLibrary first(kLibrary);
    LoadedLibrary second(std::move(first));
    EXPECT_NE(second.find_symbol(kFunction), nullptr);
    LoadedLibrary third(kLibrary);
    third = std::move(second);
    EXPECT_NE(third.find_symbol(kFunction), nullptr);
}

}  // namespace
