#include "diagnosis/Members.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "diagnosis/EditDistance.h"
#include "diagnosis/Resembling.h"
#include "diagnosis/Words.h"

namespace install::update_metadata_parser::diagnosis {
namespace {

using source::SourceKind;

// The missing listed member that a name resembles, if any.
const ListedMember* findResembling(std::string_view name, const ListedMember* listed,
                                   std::size_t count, const std::vector<bool>& isThere) {
  if (name.size() > kLongestResembling) {
    return nullptr;
  }
  const ListedMember* nearest = nullptr;
  std::size_t least = mostEdits(name);
  for (const ListedMember* member = listed; member != listed + count; ++member) {
    const std::size_t distance = editDistance(name, member->name);
    if (!isThere[static_cast<std::size_t>(member - listed)] && distance <= least &&
        (nearest == nullptr || distance < least)) {
      nearest = member;
      least = distance;
    }
  }
  return nearest;
}

// Writes a section that is null as an empty one, which is read alike.
std::optional<Fix> writeEmpty(const SourceDocument& document, std::size_t null,
                              const ListedMember& member) {
  if (member.ifNull != Rule::kNullSection) {
    return std::nullopt;
  }
  return Fix{document.tree()[null].begin, document.tree().written(null).size(), "{}", true};
}

std::string quotedName(const ListedMember& member) {
  return '\'' + std::string(member.name) + '\'';
}

// `meant` is the listed member that the name resembles, if any. `isFirst` is false if an earlier
// name resembles it, too.
void reportUnlisted(const SourceDocument& document, std::size_t key, std::string_view name,
                    const ListedMember* meant, bool isFirst, const DescribeItem& item,
                    FindingList& findings) {
  std::optional<Fix> fix;
  std::string message = "unknown member " + quote(name);
  std::string advice = "remove it, unless another program reads it";
  if (meant != nullptr) {
    message += "; did you mean " + quotedName(*meant) + '?';
    advice = "correct the name, or remove the member";
    if (isFirst && document.isA(meant->kind, key + 1)) {
      fix = Fix{document.tree()[key].begin, document.tree().written(key).size(),
                '"' + std::string(meant->name) + '"', false};
    }
  } else {
    message += ": the library ignores it";
  }
  findings.add(Rule::kUnlistedMember, document.tree(), key,
               {std::move(message), std::move(advice), item(), {}, std::move(fix)});
}

// `similar` is the key of an unlisted member whose name resembles the missing one's, if any.
void reportMissing(const SourceDocument& document, std::size_t object, const ListedMember& member,
                   const std::optional<std::size_t>& similar, const DescribeItem& item,
                   FindingList& findings) {
  FindingWords words{
      quotedName(member) + " is missing",
      "add " + quotedName(member) + ", " + describeKind(member.kind) + ": " + member.meaning,
      item()};
  if (similar) {
    words.advice = "rename " + quote(document.nameOf(*similar)) + " to " + quotedName(member) +
                   " if that is what you mean; otherwise " + words.advice;
    words.related = {{document.tree()[*similar].begin, "the similar name"}};
  }
  findings.add(member.ifMissing, document.tree(), object, std::move(words));
}

}  // namespace

bool checkKind(const SourceDocument& document, std::size_t value, SourceKind kind,
               const std::string& name, const std::string& meaning, const DescribeItem& item,
               FindingList& findings) {
  const SourceKind actual = document.tree()[value].kind;
  if (actual == kind) {
    return true;
  }
  const bool isNull = actual == SourceKind::kNull;
  findings.add(isNull ? Rule::kNullValue : Rule::kWrongKind, document.tree(), value,
               {name + " must be " + describeKind(kind) + ", not " + describeKind(actual),
                std::string("write ") + describeKind(kind) + " here: " + meaning, item()});
  return false;
}

void checkMembers(const SourceDocument& document, std::size_t object, const ListedMember* listed,
                  std::size_t count, std::optional<std::size_t>* values, const DescribeItem& item,
                  FindingList& findings) {
  const source::SourceTree& tree = document.tree();
  std::string buffer;
  std::vector<bool> isThere(count);
  std::vector<std::size_t> unlisted;
  document.forEachMember(object, [&](std::size_t key) {
    const std::string_view name = tree.decodedInto(key, buffer);
    const ListedMember* const member = std::find_if(
        listed, listed + count, [&](const ListedMember& each) { return each.name == name; });
    if (member == listed + count) {
      unlisted.push_back(key);
      return;
    }
    const auto index = static_cast<std::size_t>(member - listed);
    isThere[index] = true;
    const std::size_t value = key + 1;
    if (!member->isRead) {
      return;
    }
    if (document.isA(SourceKind::kNull, value) && member->ifNull != Rule::kNullValue) {
      findings.add(member->ifNull, tree, value,
                   {quotedName(*member) + " is null, which is read as empty",
                    std::string("keep null if that is intended; otherwise write ") +
                        describeKind(member->kind) + ": " + member->meaning,
                    item(),
                    {},
                    writeEmpty(document, value, *member)});
    } else if (checkKind(document, value, member->kind, quotedName(*member), member->meaning, item,
                         findings)) {
      values[index] = value;
    }
  });
  std::vector<std::optional<std::size_t>> similar(count);
  for (const std::size_t key : unlisted) {
    const std::string_view name = tree.decodedInto(key, buffer);
    const ListedMember* const meant = findResembling(name, listed, count, isThere);
    bool isFirst = false;
    if (meant != nullptr) {
      std::optional<std::size_t>& one = similar[static_cast<std::size_t>(meant - listed)];
      isFirst = !one;
      one = key;
    }
    reportUnlisted(document, key, name, meant, isFirst, item, findings);
  }
  if (!tree[object].isClosed) {
    return;
  }
  for (std::size_t index = 0; index < count; ++index) {
    if (!isThere[index] && listed[index].isRead) {
      reportMissing(document, object, listed[index], similar[index], item, findings);
    }
  }
}

}  // namespace install::update_metadata_parser::diagnosis
