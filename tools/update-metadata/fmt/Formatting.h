#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "fmt/Layout.h"

namespace update_metadata_tool::fmt {

/// A text that is not laid out anew, because the library does not load it. Its text is that of the
/// library's exception.
class RefusedText : public std::runtime_error {
 public:
  RefusedText(const std::string& exceptionText, std::string advice)
      : std::runtime_error(exceptionText), advice_(std::move(advice)) {}

  /// What is wrong where, and what to do; without a line feed and without a final full stop.
  const std::string& advice() const noexcept { return advice_; }

 private:
  std::string advice_;
};

/// Lays the document out anew that stands in `text`, without a byte-order mark before it and
/// without white space before or after it.
///
/// It is proved that the library reads the same from the result: both are loaded, and everything
/// that it takes from them is compared.
///
/// \param path  where the document is, for the text of the library's exceptions
///
/// \throws RefusedText       the library loads the text not even without the byte-order mark and
///                           the white space around it
/// \throws std::logic_error  the library would read something else from the result, which is a
///                           fault of this function
std::string format(const std::u16string& path, const std::string& text, const Layout& layout);

}  // namespace update_metadata_tool::fmt
