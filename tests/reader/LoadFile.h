#pragma once

#include <string>

#include "foundation/json/Value.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"

namespace test_support {

inline const std::string kMissing = "std::runtime_error: Update MetaData Json file does not exist ";
inline const std::string kUnopened = "std::runtime_error: Error opening Update MetaData Json File";
inline const std::string kUnusable = "std::runtime_error: Error while parsing ";

/// Loads a document; returns the exception as failureOf() does.
inline std::string load(const std::u16string& path) {
  RecordingParser parser(path);
  return failureOf([&] { parser.parseUpdateMetaDataJson(); });
}

/// The text that the parser reads from a file.
inline std::string readFile(const std::u16string& path) {
  return RecordingParser(u"").readFile(path);
}

/// The text of the sample document.
inline std::string documentText() {
  return toJson(sampleDocument());
}

}  // namespace test_support
