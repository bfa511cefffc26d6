# Settings that all of our own targets share, in one interface target.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(fathomline_settings INTERFACE)
target_include_directories(fathomline_settings INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(fathomline_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  # Figures must not depend on the machine: no fused multiply-add, no reassociation.
  -ffp-contract=off)
if(FATHOMLINE_WERROR)
  target_compile_options(fathomline_settings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Warns of overlapping copies inside std::string's own operator+ (GCC bug 105329).
  target_compile_options(fathomline_settings INTERFACE -Wno-restrict)
  if(WIN32 OR CMAKE_BUILD_TYPE STREQUAL "Release")
    # The same of its lengths, where more of std::string is inlined.
    target_compile_options(fathomline_settings INTERFACE -Wno-stringop-overflow
      -Wno-stringop-overread -Wno-array-bounds)
  endif()
endif()

if(WIN32)
  # Windows 10 is the oldest that is served; its headers name min and max only where asked to.
  target_compile_definitions(fathomline_settings INTERFACE
    _WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX)
endif()

if(FATHOMLINE_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(fathomline_settings INTERFACE ${sanitizers})
  target_link_options(fathomline_settings INTERFACE ${sanitizers})
endif()
if(FATHOMLINE_FUZZ)
  target_compile_options(fathomline_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()
