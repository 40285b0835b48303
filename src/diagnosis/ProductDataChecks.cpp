#include "diagnosis/ProductDataChecks.h"

#include <map>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "diagnosis/ProductTable.h"
#include "diagnosis/Resembling.h"
#include "diagnosis/Text.h"
#include "diagnosis/Words.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

// Opens the product data. Reports an error in them and returns false if there is one.
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
                    "correct the product data; the names of products were not checked"});
    return false;
  }
}

/// Reports products that are not in the product data.
class UnknownProducts {
 public:
  UnknownProducts(const SourceDocument& document, UpdateMetaDataHandler& handler,
                  const std::u16string& productData, FindingList& findings)
      : document_(document), handler_(handler), productData_(productData), findings_(findings) {}

  void report(std::size_t key) {
    const std::string_view product = document_.nameOf(key);
    std::string message =
        "product " + quote(product) + " is not in the product data, so its base code is empty";
    std::string advice = "correct the name, or add the product to the product data";
    const std::u16string meant = handler_.getProductName(toUtf16(product), productData_);
    if (!meant.empty()) {
      message += "; " + quote(product) + " is the base code of " + quote(toUtf8(meant));
      advice = "write the name of the product, " + quote(toUtf8(meant));
    } else if (const std::optional<std::string_view> nearest = findNearest(product)) {
      advice = "write " + quote(*nearest) +
               " if that is what you mean; otherwise add the product to the product data";
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
  // The first product of each base code that has packages in an answer.
  std::map<std::u16string, std::size_t> firstToDelete;
  std::map<std::u16string, std::size_t> firstToExtract;
  for (const ProductWork& work : products) {
    const std::string_view product = document.nameOf(work.key);
    const std::u16string code = handler.getProductBaseCode(toUtf16(product), productData);
    if (code.empty()) {
      unknown.report(work.key);
      continue;
    }
    const auto report = [&](std::size_t first, const char* what) {
      findings.add(
          Rule::kSharedBaseCode, tree, work.key,
          {"this product has the same base code, " + quote(toUtf8(code)) + ", as product " +
               quote(document.nameOf(first)) +
               "; answers by base code contain only the packages to " + what + " of that product",
           "give each product its own base code",
           describeProduct(product),
           {{tree[first].begin, "the product that is used"}}});
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

}  // namespace install::update_metadata_parser::diagnosis
