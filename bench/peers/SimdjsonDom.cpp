// simdjson's tree: a parser created for the text, and elements that point into its tape.

#include <memory>

#include <simdjson.h>

#include "answers/PlainAnswers.h"
#include "answers/TunedAnswers.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

struct Tree {
  using Value = simdjson::dom::element;

  static Kind kind(Value value) {
    switch (value.type()) {
      case simdjson::dom::element_type::INT64:
      case simdjson::dom::element_type::UINT64:
      case simdjson::dom::element_type::DOUBLE:
        return Kind::number;
      case simdjson::dom::element_type::STRING:
        return Kind::text;
      case simdjson::dom::element_type::ARRAY:
        return Kind::array;
      case simdjson::dom::element_type::OBJECT:
        return Kind::object;
      default:
        return Kind::literal;
    }
  }
  static std::string_view text(Value value) { return value.get_string(); }
  static double number(Value value) { return value.get_double(); }
  static Value member(Value object, const char* key) { return object[key]; }
  template <class Visit>
  static void forEachMember(Value object, Visit visit) {
    for (const simdjson::dom::key_value_pair member : object.get_object()) {
      visit(member.key, member.value);
    }
  }
  template <class Visit>
  static void forEachElement(Value array, Visit visit) {
    for (const Value element : array.get_array()) {
      visit(element);
    }
  }
};

std::uint64_t parse(const std::string& path, Probe& probe) {
  const simdjson::padded_string text = simdjson::padded_string::load(path);
  auto parser = std::make_unique<simdjson::dom::parser>();
  Tree::Value tree;
  probe.task([&] { tree = parser->parse(text); });
  const std::uint64_t digest = digestOf<Tree>(tree);
  probe.destruction([&] { parser.reset(); });
  return digest;
}

template <BuildAnswers build>
answers::Answers load(const std::string& path) {
  simdjson::dom::parser parser;
  const Tree::Value tree = parser.load(path);
  return build(flatDocumentOf<Tree>(tree));
}

}  // namespace

Peer simdjsonDom() {
  return {"simdjson-dom",
          "simdjson " BENCH_SIMDJSON_VERSION " DOM",
          parse,
          nullptr,
          load<answers::plainAnswers>,
          load<answers::tunedAnswers>};
}

}  // namespace bench::peers
