#include "Conversion.h"

#include <cstring>

namespace update_metadata_python {
namespace {

namespace py = pybind11;

// Treats a lone surrogate as a character, in both directions.
constexpr const char* kKeepSurrogates = "surrogatepass";

template <class Object>
Object owned(PyObject* result) {
  if (result == nullptr) {
    throw py::error_already_set();
  }
  return py::reinterpret_steal<Object>(result);
}

}  // namespace

std::u16string toUtf16(const py::str& text) {
  const auto bytes = owned<py::bytes>(PyUnicode_AsEncodedString(
      text.ptr(), PY_BIG_ENDIAN ? "utf-16-be" : "utf-16-le", kKeepSurrogates));
  const std::string_view encoded = bytes;
  std::u16string units(encoded.size() / sizeof(char16_t), u'\0');
  std::memcpy(units.data(), encoded.data(), units.size() * sizeof(char16_t));
  return units;
}

std::u16string toPath(const py::object& path) {
  const auto native = owned<py::object>(PyOS_FSPath(path.ptr()));
  if (!py::isinstance<py::str>(native)) {
    throw py::type_error("a path must be a str or a path of str, not bytes");
  }
  return toUtf16(py::reinterpret_borrow<py::str>(native));
}

py::str toText(std::string_view text) {
  return owned<py::str>(
      PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "replace"));
}

py::object toPython(const std::u16string& text) {
  int order = PY_BIG_ENDIAN ? 1 : -1;  // native byte order, so a byte-order mark is a character
  return owned<py::str>(PyUnicode_DecodeUTF16(
      reinterpret_cast<const char*>(text.data()),
      static_cast<Py_ssize_t>(text.size() * sizeof(char16_t)), kKeepSurrogates, &order));
}

py::object toPython(std::int64_t number) {
  return py::int_(number);
}

}  // namespace update_metadata_python
