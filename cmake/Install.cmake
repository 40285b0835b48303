# The contents of an installation.
#
# Components: runtime (the shared library), diagnosis (the shared library of the diagnosis), development (public headers, static library, CMake package, pkg-config file,
# link for the linker), platform (headers of the model, of the JSON value and of the platform libraries that the library was built
# with), tool (the companion command with its manual pages and completion, and the schema of the document), documentation
# (pages, examples and, if it is built, the reference), python (the Python module, if it is built).
include(CMakePackageConfigHelpers)

set(UMP_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/update_metadata_parser")

set(targets update_metadata_parser)
if(UMP_STATIC_IS_WHOLE)
  list(APPEND targets update_metadata_parser_static update_metadata_diagnosis_static)
else()
  message(STATUS "Not installing the static library: the platform has libraries that it does not contain")
endif()
install(
  TARGETS ${targets}
  EXPORT update_metadata_parser-targets
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
          COMPONENT runtime
          NAMELINK_COMPONENT development
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
if(TARGET update_metadata_diagnosis)
  install(
    TARGETS update_metadata_diagnosis
    EXPORT update_metadata_parser-targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            COMPONENT diagnosis
            NAMELINK_COMPONENT development)
endif()

if(TARGET update-metadata)
  install(TARGETS update-metadata RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT tool)
  install(
    FILES "${PROJECT_SOURCE_DIR}/tools/update-metadata/schema/update-metadata.schema.json"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/update-metadata"
    COMPONENT tool)
endif()

# ump_install_headers(COMPONENT ROOT header...): installs headers, given relative to ROOT, into the shared include root.
function(ump_install_headers COMPONENT ROOT)
  foreach(header IN LISTS ARGN)
    cmake_path(GET header PARENT_PATH folder)
    install(
      FILES "${ROOT}/${header}"
      DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}"
      COMPONENT ${COMPONENT})
  endforeach()
endfunction()

# The public headers and, for callers who derive from those classes, the headers of the model, the JSON value and the
# platform. All others are private.
ump_install_headers(
  development
  "${PROJECT_SOURCE_DIR}/include"
  install/update_metadata_parser/Diagnosis.h
  install/update_metadata_parser/Export.h
  install/update_metadata_parser/Limits.h
  install/update_metadata_parser/UpdateMetaData.h
  install/update_metadata_parser/UpdateMetaDataHandler.h
  install/update_metadata_parser/UpdateMetaDataJsonParser.h
  install/update_metadata_parser/UpdatePkgData.h
  install/update_metadata_parser/Version.h
  install/update_metadata_parser/fwd.h)
foreach(library ump_model ump_foundation platform::fl platform::catalogue)
  get_target_property(root ${library} UMP_HEADER_ROOT)
  get_target_property(headers ${library} UMP_HEADERS)
  if(headers)
    ump_install_headers(platform "${root}" ${headers})
  endif()
endforeach()

# find_package(update_metadata_parser).
write_basic_package_version_file(
  "${CMAKE_CURRENT_BINARY_DIR}/update_metadata_parser-config-version.cmake"
  COMPATIBILITY SameMajorVersion)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/packaging/update_metadata_parser-config.cmake.in"
  "${CMAKE_CURRENT_BINARY_DIR}/update_metadata_parser-config.cmake"
  INSTALL_DESTINATION "${UMP_INSTALL_CMAKEDIR}"
  NO_SET_AND_CHECK_MACRO)
install(
  FILES "${CMAKE_CURRENT_BINARY_DIR}/update_metadata_parser-config.cmake"
        "${CMAKE_CURRENT_BINARY_DIR}/update_metadata_parser-config-version.cmake"
  DESTINATION "${UMP_INSTALL_CMAKEDIR}"
  COMPONENT development)
install(
  EXPORT update_metadata_parser-targets
  NAMESPACE update_metadata_parser::
  DESTINATION "${UMP_INSTALL_CMAKEDIR}"
  COMPONENT development)

# pkg-config: all paths are relative to the files, so that an installation can be moved.
set(UMP_PC_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(UMP_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
set(UMP_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
cmake_path(RELATIVE_PATH UMP_PC_PREFIX BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
cmake_path(RELATIVE_PATH UMP_PC_INCLUDEDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
cmake_path(RELATIVE_PATH UMP_PC_LIBDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}")
foreach(library update_metadata_parser update_metadata_diagnosis)
  configure_file("${PROJECT_SOURCE_DIR}/packaging/${library}.pc.in" "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc" @ONLY)
  install(
    FILES "${CMAKE_CURRENT_BINARY_DIR}/${library}.pc"
    DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
    COMPONENT development)
endforeach()

# The documentation, in the layout of this tree and with everything that its pages link to, so that the links work.
set(UMP_INSTALL_DOCDIR "${CMAKE_INSTALL_DATADIR}/doc/update-metadata-parser")
install(
  FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE SECURITY.md
  DESTINATION "${UMP_INSTALL_DOCDIR}"
  COMPONENT documentation)
install(
  FILES bindings/python/README.md bindings/python/update_metadata_parser.pyi
  DESTINATION "${UMP_INSTALL_DOCDIR}/bindings/python"
  COMPONENT documentation)
install(
  DIRECTORY docs examples
  DESTINATION "${UMP_INSTALL_DOCDIR}"
  COMPONENT documentation
  REGEX "/docs/(CMakeLists.txt|.*[.]in|.*[.]dox)$" EXCLUDE)
if(UMP_BUILD_REFERENCE)
  install(
    DIRECTORY "${PROJECT_BINARY_DIR}/docs/reference"
    DESTINATION "${UMP_INSTALL_DOCDIR}"
    COMPONENT documentation)
endif()
