// MemoryRows: a record set without a database: rows of columns that a page appended, the rows of a
// set that was parted from its connection, and the lists of OpenSchema; and the rows of a batch,
// whose changes wait until they are stored together. The page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_MEMORY_ROWS_H_
#define RK_PAGEHOST_COMPONENTS_MEMORY_ROWS_H_

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/placed_rows.h"
#include "pagehost/components/row_changes.h"

namespace rk::pagehost {

struct MemoryColumn {
  std::string name;
  AdoType type = AdoType::VarWChar;
  std::int32_t size = 0;  // characters of a text, 0: as many as it likes
  // Of a column that was read out of a database: where a batch stores it.
  platform::ColumnTraits origin = {};
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

  // The rows of `from` from its first one on, with its columns, or those of `beneath` where it
  // shows these. Raises 7 past the limit of arrays.
  static std::unique_ptr<MemoryRows> of(platform::Recordset& from,
                                        const MemoryRows* beneath = nullptr);

  // From now on changes are pending until they are stored or cancelled, and only columns that can
  // be stored may be set (3251).
  void begin_batch() { changes_.emplace(rows_.size()); }
  bool is_batch() const { return changes_.has_value(); }
  // Of the current row, as scripts number it: 0 where there is no batch; raises 3021.
  std::int32_t status() const;
  std::vector<std::int64_t> changed_positions() const;
  // Of the rows that the last store found changed or gone, or that the database refused.
  std::vector<std::int64_t> conflict_positions() const;
  // All pending changes in one transaction, or none: raises -2147217864 where a row that was
  // changed or removed is no longer as it was read, and the database's errors.
  void store_batch(platform::Connection& connection);
  // Those of the current row, in the same way; raises 3021.
  void store_current(platform::Connection& connection);
  // The rows are those of the last store again; goes to the first one.
  void cancel_batch();

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
  using Origins = std::vector<platform::ColumnTraits>;
  Origins origins() const;
  bool store_removed(platform::Connection& connection, const Origins& origins) const;
  bool store_row(platform::Connection& connection, const Origins& origins, std::size_t at,
                 RowValues& stored);
  static bool store_new_row(platform::Connection& connection, RowValues& row,
                            const RowChange& change, const Origins& origins);

  std::vector<std::vector<Value>> rows_;
  std::optional<MemoryEdit> edit_;
  std::optional<RowChanges> changes_;  // of a batch
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_MEMORY_ROWS_H_
