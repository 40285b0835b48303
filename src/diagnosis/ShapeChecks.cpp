#include "diagnosis/ShapeChecks.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "diagnosis/Members.h"
#include "diagnosis/Names.h"
#include "diagnosis/Numbers.h"
#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceKind;
using source::SourceTree;

constexpr const char* kPackageSize = "the size of the package in bytes";
constexpr const char* kUnused = "the library requires it but does not use it";

const ListedMember kSections[] = {
    {"metadata", "the architecture and the two releases", SourceKind::kObject,
     Rule::kMissingSection},
    {"components", "the packages of each component", SourceKind::kObject, Rule::kMissingSection,
     Rule::kNullSection},
    {"products", "the components of each product", SourceKind::kObject, Rule::kMissingSection,
     Rule::kNullSection},
    {"componentsWithFilesDeleted", "the packages that have files to delete, by component",
     SourceKind::kObject, Rule::kMissingSection, Rule::kNullSection},
    {"$schema", "the schema for editors", SourceKind::kString, Rule::kUnlistedMember,
     Rule::kUnlistedMember, false},
};

const ListedMember kMetadata[] = {
    {"arch", "the architecture that the update is for", SourceKind::kString},
    {"target", "the release that the update leads to", SourceKind::kObject, Rule::kAbsentRelease,
     Rule::kNullRelease},
    {"base", "the release that the update starts from", SourceKind::kObject, Rule::kAbsentRelease,
     Rule::kNullRelease},
};

constexpr std::size_t kVersion = 2;
constexpr std::size_t kFamily = 4;
constexpr std::size_t kUpdate = 7;
const ListedMember kRelease[] = {
    {"zelvan_version", kUnused, SourceKind::kString},
    {"date", kUnused, SourceKind::kString},
    {"version", "the version of the release", SourceKind::kString},
    {"prerelease", kUnused, SourceKind::kBoolean},
    {"release", "the family of the release", SourceKind::kString},
    {"checksum", kUnused, SourceKind::kString},
    {"description", kUnused, SourceKind::kString},
    {"update", "the update level", SourceKind::kNumber},
};

const ListedMember kComponent[] = {
    {"delete", "the packages to delete, by name", SourceKind::kObject},
    {"extract", "the packages to extract, by name", SourceKind::kObject},
};

const ListedMember kPackageToDelete[] = {{"size", kPackageSize, SourceKind::kNumber}};

const ListedMember kPackageToExtract[] = {
    {"size", kPackageSize, SourceKind::kNumber},
    {"uncompressedBytes", "the size of the unpacked package in bytes", SourceKind::kNumber},
};

const ListedMember kPackageWithFiles[] = {
    {"size", kPackageSize, SourceKind::kNumber},
    {"files", "the paths of the files to delete", SourceKind::kArray},
};

const ListedMember kProduct[] = {
    {"delete", "the names of the components to delete", SourceKind::kArray},
    {"extract", "the names of the components to extract", SourceKind::kArray},
};

std::string nothing() {
  return "";
}

// A string that is part of the name of a release.
void checkReleaseText(SourceDocument& document, const std::optional<std::size_t>& value,
                      const char* what, const DescribeItem& item, FindingList& findings) {
  if (value) {
    checkName(document, *value, what, item, findings);
  }
}

void checkRelease(SourceDocument& document, std::size_t release, bool isTarget,
                  FindingList& findings) {
  const DescribeItem item = [isTarget] {
    return std::string(isTarget ? "target release" : "base release");
  };
  const auto values = checkMembers(document, release, kRelease, item, findings);
  checkReleaseText(document, values[kVersion], "version of the release", item, findings);
  checkReleaseText(document, values[kFamily], "family of the release", item, findings);
  if (isTarget && values[kUpdate]) {
    checkUpdateLevel(document, *values[kUpdate], findings);
  }
}

void checkMetadata(SourceDocument& document, std::size_t metadata, FindingList& findings) {
  const auto [arch, target, base] = checkMembers(document, metadata, kMetadata, nothing, findings);
  if (arch) {
    checkName(document, *arch, "architecture", nothing, findings);
  }
  if (target) {
    checkRelease(document, *target, true, findings);
  }
  if (base) {
    checkRelease(document, *base, false, findings);
  }
}

