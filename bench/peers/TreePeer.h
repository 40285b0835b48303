#pragma once

#include <cstdint>
#include <string_view>

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

/// Converts a number to a byte count, truncating toward zero.
inline std::int64_t toBytes(double number) {
  return static_cast<std::int64_t>(number);
}

/// Passes the sections of a document to `answers`: components first, then products, then files.
template <class Tree, class Answers>
void feed(const typename Tree::Value& document, Answers& answers) {
  using Value = typename Tree::Value;
  Tree::forEachMember(
      Tree::member(document, "components"), [&](std::string_view name, const Value& component) {
        answers.beginComponent(name);
        Tree::forEachMember(
            Tree::member(component, "delete"),
            [&](std::string_view package, const Value&) { answers.addPackageToDelete(package); });
        Tree::forEachMember(
            Tree::member(component, "extract"), [&](std::string_view package, const Value& value) {
              const std::int64_t size = toBytes(Tree::number(Tree::member(value, "size")));
              answers.addPackageToExtract(
                  package, size, toBytes(Tree::number(Tree::member(value, "uncompressedBytes"))));
            });
        answers.endComponent();
      });
  Tree::forEachMember(
      Tree::member(document, "products"), [&](std::string_view name, const Value& product) {
        answers.beginProduct(name);
        Tree::forEachElement(Tree::member(product, "delete"), [&](const Value& component) {
          answers.addComponentToDelete(Tree::text(component));
        });
        Tree::forEachElement(Tree::member(product, "extract"), [&](const Value& component) {
          answers.addComponentToExtract(Tree::text(component));
        });
        answers.endProduct();
      });
  Tree::forEachMember(
      Tree::member(document, "componentsWithFilesDeleted"),
      [&](std::string_view name, const Value& component) {
        answers.beginComponentWithFiles(name);
        Tree::forEachMember(component, [&](std::string_view package, const Value& value) {
          answers.beginPackageWithFiles(package,
                                        toBytes(Tree::number(Tree::member(value, "size"))));
          Tree::forEachElement(Tree::member(value, "files"),
                               [&](const Value& file) { answers.addFile(Tree::text(file)); });
          answers.endPackageWithFiles();
        });
      });
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
