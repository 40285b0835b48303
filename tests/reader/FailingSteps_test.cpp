// What a failure in a step that a derived parser replaces leaves behind.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "support/Failure.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"

namespace install::update_metadata_parser {
namespace {

using test_support::failureOf;
using test_support::RecordingHandler;
using test_support::sampleDocument;
using test_support::TextParser;
using test_support::toJson;
using ::testing::ElementsAre;

/// An exception type that only its thrower knows.
class UnknownFailure : public std::runtime_error {
 public:
  UnknownFailure() : std::runtime_error("unknown failure") {}
};

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
    EXPECT_EQ(parser.takeCalls(), test_support::sampleCalls(GetParam().callsBefore));
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

}  // namespace
}  // namespace install::update_metadata_parser