void checkPackageToDelete(SourceDocument& document, std::size_t package, const DescribeItem& item,
                          FindingList& findings) {
  const auto [size] = checkMembers(document, package, kPackageToDelete, item, findings);
  if (size) {
    checkSize(document, *size, "size", item, findings);
  }
}

void checkPackageToExtract(SourceDocument& document, std::size_t package, const DescribeItem& item,
                           FindingList& findings) {
  const auto [size, unpacked] = checkMembers(document, package, kPackageToExtract, item, findings);
  std::optional<std::int64_t> bytes;
  std::optional<std::int64_t> unpackedBytes;
  if (size) {
    bytes = checkSize(document, *size, "size", item, findings);
  }
  if (unpacked) {
    unpackedBytes = checkSize(document, *unpacked, "uncompressedBytes", item, findings);
  }
  if (bytes && unpackedBytes) {
    checkSizePair(document, {*size, *bytes}, {*unpacked, *unpackedBytes}, item, findings);
  }
}

void checkPackageWithFiles(SourceDocument& document, std::size_t package, const DescribeItem& item,
                           FindingList& findings) {
  const auto [size, files] = checkMembers(document, package, kPackageWithFiles, item, findings);
  if (size) {
    checkSize(document, *size, "size", item, findings);
  }
  if (!files) {
    return;
  }
  std::size_t index = 0;
  document.forEachElement(*files, [&](std::size_t element) {
    ++index;
    if (!document.isA(SourceKind::kString, element)) {
      findings.add(Rule::kNonStringElement, document.tree(), element,
                   {"element " + std::to_string(index) + " of 'files' must be a string, not " +
                        describeKind(document.tree()[element].kind),
                    "write the path of a file", item()});
    }
  });
  checkPaths(document, *files, item, findings);
}

// Reports a member of a package that is where the package should be; returns whether it is one.
bool reportMissingPackage(const SourceDocument& document, std::size_t key, const DescribeItem& item,
                          FindingList& findings) {
  const std::string_view name = document.nameOf(key);
  const std::size_t value = key + 1;
  const SourceKind kind = document.tree()[value].kind;
  if (kind == SourceKind::kObject ||
      (name != "size" && name != "uncompressedBytes" && name != "files")) {
    return false;
  }
  findings.add(
      kind == SourceKind::kNull ? Rule::kNullValue : Rule::kWrongKind, document.tree(), value,
      {"package " + quote(name) + " must be an object, not " + describeKind(kind) +
           "; the name of a package seems to be missing around it",
       "add the name of the package: {\"NAME\": {\"" + std::string(name) + "\": ...}}", item()});
  return true;
}

// Checks each package of an object with `check`.
template <class Check>
void checkPackages(SourceDocument& document, std::size_t packages, std::string_view component,
                   const char* what, Check check, FindingList& findings) {
  checkNames(document, packages, "package", findings);
  document.forEachMember(packages, [&](std::size_t key) {
    const DescribeItem item = [&document, key, what, component] {
      return describePackage(document.nameOf(key), what, component);
    };
    if (reportMissingPackage(document, key, item, findings)) {
      return;
    }
    if (checkKind(document, key + 1, SourceKind::kObject, "the package", "its members by name",
                  item, findings)) {
      check(document, key + 1, item, findings);
    }
  });
}

// Reports a product's list, or the packages of a component, where the product or component should
// be; returns whether that is so.
bool reportMissingName(const SourceDocument& document, std::size_t key, const std::string& what,
                       SourceKind kind, const DescribeItem& item, FindingList& findings) {
  const SourceTree& tree = document.tree();
  const std::string_view name = document.nameOf(key);
  const std::size_t value = key + 1;
  if ((name != "delete" && name != "extract") || !document.isA(kind, value)) {
    return false;
  }
  bool isComponent = kind == SourceKind::kObject && !tree[value].isClosed;
  if (kind == SourceKind::kObject) {
    document.forEachMember(value, [&](std::size_t member) {
      const std::string_view inner = document.nameOf(member);
      isComponent = isComponent || inner == "delete" || inner == "extract";
    });
  }
  if (isComponent) {
    return false;
  }
  const bool isObject = kind == SourceKind::kObject;
  findings.add(
      isObject ? Rule::kMissingMember : Rule::kWrongKind, tree, value,
      {quote(name) + " is read as the name of a " + what + "; the name of the " + what +
           " seems to be missing around it",
       "add the name of the " + what + ": {\"NAME\": {\"" + std::string(name) + "\": ...}}",
       item()});
  return true;
}

