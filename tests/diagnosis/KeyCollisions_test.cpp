#include "diagnosis/KeyCollisions.h"

#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnosis/NameTable.h"
#include "diagnosis/SourceDocument.h"
#include "diagnosis/source/SourceTree.h"
#include "support/Effort.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceTree;
using Groups = std::set<std::set<std::size_t>>;  // nodes of packages by key

std::vector<KeyedComponent> componentsOf(const SourceDocument& document) {
  std::vector<KeyedComponent> components;
  const NameTable names(document, SourceTree::kRoot);
  for (const NameTable::Entry& entry : names.entries()) {
    components.push_back({entry.name, entry.key + 1});
  }
  return components;
}

Groups collisionsIn(const std::string& text) {
  const SourceTree tree(text);
  const SourceDocument document(tree);
  std::map<std::size_t, std::set<std::size_t>> groups;
  for (const CollidingPackage& package : findKeyCollisions(document, componentsOf(document))) {
    groups[package.group].insert(package.key);
  }
  Groups found;
  for (const auto& [group, packages] : groups) {
    found.insert(packages);
  }
  return found;
}

// Composes every key.
Groups plainCollisionsIn(const std::string& text) {
  const SourceTree tree(text);
  const SourceDocument document(tree);
  std::map<std::string, std::set<std::size_t>> packages;
  for (const KeyedComponent& component : componentsOf(document)) {
    document.forEachMember(component.packages, [&](std::size_t key) {
      packages[std::string(component.name) + '_' + std::string(document.nameOf(key))].insert(key);
    });
  }
  Groups found;
  for (const auto& [key, nodes] : packages) {
    if (nodes.size() > 1) {
      found.insert(nodes);
    }
  }
  return found;
}

// Distinct names of a few letters, as members.
template <class Value>
std::string randomObject(std::mt19937& random, std::size_t most, Value value) {
  std::set<std::string> names;
  for (std::size_t count = random() % (most + 1); count != 0; --count) {
    std::string name;
    for (std::size_t length = random() % 6; length != 0; --length) {
      name += "aaaa____^`"[random() % 10];
    }
    names.insert(name);
  }
  std::string members;
  for (const std::string& name : names) {
    members.append(members.empty() ? "" : ",").append('"' + name + "\":" + value());
  }
  return '{' + members + '}';
}

TEST(KeyCollisions, AreThoseOfAllComposedKeys) {
  std::mt19937 random(1);
  std::size_t collisions = 0;
  constexpr std::size_t kRounds = test_support::kFullEffort ? 2000 : 300;
  for (std::size_t round = 0; round != kRounds; ++round) {
    const std::string text = randomObject(random, 20, [&random] {
      return randomObject(random, 20, [] { return std::string("1"); });
    });
    const Groups expected = plainCollisionsIn(text);
    ASSERT_EQ(collisionsIn(text), expected) << text;
    collisions += expected.size();
  }
  EXPECT_GT(collisions, kRounds / 2);
}

TEST(KeyCollisions, AreFoundInComponentsWhoseNamesAreReadAsEqual) {
  EXPECT_EQ(collisionsIn("{\"\xFE\":{\"b_c\":1},\"\xFF\":{\"b_d\":1},"
                         "\"\xFF_b\":{\"c\":1},\"\xFE_b\":{\"d\":1}}"),
            (Groups{{3, 11}, {7, 15}}));
}

TEST(SourceDocument, DecodesANameOnce) {
  const std::string text = "[\"\\u0061\",\"\xFF\",\"plain\"]";
  const SourceTree tree(text);
  const SourceDocument document(tree);
  const char* const names[] = {"a", "\xEF\xBF\xBD", "plain"};
  const char* const bytes[] = {"a", "\xFF", "plain"};
  for (std::size_t node = 1; node != 4; ++node) {
    EXPECT_EQ(document.nameOf(node), names[node - 1]);
    EXPECT_EQ(document.bytesOf(node), bytes[node - 1]);
    EXPECT_EQ(document.nameOf(node).data(), document.nameOf(node).data());
    EXPECT_EQ(document.bytesOf(node).data(), document.bytesOf(node).data());
  }
}

}  // namespace
}  // namespace install::update_metadata_parser::diagnosis
