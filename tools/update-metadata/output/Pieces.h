#pragma once

#include <ostream>
#include <streambuf>
#include <string_view>

namespace update_metadata_tool::output {

/// A stream for pieces of text: a separator comes between every two that are not empty.
class Pieces : public std::ostream {
 public:
  /// \param receiver  receives everything at once; its exceptions are also those of this stream
  Pieces(std::ostream& receiver, std::string_view separator);

  /// Ends a piece.
  void endPiece() { buffer_.isBegun = false; }

 private:
  struct Buffer : std::streambuf {
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int_type overflow(int_type character) override;
    int sync() override { return out->pubsync(); }

    std::streambuf* out;
    std::string_view separator;
    bool isBegun = false;    ///< whether something of this piece is written
    bool hasPieces = false;  ///< whether something of any piece is written
  };

  Buffer buffer_;
};

}  // namespace update_metadata_tool::output
