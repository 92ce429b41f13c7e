# ks_test(NAME SOURCES ... [LIBS ...] [NEEDS_PLUGIN] [NATIVE_ONLY] [SHARDS n] [COST seconds])
# One GoogleTest program per folder, and one test of CTest per program: NAME natively, win64.NAME in
# the Windows build. A program that takes long is split into SHARDS tests, NAME-1 to NAME-n, which run
# at the same time. COST is the processor time of the whole, roughly: what costs most starts first.
#
# Each run leaves test-reports/TEST.xml, GoogleTest's account of its cases, and TEST.time, the time
# that it took; cmake/test_report.py reads both.
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

# ks_test_library(NAME SOURCES ... [LIBS ...]): what several test programs share.
function(ks_test_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ks_compile PUBLIC ks_test_prefix ${arg_LIBS})
  ks_compile_as_test(${name})
  target_precompile_headers(${name} REUSE_FROM ks_test_prefix)
endfunction()

# ks_add_test(TEST COST COMMAND...): a test whose time is kept.
function(ks_add_test name cost)
  set(command ${ARGN})
  if(NOT CMAKE_HOST_WIN32)
    list(PREPEND command "${CMAKE_SOURCE_DIR}/cmake/timed" "${CMAKE_BINARY_DIR}/test-reports/${name}.time")
  endif()
  add_test(NAME ${name} COMMAND ${command})
  set_tests_properties(${name} PROPERTIES COST ${cost})
  if(MINGW)
    set_tests_properties(${name} PROPERTIES
      ENVIRONMENT "KS_WINE_DIR=${CMAKE_BINARY_DIR}" FIXTURES_REQUIRED wine)
  endif()
endfunction()

if(MINGW AND NOT CMAKE_HOST_WIN32)
  # Wine's server and services start by themselves, and stay while others run: started by a test, they
  # would be that test's time.
  add_test(NAME win64.wine COMMAND "${CMAKE_SOURCE_DIR}/cmake/run-under-wine" --setup)
  set_tests_properties(win64.wine PROPERTIES
    ENVIRONMENT "KS_WINE_DIR=${CMAKE_BINARY_DIR};KS_WINE_LINGER=180" FIXTURES_SETUP wine)
endif()

function(ks_test name)
  cmake_parse_arguments(arg "NEEDS_PLUGIN;NATIVE_ONLY" "SHARDS;COST" "SOURCES;LIBS" ${ARGN})
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

  if(NOT arg_SHARDS)
    set(arg_SHARDS 1)
  endif()
  if(NOT arg_COST)
    set(arg_COST 0)
  endif()
  set(program "$<TARGET_FILE:${name}>")
  set(test ${name})
  if(MINGW)
    list(PREPEND program "${CMAKE_SOURCE_DIR}/cmake/run-under-wine")
    set(test win64.${name})
  endif()
  # To a Windows program a path without a drive is a relative one; Wine's Z: is the whole system.
  set(drive "")
  if(MINGW AND NOT CMAKE_HOST_WIN32)
    set(drive "Z:")
  endif()
  math(EXPR cost "${arg_COST} / ${arg_SHARDS}")
  foreach(shard RANGE 1 ${arg_SHARDS})
    set(entry ${test})
    if(arg_SHARDS GREATER 1)
      set(entry ${test}-${shard})
    endif()
    ks_add_test(${entry} ${cost} ${program}
      --gtest_brief=1 "--gtest_output=xml:${drive}${CMAKE_BINARY_DIR}/test-reports/${entry}.xml")
    math(EXPR index "${shard} - 1")
    set_property(TEST ${entry} APPEND PROPERTY
      ENVIRONMENT GTEST_TOTAL_SHARDS=${arg_SHARDS} GTEST_SHARD_INDEX=${index})
  endforeach()
endfunction()
