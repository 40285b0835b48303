#include "report/Page.h"

#include <cstddef>

#include "output/Text.h"
#include "report/PageText.h"

namespace update_metadata_tool::report {
namespace {

constexpr std::string_view kPlaceOfData = "@CONTENTS@";

struct Escape {
  std::string_view text;
  std::string_view escape;
};

// In JSON they occur only in strings. Old script engines take the two separators for line ends.
constexpr Escape kEscapes[] = {
    {"<", "\\u003c"},
    {">", "\\u003e"},
    {"&", "\\u0026"},
    {"\xE2\x80\xA8", "\\u2028"},
    {"\xE2\x80\xA9", "\\u2029"},
};

const Escape* findEscape(std::string_view text) {
  for (const Escape& escape : kEscapes) {
    if (output::startsWith(text, escape.text)) {
      return &escape;
    }
  }
  return nullptr;
}

void appendEscaped(std::string_view data, std::string& page) {
  while (!data.empty()) {
    const std::size_t plain = data.find_first_of("<>&\xE2");
    page += data.substr(0, plain);
    if (plain == std::string_view::npos) {
      return;
    }
    data.remove_prefix(plain);
    const Escape* const escape = findEscape(data);
    page += escape != nullptr ? escape->escape : data.substr(0, 1);
    data.remove_prefix(escape != nullptr ? escape->text.size() : 1);
  }
}

}  // namespace

std::string makePage(std::string_view data) {
  const std::size_t place = kPageText.find(kPlaceOfData);
  std::string page;
  page.reserve(kPageText.size() + data.size());
  page += kPageText.substr(0, place);
  appendEscaped(data, page);
  page += kPageText.substr(place + kPlaceOfData.size());
  return page;
}

}  // namespace update_metadata_tool::report
