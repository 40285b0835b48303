#include <limits>
#include <stdexcept>
#include <string_view>

#include "install/update_metadata_parser/Limits.h"

namespace install::update_metadata_parser {
namespace {

using datamodels::product_update::PkgDataWithFilesToDelete;

// A limit that nothing exceeds, so that nothing has to be counted.
constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

// Packages, and the units of their keys. Neither sum can wrap: the names would not fit into memory,
// and no table has enough packages.
struct Sums {
  std::uint64_t packages = 0;
  std::uint64_t keyUnits = 0;

  void add(std::u16string_view component, std::u16string_view package) {
    ++packages;
    keyUnits += component.size() + 1 + package.size();
  }
};

std::u16string_view nameOf(const std::pair<const std::u16string, std::int64_t>& pkg) {
  return pkg.first;
}

std::u16string_view nameOf(const UpdatePkgData& pkg) {
  return pkg.name;
}

template <class Table>
void addNamed(Sums& sums, const std::vector<std::u16string>& components, const Table& table) {
  for (const std::u16string& component : components) {
    if (const auto found = table.find(component); found != table.end()) {
      for (const auto& pkg : found->second) {
        sums.add(component, nameOf(pkg));
      }
    }
  }
}

void check(std::uint64_t counted, std::uint64_t more, std::uint64_t limit, const char* before,
           const char* after) {
  if (more > limit - counted) {
    throw std::runtime_error(before + std::to_string(limit) + after);
  }
}

void checkKeys(std::uint64_t counted, std::uint64_t more, std::uint64_t limit) {
  check(counted, more, limit, "Update MetaData Json file has more than ", " characters in keys");
}

}  // namespace

LimitedHandler::LimitedHandler(const Limits& limits) : limits_(limits) {}

LimitedHandler::~LimitedHandler() = default;

void LimitedHandler::setProductDeltaData(const std::u16string& name,
                                         const std::vector<std::u16string>& compsToDelete,
                                         const std::vector<std::u16string>& compsToExtract,
                                         const PkgsToDelete& pkgsToDelete,
                                         const PkgsToExtract& pkgsToExtract) const {
  Sums named;
  if (limits_.packages != kUnlimited || limits_.keyUnits != kUnlimited) {
    addNamed(named, compsToDelete, pkgsToDelete);
    addNamed(named, compsToExtract, pkgsToExtract);
  }
  check(packages_, named.packages, limits_.packages, "Update MetaData Json file names more than ",
        " packages");
  checkKeys(keyUnits_, named.keyUnits, limits_.keyUnits);
  UpdateMetaDataHandler::setProductDeltaData(name, compsToDelete, compsToExtract, pkgsToDelete,
                                             pkgsToExtract);
  packages_ += named.packages;
  keyUnits_ += named.keyUnits;
}

PkgDataWithFilesToDelete LimitedHandler::createPkgDataWithFilesToDelete(
    const std::u16string& name, std::int64_t size, const std::vector<std::u16string>& files) const {
  check(files_, files.size(), limits_.files, "Update MetaData Json file lists more than ",
        " files to delete");
  PkgDataWithFilesToDelete pkg =
      UpdateMetaDataHandler::createPkgDataWithFilesToDelete(name, size, files);
  files_ += files.size();
  return pkg;
}

void LimitedHandler::setComponentDataWithFilesToDelete(
    const std::u16string& name, const std::vector<PkgDataWithFilesToDelete>& pkgs) const {
  Sums named;
  for (const PkgDataWithFilesToDelete& pkg : pkgs) {
    named.add(name, pkg ? pkg->getName() : std::u16string());
  }
  checkKeys(keyUnits_, named.keyUnits, limits_.keyUnits);
  UpdateMetaDataHandler::setComponentDataWithFilesToDelete(name, pkgs);
  keyUnits_ += named.keyUnits;
}

}  // namespace install::update_metadata_parser
