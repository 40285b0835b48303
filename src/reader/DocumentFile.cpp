#include "reader/DocumentFile.h"

#include <algorithm>
#include <cstddef>
#include <ios>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

#include "fl/filesystem.h"
#include "foundation/core/large_pages.h"

namespace install::update_metadata_parser {
namespace {

// The final blank belongs to the message: callers compare the whole text.
constexpr const char* kMissingFile = "Update MetaData Json file does not exist ";
constexpr const char* kUnopenedFile = "Error opening Update MetaData Json File";

// The room for a text grows in two large steps, since room costs nothing until it is used: most
// texts are read where they stay.
constexpr std::size_t kRooms[] = {std::size_t{1} << 20, std::size_t{16} << 20};

// What exceeds the last room is read in pieces of this size, and then copied, so that only one
// piece at a time is in memory twice.
constexpr std::size_t kPiece = std::size_t{32} << 20;

// How many bytes to request at a time: they are cleared before they are read, which is cheap while
// they stay in the processor's cache.
constexpr std::size_t kReadBytes = std::size_t{64} << 10;

void makeRoom(std::string& text, std::size_t bytes) {
  if (bytes > text.max_size()) {  // possible where pointers have 32 bits
    throw std::bad_alloc();
  }
  text.reserve(bytes);
  foundation::core::adviseLargePages(text.data(), bytes);
}

// Reads until `text` has `bytes`; returns false if the buffer ends before.
bool readUpTo(std::string& text, std::streambuf& buffer, std::size_t bytes) {
  makeRoom(text, bytes);
  while (text.size() != bytes) {
    const std::size_t size = text.size();
    const std::size_t requested = std::min(kReadBytes, bytes - size);
    text.resize(size + requested);
    const std::streamsize got =
        buffer.sgetn(text.data() + size, static_cast<std::streamsize>(requested));
    text.resize(size + static_cast<std::size_t>(got));
    if (text.size() != size + requested) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::string readText(std::streambuf& buffer, std::size_t atMost) {
  std::string text;
  for (const std::size_t room : kRooms) {
    if (!readUpTo(text, buffer, std::min(room, atMost)) || text.size() == atMost) {
      return text;
    }
  }
  std::size_t size = text.size();
  std::vector<std::string> pieces;
  pieces.push_back(std::move(text));
  bool isEnd = false;
  while (!isEnd && size != atMost) {
    pieces.emplace_back();
    isEnd = !readUpTo(pieces.back(), buffer, std::min(kPiece, atMost - size));
    size += pieces.back().size();
  }
  std::string whole;  // a string that grows may double its capacity
  makeRoom(whole, size);
  for (std::string& piece : pieces) {
    whole += piece;
    std::string().swap(piece);  // an assignment would keep the memory
  }
  return whole;
}

std::string readDocument(const std::u16string& path, std::size_t atMost) {
  if (!fl::filesystem::exists(path)) {
    throw std::runtime_error(kMissingFile);
  }
  fl::filesystem::basic_ifstream<char> stream(path, std::ios_base::in);
  if (!stream.is_open()) {
    throw std::runtime_error(kUnopenedFile);
  }
  return readText(*stream.rdbuf(), atMost);
}

}  // namespace install::update_metadata_parser
