#pragma once

namespace test_support {

/// What a program does that was compiled with an earlier state of the headers: it calls each
/// virtual operation of an object by the place that it had in the class then, in the order of the
/// places.
///
/// Each takes the address of an object of the class in its name.
void callHandlerByPlaces(void* updateMetaDataHandler);
void callFacadeByPlaces(void* updateMetaData);
void callParserByPlaces(void* updateMetaDataJsonParser);
void callCatalogueByPlaces(void* productDataProvider);

}  // namespace test_support
