#include "lint/Fixing.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <string_view>
#include <utility>

#include "diagnosis/source/SourceTree.h"
#include "input/LoadRecord.h"

namespace update_metadata_tool::lint {
namespace {

using install::update_metadata_parser::diagnose;
using install::update_metadata_parser::DiagnosisOptions;
using install::update_metadata_parser::diagnosis::source::SourceTree;

// How often a document of any size may be read.
constexpr std::size_t kMostReadings = 32;

// Reading even a short text takes the time of so many bytes.
constexpr std::size_t kBytesOfAReading = 1024;

/// The bytes that may still be read.
class Effort {
 public:
  explicit Effort(std::size_t bytes) : left_(bytes) {}

  void read(const std::string& text) { left_ -= std::min(left_, text.size() + kBytesOfAReading); }
  bool isSpent() const { return left_ == 0; }

 private:
  std::size_t left_;
};

bool isSyntax(std::string_view rule) {
  return rule == "malformed-text" || rule == "text-around-value";
}

std::size_t countErrors(const Diagnosis& diagnosis) {
  const auto isError = [](const Finding& finding) { return finding.severity == Severity::kError; };
  std::size_t errors = static_cast<std::size_t>(
      std::count_if(diagnosis.findings.begin(), diagnosis.findings.end(), isError));
  for (const OmittedFindings& omitted : diagnosis.omitted) {
    errors += omitted.severity == Severity::kError ? omitted.count : 0;
  }
  return errors;
}

/// What the library makes of a text.
struct Standing {
  bool loads;
  std::u16string answers;  ///< a record of them, if it loads
  std::size_t unread;      ///< bytes from the first syntax error on; 0 for JSON
  std::size_t errors;      ///< of JSON that does not load
};

Standing examine(const std::string& text, const DiagnosisOptions& options, Effort& effort) {
  effort.read(text);
  try {
    return {true, input::recordAnswers(options.path, text), 0, 0};
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    const SourceTree tree(text);
    if (tree.fault()) {
      return {false, {}, text.size() - tree.fault()->offset + 1, 0};
    }
  }
  effort.read(text);
  return {false, {}, 0, countErrors(diagnose(text, options))};
}

// Whether a change of a text is an improvement without a doubt.
bool isProved(const Standing& before, const Standing& after) {
  if (before.loads) {
    return after.loads && after.answers == before.answers;
  }
  return after.loads || after.unread < before.unread ||
         (before.unread == 0 && after.unread == 0 && after.errors < before.errors);
}

/// Fixes in the order of their offsets, which do not overlap.
using Choice = std::vector<const Finding*>;

std::string applyAll(const Choice& findings, std::string_view text) {
  std::string fixed;
  fixed.reserve(text.size());
  std::size_t copied = 0;
  for (const Finding* finding : findings) {
    const Fix& fix = *finding->fix;
    fixed += text.substr(copied, fix.offset - copied);
    fixed += fix.replacement;
    copied = fix.offset + fix.length;
  }
  fixed += text.substr(copied);
  return fixed;
}

/// Where the bytes of a fixed text were in the original one.
class OriginalOffsets {
 public:
  // An inserted byte is where it was inserted, or in what it replaces.
  std::size_t operator()(std::size_t offset) const {
    const auto isBefore = [](std::size_t left, const Kept& right) { return left < right.now; };
    const auto next = std::upper_bound(kept_.begin(), kept_.end(), offset, isBefore);
    const Kept& kept = *std::prev(next);
    const std::size_t original = kept.original + (offset - kept.now);
    return next == kept_.end() ? original : std::min(original, next->original);
  }

  // Takes fixes of the present text into account.
  void apply(const Choice& findings) {
    std::vector<Kept> moved;
    auto kept = kept_.cbegin();
    std::size_t removed = 0;
    std::size_t added = 0;
    const auto moveUpTo = [&](std::size_t offset) {
      for (; kept != kept_.cend() && kept->now <= offset; ++kept) {
        moved.push_back({kept->now - removed + added, kept->original});
      }
    };
    for (const Finding* finding : findings) {
      const Fix& fix = *finding->fix;
      const std::size_t end = fix.offset + fix.length;
      moveUpTo(fix.offset);
      kept = std::find_if(kept, kept_.cend(), [end](const Kept& each) { return each.now > end; });
      removed += fix.length;
      added += fix.replacement.size();
      moved.push_back({end - removed + added, (*this)(end)});
    }
    moveUpTo(std::string::npos);
    kept_ = std::move(moved);
  }

 private:
  // The beginning of bytes that are kept, up to the next one or what replaces those before it.
  struct Kept {
    std::size_t now;
    std::size_t original;
  };

