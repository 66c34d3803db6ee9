#include "pagehost/components/recordset_object.h"

#include <utility>
#include <vector>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/command_object.h"
#include "pagehost/components/command_texts.h"
#include "pagehost/components/connection_texts.h"
#include "pagehost/components/field_objects.h"
#include "pagehost/components/row_criterion.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using platform::CursorType;

constexpr std::int32_t kLockPessimistic = 2;
constexpr std::int32_t kLockOptimistic = 3;

}  // namespace

std::span<const Member<RecordsetObject>> RecordsetObject::members() {
  using R = RecordsetObject;
  static constexpr Member<R> kMembers[] = {
      {"Fields", &R::fields, 0, 1, Access::Both},
      {"EOF", &R::eof},
      {"BOF", &R::bof},
      {"MoveNext", &R::move_next},
      {"MovePrevious", &R::move_previous},
      {"MoveFirst", &R::move_first},
      {"MoveLast", &R::move_last},
      {"Move", &R::move, 1, 2},
      {"Open", &R::open, 0, 5},
      {"Close", &R::close},
      {"RecordCount", &R::record_count},
      {"PageSize", &R::page_size, 0, 0, Access::Both},
      {"PageCount", &R::page_count},
      {"AbsolutePage", &R::absolute_page, 0, 0, Access::Both},
      {"AbsolutePosition", &R::absolute_position, 0, 0, Access::Both},
      {"Bookmark", &R::bookmark, 0, 0, Access::Both},
      {"Filter", &R::filter, 0, 0, Access::Both},
      {"Sort", &R::sort, 0, 0, Access::Both},
      {"Clone", &R::clone, 0, 1},
      {"CursorType", &R::cursor_type, 0, 0, Access::Both},
      {"LockType", &R::lock_type, 0, 0, Access::Both},
      {"CursorLocation", &R::cursor_location, 0, 0, Access::Both},
      {"CacheSize", &R::cache_size, 0, 0, Access::Both},
      {"MaxRecords", &R::max_records, 0, 0, Access::Both},
      {"ActiveConnection", &R::active_connection, 0, 0, Access::Both},
      {"Source", &R::source, 0, 0, Access::Both},
      {"State", &R::state},
      {"Status", &R::status},
      {"EditMode", &R::edit_mode},
      {"AddNew", &R::add_new, 0, 2},
      {"Update", &R::update, 0, 2},
      {"UpdateBatch", &R::update_batch, 0, 1},
      {"CancelUpdate", &R::cancel_update},
      {"CancelBatch", &R::cancel_batch, 0, 1},
      {"Delete", &R::remove, 0, 1},
      {"Requery", &R::requery, 0, 1},
      {"Resync", &R::nothing_to_do, 0, 2},
      {"Supports", &R::supports, 1, 1},
      {"Find", &R::find, 1, 4},
      {"GetRows", &R::rows_array, 0, 3},
      {"GetString", &R::rows_text, 0, 5},
      {"Save", &R::save, 0, 2},
      {"NextRecordset", &R::next_recordset, 0, 1},
      {"Cancel", &R::nothing_to_do},
      {"Collect", &R::collect, 1, 1, Access::Both},
      {"Properties", &R::properties, 0, 1, Access::Both},
      {"ActiveCommand", &R::active_command},
      {"CompareBookmarks", &R::compare_bookmarks, 2, 2},
      {"MarshalOptions", &R::marshal_options, 0, 0, Access::Both},
  };
  return kMembers;
}

std::unique_ptr<Enumeration> RecordsetObject::enumerate() {
  return fields_object(Ref<RecordsetObject>(this))->enumerate();
}

