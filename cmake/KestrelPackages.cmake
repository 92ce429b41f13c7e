# Third-party libraries, all from the distribution. The plug-in uses none of them.
find_package(Threads REQUIRED)

if(MINGW)
  # Header-only packages live in the build machine's include folder, which a cross compiler must not
  # search as a whole: link just the needed ones into a folder of our own.
  set(ks_foreign "${CMAKE_BINARY_DIR}/foreign-headers")
  file(MAKE_DIRECTORY "${ks_foreign}")
  foreach(name CLI nlohmann stb)
    file(CREATE_LINK "/usr/include/${name}" "${ks_foreign}/${name}" SYMBOLIC)
  endforeach()
  add_library(ks_foreign_headers INTERFACE)
  target_include_directories(ks_foreign_headers SYSTEM INTERFACE "${ks_foreign}")
else()
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
  find_package(OpenImageIO REQUIRED)
  add_library(ks_foreign_headers INTERFACE)
  target_link_libraries(ks_foreign_headers INTERFACE CLI11::CLI11 nlohmann_json::nlohmann_json)
endif()
