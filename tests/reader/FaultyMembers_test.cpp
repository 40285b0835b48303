// Every member of a document, absent or of each other kind: which failure the caller gets, and
// which calls the handler receives before.

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"

namespace install::update_metadata_parser {
namespace {

using foundation::json::Array;
using foundation::json::Object;
using foundation::json::traits;
using foundation::json::Undefined;
using foundation::json::Value;
using test_support::failureOf;
using test_support::invalidConversion;
using test_support::invalidData;
using test_support::Kind;
using test_support::kinds;
using test_support::Path;
using test_support::sampleCalls;
using test_support::sampleDocument;
using test_support::TextParser;
using test_support::toJson;
using test_support::with;
using test_support::without;

/// How a reader reads a value.
enum class Way {
  kRequired,   ///< required: distinguishes null, absence and every other kind
  kConverted,  ///< converted as it is; may be absent
  kOptional,   ///< a section: converted unless it is null or absent
  kRelease,    ///< converted unless it is null; undefined if absent
};

/// One value of the sample document.
struct MemberOfADocument {
  const char* name;
  Path path;
  Way way;
  std::string kind;         ///< the name of its kind
  std::size_t callsBefore;  ///< how many of the sample's calls precede its reading
};

void PrintTo(const MemberOfADocument& member, std::ostream* stream) {
  *stream << member.name;
}

const std::string kObject = traits<Object>::name;
const std::string kArray = traits<Array>::name;
const std::string kString = traits<std::string>::name;
const std::string kNumber = traits<double>::name;
const std::string kBoolean = traits<bool>::name;
const std::string kNull = traits<std::nullptr_t>::name;

MemberOfADocument releaseField(const char* name, const char* release, const char* field,
                               const std::string& kind) {
  return {name,
          {"metadata", release, field},
          Way::kRequired,
          kind,
          std::string(release) == "target" ? 4U : 7U};
}

std::vector<MemberOfADocument> membersOfADocument() {
  return {
      {"MetaData", {"metadata"}, Way::kConverted, kObject, 3},
      {"Arch", {"metadata", "arch"}, Way::kRequired, kString, 3},
      {"Target", {"metadata", "target"}, Way::kRelease, kObject, 4},
      releaseField("TargetZelvanVersion", "target", "zelvan_version", kString),
      releaseField("TargetDate", "target", "date", kString),
      releaseField("TargetVersion", "target", "version", kString),
      releaseField("TargetPrerelease", "target", "prerelease", kBoolean),
      releaseField("TargetRelease", "target", "release", kString),
      releaseField("TargetChecksum", "target", "checksum", kString),
      releaseField("TargetDescription", "target", "description", kString),
      releaseField("TargetUpdate", "target", "update", kNumber),
      {"Base", {"metadata", "base"}, Way::kRelease, kObject, 7},
      releaseField("BaseZelvanVersion", "base", "zelvan_version", kString),
      releaseField("BaseDate", "base", "date", kString),
      releaseField("BaseVersion", "base", "version", kString),
      releaseField("BasePrerelease", "base", "prerelease", kBoolean),
      releaseField("BaseRelease", "base", "release", kString),
      releaseField("BaseChecksum", "base", "checksum", kString),
      releaseField("BaseDescription", "base", "description", kString),
      releaseField("BaseUpdate", "base", "update", kNumber),
      {"Components", {"components"}, Way::kOptional, kObject, 9},
      {"Component", {"components", "extra"}, Way::kConverted, kObject, 9},
      {"ComponentDelete", {"components", "extra", "delete"}, Way::kRequired, kObject, 9},
      {"ComponentExtract", {"components", "extra", "extract"}, Way::kRequired, kObject, 9},
      {"PkgToDelete", {"components", "extra", "delete", "shed"}, Way::kConverted, kObject, 9},
      {"PkgToDeleteSize",
       {"components", "extra", "delete", "shed", "size"},
       Way::kRequired,
       kNumber,
       9},
      {"PkgToExtract", {"components", "extra", "extract", "in"}, Way::kConverted, kObject, 9},
      {"PkgToExtractSize",
       {"components", "extra", "extract", "in", "size"},
       Way::kRequired,
       kNumber,
       9},
      {"PkgToExtractUncompressedBytes",
       {"components", "extra", "extract", "in", "uncompressedBytes"},
       Way::kRequired,
       kNumber,
       9},
      {"Products", {"products"}, Way::kOptional, kObject, 9},
      {"Product", {"products", "Scale"}, Way::kConverted, kObject, 10},
      {"ProductDelete", {"products", "Scale", "delete"}, Way::kRequired, kArray, 10},
      {"ComponentNameToDelete", {"products", "Scale", "delete", "1"}, Way::kConverted, kString, 10},
      {"ProductExtract", {"products", "Scale", "extract"}, Way::kRequired, kArray, 10},
      {"ComponentNameToExtract",
       {"products", "Scale", "extract", "1"},
       Way::kConverted,
       kString,
       10},
      {"ComponentsWithFilesDeleted", {"componentsWithFilesDeleted"}, Way::kOptional, kObject, 11},
      {"ComponentWithFiles", {"componentsWithFilesDeleted", "help"}, Way::kConverted, kObject, 13},
      {"PkgWithFiles",
       {"componentsWithFilesDeleted", "help", "pages"},
       Way::kConverted,
       kObject,
       14},
      {"PkgWithFilesSize",
       {"componentsWithFilesDeleted", "help", "pages", "size"},
       Way::kRequired,
       kNumber,
       14},
      {"Files",
       {"componentsWithFilesDeleted", "help", "pages", "files"},
       Way::kRequired,
       kArray,
       14},
      {"File",
       {"componentsWithFilesDeleted", "help", "pages", "files", "1"},
       Way::kConverted,
       kString,
       14},
  };
}

/// The outcome of a load: its failure and the calls that the handler received.
struct Load {
  std::string failure;
  std::vector<std::string> calls;
};

bool operator==(const Load& left, const Load& right) {
  return left.failure == right.failure && left.calls == right.calls;
}

std::ostream& operator<<(std::ostream& out, const Load& load) {
  return out << load.failure << " after " << ::testing::PrintToString(load.calls);
}

Load loadText(const Value& document) {
  TextParser parser(toJson(document));
  const std::string failure = failureOf([&] { parser.parseUpdateMetaDataJson(); });
  return {failure, parser.takeCalls()};
}

/// Loads a document given as a value, because text cannot represent every kind of value. Takes the
/// same steps as a load.
Load loadValue(const Value& document) {
  TextParser parser("");
  const std::string failure = failureOf([&] {
    parser.setupUpdateMetaDataHandler();
    parser.parseMetaData(document["metadata"]);
    parser.parseComponentData(document["components"]);
    parser.parseProductData(document["products"]);
    parser.parseComponentsWithFilesDeleted(document["componentsWithFilesDeleted"]);
  });
  return {failure, parser.takeCalls()};
}

class FaultyMember : public ::testing::TestWithParam<MemberOfADocument> {
 protected:
  std::string failureFor(const Kind& kind) const {
    if (GetParam().way != Way::kRequired || kind.name == kNull) {
      return invalidConversion(kind.name, GetParam().kind);
    }
    return invalidData(GetParam().path.back());
  }

