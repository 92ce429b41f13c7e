# Third-party libraries, all from the distribution. The plug-in uses none of them but GDI+, which is
# part of Windows.
#   ks_gdiplus                 GDI+: the system's, natively libgdiplus
#   ks_foreign_headers         CLI11 and nlohmann-json; for Windows also stb
#   ks_utf8                    utfcpp: UTF-8 and UTF-16
#   ks_fmt                     fmt: numbers and messages as text
#   ks_duktape                 duktape, the script engine
#   ks_imgui                   Dear ImGui and SDL, the interactive window (native only)
#   ks_xtest                   Xlib and XTest, for the window's tests (native only)
#   OpenImageIO::OpenImageIO   picture files and video (native only)
#   PkgConfig::LIBAV           video files (native only)
#   ks_cairo                   cairo, paints overlays (native only)
#   ks_dynamic_loading         libraries opened at run time
find_package(Threads REQUIRED)

add_library(ks_dynamic_loading INTERFACE)
target_link_libraries(ks_dynamic_loading INTERFACE ${CMAKE_DL_LIBS})

# Stops with the command that helps when PATH, a part of the Debian package PACKAGE, is not there.
function(ks_require path package)
  if(NOT EXISTS "${path}")
    message(FATAL_ERROR "${path} is missing (Debian package ${package}): run ./dev setup")
  endif()
endfunction()

# The flat interface of GDI+. Its functions are declared where they are used: no headers.
add_library(ks_gdiplus INTERFACE)
if(WIN32)
  target_link_libraries(ks_gdiplus INTERFACE gdiplus)
else()
  # Debian has no development package of it. Programs that draw nothing do not load it.
  find_library(KS_GDIPLUS_LIBRARY NAMES gdiplus libgdiplus.so.0)
  mark_as_advanced(KS_GDIPLUS_LIBRARY)
  if(NOT KS_GDIPLUS_LIBRARY)
    message(FATAL_ERROR "libgdiplus is missing (Debian package libgdiplus): run ./dev setup")
  endif()
  target_link_options(ks_gdiplus INTERFACE "LINKER:--as-needed")
  target_link_libraries(ks_gdiplus INTERFACE "${KS_GDIPLUS_LIBRARY}")
endif()

if(MINGW)
  # Header-only packages live in the build machine's include folder, which a cross compiler must not
  # search as a whole: link just the needed ones into a folder of our own.
  set(ks_foreign "${CMAKE_BINARY_DIR}/foreign-headers")
  file(MAKE_DIRECTORY "${ks_foreign}")
  ks_require(/usr/include/CLI libcli11-dev)
  ks_require(/usr/include/nlohmann nlohmann-json3-dev)
  ks_require(/usr/include/stb libstb-dev)
  ks_require(/usr/include/utf8.h libutfcpp-dev)
  ks_require(/usr/include/fmt libfmt-dev)
  foreach(name CLI nlohmann stb utf8 utf8.h fmt)
    file(CREATE_LINK "/usr/include/${name}" "${ks_foreign}/${name}" SYMBOLIC)
  endforeach()
  foreach(target ks_foreign_headers ks_utf8 ks_fmt)
    add_library(${target} INTERFACE)
    target_include_directories(${target} SYSTEM INTERFACE "${ks_foreign}")
  endforeach()
  # Its library is for the build machine only.
  target_compile_definitions(ks_fmt INTERFACE FMT_HEADER_ONLY)

  # Debian has no Windows library of duktape: its own source package is compiled. Its patches touch
  # only the makefiles, which are not used.
  set(ks_duktape_sources "${CMAKE_SOURCE_DIR}/build/third-party/duktape" CACHE PATH
    "Unpacked source package of duktape, as cmake/fetch-duktape leaves it")
  if(NOT EXISTS "${ks_duktape_sources}/src/duktape.c")
    message(FATAL_ERROR
      "${ks_duktape_sources} holds no duktape: run ./dev setup windows, or cmake/fetch-duktape")
  endif()
  add_library(ks_duktape STATIC EXCLUDE_FROM_ALL "${ks_duktape_sources}/src/duktape.c")
  target_include_directories(ks_duktape SYSTEM PUBLIC "${ks_duktape_sources}/src")
  target_compile_options(ks_duktape PRIVATE -w -ffp-contract=off)
