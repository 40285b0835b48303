# platform::foundation and platform::model: the JSON value and the model framework with the data models, which are shaped
# for this library's reader and queries.
ump_add_platform(
  foundation
  ROOT "${PROJECT_SOURCE_DIR}/platform"
  SOURCES foundation/core/except.cpp foundation/core/large_pages.cpp foundation/json/Value.cpp
          foundation/json/Object.cpp foundation/json/Storage.cpp foundation/json/SlotStack.cpp
          foundation/json/MemberOrder.cpp foundation/json/TreeBuilder.cpp foundation/json/ParseResult.cpp
          foundation/json/detail.cpp
  HEADERS foundation/core/except.h foundation/core/export.h foundation/json/Value.h)

set(data_models install/datamodels/common/Release.cpp)
foreach(
  entity
  ComponentDataWithFilesToDelete
  ComponentDeltaData
  PkgDataWithFilesToDelete
  PkgDeltaData
  ProductDeltaData
  ProductUpdateMetaData
  ReleaseData)
  list(APPEND data_models "install/datamodels/product_update/${entity}.cpp")
endforeach()

ump_add_platform(
  model
  ROOT "${PROJECT_SOURCE_DIR}/src/model"
  SOURCES mf/zero/AbstractContainedElement.cpp mf/zero/AbstractOwnedCollection.cpp
          mf/zero/BlockMemory.cpp mf/zero/CompactString.cpp mf/zero/Messages.cpp mf/zero/Model.cpp
          mf/zero/PrimitiveSequence.cpp mf/zero/ReferenceCollection.cpp mf/zero/StringPool.cpp
          ${data_models}
  HEADERS install/datamodels/common/Release.h
          install/datamodels/product_update/ComponentDataWithFilesToDelete.h
          install/datamodels/product_update/ComponentDeltaData.h
          install/datamodels/product_update/PkgDataWithFilesToDelete.h
          install/datamodels/product_update/PkgDeltaData.h
          install/datamodels/product_update/ProductDeltaData.h
          install/datamodels/product_update/ProductUpdateMetaData.h
          install/datamodels/product_update/ReleaseData.h
          mf/zero/AbstractContainedElement.h
          mf/zero/AbstractOwnedCollection.h
          mf/zero/CompactString.h
          mf/zero/ElementClass.h
          mf/zero/Messages.h
          mf/zero/Model.h
          mf/zero/ModelElement.h
          mf/zero/Name.h
          mf/zero/PrimitiveSequence.h
          mf/zero/ReferenceCollection.h
          mf/zero/ReferenceCount.h
          mf/zero/Uuid.h
  LINKS platform::foundation)
