#include "lint/UnifiedDiff.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace update_metadata_tool::lint {
namespace {

constexpr std::size_t kContext = 3;

// How many lines are searched for the end of a change.
constexpr std::size_t kMostLinesOfAChange = 400;

using Lines = std::vector<std::string_view>;

// The lines of a text with their line feeds, which the last one may lack.
Lines linesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t feed = text.find('\n');
    const std::size_t size = feed == std::string_view::npos ? text.size() : feed + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

/// Lines of the old text that are replaced by lines of the new one.
struct Change {
  std::size_t oldBegin;
  std::size_t oldEnd;
  std::size_t newBegin;
  std::size_t newEnd;
};

/// Finds the changes between two lists of lines.
class Comparison {
 public:
  Comparison(const Lines& before, const Lines& after) : before_(before), after_(after) {}

  std::vector<Change> run() {
    std::size_t old = 0;
    std::size_t now = 0;
    while (old < before_.size() || now < after_.size()) {
      if (isEqual(old, now)) {
        ++old;
        ++now;
        continue;
      }
      const Change change = findEnd(old, now);
      addChange(change);
      old = change.oldEnd;
      now = change.newEnd;
    }
    return std::move(changes_);
  }

 private:
  bool isEqual(std::size_t old, std::size_t now) const {
    return old < before_.size() && now < after_.size() && before_[old] == after_[now];
  }

  // Whether both texts continue alike: one line that is equal by chance is not enough.
  bool isInStep(std::size_t old, std::size_t now) const {
    const bool isEndOfOld = old == before_.size();
    const bool isEndOfNew = now == after_.size();
    if (isEndOfOld || isEndOfNew) {
      return isEndOfOld && isEndOfNew;
    }
    return isEqual(old, now) &&
           (isEqual(old + 1, now + 1) || old + 1 >= before_.size() || now + 1 >= after_.size());
  }

  // The end of the change that begins here: the nearest place where both texts are in step.
  Change findEnd(std::size_t old, std::size_t now) const {
    for (std::size_t lines = 1; lines <= kMostLinesOfAChange; ++lines) {
      for (std::size_t removed = 0; removed <= lines; ++removed) {
        const std::size_t oldEnd = old + removed;
        const std::size_t newEnd = now + lines - removed;
        const bool isSameNumber = removed == lines - removed;
        if (oldEnd <= before_.size() && newEnd <= after_.size() &&
            (isInStep(oldEnd, newEnd) || (isSameNumber && isEqual(oldEnd, newEnd)))) {
          return {old, oldEnd, now, newEnd};
        }
      }
    }
    return {old, std::min(old + kMostLinesOfAChange, before_.size()), now,
            std::min(now + kMostLinesOfAChange, after_.size())};
  }

  void addChange(const Change& change) {
    if (!changes_.empty() && changes_.back().oldEnd == change.oldBegin) {
      changes_.back().oldEnd = change.oldEnd;
      changes_.back().newEnd = change.newEnd;
    } else {
      changes_.push_back(change);
    }
  }

  const Lines& before_;
  const Lines& after_;
  std::vector<Change> changes_;
};

void addLines(char sign, const Lines& lines, std::size_t begin, std::size_t end,
              std::string& diff) {
  for (std::size_t line = begin; line < end; ++line) {
    diff += sign;
    diff += lines[line];
    if (lines[line].back() != '\n') {
      diff += "\n\\ No newline at end of file\n";
    }
  }
}

// "12,3": the first line, and how many; of no lines, the line before them.
std::string rangeOf(std::size_t begin, std::size_t end) {
  const std::size_t count = end - begin;
  const std::string first = std::to_string(count == 0 ? begin : begin + 1);
  return count == 1 ? first : first + ',' + std::to_string(count);
}

// The number of lines shown before a hunk's first change. Both texts have them.
std::size_t contextBefore(const Change& change) {
  return std::min(kContext, change.oldBegin);
}

// The changes from `first` to before `end`, with the lines around and between them.
void addHunk(const Lines& before, const Lines& after, const Change* first, const Change* end,
             std::string& diff) {
  const std::size_t context = contextBefore(*first);
  const Change& last = *(end - 1);
  const std::size_t rest = std::min(kContext, before.size() - last.oldEnd);
  diff += "@@ -" + rangeOf(first->oldBegin - context, last.oldEnd + rest) + " +" +
          rangeOf(first->newBegin - context, last.newEnd + rest) + " @@\n";
  std::size_t shown = first->oldBegin - context;
  for (const Change* change = first; change != end; ++change) {
    addLines(' ', before, shown, change->oldBegin, diff);
    addLines('-', before, change->oldBegin, change->oldEnd, diff);
    addLines('+', after, change->newBegin, change->newEnd, diff);
    shown = change->oldEnd;
  }
  addLines(' ', before, shown, shown + rest, diff);
}

// A name as `patch` reads it. A tab ends a name that contains blanks.
std::string headingOf(const std::string& file) {
  const auto isSpecial = [](unsigned char byte) {
    return byte < 0x20 || byte == 0x7F || byte == '"' || byte == '\\';
  };
  if (std::none_of(file.begin(), file.end(), isSpecial)) {
    return file.find(' ') == std::string::npos ? file : file + '\t';
  }
  std::string quoted = "\"";
  for (const char byte : file) {
    const auto value = static_cast<unsigned char>(byte);
    if (byte == '"' || byte == '\\') {
      quoted += '\\';
      quoted += byte;
    } else if (isSpecial(value)) {
      quoted += '\\';
      for (int shift = 6; shift >= 0; shift -= 3) {
        quoted += static_cast<char>('0' + (value >> static_cast<unsigned>(shift) & 7U));
      }
    } else {
      quoted += byte;
    }
  }
  return quoted + '"';
}

}  // namespace

std::string unifiedDiff(const std::string& file, std::string_view before, std::string_view after) {
  const Lines oldLines = linesOf(before);
  const Lines newLines = linesOf(after);
  const std::vector<Change> changes = Comparison(oldLines, newLines).run();
  if (changes.empty()) {
    return {};
  }
  const std::string heading = headingOf(file);
  std::string diff = "--- " + heading + "\n+++ " + heading + '\n';
  const Change* const end = changes.data() + changes.size();
  for (const Change* first = changes.data(); first != end;) {
    const Change* next = first + 1;
    while (next != end && next->oldBegin - (next - 1)->oldEnd <= 2 * kContext) {
      ++next;
    }
    addHunk(oldLines, newLines, first, next, diff);
    first = next;
  }
  return diff;
}

}  // namespace update_metadata_tool::lint
