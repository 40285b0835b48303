// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name that the shared library exports.
///
/// The value is the same when the library is built and when it is used: a caller that hides its own
/// symbols still shares the type information of classes and exceptions with the library. Only on
/// Windows does it differ: there, the sources of the library define
/// UPDATE_METADATA_PARSER_BUILD, and callers need no mark.
#if defined(_WIN32) && defined(UPDATE_METADATA_PARSER_BUILD)
#define UPDATE_METADATA_PARSER_EXPORT __declspec(dllexport)
#elif defined(__GNUC__) && !defined(_WIN32)
#define UPDATE_METADATA_PARSER_EXPORT __attribute__((visibility("default")))
#else
#define UPDATE_METADATA_PARSER_EXPORT
#endif
