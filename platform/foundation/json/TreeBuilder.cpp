#include "foundation/json/TreeBuilder.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "foundation/json/Storage.h"

namespace foundation::json {
namespace detail {

/// Storage of a whole value tree: the text that its strings refer into, and the nodes of its
/// containers, in blocks that are freed together. Values in it hold no references.
class Tree final : public Storage {
 public:
  explicit Tree(std::string text) noexcept : text_(std::move(text)) {}

  std::string_view text() const noexcept { return text_; }

  /// Memory for `bytes`, which lives as long as the tree.
  char* allocate(std::size_t bytes) {
    bytes = (bytes + alignof(Value) - 1) & ~(alignof(Value) - 1);
    if (bytes > left_) {
      return allocateFromNewBlock(bytes);
    }
    left_ -= bytes;
    return std::exchange(position_, position_ + bytes);
  }

  /// Memory for the nodes of a container: the pointer to the storage lies directly before them.
  void* allocateNodes(std::size_t bytes) {
    auto* const link = new (allocate(sizeof(Storage*) + bytes)) Storage*(this);
    return link + 1;
  }

 private:
  ~Tree() override = default;

  void dismantle(Storage*&) noexcept override { delete this; }

  char* allocateFromNewBlock(std::size_t bytes);

  char* addBlock(std::size_t bytes) {
    std::unique_ptr<char[]> block(new char[bytes]);
    blocks_.push_back(std::move(block));
    return blocks_.back().get();
  }

  static constexpr std::size_t kFirstBlock = 1024;
  static constexpr std::size_t kLargestBlock = std::size_t{1} << 20;

  std::string text_;
  std::vector<std::unique_ptr<char[]>> blocks_;
  char* position_ = nullptr;  // in the newest block of ordinary size
  std::size_t left_ = 0;
  std::size_t blockSize_ = kFirstBlock;
};

char* Tree::allocateFromNewBlock(std::size_t bytes) {
  if (bytes > blockSize_ / 4) {
    // A block of its own leaves the rest of the newest ordinary block in use.
    return addBlock(bytes);
  }
  char* const block = addBlock(blockSize_);
  position_ = block + bytes;
  left_ = blockSize_ - bytes;
  blockSize_ = std::min(kLargestBlock, blockSize_ * 2);
  return block;
}

}  // namespace detail

namespace {

using detail::Rep;

// Objects of few members are put in order without the memory that a merge takes.
constexpr std::size_t kFewMembers = 16;

bool keysAscend(const Member* begin, const Member* end) noexcept {
  return std::adjacent_find(begin, end, [](const Member& left, const Member& right) {
           return !(left.first < right.first);
         }) == end;
}

void insertionSort(Member* begin, Member* end) noexcept {
  for (Member* next = begin + 1; next < end; ++next) {
    Member* place = std::upper_bound(
        begin, next, next->first,
        [](std::string_view key, const Member& member) { return key < member.first; });
    std::rotate(place, next, next + 1);
  }
}

// Orders members by key and drops those whose key came before; returns the new end.
Member* orderMembers(Member* begin, Member* end) {
  if (static_cast<std::size_t>(end - begin) <= kFewMembers) {
    insertionSort(begin, end);
  } else {
    std::stable_sort(begin, end, [](const Member& left, const Member& right) {
      return left.first < right.first;
    });
  }
  return std::unique(begin, end, [](const Member& left, const Member& right) {
    return left.first == right.first;
  });
}

}  // namespace

TreeBuilder::TreeBuilder(std::string text) : tree_(new detail::Tree(std::move(text))) {}

TreeBuilder::~TreeBuilder() {
  tree_->release();
}

std::string_view TreeBuilder::text() const noexcept {
  return tree_->text();
}

void TreeBuilder::addString(std::string_view string) {
  char* const copy = tree_->allocate(string.size());
  if (!string.empty()) {
    std::memcpy(copy, string.data(), string.size());
  }
  addStringOfText({copy, string.size()});
}

void TreeBuilder::open() {
  const std::size_t mark = stack_.size();
  Rep::Content outer{};
  outer.unsignedInteger = open_;
  push(traits<Undefined>::index, 0, outer);
  open_ = mark;
}

void TreeBuilder::closeArray() {
  const std::size_t size = stack_.size() - open_ - 1;
  Rep::Content content{};
  if (size != 0) {
    void* const memory = tree_->allocateNodes(size * sizeof(Value));
    auto* element = static_cast<Value*>(memory);
    for (std::size_t i = open_ + 1; i != stack_.size(); ++i) {
      new (element++) Value(stack_[i]);
    }
    content.elements = static_cast<const Value*>(memory);
  }
  closeWith(traits<Array>::index, size, content);
}

void TreeBuilder::closeObject() {
  std::size_t size = (stack_.size() - open_ - 1) / 2;
  Rep::Content content{};
  if (size != 0) {
    void* const memory = tree_->allocateNodes(size * sizeof(Member));
    auto* const members = static_cast<Member*>(memory);
    Member* end = members;
    for (std::size_t i = open_ + 1; i != stack_.size(); i += 2) {
      const Rep& key = stack_[i];
      new (end++)
          Member{std::string_view(key.content.characters, key.size()), Value(stack_[i + 1])};
    }
    if (!keysAscend(members, end)) {
      size = static_cast<std::size_t>(orderMembers(members, end) - members);
    }
    content.members = members;
  }
  closeWith(traits<Object>::index, size, content);
}

void TreeBuilder::closeWith(std::size_t index, std::size_t size, Rep::Content content) noexcept {
  Rep& mark = stack_[open_];
  const auto outer = static_cast<std::size_t>(mark.content.unsignedInteger);
  mark = {content, Rep::tagOf(index, size, false)};
  stack_.resize(open_ + 1);
  open_ = outer;
}

Value TreeBuilder::finish() {
  // A copy of a value in the tree takes the reference, or the bytes of a single string, that it
  // needs to outlive this builder.
  const Value root(stack_.front());
  return Value(root);
}

}  // namespace foundation::json
