// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name of the platform that the library exports. The value is the same when the library is
/// built and when it is used, so that both sides share the type information of exceptions.
#define FOUNDATION_EXPORT __attribute__((visibility("default")))

/// Hides an operation of an exported class: no code outside the library calls it.
#define FOUNDATION_HIDDEN __attribute__((visibility("hidden")))
