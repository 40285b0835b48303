// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name of the platform that the library shows to its users: the same when it is built and
/// when it is used, so that both sides share the type information of what is thrown.
#define FOUNDATION_EXPORT __attribute__((visibility("default")))

/// Keeps an operation of such a class inside the library: no code outside of it calls the
/// operation.
#define FOUNDATION_HIDDEN __attribute__((visibility("hidden")))
