# How every target is compiled: C++20 without extensions, warnings as errors, no contraction of
# floating-point expressions (the same arithmetic natively and on Windows), hidden symbols.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")

# What a program was compiled from before is taken from ccache, where that is installed: from any
# folder, with headers compiled in advance as well.
find_program(KS_CCACHE ccache)
mark_as_advanced(KS_CCACHE)
if(KS_CCACHE AND CMAKE_HOST_UNIX AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER env "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime "${KS_CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER ${CMAKE_CXX_COMPILER_LAUNCHER})
endif()
if(KS_CCACHE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options($<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
endif()

add_library(ks_compile INTERFACE)
if(MSVC)
  target_compile_options(ks_compile INTERFACE /W4 /WX /fp:precise /utf-8)
else()
  target_compile_options(ks_compile INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wno-sign-conversion
    -ffp-contract=off -fno-fast-math)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 misreports "literal" + std::string as an overlapping copy (its bug 105651).
    target_compile_options(ks_compile INTERFACE -Wno-restrict)
  endif()
  if(KS_SANITIZER)
    add_compile_options(-fsanitize=${KS_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${KS_SANITIZER})
  endif()
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  find_program(KS_MOLD mold)
  mark_as_advanced(KS_MOLD)
  if(KS_MOLD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12.1)
    add_link_options(-fuse-ld=mold)
  endif()
endif()
if(MINGW)
  # The libraries must run on a bare Windows: nothing of the compiler's run-time is left dynamic.
  add_link_options(-static -static-libgcc -static-libstdc++)
endif()
