// RecordsetObject (ADODB.Recordset): rows for pages, over platform::Recordset; and the Field
// objects by which pages read and set columns.
#ifndef RK_PAGEHOST_COMPONENTS_RECORDSET_OBJECT_H_
#define RK_PAGEHOST_COMPONENTS_RECORDSET_OBJECT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/components/connection_object.h"
#include "pagehost/components/memory_rows.h"
#include "pagehost/components/property_objects.h"
#include "pagehost/components/row_view.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/database.h"

namespace rk::pagehost {

inline constexpr std::int32_t kLockBatch = 4;

// Whether a Move or Find begins at a bookmark: those are Doubles, and the places 0 to 2 are not.
inline bool is_bookmark(const Value& start) {
  return plain_value(start).kind() == Value::Kind::Double;
}

class RecordsetObject final : public TabledObject<RecordsetObject> {
 public:
  explicit RecordsetObject(AdoServices services) : services_(std::move(services)) {}
  ~RecordsetObject() override;
  RecordsetObject(const RecordsetObject&) = delete;
  RecordsetObject& operator=(const RecordsetObject&) = delete;
  std::string_view type_name() const override { return "Recordset"; }
  static std::span<const Member<RecordsetObject>> members();
  std::unique_ptr<Enumeration> enumerate() override;  // the fields

  // What a statement gave; no rows: a closed record set.
  void take(std::unique_ptr<platform::Recordset> rows, Ref<ConnectionObject> connection,
            std::shared_ptr<platform::Connection> opened, platform::SqlText source);

  // Rows without a connection.
  void take(std::unique_ptr<MemoryRows> rows);

  // The rows as Save wrote them, out of a file, an object or bytes: held by the client; with the
  // lock for batches their changes wait for a connection. Raises 53 where there is no file.
  void open_saved(const Value& from);

  // Closes the rows with their connection, whatever was being changed; nothing where it is closed.
  void shut();

  // The open rows; raises 3704 where there are none.
  platform::Recordset& rows();
  // The same for a look at the current row; raises -2147217885 where the page removed it.
  platform::Recordset& row();
  // The place of a column by its name or number; raises 3265.
  std::size_t ordinal_of(const Value& index);
  // As the column's type holds it; raises -2147352571 where it cannot, and 3251.
  void set_field(std::size_t ordinal, const Value& value);
  void append_chunk(std::size_t ordinal, const Value& more);
  Value next_chunk(std::size_t ordinal, std::size_t count);
  Value field_object(std::size_t ordinal);

  // The columns of a set that a page makes itself, before it is opened; raises 3219 for a set that
  // is open or has a statement, 3367 for a name that is there.
  void append_column(MemoryColumn column);
  void remove_column(const Value& index);
  bool is_made() const { return !rows_ && !appended_.empty(); }  // such columns, and not open
  std::size_t field_count();
  std::string field_name(std::size_t ordinal);
  platform::ColumnTraits field_traits(std::size_t ordinal);
  // Of rows without a connection, opened or not; null for those of a database.
  const MemoryColumn* memory_column(std::size_t ordinal) const;

 private:
  Value fields(const Call& call);
  Value open(const Call& call);
  Value close(const Call& call);
  Value bof(const Call& call);
  Value eof(const Call& call);
  Value move_next(const Call& call);
  Value move_previous(const Call& call);
  Value move_first(const Call& call);
  Value move_last(const Call& call);
  Value move(const Call& call);
  Value record_count(const Call& call);
  Value page_size(const Call& call);
  Value page_count(const Call& call);
  Value absolute_page(const Call& call);
  Value absolute_position(const Call& call);
  Value bookmark(const Call& call);
  Value filter(const Call& call);
  Value sort(const Call& call);
  Value clone(const Call& call);
  Value cursor_type(const Call& call);
  Value lock_type(const Call& call);
  Value cursor_location(const Call& call);
  Value cache_size(const Call& call);
  Value max_records(const Call& call);
  Value active_connection(const Call& call);
  Value source(const Call& call);
  Value state(const Call& call);
  Value status(const Call& call);
  Value edit_mode(const Call& call);
  Value add_new(const Call& call);
  Value update(const Call& call);
  Value update_batch(const Call& call);
  Value cancel_batch(const Call& call);
  Value cancel_update(const Call& call);
  Value remove(const Call& call);
  Value requery(const Call& call);
  Value supports(const Call& call);
  Value find(const Call& call);
  Value rows_array(const Call& call);
  Value rows_text(const Call& call);
  Value next_recordset(const Call& call);
  Value collect(const Call& call);
  Value properties(const Call& call);
  Value active_command(const Call& call);
  Value compare_bookmarks(const Call& call);
  Value marshal_options(const Call& call);
  Value save(const Call& call);
  Value nothing_to_do(const Call& call);
  Value number_property(const Call& call, std::int32_t& kept);

  void run();
  void belong_to(Ref<ConnectionObject> connection);
  void settle();  // no row is being changed, and no long value read or written in parts
  platform::ColumnType column_type(std::size_t ordinal);
  RowView& view();
  RowView& view_of_all_rows();
  void show_again();
  void go_to(const Value& start);
  void part_from_connection();
  void hold_batch();
  bool held_by_client() const;
  void set_fields(const Value& names, const Value& values);
  void connect(const Value& connection);
  bool opens_saved(const Value& from, std::int32_t options);

  AdoServices services_;
  Ref<ConnectionObject> connection_;
  std::shared_ptr<platform::Connection> opened_;  // outlives the rows
  std::unique_ptr<platform::Recordset> rows_;
  RowView* view_ = nullptr;             // rows_, where it is one
  MemoryRows* memory_ = nullptr;        // beneath rows_, where they are held in memory
  std::vector<MemoryColumn> appended_;  // columns of a set that is not open yet
  Value filter_ = Value::text("");      // or an array of bookmarks, or the number of pending rows
  std::string sort_;
  platform::SqlText source_;
  std::string saved_in_;  // the file that Save wrote last, or that the rows are from
  std::int32_t cursor_type_ = 0;
  std::int32_t lock_type_ = 1;
  std::int32_t cursor_location_ = 2;
  std::int32_t page_size_ = 10;
  std::int32_t cache_size_ = 1;
  std::int32_t max_records_ = 0;
  std::int32_t marshal_options_ = 0;
  bool location_given_ = false;  // CursorLocation was set here, not on the connection
  Ref<Object> command_;          // by which it was opened
  std::shared_ptr<PropertyList> properties_;
  std::vector<std::optional<platform::ColumnType>> column_types_;  // as far as asked
  Text text_of_chunk(std::size_t ordinal, const Value& more) const;

  // AppendChunk and GetChunk go on where the last call for the same column and row ended.
  struct Chunks {
    std::size_t column = static_cast<std::size_t>(-1);
    bool appending = false;
    std::size_t read = 0;
  };
  Chunks chunks_;
  enum class Editing : std::uint8_t { None = 0, Row = 1, NewRow = 2, Deleted = 4 };
  Editing editing_ = Editing::None;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_RECORDSET_OBJECT_H_
