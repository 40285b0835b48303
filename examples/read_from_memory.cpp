// Loads a document that is not in a file: a derived parser provides the text.

#include <exception>
#include <iostream>
#include <string>
#include <utility>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::update_metadata_parser::UpdateMetaDataJsonParser;

class MemoryParser : public UpdateMetaDataJsonParser {
 public:
  /// `name` names the document in the library's messages.
  MemoryParser(const std::u16string& name, std::string text)
      : UpdateMetaDataJsonParser(name), text_(std::move(text)) {}

  std::string readFile(const std::u16string& /*path*/) override { return text_; }

 private:
  std::string text_;
};

// Ends right after the closing brace: a line feed after it would be an error.
constexpr const char* kDocument = R"({
  "metadata": {
    "arch": "x86_64",
    "base": null,
    "target": {
      "zelvan_version": "7.2", "date": "2024-09-16", "version": "7.2.0", "prerelease": false,
      "release": "Fernlight 7", "checksum": "", "description": "", "update": 3
    }
  },
  "components": null,
  "products": null,
  "componentsWithFilesDeleted": null
})";

}  // namespace

int main() {
  try {
    MemoryParser parser(u"built-in document", kDocument);
    const auto update = parser.parseUpdateMetaDataJson();
    std::cout << toUtf8(update->getTargetReleaseFamily()) << ", "
              << toUtf8(update->getTargetReleaseVersion()) << ", update level "
              << update->getTargetUpdateLevelForQorv() << '\n';

    MemoryParser truncated(u"truncated document", "{\"metadata\": ");
    truncated.parseUpdateMetaDataJson();
    return 1;
  } catch (const std::exception& failure) {
    std::cout << failure.what() << '\n';
    return 0;
  }
}
