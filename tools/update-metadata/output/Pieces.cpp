#include "output/Pieces.h"

namespace update_metadata_tool::output {

Pieces::Pieces(std::ostream& receiver, std::string_view separator) : std::ostream(nullptr) {
  buffer_.out = receiver.rdbuf();
  buffer_.separator = separator;
  rdbuf(&buffer_);
  exceptions(receiver.exceptions());
}

std::streamsize Pieces::Buffer::xsputn(const char* text, std::streamsize size) {
  if (!isBegun && size > 0) {
    const auto separatorSize = static_cast<std::streamsize>(separator.size());
    if (hasPieces && out->sputn(separator.data(), separatorSize) != separatorSize) {
      return 0;
    }
    isBegun = true;
    hasPieces = true;
  }
  return out->sputn(text, size);
}

Pieces::Buffer::int_type Pieces::Buffer::overflow(int_type character) {
  const char byte = traits_type::to_char_type(character);
  return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
}

}  // namespace update_metadata_tool::output
