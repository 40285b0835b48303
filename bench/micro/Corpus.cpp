#include "micro/Corpus.h"

#include <malloc.h>

#include <utility>

#include "generate/Document.h"
#include "generate/Presets.h"
#include "peers/IdentityParser.h"

namespace bench::micro {
namespace {

using install::update_metadata_parser::UpdateMetaData;
using install::update_metadata_parser::UpdateMetaDataHandler;

std::string textOf(const std::string& preset) {
  return generate::makeDocument(generate::findPreset(preset)->shape);
}

// Reads its text from memory.
class TextParser : public peers::IdentityParser {
 public:
  explicit TextParser(std::string text) : IdentityParser(u""), text_(std::move(text)) {}

  std::string readFile(const std::u16string& /*path*/) override { return std::move(text_); }

 private:
  std::string text_;
};

class RecordingHandler : public UpdateMetaDataHandler {
 public:
  explicit RecordingHandler(ProductCalls& calls) : calls_(calls) {}

  void setProductDeltaData(const std::u16string& name,
                           const std::vector<std::u16string>& compsToDelete,
                           const std::vector<std::u16string>& compsToExtract,
                           const PkgsToDelete& pkgsToDelete,
                           const PkgsToExtract& pkgsToExtract) const override {
    if (calls_.calls.empty()) {
      calls_.pkgsToDelete = pkgsToDelete;
      calls_.pkgsToExtract = pkgsToExtract;
    }
    calls_.calls.push_back({name, compsToDelete, compsToExtract});
    calls_.packageElements +=
        packagesOf(compsToDelete, pkgsToDelete) + packagesOf(compsToExtract, pkgsToExtract);
  }

 private:
  template <class Table>
  static std::size_t packagesOf(const std::vector<std::u16string>& names, const Table& table) {
    std::size_t packages = 0;
    for (const std::u16string& name : names) {
      const auto found = table.find(name);
      packages += found == table.end() ? 0 : found->second.size();
    }
    return packages;
  }

  ProductCalls& calls_;
};

class RecordingParser : public TextParser {
 public:
  RecordingParser(std::string text, ProductCalls& calls)
      : TextParser(std::move(text)), calls_(calls) {}

  std::shared_ptr<UpdateMetaDataHandler> getUpdateMetaDataHandler() const override {
    return std::make_shared<RecordingHandler>(calls_);
  }

 private:
  ProductCalls& calls_;
};

}  // namespace

std::shared_ptr<UpdateMetaData> loadPreset(const std::string& preset) {
  return TextParser(textOf(preset)).parseUpdateMetaDataJson();
}

ProductCalls productCallsOf(const std::string& preset) {
  ProductCalls calls;
  RecordingParser(textOf(preset), calls).parseUpdateMetaDataJson();
  return calls;
}

void forgetFreeMemory() {
  malloc_trim(0);
}

}  // namespace bench::micro
