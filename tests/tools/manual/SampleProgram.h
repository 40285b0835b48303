#pragma once

#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace test_support {

/// A program with two subcommands that have every kind of option.
class SampleProgram {
 public:
  SampleProgram();

  const CLI::App& app() const { return app_; }

 private:
  CLI::App app_;
  std::vector<std::string> files_;
  std::string folder_;
  std::string form_ = "long";
  bool isQuiet_ = false;
};

}  // namespace test_support