void RecordsetObject::take(std::unique_ptr<platform::Recordset> rows,
                           Ref<ConnectionObject> connection,
                           std::shared_ptr<platform::Connection> opened, platform::SqlText source) {
  rows_ = std::move(rows);
  belong_to(std::move(connection));
  opened_ = std::move(opened);
  source_ = std::move(source);
  if (!held_by_client()) return;
  cursor_location_ = kUseClient;
  cursor_type_ = static_cast<std::int32_t>(CursorType::Static);
}

RecordsetObject::~RecordsetObject() {
  belong_to({});
}

void RecordsetObject::belong_to(Ref<ConnectionObject> connection) {
  if (connection_) connection_->remove_set(*this);
  connection_ = std::move(connection);
  if (connection_) connection_->add_set(*this);
}

void RecordsetObject::settle() {
  editing_ = Editing::None;
  chunks_ = {};
}

void RecordsetObject::shut() {
  settle();
  view_ = nullptr;
  memory_ = nullptr;
  column_types_.clear();
  filter_ = Value::text("");
  sort_.clear();
  rows_.reset();
  opened_ = nullptr;
}

platform::Recordset& RecordsetObject::rows() {
  if (!rows_) raise(errors::kObjectClosed);
  return *rows_;
}

platform::Recordset& RecordsetObject::row() {
  if (editing_ == Editing::Deleted) raise(kRowDeleted);
  return rows();
}

void RecordsetObject::connect(const Value& connection) {
  if (connection.is_object()) {
    Ref<ConnectionObject> given(dynamic_cast<ConnectionObject*>(connection.as_object()));
    if (!given && connection.as_object() != nullptr) raise(errors::kInvalidArgument);
    return belong_to(std::move(given));
  }
  const std::string text = to_text(connection).string();
  if (names_saved_rows(text)) return belong_to({});
  auto fresh = make_ref<ConnectionObject>(services_);
  fresh->open_with(text);
  belong_to(std::move(fresh));
}

// Open(source, connection, cursor type, lock type, options)
Value RecordsetObject::open(const Call& call) {
  if (rows_) raise(errors::kObjectOpen);
  if (!call.has(0) && source_.text().empty() && !appended_.empty()) {
    take(std::make_unique<MemoryRows>(appended_, std::vector<std::vector<Value>>()));
    cursor_location_ = kUseClient;
    return {};
  }
  const std::int32_t options = call.number_or(4, 0);
  if (call.has(1)) connect(call.at(1));
  cursor_type_ = call.number_or(2, cursor_type_);
  lock_type_ = call.number_or(3, lock_type_);
  const Value saved = call.has(0) ? call.at(0) : Value::text(source_.text());
  if (opens_saved(saved, options)) {
    open_saved(saved);
    return {};
  }
  if (call.has(0)) {
    command_ = {};
    const Value from = call.at(0);
    auto* command = from.is_object() ? dynamic_cast<CommandObject*>(from.as_object()) : nullptr;
    if (command != nullptr) {
      source_ = command->statement();
      if (!call.has(1) && command->connection()) belong_to(command->connection());
      command_ = Ref<Object>(command);
    } else {
      source_ = platform::SqlText(to_text(from).string());
    }
  }
  source_ = statement_of(source_, options);
  run();
  return {};
}

void RecordsetObject::run() {
  if (!connection_) raise(kConnectionUnusable);
  if (cursor_type_ < 0 || cursor_type_ > 3 || lock_type_ < 1 || lock_type_ > 4) {
    raise(errors::kInvalidArgument);
  }
  opened_ = connection_->opened();
  // Records held by the client are always a static set, and so are those of a batch.
  const bool forward_only = cursor_type_ == static_cast<std::int32_t>(CursorType::ForwardOnly);
  if (held_by_client()) {
    cursor_location_ = kUseClient;
    // What nothing is locked for until it is stored.
    if (lock_type_ == kLockPessimistic) lock_type_ = kLockOptimistic;
  }
  if (held_by_client() || (forward_only && lock_type_ == kLockBatch))
    cursor_type_ = static_cast<std::int32_t>(CursorType::Static);
  connection_->remembering([&] {
    naming_parameters(source_, [&] {
      rows_ = opened_->open_recordset(source_, static_cast<CursorType>(cursor_type_),
                                      static_cast<platform::LockType>(lock_type_));
    });
    return Value();
  });
  view_ = nullptr;
  memory_ = nullptr;
  column_types_.clear();
  if (rows_ && page_size_ != rows_->page_size()) rows_->set_page_size(page_size_);
  settle();
}

