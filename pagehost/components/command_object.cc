#include "pagehost/components/command_object.h"

#include <utility>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/command_texts.h"
#include "pagehost/components/recordset_object.h"
#include "value/array.h"
#include "value/conversions.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr KnownError kNoValueGiven{errors::kSqlMissingColumn,
                                   "No value given for one or more required parameters.",
                                   errors::kDatabaseSource};
constexpr KnownError kIncompleteParameter{
    3708,
    "Parameter object is improperly defined. Inconsistent or incomplete information was provided.",
    errors::kDatabaseSource};
constexpr KnownError kWrongParameterType{
    3421, "Application uses a value of the wrong type for the current operation.",
    errors::kDatabaseSource};

// What a procedure gives back has no value to hand in.
bool goes_in(const ParameterObject& parameter) {
  constexpr std::int32_t kOutput = 2;
  constexpr std::int32_t kReturnValue = 4;
  return parameter.direction != kOutput && parameter.direction != kReturnValue;
}

bool is_name_character(char c) {
  return c == '_' || (c >= '0' && c <= '9') || (ascii_lower(c) >= 'a' && ascii_lower(c) <= 'z');
}

const ParameterObject* named(const ParameterList& parameters, std::string_view name) {
  for (const auto& each : parameters) {
    const std::string_view own = each->name;
    if (equal_ignoring_case(own.starts_with('@') ? own.substr(1) : own, name)) return each.get();
  }
  return nullptr;
}

class ParameterWalk final : public Enumeration {
 public:
  explicit ParameterWalk(std::shared_ptr<ParameterList> list) : list_(std::move(list)) {}
  bool next(Value& item) override {
    if (at_ >= list_->size()) return false;
    item = Value::object((*list_)[at_++]);
    return true;
  }

 private:
  std::shared_ptr<ParameterList> list_;
  std::size_t at_ = 0;
};

class ParametersObject final : public TabledObject<ParametersObject> {
 public:
  explicit ParametersObject(std::shared_ptr<ParameterList> list) : list_(std::move(list)) {}
  std::string_view type_name() const override { return "Parameters"; }
  static std::span<const Member<ParametersObject>> members() {
    using P = ParametersObject;
    static constexpr Member<P> kMembers[] = {
        {"Item", &P::item, 1, 1, Access::Both}, {"Append", &P::append, 1, 1}, {"Count", &P::count},
        {"Delete", &P::remove, 1, 1},           {"Refresh", &P::refresh},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    return std::make_unique<ParameterWalk>(list_);
  }

 private:
  std::size_t place_of(const Value& index) const {
    const Value plain = plain_value(index);
    for (std::size_t i = 0; plain.is_text() && i < list_->size(); ++i) {
      if (equal_ignoring_case((*list_)[i]->name, plain.as_view())) return i;
    }
    if (plain.is_text()) raise(errors::kItemNotFound);
    const std::int32_t place = to_long(plain);
    if (place < 0 || static_cast<std::size_t>(place) >= list_->size()) {
      raise(errors::kItemNotFound);
    }
    return static_cast<std::size_t>(place);
  }
  Value item(const Call& call) {
    // Held: what is assigned may run script that takes it out of the list.
    const Ref<ParameterObject> found = (*list_)[place_of(call.at(0))];
    if (!call.assigns()) return Value::object(found);
    found->set_value(plain_value(call.assigned()));
    return {};
  }
  Value append(const Call& call) {
    const Value& value = call.at(0);
    auto* fresh = value.is_object() ? dynamic_cast<ParameterObject*>(value.as_object()) : nullptr;
    if (fresh == nullptr) raise(errors::kInvalidArgument);
    fresh->check_complete();
    list_->push_back(Ref<ParameterObject>(fresh));
    return {};
  }
  Value count(const Call&) { return Value::long_integer(static_cast<std::int32_t>(list_->size())); }
  Value remove(const Call& call) {
    list_->erase(list_->begin() + static_cast<std::ptrdiff_t>(place_of(call.at(0))));
    return {};
  }
  Value refresh(const Call&) { return {}; }

  std::shared_ptr<ParameterList> list_;
};

}  // namespace