  std::vector<Kept> kept_{{0, 0}};
};

/// One round: proves and applies the fixes of one text.
class Round {
 public:
  /// \param standing  of the text; afterwards that of the result
  Round(const std::string& text, const DiagnosisOptions& options, Standing& standing,
        Effort& effort)
      : text_(text), options_(options), standing_(standing), effort_(effort) {}

  // The fixes that can be proved now: first the syntax, then the other errors, then the rest.
  Choice choose(const Diagnosis& diagnosis, FixKinds kinds) {
    std::vector<const Finding*> wanted;
    for (const Finding& finding : diagnosis.findings) {
      const bool isWanted =
          finding.fix && (finding.fix->isSafe || kinds == FixKinds::kSafeAndSuggested);
      if (isWanted && isTurnOf(finding)) {
        wanted.push_back(&finding);
      } else if (isSyntax(finding.rule)) {
        isObstructed_ = true;
      }
    }
    const auto isBefore = [](const Finding* left, const Finding* right) {
      return left->fix->offset < right->fix->offset;
    };
    std::stable_sort(wanted.begin(), wanted.end(), isBefore);
    Choice chosen;
    std::size_t end = 0;
    for (const Finding* finding : wanted) {
      const Fix& fix = *finding->fix;
      if (chosen.empty() || fix.offset >= end) {
        chosen.push_back(finding);
        end = fix.offset + std::max<std::size_t>(fix.length, 1);
      }
    }
    return chosen;
  }

  // Proves as many fixes as possible.
  void prove(const Choice& fixes) {
    if (fixes.empty() || effort_.isSpent()) {
      return;
    }
    Choice all = proved_;
    all.insert(all.end(), fixes.begin(), fixes.end());
    std::string fixed = applyAll(all, text_);
    if (Standing after = examine(fixed, options_, effort_); isProved(standing_, after)) {
      proved_ = std::move(all);
      result_ = std::move(fixed);
      standing_ = std::move(after);
      return;
    }
    if (fixes.size() == 1) {
      unproved_.insert(unproved_.end(), fixes.begin(), fixes.end());
      return;
    }
    const auto middle = fixes.begin() + static_cast<std::ptrdiff_t>(fixes.size() / 2);
    prove(Choice(fixes.begin(), middle));
    prove(Choice(middle, fixes.end()));
  }

  const Choice& proved() const { return proved_; }

  // What could not be proved, except where another syntax error, which is left, is in the way.
  Choice unproved() const { return isObstructed_ ? Choice() : unproved_; }

  std::string takeResult() { return std::move(result_); }

 private:
  bool isTurnOf(const Finding& finding) const {
    if (standing_.loads) {
      return true;
    }
    if (standing_.unread != 0) {
      return isSyntax(finding.rule);
    }
    return finding.severity == Severity::kError || !finding.fix->isSafe;
  }

  const std::string& text_;
  const DiagnosisOptions& options_;
  Standing& standing_;
  Effort& effort_;
  Choice proved_;
  Choice unproved_;
  std::string result_;
  bool isObstructed_ = false;  ///< whether a syntax error is left that nothing is done about
};

}  // namespace

FixedText fixText(std::string text, const DiagnosisOptions& options,
                  const SeveritySettings& settings, FixKinds kinds, std::size_t mostBytes) {
  FixedText fixed;
  fixed.text = std::move(text);
  Effort effort(mostBytes + kMostReadings * fixed.text.size());
  Standing standing = examine(fixed.text, options, effort);
  OriginalOffsets originalOffset;
  for (;;) {
    effort.read(fixed.text);
    fixed.diagnosis = diagnose(fixed.text, options);
    settings.applyTo(fixed.diagnosis);
    Round round(fixed.text, options, standing, effort);
    round.prove(round.choose(fixed.diagnosis, kinds));
    if (round.proved().empty()) {
      for (const Finding* finding : round.unproved()) {
        fixed.unproved.push_back(*finding);
      }
      fixed.isStopped = effort.isSpent();
      break;
    }
    for (const Finding* finding : round.proved()) {
      fixed.applied.push_back({originalOffset(finding->offset), finding->rule, finding->message});
    }
    originalOffset.apply(round.proved());
    fixed.text = round.takeResult();
  }
  const auto isBefore = [](const AppliedFix& left, const AppliedFix& right) {
    return left.offset < right.offset;
  };
  std::stable_sort(fixed.applied.begin(), fixed.applied.end(), isBefore);
  if (kinds == FixKinds::kSafe) {
    const auto isSuggested = [](const Finding& finding) {
      return finding.fix && !finding.fix->isSafe;
    };
    fixed.suggested = static_cast<std::size_t>(std::count_if(
        fixed.diagnosis.findings.begin(), fixed.diagnosis.findings.end(), isSuggested));
  }
  return fixed;
}

}  // namespace update_metadata_tool::lint
