#include "lint/ProductDataChecks.h"

#include <filesystem>
#include <fstream>
#include <map>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "input/ProductData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "lint/Resembling.h"
#include "lint/Words.h"
#include "output/Text.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;
using output::toUtf8;

// Opens the product data. False if they are faulty, which is reported.
bool open(UpdateMetaDataHandler& handler, const std::u16string& productData,
          FindingList& findings) {
  try {
    handler.initializeProductDataProvider(productData);
    return true;
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception& fault) {
    findings.addAt(Rule::kProductData, 0, 1,
                   {std::string("the product data cannot be read: ") + fault.what(),
                    "correct the product data; the products have not been looked up"});
    return false;
  }
}

// The names of the products in the table, its second column. None if the product data are kept in
// another form.
std::vector<std::string> readProductNames(const std::u16string& productData) {
  std::filesystem::path path(toUtf8(productData));
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    path /= input::kProductTable;
  }
  std::vector<std::string> names;
  std::ifstream table(path, std::ios::binary);
  std::string line;
  std::getline(table, line);  // the header
  while (std::getline(table, line)) {
    const std::size_t begin = line.find('\t') + 1;
    const std::size_t end = line.find('\t', begin);
    if (begin != 0 && end != std::string::npos) {
      names.push_back(line.substr(begin, end - begin));
    }
  }
  return names;
}

/// Reports products that the product data do not know.
class UnknownProducts {
 public:
  UnknownProducts(const SourceDocument& document, UpdateMetaDataHandler& handler,
                  const std::u16string& productData, FindingList& findings)
      : document_(document), handler_(handler), productData_(productData), findings_(findings) {}

  void report(std::size_t key) {
    const std::string_view product = document_.nameOf(key);
    std::string message = "the product data do not know the product " + quote(product);
    std::string advice =
        "correct the name, or add the product to the product data: without a base code it has the "
        "empty one";
    const std::u16string meant = handler_.getProductName(output::toUtf16(product), productData_);
    if (!meant.empty()) {
      message += "; that is the base code of " + quote(toUtf8(meant));
      advice = "write the name of the product, " + quote(toUtf8(meant));
    } else if (const std::optional<std::string_view> nearest = findNearest(product)) {
      advice = "write " + quote(*nearest) + " if that is meant, else add the product to the " +
               "product data: without a base code it has the empty one";
    }
    findings_.add(Rule::kUnknownProduct, document_.tree(), key,
                  {std::move(message), std::move(advice), describeProduct(product)});
  }

 private:
  std::optional<std::string_view> findNearest(std::string_view product) {
    if (!isTableRead_) {
      isTableRead_ = true;
      names_ = readProductNames(productData_);
      nearest_ = NearestNames({names_.begin(), names_.end()});
    }
    return nearest_.find(product, mostEdits(product));
  }

  const SourceDocument& document_;
  UpdateMetaDataHandler& handler_;
  const std::u16string& productData_;
  FindingList& findings_;
  bool isTableRead_ = false;
  std::vector<std::string> names_;
  NearestNames nearest_;
};

}  // namespace

void checkProductData(SourceDocument& document, const std::vector<ProductWork>& products,
                      const std::u16string& productData, FindingList& findings) {
  UpdateMetaDataHandler handler;
  if (!open(handler, productData, findings)) {
    return;
  }
  const source::SourceTree& tree = document.tree();
  UnknownProducts unknown(document, handler, productData, findings);
  // The first product of each base code that an answer has packages of.
  std::map<std::u16string, std::size_t> firstToDelete;
  std::map<std::u16string, std::size_t> firstToExtract;
  for (const ProductWork& work : products) {
    const std::string_view product = document.nameOf(work.key);
    const std::u16string code = handler.getProductBaseCode(output::toUtf16(product), productData);
    if (code.empty()) {
      unknown.report(work.key);
      continue;
    }
    const auto report = [&](std::size_t first, const char* what) {
      findings.add(Rule::kSharedBaseCode, tree, work.key,
                   {"the base code " + quote(toUtf8(code)) + " is that of the product " +
                        quote(document.nameOf(first)) + " as well; the packages to " + what +
                        " by base code are those of that one alone",
                    "give each product a base code of its own",
                    describeProduct(product),
                    {{tree[first].begin, "the product that is answered"}}});
    };
    if (work.hasPackagesToDelete) {
      const auto [first, isNew] = firstToDelete.try_emplace(code, work.key);
      if (!isNew) {
        report(first->second, "delete");
      }
    }
    if (work.hasPackagesToExtract) {
      const auto [first, isNew] = firstToExtract.try_emplace(code, work.key);
      if (!isNew) {
        report(first->second, "extract");
      }
    }
  }
}

}  // namespace update_metadata_tool::lint