  bool isAccepted(const Kind& kind) const {
    const bool acceptsNull = GetParam().way == Way::kOptional || GetParam().way == Way::kRelease;
    return kind.name == GetParam().kind || (acceptsNull && kind.name == kNull);
  }
};

TEST_P(FaultyMember, OfAnotherKindFailsTheLoadWithoutUndoingAnything) {
  for (const Kind& kind : kinds()) {
    if (isAccepted(kind)) {
      continue;
    }
    SCOPED_TRACE(kind.name);
    const Value document = with(sampleDocument(), GetParam().path, kind.value);
    const Load expected = {failureFor(kind), sampleCalls(GetParam().callsBefore)};
    EXPECT_EQ(loadValue(document), expected);
    if (kind.inText) {
      EXPECT_EQ(loadText(document), expected);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EveryMember, FaultyMember, ::testing::ValuesIn(membersOfADocument()),
                         [](const auto& row) { return row.param.name; });

class AbsentMember : public FaultyMember {};

TEST_P(AbsentMember, FailsTheLoadWithoutUndoingAnything) {
  const bool isSection = GetParam().path.size() == 1;
  const bool isRelease = GetParam().way == Way::kRelease;
  const Load expected = {isSection   ? "std::out_of_range: map::at"
                         : isRelease ? invalidConversion<Undefined, Object>()
                                     : invalidData(GetParam().path.back()),
                         sampleCalls(GetParam().callsBefore)};
  EXPECT_EQ(loadText(without(sampleDocument(), GetParam().path)), expected);
}

std::vector<MemberOfADocument> requiredMembers() {
  std::vector<MemberOfADocument> rows;
  for (const MemberOfADocument& row : membersOfADocument()) {
    if (row.way != Way::kConverted || row.path.size() == 1) {
      rows.push_back(row);
    }
  }
  return rows;
}

INSTANTIATE_TEST_SUITE_P(EveryRequiredMember, AbsentMember, ::testing::ValuesIn(requiredMembers()),
                         [](const auto& row) { return row.param.name; });

TEST(FaultlessDocument, ReachesTheHandlerWhole) {
  const Load expected = {"nothing", sampleCalls()};
  EXPECT_EQ(loadText(sampleDocument()), expected);
  EXPECT_EQ(loadValue(sampleDocument()), expected);
}

TEST(FaultyDocument, ReportsTheFaultThatIsReadFirst) {
  // In the order of reading. The test adds them from last to first, so that each new fault hides
  // the earlier ones.
  const std::vector<Path> faults = {
      {"metadata", "arch"},
      {"metadata", "target", "zelvan_version"},
      {"metadata", "target", "date"},
      {"metadata", "target", "version"},
      {"metadata", "target", "prerelease"},
      {"metadata", "target", "release"},
      {"metadata", "target", "checksum"},
      {"metadata", "target", "description"},
      {"metadata", "target", "update"},
      {"metadata", "base", "zelvan_version"},
      {"metadata", "base", "date"},
      {"metadata", "base", "version"},
      {"metadata", "base", "prerelease"},
      {"metadata", "base", "release"},
      {"metadata", "base", "checksum"},
      {"metadata", "base", "description"},
      {"metadata", "base", "update"},
      {"components", "core", "delete", "old", "size"},
      {"components", "core", "extract", "new", "size"},
      {"components", "core", "extract", "new", "uncompressedBytes"},
      {"components", "extra", "delete", "out", "size"},
      {"components", "extra", "delete", "shed", "size"},
      {"components", "extra", "extract", "gain", "size"},
      {"components", "extra", "extract", "gain", "uncompressedBytes"},
      {"components", "extra", "extract", "in", "size"},
      {"components", "extra", "extract", "in", "uncompressedBytes"},
      {"products", "Press", "delete"},
      {"products", "Press", "extract"},
      {"products", "Scale", "delete"},
      {"products", "Scale", "extract"},
      {"componentsWithFilesDeleted", "docs", "guide", "size"},
      {"componentsWithFilesDeleted", "docs", "guide", "files"},
      {"componentsWithFilesDeleted", "help", "index", "size"},
      {"componentsWithFilesDeleted", "help", "index", "files"},
      {"componentsWithFilesDeleted", "help", "pages", "size"},
      {"componentsWithFilesDeleted", "help", "pages", "files"},
  };
  Value document = sampleDocument();
  for (auto fault = faults.rbegin(); fault != faults.rend(); ++fault) {
    document = without(document, *fault);
    EXPECT_EQ(loadText(document).failure, invalidData(fault->back()))
        << ::testing::PrintToString(*fault);
  }
}

}  // namespace
}  // namespace install::update_metadata_parser
