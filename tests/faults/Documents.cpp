#include "faults/Documents.h"

#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace test_support {
namespace {

constexpr const char* kPlain = R"({
  "metadata": {
    "arch": "an architecture with a long name",
    "target": {
      "zelvan_version": "t-zelvan, longer than a string object", "date": "t-date, longer than a string object",
      "version": "t-version, longer than a string object", "prerelease": false,
      "release": "t-release, longer than a string object", "checksum": "t-checksum, longer than a string object",
      "description": "t-description, longer than a string object", "update": 7
    },
    "base": {
      "zelvan_version": "b-zelvan, longer than a string object", "date": "b-date, longer than a string object",
      "version": "b-version, longer than a string object", "prerelease": true,
      "release": "b-release, longer than a string object", "checksum": "b-checksum, longer than a string object",
      "description": "b-description, longer than a string object", "update": 3
    }
  },
  "components": {
    "first component": {
      "delete": {"package to delete": {"size": 10}},
      "extract": {"package to extract": {"size": 20, "uncompressedBytes": 40}}
    }
  },
  "products": {
    "first product": {"delete": ["first component"], "extract": ["first component"]},
    "second product": {"delete": ["first component", "none"], "extract": []}
  },
  "componentsWithFilesDeleted": {
    "component with files": {"package with files": {"size": 30, "files": ["a/first file.txt"]}},
    "last component": {"last package": {"size": 31, "files": ["a/last file.txt", "z/end.txt"]}}
  }
})";

/// The plain document with `after` instead of `before`, which must occur exactly once.
std::string plainWith(std::string_view before, std::string_view after) {
  std::string text = kPlain;
  const std::size_t place = text.find(before);
  if (place == std::string::npos || text.find(before, place + 1) != std::string::npos) {
    throw std::logic_error(std::string(before) + " does not occur exactly once in the document");
  }
  return text.replace(place, before.size(), after);
}

/// A member of the plain document. The text of its key and value occurs exactly once.
struct RequiredMember {
  const char* name;
  std::string key;
  std::string value;
  const char* kind;
  std::string before;  ///< preceding text that makes the place unique
  std::string after;
};

std::vector<RequiredMember> requiredMembers() {
  std::vector<RequiredMember> members = {
      {"Arch", "arch", "\"an architecture with a long name\"", "string", "", ""},
      {"PkgsToDelete", "delete", "{\"package to delete\": {\"size\": 10}}", "object", "", ""},
      {"PkgsToExtract", "extract",
       "{\"package to extract\": {\"size\": 20, \"uncompressedBytes\": 40}}", "object", "", ""},
      {"SizeToDelete", "size", "10", "double", "", ""},
      {"SizeToExtract", "size", "20", "double", "", ""},
      {"UncompressedBytes", "uncompressedBytes", "40", "double", "", ""},
      {"CompsToDelete", "delete", "[\"first component\", \"none\"]", "array", "", ""},
      {"CompsToExtract", "extract", "[]", "array", "", ""},
      {"SizeWithFiles", "size", "31", "double", "", ""},
      {"Files", "files", "[\"a/last file.txt\", \"z/end.txt\"]", "array", "", ""},
      {"TargetUpdate", "update", "7", "double", "", ""},
      {"BaseUpdate", "update", "3", "double", "", "\n"},
      {"TargetPrerelease", "prerelease", "false", "boolean", "", ""},
      {"BasePrerelease", "prerelease", "true", "boolean", "", ""},
  };
  for (const bool target : {true, false}) {
    for (const char* field :
         {"zelvan_version", "date", "version", "release", "checksum", "description"}) {
      const std::string key = field;
      const std::string word = key == "zelvan_version" ? "zelvan" : key;
      members.push_back(
          {target ? "Target" : "Base", key,
           std::string(target ? "\"t-" : "\"b-") + word + ", longer than a string object\"",
           "string", "", ""});
    }
  }
  return members;
}

