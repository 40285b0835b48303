#include "terminal/ProgressLine.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "terminal/Terminal.h"

namespace update_metadata_tool::terminal {
namespace {

constexpr std::chrono::milliseconds kPatience(1000);
constexpr std::chrono::milliseconds kPause(250);

// Returns to the beginning of the line and erases it.
constexpr const char* kErase = "\r\x1B[K";

}  // namespace

ProgressLine::ProgressLine(std::ostream& err, std::optional<std::size_t> columns,
                           std::function<Clock::time_point()> now)
    : err_(err),
      columns_(columns),
      now_(std::move(now)),
      begin_(now_()),
      next_(begin_ + kPatience) {}

ProgressLine::~ProgressLine() {
  clear();
}

void ProgressLine::begin(std::string work) {
  if (columns_) {
    work_ = std::move(work);
    update();
  }
}

void ProgressLine::beginSilent(std::string work) {
  if (columns_) {
    work_ = std::move(work);
    show(now_());
  }
}

bool ProgressLine::isDue() const {
  return columns_ && now_() >= begin_ + kPatience;
}

void ProgressLine::update() {
  if (!columns_) {
    return;
  }
  const Clock::time_point now = now_();
  if (now >= next_) {
    show(now);
  }
}

void ProgressLine::show(Clock::time_point now) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - begin_).count();
  const std::string time = seconds != 0 ? ", " + std::to_string(seconds) + " s" : "";
  // Some terminals wrap after a character in the last column.
  const std::size_t room = columns_.value() - 1;
  const std::string line = work_.substr(0, room - std::min(room, time.size())) + time;
  err_ << kErase << line.substr(0, room) << std::flush;
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
  static ProgressLine line(std::cerr, std::nullopt);
  return line;
}

void beginOutput(ProgressLine& progress) {
  if (isOutputTerminal()) {
    progress.clear();
  } else if (progress.isDue()) {
    progress.beginSilent("writing");
  }
}

}  // namespace update_metadata_tool::terminal
