# cmake -DVERSION_FILE=FILE -P check_versions.cmake
#
# Fails unless the version file of an installed CMake package accepts exactly the requests that docs/compatibility.md
# promises.

# ask_for(REQUEST EXPECTED): asks as find_package() does; EXPECTED is ON or OFF.
function(ask_for REQUEST EXPECTED)
  set(PACKAGE_FIND_VERSION ${REQUEST})
  string(REPLACE "." ";" parts ${REQUEST})
  list(GET parts 0 PACKAGE_FIND_VERSION_MAJOR)
  list(GET parts 1 PACKAGE_FIND_VERSION_MINOR)
  include("${VERSION_FILE}")
  if(EXPECTED AND NOT PACKAGE_VERSION_COMPATIBLE)
    message(SEND_ERROR "Version ${PACKAGE_VERSION} rejects a request for ${REQUEST}")
  elseif(NOT EXPECTED AND PACKAGE_VERSION_COMPATIBLE)
    message(SEND_ERROR "Version ${PACKAGE_VERSION} accepts a request for ${REQUEST}")
  endif()
endfunction()

set(PACKAGE_FIND_VERSION 0)
include("${VERSION_FILE}")
string(REPLACE "." ";" parts ${PACKAGE_VERSION})
list(GET parts 0 major)
list(GET parts 1 minor)
list(GET parts 2 patch)
math(EXPR next_major "${major} + 1")
math(EXPR next_minor "${minor} + 1")
math(EXPR next_patch "${patch} + 1")

ask_for(${major}.${minor} ON)
ask_for(${major}.${minor}.${patch} ON)
ask_for(${major}.${minor}.${next_patch} OFF)
ask_for(${major}.${next_minor} OFF)
ask_for(${next_major}.0 OFF)
if(minor GREATER 0)
  math(EXPR former_minor "${minor} - 1")
  ask_for(${major}.${former_minor} ON)
endif()
math(EXPR former_major "${major} - 1")
ask_for(${former_major}.0 OFF)
