#include <stdexcept>

#include "install/update_metadata_parser/Limits.h"

namespace install::update_metadata_parser {
namespace {

// Adds to a count, or throws and leaves it as it was.
void count(std::uint64_t& counted, std::uint64_t more, std::uint64_t limit, const char* before,
           const char* after) {
  if (more > limit - counted) {
    throw std::runtime_error(before + std::to_string(limit) + after);
  }
  counted += more;
}

// The sum cannot wrap: a vector of names cannot be long enough.
template <class Table>
std::uint64_t packagesOf(const std::vector<std::u16string>& components, const Table& table) {
  std::uint64_t sum = 0;
  for (const std::u16string& component : components) {
    const auto found = table.find(component);
    sum += found == table.end() ? 0 : found->second.size();
  }
  return sum;
}

}  // namespace

LimitedHandler::LimitedHandler(const Limits& limits) : limits_(limits) {}

LimitedHandler::~LimitedHandler() = default;

void LimitedHandler::setProductDeltaData(const std::u16string& name,
                                         const std::vector<std::u16string>& compsToDelete,
                                         const std::vector<std::u16string>& compsToExtract,
                                         const PkgsToDelete& pkgsToDelete,
                                         const PkgsToExtract& pkgsToExtract) const {
  count(packages_,
        packagesOf(compsToDelete, pkgsToDelete) + packagesOf(compsToExtract, pkgsToExtract),
        limits_.packages, "Update MetaData Json file names more than ", " packages");
  UpdateMetaDataHandler::setProductDeltaData(name, compsToDelete, compsToExtract, pkgsToDelete,
                                             pkgsToExtract);
}

datamodels::product_update::PkgDataWithFilesToDelete LimitedHandler::createPkgDataWithFilesToDelete(
    const std::u16string& name, std::int64_t size, const std::vector<std::u16string>& files) const {
  count(files_, files.size(), limits_.files, "Update MetaData Json file lists more than ",
        " files to delete");
  return UpdateMetaDataHandler::createPkgDataWithFilesToDelete(name, size, files);
}

}  // namespace install::update_metadata_parser
