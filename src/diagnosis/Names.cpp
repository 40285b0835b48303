#include "diagnosis/Names.h"

#include <algorithm>
#include <locale>
#include <optional>
#include <stdexcept>
#include <utility>

#include "diagnosis/Text.h"
#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

bool isControl(char32_t character) {
  return character < 0x20 || (character >= 0x7F && character <= 0x9F);
}

// The first control character of a text, and its first other invisible character.
struct Suspects {
  std::optional<char32_t> control;
  std::optional<char32_t> unseen;
};

// \pre isUtf8(text)
Suspects findSuspects(std::string_view text) {
  const auto isSuspect = [](char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value < 0x20 || value == 0x7F || value >= 0xC2;
  };
  Suspects found;
  if (std::none_of(text.begin(), text.end(), isSuspect)) {
    return found;
  }
  while (!text.empty()) {
    const Character character = firstCharacter(text);
    text.remove_prefix(character.bytes);
    if (isUnseen(character.code)) {
      std::optional<char32_t>& first = isControl(character.code) ? found.control : found.unseen;
      first = first.value_or(character.code);
    }
  }
  return found;
}

// "U+200B"
std::string codeOf(char32_t character) {
  std::string shown;
  appendVisible({character, 0, true}, shown);
  return shown.substr(1, shown.size() - 2);
}

// The letter of the short escape that stands for a control character; 0 if there is none.
char escapeOf(char16_t unit) {
  constexpr std::string_view kEscapes("btn\0fr", 6);
  return unit >= u'\b' && unit <= u'\r' ? kEscapes[unit - u'\b'] : '\0';
}

// Whether a string is written with the escape of that letter.
bool hasEscape(std::string_view written, char letter) {
  for (std::size_t at = written.find('\\'); at != std::string_view::npos;
       at = written.find('\\', at + 2)) {
    if (written[at + 1] == letter) {
      return true;
    }
  }
  return false;
}

void reportControl(const SourceDocument& document, std::size_t node, const std::string& what,
                   char16_t control, const DescribeItem& item, FindingList& findings) {
  const source::SourceTree& tree = document.tree();
  const char letter = escapeOf(control);
  std::string message = "the " + what + " contains the control character " + codeOf(control);
  std::string advice = "remove the character, which is invisible";
  if (letter != '\0' && tree[node].hasEscapes && hasEscape(tree.written(node), letter)) {
    const std::string escape = std::string("\\") + letter;
    message += ", written as " + escape;
    const std::string twoSigns = '\\' + escape;
    advice =
        (what == "path"
             ? std::string("write /") + letter + " if a folder's name ends here, or " + twoSigns
             : "write " + twoSigns + " if you mean a backslash and '" + letter + '\'') +
        "; otherwise remove the character";
  }
  findings.add(Rule::kControlCharacter, tree, node,
               {std::move(message), std::move(advice), item()});
}

bool isSeparator(char byte) {
  return byte == '/' || byte == '\\';
}

bool climbs(std::string_view path) {
  std::size_t begin = 0;
  for (std::size_t at = 0; at <= path.size(); ++at) {
    if (at == path.size() || isSeparator(path[at])) {
      if (path.substr(begin, at - begin) == "..") {
        return true;
      }
      begin = at + 1;
    }
  }
  return false;
}

struct PathRule {
  Rule rule;
  bool (*applies)(std::string_view path);
  const char* message;
  const char* advice;
};

const PathRule kPathRules[] = {
    {Rule::kFilePathAbsolute, [](std::string_view path) { return isSeparator(path[0]); },
     "the path is absolute", "write it relative to the folder where the package is installed"},
    {Rule::kFilePathDrive,
     [](std::string_view path) { return path.size() > 1 && isLetter(path[0]) && path[1] == ':'; },
     "the path starts with a drive letter",
     "write it relative to the folder where the package is installed"},
    {Rule::kFilePathClimbs, climbs, "the path contains '..'",
     "name a file inside the folder where the package is installed"},
    {Rule::kFilePathNul,
     [](std::string_view path) { return path.find('\0') != std::string_view::npos; },
     "the path contains a NUL character, at which system calls stop",
     "remove the character; otherwise a different file is deleted"},
    {Rule::kFilePathTrailingSeparator,
     [](std::string_view path) { return isSeparator(path.back()); },
     "the path ends with a separator, so it names a folder", "name a file"},
    {Rule::kFilePathMixedSeparators,
     [](std::string_view path) {
       return path.find('/') != std::string_view::npos && path.find('\\') != std::string_view::npos;
     },
     "the path contains both '/' and '\\'", "use one kind of separator, preferably '/'"},
};

// The system's table of characters where there is one, otherwise that of ASCII.
std::locale tableOfCharacters() {
  try {
    return {std::locale::classic(), "C.UTF-8", std::locale::ctype};
  } catch (const std::runtime_error&) {
    return std::locale::classic();
  }
}

