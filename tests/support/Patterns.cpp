#include "support/Patterns.h"

#include <regex>

namespace test_support {
namespace {

// The matches, or what is between them if `group` is -1.
std::vector<std::string> tokensOf(const std::string& text, const std::string& pattern, int group) {
  const std::regex regex(pattern);
  return {std::sregex_token_iterator(text.begin(), text.end(), regex, group),
          std::sregex_token_iterator()};
}

}  // namespace

bool matches(const std::string& text, const std::string& pattern) {
  return std::regex_match(text, std::regex(pattern));
}

std::vector<std::string> matchesIn(const std::string& text, const std::string& pattern, int group) {
  return tokensOf(text, pattern, group);
}

std::vector<std::string> partsBetween(const std::string& text, const std::string& pattern) {
  return tokensOf(text, pattern, -1);
}

std::string replaceMatches(const std::string& text, const std::string& pattern,
                           const std::string& replacement) {
  return std::regex_replace(text, std::regex(pattern), replacement);
}

}  // namespace test_support
