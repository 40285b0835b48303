#include "driver/Table.h"

#include <iomanip>
#include <ostream>
#include <sstream>
#include <utility>

namespace bench::driver {
namespace {

std::string withDecimals(double number, int decimals) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(decimals) << number;
  return text.str();
}

// Formats a number with three significant digits, or with all digits before the decimal point.
std::string readable(double number) {
  return withDecimals(number, number < 1 ? 3 : number < 10 ? 2 : number < 100 ? 1 : 0);
}

// A text as a JSON string. \pre the text contains no control characters
std::string quoted(const std::string& text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      result.append(1, '\\');
    }
    result.append(1, c);
  }
  return result.append(1, '"');
}

std::string ratio(double ours, double theirs) {
  return withDecimals(ours / theirs, 2);
}

}  // namespace

Row::Row(std::string task, std::string document, std::string unit, double ours)
    : task_(std::move(task)), document_(std::move(document)), unit_(std::move(unit)), ours_(ours) {}

void writeMarkdown(std::ostream& out, const std::vector<PeerInfo>& peers,
                   const std::vector<Row>& rows) {
  out << "| task | document | unit |";
  for (const PeerInfo& peer : peers) {
    out << ' ' << peer.title << " |";
  }
  out << "\n|---|---|---|";
  for (std::size_t i = 0; i < peers.size(); ++i) {
    out << "---:|";
  }
  out << '\n';
  for (const Row& row : rows) {
    out << "| " << row.task() << " | " << row.document() << " | " << row.unit() << " | "
        << readable(row.ours()) << " |";
    for (std::size_t i = 1; i < peers.size(); ++i) {
      const auto theirs = row.theirs().find(peers[i].name);
      if (theirs != row.theirs().end()) {
        out << ' ' << readable(theirs->second) << " (" << ratio(row.ours(), theirs->second) << ')';
      }
      out << " |";
    }
    out << '\n';
  }
}

void writeJson(std::ostream& out, const std::vector<Row>& rows) {
  out << std::setprecision(9) << '[';
  const char* separator = "\n";
  for (const Row& row : rows) {
    out << std::exchange(separator, ",\n") << R"(  {"task": )" << quoted(row.task())
        << R"(, "document": )" << quoted(row.document()) << R"(, "unit": )" << quoted(row.unit())
        << R"(, "ours": )" << row.ours() << R"(, "theirs": {)";
    const char* comma = "";
    for (const auto& [peer, value] : row.theirs()) {
      out << std::exchange(comma, ", ") << quoted(peer) << ": " << value;
    }
    out << "}}";
  }
  out << "\n]\n";
}

}  // namespace bench::driver
