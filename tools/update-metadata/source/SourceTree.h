#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace update_metadata_tool::source {

enum class SourceKind : std::uint8_t {
  kNull,
  kBoolean,
  kNumber,   ///< a plain number, which the library reads as a double
  kInteger,  ///< an element of a typed payload
  kString,
  kArray,
  kObject,
  kKey,  ///< the key of a member; its value is the next node
};

/// The library's own name of a kind: "string", "double", and so on; "string" for a key.
const char* nameOf(SourceKind kind);

/// One value or key of a text.
struct SourceNode {
  std::size_t begin;  ///< offset of its first byte in the text
  std::size_t end;    ///< offset behind its last byte
  std::size_t next;   ///< index of the node behind it and everything in it
  SourceKind kind;
  bool hasEscapes;    ///< a string or key that is written with a backslash
  bool isClosed;      ///< false for a container that the text breaks off in
  std::uint8_t note;  ///< the text reader's own
};

/// Why a text is no JSON that the library reads, and where.
struct SyntaxFault {
  int code;            ///< the text reader's; 0 if a whole value was read
  std::size_t offset;  ///< of the first byte that was not accepted
  bool isInEscape;     ///< in an escape of a string
  bool isInNumber;     ///< in a number that has begun
  bool isInPayload;    ///< what should be an array of integers, as a "qztype" says, is none
  bool
      isTypeNotString;  ///< a "qztype" that is not a string; the library's exception says only that
  std::string message;  ///< of the library's exception, also behind a NUL, which ends its what()
  std::string_view why;  ///< what was expected, which the message says for malformed text
};

/// A JSON text as it is written: where each value and key of it stands, repeated keys included.
///
/// It is read by the library's text reader, so that it is understood as the library understands it.
/// Nodes stand in the order of the text: a container, then everything in it, then what follows. An
/// array's elements begin at the node behind it, an object's keys and values take turns. The text
/// itself is not kept.
class SourceTree {
 public:
  /// Reads the value that begins at the offset `begin` of a text, which must stay where it is while
  /// it is asked for. Memory is linear in its size, and so is the time.
  ///
  /// \param allowComments  lets // and /* */ comments stand wherever white space may
  explicit SourceTree(std::string_view text, std::size_t begin = 0, bool allowComments = false);

  /// What the library cannot read, if anything. The nodes are then those up to it, with every open
  /// container ending there.
  const std::optional<SyntaxFault>& fault() const { return fault_; }

  /// Tells whether the first value of the text is whole, though something else may stand behind it.
  bool isWhole() const { return !nodes_.empty() && nodes_.front().isClosed; }

  const std::deque<SourceNode>& nodes() const { return nodes_; }
  const SourceNode& operator[](std::size_t index) const { return nodes_[index]; }

  std::string_view text() const { return text_; }

  /// The value of the text. \pre It has a node.
  static constexpr std::size_t kRoot = 0;

  /// The bytes of a node as they are written, a string's quotation marks included.
  std::string_view written(std::size_t index) const {
    const SourceNode& node = nodes_[index];
    return text_.substr(node.begin, node.end - node.begin);
  }

  /// The bytes that a string or key stands for, its escapes resolved.
  std::string decoded(std::size_t index) const;

  /// As decoded(), for comparing many: refers into the text where there are no escapes, else into
  /// `buffer`.
  std::string_view decodedInto(std::size_t index, std::string& buffer) const;

  /// The value of a number as the library reads it.
  double number(std::size_t index) const;

  /// The same number as the library takes it for a size in bytes, and for an update level.
  std::int64_t byteCount(std::size_t index) const;
  int updateLevel(std::size_t index) const;

 private:
  std::string_view text_;
  std::deque<SourceNode> nodes_;  // grows without ever being there twice
  std::optional<SyntaxFault> fault_;
};

/// U+FEFF in UTF-8.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The offset of the first byte from `offset` on that is not white space; nor in a comment, if
/// those are to be left out as well.
std::size_t skipSpace(std::string_view text, std::size_t offset, bool andComments = false);

/// The text that the library reads from bytes of a document: as UTF-8, with each maximal ill-formed
/// part replaced by U+FFFD.
std::u16string readAsText(std::string_view bytes);

}  // namespace update_metadata_tool::source
