# Debian packages: libraries, development files, command and documentation, made by "cpack -G DEB" from a build with
# UMP_DEBIAN_PACKAGES and the prefix /usr. scripts/release makes them reproducible.

set(revision 1)
set(library libupdate-metadata-parser${PROJECT_VERSION_MAJOR})
set(diagnosis libupdate-metadata-diagnosis${PROJECT_VERSION_MAJOR})
set(UMP_DEBIAN_VERSION "${PROJECT_VERSION}-${revision}")
set(UMP_DEBIAN_MAINTAINER "update_metadata_parser maintainers <maintainers@update-metadata-parser.example>")

# Every Debian package contains its license and its changelog. Their date is SOURCE_DATE_EPOCH, if it is set.
string(TIMESTAMP UMP_DEBIAN_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(documents "${CMAKE_CURRENT_BINARY_DIR}/debian")
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in" "${documents}/changelog.Debian" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/copyright.in" "${documents}/copyright" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/LICENSE" "${documents}/LICENSE" COPYONLY)
configure_file("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${documents}/changelog" COPYONLY)
# Programs run with this minor version and any later one with the same SONAME.
set(UMP_DEBIAN_NEEDED ">= ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
foreach(UMP_DEBIAN_LIBRARY parser diagnosis)
  configure_file("${PROJECT_SOURCE_DIR}/packaging/debian/shlibs.in" "${documents}/${UMP_DEBIAN_LIBRARY}/shlibs" @ONLY)
endforeach()
execute_process(COMMAND gzip -9nf changelog changelog.Debian WORKING_DIRECTORY "${documents}" COMMAND_ERROR_IS_FATAL ANY)

# ump_add_debian_package(COMPONENT NAME SECTION SUMMARY TEXT [component...])
#
# Makes the package NAME from a component of the installation and from any others listed. The lines of TEXT have at most
# 79 characters.
macro(ump_add_debian_package COMPONENT NAME SECTION SUMMARY TEXT)
  install(
    FILES "${documents}/copyright" "${documents}/changelog.gz" "${documents}/changelog.Debian.gz"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${NAME}"
    COMPONENT ${COMPONENT})
  # To CPack, a package is a group of components and is named after the group.
  foreach(component ${COMPONENT} ${ARGN})
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    string(TOUPPER ${component} component)
    set(CPACK_COMPONENT_${component}_GROUP ${COMPONENT}_deb)
  endforeach()
  string(TOUPPER ${COMPONENT}_deb group)
  set(CPACK_DEBIAN_${group}_PACKAGE_NAME ${NAME})
  set(CPACK_DEBIAN_${group}_PACKAGE_SECTION ${SECTION})
  set(CPACK_DEBIAN_${group}_DESCRIPTION "${SUMMARY}\n${about}\n${TEXT}")
endmacro()

set(about "An update metadata document describes an update from an installed release\nto a newer one.")
set(CPACK_COMPONENTS_ALL "")
ump_add_debian_package(
  runtime ${library} libs "reads update metadata documents - shared library"
  ".\nThis library reads one and reports which packages it deletes and extracts, and\nhow large they are.")
ump_add_debian_package(
  diagnosis ${diagnosis} libs "says what is wrong with update metadata documents - shared library"
  ".\nThis library says whether one can be loaded, and what is wrong or doubtful in\nit and where.")
ump_add_debian_package(
  development libupdate-metadata-parser-dev libdevel "reads update metadata documents - development files"
  ".\nThis package holds the headers of the libraries that read one, their CMake\npackage and their pkg-config files."
  platform)
ump_add_debian_package(
  tool update-metadata utils "answers questions about update metadata documents"
  ".\nThis command reports what one does, for people and for scripts.")
ump_add_debian_package(
  documentation libupdate-metadata-parser-doc doc "reads update metadata documents - documentation"
  ".\nThis package holds the guide, the reference and the examples of the library\nthat reads one.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME update-metadata-parser)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX "${CMAKE_INSTALL_PREFIX}")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/PreparePackages.cmake")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE update-metadata-parser)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${revision})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${UMP_DEBIAN_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_RUNTIME_DEB_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DIAGNOSIS_DEB_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_DEB_PACKAGE_SHLIBDEPS ON)
set(triggers "${PROJECT_SOURCE_DIR}/packaging/debian/triggers")
set(CPACK_DEBIAN_RUNTIME_DEB_PACKAGE_CONTROL_EXTRA "${documents}/parser/shlibs" "${triggers}")
set(CPACK_DEBIAN_DIAGNOSIS_DEB_PACKAGE_CONTROL_EXTRA "${documents}/diagnosis/shlibs" "${triggers}")
set(CPACK_DEBIAN_DEVELOPMENT_DEB_PACKAGE_DEPENDS
    "${library} (= ${UMP_DEBIAN_VERSION}), ${diagnosis} (= ${UMP_DEBIAN_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DEB_PACKAGE_SUGGESTS libupdate-metadata-parser-doc)
set(CPACK_DEBIAN_DOCUMENTATION_DEB_PACKAGE_ARCHITECTURE all)
include(CPack)
