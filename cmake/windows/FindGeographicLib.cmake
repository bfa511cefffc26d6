# Built here from Debian's source package, which scripts/windows/sources.sh fetches, with the headers
# of the package that the machine has.
include(${CMAKE_CURRENT_LIST_DIR}/HostHeaders.cmake)
set(folder ${CMAKE_CURRENT_LIST_DIR}/../../build/windows-sources/geographiclib/src)
if(NOT TARGET GeographicLib::GeographicLib AND EXISTS ${folder})
  host_headers(GeographicLib::Headers GeographicLib)
  file(GLOB sources ${folder}/*.cpp)
  add_library(GeographicLib STATIC EXCLUDE_FROM_ALL ${sources})
  target_compile_options(GeographicLib PRIVATE -ffp-contract=off)
  target_link_libraries(GeographicLib PUBLIC GeographicLib::Headers)
  add_library(GeographicLib::GeographicLib ALIAS GeographicLib)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GeographicLib REQUIRED_VARS folder)
