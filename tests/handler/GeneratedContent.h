#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "handler/NaiveQueries.h"

namespace test_support {

/// The size of a generated content and the number of names to draw from.
struct Shape {
  const char* name;
  unsigned seeds;
  std::size_t products;
  std::size_t components;
  std::size_t pkgs;
  std::size_t names;
};

/// Draws names, sizes and whole contents from a seed.
class Generator {
 public:
  Generator(unsigned seed, const Shape& shape) : random_(seed), shape_(shape) {
    while (names_.size() < shape.names) {
      names_.push_back(makeName());
    }
  }

  std::size_t below(std::size_t limit) { return limit == 0 ? 0 : random_() % limit; }

  bool oneIn(std::size_t count) { return below(count) == 0; }

  const std::u16string& name() { return names_[below(names_.size())]; }

  std::int64_t size() { return static_cast<std::int64_t>(random_()) - (std::int64_t{1} << 31); }

  /// A list of packages in any order, with repeated names. It mostly reuses the packages of an
  /// earlier component of the same name, sometimes with a change.
  std::vector<UpdatePkgData> pkgs(std::map<std::u16string, std::vector<UpdatePkgData>>& known,
                                  const std::u16string& component) {
    const auto found = known.find(component);
    if (found != known.end() && !oneIn(3)) {
      std::vector<UpdatePkgData> list = found->second;
      for (UpdatePkgData& pkg : list) {
        pkg.size = size();
      }
      if (!list.empty() && oneIn(3)) {
        list[below(list.size())].name = name();
      }
      return list;
    }
    std::vector<UpdatePkgData> list;
    for (std::size_t count = below(shape_.pkgs + 1); count > 0; --count) {
      list.push_back({name(), size(), size()});
    }
    known[component] = list;
    return list;
  }

  std::vector<Component> components(std::map<std::u16string, std::vector<UpdatePkgData>>& known) {
    std::vector<Component> list;
    for (std::size_t count = below(shape_.components + 1); count > 0; --count) {
      const std::u16string component = name();
      list.push_back({component, pkgs(known, component)});
    }
    return list;
  }

  Content content() {
    Content result;
    for (std::size_t count = below(shape_.products + 1); count > 0; --count) {
      result.products.push_back({name(), components(toDelete_), components(toExtract_)});
    }
    for (std::size_t count = below(shape_.components + 1); count > 0; --count) {
      result.withFiles.push_back({name(), {}});
      for (std::size_t pkg = below(shape_.pkgs + 1); pkg > 0; --pkg) {
        result.withFiles.back().pkgs.push_back({name(), size(), {}});
        for (std::size_t file = below(5); file > 0; --file) {
          result.withFiles.back().pkgs.back().files.push_back(name());
        }
      }
    }
    return result;
  }

 private:
  // Short names built from few pieces, so that keys collide: with underscores at every place, units
  // next to the underscore, units beyond the basic plane, units above the surrogates, unpaired
  // surrogates, and NUL.
  std::u16string makeName() {
    static const std::vector<std::u16string> kPieces = {u"a",
                                                        u"b",
                                                        u"_",
                                                        u"^",
                                                        u"`",
                                                        u"Z",
                                                        u"\U0001F600",
                                                        u"\uE000",
                                                        std::u16string(1, u'\0'),
                                                        std::u16string(1, u'\xD83D')};
    std::u16string text;
    const std::size_t pieces = oneIn(4) ? kPieces.size() : 3;
    for (std::size_t count = below(5); count > 0; --count) {
      text += kPieces[below(pieces)];
    }
    return text;
  }

  std::mt19937 random_;
  const Shape& shape_;
  std::vector<std::u16string> names_;
  std::map<std::u16string, std::vector<UpdatePkgData>> toDelete_;
  std::map<std::u16string, std::vector<UpdatePkgData>> toExtract_;
};

}  // namespace test_support
