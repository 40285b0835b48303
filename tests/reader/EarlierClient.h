#pragma once

namespace test_support {

/// Acts as a program that was compiled with earlier headers: calls each virtual operation of an
/// object by its former index in the class's table, in the order of the indexes.
///
/// Each function takes the address of an object of the class that its name mentions.
void callHandlerByPlaces(void* updateMetaDataHandler);
void callFacadeByPlaces(void* updateMetaData);
void callParserByPlaces(void* updateMetaDataJsonParser);
void callCatalogueByPlaces(void* productDataProvider);

}  // namespace test_support