bool RecordsetObject::held_by_client() const {
  if (location_given_ || !connection_) return cursor_location_ == kUseClient;
  return cursor_location_ == kUseClient || connection_->cursor_location() == kUseClient;
}

// A row that is being changed wants its Update or CancelUpdate first.
Value RecordsetObject::close(const Call&) {
  rows();
  const bool changing = editing_ == Editing::Row || editing_ == Editing::NewRow;
  if (changing && lock_type_ != kLockBatch) raise(errors::kNotAllowedInContext);
  const auto outlives = opened_;
  const auto closing = std::exchange(rows_, nullptr);
  shut();
  closing->close();
  return {};
}

Value RecordsetObject::eof(const Call&) {
  return Value::boolean(rows().eof());
}

Value RecordsetObject::bof(const Call&) {
  return Value::boolean(rows().bof());
}

Value RecordsetObject::move_next(const Call&) {
  rows().move_next();
  settle();
  return {};
}

Value RecordsetObject::move_previous(const Call&) {
  rows().move_previous();
  settle();
  return {};
}

Value RecordsetObject::move_first(const Call&) {
  rows().move_first();
  settle();
  return {};
}

Value RecordsetObject::move_last(const Call&) {
  rows().move_last();
  settle();
  return {};
}

// Move(rows, start): start is 0 the current row, 1 the first, 2 the last, or a bookmark.
Value RecordsetObject::move(const Call& call) {
  using Origin = platform::Recordset::Origin;
  Origin origin = Origin::Current;
  if (call.has(1) && is_bookmark(call.at(1))) {
    go_to(call.at(1));
  } else if (call.has(1)) {
    const std::int32_t start = call.number(1);
    if (start < 0 || start > 2) raise(errors::kInvalidArgument);
    origin = static_cast<Origin>(start);
  }
  rows().move(call.number(0), origin);
  settle();
  return {};
}

Value RecordsetObject::record_count(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(rows().record_count()));
}

Value RecordsetObject::page_size(const Call& call) {
  if (!call.assigns()) return Value::long_integer(rows_ ? rows_->page_size() : page_size_);
  const std::int32_t size = to_long(call.assigned());
  if (size < 1) raise(errors::kInvalidArgument);
  if (rows_) rows_->set_page_size(size);
  page_size_ = size;
  return {};
}

Value RecordsetObject::page_count(const Call&) {
  return Value::long_integer(rows().page_count());
}

Value RecordsetObject::absolute_page(const Call& call) {
  if (!call.assigns()) return Value::long_integer(rows().absolute_page());
  rows().set_absolute_page(to_long(call.assigned()));
  settle();
  return {};
}

Value RecordsetObject::absolute_position(const Call& call) {
  if (!call.assigns()) {
    return Value::long_integer(static_cast<std::int32_t>(rows().absolute_position()));
  }
  rows().set_absolute_position(to_long(call.assigned()));
  settle();
  return {};
}

Value RecordsetObject::cursor_type(const Call& call) {
  if (call.assigns() && rows_) raise(errors::kObjectOpen);
  return number_property(call, cursor_type_);
}

Value RecordsetObject::lock_type(const Call& call) {
  if (call.assigns() && rows_) raise(errors::kObjectOpen);
  return number_property(call, lock_type_);
}

Value RecordsetObject::cursor_location(const Call& call) {
  if (call.assigns() && rows_) raise(errors::kObjectOpen);
  if (call.assigns()) location_given_ = true;
  return number_property(call, cursor_location_);
}