void addRequiredMembers(std::vector<FailingDocument>& documents) {
  for (const RequiredMember& member : requiredMembers()) {
    const std::string name = std::string(member.name) + ' ' + member.key;
    const std::string whole = '"' + member.key + "\": " + member.value + member.after;
    const std::string invalid =
        "std::runtime_error: Invalid data provided for '" + member.key + "'";
    documents.push_back({name + ", absent",
                         plainWith(whole, "\"other\": " + member.value + member.after),
                         invalid,
                         {}});
    documents.push_back(
        {name + ", null",
         plainWith(whole, '"' + member.key + "\": null" + member.after),
         std::string("std::runtime_error: invalid conversion: null to ") + member.kind,
         {}});
    const char* other = std::string_view(member.kind) == "boolean" ? "[[]]" : "false";
    documents.push_back({name + ", of another kind",
                         plainWith(whole, '"' + member.key + "\": " + other + member.after),
                         invalid,
                         {}});
  }
}

void addConversions(std::vector<FailingDocument>& documents) {
  const auto add = [&](const char* name, std::string text, const char* kinds) {
    documents.push_back({name,
                         std::move(text),
                         std::string("std::runtime_error: invalid conversion: ") + kinds,
                         {}});
  };
  const auto renamed = [](const char* key, const char* value) {
    const std::string member = std::string("\"") + key + "\": {";
    // The original value is kept as a member that is ignored.
    return plainWith(member, std::string("\"") + key + "\": " + value + ", \"ignored\": {");
  };
  add("Metadata that is a string", renamed("metadata", "\"none at all\""), "string to object");
  add("Target that is a number", renamed("target", "1.5"), "double to object");
  add("Base that is an array", renamed("base", "[1, 2]"), "array to object");
  add("Target that is absent", plainWith("\"target\":", "\"targets\":"), "undefined to object");
  add("Components that are a boolean", renamed("components", "true"), "boolean to object");
  add("Component that is a string",
      plainWith("\"components\": {", "\"components\": {\"a component\": \"text\","),
      "string to object");
  add("Package that is a number",
      plainWith("{\"package to delete\": {\"size\": 10}}", "{\"package to delete\": 10}"),
      "double to object");
  add("Products that are a number", renamed("products", "0"), "double to object");
  add("Product that is null", plainWith("\"products\": {", "\"products\": {\"a product\": null,"),
      "null to object");
  add("Component name that is an object",
      plainWith("[\"first component\", \"none\"]", "[\"first component\", {\"a\": 1}]"),
      "object to string");
  add("Components with files that are an array",
      renamed("componentsWithFilesDeleted", "[\"name\"]"), "array to object");
  add("File that is a number", plainWith("\"z/end.txt\"", "26"), "double to string");
}

void addTexts(std::vector<FailingDocument>& documents) {
  const auto add = [&](const char* name, std::string text, int code) {
    documents.push_back({name, std::move(text), kParseFailure, code});
  };
  const std::string plain = kPlain;
  add("Line feed at the end", plain + '\n', 0);
  add("Half an escape", plainWith("a/first file", "\\uD83D and more than six bytes"), 5);
  add("Unknown escape", plainWith("a/first file", "a long beginning \\x"), 6);
  add("No value", plainWith("\"none\"", "none"), 8);
  add("Minus without a digit", plainWith("\"update\": 7", "\"update\": -x"), 11);
  add("Point without a digit", plainWith("\"update\": 7", "\"update\": 1.x"), 12);
  add("Exponent without a digit", plainWith("\"update\": 7", "\"update\": 1e+x"), 13);
  add("Payload that is not an array",
      plainWith("\"update\": 7", R"("update": {"qztype": "int64", "qzdata": {}})"), 14);
  add("Array without a comma", plainWith(", \"none\"", " \"none\""), 15);
  add("Object without a comma", plainWith(", \"uncompressedBytes\"", " \"uncompressedBytes\""), 17);
  add("Member without a colon", plainWith("\"products\":", "\"products\""), 18);
  add("Text without its end", plain.substr(0, plain.size() - 1), 19);
  add("Payload with a fraction",
      plainWith("\"update\": 7", R"("update": {"qztype": "uint64", "qzdata": [1, 2.5]})"), 20);
  documents.push_back({"Type that is not a string",
                       plainWith("\"update\": 7", R"("update": {"qztype": [1]})"),
                       kParseFailure,
                       {}});
  documents.push_back({"Array at the top", "[" + plain + "]", kParseFailure, {}});
  documents.push_back({"String at the top", "\"a string that is long enough\"", kParseFailure, {}});
}

