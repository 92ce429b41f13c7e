# What Windows programs need to run under Wine as they would on Windows. Included once, in Windows
# builds on other systems only. Builds with everything else: gdiplus.dll, put beside the programs.
# On demand: target `wine-setup`, which also makes the prefix; without it, the first program run by
# cmake/run-under-wine does.
include_guard(GLOBAL)
if(MINGW AND NOT CMAKE_HOST_WIN32)
  add_subdirectory("${CMAKE_SOURCE_DIR}/packaging/wine-gdiplus"
    "${CMAKE_BINARY_DIR}/packaging/wine-gdiplus")
  add_custom_target(wine-setup
    COMMAND "${CMAKE_COMMAND}" -E env "KS_WINE_DIR=${CMAKE_BINARY_DIR}"
      "${CMAKE_SOURCE_DIR}/cmake/run-under-wine" --setup
    VERBATIM)
  if(TARGET wine_gdiplus)
    add_dependencies(wine-setup wine_gdiplus)
  endif()
endif()
