#pragma once
// Rows that have been read already: nothing, or one column whose values are given.

#include <string>
#include <vector>

#include "database/recordset.h"

namespace tarlo::database {

class StoredRecordset final : public Recordset {
 public:
  StoredRecordset() = default;
  StoredRecordset(std::string title, std::vector<Variant> values)
      : fields_(1), title_(std::move(title)), values_(std::move(values)) {}

  std::size_t fieldCount() const override { return fields_; }
  const std::string& fieldName(std::size_t i) const override;
  bool atEnd() const override { return row_ >= values_.size(); }
  Variant value(std::size_t i) const override;
  void moveNext() override;

 private:
  std::size_t fields_ = 0;
  std::string title_;
  std::vector<Variant> values_;
  std::size_t row_ = 0;
};

}  // namespace tarlo::database
