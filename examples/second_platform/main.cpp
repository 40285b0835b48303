// Runs queries that only this application's platform can answer. Exits with status 0 if every
// answer is right.

#include <cstdint>
#include <exception>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"

namespace {

using install::update_metadata_parser::UpdateMetaDataJsonParser;
using Keys = std::set<std::u16string>;

int failures = 0;

void expect(bool holds, const char* what) {
  if (!holds) {
    ++failures;
    std::cout << "FAILED: " << what << '\n';
  }
}

/// Returns the text of what `action` throws; empty if it throws nothing.
template <class Action>
std::string thrownText(Action action) {
  try {
    action();
  } catch (const std::exception& failure) {
    return failure.what();
  }
  return "";
}

std::string failureOfLoading(const std::u16string& path) {
  return thrownText([&] { UpdateMetaDataJsonParser(path).parseUpdateMetaDataJson(); });
}

void checkFiles() {
  expect(failureOfLoading(u"built-in:update").empty(),
         "a file of the platform loads although it cannot seek");
  expect(failureOfLoading(u"built-in:none") == "Update MetaData Json file does not exist ",
         "the platform determines which files exist");
  expect(failureOfLoading(u"built-in:locked") == "Error opening Update MetaData Json File",
         "the platform determines which files open");
  expect(failureOfLoading(u"built-in:broken") == "Error while parsing built-in:broken",
         "the platform converts the path in a message");
}

/// A parser that exposes its handler, for answers that the facade does not provide.
class OpenParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::handler;
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;
};

void checkReleases() {
  OpenParser parser(u"built-in:update");
  const auto update = parser.parseUpdateMetaDataJson();
  expect(update->getBaseReleaseFamily() == u"b\u00E2le" &&
             update->getTargetReleaseFamily() == u"t\u00EAte",
         "families are Latin-1");
  expect(update->getBaseReleaseVersion() == u"un\u00B9" &&
             update->getTargetReleaseVersion() == u"trois\u00B3",
         "versions are Latin-1");
  expect(update->getTargetUpdateLevelForQorv() == 7, "the update level is a number");
  expect(parser.handler->getProductUpdateMetaDataModel()->getReleaseData()->getMetaDataArch() ==
             u"m\u00E9l\u00E9",
         "the architecture is Latin-1");
}

void checkAnswers() {
  const auto update = UpdateMetaDataJsonParser(u"built-in:update").parseUpdateMetaDataJson();
  expect(update->getComponentsWithFilesToDelete() ==
             std::map<std::u16string, std::pair<Keys, std::int64_t>>{
                 {u"for\u00EAt_cl\u00EAt", {{u"\u00E9t\u00E9"}, 2}}},
         "names are Latin-1, and paths of files to delete UTF-8");
  expect(thrownText([&] { update->getComponentsToDelete(u"ED"); }) == "a product without a name",
         "the platform's catalogue rejects a location");
  expect(update->getComponentsToDelete(u"EV=\u00C8ve") ==
             std::map<std::u16string, Keys>{{u"EV", {u"vi\u00E8ux_p\u00E8re"}}},
         "names to delete are Latin-1, and the platform's catalogue has the base codes");
  expect(update->getComponentsToDelete(u"EV", u"") == Keys{u"vi\u00E8ux_p\u00E8re"},
         "the platform's catalogue has the names");
  expect(update->getComponentsToExtract(u"") ==
             std::map<std::u16string, Keys>{{u"EV", {u"no\u00EBl_fl\u00FBte"}}},
         "names to extract are Latin-1");
  expect(update->getComponentsToExtract(u"EV", u"") == Keys{u"no\u00EBl_fl\u00FBte"},
         "names to extract of one product are Latin-1");
  expect(update->getUpdateSizeForComponentsToExtract() ==
             std::map<std::u16string, std::pair<std::int64_t, std::int64_t>>{
                 {u"no\u00EBl_fl\u00FBte", {3, 4}}},
         "names with sizes are Latin-1");
}

}  // namespace

int main() {
  try {
    checkFiles();
    checkReleases();
    checkAnswers();
    // Users of the library see this platform's catalogue, not the one of the library's tree.
    const install::product_data_provider::ProductDataProvider catalogue(u"a=b");
    expect(catalogue.getProductName(u"a") == u"b",
           "the platform's catalogue header is the one in use");
  } catch (const std::exception& failure) {
    std::cout << "FAILED: unexpected exception: " << failure.what() << '\n';
    return 1;
  }
  return failures == 0 ? 0 : 1;
}
