#include "pagehost/components/connection_object.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/command_texts.h"
#include "pagehost/components/connection_texts.h"
#include "pagehost/components/recordset_object.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kFileProperty = "Data Source";

class ErrorObject final : public TabledObject<ErrorObject> {
 public:
  explicit ErrorObject(const ScriptError& error) : error_(error) {}
  std::string_view type_name() const override { return "Error"; }
  static std::span<const Member<ErrorObject>> members() {
    static constexpr Member<ErrorObject> kMembers[] = {
        {"Description", &ErrorObject::description}, {"Number", &ErrorObject::number},
        {"Source", &ErrorObject::source},           {"NativeError", &ErrorObject::native_error},
        {"SQLState", &ErrorObject::sql_state},      {"HelpFile", &ErrorObject::sql_state},
    };
    return kMembers;
  }

 private:
  Value description(const Call&) { return Value::text(error_.description()); }
  Value number(const Call&) { return Value::long_integer(error_.number()); }
  Value source(const Call&) {
    return Value::text(error_.source().empty() ? kAdoSource : std::string_view(error_.source()));
  }
  Value native_error(const Call&) { return Value::long_integer(0); }
  Value sql_state(const Call&) { return Value::text(""); }

  ScriptError error_;
};

// The failure of the connection's last step, if it failed; Clear reaches the connection.
class ErrorsObject final : public TabledObject<ErrorsObject> {
 public:
  explicit ErrorsObject(Ref<ConnectionObject> connection) : connection_(std::move(connection)) {}
  std::string_view type_name() const override { return "Errors"; }
  static std::span<const Member<ErrorsObject>> members() {
    static constexpr Member<ErrorsObject> kMembers[] = {
        {"Item", &ErrorsObject::item, 1, 1},
        {"Count", &ErrorsObject::count},
        {"Clear", &ErrorsObject::clear},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override;

 private:
  Value item(const Call& call) {
    const auto& failure = connection_->last_failure();
    if (!failure || call.number(0) != 0) raise(rk::errors::kItemNotFound);
    return Value::object(make_ref<ErrorObject>(*failure));
  }
  Value count(const Call&) { return Value::long_integer(connection_->last_failure() ? 1 : 0); }
  Value clear(const Call&) {
    connection_->forget_failure();
    return {};
  }

  Ref<ConnectionObject> connection_;
};

class OneWalk final : public Enumeration {
 public:
  explicit OneWalk(Value only) : only_(std::move(only)) {}
  bool next(Value& item) override {
    if (only_.is_empty()) return false;
    item = std::exchange(only_, Value());
    return true;
  }

 private:
  Value only_;
};

std::unique_ptr<Enumeration> ErrorsObject::enumerate() {
  const auto& failure = connection_->last_failure();
  return std::make_unique<OneWalk>(failure ? Value::object(make_ref<ErrorObject>(*failure))
                                           : Value());
}

platform::SchemaList schema_list(std::int32_t number) {
  using platform::SchemaList;
  switch (number) {
    case 4:
      return SchemaList::Columns;
    case 12:
      return SchemaList::Indexes;
    case 20:
      return SchemaList::Tables;
    case 27:
      return SchemaList::ForeignKeys;
    case 28:
      return SchemaList::PrimaryKeys;
    default:
      raise(rk::errors::kFeatureNotAvailable);
  }
}

// Keeps the rows whose first columns have these values; an Empty or a Null lets all through.
void restrict_rows(platform::SchemaRows& list, const Value& wanted) {
  if (!wanted.is_array()) raise(rk::errors::kInvalidArgument);
  const auto values = wanted.as_array().elements();
  const auto differs = [&](const std::vector<Value>& row) {
    for (std::size_t i = 0; i < std::min(values.size(), row.size()); ++i) {
      const Value value = plain_value(values[i]);
      if (value.is_empty() || value.is_null() || value.is_missing()) continue;
      if (!equal_ignoring_case(joined_text(value).view(), joined_text(row[i]).view())) return true;
    }
    return false;
  };
  list.rows.erase(std::remove_if(list.rows.begin(), list.rows.end(), differs), list.rows.end());
}

// What lists of columns have besides for pages that show all of it: Null where the database does
// not tell it.
void complete_columns(platform::SchemaRows& list) {
  for (const std::string_view name : {"COLUMN_FLAGS", "NUMERIC_PRECISION", "NUMERIC_SCALE",
                                      "DATETIME_PRECISION", "DESCRIPTION"}) {
    const auto same = [&](const std::string& each) { return equal_ignoring_case(each, name); };
    if (std::any_of(list.columns.begin(), list.columns.end(), same)) continue;
    list.columns.emplace_back(name);
    for (auto& row : list.rows) row.push_back(Value::null());
  }
}

std::unique_ptr<MemoryRows> memory_rows(platform::SchemaRows list) {
  std::vector<MemoryColumn> columns;
  for (std::size_t i = 0; i < list.columns.size(); ++i) {
    const bool known = !list.rows.empty() && !list.rows[0][i].is_null();
    columns.push_back(
        {std::move(list.columns[i]), known ? ado_type_of(list.rows[0][i]) : AdoType::VarWChar, 0});
  }
  return std::make_unique<MemoryRows>(std::move(columns), std::move(list.rows));
}

class KeptConnection final : public KeptObject {
 public:
  KeptConnection(std::string connection_string, bool open, std::int32_t cursor_location,
                 std::function<AdoServices(PageServices&)> of_page)
      : connection_string_(std::move(connection_string)),
        open_(open),
        cursor_location_(cursor_location),
        of_page_(std::move(of_page)) {}
  std::string_view type_name() const override { return "Connection"; }
  Ref<Object> made_for(PageServices& page) const override {
    auto fresh = make_ref<ConnectionObject>(of_page_ ? of_page_(page) : page.database());
    fresh->set_cursor_location(cursor_location_);
    if (open_) fresh->open_with(connection_string_);
    return fresh;
  }

 private:
  std::string connection_string_;
  bool open_;
  std::int32_t cursor_location_;
  std::function<AdoServices(PageServices&)> of_page_;
};

}  // namespace

Ref<KeptObject> ConnectionObject::kept() const {
  return make_ref<KeptConnection>(whole_connection_string(connection_string_),
                                  connection_ != nullptr, cursor_location_,
                                  services_.files ? services_.files->of_page : nullptr);
}

std::span<const Member<ConnectionObject>> ConnectionObject::members() {
  using C = ConnectionObject;
  static constexpr Member<C> kMembers[] = {
      {"ConnectionString", &C::connection_string, 0, 0, Access::Both},
      {"Execute", &C::execute, 1, 3},
      {"Open", &C::open, 0, 4},
      {"Close", &C::close},
      {"BeginTrans", &C::begin_trans},
      {"CommitTrans", &C::commit_trans},
      {"RollbackTrans", &C::rollback_trans},
      {"State", &C::state},
      {"Errors", &C::errors, 0, 1},
      {"OpenSchema", &C::open_schema, 1, 3},
      {"Version", &C::version},
      {"CursorLocation", &C::cursor_location, 0, 0, Access::Both},
      {"CommandTimeout", &C::command_timeout, 0, 0, Access::Both},
      {"ConnectionTimeout", &C::connection_timeout, 0, 0, Access::Both},
      {"Mode", &C::mode, 0, 0, Access::Both},
      {"IsolationLevel", &C::isolation_level, 0, 0, Access::Both},
      {"Provider", &C::provider, 0, 0, Access::Both},
      {"DefaultDatabase", &C::default_database, 0, 0, Access::Both},
      {"Attributes", &C::attributes, 0, 0, Access::Both},
      {"Properties", &C::properties, 0, 1, Access::Both},
      {"Cancel", &C::nothing_to_do},
  };
  return kMembers;
}

std::shared_ptr<platform::Connection> ConnectionObject::opened() const {
  if (!connection_) raise(kConnectionUnusable);
  return connection_;
}

Value ConnectionObject::remembering(const std::function<Value()>& step) {
  failure_.reset();
  try {
    return step();
  } catch (const ScriptError& error) {  // passed on
    failure_ = error;
    throw;
  }
}

void ConnectionObject::open_with(const std::string& connection_string) {
  if (connection_ || of_files_) raise(rk::errors::kObjectOpen);
  of_files_ = names_saved_rows(connection_string) || is_saved_rows_provider(provider_);
  if (of_files_) return;
  std::shared_ptr<platform::Connection> fresh = services_.database->page_connection();
  fresh->open(whole_connection_string(connection_string));
  connection_ = std::move(fresh);
  connection_string_ = connection_string;
}

// With what the page set beside it: the file among the properties, a connection that only reads.
std::string ConnectionObject::whole_connection_string(const std::string& connection_string) const {
  constexpr std::int32_t kModeRead = 1;
  std::string out = provider_.empty() ? connection_string : connection_to_file(connection_string);
  const Property* file = properties_ ? property_named(*properties_, kFileProperty) : nullptr;
  const std::string path = file ? joined_text(file->value).string() : "";
  if (!path.empty()) out = with_keyword(out, kFileProperty, path);
  return mode_ == kModeRead ? with_keyword(out, "Mode", "Read") : out;
}

void ConnectionObject::remove_set(const RecordsetObject& set) {
  // The newest ones go first, as a rule.
  const auto found = std::find(sets_.rbegin(), sets_.rend(), &set);
  if (found != sets_.rend()) sets_.erase(std::next(found).base());
}

Value ConnectionObject::connection_string(const Call& call) {
  return text_property(call, connection_string_);
}

Value ConnectionObject::open(const Call& call) {
  return remembering([&] {
    open_with(call.text_or(0, connection_string_));
    return Value();
  });
}

Value ConnectionObject::close(const Call&) {
  if (std::exchange(of_files_, false)) return {};
  if (!connection_) raise(rk::errors::kObjectClosed);
  for (RecordsetObject* set : sets_) set->shut();
  transactions_ = 0;
  const auto closing = std::exchange(connection_, nullptr);
  closing->close();
  return {};
}

// Execute(text, affected, options): a record set, closed where the statement gives no rows.
Value ConnectionObject::execute(const Call& call) {
  return remembering([&] {
    if (of_files_) return saved_rows(call.at(0));
    if (!connection_) raise(rk::errors::kObjectClosed);
    std::int64_t affected = 0;
    const std::int32_t options = call.number_or(2, 0);
    Value made = run(statement_of(platform::SqlText(call.text(0)), options), options, affected);
    if (call.count() > 1) call.at(1) = Value::long_integer(static_cast<std::int32_t>(affected));
    return made;
  });
}

Value ConnectionObject::saved_rows(const Value& file) {
  auto recordset = make_ref<RecordsetObject>(services_);
  recordset->open_saved(plain_value(file));
  return Value::object(recordset);
}

Value ConnectionObject::run(platform::SqlText sql, std::int32_t options, std::int64_t& affected) {
  const auto opened = this->opened();
  std::unique_ptr<platform::Recordset> rows;
  naming_parameters(sql, [&] { rows = rows_of(sql, affected); });
  if (has_option(options, kExecuteNoRecords)) rows.reset();
  auto recordset = make_ref<RecordsetObject>(services_);
  recordset->take(std::move(rows), Ref<ConnectionObject>(this), opened, std::move(sql));
  return Value::object(recordset);
}

std::unique_ptr<platform::Recordset> ConnectionObject::rows_of(const platform::SqlText& sql,
                                                               std::int64_t& affected) {
  const auto held = [&] {
    return connection_->open_recordset(sql, platform::CursorType::Static,
                                       platform::LockType::ReadOnly);
  };
  const bool client = cursor_location_ == kUseClient;
  if (client && begins_as_select(sql.text())) return held();
  auto rows = connection_->execute(sql, &affected);
  return client && rows ? held() : std::move(rows);
}

Value ConnectionObject::begin_trans(const Call&) {
  return remembering([&] {
    if (!connection_) raise(rk::errors::kObjectClosed);
    connection_->begin_transaction();
    return Value::long_integer(++transactions_);
  });
}

Value ConnectionObject::commit_trans(const Call&) {
  return remembering([&] {
    if (!connection_) raise(rk::errors::kObjectClosed);
    connection_->commit_transaction();
    if (transactions_ > 0) --transactions_;
    return Value();
  });
}

Value ConnectionObject::rollback_trans(const Call&) {
  return remembering([&] {
    if (!connection_) raise(rk::errors::kObjectClosed);
    connection_->roll_back_transaction();
    if (transactions_ > 0) --transactions_;
    return Value();
  });
}

Value ConnectionObject::state(const Call&) {
  return Value::long_integer(connection_ || of_files_ ? 1 : 0);
}

Value ConnectionObject::errors(const Call& call) {
  auto found = make_ref<ErrorsObject>(Ref<ConnectionObject>(this));
  if (call.count() == 0) return Value::object(found);
  return found->invoke(kDefaultMember, CallKind::Get, call.arguments());
}

// OpenSchema(list, values to restrict it by): rows of tables, columns, indexes or keys.
Value ConnectionObject::open_schema(const Call& call) {
  return remembering([&] {
    if (!connection_) raise(rk::errors::kObjectClosed);
    const platform::SchemaList wanted = schema_list(call.number(0));
    platform::SchemaRows list = connection_->schema(wanted);
    if (wanted == platform::SchemaList::Columns) complete_columns(list);
    if (call.has(1)) restrict_rows(list, plain_value(call.at(1)));
    auto recordset = make_ref<RecordsetObject>(services_);
    recordset->take(memory_rows(std::move(list)));
    return Value::object(recordset);
  });
}

Value ConnectionObject::version(const Call&) {
  return Value::text("2.8");
}

Value ConnectionObject::cursor_location(const Call& call) {
  return number_property(call, cursor_location_);
}

Value ConnectionObject::command_timeout(const Call& call) {
  return number_property(call, command_timeout_);
}

Value ConnectionObject::connection_timeout(const Call& call) {
  return number_property(call, connection_timeout_);
}

Value ConnectionObject::mode(const Call& call) {
  if (call.assigns() && connection_) raise(rk::errors::kObjectOpen);
  return number_property(call, mode_);
}

Value ConnectionObject::isolation_level(const Call& call) {
  return number_property(call, isolation_level_);
}

// As the page or its connection string names it; without a name the driver manager's is meant.
Value ConnectionObject::provider(const Call& call) {
  if (call.assigns()) {
    if (connection_) raise(rk::errors::kObjectOpen);
    return text_property(call, provider_);
  }
  std::string named = connection_keyword(connection_string_, "Provider");
  if (named.empty()) named = provider_.empty() ? "MSDASQL" : provider_;
  return Value::text(named);
}

// What pages ask of a Jet connection, and what they set before Open: the file counts, and the rest
// is of no effect, as in a connection string.
Value ConnectionObject::properties(const Call& call) {
  if (!properties_) {
    const Value none = Value::text("");
    properties_ = std::make_shared<PropertyList>(PropertyList{
        {std::string(kFileProperty), none},
        {"Data Source Name", none},
        {"User ID", Value::text("Admin")},
        {"Password", none},
        {"Extended Properties", none},
        {"Persist Security Info", Value::boolean(false)},
        {"Prompt", Value::long_integer(4)},
        {"Locale Identifier", Value::long_integer(1033)},
        {"DBMS Name", Value::text("MS Jet")},
        {"DBMS Version", Value::text("04.00.0000")},
        {"Jet OLEDB:System database", none},
        {"Jet OLEDB:Database Password", none},
        {"Jet OLEDB:Engine Type", Value::long_integer(5)},
        {"Jet OLEDB:Database Locking Mode", Value::long_integer(1)},
    });
  }
  Value& file = property_named(*properties_, kFileProperty)->value;
  if (joined_text(file).empty()) {
    file = Value::text(connection_keyword(connection_string_, kFileProperty));
  }
  property_named(*properties_, "Data Source Name")->value = file;
  return properties_member(properties_, call);
}

Value ConnectionObject::attributes(const Call& call) {
  return number_property(call, attributes_);
}

Value ConnectionObject::default_database(const Call& call) {
  return text_property(call, default_database_);
}

// Cancel: no statement runs on while the page does something else.
Value ConnectionObject::nothing_to_do(const Call&) {
  return {};
}

Value ConnectionObject::number_property(const Call& call, std::int32_t& kept) {
  if (!call.assigns()) return Value::long_integer(kept);
  kept = to_long(call.assigned());
  return {};
}

Value ConnectionObject::text_property(const Call& call, std::string& kept) {
  if (!call.assigns()) return Value::text(kept);
  kept = to_text(call.assigned()).string();
  return {};
}

}  // namespace rk::pagehost