Value RecordsetObject::marshal_options(const Call& call) {
  return number_property(call, marshal_options_);
}

Value RecordsetObject::cache_size(const Call& call) {
  return number_property(call, cache_size_);
}

Value RecordsetObject::max_records(const Call& call) {
  return number_property(call, max_records_);
}

Value RecordsetObject::active_connection(const Call& call) {
  if (!call.assigns()) return connection_ ? Value::object(connection_) : Value::nothing();
  const Value& given = call.assigned();
  const bool parts = given.is_object() && given.as_object() == nullptr;
  if (rows_ && !memory_) {
    if (!parts || !held_by_client()) raise(errors::kObjectOpen);
    part_from_connection();
  }
  connect(given);
  return {};
}

Value RecordsetObject::source(const Call& call) {
  if (!call.assigns()) return Value::text(source_.text());
  if (rows_) raise(errors::kObjectOpen);
  source_ = platform::SqlText(to_text(call.assigned()).string());
  return {};
}

Value RecordsetObject::state(const Call&) {
  return Value::long_integer(rows_ ? 1 : 0);
}

Value RecordsetObject::edit_mode(const Call&) {
  rows();
  return Value::long_integer(static_cast<std::int32_t>(editing_));
}

// One name with one value, or arrays of both.
void RecordsetObject::set_fields(const Value& names, const Value& values) {
  const Value plain_names = plain_value(names);
  if (!plain_names.is_array()) return set_field(ordinal_of(plain_names), plain_value(values));
  const Value plain_values = plain_value(values);
  if (!plain_values.is_array()) raise(errors::kInvalidArgument);
  const auto all_names = plain_names.as_array().elements();
  const auto all_values = plain_values.as_array().elements();
  if (all_names.size() != all_values.size()) raise(errors::kInvalidArgument);
  for (std::size_t i = 0; i < all_names.size(); ++i) {
    set_field(ordinal_of(all_names[i]), plain_value(all_values[i]));
  }
}

Value RecordsetObject::add_new(const Call& call) {
  hold_batch();
  rows().add_new();
  editing_ = Editing::NewRow;
  if (!call.has(0)) return {};
  if (!call.has(1)) raise(errors::kInvalidArgument);
  set_fields(call.at(0), call.at(1));
  rows().update();
  settle();
  return {};
}

Value RecordsetObject::update(const Call& call) {
  if (call.count() == 2 && call.has(0)) set_fields(call.at(0), call.at(1));
  const auto step = [&] {
    rows().update();
    return Value();
  };
  if (connection_) {
    connection_->remembering(step);
  } else {
    step();
  }
  settle();
  return {};
}

Value RecordsetObject::cancel_update(const Call&) {
  rows().cancel_update();
  settle();
  return {};
}

Value RecordsetObject::remove(const Call&) {
  hold_batch();
  row().remove();
  settle();
  editing_ = Editing::Deleted;
  return {};
}

Value RecordsetObject::requery(const Call&) {
  rows();
  if (memory_ && (!connection_ || source_.text().empty())) raise(errors::kFeatureNotAvailable);
  std::exchange(rows_, nullptr)->close();
  view_ = nullptr;
  run();
  show_again();
  return {};
}

// What its cursor and lock allow.
Value RecordsetObject::supports(const Call& call) {
  constexpr std::int32_t kMovePrevious = 0x200;
  constexpr std::int32_t kBookmarks = 0x2000 | 0x4000;  // and absolute positions
  constexpr std::int32_t kChanges = 0x1000400 | 0x1000800 | 0x1008000;
  constexpr std::int32_t kBatch = 0x10000;
  constexpr std::int32_t kFind = 0x80000;
  rows();
  std::int32_t can = kFind;
  if (cursor_type_ != 0) can |= kMovePrevious | kBookmarks;
  if (lock_type_ != 1) can |= kChanges;
  if (lock_type_ == kLockBatch) can |= kBatch;
  const std::int32_t asked = call.number(0);
  return Value::boolean((can & asked) == asked);
}

