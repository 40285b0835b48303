#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "fmt/Layout.h"

namespace update_metadata_tool::fmt {

/// A text that cannot be reformatted, because the library does not load it. what() is the text of
/// the library's exception.
class RejectedText : public std::runtime_error {
 public:
  RejectedText(const std::string& exceptionText, std::string advice)
      : std::runtime_error(exceptionText), advice_(std::move(advice)) {}

  /// What is wrong, where, and what to do; without a line feed and without a final full stop.
  const std::string& advice() const noexcept { return advice_; }

 private:
  std::string advice_;
};

/// Reformats the document in `text`, and strips a byte-order mark and surrounding white space.
///
/// The library reads the same from the result: both texts are loaded, and everything that it reads
/// from them is compared.
///
/// \param path  where the document is, for the text of the library's exceptions
///
/// \throws RejectedText      the library does not load the text even after stripping
/// \throws std::logic_error  the library would read something else from the result, which is a bug
///                           in this function
std::string format(const std::u16string& path, const std::string& text, const Layout& layout);

}  // namespace update_metadata_tool::fmt
