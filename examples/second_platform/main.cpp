// Asks the library for what only this application's platform can answer. Ends with 0 if every
// answer is as it has to be.

#include <cstdint>
#include <exception>
#include <iostream>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "install/product_data_provider/ProductDataProvider.h"
#include "install/update_metadata_parser/UpdateMetaData.h"
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

/// Tells the text of what `action` throws; empty if it throws nothing.
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
         "a file of the platform loads, though it cannot be sought in");
  expect(failureOfLoading(u"built-in:none") == "Update MetaData Json file does not exist ",
         "the platform tells which files exist");
  expect(failureOfLoading(u"built-in:locked") == "Error opening Update MetaData Json File",
         "the platform tells which files open");
  expect(failureOfLoading(u"built-in:broken") == "Error while parsing built-in:broken",
         "the platform converts the path of a message");
}

void checkAnswers() {
  const auto update = UpdateMetaDataJsonParser(u"built-in:update").parseUpdateMetaDataJson();
  expect(update->getComponentsWithFilesToDelete() ==
             std::map<std::u16string, std::pair<Keys, std::int64_t>>{
                 {u"core_manual", {{u"\u00E9t\u00E9"}, 2}}},
         "paths are UTF-8");
  expect(thrownText([&] { update->getComponentsToDelete(u"ED"); }) == "a product without a name",
         "the platform's catalogue refuses a location");
  expect(update->getComponentsToDelete(u"ED=\u00C9diteur") ==
             std::map<std::u16string, Keys>{{u"ED", {u"core_old"}}},
         "names are Latin-1, and the platform's catalogue tells base codes");
  expect(update->getComponentsToDelete(u"ED", u"") == Keys{u"core_old"},
         "the platform's catalogue tells names");
}

}  // namespace

int main() {
  try {
    checkFiles();
    checkAnswers();
    // Users of the library see the catalogue that was brought, not the one of its tree.
    const install::product_data_provider::ProductDataProvider catalogue(u"a=b");
    expect(catalogue.getProductName(u"a") == u"b", "the header of the platform's catalogue");
  } catch (const std::exception& failure) {
    std::cout << "FAILED: unexpected exception: " << failure.what() << '\n';
    return 1;
  }
  return failures == 0 ? 0 : 1;
}
