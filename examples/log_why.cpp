// Loads a document and, if it cannot be loaded, logs why: log_why DOCUMENT

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "install/update_metadata_parser/Diagnosis.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::update_metadata_parser::Diagnosis;
using install::update_metadata_parser::DiagnosisOptions;
using install::update_metadata_parser::Finding;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

// The findings quote the document, which may contain control characters.
void log(std::string line) {
  const auto isControl = [](unsigned char byte) { return byte < 0x20 || byte == 0x7F; };
  std::replace_if(line.begin(), line.end(), isControl, '?');
  std::cout << line << '\n';
}

// The text of the library's exception says almost nothing; the first findings say where to look.
void logWhy(const std::u16string& path, const std::string& text) {
  constexpr std::size_t kMost = 3;
  DiagnosisOptions options;
  options.path = path;
  const Diagnosis diagnosis = install::update_metadata_parser::diagnose(text, options);
  for (std::size_t i = 0; i != std::min(kMost, diagnosis.findings.size()); ++i) {
    const Finding& finding = diagnosis.findings[i];
    log("line " + std::to_string(finding.line) + ", column " + std::to_string(finding.column) +
        ": " + finding.message + "; " + finding.advice);
  }
  if (diagnosis.findings.size() > kMost) {
    log("and " + std::to_string(diagnosis.findings.size() - kMost) + " more");
  }
}

// A file that cannot be read throws before there is anything to diagnose.
std::shared_ptr<UpdateMetaData> load(const std::u16string& path) {
  UpdateMetaDataJsonParser parser(path);
  const std::string text = parser.readFile(path);
  try {
    return parser.parseUpdateMetaDataJson();
  } catch (const std::exception&) {
    logWhy(path, text);
    throw;
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: log_why DOCUMENT\n";
    return 2;
  }
  try {
    load(toUtf16(argv[1]));
    return 0;
  } catch (const std::exception& failure) {
    log(failure.what());
    return 1;
  }
}
