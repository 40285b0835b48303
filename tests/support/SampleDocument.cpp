#include "support/SampleDocument.h"

#include <cstdint>
#include <optional>
#include <sstream>
#include <utility>

#include "json/JsonText.h"

namespace test_support {
namespace {

using foundation::json::Array;
using foundation::json::Member;
using foundation::json::Object;
using foundation::json::traits;
using foundation::json::Undefined;
using foundation::json::Value;

constexpr const char* kSample = R"({
  "metadata": {
    "arch": "x86",
    "target": {
      "zelvan_version": "9.2", "date": "2024-05-06", "version": "1.1", "prerelease": false,
      "release": "Orchard", "checksum": "5d1c", "description": "second", "update": 7
    },
    "base": {
      "zelvan_version": "9.1", "date": "2024-01-02", "version": "1.0", "prerelease": true,
      "release": "Garden", "checksum": "8f02", "description": "first", "update": 3
    }
  },
  "components": {
    "core": {
      "delete": {"old": {"size": 10}},
      "extract": {"new": {"size": 20, "uncompressedBytes": 40}}
    },
    "extra": {
      "delete": {"out": {"size": 50}, "shed": {"size": 60}},
      "extract": {
        "gain": {"size": 70, "uncompressedBytes": 140},
        "in": {"size": 80, "uncompressedBytes": 160}
      }
    }
  },
  "products": {
    "Press": {"delete": ["core"], "extract": ["core", "extra"]},
    "Scale": {"delete": ["extra", "core"], "extract": ["extra", "core"]}
  },
  "componentsWithFilesDeleted": {
    "docs": {"guide": {"size": 30, "files": ["guide/old.txt"]}},
    "help": {
      "index": {"size": 31, "files": []},
      "pages": {"size": 32, "files": ["a.html", "b.html"]}
    }
  }
})";

// Replaces, adds or, without a value, removes the value at the end of a path.
Value edited(const Value& root, const Path& path, std::size_t depth,
             const std::optional<Value>& value) {
  if (depth == path.size()) {
    return *value;
  }
  const bool removes = depth + 1 == path.size() && !value;
  if (root.is<Array>()) {
    const Array array = root.as<Array>();
    std::vector<Value> elements(array.begin(), array.end());
    Value& element = elements.at(std::stoul(path[depth]));
    element = edited(element, path, depth + 1, value);
    return Array(std::move(elements));
  }
  // The first of equal keys is kept, so the edited member comes before the original.
  std::vector<std::pair<std::string, Value>> members;
  if (!removes) {
    members.emplace_back(path[depth], edited(root[path[depth]], path, depth + 1, value));
  }
  for (const Member& member : root.as<Object>()) {
    if (member.first != path[depth]) {
      members.emplace_back(member.first, member.second);
    }
  }
  return Object(std::move(members));
}

void write(std::ostream& out, const Value& value) {
  const char* separator = "";
  if (value.is<Object>()) {
    out << '{';
    for (const Member& member : value.as<Object>()) {
      out << std::exchange(separator, ",") << '"' << member.first << "\":";
      write(out, member.second);
    }
    out << '}';
  } else if (value.is<Array>()) {
    out << '[';
    for (const Value& element : value.as<Array>()) {
      out << std::exchange(separator, ",");
      write(out, element);
    }
    out << ']';
  } else if (value.is<std::string>()) {
    out << '"' << value.as<std::string_view>() << '"';
  } else if (value.is<double>()) {
    out << value.as<double>();
  } else if (value.is<bool>()) {
    out << (value.as<bool>() ? "true" : "false");
  } else {
    out << "null";
  }
}

}  // namespace

Value sampleDocument() {
  return foundation::json::parseJsonText(kSample);
}

std::vector<std::string> sampleCalls() {
  const std::string tables =
      R"({"core": {"old": 10}, "extra": {"out": 50, "shed": 60}}, )"
      R"({"core": [("new", 20, 40)], "extra": [("gain", 70, 140), ("in", 80, 160)]})";
  return {
      "initializeReleaseData()",
      "initializeBaseRelease()",
      "initializeTargetRelease()",
      "setMetaDataArch(\"x86\")",
      "setTargetReleaseFamily(\"Orchard\")",
      "setTargetReleaseVersion(\"1.1\")",
      "setTargetUpdateLevelForQorv(7)",
      "setBaseReleaseFamily(\"Garden\")",
      "setBaseReleaseVersion(\"1.0\")",
      R"(setProductDeltaData("Press", ["core"], ["core", "extra"], )" + tables + ")",
      R"(setProductDeltaData("Scale", ["extra", "core"], ["extra", "core"], )" + tables + ")",
      R"(createPkgDataWithFilesToDelete("guide", 30, ["guide/old.txt"]))",
      R"(setComponentDataWithFilesToDelete("docs", ["guide"]))",
      R"(createPkgDataWithFilesToDelete("index", 31, []))",
      R"(createPkgDataWithFilesToDelete("pages", 32, ["a.html", "b.html"]))",
      R"(setComponentDataWithFilesToDelete("help", ["index", "pages"]))",
  };
}

std::vector<std::string> sampleCalls(std::size_t count) {
  std::vector<std::string> calls = sampleCalls();
  calls.resize(count);
  return calls;
}

Value with(const Value& root, const Path& path, const Value& value) {
  return edited(root, path, 0, value);
}

Value without(const Value& root, const Path& path) {
  return edited(root, path, 0, std::nullopt);
}

std::string toJson(const Value& value) {
  std::ostringstream out;
  write(out, value);
  return out.str();
}

const std::vector<Kind>& kinds() {
  static const std::vector<Kind> all = {
      {traits<Undefined>::name, Value(), false},
      {traits<std::nullptr_t>::name, nullptr, true},
      {traits<bool>::name, true, true},
      {traits<double>::name, 1.5, true},
      {traits<std::string>::name, "text", true},
      {traits<Array>::name, Array(), true},
      {traits<Object>::name, Object(), true},
      {traits<float>::name, 1.5F, false},
      {traits<std::int64_t>::name, std::int64_t{1}, false},
      {traits<std::uint64_t>::name, std::uint64_t{1}, false},
  };
  return all;
}

}  // namespace test_support