std::u16string foldCase(std::string_view text) {
  static const std::locale locale = tableOfCharacters();
  const auto& table = std::use_facet<std::ctype<wchar_t>>(locale);
  std::u16string units = toUtf16(text);
  for (char16_t& unit : units) {
    unit = static_cast<char16_t>(table.tolower(static_cast<wchar_t>(unit)));
  }
  return units;
}

struct FoldedPath {
  std::u16string folded;
  std::string_view path;
  std::size_t node;
};

void checkCase(const SourceDocument& document, std::vector<FoldedPath>& paths,
               const DescribeItem& item, FindingList& findings) {
  const auto isBefore = [](const FoldedPath& left, const FoldedPath& right) {
    return std::tie(left.folded, left.node) < std::tie(right.folded, right.node);
  };
  std::sort(paths.begin(), paths.end(), isBefore);
  for (std::size_t index = 1; index < paths.size(); ++index) {
    const FoldedPath& first = paths[index - 1];
    const FoldedPath& later = paths[index];
    if (first.folded == later.folded && first.path != later.path) {
      findings.add(Rule::kFilePathCase, document.tree(), later.node,
                   {"the path differs from " + quote(first.path) + " only in case",
                    "check which one is right; on some file systems both are the same file",
                    item(),
                    {{document.tree()[first.node].begin, "the other path"}}});
    }
  }
}

bool isReserved(std::string_view name) {
  return name == "qztype" || name == "qzdata";
}

// Keys with different bytes are read as the same name only if some of them are ill-formed.
void checkSameNames(SourceDocument& document, std::size_t object, const char* what,
                    FindingList& findings) {
  struct Name {
    std::string_view read;
    std::size_t key;
  };
  std::vector<Name> names;
  bool isAnyReplaced = false;
  document.forEachMember(object, [&](std::size_t key) {
    names.push_back({document.nameOf(key), key});
    isAnyReplaced = isAnyReplaced || names.back().read.find("\xEF\xBF\xBD") != std::string::npos;
  });
  if (!isAnyReplaced) {
    return;
  }
  const auto isBefore = [](const Name& left, const Name& right) {
    return std::tie(left.read, left.key) < std::tie(right.read, right.key);
  };
  std::sort(names.begin(), names.end(), isBefore);
  for (std::size_t index = 1; index < names.size(); ++index) {
    if (names[index].read == names[index - 1].read) {
      findings.add(
          Rule::kSameName, document.tree(), names[index].key,
          {std::string("this ") + what + " and another one are both read as " +
               quote(names[index].read),
           "correct the bytes of the two names",
           "",
           {{document.tree()[names[index - 1].key].begin, std::string("the other ") + what}}});
    }
  }
}

}  // namespace

void checkName(SourceDocument& document, std::size_t node, const char* what,
               const DescribeItem& item, FindingList& findings) {
  const std::string_view name = document.nameOf(node);
  if (name.empty()) {
    findings.add(
        Rule::kEmptyName, document.tree(), node,
        {std::string("the ") + what + " is empty", "write a value that is not empty", item()});
    return;
  }
  const Suspects suspects = findSuspects(name);
  if (suspects.control) {
    reportControl(document, node, what, static_cast<char16_t>(*suspects.control), item, findings);
  }
  if (suspects.unseen) {
    findings.add(Rule::kUnseenCharacter, document.tree(), node,
                 {std::string("the ") + what + " contains the invisible character " +
                      codeOf(*suspects.unseen),
                  "remove the character; the text looks the same without it", item()});
  }
}

void checkNames(SourceDocument& document, std::size_t object, const char* what,
                FindingList& findings) {
  const std::string nameOfWhat = std::string("name of the ") + what;
  document.forEachMember(object, [&](std::size_t key) {
    checkName(
        document, key, nameOfWhat.c_str(), [] { return std::string(); }, findings);
    if (const std::string_view name = document.nameOf(key); isReserved(name)) {
      findings.add(
          Rule::kReservedName, document.tree(), key,
          {"the name " + quote(name) + " is reserved: it has a special meaning in every object",
           std::string("give the ") + what + " another name",
           std::string(what) + ' ' + quote(name)});
    }
  });
  checkSameNames(document, object, what, findings);
}

void checkPaths(SourceDocument& document, std::size_t array, const DescribeItem& item,
                FindingList& findings) {
  std::vector<FoldedPath> paths;
  document.forEachElement(array, [&](std::size_t element) {
    if (!document.isA(source::SourceKind::kString, element)) {
      return;
    }
    checkName(document, element, "path", item, findings);
    const std::string_view path = document.nameOf(element);
    if (path.empty()) {
      return;
    }
    for (const PathRule& rule : kPathRules) {
      if (rule.applies(path)) {
        findings.add(rule.rule, document.tree(), element, {rule.message, rule.advice, item()});
      }
    }
    paths.push_back({foldCase(path), path, element});
  });
  checkCase(document, paths, item, findings);
}

}  // namespace install::update_metadata_parser::diagnosis
