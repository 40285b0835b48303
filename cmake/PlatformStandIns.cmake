# The platform libraries of this tree, each with an include root of its own.
#
# An installer names a file of its own in UMP_PLATFORM_FILE to bring its file system, text conversion and product
# catalogue. That file defines the same two targets.
ump_add_platform(
  fl
  ROOT "${PROJECT_SOURCE_DIR}/platform/fl"
  SOURCES fl/filesystem.cpp fl/i18n.cpp)

ump_add_platform(
  catalogue
  ROOT "${PROJECT_SOURCE_DIR}/platform/catalogue"
  SOURCES install/product_data_provider/ProductDataProvider.cpp
  HEADERS install/product_data_provider/Export.h install/product_data_provider/ProductDataProvider.h
  LINKS platform::fl)
