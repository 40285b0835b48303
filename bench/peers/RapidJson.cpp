// RapidJSON: its default Document, read from a terminated text with the default options. A load
// parses the text in place.

#include <memory>
#include <stdexcept>

#include <rapidjson/document.h>

#include "answers/PlainAnswers.h"
#include "answers/TunedAnswers.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

struct Tree {
  using Value = rapidjson::Value;

  static Kind kind(const Value& value) {
    switch (value.GetType()) {
      case rapidjson::kNumberType:
        return Kind::number;
      case rapidjson::kStringType:
        return Kind::text;
      case rapidjson::kArrayType:
        return Kind::array;
      case rapidjson::kObjectType:
        return Kind::object;
      default:
        return Kind::literal;
    }
  }
  static std::string_view text(const Value& value) {
    return {value.GetString(), value.GetStringLength()};
  }
  static double number(const Value& value) { return value.GetDouble(); }
  static const Value& member(const Value& object, const char* key) { return object[key]; }
  template <class Visit>
  static void forEachMember(const Value& object, Visit visit) {
    for (const auto& member : object.GetObject()) {
      visit(text(member.name), member.value);
    }
  }
  template <class Visit>
  static void forEachElement(const Value& array, Visit visit) {
    for (const Value& element : array.GetArray()) {
      visit(element);
    }
  }
};

std::uint64_t parse(const std::string& path, Probe& probe) {
  const std::string text = readFile(path);
  auto tree = std::make_unique<rapidjson::Document>();
  probe.task([&] { tree->Parse(text.c_str()); });
  const std::uint64_t digest = digestOf<Tree>(*tree);
  probe.destruction([&] { tree.reset(); });
  return digest;
}

template <BuildAnswers build>
answers::Answers load(const std::string& path) {
  std::string text = readFile(path);
  rapidjson::Document tree;
  tree.ParseInsitu(text.data());
  if (tree.HasParseError()) {
    throw std::runtime_error("RapidJSON cannot read " + path);
  }
  return build(flatDocumentOf<Tree>(tree));
}

}  // namespace

Peer rapidJson() {
  return {"rapidjson", "RapidJSON " BENCH_RAPIDJSON_VERSION, parse,
          nullptr,     load<answers::plainAnswers>,          load<answers::tunedAnswers>};
}

}  // namespace bench::peers
