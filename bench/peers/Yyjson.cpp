// yyjson: its immutable document, parsed in place.

#include <memory>
#include <stdexcept>

#include <yyjson.h>

#include "answers/PlainAnswers.h"
#include "answers/TunedAnswers.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

struct Free {
  void operator()(yyjson_doc* document) const noexcept { yyjson_doc_free(document); }
};
using Document = std::unique_ptr<yyjson_doc, Free>;

struct Tree {
  using Value = yyjson_val*;

  static Kind kind(Value value) {
    switch (yyjson_get_type(value)) {
      case YYJSON_TYPE_NUM:
        return Kind::number;
      case YYJSON_TYPE_STR:
        return Kind::text;
      case YYJSON_TYPE_ARR:
        return Kind::array;
      case YYJSON_TYPE_OBJ:
        return Kind::object;
      default:
        return Kind::literal;
    }
  }
  static std::string_view text(Value value) {
    return {yyjson_get_str(value), yyjson_get_len(value)};
  }
  static double number(Value value) { return yyjson_get_num(value); }
  static Value member(Value object, const char* key) { return yyjson_obj_get(object, key); }
  template <class Visit>
  static void forEachMember(Value object, Visit visit) {
    yyjson_obj_iter members = yyjson_obj_iter_with(object);
    while (const Value key = yyjson_obj_iter_next(&members)) {
      visit(text(key), yyjson_obj_iter_get_val(key));
    }
  }
  template <class Visit>
  static void forEachElement(Value array, Visit visit) {
    yyjson_arr_iter elements = yyjson_arr_iter_with(array);
    while (const Value element = yyjson_arr_iter_next(&elements)) {
      visit(element);
    }
  }
};

std::string readPaddedFile(const std::string& path) {
  return readFile(path, YYJSON_PADDING_SIZE);
}

Document parsed(std::string& padded) {
  Document document(yyjson_read_opts(padded.data(), padded.size() - YYJSON_PADDING_SIZE,
                                     YYJSON_READ_INSITU, nullptr, nullptr));
  if (document == nullptr) {
    throw std::runtime_error("yyjson cannot read the text");
  }
  return document;
}

std::uint64_t parse(const std::string& path, Probe& probe) {
  std::string text = readPaddedFile(path);
  Document document;
  probe.task([&] { document = parsed(text); });
  const std::uint64_t digest = digestOf<Tree>(yyjson_doc_get_root(document.get()));
  probe.destruction([&] { document.reset(); });
  return digest;
}

template <BuildAnswers build>
answers::Answers load(const std::string& path) {
  std::string text = readPaddedFile(path);
  const Document document = parsed(text);
  return build(flatDocumentOf<Tree>(yyjson_doc_get_root(document.get())));
}

}  // namespace

Peer yyjson() {
  return {"yyjson", "yyjson " BENCH_YYJSON_VERSION, parse,
          nullptr,  load<answers::plainAnswers>,    load<answers::tunedAnswers>};
}

}  // namespace bench::peers
