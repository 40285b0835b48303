// SPDX-License-Identifier: MIT

#pragma once

/// Marks a name of the product catalogue that the shared library exports.
#define PRODUCT_DATA_PROVIDER_EXPORT __attribute__((visibility("default")))
