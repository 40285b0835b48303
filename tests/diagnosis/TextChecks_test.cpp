#include "diagnosis/TextChecks.h"

#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnosis/SourceDocument.h"
#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using ::testing::ElementsAre;

TEST(IgnoringRepeatedKeys, LeavesOutLaterValuesAtEveryLevel) {
  const source::SourceTree tree(R"({"a":1,"b":{"c":2,"\u0063":3},"a":{"d":4,"d":5}})");
  SourceDocument document(tree);
  ignoreRepeatedKeys(document);
  std::vector<std::string> read;
  std::vector<std::string> ignored;
  for (std::size_t node = 0; node < tree.nodes().size(); ++node) {
    if (document.isA(source::SourceKind::kObject, node)) {
      document.forEachWrittenMember(node, [&](std::size_t key) {
        (document.isIgnored(key) ? ignored : read)
            .push_back(std::string(document.bytesOf(key)) + ':' +
                       std::string(tree.written(key + 1)));
      });
    }
  }
  EXPECT_THAT(read, ElementsAre("a:1", R"(b:{"c":2,"\u0063":3})", "c:2", "d:4"));
  EXPECT_THAT(ignored, ElementsAre(R"(a:{"d":4,"d":5})", "c:3", "d:5"));
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
