#include "plan/PathWalk.h"

#include <cstddef>
#include <system_error>
#include <utility>
#include <vector>

namespace update_metadata_tool::plan {

namespace fs = std::filesystem;

namespace {

// As many as Linux follows before it reports a loop.
constexpr int kMostLinks = 40;

// Pushes the parts of `path` on a stack, the first on top.
void pushParts(std::string_view path, std::vector<std::string>& parts) {
  for (std::size_t end = path.size(); end != std::string_view::npos;) {
    const std::size_t slash = end == 0 ? std::string_view::npos : path.rfind('/', end - 1);
    const std::size_t begin = slash == std::string_view::npos ? 0 : slash + 1;
    if (begin != end) {
      parts.emplace_back(path.substr(begin, end - begin));
    }
    end = slash;
  }
}

/// Resolves a path part by part.
class PathWalk {
 public:
  /// \param start  an absolute path without links, where a relative one starts
  explicit PathWalk(std::string start) : resolved_(std::move(start)) { dropRootSlash(); }

  /// The absolute path that `path` leads to, without links and "..".
  ///
  /// Throws std::filesystem::filesystem_error if it cannot be resolved.
  std::string follow(std::string_view path) {
    enter(path);
    while (!parts_.empty()) {
      const std::string part = std::move(parts_.back());
      parts_.pop_back();
      if (part == "..") {
        leave();
      } else if (part != ".") {
        step(part);
      }
    }
    return resolved_.empty() ? "/" : resolved_;
  }

 private:
  void enter(std::string_view path) {
    if (!path.empty() && path.front() == '/') {
      resolved_.clear();
    }
    pushParts(path, parts_);
  }

  void leave() {
    const std::size_t slash = resolved_.rfind('/');
    if (slash != std::string::npos) {
      resolved_.erase(slash);
    }
    if (resolved_.size() < missingFrom_) {
      missingFrom_ = std::string::npos;
    }
  }

  void step(const std::string& part) {
    const std::size_t size = resolved_.size();
    resolved_.append(1, '/').append(part);
    if (missingFrom_ != std::string::npos) {
      return;  // nothing exists below a missing folder
    }
    const fs::file_status status = statusOf(resolved_);
    if (!fs::exists(status)) {
      missingFrom_ = resolved_.size();
    } else if (fs::is_symlink(status)) {
      if (++links_ > kMostLinks) {
        throw fs::filesystem_error("cannot search for", resolved_,
                                   std::make_error_code(std::errc::too_many_symbolic_link_levels));
      }
      const std::string target = fs::read_symlink(resolved_).string();
      resolved_.erase(size);
      enter(target);
    }
  }

  void dropRootSlash() {
    if (resolved_ == "/") {
      resolved_.clear();
    }
  }

  std::string resolved_;                         // empty for the root
  std::vector<std::string> parts_;               // still to be resolved, the next one last
  std::size_t missingFrom_ = std::string::npos;  // size of the shortest path that does not exist
  int links_ = 0;
};

}  // namespace

std::string followPath(const std::string& start, std::string_view path) {
  return PathWalk(start).follow(path);
}

fs::file_status statusOf(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::symlink_status(path, error);
  if (error == std::errc::filename_too_long) {
    return fs::file_status(fs::file_type::not_found);
  }
  if (status.type() == fs::file_type::none) {
    throw fs::filesystem_error("cannot search for", path, error);
  }
  return status;
}

}  // namespace update_metadata_tool::plan
