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
using answers::FlatDocument;
using answers::rangeOf;

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

// The functions below take members in the order of the text, which costs least: a look-up would
// skip members and come back for them.

answers::Range readPackages(ondemand::object packages, std::vector<FlatDocument::Package>& list) {
  return rangeOf(list, [&] {
    for (ondemand::field package : packages) {
      FlatDocument::Package row;
      row.name = package.unescaped_key();
      for (ondemand::field member : package.value().get_object()) {
        const std::string_view key = member.unescaped_key();
        if (key == "size") {
          row.size = toBytes(member.value().get_double());
        } else if (key == "uncompressedBytes") {
          row.uncompressedBytes = toBytes(member.value().get_double());
        }
      }
      list.push_back(row);
    }
  });
}

answers::Range readTexts(ondemand::array texts, std::vector<std::string_view>& list) {
  return rangeOf(list, [&] {
    for (ondemand::value text : texts) {
      list.push_back(text.get_string());
    }
  });
}

FlatDocument::Component readComponent(ondemand::field component, FlatDocument& document) {
  FlatDocument::Component row;
  row.name = component.unescaped_key();
  for (ondemand::field member : component.value().get_object()) {
    const std::string_view key = member.unescaped_key();
    if (key == "delete") {
      row.toDelete = readPackages(member.value(), document.packages);
    } else if (key == "extract") {
      row.toExtract = readPackages(member.value(), document.packages);
    }
  }
  return row;
}

FlatDocument::Product readProduct(ondemand::field product, FlatDocument& document) {
  FlatDocument::Product row;
  row.name = product.unescaped_key();
  for (ondemand::field member : product.value().get_object()) {
    const std::string_view key = member.unescaped_key();
    if (key == "delete") {
      row.toDelete = readTexts(member.value(), document.namings);
    } else if (key == "extract") {
      row.toExtract = readTexts(member.value(), document.namings);
    }
  }
  return row;
}

FlatDocument::PackageWithFiles readPackageWithFiles(ondemand::field package,
                                                    FlatDocument& document) {
  FlatDocument::PackageWithFiles row;
  row.name = package.unescaped_key();
  for (ondemand::field member : package.value().get_object()) {
    const std::string_view key = member.unescaped_key();
    if (key == "size") {
      row.size = toBytes(member.value().get_double());
    } else if (key == "files") {
      row.files = readTexts(member.value(), document.files);
    }
  }
  return row;
}

FlatDocument::ComponentWithFiles readComponentWithFiles(ondemand::field component,
                                                        FlatDocument& document) {
  FlatDocument::ComponentWithFiles row;
  row.name = component.unescaped_key();
  row.packages = rangeOf(document.packagesWithFiles, [&] {
    for (ondemand::field package : component.value().get_object()) {
      document.packagesWithFiles.push_back(readPackageWithFiles(package, document));
    }
  });
  return row;
}

FlatDocument readDocument(ondemand::object sections) {
  FlatDocument document;
  for (ondemand::field section : sections) {
    const std::string_view key = section.unescaped_key();
    if (key == "components") {
      for (ondemand::field component : section.value().get_object()) {
        document.components.push_back(readComponent(component, document));
      }
    } else if (key == "products") {
      for (ondemand::field product : section.value().get_object()) {
        document.products.push_back(readProduct(product, document));
      }
    } else if (key == "componentsWithFilesDeleted") {
      for (ondemand::field component : section.value().get_object()) {
        document.componentsWithFiles.push_back(readComponentWithFiles(component, document));
      }
    }
  }
  return document;
}

template <BuildAnswers build>
answers::Answers load(const std::string& path) {
  const simdjson::padded_string text = simdjson::padded_string::load(path);
  ondemand::parser parser;
  ondemand::document document = parser.iterate(text);
  return build(readDocument(document.get_object()));
}

}  // namespace

Peer simdjsonOnDemand() {
  return {"simdjson-ondemand",
          "simdjson " BENCH_SIMDJSON_VERSION " on demand",
          parse,
          nullptr,
          load<answers::plainAnswers>,
          load<answers::tunedAnswers>};
}

}  // namespace bench::peers
