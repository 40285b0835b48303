// Reads what the facade does not provide: keep_the_handler DOCUMENT
//
// A derived handler records the architecture as it is read, and a derived parser loads the document
// into such a handler and keeps it.

#include <exception>
#include <iostream>
#include <memory>
#include <string>

#include "install/update_metadata_parser/UpdateMetaData.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"
#include "install/update_metadata_parser/UpdateMetaDataJsonParser.h"
#include "text.h"

namespace {

using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdateMetaDataJsonParser;

class ArchitectureHandler : public UpdateMetaDataHandler {
 public:
  void setMetaDataArch(const std::u16string& arch) const override {
    UpdateMetaDataHandler::setMetaDataArch(arch);
    architecture_ = arch;
  }

  std::u16string getArchitecture() const { return architecture_; }

 private:
  mutable std::u16string architecture_;  // the setters are const: they usually fill the model
};

class ArchitectureParser : public UpdateMetaDataJsonParser {
 public:
  using UpdateMetaDataJsonParser::UpdateMetaDataJsonParser;

  // Makes the handler for each load. The parser stores the returned handler in `handler`.
  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<ArchitectureHandler>();
  }

  std::shared_ptr<const ArchitectureHandler> getFilledHandler() const {
    return std::static_pointer_cast<const ArchitectureHandler>(handler);
  }
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: keep_the_handler DOCUMENT\n";
    return 2;
  }
  try {
    ArchitectureParser parser(toUtf16(argv[1]));
    const auto update = parser.parseUpdateMetaDataJson();
    std::cout << toUtf8(update->getTargetReleaseVersion()) << " for "
              << toUtf8(parser.getFilledHandler()->getArchitecture()) << '\n';
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
