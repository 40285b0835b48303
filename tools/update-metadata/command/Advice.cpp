#include "command/Advice.h"

#include <cstddef>
#include <ios>
#include <new>
#include <ostream>
#include <set>
#include <string_view>

#include "diagnosis/source/SourceTree.h"
#include "input/DocumentText.h"
#include "output/Text.h"

namespace update_metadata_tool::command {
namespace {

using output::toVisible;
namespace source = install::update_metadata_parser::diagnosis::source;
using source::SourceTree;

struct Advice {
  std::string_view beginning;  ///< how the library's text begins
  const char* whatToDo;
  bool isForLint;  ///< whether the document is at fault, so that lint shows where
};

constexpr const char* kOutOfMemory = "there is not enough memory for it";

constexpr const char* kRaiseLimit =
    "raise --limit-bytes or --limit-packages if you trust where it comes from";

// What the library throws for a missing section.
constexpr std::string_view kMissingSection = "map::at";

constexpr Advice kAdvice[] = {
    {"standard input cannot be read",
     "name a file, redirect one with '< update.json', or pipe in another command's output", false},
    {"Update MetaData Json file does not exist ", "check the path", false},
    {"Error opening Update MetaData Json File",
     "it exists but cannot be read as a file: check its type and permissions", false},
    {"Update MetaData Json file has more than ", kRaiseLimit, false},
    {"Update MetaData Json file names more than ", kRaiseLimit, false},
    {"Update MetaData Json file lists more than ", kRaiseLimit, false},
    {"Error while parsing ",
     "its text is not one JSON object; nothing may come before or after the object, not even a "
     "byte-order mark or a final line feed",
     true},
    {"Invalid data provided for '",
     "correct the document: that member is missing somewhere or has a value of the wrong kind",
     true},
    {"invalid conversion: ",
     "correct the document: a value, possibly a missing one, has the first kind but must have the "
     "second",
     true},
    {kMissingSection,
     "add whichever of \"metadata\", \"components\", \"products\" and "
     "\"componentsWithFilesDeleted\" is missing at the top of the document",
     true},
};

bool isOutOfMemory(const std::exception& failure) {
  return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr;
}

std::string adviseOnQuerying(const std::exception& failure,
                             const std::optional<std::u16string>& productData) {
  if (isOutOfMemory(failure)) {
    return kOutOfMemory;
  }
  return productData ? "check the product data at '" + toVisible(*productData) + "'"
                     : "see the reason above";
}

void report(const std::exception& failure, const std::u16string& file, const std::string& whatToDo,
            std::ostream& err) {
  err << toVisible(failure.what()) << "\nupdate-metadata: '" << toVisible(file) << "' " << whatToDo
      << '\n';
}

// The first missing section, in the order in which the library reads them; null if none is missing.
const char* findMissingSection(const SourceTree& tree) {
  std::set<std::string> names;
  if (tree.isWhole() && tree[SourceTree::kRoot].kind == source::SourceKind::kObject) {
    const std::size_t end = tree[SourceTree::kRoot].next;
    for (std::size_t key = SourceTree::kRoot + 1; key < end; key = tree[key + 1].next) {
      names.insert(tree.decoded(key));
    }
  }
  for (const char* section : {"metadata", "components", "products", "componentsWithFilesDeleted"}) {
    if (names.count(section) == 0) {
      return section;
    }
  }
  return nullptr;
}

// The same for a file, which may have changed or disappeared since. Standard input cannot be read
// again.
const char* findMissingSection(const std::u16string& file) {
  const std::string name = output::toUtf8(file);
  if (name == input::kStandardInput) {
    return nullptr;
  }
  try {
    const std::string text = input::readDocument(name);
    return findMissingSection(SourceTree(text));
  } catch (const std::exception&) {
    return nullptr;
  }
}

std::string adviseOn(const Advice& advice, const std::u16string& file, const SourceTree* tree) {
  if (!advice.isForLint) {
    return advice.whatToDo;
  }
  std::string whatToDo = advice.whatToDo;
  if (advice.beginning == kMissingSection) {
    const char* const section =
        tree != nullptr ? findMissingSection(*tree) : findMissingSection(file);
    if (section != nullptr) {
      whatToDo = std::string("add the section \"") + section + "\" at the top of the document";
    }
  }
  return whatToDo + "; " + pointToLint(file, "where");
}

}  // namespace

std::string pointToLint(const std::u16string& file, const char* what) {
  return "'update-metadata lint " + toVisible(file) + "' shows " + what;
}

std::string adviseOnLoading(const std::exception& failure, const std::u16string& file,
                            const SourceTree* tree) {
  if (isOutOfMemory(failure)) {
    return kOutOfMemory;
  }
  const std::string_view text = failure.what();
  for (const Advice& advice : kAdvice) {
    if (output::startsWith(text, advice.beginning)) {
      return adviseOn(advice, file, tree);
    }
  }
  if (dynamic_cast<const std::ios_base::failure*>(&failure) != nullptr) {
    return "it could be opened but not read completely: check the device it is on";
  }
  return "check that it is a complete update metadata document; " + pointToLint(file, "more");
}

void reportUnloaded(const std::exception& failure, const std::u16string& file, std::ostream& err) {
  report(failure, file, "could not be loaded; " + adviseOnLoading(failure, file), err);
}

bool loadAndQuery(const std::u16string& file, const std::optional<std::u16string>& productData,
                  const std::function<void()>& load, const std::function<void()>& query,
                  std::ostream& err, terminal::ProgressLine& progress) {
  bool isLoaded = false;
  try {
    load();
    isLoaded = true;
    query();
    return true;
  } catch (const std::exception& failure) {
    progress.clear();
    if (isLoaded) {
      report(failure, file,
             "was loaded but could not be queried; " + adviseOnQuerying(failure, productData), err);
    } else {
      reportUnloaded(failure, file, err);
    }
    return false;
  }
}

}  // namespace update_metadata_tool::command