std::span<const Member<ParameterObject>> ParameterObject::members() {
  using P = ParameterObject;
  static constexpr Member<P> kMembers[] = {
      {"Value", &P::value_member, 0, 0, Access::Both},
      {"Name", &P::name_member, 0, 0, Access::Both},
      {"Type", &P::type_member, 0, 0, Access::Both},
      {"Direction", &P::direction_member, 0, 0, Access::Both},
      {"Size", &P::size_member, 0, 0, Access::Both},
      {"Precision", &P::ignored, 0, 0, Access::Both},
      {"NumericScale", &P::ignored, 0, 0, Access::Both},
      {"Attributes", &P::ignored, 0, 0, Access::Both},
      {"AppendChunk", &P::append_chunk, 1, 1},
  };
  return kMembers;
}

Value ParameterObject::value_member(const Call& call) {
  if (!call.assigns()) return value;
  set_value(plain_value(call.assigned()));
  in_parts_ = false;
  return {};
}

// The first part replaces the value, each further one goes behind it.
Value ParameterObject::append_chunk(const Call& call) {
  const Value more = plain_value(call.at(0));
  if (!more.is_text() && !holds_bytes(more)) raise(kWrongParameterType);
  const Value held = in_parts_ ? value : Value::null();
  if (holds_bytes(held) || (holds_bytes(more) && !held.is_text())) {
    set_value(Value::array(Array::of_bytes(bytes_of(held) + bytes_of(more))));
  } else {
    Text whole = joined_text(held);
    whole.append(joined_text(more));
    set_value(Value::text(std::move(whole)));
  }
  in_parts_ = true;
  return {};
}

void ParameterObject::set_value(const Value& given) {
  const auto kind = static_cast<AdoType>(type);
  try {
    value = value_as(kind, given);
  } catch (const ScriptError&) {  // raised anew, with the number that commands have for it
    raise(kWrongParameterType);
  }
  const bool limited = size > 0 && is_sized(kind) && value.is_text();
  if (limited && value.as_text().length() > static_cast<std::size_t>(size)) {
    raise(kWrongParameterType);
  }
}

// A type of many lengths names one.
void ParameterObject::check_complete() const {
  if (size < 1 && is_sized(static_cast<AdoType>(type))) raise(kIncompleteParameter);
}

Value ParameterObject::name_member(const Call& call) {
  if (!call.assigns()) return Value::text(name);
  name = to_text(call.assigned()).string();
  return {};
}

Value ParameterObject::type_member(const Call& call) {
  if (!call.assigns()) return Value::long_integer(type);
  type = to_long(call.assigned());
  return {};
}

Value ParameterObject::direction_member(const Call& call) {
  if (!call.assigns()) return Value::long_integer(direction);
  direction = to_long(call.assigned());
  return {};
}

Value ParameterObject::size_member(const Call& call) {
  if (!call.assigns()) return Value::long_integer(size);
  size = to_long(call.assigned());
  return {};
}

Value ParameterObject::ignored(const Call& call) {
  return call.assigns() ? Value() : Value::long_integer(0);
}

platform::SqlText with_parameters(std::string_view statement, const ParameterList& given) {
  platform::SqlText out;
  ParameterList parameters = given;
  std::erase_if(parameters, [](const auto& each) { return !goes_in(*each); });
  std::size_t used = 0;
  char closing = 0;  // of the quoted text or name that runs
  for (std::size_t i = 0; i < statement.size(); ++i) {
    const char c = statement[i];
    if (closing != 0) {
      if (c == closing) closing = 0;
    } else if (c == '\'' || c == '"' || c == '[') {
      closing = c == '[' ? ']' : c;
    } else if (c == '?') {
      if (used >= parameters.size()) raise(kNoValueGiven);
      out.bind(parameters[used++]->value);
    } else if (c == '@') {
      std::size_t end = i + 1;
      while (end < statement.size() && is_name_character(statement[end])) ++end;
      const ParameterObject* found = named(parameters, statement.substr(i + 1, end - i - 1));
      if (found != nullptr) {
        out.add("?").bind(found->value);
        i = end - 1;
        continue;
      }
    }
    out.add(statement.substr(i, 1));
  }
  if (out.values().empty()) {
    for (const auto& each : parameters) out.bind(each->value);
  }
  return out;
}

std::span<const Member<CommandObject>> CommandObject::members() {
  using C = CommandObject;
  static constexpr Member<C> kMembers[] = {
      {"Parameters", &C::parameters, 0, 1, Access::Both},
      {"CreateParameter", &C::create_parameter, 0, 5},
      {"Execute", &C::execute, 0, 3},
      {"ActiveConnection", &C::active_connection, 0, 0, Access::Both},
      {"CommandText", &C::command_text, 0, 0, Access::Both},
      {"CommandType", &C::command_type, 0, 0, Access::Both},
      {"CommandTimeout", &C::command_timeout, 0, 0, Access::Both},
      {"Prepared", &C::prepared, 0, 0, Access::Both},
      {"Name", &C::name, 0, 0, Access::Both},
      {"State", &C::state},
      {"Cancel", &C::cancel},
  };
  return kMembers;
}

