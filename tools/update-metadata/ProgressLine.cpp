#include "ProgressLine.h"

#include <iostream>
#include <utility>

#include "Terminal.h"

namespace update_metadata_tool {
namespace {

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kPause(250);

// Leads to the beginning of the line and removes what stands there.
constexpr const char* kErase = "\r\x1B[K";

}  // namespace

ProgressLine::ProgressLine(std::ostream& err, bool isShown, std::function<Clock::time_point()> now)
    : err_(err),
      isShown_(isShown),
      now_(std::move(now)),
      begin_(now_()),
      next_(begin_ + kPatience) {}

ProgressLine::~ProgressLine() {
  clear();
}

void ProgressLine::begin(std::string work) {
  if (isShown_) {
    work_ = std::move(work);
    goOn();
  }
}

void ProgressLine::beginSilent(std::string work) {
  if (isShown_) {
    work_ = std::move(work);
    show(now_());
  }
}

bool ProgressLine::isDue() const {
  return isShown_ && now_() >= begin_ + kPatience;
}

void ProgressLine::goOn() {
  if (!isShown_) {
    return;
  }
  const Clock::time_point now = now_();
  if (now >= next_) {
    show(now);
  }
}

void ProgressLine::show(Clock::time_point now) {
  err_ << kErase << work_;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - begin_).count();
  if (seconds != 0) {
    err_ << ", " << seconds << " s";
  }
  err_ << std::flush;
  isWritten_ = true;
  next_ = now + kPause;
}

void ProgressLine::clear() {
  if (isWritten_) {
    err_ << kErase << std::flush;
    isWritten_ = false;
  }
}

ProgressLine& noProgress() {
  static ProgressLine line(std::cerr, false);
  return line;
}

void beginOutput(ProgressLine& progress) {
  if (isOutputTerminal()) {
    progress.clear();
  } else if (progress.isDue()) {
    progress.beginSilent("writing");
  }
}

}  // namespace update_metadata_tool
