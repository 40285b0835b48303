#include "support/RandomDocument.h"

#include <algorithm>

#include "diagnosis/source/SourceTree.h"

namespace test_support {
namespace {

constexpr std::string_view kNames[] = {"\"\"",          "\"a\"",       "\"b\"",
                                       "\"a_b\"",       "\"\\u0061\"", "\"\xC3\xA9\"",
                                       "\"\\u00e9\"",   "\"\xFF\"",    "\"a\tb\n\"",
                                       "\"a\\tb\\\\\"", "\"\\\"\"",    "\"\\ud83d\\ude00\"",
                                       "\"[1, {\"",     "\"} , ]:\"",  "\"\\u0000/\\/\"",
                                       "\"b_a\"",       "\"\xFE\"",    "\"\\ue000\""};

constexpr std::string_view kNumbers[] = {
    "0",      "7",   "12.9", "-3.5", "1e30", "007", "-0", "1E+3", "9007199254740993",
    "0.1e-2", "300", "1e999"};

constexpr std::string_view kSpaces[] = {"", "", "", " ", "\n", "\t", "\r\n", "\v", "\f", " \n  "};

constexpr std::string_view kBooleans[] = {"true", "false"};

}  // namespace

std::string RandomDocument::next() {
  return object({{"\"metadata\"", metadata()},
                 {"\"components\"", oneIn(8) ? "null" : named(&RandomDocument::component)},
                 {"\"products\"", oneIn(8) ? "null" : named(&RandomDocument::product)},
                 {"\"componentsWithFilesDeleted\"",
                  oneIn(8) ? "null" : named(&RandomDocument::componentWithFiles)}});
}

std::string RandomDocument::space() {
  return oneOf(kSpaces);
}

std::string RandomDocument::name() {
  return oneOf(kNames);
}

std::string RandomDocument::number() {
  return oneOf(kNumbers);
}

std::string RandomDocument::anyValue() {
  for (;;) {
    std::string text = values_.next();
    if (!install::update_metadata_parser::diagnosis::source::SourceTree(text).fault()) {
      return text;
    }
  }
}

std::string RandomDocument::release() {
  return object({{"\"zelvan_version\"", name()},
                 {"\"date\"", name()},
                 {"\"version\"", name()},
                 {"\"prerelease\"", oneOf(kBooleans)},
                 {"\"release\"", name()},
                 {"\"checksum\"", name()},
                 {"\"description\"", name()},
                 {"\"update\"", number()}});
}

std::string RandomDocument::metadata() {
  return object({{"\"arch\"", name()},
                 {"\"base\"", oneIn(4) ? "null" : release()},
                 {"\"target\"", oneIn(4) ? "null" : release()}});
}

std::string RandomDocument::packageToDelete() {
  return object({{"\"size\"", number()}});
}

std::string RandomDocument::packageToExtract() {
  return object({{"\"size\"", number()}, {"\"uncompressedBytes\"", number()}});
}

std::string RandomDocument::component() {
  return object({{"\"delete\"", named(&RandomDocument::packageToDelete)},
                 {"\"extract\"", named(&RandomDocument::packageToExtract)}});
}

std::string RandomDocument::product() {
  return object({{"\"delete\"", array()}, {"\"extract\"", array()}});
}

std::string RandomDocument::packageWithFiles() {
  return object({{"\"size\"", number()}, {"\"files\"", array()}});
}

std::string RandomDocument::componentWithFiles() {
  return named(&RandomDocument::packageWithFiles);
}

std::string RandomDocument::array() {
  std::string text = '[' + space();
  for (std::size_t left = below(4); left != 0; --left) {
    text += name() + space() + (left == 1 ? "" : ',' + space());
  }
  return text + ']';
}

std::string RandomDocument::object(std::vector<Member> members) {
  if (oneIn(8)) {
    members.push_back({"\"note\"", anyValue()});
  }
  std::shuffle(members.begin(), members.end(), random_);
  if (oneIn(8) && !members.empty()) {
    members.push_back({members[below(members.size())].key, anyValue()});
  }
  return written(members);
}

std::string RandomDocument::written(const std::vector<Member>& members) {
  std::string text = '{' + space();
  for (const Member& member : members) {
    text += &member == members.data() ? "" : ',' + space();
    text += member.key + space() + ':' + space() + member.value + space();
  }
  return text + '}';
}

std::string RandomDocument::named(std::string (RandomDocument::*makeValue)()) {
  std::vector<Member> members;
  for (std::size_t left = below(4); left != 0; --left) {
    members.push_back({name(), (this->*makeValue)()});
  }
  return written(members);
}

}  // namespace test_support
