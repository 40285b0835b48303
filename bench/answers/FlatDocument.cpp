#include "answers/FlatDocument.h"

#include <algorithm>

namespace bench::answers {
namespace {

template <class Iterator>
Iterator sortedByName(Iterator first, Iterator last) {
  const auto precedes = [](const auto& left, const auto& right) { return left.name < right.name; };
  if (!std::is_sorted(first, last, precedes)) {
    std::stable_sort(first, last, precedes);
  }
  return std::unique(first, last,
                     [](const auto& left, const auto& right) { return left.name == right.name; });
}

template <class Element>
void sortByName(std::vector<Element>& list) {
  list.erase(sortedByName(list.begin(), list.end()), list.end());
}

template <class Element>
void sortByName(std::vector<Element>& list, Range& range) {
  const auto begin = list.begin();
  range.last =
      static_cast<std::uint32_t>(sortedByName(begin + range.first, begin + range.last) - begin);
}

}  // namespace

void FlatDocument::sortByName() {
  for (Component& component : components) {
    answers::sortByName(packages, component.toDelete);
    answers::sortByName(packages, component.toExtract);
  }
  for (ComponentWithFiles& component : componentsWithFiles) {
    answers::sortByName(packagesWithFiles, component.packages);
  }
  answers::sortByName(components);
  answers::sortByName(products);
  answers::sortByName(componentsWithFiles);
}

std::unordered_map<std::string_view, std::uint32_t> FlatDocument::componentsByName() const {
  std::unordered_map<std::string_view, std::uint32_t> places;
  places.reserve(components.size());
  for (const Component& component : components) {
    places.emplace(component.name, static_cast<std::uint32_t>(places.size()));
  }
  return places;
}

}  // namespace bench::answers
