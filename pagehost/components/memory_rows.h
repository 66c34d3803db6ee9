// MemoryRows: a record set without a database: rows of columns that a page appended, the rows of a
// set that was parted from its connection, and the lists of OpenSchema. The page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_MEMORY_ROWS_H_
#define RK_PAGEHOST_COMPONENTS_MEMORY_ROWS_H_

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/placed_rows.h"

namespace rk::pagehost {

struct MemoryColumn {
  std::string name;
  AdoType type = AdoType::VarWChar;
  std::int32_t size = 0;  // characters of a text, 0: as many as it likes
};

// What was set on the current row, or on a new one, and not stored yet.
struct MemoryEdit {
  bool adding = false;
  std::vector<std::optional<Value>> values;
};

class MemoryRows final : public PlacedRows {
 public:
  MemoryRows(std::vector<MemoryColumn> columns, std::vector<std::vector<Value>> rows)
      : columns_(std::move(columns)), rows_(std::move(rows)) {}

  // The rows of `from` from its first one on, with its columns. Raises 7 past the limit of arrays.
  static std::unique_ptr<MemoryRows> of(platform::Recordset& from);

  const MemoryColumn& column(std::size_t ordinal) const;  // raises 3265

  std::size_t field_count() const override { return columns_.size(); }
  const std::string& field_name(std::size_t ordinal) const override;
  std::size_t ordinal(std::string_view name) const override;
  Value field(std::size_t ordinal) override;
  bool append_field_text(std::size_t ordinal, std::string& out) override;
  platform::ColumnTraits traits(std::size_t ordinal) const override;
  Value original(std::size_t ordinal) override;
  using Recordset::field;
  using Recordset::set_field;

  void add_new() override;
  void set_field(std::size_t ordinal, const Value& value) override;
  void update() override;
  void cancel_update() override { edit_.reset(); }
  void remove() override;
  void close() override {}

 protected:
  std::int64_t row_count() const override { return static_cast<std::int64_t>(rows_.size()); }
  void leave_row() override { update(); }

 private:
  std::vector<MemoryColumn> columns_;
  std::vector<std::vector<Value>> rows_;
  std::optional<MemoryEdit> edit_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_MEMORY_ROWS_H_