/// The numbered name of a package, component or product, with plain, escaped and non-ASCII
/// characters.
std::string nameOf(const char* kind, int number) {
  const char* const endings[] = {" verbatim", " \\u00E4\\n\\uD83D\\uDE00 escaped",
                                 " \xC3\xA4 \xF0\x9F\x98\x80 beyond ASCII"};
  return std::string(kind) + ' ' + std::to_string(number * 7 % 11) + '-' + std::to_string(number) +
         endings[number % 3];
}

}  // namespace

std::string richDocument() {
  constexpr int kComponents = 10;
  constexpr int kPackages = 4;
  constexpr int kProducts = 5;
  constexpr int kElements = 300;
  std::ostringstream out;
  out << R"({"unread": {"qzdata": [1, -2, 99999999999999999999], "qztype": "int64"},
    "also unread": {"qztype": "uint8", "qzdata": [1, 2, 3]}, "long": [)";
  for (int element = 0; element < kElements; ++element) {
    out << element << ".25e-1, ";
  }
  out << "123456789012345678901234567890.5e-300],\n\"components\": {";
  for (int component = 0; component < kComponents; ++component) {
    out << (component == 0 ? "" : ",") << '"' << nameOf("component", component)
        << "\": {\"delete\": {";
    for (int pkg = 0; pkg < kPackages; ++pkg) {
      out << (pkg == 0 ? "" : ",") << '"' << nameOf("old package", pkg) << "\": {\"size\": " << pkg
          << '}';
    }
    out << "}, \"extract\": {";
    for (int pkg = 0; pkg < kPackages; ++pkg) {
      out << (pkg == 0 ? "" : ",") << '"' << nameOf("new package", pkg)
          << R"(": {"size": 1e3, "uncompressedBytes": 12345678901})";
    }
    out << "}}";
  }
  // A repeated key: its first value is kept.
  out << ",\"" << nameOf("component", 0) << "\": false},\n\"products\": {";
  for (int product = 0; product < kProducts; ++product) {
    out << (product == 0 ? "" : ",") << '"' << nameOf("product", product) << "\": {\"delete\": [";
    for (int component = 0; component < kComponents; component += 2) {
      out << (component == 0 ? "" : ",") << '"' << nameOf("component", component) << '"';
    }
    out << "], \"extract\": [";
    for (int component = 0; component < kComponents; component += 3) {
      out << (component == 0 ? "" : ",") << '"' << nameOf("component", component) << '"';
    }
    out << "]}";
  }
  out << "},\n\"componentsWithFilesDeleted\": {";
  for (int component = 0; component < kComponents / 2; ++component) {
    out << (component == 0 ? "" : ",") << '"' << nameOf("component", component) << "\": {";
    for (int pkg = 0; pkg < kPackages; ++pkg) {
      out << (pkg == 0 ? "" : ",") << '"' << nameOf("package", pkg)
          << R"(": {"size": 1, "files": [)" << '"' << nameOf("a file", pkg) << "\", \""
          << nameOf("another file", pkg) << "\"]}";
    }
    out << '}';
  }
  const std::string plain = kPlain;
  const std::size_t begin = plain.find("\"metadata\"");
  const std::size_t end = plain.find("\"components\"");
  std::string metaData = plain.substr(begin, end - begin);
  metaData.erase(metaData.rfind(','));
  out << "},\n" << metaData << '}';
  return out.str();
}

std::vector<FailingDocument> failingDocuments() {
  std::vector<FailingDocument> documents;
  for (const char* section : {"metadata", "components", "products", "componentsWithFilesDeleted"}) {
    const std::string key = std::string("\"") + section + "\":";
    documents.push_back({std::string(section) + ", absent",
                         plainWith(key, "\"another section\":"),
                         "std::out_of_range: map::at",
                         {}});
  }
  addRequiredMembers(documents);
  addConversions(documents);
  addTexts(documents);
  return documents;
}

}  // namespace test_support