platform::SqlText CommandObject::statement(const ParameterList& parameters) const {
  const platform::SqlText plain(text_);
  const platform::SqlText table = statement_of(plain, type_);
  return table.text() == text_ ? with_parameters(text_, parameters) : table;
}

void CommandObject::take(std::string text, Ref<ConnectionObject> connection) {
  text_ = std::move(text);
  connection_ = std::move(connection);
}

Value CommandObject::parameters(const Call& call) {
  auto list = make_ref<ParametersObject>(parameters_);
  if (call.arguments().empty()) return Value::object(list);
  return list->invoke(kDefaultMember, call.kind(), call.arguments());
}

// CreateParameter(name, type, direction, size, value)
Value CommandObject::create_parameter(const Call& call) {
  auto fresh = make_ref<ParameterObject>();
  fresh->name = call.text_or(0, "");
  fresh->type = call.number_or(1, 0);
  fresh->direction = call.number_or(2, 1);
  fresh->size = call.number_or(3, 0);
  if (call.has(4)) fresh->set_value(plain_value(call.at(4)));
  return Value::object(fresh);
}

// The values that a call brings stand for this run in place of those of the parameters; one that is
// left out of them stays the parameter's own.
ParameterList CommandObject::given_parameters(const Call& call) const {
  ParameterList out = *parameters_;
  if (!call.has(1)) return out;
  const Value given = plain_value(call.at(1));
  const Value one[] = {given};
  const auto values = given.is_array() ? given.as_array().elements() : std::span<const Value>(one);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (i >= out.size()) out.push_back(make_ref<ParameterObject>());
    if (values[i].is_missing()) continue;
    auto fresh = make_ref<ParameterObject>();
    fresh->name = out[i]->name;
    fresh->type = out[i]->type;
    fresh->direction = out[i]->direction;
    fresh->size = out[i]->size;
    fresh->set_value(plain_value(values[i]));
    out[i] = std::move(fresh);
  }
  return out;
}

// Execute(affected, parameters, options)
Value CommandObject::execute(const Call& call) {
  if (!connection_) raise(kConnectionUnusable);
  return connection_->remembering([&] {
    std::int64_t affected = 0;
    const platform::SqlText sql = statement(given_parameters(call));
    Value made = connection_->run(sql, call.number_or(2, 0), affected);
    if (call.count() > 0) call.at(0) = Value::long_integer(static_cast<std::int32_t>(affected));
    return made;
  });
}

Value CommandObject::active_connection(const Call& call) {
  if (!call.assigns()) return connection_ ? Value::object(connection_) : Value::nothing();
  const Value& value = call.assigned();
  if (value.is_object()) {
    connection_ = Ref<ConnectionObject>(dynamic_cast<ConnectionObject*>(value.as_object()));
    if (!connection_ && value.as_object() != nullptr) raise(errors::kInvalidArgument);
    return {};
  }
  auto fresh = make_ref<ConnectionObject>(services_);
  fresh->open_with(to_text(value).string());
  connection_ = fresh;
  return {};
}

Value CommandObject::command_text(const Call& call) {
  if (!call.assigns()) return Value::text(text_);
  text_ = to_text(call.assigned()).string();
  return {};
}

Value CommandObject::command_type(const Call& call) {
  if (!call.assigns()) return Value::long_integer(type_);
  type_ = to_long(call.assigned());
  return {};
}

Value CommandObject::command_timeout(const Call& call) {
  if (!call.assigns()) return Value::long_integer(timeout_);
  timeout_ = to_long(call.assigned());
  return {};
}

Value CommandObject::prepared(const Call& call) {
  if (!call.assigns()) return Value::boolean(prepared_);
  prepared_ = to_boolean(call.assigned());
  return {};
}

Value CommandObject::name(const Call& call) {
  if (!call.assigns()) return Value::text(name_);
  name_ = to_text(call.assigned()).string();
  return {};
}

Value CommandObject::state(const Call&) {
  return Value::long_integer(0);
}

Value CommandObject::cancel(const Call&) {
  return {};
}

}  // namespace rk::pagehost
