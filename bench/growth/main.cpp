// bench-growth: gives the library one input of a family, for scripts/check/growth.
//
//     bench-growth list
//         Prints for each family its name, the size to start with and the size of a megabyte.
//     bench-growth run FAMILY SIZE
//         Reads the text; or loads, queries and destroys the document; or looks up the products.
//         Prints the bytes of the text, the elements of the model, the entries of the answers,
//         nanoseconds of processor time and the peak memory in bytes.
//
// All measured work happens in functions whose names begin with "measured", so that a tool that
// counts instructions can ignore the rest.

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "fl/i18n.h"
#include "foundation/json/Value.h"
#include "generate/Family.h"
#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "json/JsonText.h"
#include "peers/IdentityParser.h"
#include "peers/Probe.h"

namespace {

using bench::generate::Family;
using bench::generate::FamilyKind;
using install::product_data_provider::ProductDataProvider;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

// The amount of work apart from the bytes of the text.
struct Work {
  std::size_t elements = 0;
  std::size_t entries = 0;
};

class Parser : public UpdateMetaDataJsonParser {
 public:
  explicit Parser(std::string text)
      : UpdateMetaDataJsonParser(u"document.json"), text_(std::move(text)) {}

  std::string readFile(const std::u16string&) override { return std::move(text_); }
  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    auto made = std::make_shared<bench::peers::IdentityHandler>();
    lastHandler = made;
    return made;
  }

  mutable std::weak_ptr<UpdateMetaDataHandler> lastHandler;

 private:
  std::string text_;
};

std::size_t countElements(const UpdateMetaDataHandler& handler) {
  const auto root = handler.getProductUpdateMetaDataModel();
  std::size_t count = 0;
  const auto& products = root->getProductsDeltaData();
  for (std::size_t i = 0; i < products.size(); ++i) {
    const auto product = products[i];
    ++count;
    for (const auto* components : {&product->getCompsToDelete(), &product->getCompsToExtract()}) {
      for (std::size_t k = 0; k < components->size(); ++k) {
        const auto component = (*components)[k];
        count += 1 + component->getPkgsToDelete().size() + component->getPkgsToExtract().size();
      }
    }
  }
  const auto& withFiles = root->getCompsWithFilesToDelete();
  for (std::size_t i = 0; i < withFiles.size(); ++i) {
    const auto& packages = withFiles[i]->getPkgsWithFilesToDelete();
    ++count;
    for (std::size_t k = 0; k < packages.size(); ++k) {
      count += 1 + packages[k]->getFilesToDelete().size();
    }
  }
  return count;
}

// A key counts once, and once more for every so many units of its length.
constexpr std::size_t kUnitsOfAnEntry = 16;

std::size_t entryOf(const std::u16string& key) {
  return 1 + key.size() / kUnitsOfAnEntry;
}

std::size_t entriesOf(const std::set<std::u16string>& keys) {
  std::size_t entries = 0;
  for (const std::u16string& key : keys) {
    entries += entryOf(key);
  }
  return entries;
}

template <class Content>
std::size_t entriesOf(const std::map<std::u16string, Content>& answer) {
  std::size_t entries = 0;
  for (const auto& [key, content] : answer) {
    entries += entryOf(key);
    if constexpr (std::is_same_v<Content, std::set<std::u16string>>) {
      entries += entriesOf(content);
    }
  }
  return entries;
}

}  // namespace

