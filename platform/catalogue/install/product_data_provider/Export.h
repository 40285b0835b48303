// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name of the product catalogue that the shared library exports. On Windows, only the
/// sources of the library need the mark; they define UPDATE_METADATA_PARSER_BUILD.
#if defined(_WIN32) && defined(UPDATE_METADATA_PARSER_BUILD)
#define PRODUCT_DATA_PROVIDER_EXPORT __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define PRODUCT_DATA_PROVIDER_EXPORT __attribute__((visibility("default")))
#else
#define PRODUCT_DATA_PROVIDER_EXPORT
#endif
