#pragma once

#include <string>
#include <vector>

namespace test_support {

/// Whether the whole text matches a pattern: a regular expression of ECMAScript, as in every
/// function here. Their source is the only one that compiles the standard library's, which takes a
/// compiler seconds.
bool matches(const std::string& text, const std::string& pattern);

/// What matches in a text, or what this group of each match captured, in the order of the text.
std::vector<std::string> matchesIn(const std::string& text, const std::string& pattern,
                                   int group = 0);

/// The parts of a text between its matches.
std::vector<std::string> partsBetween(const std::string& text, const std::string& pattern);

/// The text with this replacement for every match.
std::string replaceMatches(const std::string& text, const std::string& pattern,
                           const std::string& replacement);

}  // namespace test_support
