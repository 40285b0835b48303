#pragma once

#include <cstdint>
#include <string_view>

#include "answers/Answers.h"
#include "answers/FlatDocument.h"
#include "peers/Census.h"

namespace bench::peers {

/// The kinds of JSON values that a census distinguishes.
enum class Kind { literal, number, text, array, object };

// The code below serves all libraries that build a tree of values. `Tree` adapts one of them:
//
//     using Value = ...;                                    one value, or a reference to one
//     Kind kind(const Value&);
//     std::string_view text(const Value&);                  of a string
//     double number(const Value&);                          of any number
//     Value (or a reference) member(const Value&, const char* key);   of an object
//     void forEachMember(const Value&, f(std::string_view key, const Value&));
//     void forEachElement(const Value&, f(const Value&));

/// One way from a decoded document to the answers.
using BuildAnswers = answers::Answers (*)(answers::FlatDocument document);

/// Converts a number to a byte count, truncating toward zero.
inline std::int64_t toBytes(double number) {
  return static_cast<std::int64_t>(number);
}

/// Reads the sections of a document.
template <class Tree>
answers::FlatDocument flatDocumentOf(const typename Tree::Value& document) {
  using Value = typename Tree::Value;
  using answers::FlatDocument;
  using answers::rangeOf;
  FlatDocument flat;
  Tree::forEachMember(Tree::member(document, "components"), [&](std::string_view name,
                                                                const Value& component) {
    FlatDocument::Component row;
    row.name = name;
    row.toDelete = rangeOf(flat.packages, [&] {
      Tree::forEachMember(Tree::member(component, "delete"),
                          [&](std::string_view package, const Value&) {
                            flat.packages.push_back({package, 0, 0});
                          });
    });
    row.toExtract = rangeOf(flat.packages, [&] {
      Tree::forEachMember(Tree::member(component, "extract"), [&](std::string_view package,
                                                                  const Value& value) {
        flat.packages.push_back({package, toBytes(Tree::number(Tree::member(value, "size"))),
                                 toBytes(Tree::number(Tree::member(value, "uncompressedBytes")))});
      });
    });
    flat.components.push_back(row);
  });
  const auto namingsIn = [&flat](const Value& list) {
    return rangeOf(flat.namings, [&] {
      Tree::forEachElement(
          list, [&](const Value& component) { flat.namings.push_back(Tree::text(component)); });
    });
  };
  Tree::forEachMember(Tree::member(document, "products"),
                      [&](std::string_view name, const Value& product) {
                        FlatDocument::Product row;
                        row.name = name;
                        row.toDelete = namingsIn(Tree::member(product, "delete"));
                        row.toExtract = namingsIn(Tree::member(product, "extract"));
                        flat.products.push_back(row);
                      });
  const auto filesIn = [&flat](const Value& list) {
    return rangeOf(flat.files, [&] {
      Tree::forEachElement(list,
                           [&](const Value& file) { flat.files.push_back(Tree::text(file)); });
    });
  };
  Tree::forEachMember(
      Tree::member(document, "componentsWithFilesDeleted"),
      [&](std::string_view name, const Value& component) {
        const answers::Range packages = rangeOf(flat.packagesWithFiles, [&] {
          Tree::forEachMember(component, [&](std::string_view package, const Value& value) {
            flat.packagesWithFiles.push_back({package,
                                              toBytes(Tree::number(Tree::member(value, "size"))),
                                              filesIn(Tree::member(value, "files"))});
          });
        });
        flat.componentsWithFiles.push_back({name, packages});
      });
  return flat;
}

/// Counts `value` and all values below it.
template <class Tree>
void count(const typename Tree::Value& value, Census& census) {
  using Value = typename Tree::Value;
  census.addValue();
  switch (Tree::kind(value)) {
    case Kind::literal:
      break;
    case Kind::number:
      census.addNumber(Tree::number(value));
      break;
    case Kind::text:
      census.addText(Tree::text(value));
      break;
    case Kind::array:
      Tree::forEachElement(value, [&](const Value& element) { count<Tree>(element, census); });
      break;
    case Kind::object:
      Tree::forEachMember(value, [&](std::string_view key, const Value& member) {
        census.addKey(key);
        count<Tree>(member, census);
      });
      break;
  }
}

/// The census of a whole tree as one number.
template <class Tree>
std::uint64_t digestOf(const typename Tree::Value& value) {
  Census census;
  count<Tree>(value, census);
  return census.digest();
}

}  // namespace bench::peers
