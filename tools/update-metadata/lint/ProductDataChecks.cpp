#include "lint/ProductDataChecks.h"

#include <map>
#include <new>
#include <string_view>
#include <vector>

#include "Text.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "lint/Words.h"

namespace update_metadata_tool {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;

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

}  // namespace

void checkProductData(SourceDocument& document, const std::vector<ProductWork>& products,
                      const std::u16string& productData, FindingList& findings) {
  UpdateMetaDataHandler handler;
  if (!open(handler, productData, findings)) {
    return;
  }
  const SourceTree& tree = document.tree();
  // The first product of each base code that an answer has packages of.
  std::map<std::u16string, std::size_t> firstToDelete;
  std::map<std::u16string, std::size_t> firstToExtract;
  for (const ProductWork& work : products) {
    const std::string_view product = document.nameOf(work.key);
    const std::u16string code = handler.getProductBaseCode(toUtf16(product), productData);
    if (code.empty()) {
      findings.add(Rule::kUnknownProduct, tree, work.key,
                   {"the product data do not know the product " + quote(product),
                    "correct the name, or add the product to the product data: without a base "
                    "code it has the empty one",
                    describeProduct(product)});
      continue;
    }
    const auto report = [&](std::size_t first, const char* what) {
      findings.add(Rule::kSharedBaseCode, tree, work.key,
                   {"the base code " + quote(toUtf8(code)) + " is that of the product " +
                        quote(document.nameOf(first)) + " as well; the packages to " + what +
                        " by base code are those of that one alone",
                    "give each product a base code of its own",
                    describeProduct(product),
                    {{tree[first].begin, "the product that is answered stands here"}}});
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

}  // namespace update_metadata_tool
