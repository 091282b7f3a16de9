#include "database/stored_recordset.h"

namespace tarlo::database {

const std::string& StoredRecordset::fieldName(std::size_t i) const {
  if (i >= fields_) throw noSuchField();
  return title_;
}

Variant StoredRecordset::value(std::size_t i) const {
  if (atEnd()) throw noCurrentRow();
  if (i >= fields_) throw noSuchField();
  return values_[row_];
}

void StoredRecordset::moveNext() {
  if (atEnd()) throw noCurrentRow();
  ++row_;
}

}  // namespace tarlo::database
