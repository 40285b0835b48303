#include "support/ModelDump.h"

#include <cstddef>
#include <string>

#include "install/datamodels/common/Release.h"
#include "install/datamodels/product_update/ReleaseData.h"
#include "support/VisibleText.h"

namespace test_support {
namespace {

using install::datamodels::common::Release;
using install::datamodels::product_update::ComponentDataWithFilesToDelete;
using install::datamodels::product_update::ComponentDeltaData;
using install::datamodels::product_update::PkgDataWithFilesToDelete;
using install::datamodels::product_update::PkgDeltaData;
using install::datamodels::product_update::ProductDeltaData;
using install::datamodels::product_update::ProductUpdateMetaData;
using install::datamodels::product_update::ReleaseData;

class Writer {
 public:
  void write(const ProductUpdateMetaData& root) {
    write(root->getReleaseData());
    writeAll(root->getProductsDeltaData(), "product");
    writeAll(root->getCompsWithFilesToDelete(), "component with files to delete");
  }

  void write(const ProductDeltaData& product, const std::string& kind) {
    line(kind + ' ' + visible(product->getName()));
    const Level level(*this);
    writeAll(product->getCompsToDelete(), "component to delete");
    writeAll(product->getCompsToExtract(), "component to extract");
  }

  void write(const ComponentDeltaData& component, const std::string& kind) {
    line(kind + ' ' + visible(component->getName()));
    const Level level(*this);
    writeAll(component->getPkgsToDelete(), "package to delete");
    writeAll(component->getPkgsToExtract(), "package to extract");
  }

  void write(const PkgDeltaData& pkg, const std::string& kind) {
    line(kind + ' ' + visible(pkg->getName()) + ": size " + std::to_string(pkg->getSize()) +
         ", unpacked " + std::to_string(pkg->getUncompressedBytes()));
  }

  void write(const ComponentDataWithFilesToDelete& component, const std::string& kind) {
    line(kind + ' ' + visible(component->getName()));
    const Level level(*this);
    writeAll(component->getPkgsWithFilesToDelete(), "package");
  }

  void write(const PkgDataWithFilesToDelete& pkg, const std::string& kind) {
    line(kind + ' ' + visible(pkg->getName()) + ": size " + std::to_string(pkg->getSize()));
    const Level level(*this);
    for (const std::u16string file : pkg->getFilesToDelete()) {
      line("file " + visible(file));
    }
  }

  const std::string& text() const { return text_; }

 private:
  /// Adds one level of indentation until the end of its scope.
  class Level {
   public:
    explicit Level(Writer& writer) : writer_(writer) { writer_.indentation_ += "  "; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { writer_.indentation_.resize(writer_.indentation_.size() - 2); }

   private:
    Writer& writer_;
  };

  void line(const std::string& content) { text_ += indentation_ + content + '\n'; }

  void write(const ReleaseData& releaseData) {
    if (!releaseData) {
      line("release data: none");
      return;
    }
    line("release data");
    const Level level(*this);
    line("architecture " + visible(releaseData->getMetaDataArch()));
    write(releaseData->getBaseRelease(), "base release: ");
    write(releaseData->getTargetRelease(), "target release: ");
  }

  void write(const Release& release, const std::string& kind) {
    line(!release ? kind + "none"
                  : kind + "family " + visible(release->getReleaseFamily()) + ", version " +
                        visible(release->getVersion()) + ", level " +
                        std::to_string(release->getUpdateLevel()));
  }

  template <class List>
  void writeAll(const List& list, const std::string& kind) {
    for (std::size_t index = 0; index < list.size(); ++index) {
      write(list[index], kind);
    }
  }

  std::string text_;
  std::string indentation_;
};

template <class Element>
std::string dumpOne(const Element& element, const std::string& kind) {
  Writer writer;
  writer.write(element, kind);
  return writer.text();
}

}  // namespace

std::string dump(const ProductUpdateMetaData& root) {
  Writer writer;
  writer.write(root);
  return writer.text();
}

std::string dump(const ProductDeltaData& product) {
  return dumpOne(product, "product");
}

std::string dump(const ComponentDeltaData& component) {
  return dumpOne(component, "component");
}

std::string dump(const PkgDeltaData& pkg) {
  return dumpOne(pkg, "package");
}

std::string dump(const ComponentDataWithFilesToDelete& component) {
  return dumpOne(component, "component with files to delete");
}

std::string dump(const PkgDataWithFilesToDelete& pkg) {
  return dumpOne(pkg, "package");
}

}  // namespace test_support
