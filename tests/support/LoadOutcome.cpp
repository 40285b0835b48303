#include "support/LoadOutcome.h"

#include <ostream>
#include <stdexcept>

#include "foundation/json/Value.h"
#include "support/Failure.h"
#include "support/NaiveJsonReader.h"
#include "support/RecordingParser.h"

namespace test_support {
namespace {

using foundation::json::Object;
using foundation::json::Value;

Object naiveDocument(const std::string& text) {
  try {
    return naiveParseJsonText(text).as<Object>();
  } catch (const std::exception&) {
    throw std::runtime_error("Error while parsing document.json");
  }
}

Value section(const Object& document, const char* key) {
  for (const auto& [name, value] : document) {
    if (name == key) {
      return value;
    }
  }
  throw std::out_of_range("map::at");
}

}  // namespace

bool operator==(const LoadOutcome& left, const LoadOutcome& right) {
  return left.failure == right.failure && left.calls == right.calls;
}

std::ostream& operator<<(std::ostream& stream, const LoadOutcome& outcome) {
  for (const std::string& call : outcome.calls) {
    stream << call << '\n';
  }
  return stream << "then " << outcome.failure;
}

LoadOutcome loadOutcomeOf(const std::string& text) {
  TextParser parser(text);
  LoadOutcome outcome;
  outcome.failure = failureOf([&] { parser.parseUpdateMetaDataJson(); });
  outcome.calls = parser.takeCalls();
  return outcome;
}

LoadOutcome naiveLoadOutcomeOf(const std::string& text) {
  TextParser parser("");
  LoadOutcome outcome;
  outcome.failure = failureOf([&] {
    parser.setupUpdateMetaDataHandler();
    const Object document = naiveDocument(text);
    parser.parseMetaData(section(document, "metadata"));
    parser.parseComponentData(section(document, "components"));
    parser.parseProductData(section(document, "products"));
    parser.parseComponentsWithFilesDeleted(section(document, "componentsWithFilesDeleted"));
  });
  outcome.calls = parser.takeCalls();
  return outcome;
}

const std::string& variedDocument() {
  static const std::string text = R"({
 "products": {"P\u0072": {"delete": ["c", "d"], "extract": ["c", "c"]},
  "\uD83D\uDE00": {"delete": [], "extract": ["d"]}, "Pr": {"delete": 1}},
 "metadata": {"arch": "x86", "base": null, "target": {"zelvan_version": "", "date": "", "version":
  "1.1", "prerelease": true, "release": "\"O\\r\n\"", "checksum": "5d", "description": "", "update": 3e2}},
 "other": {"qztype": "int8", "qzdata": [1, -2], "more": [{"qzdata": [7 ], "qztype": "uint64"}]},
 "components": {"c": {"delete": {"a": {"size": 12.9}, "b": {"size": -0}},
   "extract": {"e": {"size": 1e30, "uncompressedBytes": 9007199254740993}}},
  "d": {"delete": {}, "extract": {"f": {"size": 0.5E+1, "uncompressedBytes": 12345678901234567890123}}}},
 "componentsWithFilesDeleted": {"g": {"h": {"size": 5, "files": ["x/)"
                                  "\xC3\xA4"
                                  R"(", "\u00e4"]}, "i": {"files": [], "size": -3}}, "j": {}}
})";
  return text;
}

}  // namespace test_support
