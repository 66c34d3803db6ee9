// RowView: a record set as a page has filtered and sorted it, and the clones of one. All views of
// one set share its rows: what one of them changes the others show, and each stands where it likes.
//
// A bookmark is a row's number at the time when the first view was made; rows that are removed do
// not change it, and rows that are added get numbers behind all others. The page's thread.
#ifndef RK_PAGEHOST_COMPONENTS_ROW_VIEW_H_
#define RK_PAGEHOST_COMPONENTS_ROW_VIEW_H_

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/components/placed_rows.h"
#include "pagehost/components/row_criterion.h"

namespace rk::pagehost {

class RowView;

// A record set that knows its rows by number, and its views.
struct SharedRows {
  std::unique_ptr<platform::Recordset> rows;
  std::vector<RowView*> views;
  std::vector<std::int64_t> removed;  // bookmarks, ascending
};

class RowView final : public PlacedRows {
 public:
  // Stands where the rows stand; `adding` where they have a new row that is not stored yet.
  RowView(std::shared_ptr<SharedRows> shared, bool adding);
  ~RowView() override;
  RowView(const RowView&) = delete;
  RowView& operator=(const RowView&) = delete;

  const std::shared_ptr<SharedRows>& shared() const { return shared_; }

  // Shows the rows that `filter` lets through, in `order`; null: all, or as they come. Goes to the
  // first one.
  void show(const RowFilter* filter, const RowOrder* order);
  // Shows the rows of these bookmarks; those that are gone are left out.
  void show_bookmarked(const std::vector<std::int64_t>& bookmarks);
  // Shows the rows of these places in the set, from 1.
  void show_positions(std::vector<std::int64_t> positions);
  // The rows beneath are others now: all views of them show all, from the first one on.
  void forget_all();
  std::int64_t bookmark();                     // raises 3021
  void go_to_bookmark(std::int64_t bookmark);  // raises 3001 where that row is gone or not shown

  std::size_t field_count() const override { return rows().field_count(); }
  const std::string& field_name(std::size_t ordinal) const override {
    return rows().field_name(ordinal);
  }
  std::size_t ordinal(std::string_view name) const override { return rows().ordinal(name); }
  Value field(std::size_t ordinal) override;
  bool append_field_text(std::size_t ordinal, std::string& out) override;
  platform::ColumnTraits traits(std::size_t ordinal) const override {
    return rows().traits(ordinal);
  }
  Value original(std::size_t ordinal) override;
  using Recordset::field;
  using Recordset::set_field;

  void add_new() override;
  void set_field(std::size_t ordinal, const Value& value) override;
  void update() override;
  void cancel_update() override;
  void remove() override;
  void close() override {}

 protected:
  std::int64_t row_count() const override;
  void leave_row() override;

 private:
  platform::Recordset& rows() const { return *shared_->rows; }
  std::int64_t position_of(std::int64_t place) const;
  void bring();
  void forget(std::int64_t position);
  std::optional<std::int64_t> position_of_bookmark(std::int64_t bookmark) const;

  std::shared_ptr<SharedRows> shared_;
  // The numbers of the rows shown, in their order; nothing: all rows as they come.
  std::optional<std::vector<std::int64_t>> shown_;
  bool adding_;
  bool editing_ = false;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ROW_VIEW_H_
