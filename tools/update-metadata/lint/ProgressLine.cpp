#include "lint/ProgressLine.h"

#include <ostream>
#include <utility>

namespace update_metadata_tool {
namespace {

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kPause(250);

// Leads to the beginning of the line and removes what stands there.
constexpr const char* kErase = "\r\x1B[K";

}  // namespace

ProgressLine::ProgressLine(std::ostream& err, bool isShown, std::size_t files,
                           std::function<Clock::time_point()> now)
    : err_(err),
      isShown_(isShown),
      files_(files),
      now_(std::move(now)),
      begin_(now_()),
      next_(begin_ + kPatience) {}

ProgressLine::~ProgressLine() {
  clear();
}

void ProgressLine::beginFile() {
  ++file_;
  goOn();
}

void ProgressLine::goOn() {
  if (!isShown_) {
    return;
  }
  const Clock::time_point now = now_();
  if (now < next_) {
    return;
  }
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - begin_).count();
  err_ << kErase << "linting file " << file_ << " of " << files_ << ", " << seconds << " s"
       << std::flush;
  isWritten_ = true;
  next_ = now + kPause;
}

void ProgressLine::clear() {
  if (isWritten_) {
    err_ << kErase << std::flush;
    isWritten_ = false;
  }
}

}  // namespace update_metadata_tool
