// bench-generate: writes one update metadata document, or an input that is hard on a reader.
// The same options give the same bytes on every machine.

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "generate/Document.h"
#include "generate/Family.h"
#include "generate/Presets.h"

namespace {

using bench::generate::DocumentShape;
using bench::generate::Family;
using bench::generate::NameStyle;
using bench::generate::Preset;

struct Options {
  std::string preset = "small";
  std::string hostile;
  std::size_t count = 0;
  std::string output;
  DocumentShape shape;
};

std::vector<std::string> namesOf(const std::vector<Preset>& presets) {
  std::vector<std::string> names;
  for (const Preset& preset : presets) {
    names.emplace_back(preset.name);
  }
  return names;
}

std::vector<std::string> namesOfFamilies() {
  std::vector<std::string> names;
  for (const Family& family : bench::generate::allFamilies()) {
    names.emplace_back(family.name);
  }
  return names;
}

// One count of the shape, taken from the preset unless the option is given.
struct Count {
  const char* option;
  const char* help;
  std::size_t DocumentShape::*field;
};

constexpr Count kCounts[] = {
    {"--products", "products", &DocumentShape::products},
    {"--components", "components described", &DocumentShape::components},
    {"--packages", "packages of each component, on each side", &DocumentShape::packages},
    {"--components-per-product", "components named by each product, on each side",
     &DocumentShape::componentsPerProduct},
    {"--file-components", "components with files to delete (default: a quarter of all)",
     &DocumentShape::fileComponents},
    {"--files", "files to delete in each of their packages", &DocumentShape::files},
    {"--repeats", "how often each product's lists are repeated", &DocumentShape::repeats},
    {"--continued", "of so many components, the last are named in a chain: a, a_docs; 0 for none",
     &DocumentShape::continued},
    {"--chain", "components in such a chain, from 1 to --continued", &DocumentShape::chain},
    {"--revised", "one package in so many has another size than without this option",
     &DocumentShape::revised},
    {"--indent", "blanks per level; 0 for the compact form", &DocumentShape::indent},
    {"--path-bytes", "approximate length of paths", &DocumentShape::pathBytes},
};

void write(const Options& options, std::ostream& out) {
  const auto sink = [&out](std::string_view piece) {
    out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
  };
  if (options.hostile.empty()) {
    writeDocument(options.shape, sink);
  } else {
    for (const Family& family : bench::generate::allFamilies()) {
      if (family.name == options.hostile) {
        const std::size_t count = options.count != 0 ? options.count : family.benchmark.count;
        sink(family.make(count != 0 ? count * family.benchmark.unitBytes : family.megabyte));
      }
    }
  }
  out.flush();
  if (!out) {
    throw std::runtime_error("the text could not be written");
  }
}

int run(int argc, char** argv) {
  Options options;
  DocumentShape given;
  CLI::App app("Write one update metadata document; the same options give the same bytes.",
               "bench-generate");
  app.add_option("--preset", options.preset, "counts to start from")
      ->check(CLI::IsMember(namesOf(bench::generate::presets())))
      ->capture_default_str();
  std::vector<CLI::Option*> counts;
  for (const Count& count : kCounts) {
    counts.push_back(app.add_option(count.option, given.*count.field, count.help));
  }
  CLI::Option* seed =
      app.add_option("--seed", given.seed, "seed for another document of the same shape");
  const std::map<std::string, NameStyle> styles = {
      {"words", NameStyle::words}, {"letters", NameStyle::letters}, {"wide", NameStyle::wide}};
  CLI::Option* names = app.add_option("--names", given.names, "words, letters or wide")
                           ->transform(CLI::CheckedTransformer(styles));
  app.add_option("--hostile", options.hostile, "write a text that is hard on a reader instead")
      ->check(CLI::IsMember(namesOfFamilies()));
  app.add_option("--count", options.count,
                 "number of levels, members or escapes; for others, the size");
  app.add_option("-o,--output", options.output, "file to write (default: standard output)");
  CLI11_PARSE(app, argc, argv);

  options.shape = bench::generate::findPreset(options.preset)->shape;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i]->count() != 0) {
      options.shape.*kCounts[i].field = given.*kCounts[i].field;
    }
  }
  if (seed->count() != 0) {
    options.shape.seed = given.seed;
  }
  if (names->count() != 0) {
    options.shape.names = given.names;
  }
  if (app.get_option("--file-components")->count() == 0 &&
      app.get_option("--components")->count() != 0) {
    options.shape.fileComponents = (options.shape.components + 3) / 4;
  }
  if (options.shape.continued != 0 &&
      (options.shape.chain == 0 || options.shape.chain > options.shape.continued)) {
    throw std::invalid_argument("--chain must be from 1 to --continued");
  }

  if (options.output.empty()) {
    write(options, std::cout);
  } else {
    std::ofstream file(options.output, std::ios_base::binary);
    write(options, file);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& failure) {
    std::cerr << "bench-generate: " << failure.what() << '\n';
    return 1;
  }
}
