#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "install/update_metadata_parser/Diagnosis.h"

/// What is wrong with a document, and where.
namespace install::update_metadata_parser::diagnosis {

/// What a diagnosis looks for. The number of a rule is the index of its description in allRules().
enum class Rule {
  // What keeps a document from being loaded.
  kMalformedText,
  kTextAroundValue,
  kNotAnObject,
  kTypeNameNotAString,
  kTypedPayload,
  kMissingSection,
  kMissingMember,
  kWrongKind,
  kNullValue,
  kAbsentRelease,
  kNonStringElement,
  kRefused,
  // Members and sections that are not read as they are written.
  kRepeatedKey,
  kUnlistedMember,
  kReservedName,
  kNullRelease,
  kNullSection,
  // How components, packages and products fit together.
  kUnknownComponent,
  kUnusedComponent,
  kUnreachablePackages,
  kNothingToDelete,
  kComponentNamedTwice,
  kProductWithoutWork,
  kPackageKeyCollision,
  kFileOfChangedPackage,
  kSimilarComponent,
  // Numbers.
  kUpdateLevel,
  kFractionalSize,
  kNegativeSize,
  kImpreciseSize,
  kSizeOutOfRange,
  kUnpackedSmaller,
  kKilobyteSize,
  // Names and other text.
  kSameName,
  kIllFormedUtf8,
  kUnpairedSurrogate,
  kControlCharacter,
  kUnseenCharacter,
  kEmptyName,
  // Paths of files to delete.
  kFilePathAbsolute,
  kFilePathClimbs,
  kFilePathDrive,
  kFilePathNul,
  kFilePathTrailingSeparator,
  kFilePathMixedSeparators,
  kFilePathCase,
  // Against the product data.
  kUnknownProduct,
  kSharedBaseCode,
  kProductData,
};

/// How many rules there are.
constexpr std::size_t kRuleCount = static_cast<std::size_t>(Rule::kProductData) + 1;

/// What users see of a rule in lists and findings.
struct RuleDescription {
  Rule rule;            ///< which one
  const char* id;       ///< never changes: users write it into their settings
  Severity severity;    ///< of its findings
  const char* summary;  ///< one line, without a full stop at the end
};

/// Every rule, in the order of Rule.
const std::array<RuleDescription, kRuleCount>& allRules();

/// The description of a rule.
const RuleDescription& describe(Rule rule);

/// The rule of that id, if there is one.
std::optional<Rule> findRule(std::string_view id);

}  // namespace install::update_metadata_parser::diagnosis
