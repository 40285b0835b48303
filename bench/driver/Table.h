#pragma once

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "driver/Worker.h"

namespace bench::driver {

/// One row of the table: this library's number, and those of the peers that did the same task.
class Row {
 public:
  Row(std::string task, std::string document, std::string unit, double ours);

  /// Adds a peer's number; `peer` is its name.
  void add(const std::string& peer, double theirs) { theirs_[peer] = theirs; }

  const std::string& task() const noexcept { return task_; }
  const std::string& document() const noexcept { return document_; }
  const std::string& unit() const noexcept { return unit_; }
  double ours() const noexcept { return ours_; }
  const std::map<std::string, double>& theirs() const noexcept { return theirs_; }

 private:
  std::string task_;
  std::string document_;
  std::string unit_;
  double ours_;
  std::map<std::string, double> theirs_;
};

/// Writes rows as one Markdown table with a column for each peer: the peer's number and, in
/// parentheses, ours as a multiple of it. Less than 1 is in our favor.
void writeMarkdown(std::ostream& out, const std::vector<PeerInfo>& peers,
                   const std::vector<Row>& rows);

/// Writes rows as a JSON array of objects.
void writeJson(std::ostream& out, const std::vector<Row>& rows);

}  // namespace bench::driver
