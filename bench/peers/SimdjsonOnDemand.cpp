// simdjson on demand: no tree; each value is parsed when it is requested.

#include <memory>

#include <simdjson.h>

#include "answers/PlainAnswers.h"
#include "answers/TunedAnswers.h"
#include "peers/Peers.h"
#include "peers/TreePeer.h"

namespace bench::peers {
namespace {

namespace ondemand = simdjson::ondemand;

// Reads every value and every key once, in the order of the text.
void count(ondemand::value value, Census& census) {
  census.addValue();
  switch (value.type()) {
    case ondemand::json_type::object:
      for (ondemand::field field : value.get_object()) {
        census.addKey(field.unescaped_key());
        count(field.value(), census);
      }
      break;
    case ondemand::json_type::array:
      for (ondemand::value element : value.get_array()) {
        count(element, census);
      }
      break;
    case ondemand::json_type::string:
      census.addText(value.get_string());
      break;
    case ondemand::json_type::number:
      census.addNumber(value.get_double());
      break;
    case ondemand::json_type::boolean:
      static_cast<void>(value.get_bool().value());
      break;
    case ondemand::json_type::null:
      break;
  }
}

std::uint64_t parse(const std::string& path, Probe& probe) {
  const simdjson::padded_string text = simdjson::padded_string::load(path);
  auto parser = std::make_unique<ondemand::parser>();
  Census census;
  probe.task([&] {
    ondemand::document document = parser->iterate(text);
    count(document.get_value(), census);
  });
  probe.destruction([&] { parser.reset(); });
  return census.digest();
}

template <class Builder>
void readComponent(ondemand::object component, Builder& builder) {
  for (ondemand::field package : component["delete"].get_object()) {
    builder.addPackageToDelete(package.unescaped_key());
  }
  for (ondemand::field package : component["extract"].get_object()) {
    const std::string_view name = package.unescaped_key();
    ondemand::object members = package.value();
    const std::int64_t size = toBytes(members["size"].get_double());
    builder.addPackageToExtract(name, size, toBytes(members["uncompressedBytes"].get_double()));
  }
}

template <class Builder>
void readProduct(ondemand::object product, Builder& builder) {
  for (ondemand::value component : product["delete"].get_array()) {
    builder.addComponentToDelete(component.get_string());
  }
  for (ondemand::value component : product["extract"].get_array()) {
    builder.addComponentToExtract(component.get_string());
  }
}

template <class Builder>
void readPackageWithFiles(ondemand::field package, Builder& builder) {
  const std::string_view name = package.unescaped_key();
  ondemand::object members = package.value();
  builder.beginPackageWithFiles(name, toBytes(members["size"].get_double()));
  for (ondemand::value file : members["files"].get_array()) {
    builder.addFile(file.get_string());
  }
  builder.endPackageWithFiles();
}

// Members may be in any order: each look-up continues after the last one, wraps around, and skips
// other members quickly.
template <class Builder>
answers::Answers load(const std::string& path) {
  const simdjson::padded_string text = simdjson::padded_string::load(path);
  ondemand::parser parser;
  ondemand::document document = parser.iterate(text);
  Builder builder;
  for (ondemand::field component : document["components"].get_object()) {
    builder.beginComponent(component.unescaped_key());
    readComponent(component.value(), builder);
    builder.endComponent();
  }
  for (ondemand::field product : document["products"].get_object()) {
    builder.beginProduct(product.unescaped_key());
    readProduct(product.value(), builder);
    builder.endProduct();
  }
  for (ondemand::field component : document["componentsWithFilesDeleted"].get_object()) {
    builder.beginComponentWithFiles(component.unescaped_key());
    for (ondemand::field package : component.value().get_object()) {
      readPackageWithFiles(package, builder);
    }
  }
  return builder.finish();
}

}  // namespace

Peer simdjsonOnDemand() {
  return {"simdjson-ondemand",
          "simdjson " BENCH_SIMDJSON_VERSION " on demand",
          parse,
          nullptr,
          load<answers::PlainAnswers>,
          load<answers::TunedAnswers>};
}

}  // namespace bench::peers
