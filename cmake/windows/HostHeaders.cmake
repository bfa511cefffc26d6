# host_headers(TARGET NAME): a library of headers alone, /usr/include/NAME, which Debian installs for
# the machine that builds and which suits every other. Only this folder is exposed, since the rest of
# /usr/include is not for Windows.
function(host_headers target name)
  set(exposed ${CMAKE_BINARY_DIR}/host-headers/${name})
  file(MAKE_DIRECTORY ${exposed})
  file(CREATE_LINK /usr/include/${name} ${exposed}/${name} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED)
  target_include_directories(${target} INTERFACE ${exposed})
endfunction()
