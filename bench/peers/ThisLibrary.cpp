// This library: parseJsonText() for text to tree, the public classes for file to answers.

#include "peers/ThisLibrary.h"

#include <memory>
#include <utility>

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "json/JsonText.h"
#include "json/ParserException.h"
#include "peers/IdentityParser.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using install::update_metadata_parser::UpdateMetaData;

struct Tree {
  using Value = foundation::json::Value;

  static Kind kind(const Value& value) {
    if (value.is<double>()) {
      return Kind::number;
    }
    if (value.is<std::string>()) {
      return Kind::text;
    }
    if (value.is<Array>()) {
      return Kind::array;
    }
    return value.is<Object>() ? Kind::object : Kind::literal;
  }
  static std::string_view text(const Value& value) { return value.as<std::string_view>(); }
  static double number(const Value& value) { return value.as<double>(); }
  static const Value& member(const Value& object, const char* key) { return object[key]; }
  template <class Visit>
  static void forEachMember(const Value& object, Visit visit) {
    for (const foundation::json::Member& member : object.as<Object>()) {
      visit(member.first, member.second);
    }
  }
  template <class Visit>
  static void forEachElement(const Value& array, Visit visit) {
    for (const Value& element : array.as<Array>()) {
      visit(element);
    }
  }
};

std::uint64_t parse(const std::string& path, Probe& probe) {
  std::string text = readFile(path);
  foundation::json::Value tree;
  probe.task([&] { tree = foundation::json::parseJsonText(std::move(text)); });
  const std::uint64_t digest = digestOf<Tree>(tree);
  probe.destruction([&] { tree = foundation::json::Value(); });
  return digest;
}

std::uint64_t sizeAtTheTop(const foundation::json::Value& tree) {
  if (tree.is<std::string>()) {
    return tree.as<std::string_view>().size();
  }
  return tree.is<Array>() ? tree.as<Array>().size() : tree.as<Object>().size();
}

std::uint64_t read(const std::string& path, Probe& probe) {
  std::string text = readFile(path);
  std::uint64_t size = kRejected;
  probe.task([&] {
    try {
      size = sizeAtTheTop(foundation::json::parseJsonText(std::move(text)));
    } catch (const foundation::json::ParserException&) {
      size = kRejected;
    }
  });
  return size;
}

answers::Answers load(const std::string& path) {
  // As in an installer, the parser is destroyed as soon as the facade exists.
  const std::shared_ptr<UpdateMetaData> metaData =
      IdentityParser(fl::i18n::to_ustring(path)).parseUpdateMetaDataJson();
  answers::Answers answers;
  answers.toDelete = metaData->getComponentsToDelete(u"");
  answers.toExtract = metaData->getComponentsToExtract(u"");
  answers.sizes = metaData->getUpdateSizeForComponentsToExtract();
  answers.files = metaData->getComponentsWithFilesToDelete();
  return answers;
}

}  // namespace

answers::FlatDocument flatDocumentOf(const foundation::json::Value& document) {
  return flatDocumentOf<Tree>(document);
}

Peer thisLibrary() {
  return {"ours", "this library", parse, read, load, nullptr};
}

}  // namespace bench::peers
