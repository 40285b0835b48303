#include "command/ReplaceableDocument.h"

#include <filesystem>
#include <ostream>
#include <system_error>

#include "input/DocumentText.h"
#include "output/Text.h"

namespace update_metadata_tool::command {

ReplaceableDocument::ReplaceableDocument(const std::string& file, std::uint64_t limit)
    : file_(file) {
  if (file != input::kStandardInput) {
    try {
      opened_.emplace(file);
    } catch (const std::system_error&) {
      opened_.reset();  // the library then says what is wrong with the file
    }
  }
  text_ = opened_ ? opened_->read(limit) : input::readDocument(file, limit);
  input::checkLength(text_, limit);
}

bool ReplaceableDocument::replace(const std::string& text, std::ostream& err) const {
  try {
    if (!opened_) {
      throw std::system_error(std::make_error_code(std::errc::operation_canceled),
                              "the file changed while it was read");
    }
    opened_->replace(text);
    return true;
  } catch (const std::system_error& failure) {
    err << output::toVisible(failure.what()) << '\n';
    reportOutcome(file_,
                  failure.code() == std::errc::operation_canceled
                      ? "was not changed; run the command again when nothing else writes to the "
                        "file"
                      : "was not changed; check that it is writable, that files can be created in "
                        "its folder, and that there is space",
                  err);
    return false;
  }
}

void reportOutcome(const std::string& file, const std::string& outcome, std::ostream& err) {
  err << "update-metadata: '" << output::toVisible(output::toUtf16(file)) << "' " << outcome
      << '\n';
}

bool isReadOnlyOnce(const std::string& file) {
  // Through these names, the file that standard input was redirected from would be replaced.
  for (const char* const descriptor : {"/dev/stdin", "/dev/fd/", "/proc/"}) {
    if (file.rfind(descriptor, 0) == 0) {
      return true;
    }
  }
  std::error_code ignored;
  return std::filesystem::is_other(std::filesystem::u8path(file), ignored);
}

}  // namespace update_metadata_tool::command
