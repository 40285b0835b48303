#include "json/TreeBuilder.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "foundation/core/large_pages.h"
#include "foundation/json/Storage.h"

namespace foundation::json {
namespace detail {

/// Storage of a whole value tree: the text that its strings refer into, and the nodes of its
/// containers, in blocks that are freed together. Values in it hold no references.
///
/// Blocks consist of units; nodes lie where Storage::of() finds this storage by their address.
class Tree final : public Storage {
 public:
  // cppcheck-suppress passedByValue ; it is moved into the tree
  explicit Tree(std::string text) noexcept : text_(std::move(text)) {}

  std::string_view text() const noexcept { return text_; }

  /// Memory for the nodes of a container, which lives as long as the tree: values or members.
  void* allocateNodes(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(end_ - position_)) {
      return allocateFromNewUnit(bytes);
    }
    return std::exchange(position_, position_ + bytes);
  }

  /// Returns the bytes of a string, which live as long as the tree.
  std::string_view store(std::string&& string) {
    const std::size_t size = string.size();
    if (size > kLargestPiece) {
      return storeLong(std::move(string));
    }
    if (size > static_cast<std::size_t>(end_ - position_)) {
      addUnit();
    }
    // From the other end, so that nodes stay aligned.
    end_ -= size;
    string.copy(end_, size);
    return {end_, size};
  }

  /// Gives back what was never needed of large pages. To be called when nothing is allocated any
  /// more.
  void finish() noexcept {
    if (blockBytes_ >= core::kLargePage) {
      core::discardPages(position_, static_cast<std::size_t>(end_ - position_));
      core::discardPages(nextUnit_, static_cast<std::size_t>(blockEnd_ - nextUnit_));
    }
  }

 private:
  static_assert(sizeof(Value) % kUnitAlignment == 0 && sizeof(Member) % kUnitAlignment == 0,
                "what follows nodes is aligned as they are");

  ~Tree() override = default;

  void dismantle(Storage*&) noexcept override { delete this; }

  std::string_view storeLong(std::string&& string);
  void* allocateFromNewUnit(std::size_t bytes);
  void addUnit();
  char* addBlock(std::size_t bytes);

  static char* beginUnit(char* unit, Storage* storage) noexcept {
    new (unit) NodeUnit{storage};
    return unit + sizeof(NodeUnit);
  }

  // What is larger has a block of its own, so that little of a unit stays unused.
  static constexpr std::size_t kLargestPiece = NodeUnit::kBytes / 2;
  // Blocks grow by this factor up to this size.
  static constexpr std::size_t kGrowth = 4;
  static constexpr std::size_t kLargestBlock = 2 * core::kLargePage;

  struct Delete {
    std::align_val_t alignment;
    void operator()(char* block) const noexcept { ::operator delete(block, alignment); }
  };

  std::string text_;
  std::vector<std::string> longStrings_;
  std::vector<std::unique_ptr<char, Delete>> blocks_;
  char* position_ = nullptr;  // what is free of the newest unit
  char* end_ = nullptr;
  char* nextUnit_ = nullptr;  // what is free behind it of the newest block of units
  char* blockEnd_ = nullptr;
  std::size_t blockBytes_ = 0;
};

std::string_view Tree::storeLong(std::string&& string) {
  const std::size_t size = string.size();
  if (string.capacity() / 2 <= size) {
    // Moving it leaves its bytes where they are.
    longStrings_.push_back(std::move(string));
    return longStrings_.back();
  }
  char* const copy = addBlock(size);
  string.copy(copy, size);
  return {copy, size};
}

void* Tree::allocateFromNewUnit(std::size_t bytes) {
  if (bytes > kLargestPiece) {
    // What remains of the newest unit stays in use.
    return beginUnit(addBlock(sizeof(NodeUnit) + bytes), this);
  }
  addUnit();
  return std::exchange(position_, position_ + bytes);
}

void Tree::addUnit() {
  if (nextUnit_ == blockEnd_) {
    const std::size_t bytes =
        std::min(kLargestBlock, std::max(NodeUnit::kBytes, blockBytes_ * kGrowth));
    nextUnit_ = addBlock(bytes);
    blockEnd_ = nextUnit_ + bytes;
    blockBytes_ = bytes;
  }
  position_ = beginUnit(nextUnit_, this);
  nextUnit_ += NodeUnit::kBytes;
  end_ = nextUnit_;
}

char* Tree::addBlock(std::size_t bytes) {
  // Large blocks are made of large pages, where the system has them.
  const auto alignment =
      static_cast<std::align_val_t>(bytes < core::kLargePage ? NodeUnit::kBytes : core::kLargePage);
  std::unique_ptr<char, Delete> block(static_cast<char*>(::operator new(bytes, alignment)),
                                      Delete{alignment});
  core::adviseLargePages(block.get(), bytes);
  blocks_.push_back(std::move(block));
  return blocks_.back().get();
}

}  // namespace detail

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
  // A copy of a value in the tree takes the reference, or the bytes of a single string, that it
  // needs to outlive this builder.
  const Value root(*stack_.begin());
  return Value(root);
}

}  // namespace foundation::json
