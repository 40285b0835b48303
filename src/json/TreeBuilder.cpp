#include "json/TreeBuilder.h"

#include <new>
#include <utility>

#include "json/Tree.h"

namespace foundation::json {

using detail::Rep;

TreeBuilder::TreeBuilder(std::string text) : tree_(new detail::Tree(std::move(text))) {}

TreeBuilder::~TreeBuilder() {
  tree_->release();
}

std::string_view TreeBuilder::text() const noexcept {
  return tree_->text();
}

void TreeBuilder::addString(std::string&& string) {
  addStringOfText(tree_->store(std::move(string)));
}

void TreeBuilder::closeArray() {
  const std::size_t size = stack_.size() - open_ - 1;
  Rep::Content content{};
  if (size != 0) {
    void* const memory = tree_->allocateNodes(size * sizeof(Value));
    auto* element = static_cast<Value*>(memory);
    for (const Rep* slot = stack_.begin() + open_ + 1; slot != stack_.end(); ++slot) {
      new (element++) Value(*slot);
    }
    content.elements = static_cast<const Value*>(memory);
  }
  closeWith(traits<Array>::index, size, content);
}

void TreeBuilder::closeObject() {
  constexpr std::size_t kSlotsOfMember = detail::MemberOrder::kSlotsOfMember;
  const Rep* const members = stack_.begin() + open_ + 1;
  const std::size_t count = static_cast<std::size_t>(stack_.end() - members) / kSlotsOfMember;
  order_.find(members, count);
  const std::size_t size = order_.size();
  Rep::Content content{};
  if (size != 0) {
    void* const memory = tree_->allocateNodes(size * sizeof(Member));
    auto* node = static_cast<Member*>(memory);
    for (std::size_t i = 0; i != size; ++i) {
      const Rep* const member = members + order_[i] * kSlotsOfMember;
      new (node++)
          Member{std::string_view(member->content.characters, member->size()), Value(member[1])};
    }
    content.members = static_cast<const Member*>(memory);
  }
  closeWith(traits<Object>::index, size, content);
}

void TreeBuilder::closeWith(std::size_t index, std::size_t size, Rep::Content content) noexcept {
  Rep& mark = stack_[open_];
  const auto outer = static_cast<std::size_t>(mark.content.unsignedInteger);
  mark = {content, Rep::tagOf(index, size, false)};
  stack_.truncate(open_ + 1);
  open_ = outer;
}

Value TreeBuilder::finish() {
  tree_->finish();
  // Copying a value in the tree adds the reference, or copies the bytes of a single string, so that
  // the value outlives this builder.
  const Value root(*stack_.begin());
  return Value(root);
}

}  // namespace foundation::json
