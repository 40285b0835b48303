// Boost.JSON: values in a monotonic resource, its fast mode.

#include <memory>
#include <optional>

#include <boost/json.hpp>

#include "answers/PlainAnswers.h"
#include "answers/TunedAnswers.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

struct Tree {
  using Value = boost::json::value;

  static Kind kind(const Value& value) {
    switch (value.kind()) {
      case boost::json::kind::int64:
      case boost::json::kind::uint64:
      case boost::json::kind::double_:
        return Kind::number;
      case boost::json::kind::string:
        return Kind::text;
      case boost::json::kind::array:
        return Kind::array;
      case boost::json::kind::object:
        return Kind::object;
      default:
        return Kind::literal;
    }
  }
  static std::string_view text(const Value& value) {
    const boost::json::string& text = value.as_string();
    return {text.data(), text.size()};
  }
  static double number(const Value& value) { return value.to_number<double>(); }
  static const Value& member(const Value& object, const char* key) {
    return object.as_object().at(key);
  }
  template <class Visit>
  static void forEachMember(const Value& object, Visit visit) {
    for (const auto& member : object.as_object()) {
      visit(std::string_view(member.key().data(), member.key().size()), member.value());
    }
  }
  template <class Visit>
  static void forEachElement(const Value& array, Visit visit) {
    for (const Value& element : array.as_array()) {
      visit(element);
    }
  }
};

std::uint64_t parse(const std::string& path, Probe& probe) {
  const std::string text = readFile(path);
  auto resource = std::make_unique<boost::json::monotonic_resource>();
  std::optional<boost::json::value> tree;
  probe.task([&] { tree.emplace(boost::json::parse(text, resource.get())); });
  const std::uint64_t digest = digestOf<Tree>(*tree);
  probe.destruction([&] {
    tree.reset();
    resource.reset();
  });
  return digest;
}

template <BuildAnswers build>
answers::Answers load(const std::string& path) {
  boost::json::monotonic_resource resource;
  const boost::json::value tree = boost::json::parse(readFile(path), &resource);
  return build(flatDocumentOf<Tree>(tree));
}

}  // namespace

Peer boostJson() {
  return {"boost",
          "Boost.JSON " BENCH_BOOST_JSON_VERSION,
          parse,
          nullptr,
          load<answers::plainAnswers>,
          load<answers::tunedAnswers>};
}

}  // namespace bench::peers
