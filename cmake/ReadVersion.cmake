# Reads the semantic version from the three macros of Version.h, the only place that defines it.
function(ump_read_version RESULT)
  set(header
      "${CMAKE_CURRENT_SOURCE_DIR}/include/install/update_metadata_parser/Version.h")
  file(READ "${header}" text)
  set(numbers "")
  foreach(part MAJOR MINOR PATCH)
    if(NOT text MATCHES "#define UPDATE_METADATA_PARSER_VERSION_${part} ([0-9]+)")
      message(FATAL_ERROR "${header} does not define UPDATE_METADATA_PARSER_VERSION_${part}")
    endif()
    list(APPEND numbers "${CMAKE_MATCH_1}")
  endforeach()
  list(JOIN numbers "." version)
  set(${RESULT} "${version}" PARENT_SCOPE)
  # The next build must notice a changed header, not only the next configuration.
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
endfunction()
