# The platform libraries of this application.
ump_add_platform(
  fl
  ROOT "${CMAKE_CURRENT_LIST_DIR}"
  SOURCES fl/filesystem.cpp fl/i18n.cpp
  HEADERS fl/i18n.h)

ump_add_platform(
  catalogue
  ROOT "${CMAKE_CURRENT_LIST_DIR}"
  SOURCES install/product_data_provider/ProductDataProvider.cpp
  HEADERS install/product_data_provider/ProductDataProvider.h)
