#include "lint/ProductDataChecks.h"

#include <algorithm>
#include <map>
#include <new>
#include <string_view>
#include <utility>
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

void checkProductData(SourceDocument& document, std::size_t products,
                      const std::u16string& productData, FindingList& findings) {
  UpdateMetaDataHandler handler;
  if (!open(handler, productData, findings)) {
    return;
  }
  const SourceTree& tree = document.tree();
  // In the order in which the library takes products into the model.
  std::vector<std::pair<std::string, std::size_t>> inOrder;
  document.forEachMember(products,
                         [&](std::size_t key) { inOrder.emplace_back(tree.decoded(key), key); });
  std::sort(inOrder.begin(), inOrder.end());
  std::map<std::u16string, std::size_t> firstByCode;
  for (const auto& [bytes, key] : inOrder) {
    const std::string_view product = document.nameOf(key);
    const std::u16string code = handler.getProductBaseCode(toUtf16(product), productData);
    if (code.empty()) {
      findings.add(Rule::kUnknownProduct, tree, key,
                   {"the product data do not know the product " + quote(product),
                    "correct the name, or add the product to the product data: without a base "
                    "code it has the empty one",
                    describeProduct(product)});
      continue;
    }
    const auto [first, isNew] = firstByCode.try_emplace(code, key);
    if (!isNew) {
      findings.add(Rule::kSharedBaseCode, tree, key,
                   {"the base code " + quote(toUtf8(code)) + " is that of the product " +
                        quote(document.nameOf(first->second)) +
                        " as well; answers by base code leave this product out",
                    "give each product a base code of its own",
                    describeProduct(product),
                    {{tree[first->second].begin, "the product that is answered stands here"}}});
    }
  }
}

}  // namespace update_metadata_tool
