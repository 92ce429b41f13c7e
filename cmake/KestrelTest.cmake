# ks_test(NAME SOURCES ... [LIBS ...] [NEEDS_PLUGIN] [NATIVE_ONLY])
# One GoogleTest program per folder. Natively every test case is a test of CTest; under Wine, where a
# process takes a second to start, the program as a whole is one.
include(GoogleTest)
if(MINGW)
  set(gtest_force_shared_crt ON)
  set(BUILD_GMOCK ON)
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL)
  if(NOT TARGET GTest::gmock_main)
    add_library(GTest::gmock_main ALIAS gmock_main)
  endif()
else()
  find_package(GTest REQUIRED)
endif()

# How every test program is compiled, and nothing else: they share headers compiled in advance, which
# takes equal options.
function(ks_compile_as_test target)
  if(NOT MSVC)
    # Compiled once, run for seconds: more optimisation costs more than it saves. Libraries of the
    # tests (the oracle) keep it.
    target_compile_options(${target} PRIVATE -O1)
  endif()
  # A program differs from a library in this alone.
  set_target_properties(${target} PROPERTIES POSITION_INDEPENDENT_CODE OFF)
endfunction()

function(ks_test name)
  cmake_parse_arguments(arg "NEEDS_PLUGIN;NATIVE_ONLY" "" "SOURCES;LIBS" ${ARGN})
  if(MINGW AND arg_NATIVE_ONLY)
    return()
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ks_compile ks_test_prefix ${arg_LIBS} GTest::gmock_main)
  ks_compile_as_test(${name})
  target_precompile_headers(${name} REUSE_FROM ks_test_prefix)
  if(arg_NEEDS_PLUGIN)
    add_dependencies(${name} KestrelScopes)
  endif()
  if(MINGW)
    add_test(NAME win64.${name} COMMAND "${CMAKE_SOURCE_DIR}/cmake/run-under-wine" "$<TARGET_FILE:${name}>")
    set_tests_properties(win64.${name} PROPERTIES
      ENVIRONMENT "KS_WINE_DIR=${CMAKE_BINARY_DIR}" TIMEOUT 600 SKIP_REGULAR_EXPRESSION "KS_ALL_SKIPPED")
  else()
    gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600)
  endif()
endfunction()
