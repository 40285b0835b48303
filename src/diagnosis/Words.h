#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "diagnosis/source/SourceTree.h"

namespace install::update_metadata_parser::diagnosis {

/// A name of the document, of any bytes, as messages quote it: 'name', cut to about sixty bytes.
std::string quote(std::string_view name);

/// The key of a package, "component_package", as quote() shows it. The whole key is not composed.
std::string quoteKey(std::string_view component, std::string_view package);

/// A kind in words: "a number", "an object".
const char* describeKind(source::SourceKind kind);

/// What a component is, in words.
std::string describeComponent(std::string_view component);

/// What a product is, in words.
std::string describeProduct(std::string_view product);

/// What a package is, in words; `what` is "to delete", "to extract" or "with files to delete".
std::string describePackage(std::string_view package, const char* what, std::string_view component);

/// What the value at a JSON Pointer is or belongs to, in words, as far as the pointer shows it;
/// empty for the document itself and for members that are not read.
std::string describePlace(std::string_view pointer);

}  // namespace install::update_metadata_parser::diagnosis
