// The Python module update_metadata_parser: loads documents and answers queries, as the facade
// does.

#include <exception>
#include <memory>
#include <new>
#include <string>
#include <utility>

#include <pybind11/pybind11.h>

#include "Conversion.h"
#include "Linting.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "install/update_metadata_parser/Version.h"

namespace {

namespace py = pybind11;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataJsonParser;
using update_metadata_python::toPath;
using update_metadata_python::toPython;
using update_metadata_python::toUtf16;

/// Reads a document from memory; its path only names it in messages.
class MemoryParser : public UpdateMetaDataJsonParser {
 public:
  MemoryParser(const std::u16string& name, std::string text)
      : UpdateMetaDataJsonParser(name), text_(std::move(text)) {}

  std::string readFile(const std::u16string& /*path*/) override { return text_; }

 private:
  std::string text_;
};

std::shared_ptr<UpdateMetaData> load(const py::object& path) {
  UpdateMetaDataJsonParser parser(toPath(path));
  const py::gil_scoped_release released;  // a load uses no Python objects
  return parser.parseUpdateMetaDataJson();
}

std::shared_ptr<UpdateMetaData> loadBytes(const py::bytes& document, const py::str& name) {
  MemoryParser parser(toUtf16(name), document);
  const py::gil_scoped_release released;
  return parser.parseUpdateMetaDataJson();
}

// Sets the Python exception for a failure of the library, with the unchanged text. Text that is not
// UTF-8 can come from a product table; its ill-formed parts are replaced.
void raise(const py::object& type, const std::exception& failure) {
  PyErr_SetObject(type.ptr(), update_metadata_python::toText(failure.what()).ptr());
}

void addExceptions(py::module_& module) {
  static py::exception<std::exception> error(module, "UpdateMetaDataError", PyExc_RuntimeError);
  error.doc() = "A document that cannot be loaded or a question that cannot be answered.";
  py::register_exception_translator([](std::exception_ptr failure) {
    try {
      std::rethrow_exception(std::move(failure));
    } catch (const py::builtin_exception&) {
      throw;
    } catch (const std::bad_alloc&) {
      PyErr_NoMemory();
    } catch (const std::exception& reason) {
      raise(error, reason);
    }
  });
}

void addFacade(py::module_& module) {
  py::class_<UpdateMetaData, std::shared_ptr<UpdateMetaData>>(
      module, "UpdateMetaData",
      "A loaded document: its releases and its answers. Made by load() and load_bytes().")
      .def_property_readonly(
          "base_release_family",
          [](const UpdateMetaData& update) { return toPython(update.getBaseReleaseFamily()); },
          "The release family that the update starts from.")
      .def_property_readonly(
          "base_release_version",
          [](const UpdateMetaData& update) { return toPython(update.getBaseReleaseVersion()); },
          "The version that the update starts from.")
      .def_property_readonly(
          "target_release_family",
          [](const UpdateMetaData& update) { return toPython(update.getTargetReleaseFamily()); },
          "The release family that the update leads to.")
      .def_property_readonly(
          "target_release_version",
          [](const UpdateMetaData& update) { return toPython(update.getTargetReleaseVersion()); },
          "The version that the update leads to.")
      .def_property_readonly("target_update_level", &UpdateMetaData::getTargetUpdateLevelForQorv,
                             "The update level of the target, from -128 to 127.")
      .def(
          "components_to_delete",
          [](const UpdateMetaData& update, const py::object& productData) {
            return toPython(update.getComponentsToDelete(toPath(productData)));
          },
          py::arg("product_data"), "The packages to delete, by product base code.")
      .def(
          "components_to_delete_of",
          [](const UpdateMetaData& update, const py::str& baseCode, const py::object& productData) {
            return toPython(update.getComponentsToDelete(toUtf16(baseCode), toPath(productData)));
          },
          py::arg("base_code"), py::arg("product_data"), "The packages to delete of one product.")
      .def(
          "components_to_extract",
          [](const UpdateMetaData& update, const py::object& productData) {
            return toPython(update.getComponentsToExtract(toPath(productData)));
          },
          py::arg("product_data"), "The packages to extract, by product base code.")
      .def(
          "components_to_extract_of",
          [](const UpdateMetaData& update, const py::str& baseCode, const py::object& productData) {
            return toPython(update.getComponentsToExtract(toUtf16(baseCode), toPath(productData)));
          },
          py::arg("base_code"), py::arg("product_data"), "The packages to extract of one product.")
      .def(
          "components_with_files_to_delete",
          [](const UpdateMetaData& update) {
            return toPython(update.getComponentsWithFilesToDelete());
          },
          "The files to delete and the size in bytes of each package that loses files.")
      .def(
          "update_size_for_components_to_extract",
          [](const UpdateMetaData& update) {
            return toPython(update.getUpdateSizeForComponentsToExtract());
          },
          "The size and the unpacked size in bytes of each package to extract.");
}

}  // namespace

PYBIND11_MODULE(update_metadata_parser, module) {
  module.doc() = "Reads update metadata documents and answers what an update does.";
  module.attr("__version__") = install::update_metadata_parser::version();
  addExceptions(module);
  addFacade(module);
  module.def("load", &load, py::arg("path"), "Loads the document at a path.");
  module.def("load_bytes", &loadBytes, py::arg("document"), py::arg("name") = "document",
             "Loads a document from its bytes; messages call it by the given name.");
  update_metadata_python::addLinting(module);
}
