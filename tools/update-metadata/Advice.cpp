#include "Advice.h"

#include <ios>
#include <new>
#include <ostream>
#include <string_view>

#include "Text.h"

namespace update_metadata_tool {
namespace {

struct Advice {
  std::string_view beginning;  ///< how the library's text begins
  const char* whatToDo;
};

constexpr const char* kOutOfMemory = "there is not enough memory for it";

constexpr Advice kAdvice[] = {
    {"standard input cannot be read",
     "give it a document: a file, '< update.json', or what another command writes"},
    {"Update MetaData Json file does not exist ", "check the path"},
    {"Error opening Update MetaData Json File",
     "it is there, but is no file that can be read: check what it is and its permissions"},
    {"Error while parsing ",
     "its text is not one JSON object: check the syntax, and that nothing stands before or after "
     "the object, not even a byte-order mark or a final line feed"},
    {"Invalid data provided for '",
     "correct the document: that member is missing somewhere or has a value of the wrong kind; "
     "'update-metadata lint' tells where"},
    {"invalid conversion: ",
     "correct the document: some value, maybe a missing one, has the first kind and must have the "
     "second; 'update-metadata lint' tells where"},
    {"map::at",
     "add what is missing of \"metadata\", \"components\", \"products\" and "
     "\"componentsWithFilesDeleted\" at the top of the document"},
};

bool isOutOfMemory(const std::exception& failure) {
  return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr;
}

std::string adviseOnAnswering(const std::exception& failure, const std::u16string& productData) {
  if (isOutOfMemory(failure)) {
    return kOutOfMemory;
  }
  if (productData.empty()) {
    return "the reason stands above";
  }
  return "check the product data at '" + toVisible(productData) + "'";
}

void report(const std::exception& failure, const std::u16string& file, const std::string& whatToDo,
            std::ostream& err) {
  err << failure.what() << "\nupdate-metadata: '" << toVisible(file) << "' " << whatToDo << '\n';
}

}  // namespace

std::string adviseOnLoading(const std::exception& failure) {
  if (isOutOfMemory(failure)) {
    return kOutOfMemory;
  }
  const std::string_view text = failure.what();
  for (const Advice& advice : kAdvice) {
    if (text.substr(0, advice.beginning.size()) == advice.beginning) {
      return advice.whatToDo;
    }
  }
  if (dynamic_cast<const std::ios_base::failure*>(&failure) != nullptr) {
    return "it could be opened, but not be read to its end: check the device that it is on";
  }
  return "check that it is a complete update metadata document";
}

void reportUnloaded(const std::exception& failure, const std::u16string& file, std::ostream& err) {
  report(failure, file, "could not be loaded; " + adviseOnLoading(failure), err);
}

void reportUnanswered(const std::exception& failure, const std::u16string& file,
                      const std::u16string& productData, std::ostream& err) {
  report(failure, file,
         "was loaded, but the questions about it could not be answered; " +
             adviseOnAnswering(failure, productData),
         err);
}

}  // namespace update_metadata_tool
