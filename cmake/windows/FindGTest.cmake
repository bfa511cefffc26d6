# Built here from the sources that Debian's googletest installs.
if(NOT TARGET GTest::gmock)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
set(GTest_FOUND TRUE)
