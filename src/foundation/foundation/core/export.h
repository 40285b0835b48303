// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name of the platform that the library exports. The value is the same when the library is
/// built and when it is used, so that both sides share the type information of exceptions. On
/// Windows, only the sources of the library need the mark; they define
/// UPDATE_METADATA_PARSER_BUILD.
#if defined(_WIN32) && defined(UPDATE_METADATA_PARSER_BUILD)
#define FOUNDATION_EXPORT __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define FOUNDATION_EXPORT __attribute__((visibility("default")))
#else
#define FOUNDATION_EXPORT
#endif

/// Hides an operation of an exported class: no code outside the library calls it. On Windows it is
/// exported with its class.
#if defined(__GNUC__) && !defined(_WIN32)
#define FOUNDATION_HIDDEN __attribute__((visibility("hidden")))
#else
#define FOUNDATION_HIDDEN
#endif
