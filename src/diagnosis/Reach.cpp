#include "diagnosis/Reach.h"

#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {

void reportUnused(const SourceDocument& document, std::size_t component, FindingList& findings) {
  findings.add(
      Rule::kUnusedComponent, document.tree(), component,
      {"no product uses this component, so its packages are ignored",
       "list it under a product, or remove it", describeComponent(document.nameOf(component))});
}

void reportUnreachable(const SourceDocument& document, std::size_t component, std::size_t packages,
                       const std::string& side, FindingList& findings) {
  const std::size_t key = packages - 1;
  findings.add(
      Rule::kUnreachablePackages, document.tree(), key,
      {"no product " + side + "s this component, so its packages to " + side + " are ignored",
       "add the component to '" + side + "' of a product, or remove these packages",
       describeComponent(document.nameOf(component))});
}

void reportNothingToDelete(const SourceDocument& document, std::size_t element,
                           std::string_view product, FindingList& findings) {
  findings.add(
      Rule::kNothingToDelete, document.tree(), element,
      {"component " + quote(document.nameOf(element)) +
           " has packages to extract, but none to delete",
       "remove it from this list, or describe its packages to delete", describeProduct(product)});
}

void reportSimilar(const SourceDocument& document, std::size_t component, std::string_view similar,
                   FindingList& findings) {
  const std::string_view name = document.nameOf(component);
  findings.add(Rule::kSimilarComponent, document.tree(), component,
               {"component " + quote(name) + " is not described in \"components\", but " +
                    quote(similar) + " is",
                "write " + quote(similar) + " if that is what you mean", describeComponent(name)});
}

}  // namespace install::update_metadata_parser::diagnosis
