// nlohmann/json: its default tree of ordered maps.

#include <nlohmann/json.hpp>

#include "answers/PlainAnswers.h"
#include "answers/TunedAnswers.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

struct Tree {
  using Value = nlohmann::json;

  static Kind kind(const Value& value) {
    switch (value.type()) {
      case Value::value_t::number_integer:
      case Value::value_t::number_unsigned:
      case Value::value_t::number_float:
        return Kind::number;
      case Value::value_t::string:
        return Kind::text;
      case Value::value_t::array:
        return Kind::array;
      case Value::value_t::object:
        return Kind::object;
      default:
        return Kind::literal;
    }
  }
  static std::string_view text(const Value& value) {
    return value.get_ref<const Value::string_t&>();
  }
  static double number(const Value& value) { return value.get<double>(); }
  static const Value& member(const Value& object, const char* key) { return object.at(key); }
  template <class Visit>
  static void forEachMember(const Value& object, Visit visit) {
    for (const auto& [key, member] : object.get_ref<const Value::object_t&>()) {
      visit(std::string_view(key), member);
    }
  }
  template <class Visit>
  static void forEachElement(const Value& array, Visit visit) {
    for (const Value& element : array.get_ref<const Value::array_t&>()) {
      visit(element);
    }
  }
};

std::uint64_t parse(const std::string& path, Probe& probe) {
  const std::string text = readFile(path);
  nlohmann::json tree;
  probe.task([&] { tree = nlohmann::json::parse(text); });
  const std::uint64_t digest = digestOf<Tree>(tree);
  probe.destruction([&] { tree = nullptr; });
  return digest;
}

std::uint64_t read(const std::string& path, Probe& probe) {
  const std::string text = readFile(path);
  std::uint64_t size = kRejected;
  probe.task([&] {
    try {
      const nlohmann::json tree = nlohmann::json::parse(text);
      size = tree.is_string() ? Tree::text(tree).size() : tree.size();
    } catch (const nlohmann::json::parse_error&) {
      size = kRejected;
    }
  });
  return size;
}

template <BuildAnswers build>
answers::Answers load(const std::string& path) {
  const nlohmann::json tree = nlohmann::json::parse(readFile(path));
  return build(flatDocumentOf<Tree>(tree));
}

}  // namespace

Peer nlohmannJson() {
  return {"nlohmann",
          "nlohmann/json " BENCH_NLOHMANN_JSON_VERSION,
          parse,
          read,
          load<answers::plainAnswers>,
          load<answers::tunedAnswers>};
}

}  // namespace bench::peers
