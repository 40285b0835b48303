// What a derived parser can replace and observe.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "reader/SampleDocument.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/TemporaryFolder.h"
#include "support/VisibleText.h"

namespace install::update_metadata_parser {
namespace {

using test_support::failureOf;
using test_support::RecordingHandler;
using test_support::sampleDocument;
using test_support::TemporaryFolder;
using test_support::TextParser;
using test_support::toJson;
using ::testing::ElementsAre;

using Log = std::vector<std::string>;

/// An exception type that only its thrower knows.
class UnknownFailure : public std::runtime_error {
 public:
  UnknownFailure() : std::runtime_error("unknown failure") {}
};

/// A handler that logs the first call of a load in the parser's log.
class NotingHandler : public UpdateMetaDataHandler {
 public:
  explicit NotingHandler(Log& log) : log_(log) {}

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
class NotingParser : public UpdateMetaDataJsonParser {
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
    return std::make_shared<NotingHandler>(log);
  }

  mutable Log log;
};

TEST(DerivedParser, SeesTheStepsOfALoadInOrder) {
  NotingParser parser(u"a path");
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
  NotingParser parser(u"a path");
  parser.parseUpdateMetaDataJson();
  parser.log.clear();
  parser.parseUpdateMetaDataJson();
  EXPECT_EQ(parser.log.front(), "getUpdateMetaDataHandler, owners of the handler: 1");
}

TEST(DerivedParser, ReceivesThePathOfTheTextToRead) {
  NotingParser parser(u"a path");
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

/// Fails in one of the steps that a derived parser or handler replaces.
class FailingParser : public TextParser {
 public:
  using Failure = void (*)();

  FailingParser(std::string failingStep, Failure failure)
      : TextParser(toJson(sampleDocument())), step_(std::move(failingStep)), fail_(failure) {}

  std::string readFile(const std::u16string& path) override {
    failIn("readFile");
    return TextParser::readFile(path);
  }

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    failIn("getUpdateMetaDataHandler");
    return std::make_shared<Handler>(*this);
  }

 private:
  class Handler : public RecordingHandler {
   public:
    explicit Handler(const FailingParser& parser) : parser_(parser) {}

    void initializeTargetRelease() const override {
      parser_.failIn("initializeTargetRelease");
      RecordingHandler::initializeTargetRelease();
    }
    void setMetaDataArch(const std::u16string& arch) const override {
      parser_.failIn("setMetaDataArch");
      RecordingHandler::setMetaDataArch(arch);
    }
    void setBaseReleaseVersion(const std::u16string& version) const override {
      parser_.failIn("setBaseReleaseVersion");
      RecordingHandler::setBaseReleaseVersion(version);
    }
    void setProductDeltaData(const std::u16string& name,
                             const std::vector<std::u16string>& compsToDelete,
                             const std::vector<std::u16string>& compsToExtract,
                             const PkgsToDelete& pkgsToDelete,
                             const PkgsToExtract& pkgsToExtract) const override {
      parser_.failIn("setProductDeltaData");
      RecordingHandler::setProductDeltaData(name, compsToDelete, compsToExtract, pkgsToDelete,
                                            pkgsToExtract);
    }
    datamodels::product_update::PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
        const std::u16string& name, std::int64_t size,
        const std::vector<std::u16string>& files) const override {
      parser_.failIn("createPkgDataWithFilesToDelete");
      return RecordingHandler::createPkgDataWithFilesToDelete(name, size, files);
    }
    void setComponentDataWithFilesToDelete(
        const std::u16string& name,
        const std::vector<datamodels::product_update::PkgDataWithFilesToDelete>& pkgs)
        const override {
      parser_.failIn("setComponentDataWithFilesToDelete");
      RecordingHandler::setComponentDataWithFilesToDelete(name, pkgs);
    }

   private:
    const FailingParser& parser_;
  };

  void failIn(const std::string& step) const {
    if (step == step_) {
      fail_();
    }
  }

  std::string step_;
  Failure fail_;
};

/// A failing step, and how many calls of the load the handler receives before it.
struct FailingStep {
  const char* name;
  std::size_t callsBefore;
};

void PrintTo(const FailingStep& step, std::ostream* stream) {
  *stream << step.name;
}

const FailingStep kFailingSteps[] = {
    {"initializeTargetRelease", 2},
    {"readFile", 3},
    {"setMetaDataArch", 3},
    {"setBaseReleaseVersion", 8},
    {"setProductDeltaData", 9},
    {"createPkgDataWithFilesToDelete", 11},
    {"setComponentDataWithFilesToDelete", 12},
};

class FailingStepOfALoad : public ::testing::TestWithParam<FailingStep> {
 protected:
  void expectFailure(FailingParser::Failure failure, const std::string& description) {
    SCOPED_TRACE(description);
    FailingParser parser(GetParam().name, failure);
    EXPECT_EQ(failureOf([&] { parser.parseUpdateMetaDataJson(); }), description);
    std::vector<std::string> calls = test_support::sampleCalls();
    calls.resize(GetParam().callsBefore);
    EXPECT_EQ(parser.takeCalls(), calls);
    EXPECT_EQ(parser.handler.use_count(), 1) << "the facade is released, the handler is kept";
  }
};

TEST_P(FailingStepOfALoad, LetsItsExceptionPassUnchanged) {
  expectFailure([] { throw UnknownFailure(); }, failureOf([] { throw UnknownFailure(); }));
  expectFailure([] { throw std::runtime_error("text"); }, "std::runtime_error: text");
  expectFailure([] { throw std::bad_alloc(); }, "std::bad_alloc: std::bad_alloc");
  expectFailure([] { throw 1; }, "an exception of another kind");
}

INSTANTIATE_TEST_SUITE_P(Steps, FailingStepOfALoad, ::testing::ValuesIn(kFailingSteps),
                         [](const auto& row) { return row.param.name; });

TEST(FailingHandlerFactory, LeavesTheParserWithoutAHandlerTheFirstTime) {
  FailingParser parser("getUpdateMetaDataHandler", [] { throw UnknownFailure(); });
  EXPECT_THROW(parser.parseUpdateMetaDataJson(), UnknownFailure);
  EXPECT_EQ(parser.handler, nullptr);
}

TEST(FailingHandlerFactory, LeavesTheFormerHandlerInPlaceTheSecondTime) {
  class OnceParser : public TextParser {
   public:
    using TextParser::TextParser;
    std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
      if (handler) {
        throw UnknownFailure();
      }
      return std::make_shared<RecordingHandler>();
    }
  };
  OnceParser parser(toJson(sampleDocument()));
  const auto facade = parser.parseUpdateMetaDataJson();
  const UpdateMetaDataHandler* const former = parser.handler.get();
  parser.takeCalls();
  EXPECT_THROW(parser.parseUpdateMetaDataJson(), UnknownFailure);
  EXPECT_EQ(parser.handler.get(), former);
  EXPECT_EQ(parser.handler.use_count(), 2);
  EXPECT_THAT(parser.takeCalls(), ElementsAre());
  EXPECT_EQ(facade->getBaseReleaseVersion(), u"1.0");
}

TEST(FailingHandlerFactory, ReadsNothing) {
  class Parser : public NotingParser {
   public:
    using NotingParser::NotingParser;
    std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
      throw UnknownFailure();
    }
  };
  Parser failing(u"");
  EXPECT_THROW(failing.parseUpdateMetaDataJson(), UnknownFailure);
  EXPECT_THAT(failing.log, ElementsAre());
}

}  // namespace
}  // namespace install::update_metadata_parser
