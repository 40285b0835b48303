# The platform libraries of this tree, each with its own include root.
#
# An installer brings its own file system, text conversion and product catalogue by naming a file in UMP_PLATFORM_FILE
# that defines the same two targets.
if(WIN32)
  set(filesystem fl/filesystem_windows.cpp)
else()
  set(filesystem fl/filesystem.cpp)
endif()
ump_add_platform(
  fl
  ROOT "${PROJECT_SOURCE_DIR}/platform/fl"
  SOURCES ${filesystem} fl/i18n.cpp)

ump_add_platform(
  catalogue
  ROOT "${PROJECT_SOURCE_DIR}/platform/catalogue"
  SOURCES install/product_data_provider/ProductDataProvider.cpp
  HEADERS install/product_data_provider/Export.h install/product_data_provider/ProductDataProvider.h
  LINKS platform::fl)
