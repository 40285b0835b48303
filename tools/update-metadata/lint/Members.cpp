#include "lint/Members.h"

#include <algorithm>
#include <cctype>
#include <utility>
#include <vector>

#include "lint/Words.h"

namespace update_metadata_tool {
namespace {

constexpr std::size_t kLongestResembling = 40;

char lowered(char byte) {
  return static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
}

// How many letters have to be changed, put in or left out to make one word the other, whatever
// their case.
std::size_t editDistance(std::string_view left, std::string_view right) {
  std::vector<std::size_t> row(right.size() + 1);
  for (std::size_t column = 0; column < row.size(); ++column) {
    row[column] = column;
  }
  for (std::size_t index = 0; index < left.size(); ++index) {
    std::size_t diagonal = std::exchange(row[0], index + 1);
    for (std::size_t column = 1; column < row.size(); ++column) {
      const bool isSame = lowered(left[index]) == lowered(right[column - 1]);
      const std::size_t changed = diagonal + (isSame ? 0 : 1);
      diagonal = row[column];
      row[column] = std::min({changed, diagonal + 1, row[column - 1] + 1});
    }
  }
  return row.back();
}

// The listed member that a name resembles, if any; of those that are not there anyway.
const ListedMember* findResembling(std::string_view name, const ListedMember* listed,
                                   std::size_t count, const std::vector<bool>& isThere) {
  if (name.size() > kLongestResembling) {
    return nullptr;
  }
  const ListedMember* nearest = nullptr;
  std::size_t least = name.size() <= 4 ? 1 : 2;
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

std::string quotedName(const ListedMember& member) {
  return '\'' + std::string(member.name) + '\'';
}

void reportUnlisted(const SourceDocument& document, std::size_t key, std::string_view name,
                    const ListedMember* listed, const std::vector<bool>& isThere,
                    const DescribeItem& item, FindingList& findings) {
  std::string message = quote(name) + " is not read";
  std::string advice = "take it out if it is not meant for another reader";
  if (const ListedMember* meant = findResembling(name, listed, isThere.size(), isThere)) {
    message += "; it resembles " + quotedName(*meant);
    advice = "write " + quotedName(*meant) + " if that is meant";
  }
  findings.add(Rule::kUnlistedMember, document.tree(), key,
               {std::move(message), std::move(advice), item()});
}

void reportMissing(const SourceDocument& document, std::size_t object, const ListedMember& member,
                   const DescribeItem& item, FindingList& findings) {
  findings.add(
      member.ifMissing, document.tree(), object,
      {quotedName(member) + " is missing",
       "add " + quotedName(member) + ", " + describeKind(member.kind) + ": " + member.meaning,
       item()});
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
               {name + " is " + describeKind(actual) + " and must be " + describeKind(kind),
                std::string("write ") + describeKind(kind) + " here: " + meaning, item()});
  return false;
}

void checkMembers(const SourceDocument& document, std::size_t object, const ListedMember* listed,
                  std::size_t count, std::optional<std::size_t>* values, const DescribeItem& item,
                  FindingList& findings) {
  const SourceTree& tree = document.tree();
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
                   {quotedName(*member) + " is null and is read as if it were empty",
                    std::string("leave it so if the document says nothing of it, else write ") +
                        describeKind(member->kind) + ": " + member->meaning,
                    item()});
    } else if (checkKind(document, value, member->kind, quotedName(*member), member->meaning, item,
                         findings)) {
      values[index] = value;
    }
  });
  for (const std::size_t key : unlisted) {
    reportUnlisted(document, key, tree.decodedInto(key, buffer), listed, isThere, item, findings);
  }
  if (!tree[object].isClosed) {
    return;
  }
  for (std::size_t index = 0; index < count; ++index) {
    if (!isThere[index] && listed[index].isRead) {
      reportMissing(document, object, listed[index], item, findings);
    }
  }
}

}  // namespace update_metadata_tool