else()
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  add_library(ks_foreign_headers INTERFACE)
  target_link_libraries(ks_foreign_headers INTERFACE CLI11::CLI11 nlohmann_json::nlohmann_json)

  find_path(KS_UTF8_INCLUDE utf8.h PATH_SUFFIXES utf8cpp REQUIRED)
  mark_as_advanced(KS_UTF8_INCLUDE)
  add_library(ks_utf8 INTERFACE)
  target_include_directories(ks_utf8 SYSTEM INTERFACE "${KS_UTF8_INCLUDE}")
  find_package(fmt REQUIRED)
  add_library(ks_fmt INTERFACE)
  target_link_libraries(ks_fmt INTERFACE fmt::fmt)

  # Not find_package: Debian's CMake files of OpenImageIO also insist on its tools, which need Qt.
  find_path(KS_OIIO_INCLUDE OpenImageIO/imageio.h REQUIRED)
  find_library(KS_OIIO_LIBRARY OpenImageIO REQUIRED)
  find_library(KS_OIIO_UTIL_LIBRARY OpenImageIO_Util REQUIRED)
  mark_as_advanced(KS_OIIO_INCLUDE KS_OIIO_LIBRARY KS_OIIO_UTIL_LIBRARY)
  add_library(ks_oiio INTERFACE)
  target_link_libraries(ks_oiio INTERFACE
    "${KS_OIIO_LIBRARY}" "${KS_OIIO_UTIL_LIBRARY}" Threads::Threads)
  target_include_directories(ks_oiio SYSTEM INTERFACE "${KS_OIIO_INCLUDE}")
  add_library(OpenImageIO::OpenImageIO ALIAS ks_oiio)

  # Video directly by libav: OpenImageIO's reader repeats a frame where the file is cut off.
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(LIBAV REQUIRED IMPORTED_TARGET GLOBAL libavformat libavcodec libswscale libavutil)

  find_path(KS_CAIRO_INCLUDE cairo.h PATH_SUFFIXES cairo REQUIRED)
  find_library(KS_CAIRO_LIBRARY cairo REQUIRED)
  # Finds cairo's fonts; its development package comes with cairo's.
  find_library(KS_FONTCONFIG_LIBRARY fontconfig REQUIRED)
  mark_as_advanced(KS_CAIRO_INCLUDE KS_CAIRO_LIBRARY KS_FONTCONFIG_LIBRARY)
  add_library(ks_cairo INTERFACE)
  target_link_libraries(ks_cairo INTERFACE "${KS_CAIRO_LIBRARY}" "${KS_FONTCONFIG_LIBRARY}")
  target_include_directories(ks_cairo SYSTEM INTERFACE "${KS_CAIRO_INCLUDE}")

  # Debian's library of ImGui leaves its fonts to libstb.
  find_path(KS_IMGUI_INCLUDE imgui.h PATH_SUFFIXES imgui REQUIRED)
  find_path(KS_SDL2_INCLUDE SDL.h PATH_SUFFIXES SDL2 REQUIRED)
  find_library(KS_IMGUI_LIBRARY imgui REQUIRED)
  find_library(KS_STB_LIBRARY stb REQUIRED)
  find_library(KS_SDL2_LIBRARY SDL2 REQUIRED)
  find_path(KS_XTEST_INCLUDE X11/extensions/XTest.h REQUIRED)
  find_library(KS_X11_LIBRARY X11 REQUIRED)
  find_library(KS_XTEST_LIBRARY Xtst REQUIRED)
  mark_as_advanced(KS_IMGUI_INCLUDE KS_SDL2_INCLUDE KS_IMGUI_LIBRARY KS_STB_LIBRARY
    KS_SDL2_LIBRARY KS_XTEST_INCLUDE KS_X11_LIBRARY KS_XTEST_LIBRARY)
  add_library(ks_imgui INTERFACE)
  target_link_libraries(ks_imgui INTERFACE
    "${KS_IMGUI_LIBRARY}" "${KS_STB_LIBRARY}" "${KS_SDL2_LIBRARY}")
  target_include_directories(ks_imgui SYSTEM INTERFACE "${KS_IMGUI_INCLUDE}" "${KS_SDL2_INCLUDE}")
  add_library(ks_xtest INTERFACE)
  target_link_libraries(ks_xtest INTERFACE "${KS_XTEST_LIBRARY}" "${KS_X11_LIBRARY}")
  target_include_directories(ks_xtest SYSTEM INTERFACE "${KS_XTEST_INCLUDE}")

  find_path(KS_DUKTAPE_INCLUDE duktape.h REQUIRED)
  find_library(KS_DUKTAPE_LIBRARY duktape REQUIRED)
  mark_as_advanced(KS_DUKTAPE_INCLUDE KS_DUKTAPE_LIBRARY)
  add_library(ks_duktape INTERFACE)
  target_link_libraries(ks_duktape INTERFACE "${KS_DUKTAPE_LIBRARY}")
  target_include_directories(ks_duktape SYSTEM INTERFACE "${KS_DUKTAPE_INCLUDE}")
endif()
