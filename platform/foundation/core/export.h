// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name of the platform that the library shows to its users: the same when it is built and
/// when it is used, so that both sides share the type information of what is thrown.
#define FOUNDATION_EXPORT __attribute__((visibility("default")))
