#include "reader/DocumentFile.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ios>
#include <new>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace install::update_metadata_parser {
namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

// The bytes of a stream from any offset, up to three megabytes.
std::string_view bytesFrom(std::size_t offset) {
  constexpr std::size_t kPeriod = 251;
  static const std::string pattern = [] {
    std::string bytes;
    for (std::size_t place = 0; place != 3 * kMegabyte + kPeriod; ++place) {
      bytes += static_cast<char>(place % kPeriod);
    }
    return bytes;
  }();
  return std::string_view(pattern).substr(offset % kPeriod, 3 * kMegabyte);
}

/// Provides a given number of bytes in portions that it chooses, and cannot seek.
class ForwardBuffer : public std::streambuf {
 public:
  ForwardBuffer(std::size_t size, std::size_t atATime) : size_(size), atATime_(atATime) {}

  bool wasSought() const { return wasSought_; }

 protected:
  int_type underflow() override {
    if (offset_ == size_) {
      return traits_type::eof();
    }
    given_ = bytesFrom(offset_).substr(0, std::min(atATime_, size_ - offset_));
    offset_ += given_.size();
    setg(given_.data(), given_.data(), given_.data() + given_.size());
    return traits_type::to_int_type(given_.front());
  }

  pos_type seekoff(off_type, std::ios_base::seekdir, std::ios_base::openmode) override {
    wasSought_ = true;
    return pos_type(off_type(-1));
  }

  pos_type seekpos(pos_type, std::ios_base::openmode) override {
    wasSought_ = true;
    return pos_type(off_type(-1));
  }

 private:
  std::size_t size_;
  std::size_t atATime_;
  std::size_t offset_ = 0;
  std::string given_;
  bool wasSought_ = false;
};

struct Stretch {
  const char* name;
  std::size_t size;
};

void PrintTo(const Stretch& stretch, std::ostream* stream) {
  *stream << stretch.name;
}

constexpr Stretch kStretches[] = {
    {"Nothing", 0},
    {"AByte", 1},
    {"OneByteLessThanAMegabyte", kMegabyte - 1},
    {"AMegabyte", kMegabyte},
    {"OneByteMoreThanAMegabyte", kMegabyte + 1},
    {"OneByteLessThanTheSecondRoom", 16 * kMegabyte - 1},
    {"TheSecondRoom", 16 * kMegabyte},
    {"OneByteMoreThanTheSecondRoom", 16 * kMegabyte + 1},
    {"APiece", 48 * kMegabyte},
    {"OneByteMoreThanAPiece", 48 * kMegabyte + 1},
    {"TwoPiecesAndAHalf", 96 * kMegabyte},
};

class StreamOf : public ::testing::TestWithParam<Stretch> {};

INSTANTIATE_TEST_SUITE_P(Sizes, StreamOf, ::testing::ValuesIn(kStretches),
                         [](const auto& row) { return row.param.name; });

TEST_P(StreamOf, IsReadToItsEndWithoutASeek) {
  for (const std::size_t atATime : {std::size_t{1000}, 3 * kMegabyte}) {
    ForwardBuffer buffer(GetParam().size, atATime);
    const std::string text = readText(buffer);
    ASSERT_EQ(text.size(), GetParam().size);
    for (std::size_t offset = 0; offset < text.size(); offset += 3 * kMegabyte) {
      const std::string_view part = std::string_view(text).substr(offset, 3 * kMegabyte);
      EXPECT_TRUE(part == bytesFrom(offset).substr(0, part.size())) << "from " << offset;
    }
    EXPECT_FALSE(buffer.wasSought());
  }
}

#if SIZE_MAX == UINT32_MAX
TEST(StreamOfMoreThanAStringCanHave, IsMoreThanTheMemory) {
  ForwardBuffer buffer(std::string().max_size() + 1, 3 * kMegabyte);
  EXPECT_THROW(readText(buffer), std::bad_alloc);
}
#endif

}  // namespace
}  // namespace install::update_metadata_parser
