# Built here from Debian's source package, which scripts/windows/sources.sh fetches, with the headers
# of the package that the machine has. Tells of itself as Debian's own file does. Only what the program
# asks for is built; the linker names what is missing.
include(${CMAKE_CURRENT_LIST_DIR}/HostHeaders.cmake)
set(GeographicLib_PARTS Geocentric LocalCartesian Math)
set(GeographicLib_SOURCES ${CMAKE_SOURCE_DIR}/build/windows-sources/geographiclib/src)
if(NOT TARGET GeographicLib AND EXISTS ${GeographicLib_SOURCES})
  host_headers(GeographicLib_headers GeographicLib)
  list(TRANSFORM GeographicLib_PARTS REPLACE ".+" "${GeographicLib_SOURCES}/\\0.cpp"
    OUTPUT_VARIABLE sources)
  add_library(GeographicLib STATIC EXCLUDE_FROM_ALL ${sources})
  target_compile_options(GeographicLib PRIVATE -ffp-contract=off)
  target_link_libraries(GeographicLib PRIVATE GeographicLib_headers)
  get_target_property(GeographicLib_INCLUDE_DIRS GeographicLib_headers
    INTERFACE_INCLUDE_DIRECTORIES)
  set(GeographicLib_LIBRARIES GeographicLib)
endif()
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GeographicLib
  REQUIRED_VARS GeographicLib_LIBRARIES GeographicLib_INCLUDE_DIRS)
