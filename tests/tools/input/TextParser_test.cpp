#include "input/TextParser.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace update_metadata_tool::input {
namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;

const std::string kDocumentWithTarget =
    R"({"metadata":{"arch":"x","base":null,"target":)"
    R"({"zelvan_version":"","date":"","version":"2","prerelease":false,"release":"T",)"
    R"("checksum":"","description":"","update":1}},)"
    R"("components":{},"products":{},"componentsWithFilesDeleted":{}})";

TEST(TextParser, LoadsTheTextWithoutOpeningTheFile) {
  const auto update = TextParser(u"not there.json", kDocumentWithTarget).parseUpdateMetaDataJson();
  EXPECT_EQ(update->getTargetReleaseFamily(), u"T");
}

TEST(TextParser, FillsTheHandlerThatItIsGiven) {
  const auto handler = std::make_shared<UpdateMetaDataHandler>();
  TextParser(u"", kDocumentWithTarget, handler).parseUpdateMetaDataJson();
  EXPECT_EQ(handler->getTargetReleaseFamily(), u"T");
}

TEST(TextParser, NamesTheFileInTheFailure) {
  EXPECT_THAT([] { TextParser(u"a.json", "{").parseUpdateMetaDataJson(); },
              testing::ThrowsMessage<std::runtime_error>("Error while parsing a.json"));
}

}  // namespace
}  // namespace update_metadata_tool::input
