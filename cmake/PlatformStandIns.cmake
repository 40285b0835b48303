# The platform libraries of this tree.

ump_add_platform(
  fl
  ROOT "${PROJECT_SOURCE_DIR}/platform"
  SOURCES fl/filesystem.cpp fl/i18n.cpp)

ump_add_platform(
  catalogue
  ROOT "${PROJECT_SOURCE_DIR}/platform"
  SOURCES install/product_data_provider/ProductDataProvider.cpp
  LINKS platform::fl)
