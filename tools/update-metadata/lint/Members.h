#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "lint/FindingList.h"
#include "lint/Rule.h"
#include "lint/SourceDocument.h"

namespace update_metadata_tool::lint {

/// A member that the library reads.
struct ListedMember {
  std::string_view name;
  const char* meaning;  ///< for advice: "the size of the package in bytes"
  source::SourceKind kind;
  Rule ifMissing = Rule::kMissingMember;
  Rule ifNull = Rule::kNullValue;  ///< an error, unless a null is read as nothing
  bool isRead = true;              ///< else it may be there, and nobody looks at it
};

/// Tells what a value is, in words. Asked only when something is found.
using DescribeItem = std::function<std::string()>;

/// Reports that `value` is not of the kind that it must be; true if it is.
///
/// \param name  how the message calls the value: "'size'", "the component"
bool checkKind(const SourceDocument& document, std::size_t value, source::SourceKind kind,
               const std::string& name, const std::string& meaning, const DescribeItem& item,
               FindingList& findings);

/// Reports members of an object that are missing or of the wrong kind, and those that the library
/// does not read. Linear in its members.
///
/// Members that the text breaks off before are not missing.
///
/// \param values  takes the values of the listed members, those that are there and right
void checkMembers(const SourceDocument& document, std::size_t object, const ListedMember* listed,
                  std::size_t count, std::optional<std::size_t>* values, const DescribeItem& item,
                  FindingList& findings);

template <std::size_t N>
std::array<std::optional<std::size_t>, N> checkMembers(const SourceDocument& document,
                                                       std::size_t object,
                                                       const ListedMember (&listed)[N],
                                                       const DescribeItem& item,
                                                       FindingList& findings) {
  std::array<std::optional<std::size_t>, N> values;
  checkMembers(document, object, listed, N, values.data(), item, findings);
  return values;
}

}  // namespace update_metadata_tool::lint
