# How every target of this project is compiled, and how the layers are declared.

# Language, warnings and symbol visibility that all targets share.
function(ump_set_up_target NAME)
  target_compile_features(${NAME} PUBLIC cxx_std_17)
  set_target_properties(
    ${NAME}
    PROPERTIES CXX_EXTENSIONS OFF
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON
               POSITION_INDEPENDENT_CODE ON)
  target_compile_options(
    ${NAME}
    PRIVATE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wcast-qual
            $<$<BOOL:${UMP_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()

# ump_add_platform(NAME ROOT dir SOURCES file... [HEADERS file...] [LINKS target...])
#
# One platform library, known to the layers as platform::NAME. ROOT is its include root, to which the files are relative.
# HEADERS are those that users of the shared library need: they are installed with it.
function(ump_add_platform NAME)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "ROOT" "SOURCES;HEADERS;LINKS")
  list(TRANSFORM ARG_SOURCES PREPEND "${ARG_ROOT}/")
  add_library(ump_platform_${NAME} STATIC ${ARG_SOURCES})
  add_library(platform::${NAME} ALIAS ump_platform_${NAME})
  target_include_directories(ump_platform_${NAME} PUBLIC "${ARG_ROOT}")
  target_link_libraries(ump_platform_${NAME} PUBLIC ${ARG_LINKS})
  set_target_properties(ump_platform_${NAME} PROPERTIES UMP_HEADER_ROOT "${ARG_ROOT}"
                                                        UMP_HEADERS "${ARG_HEADERS}")
  ump_set_up_target(ump_platform_${NAME})
endfunction()

# ump_add_layer(NAME SOURCES file... [PUBLIC_LINKS target...] [PRIVATE_LINKS target...])
#
# One layer of the library, a static library ump_NAME with hidden symbols: tests reach its insides. Sources are given
# relative to src/NAME.
#
# What an installer exchanges is searched for headers first: the include root of platform::foundation holds the stand-ins
# for it, too.
function(ump_add_layer NAME)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;PUBLIC_LINKS;PRIVATE_LINKS")
  list(TRANSFORM ARG_SOURCES PREPEND "${NAME}/")
  add_library(ump_${NAME} STATIC ${ARG_SOURCES})
  foreach(exchanged fl catalogue)
    target_include_directories(
      ump_${NAME} PUBLIC $<TARGET_PROPERTY:platform::${exchanged},INTERFACE_INCLUDE_DIRECTORIES>)
  endforeach()
  target_include_directories(ump_${NAME} PUBLIC "${PROJECT_SOURCE_DIR}/include"
                                                "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(
    ump_${NAME}
    PUBLIC ${ARG_PUBLIC_LINKS}
    PRIVATE ${ARG_PRIVATE_LINKS})
  ump_set_up_target(ump_${NAME})
endfunction()
