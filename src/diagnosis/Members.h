#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "diagnosis/FindingList.h"
#include "diagnosis/Rule.h"
#include "diagnosis/SourceDocument.h"

namespace install::update_metadata_parser::diagnosis {

/// A member that the library reads.
struct ListedMember {
  std::string_view name;    ///< the key
  const char* meaning;      ///< for advice: "the size of the package in bytes"
  source::SourceKind kind;  ///< what the value must be

  Rule ifMissing = Rule::kMissingMember;  ///< always an error, unless the member is not read
  Rule ifNull = Rule::kNullValue;         ///< an error, unless null is read as empty
  bool isRead = true;                     ///< if false, allowed but ignored
};

/// Describes a value in words. Called only for a finding.
using DescribeItem = std::function<std::string()>;

/// Reports a value that is not of the required kind; returns whether it is. The message calls the
/// value by `name`: "'size'", "the component".
bool checkKind(const SourceDocument& document, std::size_t value, source::SourceKind kind,
               const std::string& name, const std::string& meaning, const DescribeItem& item,
               FindingList& findings);

/// Reports members of an object that are missing or of the wrong kind, and those that the library
/// does not read. Linear in its members.
///
/// If the text ends inside the object, no member is reported as missing. `values` receives the
/// values of the listed members that are of the right kind.
void checkMembers(const SourceDocument& document, std::size_t object, const ListedMember* listed,
                  std::size_t count, std::optional<std::size_t>* values, const DescribeItem& item,
                  FindingList& findings);

/// The same for an array of listed members; returns the values.
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

}  // namespace install::update_metadata_parser::diagnosis
