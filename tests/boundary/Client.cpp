// A user's module: it hides its own symbols, uses the library from its own scope, and must catch
// each of the library's exceptions by its exact type.
//
// Kept apart from the test libraries because several compilers build it.

#include <sys/resource.h>

#include <cstddef>
#include <cstring>
#include <exception>
#include <ios>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

#include "foundation/core/except.h"
#include "foundation/json/Value.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "mf/zero/elements/Messages.h"

namespace {

using foundation::core::except::IMsgIDException;
using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;
using mf::zero::CannotCastIncompatibleTypes;
using mf::zero::IncompatibleModels;
template <class Message>
using ModelException = foundation::core::except::Exception<Message>;

constexpr const char* kDocument = R"({
  "metadata": {"arch": "x86_64", "base": null, "target": null},
  "components": {"core": {"delete": {"old package": {"size": 1}}, "extract": {}}},
  "products": {"Editor": {"delete": ["core"], "extract": []}},
  "componentsWithFilesDeleted": {}
})";

/// An exception of the module itself, of a type that is unknown outside it.
class OwnFailure : public std::exception {
 public:
  const char* what() const noexcept override { return "the module's own"; }
};

class TextParser : public UpdateMetaDataJsonParser {
 public:
  explicit TextParser(std::string text)
      : UpdateMetaDataJsonParser(u"in memory"), text_(std::move(text)) {}

  std::string readFile(const std::u16string& /*path*/) override { return text_; }

 private:
  std::string text_;
};

class ThrowingParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  std::string readFile(const std::u16string& /*path*/) override { throw OwnFailure(); }
};

/// Collects failed expectations.
class Report {
 public:
  void expect(bool holds, const std::string& what) {
    if (!holds) {
      text_ += what + '\n';
    }
  }

  /// Expects an action to throw exactly an `Exception` with the given text, and expects that
  /// callers can catch it both by that type and as std::exception.
  template <class Exception, class Action>
  void expectThrown(const std::string& expected, Action action) {
    const std::string name = expected.empty() ? typeid(Exception).name() : expected;
    try {
      action();
      expect(false, "nothing was thrown: " + name);
    } catch (const Exception& failure) {
      expect(expected.empty() || failure.what() == expected, "another text: " + name);
    } catch (...) {
      expect(false, "not caught by its type: " + name);
    }
    try {
      action();
    } catch (const std::exception& failure) {
      expect(dynamic_cast<const Exception*>(&failure) != nullptr, "lost its type: " + name);
    } catch (...) {
      expect(false, "not caught as std::exception: " + name);
    }
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// Makes the process run out of memory while it lives.
class LittleMemory {
 public:
  LittleMemory() {
    ::getrlimit(RLIMIT_AS, &before_);
    struct rlimit little = before_;
    little.rlim_cur = rlim_t{256} << 20;
    ::setrlimit(RLIMIT_AS, &little);
  }
  LittleMemory(const LittleMemory&) = delete;
  LittleMemory& operator=(const LittleMemory&) = delete;
  ~LittleMemory() { ::setrlimit(RLIMIT_AS, &before_); }

 private:
  struct rlimit before_ {};
};

std::string without(const std::string& part) {
  std::string text = kDocument;
  return text.replace(text.find(part), part.size(), "\"another\"");
}

void checkFailures(Report& report) {
  const auto loading = [](const std::string& text) {
    return [=] { TextParser(text).parseUpdateMetaDataJson(); };
  };
  report.expectThrown<std::runtime_error>("Update MetaData Json file does not exist ", [] {
    UpdateMetaDataJsonParser(u"/nonexistent/update.json").parseUpdateMetaDataJson();
  });
  report.expectThrown<std::runtime_error>("Error opening Update MetaData Json File", [] {
    UpdateMetaDataJsonParser(u"/").parseUpdateMetaDataJson();
  });
  report.expectThrown<std::runtime_error>("Error while parsing in memory", loading("{"));
  report.expectThrown<std::runtime_error>("Invalid data provided for 'arch'",
                                          loading(without("\"arch\"")));
  report.expectThrown<std::runtime_error>("invalid conversion: undefined to object",
                                          loading(without("\"base\"")));
  report.expectThrown<std::out_of_range>("map::at", loading(without("\"products\"")));
  report.expectThrown<std::ios_base::failure>(
      "", [] { UpdateMetaDataJsonParser(u"/proc/self/mem").parseUpdateMetaDataJson(); });
  report.expectThrown<OwnFailure>("the module's own",
                                  [] { ThrowingParser(u"in memory").parseUpdateMetaDataJson(); });
  report.expectThrown<ModelException<IncompatibleModels>>("", [] {
    const UpdateMetaDataHandler mine;
    const UpdateMetaDataHandler other;
    const auto component = other.createPkgDataWithFilesToDelete(u"name", 1, {});
    mine.setComponentDataWithFilesToDelete(u"component", {component});
  });
  report.expectThrown<ModelException<CannotCastIncompatibleTypes>>(
      "", [] { mf::zero::reportException(CannotCastIncompatibleTypes{u"a class"}); });
  try {
    mf::zero::reportException(IncompatibleModels{u"a class"});
  } catch (const IMsgIDException& failure) {
    report.expect(std::string(failure.getMessageId()) == IncompatibleModels::kId, "message id");
  } catch (...) {
    report.expect(false, "not caught as IMsgIDException");
  }
}

void checkExhaustion(Report& report) {
  report.expectThrown<std::bad_alloc>("std::bad_alloc", [] {
    const LittleMemory little;
    UpdateMetaDataJsonParser(u"/dev/zero").parseUpdateMetaDataJson();
  });
}

void checkAnswers(Report& report) {
  TextParser parser(kDocument);
  const std::shared_ptr<UpdateMetaData> update = parser.parseUpdateMetaDataJson();
  const auto packages = update->getComponentsToDelete(u"/nonexistent/catalogue");
  report.expect(packages.size() == 1 && packages.begin()->second.count(u"core_old package") == 1,
                "the answer");
}

/// Copies the report into `text`; returns whether every expectation was met.
int give(const Report& report, char* text, std::size_t bytes) {
  std::strncpy(text, report.text().c_str(), bytes - 1);
  text[bytes - 1] = '\0';
  return report.text().empty() ? 1 : 0;
}

}  // namespace

extern "C" {

/// Checks answers and failures. With `exhaust`, also checks behavior out of memory, which takes
/// longer.
__attribute__((visibility("default"))) int checkBoundary(bool exhaust, char* text,
                                                         std::size_t bytes) {
  Report report;
  checkAnswers(report);
  checkFailures(report);
  if (exhaust) {
    checkExhaustion(report);
  }
  return give(report, text, bytes);
}
}
