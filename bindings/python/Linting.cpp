#include "Linting.h"

#include <string_view>
#include <vector>

#include "Conversion.h"
#include "install/update_metadata_parser/Diagnosis.h"

namespace update_metadata_python {
namespace {

namespace py = pybind11;
using install::update_metadata_parser::diagnose;
using install::update_metadata_parser::Diagnosis;
using install::update_metadata_parser::DiagnosisOptions;
using install::update_metadata_parser::Finding;
using install::update_metadata_parser::Fix;
using install::update_metadata_parser::OmittedFindings;
using install::update_metadata_parser::RelatedPlace;
using install::update_metadata_parser::Severity;
using install::update_metadata_parser::ThrownException;

Diagnosis lint(const py::bytes& document, const py::str& name, const py::object& productData) {
  DiagnosisOptions options;
  options.path = toUtf16(name);
  if (!productData.is_none()) {
    options.productData = toPath(productData);
  }
  const std::string_view text = document;  // the caller holds the bytes, which do not change
  const py::gil_scoped_release released;
  return diagnose(text, options);
}

const char* nameOf(Severity severity) {
  switch (severity) {
    case Severity::kInfo:
      return "info";
    case Severity::kWarning:
      return "warning";
    case Severity::kError:
      return "error";
  }
  return "";  // no other value is ever made
}

// A property whose text may quote the document, and so need not be UTF-8.
template <class Record, class Text>
auto textOf(Text Record::*member) {
  return [member](const Record& record) { return toText(record.*member); };
}

py::dict countOmitted(const Diagnosis& diagnosis) {
  py::dict counts;
  for (const OmittedFindings& omitted : diagnosis.omitted) {
    counts[toText(omitted.rule)] = omitted.count;
  }
  return counts;
}

template <class Record>
py::list listOf(const std::vector<Record>& records) {
  py::list list;
  for (const Record& record : records) {
    list.append(record);
  }
  return list;
}

void addPlace(py::module_& module) {
  py::class_<RelatedPlace>(module, "RelatedPlace",
                           "Another place of the document that a finding refers to.")
      .def_readonly("offset", &RelatedPlace::offset, "The byte in the document, from 0.")
      .def_readonly("line", &RelatedPlace::line, "The line, from 1.")
      .def_readonly("column", &RelatedPlace::column, "The byte in the line, from 1.")
      .def_property_readonly("message", textOf(&RelatedPlace::message), "What is there.");
}

void addFix(py::module_& module) {
  py::class_<Fix>(module, "Fix", "A change of the document that removes a problem.")
      .def_readonly("offset", &Fix::offset, "The first byte that is replaced, from 0.")
      .def_readonly("length", &Fix::length, "The number of bytes that are replaced; 0 inserts.")
      .def_property_readonly(
          "replacement", [](const Fix& fix) { return py::bytes(fix.replacement); },
          "The bytes to write instead; empty removes.")
      .def_readonly("is_safe", &Fix::isSafe, "Whether applying it needs no decision.");
}

void addFinding(py::module_& module) {
  py::class_<Finding>(module, "Finding", "One problem of a document.")
      .def_property_readonly("rule", textOf(&Finding::rule), "The id of the rule.")
      .def_property_readonly(
          "severity", [](const Finding& finding) { return nameOf(finding.severity); },
          "\"info\", \"warning\" or \"error\".")
      .def_property_readonly("message", textOf(&Finding::message), "What is wrong.")
      .def_property_readonly("advice", textOf(&Finding::advice), "What to do.")
      .def_readonly("offset", &Finding::offset, "The first byte that is marked, from 0.")
      .def_readonly("length", &Finding::length, "The number of bytes that are marked.")
      .def_readonly("line", &Finding::line, "The line, from 1.")
      .def_readonly("column", &Finding::column, "The byte in the line, from 1.")
      .def_property_readonly("pointer", textOf(&Finding::pointer), "The JSON Pointer to the value.")
      .def_property_readonly("item", textOf(&Finding::item), "The value in words; may be empty.")
      .def_property_readonly(
          "related", [](const Finding& finding) { return listOf(finding.related); },
          "Other places that the finding refers to.")
      .def_property_readonly(
          "fix",
          [](const Finding& finding) -> py::object {
            return finding.fix ? py::cast(*finding.fix) : py::none();
          },
          "How to change the document; None if the remedy is not obvious.");
}

void addDiagnosis(py::module_& module) {
  py::class_<Diagnosis>(module, "Diagnosis", "Everything that is known about one document.")
      .def_property_readonly("loads", &Diagnosis::loads, "Whether load_bytes() loads the document.")
      .def_property_readonly(
          "exception",
          [](const Diagnosis& diagnosis) -> py::object {
            if (!diagnosis.exception) {
              return py::none();
            }
            const ThrownException& thrown = *diagnosis.exception;
            return py::make_tuple(toText(thrown.type), toText(thrown.text));
          },
          "The type and the text of the library's exception; None if the document loads.")
      .def_property_readonly("reader_message", textOf(&Diagnosis::readerMessage),
                             "The text reader's own message about malformed text, or an empty one.")
      .def_property_readonly(
          "findings", [](const Diagnosis& diagnosis) { return listOf(diagnosis.findings); },
          "The problems, in the order of their offsets.")
      .def_property_readonly("omitted", &countOmitted,
                             "How many findings of each rule are left out because there are many.");
}

}  // namespace

void addLinting(py::module_& module) {
  addPlace(module);
  addFix(module);
  addFinding(module);
  addDiagnosis(module);
  module.def("lint", &lint, py::arg("document"), py::arg("name") = "document",
             py::arg("product_data") = py::none(),
             "Finds every problem of a document, given as bytes; messages call it by its name.");
}

}  // namespace update_metadata_python
