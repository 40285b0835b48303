#include "reader/StreamText.h"

#include <algorithm>
#include <cstddef>
#include <ios>
#include <utility>
#include <vector>

#include "foundation/core/large_pages.h"

namespace install::update_metadata_parser {
namespace {

// Pieces grow with the text, so that there are few of them. The first holds most documents whole;
// the largest limits how much is in memory twice at a time.
constexpr std::size_t kFirstPiece = std::size_t{1} << 20;
constexpr std::size_t kLargestPiece = std::size_t{64} << 20;

// How many bytes to request at a time: they are cleared before they are read, which is cheap while
// they stay in the processor's cache.
constexpr std::size_t kReadBytes = std::size_t{64} << 10;

std::string withRoomFor(std::size_t bytes) {
  std::string text;
  text.reserve(bytes);
  foundation::core::adviseLargePages(text.data(), text.capacity());
  return text;
}

// Returns fewer than `bytes` only at the end.
std::string readPiece(std::streambuf& buffer, std::size_t bytes) {
  std::string piece = withRoomFor(bytes);
  while (piece.size() != bytes) {
    const std::size_t size = piece.size();
    const std::size_t requested = std::min(kReadBytes, bytes - size);
    piece.resize(size + requested);
    const std::streamsize got =
        buffer.sgetn(piece.data() + size, static_cast<std::streamsize>(requested));
    piece.resize(size + static_cast<std::size_t>(got));
    if (piece.size() != size + requested) {
      break;
    }
  }
  return piece;
}

}  // namespace

std::string readToEnd(std::streambuf& buffer) {
  std::vector<std::string> pieces;
  std::size_t size = 0;
  std::size_t requested = 0;
  do {
    requested = std::clamp(size, kFirstPiece, kLargestPiece);
    pieces.push_back(readPiece(buffer, requested));
    size += pieces.back().size();
  } while (pieces.back().size() == requested);
  if (pieces.size() == 1) {
    return std::move(pieces.front());
  }
  std::string text = withRoomFor(size);
  for (std::string& piece : pieces) {
    text += piece;
    // Freed at once, so that only one piece at a time is in memory twice.
    piece = std::string();
  }
  return text;
}

}  // namespace install::update_metadata_parser
