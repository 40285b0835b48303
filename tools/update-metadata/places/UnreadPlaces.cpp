#include "places/UnreadPlaces.h"

#include <cstddef>
#include <string_view>

#include "diagnosis/NameTable.h"
#include "output/Text.h"

namespace update_metadata_tool::places {
namespace {

using install::update_metadata_parser::diagnosis::kNever;
using install::update_metadata_parser::diagnosis::source::SourceKind;
using install::update_metadata_parser::diagnosis::source::SourceTree;

class UnreadPlaces {
 public:
  UnreadPlaces(const ReadDocument& read, const DescribedComponents& components,
               const ProductLookUp& products, const VisitPlace& visit)
      : read_(read), components_(components), products_(products), visit_(visit) {}

  void walk() {
    visitUnreadComponents();
    visitUnreadProducts();
    visitUnreadFiles();
  }

 private:
  // Calls `visit(object, isIgnored)` for each value of a section.
  template <class Visit>
  void forEachSection(std::string_view name, Visit visit) const {
    for (const std::size_t object :
         read_.writtenMembers(SourceTree::kRoot, name, SourceKind::kObject)) {
      visit(object, read_.document.isIgnored(object - 1));
    }
  }

  // Calls `visit(key, isIgnored)` for each member, if the value is an object.
  template <class Visit>
  void forEachWritten(std::size_t object, bool isIgnored, Visit visit) const {
    if (read_.document.isA(SourceKind::kObject, object)) {
      read_.document.forEachWrittenMember(
          object, [&](std::size_t key) { visit(key, isIgnored || read_.document.isIgnored(key)); });
    }
  }

  void visitUnreadComponents() {
    forEachSection("components", [&](std::size_t section, bool isSectionIgnored) {
      forEachWritten(section, isSectionIgnored, [&](std::size_t component, bool isIgnored) {
        for (const Side side : kSidesOfProducts) {
          for (const std::size_t object :
               read_.writtenMembers(component + 1, nameOf(side), SourceKind::kObject)) {
            visitUnreadPackages(side, component, object,
                                isIgnored || read_.document.isIgnored(object - 1));
          }
        }
      });
    });
  }

  void visitUnreadPackages(Side side, std::size_t component, std::size_t object, bool isIgnored) {
    const std::string_view name = read_.document.nameOf(component);
    const std::size_t described = isIgnored ? kNever : components_.find(name);
    const bool isOther =
        described != kNever &&
        components_.all()[described].objects[static_cast<std::size_t>(side)] != object;
    forEachWritten(object, isIgnored, [&](std::size_t key, bool isPackageIgnored) {
      if (isPackageIgnored || isOther) {
        visitUnread(side, name, key, isPackageIgnored);
      }
    });
  }

  void visitUnread(Side side, std::string_view component, std::size_t key, bool isIgnored) {
    Place place = placeOf(side, component);
    place.verdicts = verdictsOf(side, isIgnored ? Use::kRepeatedKey : Use::kRepeatedComponent);
    read_.setPackage(read_.package(key, side), place);
    visit_(place);
  }

  void visitUnreadProducts() {
    forEachSection("products", [&](std::size_t section, bool isSectionIgnored) {
      forEachWritten(section, isSectionIgnored, [&](std::size_t product, bool isIgnored) {
        for (const Side side : kSidesOfProducts) {
          for (const std::size_t list :
               read_.writtenMembers(product + 1, nameOf(side), SourceKind::kArray)) {
            if (isIgnored || read_.document.isIgnored(list - 1)) {
              visitUnreadNamings(side, product, list);
            }
          }
        }
      });
    });
  }

  void visitUnreadNamings(Side side, std::size_t product, std::size_t list) {
    const std::string_view name = read_.document.nameOf(product);
    const ProductOfPlace shown = products_.show(name, products_.baseCodeOf(output::toUtf16(name)));
    read_.document.forEachElement(list, [&](std::size_t element) {
      if (!read_.document.isA(SourceKind::kString, element)) {
        return;
      }
      Place place = read_.naming(side, shown, element);
      place.verdicts = verdictsOf(side, Use::kRepeatedKey);
      const std::size_t component = components_.find(place.component);
      if (component == kNever) {
        visit_(place);
        return;
      }
      for (const NamedPackage& package :
           components_.all()[component].packages[static_cast<std::size_t>(side)]) {
        read_.setPackage(package, place);
        visit_(place);
      }
    });
  }

  void visitUnreadFiles() {
    forEachSection("componentsWithFilesDeleted", [&](std::size_t section, bool isSectionIgnored) {
      forEachWritten(section, isSectionIgnored, [&](std::size_t component, bool isIgnored) {
        forEachWritten(component + 1, isIgnored, [&](std::size_t key, bool isPackageIgnored) {
          if (isPackageIgnored) {
            visitUnread(Side::kFiles, read_.document.nameOf(component), key, true);
          }
        });
      });
    });
  }

  const ReadDocument& read_;
  const DescribedComponents& components_;
  const ProductLookUp& products_;
  const VisitPlace& visit_;
};

}  // namespace

void forEachUnreadPlace(const ReadDocument& read, const DescribedComponents& components,
                        const ProductLookUp& products, const VisitPlace& visit) {
  UnreadPlaces(read, components, products, visit).walk();
}

}  // namespace update_metadata_tool::places
