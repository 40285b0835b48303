# How every target of this project is compiled and how the layers are declared.

# Language, warnings and symbol visibility that all targets share.
function(ump_set_up_target NAME)
  target_compile_features(${NAME} PUBLIC cxx_std_17)
  # On 32-bit systems, files may have 2 GB and more.
  target_compile_definitions(${NAME} PRIVATE _FILE_OFFSET_BITS=64)
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

# ump_harden(NAME)
#
# With UMP_HARDENING, shipped code stops when a buffer on the stack overflows or a checked C library function would
# write too much, and its table of bound addresses is read-only. Sanitizers check the same and more. _FORTIFY_SOURCE
# needs an optimizing compiler. A packager's own setting of it is kept. Windows has its own means, which the linker
# turns on.
function(ump_harden NAME)
  if(NOT UMP_HARDENING OR WIN32 OR CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    return()
  endif()
  target_compile_options(${NAME} PRIVATE -fstack-protector-strong)
  if(NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
    # The first option undoes the definition that some compilers make themselves.
    target_compile_options(
      ${NAME} PRIVATE "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  endif()
  target_link_options(${NAME} PRIVATE "LINKER:-z,relro,-z,now")
endfunction()

# ump_add_platform(NAME ROOT dir SOURCES file... [HEADERS file...] [LINKS target...])
#
# Declares one platform library, which the layers link as platform::NAME. ROOT is its include root; files are relative
# to it. HEADERS are those that users of the shared library need; they are installed with it.
function(ump_add_platform NAME)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "" "ROOT" "SOURCES;HEADERS;LINKS")
  list(TRANSFORM ARG_SOURCES PREPEND "${ARG_ROOT}/")
  add_library(ump_platform_${NAME} STATIC ${ARG_SOURCES})
  add_library(platform::${NAME} ALIAS ump_platform_${NAME})
  target_include_directories(ump_platform_${NAME} PUBLIC "${ARG_ROOT}")
  target_link_libraries(ump_platform_${NAME} PUBLIC ${ARG_LINKS})
  set_target_properties(ump_platform_${NAME} PROPERTIES UMP_HEADER_ROOT "${ARG_ROOT}"
                                                        UMP_HEADERS "${ARG_HEADERS}")
  target_compile_definitions(ump_platform_${NAME} PRIVATE UPDATE_METADATA_PARSER_BUILD)
  ump_set_up_target(ump_platform_${NAME})
  ump_harden(ump_platform_${NAME})
endfunction()

# ump_add_layer(NAME [OWN_ROOT] SOURCES file... [HEADERS file...] [PUBLIC_LINKS target...])
#
# Declares the current folder as one layer of the library: a static library ump_NAME with hidden symbols, so that tests
# can reach its internals. A header is included by its path from src or, in a layer with OWN_ROOT, from the folder
# itself. Such a layer has HEADERS that users of the shared library need, which are installed with it; including them
# makes nothing else of src visible.
function(ump_add_layer NAME)
  cmake_parse_arguments(PARSE_ARGV 1 ARG "OWN_ROOT" "" "SOURCES;HEADERS;PUBLIC_LINKS")
  add_library(ump_${NAME} STATIC ${ARG_SOURCES})
  if(ARG_OWN_ROOT)
    target_include_directories(ump_${NAME} PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  else()
    target_include_directories(ump_${NAME} PUBLIC "${PROJECT_SOURCE_DIR}/include" "${PROJECT_SOURCE_DIR}/src")
  endif()
  target_link_libraries(ump_${NAME} PUBLIC ${ARG_PUBLIC_LINKS})
  set_target_properties(ump_${NAME} PROPERTIES UMP_HEADER_ROOT "${CMAKE_CURRENT_SOURCE_DIR}" UMP_HEADERS "${ARG_HEADERS}")
  target_compile_definitions(ump_${NAME} PRIVATE UPDATE_METADATA_PARSER_BUILD)
  ump_set_up_target(ump_${NAME})
  ump_harden(ump_${NAME})
endfunction()