extern "C" {

[[gnu::noinline]] void measuredRead(std::string& text, bool hasComments) {
  try {
    const foundation::json::Value value =
        foundation::json::parseJsonText(std::move(text), hasComments);
  } catch (const std::exception&) {
    // A rejected text counts as well.
  }
}

[[gnu::noinline]] void measuredLoad(Parser& parser, std::shared_ptr<UpdateMetaData>& facade) {
  facade = parser.parseUpdateMetaDataJson();
}

[[gnu::noinline]] void measuredQuestions(const UpdateMetaData& facade, std::size_t& entries) {
  entries += entriesOf(facade.getComponentsToDelete(u"there"));
  entries += entriesOf(facade.getComponentsToExtract(u"there"));
  entries += entriesOf(facade.getComponentsToDelete(u"p", u"there"));
  entries += entriesOf(facade.getComponentsToExtract(u"p", u"there"));
  entries += entriesOf(facade.getUpdateSizeForComponentsToExtract());
  for (const auto& [key, files] : facade.getComponentsWithFilesToDelete()) {
    entries += 1 + files.first.size();
  }
}

// Reads a table of products and looks each of them up by name, base code and number.
[[gnu::noinline]] void measuredCatalogue(const std::u16string& path,
                                         const std::vector<std::u16string>& names,
                                         std::size_t& entries) {
  const ProductDataProvider catalogue(path);
  for (const std::u16string& name : names) {
    const bool known = catalogue.getProductBaseCode(name) == catalogue.getProductName(name) &&
                       catalogue.findControllingProduct(name) != nullptr;
    entries += known ? 1 : 0;
  }
}

[[gnu::noinline]] void measuredEnd(std::unique_ptr<Parser>& parser,
                                   std::shared_ptr<UpdateMetaData>& facade) {
  parser.reset();
  facade.reset();
}

}  // extern "C"

namespace {

Work load(std::string text) {
  Work work;
  auto parser = std::make_unique<Parser>(std::move(text));
  std::shared_ptr<UpdateMetaData> facade;
  measuredLoad(*parser, facade);
  work.elements = countElements(*parser->lastHandler.lock());
  measuredQuestions(*facade, work.entries);
  measuredEnd(parser, facade);
  return work;
}

void print(std::size_t bytes, const Work& work, const bench::peers::Probe& probe) {
  std::cout << bytes << ' ' << work.elements << ' ' << work.entries << ' '
            << static_cast<std::int64_t>(probe.findings().task.cpuSeconds * 1e9) << ' '
            << probe.findings().peakBytes + static_cast<std::int64_t>(bytes) << '\n';
}

// Calls `action` with the path of a file containing the text, and removes the file afterwards.
template <class Action>
void withFile(const std::string& text, const Action& action) {
  const auto path = std::filesystem::temp_directory_path() /
                    ("bench-growth-" + std::to_string(::getpid()) + ".tsv");
  std::ofstream(path, std::ios_base::binary) << text;
  action(path.u16string());
  std::filesystem::remove(path);
}

// The second field of each line after the first.
std::vector<std::u16string> namesOf(const std::string& table) {
  std::vector<std::u16string> names;
  std::istringstream lines(table);
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    const std::size_t begin = line.find('\t') + 1;
    names.push_back(fl::i18n::to_ustring(line.substr(begin, line.find('\t', begin) - begin)));
  }
  return names;
}

void run(const Family& family, std::size_t size) {
  std::string text = family.make(size);
  const std::size_t bytes = text.size();
  Work work;
  bench::peers::Probe probe;
  if (family.kind == FamilyKind::catalogue) {
    const std::vector<std::u16string> names = namesOf(text);
    withFile(text, [&](const std::u16string& path) {
      probe.task([&] { measuredCatalogue(path, names, work.entries); });
    });
    print(bytes, work, probe);
    return;
  }
  probe.task([&] {
    if (family.kind == FamilyKind::document) {
      work = load(std::move(text));
    } else {
      measuredRead(text, family.hasComments);
    }
  });
  print(bytes, work, probe);
}

int fail() {
  std::cerr << "Usage: bench-growth list | run FAMILY SIZE\n";
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  const std::vector<Family> families = bench::generate::allFamilies();
  if (command == "list" && argc == 2) {
    for (const Family& family : families) {
      std::cout << family.name << ' ' << family.sizeToStart << ' ' << family.megabyte << '\n';
    }
    return 0;
  }
  if (command == "run" && argc == 4) {
    const std::size_t size = std::strtoull(argv[3], nullptr, 10);
    for (const Family& family : families) {
      if (family.name == argv[2] && size != 0) {
        run(family, size);
        return 0;
      }
    }
  }
  return fail();
}
