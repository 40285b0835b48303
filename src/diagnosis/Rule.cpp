#include "diagnosis/Rule.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

constexpr std::array<RuleDescription, kRuleCount> kRules = {{
    // --- what keeps a document from being loaded ----------------------------------------------
    {Rule::kMalformedText, "malformed-text", Severity::kError, "The text is not well-formed JSON"},
    {Rule::kTextAroundValue, "text-around-value", Severity::kError,
     "There is text before or after the document's object"},
    {Rule::kNotAnObject, "not-an-object", Severity::kError, "The document is not a JSON object"},
    {Rule::kTypeNameNotAString, "type-name-not-a-string", Severity::kError,
     "A member \"qztype\" is not a string"},
    {Rule::kTypedPayload, "typed-payload", Severity::kError,
     "A member \"qzdata\" is not an array of integers"},
    {Rule::kMissingSection, "missing-section", Severity::kError,
     "One of the four sections is missing"},
    {Rule::kMissingMember, "missing-member", Severity::kError, "An object lacks a required member"},
    {Rule::kWrongKind, "wrong-kind", Severity::kError, "A value is of the wrong kind"},
    {Rule::kNullValue, "null-value", Severity::kError, "A value is null where null is not allowed"},
    {Rule::kAbsentRelease, "absent-release", Severity::kError,
     "The release \"base\" or \"target\" is missing in \"metadata\""},
    {Rule::kNonStringElement, "non-string-element", Severity::kError,
     "An element of a list of names or files is not a string"},
    {Rule::kRefused, "refused", Severity::kError,
     "The library rejects the document for a reason that no other rule covers"},

    // --- members and sections that are not read as they are written ---------------------------
    {Rule::kRepeatedKey, "repeated-key", Severity::kWarning,
     "A key is repeated in one object; only the first value is used"},
    {Rule::kUnlistedMember, "unlisted-member", Severity::kWarning,
     "An object has a member that the library does not read"},
    {Rule::kReservedName, "reserved-name", Severity::kWarning,
     "\"qztype\" or \"qzdata\" is used as a name"},
    {Rule::kNullRelease, "null-release", Severity::kWarning, "A release is null"},
    {Rule::kNullSection, "null-section", Severity::kInfo, "A section is null"},

    // --- how components, packages and products fit together -----------------------------------
    {Rule::kUnknownComponent, "unknown-component", Severity::kWarning,
     "A product names a component that is not described"},
    {Rule::kUnusedComponent, "unused-component", Severity::kWarning,
     "No product uses the component"},
    {Rule::kUnreachablePackages, "unreachable-packages", Severity::kWarning,
     "A component has packages in a list that no product uses"},
    {Rule::kNothingToDelete, "nothing-to-delete", Severity::kInfo,
     "A product deletes a component that only has packages to extract"},
    {Rule::kComponentNamedTwice, "component-named-twice", Severity::kWarning,
     "A product names a component twice in one list"},
    {Rule::kProductWithoutWork, "product-without-work", Severity::kWarning,
     "A product names no component"},
    {Rule::kPackageKeyCollision, "package-key-collision", Severity::kWarning,
     "Two packages have the same key in the answers"},
    {Rule::kFileOfChangedPackage, "file-of-changed-package", Severity::kInfo,
     "Files are deleted from a package that is itself deleted or extracted"},
    {Rule::kSimilarComponent, "similar-component", Severity::kInfo,
     "A component with files to delete has nearly the name of another component"},

    // --- numbers ------------------------------------------------------------------------------
    {Rule::kUpdateLevel, "update-level", Severity::kWarning,
     "The update level of the target is read back as another number"},
    {Rule::kFractionalSize, "fractional-size", Severity::kWarning, "A size has a fraction"},
    {Rule::kNegativeSize, "negative-size", Severity::kWarning, "A size is negative"},
    {Rule::kImpreciseSize, "imprecise-size", Severity::kWarning,
     "A size is beyond 2^53 and may be read as another number"},
    {Rule::kSizeOutOfRange, "size-out-of-range", Severity::kWarning,
     "A size does not fit in 64 bits and becomes the smallest integer"},
    {Rule::kUnpackedSmaller, "unpacked-smaller", Severity::kWarning,
     "A package is smaller unpacked than packed"},
    {Rule::kKilobyteSize, "kilobyte-size", Severity::kInfo,
     "The packed size of a package may be in kilobytes"},

    // --- names and other text -----------------------------------------------------------------
    {Rule::kSameName, "same-name", Severity::kWarning,
     "Two different names are the same after decoding"},
    {Rule::kIllFormedUtf8, "ill-formed-utf8", Severity::kWarning, "A string is not UTF-8"},
    {Rule::kUnpairedSurrogate, "unpaired-surrogate", Severity::kWarning,
     "An escape is half of a character"},
    {Rule::kControlCharacter, "control-character", Severity::kWarning,
     "A name or path contains a control character"},
    {Rule::kUnseenCharacter, "unseen-character", Severity::kWarning,
     "A name or path contains an invisible character"},
    {Rule::kEmptyName, "empty-name", Severity::kWarning, "A name or path is empty"},

    // --- paths of files to delete -------------------------------------------------------------
    {Rule::kFilePathAbsolute, "file-path-absolute", Severity::kWarning,
     "The path of a file to delete is absolute"},
    {Rule::kFilePathClimbs, "file-path-climbs", Severity::kWarning,
     "The path of a file to delete contains \"..\""},
    {Rule::kFilePathDrive, "file-path-drive", Severity::kWarning,
     "The path of a file to delete starts with a drive letter"},
    {Rule::kFilePathNul, "file-path-nul", Severity::kWarning,
     "The path of a file to delete contains a NUL character"},
    {Rule::kFilePathTrailingSeparator, "file-path-trailing-separator", Severity::kWarning,
     "The path of a file to delete ends with a separator"},
    {Rule::kFilePathMixedSeparators, "file-path-mixed-separators", Severity::kWarning,
     "The path of a file to delete mixes slashes and backslashes"},
    {Rule::kFilePathCase, "file-path-case", Severity::kWarning,
     "Two paths of one package differ only in case"},

    // --- against the product data -------------------------------------------------------------
    {Rule::kUnknownProduct, "unknown-product", Severity::kWarning,
     "A product of the document is not in the product data"},
    {Rule::kSharedBaseCode, "shared-base-code", Severity::kWarning,
     "Two products of the document have the same base code"},
    {Rule::kProductData, "product-data", Severity::kError, "The product data cannot be read"},
}};

constexpr bool isInOrderOfRules() {
  for (std::size_t index = 0; index != kRuleCount; ++index) {
    if (kRules[index].rule != static_cast<Rule>(index)) {
      return false;
    }
  }
  return true;
}
static_assert(isInOrderOfRules(), "descriptions are in the order of the rules");

}  // namespace

const std::array<RuleDescription, kRuleCount>& allRules() {
  return kRules;
}

const RuleDescription& describe(Rule rule) {
  return kRules[static_cast<std::size_t>(rule)];
}

std::optional<Rule> findRule(std::string_view id) {
  for (const RuleDescription& description : kRules) {
    if (id == description.id) {
      return description.rule;
    }
  }
  return std::nullopt;
}

}  // namespace install::update_metadata_parser::diagnosis