// Find(criterion, rows to skip, direction, start): the row that matches, or the end.
Value RecordsetObject::find(const Call& call) {
  const RowCriterion criterion(call.text(0));
  const bool forward = call.number_or(2, 1) >= 0;
  rows();
  if (call.has(3)) go_to(call.at(3));
  platform::Recordset& all = rows();
  if (all.eof() || all.bof()) raise(errors::kNoCurrentRecord);
  for (std::int32_t skip = call.number_or(1, 0); skip > 0 && !all.eof() && !all.bof(); --skip) {
    forward ? all.move_next() : all.move_previous();
  }
  while (!all.eof() && !all.bof() && !criterion.holds(all)) {
    forward ? all.move_next() : all.move_previous();
  }
  settle();
  return {};
}

// GetRows(rows, start, fields): an array (field, row) of the rows from here on.
Value RecordsetObject::rows_array(const Call& call) {
  rows();
  const std::int32_t most = call.number_or(0, -1);
  if (call.has(1)) go_to(call.at(1));
  platform::Recordset& all = rows();
  std::vector<std::size_t> columns;
  if (call.has(2)) {
    const Value wanted = plain_value(call.at(2));
    if (wanted.is_array()) {
      for (const Value& each : wanted.as_array().elements()) columns.push_back(ordinal_of(each));
    } else {
      columns.push_back(ordinal_of(wanted));
    }
  } else {
    for (std::size_t i = 0; i < all.field_count(); ++i) columns.push_back(i);
  }
  if (all.eof() || all.bof()) raise(errors::kNoCurrentRecord);
  std::vector<Value> cells;
  std::int32_t count = 0;
  for (; !all.eof() && (most < 0 || count < most); ++count) {
    for (const std::size_t column : columns) cells.push_back(all.field(column));
    if (cells.size() > kMaxArrayElements) raise(errors::kOutOfMemory);
    all.move_next();
  }
  settle();
  const std::int32_t bounds[] = {static_cast<std::int32_t>(columns.size()) - 1, count - 1};
  Ref<Array> out = Array::make(bounds);
  std::move(cells.begin(), cells.end(), out->elements().begin());
  return Value::array(std::move(out));
}

// GetString(format, rows, column delimiter, row delimiter, text of Null)
Value RecordsetObject::rows_text(const Call& call) {
  platform::Recordset& all = rows();
  if (all.eof() || all.bof()) raise(errors::kNoCurrentRecord);
  const std::int32_t most = call.number_or(1, -1);
  const std::string between = call.text_or(2, "\t");
  const std::string behind = call.text_or(3, "\r");
  const std::string null_text = call.text_or(4, "");
  std::string out;
  for (std::int32_t count = 0; !all.eof() && (most < 0 || count < most); ++count) {
    for (std::size_t i = 0; i < all.field_count(); ++i) {
      if (i > 0) out += between;
      if (!all.append_field_text(i, out)) out += null_text;
    }
    out += behind;
    if (out.size() > kMaxTextBytes) raise(errors::kOutOfStringSpace);
    all.move_next();
  }
  settle();
  return Value::text(out);
}

// One statement gives one set of rows.
Value RecordsetObject::next_recordset(const Call&) {
  view_ = nullptr;
  memory_ = nullptr;
  if (rows_) std::exchange(rows_, nullptr)->close();
  return Value::nothing();
}

Value RecordsetObject::nothing_to_do(const Call&) {
  return {};
}

Value RecordsetObject::number_property(const Call& call, std::int32_t& kept) {
  if (!call.assigns()) return Value::long_integer(kept);
  kept = to_long(call.assigned());
  return {};
}

}  // namespace rk::pagehost
