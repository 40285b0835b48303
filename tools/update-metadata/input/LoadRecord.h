#pragma once

#include <string>

namespace update_metadata_tool::input {

/// Has the library load `text` as the document at `path`, and records everything that it reads: the
/// calls that the handler receives, in order, and the two tables of packages.
///
/// A handler builds its model only from these calls and from the tables, which it receives with
/// every product. So documents have equal records exactly if they have equal models, except for
/// components that no product uses. A record is as large as the document, while a model has an
/// element for each package of each component of each product. The form of the result is
/// unspecified.
///
/// The library's exceptions pass through.
std::u16string recordLoad(const std::u16string& path, const std::string& text);

/// As recordLoad(), but without what changes no answer: documents have equal records even if a
/// product names a component several times in one list, or if an update level is written as another
/// number that is read back alike.
std::u16string recordAnswers(const std::u16string& path, const std::string& text);

}  // namespace update_metadata_tool::input
