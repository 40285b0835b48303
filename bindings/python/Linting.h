#pragma once

#include <pybind11/pybind11.h>

namespace update_metadata_python {

/// Adds lint() and the classes of its results.
void addLinting(pybind11::module_& module);

}  // namespace update_metadata_python
