#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

/// A text as it is written, with the places of its values.
namespace install::update_metadata_parser::diagnosis::source {

/// The kind of a value or a key.
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
  std::size_t end;    ///< offset after its last byte
  std::size_t next;   ///< index of the node after it and all its content
  SourceKind kind;    ///< what it is
  bool hasEscapes;    ///< a string or key that is written with a backslash
  bool isClosed;      ///< false for a container in which the text ends
  std::uint8_t note;  ///< used by the text reader
};

/// Why and where the library cannot read a text.
struct SyntaxFault {
  int code;            ///< the text reader's; 0 if a whole value was read
  std::size_t offset;  ///< of the first byte that the reader does not accept
  bool isInEscape;     ///< in an escape of a string
  bool isInNumber;     ///< in a number after its beginning
  bool isInPayload;    ///< in a "qzdata" that must be an array of integers because of its "qztype"
  bool isTypeNotString;  ///< a "qztype" is not a string
  std::string message;   ///< the library's message, even after a NUL, at which what() ends
  std::string_view why;  ///< what was expected
};

/// A JSON text as it is written: the place of each value and key, including repeated keys.
///
/// The library's text reader reads it, so both understand it in the same way. Nodes are in the
/// order of the text: a container, then its content, then what follows. The first element of an
/// array is the node after it; in an object, keys and values alternate. The text is not copied.
class SourceTree {
 public:
  /// Reads the value that begins at the offset `begin` of a text, which must outlive the tree.
  /// Memory and time are linear in its size. If `allowComments` is true, line and block comments
  /// are accepted wherever white space is.
  explicit SourceTree(std::string_view text, std::size_t begin = 0, bool allowComments = false);

  /// Why the library cannot read the text, if it cannot. The nodes are then those before the fault,
  /// where every open container ends.
  const std::optional<SyntaxFault>& fault() const { return fault_; }

  /// Whether the first value of the text is complete; other text may follow it.
  bool isWhole() const { return !nodes_.empty() && nodes_.front().isClosed; }

  /// All nodes, in the order of the text.
  const std::deque<SourceNode>& nodes() const { return nodes_; }

  /// The node of that index.
  const SourceNode& operator[](std::size_t index) const { return nodes_[index]; }

  /// The text that was read.
  std::string_view text() const { return text_; }

  /// The value of the text. \pre It has a node.
  static constexpr std::size_t kRoot = 0;

  /// The bytes of a node as they are written, including the quotation marks of a string.
  std::string_view written(std::size_t index) const {
    const SourceNode& node = nodes_[index];
    return text_.substr(node.begin, node.end - node.begin);
  }

  /// The bytes of a string or key, its escapes resolved.
  std::string decoded(std::size_t index) const;

  /// Like decoded(), but without a copy: refers to the text if there are no escapes, otherwise to
  /// `buffer`.
  std::string_view decodedInto(std::size_t index, std::string& buffer) const;

  /// The value of a number as the library reads it.
  double number(std::size_t index) const;

  /// The same number as the library reads it as a size in bytes.
  std::int64_t byteCount(std::size_t index) const;

  /// The same number as the library reads it as an update level.
  int updateLevel(std::size_t index) const;

 private:
  std::string_view text_;
  std::deque<SourceNode> nodes_;  // grows without a second copy
  std::optional<SyntaxFault> fault_;
};

/// U+FEFF in UTF-8.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The offset of the first byte at or after `offset` that is not white space, nor in a comment if
/// `andComments` is true.
std::size_t skipSpace(std::string_view text, std::size_t offset, bool andComments = false);

/// The text that the library reads from bytes of a document: as UTF-8, with each maximal ill-formed
/// part replaced by U+FFFD.
std::u16string readAsText(std::string_view bytes);

}  // namespace install::update_metadata_parser::diagnosis::source
