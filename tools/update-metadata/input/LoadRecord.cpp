#include "input/LoadRecord.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "input/TextParser.h"
#include "install/update_metadata_parser/UpdateMetaDataHandler.h"

namespace update_metadata_tool::input {
namespace {

using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::update_metadata_parser::UpdateMetaDataHandler;
using install::update_metadata_parser::UpdatePkgData;

/// Arguments one after the other. Strings and lists follow their lengths, so two different
/// sequences of the same types are never written alike.
class Record {
 public:
  void add(std::int64_t number) {
    for (int shift = 48; shift >= 0; shift -= 16) {
      units_ += static_cast<char16_t>(static_cast<std::uint64_t>(number) >> shift);
    }
  }

  void add(const std::u16string& string) {
    addLength(string.size());
    units_ += string;
  }

  void add(const UpdatePkgData& pkg) {
    add(pkg.name);
    add(pkg.size);
    add(pkg.uncompressedBytes);
  }

  template <class Element>
  void add(const std::vector<Element>& list) {
    addLength(list.size());
    for (const Element& element : list) {
      add(element);
    }
  }

  template <class Value>
  void add(const std::map<std::u16string, Value>& table) {
    addLength(table.size());
    for (const auto& [key, value] : table) {
      add(key);
      add(value);
    }
  }

  void addLength(std::size_t length) { add(static_cast<std::int64_t>(length)); }

  std::u16string take() { return std::move(units_); }

 private:
  std::u16string units_;
};

/// The kinds of entries in a record. An entry is its number, followed by the arguments.
enum class Call : std::int64_t {
  kSetBaseReleaseFamily,
  kSetTargetReleaseFamily,
  kSetBaseReleaseVersion,
  kSetTargetReleaseVersion,
  kSetTargetUpdateLevelForQorv,
  kSetMetaDataArch,
  kSetProductDeltaData,
  kCreatePkgDataWithFilesToDelete,
  kSetComponentDataWithFilesToDelete,
};

/// What is recorded.
enum class Detail { kEverything, kAnswers };

/// The components of a list as answers see them: each once, where it is named first.
std::vector<std::u16string> withoutRepetitions(const std::vector<std::u16string>& components) {
  std::set<std::u16string> known;
  std::vector<std::u16string> once;
  for (const std::u16string& component : components) {
    if (known.insert(component).second) {
      once.push_back(component);
    }
  }
  return once;
}

/// Records the calls that it receives instead of building a model.
class RecordingHandler : public UpdateMetaDataHandler {
 public:
  explicit RecordingHandler(Detail detail) : detail_(detail) {}

  Record& record() { return record_; }

  void setBaseReleaseFamily(const std::u16string& family) override {
    write(Call::kSetBaseReleaseFamily, family);
  }

  void setTargetReleaseFamily(const std::u16string& family) override {
    write(Call::kSetTargetReleaseFamily, family);
  }

  void setBaseReleaseVersion(const std::u16string& version) const override {
    write(Call::kSetBaseReleaseVersion, version);
  }

  void setTargetReleaseVersion(const std::u16string& version) const override {
    write(Call::kSetTargetReleaseVersion, version);
  }

  void setTargetUpdateLevelForQorv(int level) const override {
    // Only the low eight bits are kept.
    write(Call::kSetTargetUpdateLevelForQorv, detail_ == Detail::kAnswers ? level & 0xFF : level);
  }

  void setMetaDataArch(const std::u16string& arch) const override {
    write(Call::kSetMetaDataArch, arch);
  }

  // The tables are the same for every product and are recorded once, after the last call.
  void setProductDeltaData(const std::u16string& name,
                           const std::vector<std::u16string>& compsToDelete,
                           const std::vector<std::u16string>& compsToExtract,
                           const PkgsToDelete& /*pkgsToDelete*/,
                           const PkgsToExtract& /*pkgsToExtract*/) const override {
    if (detail_ == Detail::kAnswers) {
      write(Call::kSetProductDeltaData, name, withoutRepetitions(compsToDelete),
            withoutRepetitions(compsToExtract));
    } else {
      write(Call::kSetProductDeltaData, name, compsToDelete, compsToExtract);
    }
  }

  PkgDataWithFilesToDelete createPkgDataWithFilesToDelete(
      const std::u16string& name, std::int64_t size,
      const std::vector<std::u16string>& files) const override {
    write(Call::kCreatePkgDataWithFilesToDelete, name, size, files);
    return {};
  }

  // The packages are those that were created since the previous component.
  void setComponentDataWithFilesToDelete(
      const std::u16string& name,
      const std::vector<PkgDataWithFilesToDelete>& /*pkgs*/) const override {
    write(Call::kSetComponentDataWithFilesToDelete, name);
  }

 private:
  template <class... Arguments>
  void write(Call call, const Arguments&... arguments) const {
    record_.add(static_cast<std::int64_t>(call));
    (record_.add(arguments), ...);
  }

  Detail detail_;
  mutable Record record_;
};

class RecordingParser : public TextParser {
 public:
  using TextParser::TextParser;

  void addTables(Record& record) const {
    record.add(componentPkgsToDelete);
    record.add(componentPkgsToExtract);
  }
};

std::u16string record(const std::u16string& path, const std::string& text, Detail detail) {
  const auto handler = std::make_shared<RecordingHandler>(detail);
  RecordingParser parser(path, text, handler);
  parser.parseUpdateMetaDataJson();
  parser.addTables(handler->record());
  return handler->record().take();
}

}  // namespace

std::u16string recordLoad(const std::u16string& path, const std::string& text) {
  return record(path, text, Detail::kEverything);
}

std::u16string recordAnswers(const std::u16string& path, const std::string& text) {
  return record(path, text, Detail::kAnswers);
}

}  // namespace update_metadata_tool::input
