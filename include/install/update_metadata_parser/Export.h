// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name that the shared library exports.
///
/// The value is the same when the library is built and when it is used: a caller that hides its own
/// symbols still shares the type information of classes and exceptions with the library.
#define UPDATE_METADATA_PARSER_EXPORT __attribute__((visibility("default")))
