#pragma once

#include <iosfwd>
#include <memory>

#include "places/LoadedDocument.h"
#include "places/Place.h"

namespace update_metadata_tool::list {

/// Writes rows, one for each place that names a package.
class RowWriter {
 public:
  RowWriter() = default;
  virtual ~RowWriter() = default;
  RowWriter(const RowWriter&) = delete;
  RowWriter& operator=(const RowWriter&) = delete;

  /// What comes before the rows of all documents.
  virtual void writeHeading(std::ostream& out) const = 0;

  /// Begins the rows of a document.
  virtual void begin(const places::DocumentHead& head) = 0;

  /// One row. \pre a document was begun, and the place has a package
  virtual void write(const places::Place& place, std::ostream& out) const = 0;
};

/// Rows as objects of JSON, one on each line.
std::unique_ptr<RowWriter> makeJsonRows();

/// Rows of fields separated by tabs, after one row with their names.
///
/// A missing value is an empty field. Texts are written as in JSON, without the quotation marks,
/// and with quotation marks as they are: a tab is \t.
std::unique_ptr<RowWriter> makeTsvRows();

}  // namespace update_metadata_tool::list
