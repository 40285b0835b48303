#pragma once

#include <string>

namespace update_metadata_tool::fmt {

/// Has the library load `text` as the document at `path`, and writes down everything that it takes
/// from it: the calls that the handler gets, in order, and the two tables of packages.
///
/// A handler makes its model from these calls and from the tables, which it is given with every
/// product, and from nothing else: documents with equal records have equal models, and others have
/// not, but for components that no product names. A record is as large as the document, while a
/// model has an element for each package of each component of each product. What it looks like is
/// of no interest.
///
/// The library's exceptions pass through.
std::u16string recordLoad(const std::u16string& path, const std::string& text);

}  // namespace update_metadata_tool::fmt
