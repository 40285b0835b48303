#include "answers/Answers.h"

#include <string_view>

namespace bench::answers {
namespace {

class Digest {
 public:
  void add(std::uint64_t number) noexcept {
    bits_ = (bits_ ^ number) * 0x9E3779B97F4A7C15U;
    bits_ ^= bits_ >> 29;
  }
  void add(std::int64_t number) noexcept { add(static_cast<std::uint64_t>(number)); }
  void add(std::u16string_view text) noexcept {
    add(std::uint64_t{text.size()});
    for (const char16_t unit : text) {
      add(std::uint64_t{unit});
    }
  }
  void add(const KeySet& keys) noexcept {
    add(std::uint64_t{keys.size()});
    for (const std::u16string& key : keys) {
      add(std::u16string_view(key));
    }
  }
  template <class First, class Second>
  void add(const std::pair<First, Second>& pair) noexcept {
    add(pair.first);
    add(pair.second);
  }
  template <class Mapped>
  void add(const std::map<std::u16string, Mapped>& map) noexcept {
    add(std::uint64_t{map.size()});
    for (const auto& [key, mapped] : map) {
      add(std::u16string_view(key));
      add(mapped);
    }
  }

  std::uint64_t bits() const noexcept { return bits_; }

 private:
  std::uint64_t bits_ = 0;
};

}  // namespace

std::size_t entriesOf(const Answers& answers) {
  std::size_t entries = answers.sizes.size();
  for (const auto& keysByCode : {&answers.toDelete, &answers.toExtract}) {
    for (const auto& product : *keysByCode) {
      entries += product.second.size();
    }
  }
  for (const auto& package : answers.files) {
    entries += package.second.first.size();
  }
  return entries;
}

std::uint64_t digestOf(const Answers& answers) {
  Digest digest;
  digest.add(answers.toDelete);
  digest.add(answers.toExtract);
  digest.add(answers.sizes);
  digest.add(answers.files);
  return digest.bits();
}

}  // namespace bench::answers
