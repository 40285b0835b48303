#include "places/NamedPackages.h"

#include <algorithm>
#include <unordered_map>

#include "diagnosis/KeyCollisions.h"
#include "diagnosis/NameTable.h"
#include "diagnosis/Text.h"

namespace update_metadata_tool::places {
namespace {

namespace diagnosis = install::update_metadata_parser::diagnosis;
using diagnosis::kNever;
using diagnosis::NameTable;
using diagnosis::SourceDocument;
using diagnosis::source::SourceKind;
using diagnosis::source::SourceTree;

// Whether one text in UTF-8 comes before another by UTF-16 code units. There, characters beyond
// U+FFFF, of which UTF-8 has four bytes, come before U+E000 to U+FFFF.
bool isBeforeByUnits(std::string_view left, std::string_view right) {
  const auto [ofLeft, ofRight] =
      std::mismatch(left.begin(), left.end(), right.begin(), right.end());
  if (ofLeft == left.end() || ofRight == right.end()) {
    return ofLeft == left.end() && ofRight != right.end();
  }
  constexpr unsigned char kBeginsFourBytes = 0xF0;
  constexpr unsigned char kBeginsU_E000 = 0xEE;
  const auto byte = static_cast<unsigned char>(*ofLeft);
  const auto other = static_cast<unsigned char>(*ofRight);
  if (byte >= kBeginsU_E000 && other >= kBeginsU_E000 &&
      (byte >= kBeginsFourBytes) != (other >= kBeginsFourBytes)) {
    return byte >= kBeginsFourBytes;
  }
  return byte < other;
}

void sortAsInModel(const SourceDocument& document, Side side, std::vector<NamedPackage>& packages) {
  // They are in the order of their names, equal ones in the order of their keys' bytes.
  std::stable_sort(
      packages.begin(), packages.end(), [&](const NamedPackage& left, const NamedPackage& right) {
        return side == Side::kDelete ? isBeforeByUnits(left.name, right.name)
                                     : document.bytesOf(left.key) < document.bytesOf(right.key);
      });
}

}  // namespace

std::size_t ReadDocument::lineOf(std::size_t node) const {
  return lines.positionOf(document.tree()[node].begin).line;
}

std::vector<std::size_t> ReadDocument::writtenMembers(std::size_t object, std::string_view name,
                                                      SourceKind kind) const {
  std::vector<std::size_t> values;
  if (document.isA(SourceKind::kObject, object)) {
    document.forEachWrittenMember(object, [&](std::size_t key) {
      if (document.isA(kind, key + 1) && document.bytesOf(key) == name) {
        values.push_back(key + 1);
      }
    });
  }
  return values;
}

std::optional<std::size_t> ReadDocument::member(std::size_t object, std::string_view name,
                                                SourceKind kind) const {
  std::optional<std::size_t> value;
  if (document.isA(SourceKind::kObject, object)) {
    document.forEachMember(object, [&](std::size_t key) {
      if (document.isA(kind, key + 1) && document.bytesOf(key) == name) {
        value = key + 1;
      }
    });
  }
  return value;
}

std::optional<std::size_t> ReadDocument::section(std::string_view name) const {
  return member(SourceTree::kRoot, name, SourceKind::kObject);
}

NamedPackage ReadDocument::package(std::size_t key, Side side) const {
  const auto byteCount = [&](const char* name) {
    const std::optional<std::size_t> number = member(key + 1, name, SourceKind::kNumber);
    return number ? std::optional(document.tree().byteCount(*number)) : std::nullopt;
  };
  return {document.nameOf(key), key, lineOf(key), byteCount("size"),
          side == Side::kExtract ? byteCount("uncompressedBytes") : std::nullopt};
}

Place ReadDocument::naming(Side side, const ProductOfPlace& product, std::size_t element) const {
  Place place = placeOf(side, document.nameOf(element));
  place.product = &product;
  place.line = lineOf(element);
  place.namingLine = place.line;
  return place;
}

void ReadDocument::setPackage(const NamedPackage& package, Place& place) const {
  place.package = package.name;
  place.size = package.size;
  place.uncompressedBytes = package.uncompressedBytes;
  place.line = package.line;
  if (place.side == Side::kFiles) {
    place.files = member(package.key + 1, "files", SourceKind::kArray);
  }
}

std::optional<std::string_view> packageIn(std::string_view key, std::string_view component) {
  const bool isBeginning = key.size() > component.size() && key[component.size()] == '_' &&
                           diagnosis::startsWith(key, component);
  return isBeginning ? std::optional(key.substr(component.size() + 1)) : std::nullopt;
}

std::vector<NamedPackage> listPackages(const ReadDocument& read, std::size_t object, Side side,
                                       std::optional<std::string_view> only) {
  std::vector<NamedPackage> packages;
  const NameTable table(read.document, object);
  packages.reserve(only ? 1 : table.entries().size());
  for (const NameTable::Entry& entry : table.entries()) {
    if (only && entry.name != *only) {
      continue;
    }
    const bool isRepeated = !packages.empty() && packages.back().name == entry.name;
    packages.push_back(read.package(entry.key, side));
    packages.back().isNameRepeated = isRepeated;
  }
  sortAsInModel(read.document, side, packages);
  return packages;
}

void markEqualKeys(const ReadDocument& read, const std::vector<std::string_view>& names,
                   const std::vector<std::size_t>& objects,
                   const std::vector<std::vector<NamedPackage>*>& lists) {
  std::vector<diagnosis::KeyedComponent> components;
  components.reserve(names.size());
  for (std::size_t index = 0; index < names.size(); ++index) {
    components.push_back({names[index], objects[index]});
  }
  std::unordered_map<std::size_t, std::size_t> groups;
  for (const diagnosis::CollidingPackage& package :
       diagnosis::findKeyCollisions(read.document, components)) {
    groups.emplace(package.key, package.group);
  }
  if (groups.empty()) {
    return;
  }
  for (std::vector<NamedPackage>* const list : lists) {
    for (NamedPackage& package : *list) {
      const auto group = groups.find(package.key);
      if (group != groups.end()) {
        package.group = group->second;
      }
    }
  }
}

DescribedComponents::DescribedComponents(const ReadDocument& read,
                                         std::optional<std::string_view> onlyKey) {
  const std::optional<std::size_t> section = read.section("components");
  if (!section) {
    return;
  }
  // Of components with one name, the first that has packages for a side is used for that side.
  const NameTable table(read.document, *section);
  for (const NameTable::Entry& entry : table.entries()) {
    if (components_.empty() || components_.back().name != entry.name) {
      components_.push_back({entry.name, {kNever, kNever}, {}});
    }
    DescribedComponent& component = components_.back();
    const std::optional<std::string_view> only =
        onlyKey ? packageIn(*onlyKey, entry.name) : std::nullopt;
    for (const Side side : kSidesOfProducts) {
      const auto number = static_cast<std::size_t>(side);
      const auto object = read.member(entry.key + 1, nameOf(side), SourceKind::kObject);
      const bool hasPackages = object && read.document.tree()[*object].next != *object + 1;
      if (hasPackages && component.objects[number] == kNever) {
        component.objects[number] = *object;
        if (!onlyKey || only) {
          component.packages[number] = listPackages(read, *object, side, only);
        }
      }
    }
  }
  for (const std::size_t number : {std::size_t{0}, std::size_t{1}}) {
    std::vector<std::string_view> names;
    std::vector<std::size_t> objects;
    std::vector<std::vector<NamedPackage>*> lists;
    for (DescribedComponent& component : components_) {
      names.push_back(component.name);
      objects.push_back(component.objects[number]);
      lists.push_back(&component.packages[number]);
    }
    markEqualKeys(read, names, objects, lists);
  }
}

bool DescribedComponents::hasPackages(std::size_t component, Side side) const {
  return components_[component].objects[static_cast<std::size_t>(side)] != kNever;
}

std::size_t DescribedComponents::find(std::string_view name) const {
  const auto found =
      std::lower_bound(components_.begin(), components_.end(), name,
                       [](const DescribedComponent& component, std::string_view wanted) {
                         return component.name < wanted;
                       });
  return found != components_.end() && found->name == name
             ? static_cast<std::size_t>(found - components_.begin())
             : kNever;
}

}  // namespace update_metadata_tool::places