void checkComponentNames(SourceDocument& document, std::size_t array, const char* key,
                         const DescribeItem& item, FindingList& findings) {
  std::size_t index = 0;
  document.forEachElement(array, [&](std::size_t element) {
    ++index;
    if (!document.isA(SourceKind::kString, element)) {
      findings.add(Rule::kNonStringElement, document.tree(), element,
                   {"element " + std::to_string(index) + " of '" + key +
                        "' must be a string, not " + describeKind(document.tree()[element].kind),
                    "write the name of a component", item()});
    }
  });
}

// Whether a member at the top is null.
bool isNullMember(const SourceDocument& document, std::string_view name) {
  bool isNull = false;
  std::string buffer;
  document.forEachMember(SourceTree::kRoot, [&](std::size_t key) {
    isNull = isNull || (document.isA(SourceKind::kNull, key + 1) &&
                        document.tree().decodedInto(key, buffer) == name);
  });
  return isNull;
}

}  // namespace

Sections checkTop(SourceDocument& document, FindingList& findings) {
  const SourceTree& tree = document.tree();
  if (!document.isA(SourceKind::kObject, SourceTree::kRoot)) {
    findings.add(Rule::kNotAnObject, tree, SourceTree::kRoot,
                 {std::string("the document must be an object, not ") +
                      describeKind(tree[SourceTree::kRoot].kind),
                  "put the four sections between '{' and '}'"});
    return {};
  }
  const auto [metadata, components, products, files, schema] =
      checkMembers(document, SourceTree::kRoot, kSections, nothing, findings);
  if (metadata) {
    checkMetadata(document, *metadata, findings);
  }
  return {metadata, components, products, files, isNullMember(document, "components")};
}

void checkComponents(SourceDocument& document, std::size_t components, FindingList& findings) {
  checkNames(document, components, "component", findings);
  document.forEachMember(components, [&](std::size_t key) {
    const std::string_view name = document.nameOf(key);
    const DescribeItem item = [name] { return describeComponent(name); };
    if (reportMissingName(document, key, "component", SourceKind::kObject, item, findings) ||
        !checkKind(document, key + 1, SourceKind::kObject, "the component",
                   "its packages under \"delete\" and \"extract\"", item, findings)) {
      return;
    }
    const auto [toDelete, toExtract] = checkMembers(document, key + 1, kComponent, item, findings);
    if (toDelete) {
      checkPackages(document, *toDelete, name, "to delete", checkPackageToDelete, findings);
    }
    if (toExtract) {
      checkPackages(document, *toExtract, name, "to extract", checkPackageToExtract, findings);
    }
  });
}

void checkProducts(SourceDocument& document, std::size_t products, FindingList& findings) {
  checkNames(document, products, "product", findings);
  document.forEachMember(products, [&](std::size_t key) {
    const std::string_view name = document.nameOf(key);
    const DescribeItem item = [name] { return describeProduct(name); };
    if (reportMissingName(document, key, "product", SourceKind::kArray, item, findings) ||
        !checkKind(document, key + 1, SourceKind::kObject, "the product",
                   "its components under \"delete\" and \"extract\"", item, findings)) {
      return;
    }
    const auto [toDelete, toExtract] = checkMembers(document, key + 1, kProduct, item, findings);
    if (toDelete) {
      checkComponentNames(document, *toDelete, "delete", item, findings);
    }
    if (toExtract) {
      checkComponentNames(document, *toExtract, "extract", item, findings);
    }
  });
}

void checkFiles(SourceDocument& document, std::size_t components, FindingList& findings) {
  checkNames(document, components, "component", findings);
  document.forEachMember(components, [&](std::size_t key) {
    const std::string_view name = document.nameOf(key);
    const DescribeItem item = [name] { return describeComponent(name); };
    if (checkKind(document, key + 1, SourceKind::kObject, "the component",
                  "its packages with files to delete, by name", item, findings)) {
      checkPackages(document, key + 1, name, "with files to delete", checkPackageWithFiles,
                    findings);
    }
  });
}

}  // namespace install::update_metadata_parser::diagnosis
