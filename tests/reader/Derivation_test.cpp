// What a derived parser can replace and observe.

#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"
#include "support/TemporaryFolder.h"
#include "support/VisibleText.h"

namespace install::update_metadata_parser {
namespace {

using test_support::RecordingHandler;
using test_support::sampleDocument;
using test_support::TemporaryFolder;
using test_support::TextParser;
using test_support::toJson;
using ::testing::ElementsAre;

using Log = std::vector<std::string>;

/// A handler that logs the first call of a load in the parser's log.
class StepNotingHandler : public UpdateMetaDataHandler {
 public:
  explicit StepNotingHandler(Log& log) : log_(log) {}

  void initializeReleaseData() const override {
    log_.emplace_back("initializeReleaseData");
    UpdateMetaDataHandler::initializeReleaseData();
  }
  void initializeBaseRelease() const override {
    log_.emplace_back("initializeBaseRelease");
    UpdateMetaDataHandler::initializeBaseRelease();
  }
  void initializeTargetRelease() const override {
    log_.emplace_back("initializeTargetRelease");
    UpdateMetaDataHandler::initializeTargetRelease();
  }
  void setMetaDataArch(const std::u16string& arch) const override {
    log_.emplace_back("setMetaDataArch");
    UpdateMetaDataHandler::setMetaDataArch(arch);
  }

 private:
  Log& log_;
};

/// A parser that logs its virtual steps and how many owners its handler has.
class StepNotingParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::handler;
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  std::string readFile(const std::u16string& path) override {
    log.push_back("readFile " + test_support::visible(path) +
                  ", owners of the handler: " + std::to_string(handler.use_count()));
    return toJson(sampleDocument());
  }
  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    log.push_back("getUpdateMetaDataHandler, owners of the handler: " +
                  std::to_string(handler.use_count()));
    return std::make_shared<StepNotingHandler>(log);
  }

  mutable Log log;
};

TEST(DerivedParser, SeesTheStepsOfALoadInOrder) {
  StepNotingParser parser(u"a path");
  parser.parseUpdateMetaDataJson();
  EXPECT_THAT(
      parser.log,
      ElementsAre("getUpdateMetaDataHandler, owners of the handler: 0", "initializeReleaseData",
                  "initializeBaseRelease", "initializeTargetRelease",
                  // The owners are the parser and the facade, which is made before anything is
                  // read.
                  "readFile \"a path\", owners of the handler: 2", "setMetaDataArch"));
}

TEST(DerivedParser, MakesTheNextHandlerBeforeTheFormerOneIsReleased) {
  StepNotingParser parser(u"a path");
  parser.parseUpdateMetaDataJson();
  parser.log.clear();
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.log.front(), "getUpdateMetaDataHandler, owners of the handler: 1");
}

TEST(DerivedParser, ReceivesThePathOfTheTextToRead) {
  StepNotingParser parser(u"a path");
  parser.getJsonObjFromFile(u"another \u00E4");
  EXPECT_THAT(parser.log, ElementsAre("readFile \"another \\u00E4\", owners of the handler: 0"));
}

TEST(DerivedParser, ReplacesTheWholeLoad) {
  class EmptyParser : public UpdateMetaDataJsonParser {
   public:
    using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;
    std::shared_ptr<UpdateMetaData> parseUpdateMetaDataJson() override {
      setupUpdateMetaDataHandler();
      return setupUpdateMetaData();
    }
  };
  const std::unique_ptr<UpdateMetaDataJsonParser> parser = std::make_unique<EmptyParser>(u"");
  const auto facade = parser->parseUpdateMetaDataJson();
  EXPECT_EQ(facade->getTargetReleaseFamily(), u"");
  EXPECT_EQ(facade->getTargetUpdateLevelForQorv(), 0);
}

TEST(DerivedParser, ExtendsTheReadingOfTheFile) {
  /// Removes what follows the document.
  class LenientParser : public UpdateMetaDataJsonParser {
   public:
    using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;
    std::string readFile(const std::u16string& path) override {
      std::string text = UpdateMetaDataJsonParser::readFile(path);
      return text.substr(0, text.rfind('}') + 1);
    }
  };
  const TemporaryFolder folder;
  const std::u16string path = folder.writeFile("document.json", toJson(sampleDocument()) + "\r\n");
  EXPECT_EQ(LenientParser(path).parseUpdateMetaDataJson()->getBaseReleaseVersion(), u"1.0");
}

TEST(DerivedParser, IsDestroyedThroughTheBase) {
  auto token = std::make_shared<char>();
  class HoldingParser : public UpdateMetaDataJsonParser {
   public:
    explicit HoldingParser(std::shared_ptr<char> held)
        : UpdateMetaDataJsonParser(u""), held_(std::move(held)) {}

   private:
    std::shared_ptr<char> held_;
  };
  std::unique_ptr<UpdateMetaDataJsonParser> parser = std::make_unique<HoldingParser>(token);
  EXPECT_EQ(token.use_count(), 2);
  parser.reset();
  EXPECT_EQ(token.use_count(), 1);
}

TEST(HandlerFactory, MakesANewPlainHandlerEachTime) {
  /// Uses the parser's own factory and exposes the stored handler.
  class PlainParser : public UpdateMetaDataJsonParser {
   public:
    using UpdateMetaDataJsonParser::handler;
    using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;
  };
  PlainParser parser(u"");
  parser.setupUpdateMetaDataHandler();
  const auto stored = parser.handler;
  const auto first = parser.getUpdateMetaDataHandler();
  const auto second = parser.getUpdateMetaDataHandler();
  EXPECT_NE(first, stored);
  EXPECT_NE(first, second);
  EXPECT_EQ(first.use_count(), 1);
  EXPECT_EQ(parser.handler, stored);
  const UpdateMetaDataHandler& made = *first;
  EXPECT_TRUE(typeid(made) == typeid(UpdateMetaDataHandler));
}

TEST(HandlerFactory, MayReturnAHandlerThatTheCallerKeeps) {
  class KeepingParser : public TextParser {
   public:
    using TextParser::TextParser;
    std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
      return kept;
    }
    std::shared_ptr<RecordingHandler> kept = std::make_shared<RecordingHandler>();
  };
  auto parser = std::make_unique<KeepingParser>(toJson(sampleDocument()));
  const auto kept = parser->kept;
  auto facade = parser->parseUpdateMetaDataJson();
  parser.reset();
  EXPECT_EQ(kept.use_count(), 2);
  facade.reset();
  EXPECT_EQ(kept.use_count(), 1);
  EXPECT_EQ(kept->takeCalls(), test_support::sampleCalls());
}

TEST(FailingHandlerFactory, ReadsNothing) {
  class Parser : public StepNotingParser {
   public:
    using StepNotingParser::StepNotingParser;
    std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
      throw std::runtime_error("");
    }
  };
  Parser failing(u"");
  EXPECT_THROW(failing.parseUpdateMetaDataJson(), std::runtime_error);
  EXPECT_THAT(failing.log, ElementsAre());
}

}  // namespace
}  // namespace install::update_metadata_parser
