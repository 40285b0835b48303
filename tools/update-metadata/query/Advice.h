#pragma once

#include <exception>
#include <string>

namespace update_metadata_tool {

/// Tells what to do about a document that could not be loaded.
///
/// The library's texts say what went wrong and are fixed; this adds what usually helps, by the text
/// and by the kind of `failure`. Never empty, without a line feed and without a final full stop.
std::string adviseOnLoading(const std::exception& failure);

/// Tells what to do when a loaded document could not be answered, in the same form.
///
/// \param productData  what the user named as the product data; empty if nothing
std::string adviseOnAnswering(const std::exception& failure, const std::u16string& productData);

}  // namespace update_metadata_tool
