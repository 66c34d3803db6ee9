#include <algorithm>
#include <array>

#include "value/array.h"
#include "value/conversions.h"
#include "vbscript/argument_buffer.h"
#include "vbscript/machine.h"
#include "vbscript/procedure_object.h"

namespace rk::vbscript {

namespace {

std::int32_t index_number(const Value& value) {
  if (value.kind() == Value::Kind::Integer) return value.as_integer();
  return to_long(value);
}

const Array& array_in(const Value& variable) {
  if (!variable.is_array()) raise(errors::kTypeMismatch);
  return variable.as_array();
}

// The place of an element by values of indexes. An index that is an object may run script when it
// is read, and change the variable: its array is looked at behind that.
template <class IndexAt>
std::size_t place_in(const Value& variable, std::size_t count, IndexAt&& index_at) {
  if (count == 1) {
    const std::int32_t index = index_number(index_at(0));
    const Array& array = array_in(variable);
    if (array.dimensions() == 1) {
      if (index < 0 || index > array.upper_bound(0)) raise(errors::kSubscriptOutOfRange);
      return static_cast<std::size_t>(index);
    }
    return array.index_of({&index, 1});
  }
  std::array<std::int32_t, kMaxArrayDimensions> indexes{};
  if (count > indexes.size()) raise(errors::kSubscriptOutOfRange);
  for (std::size_t i = 0; i < count; ++i) indexes[i] = index_number(index_at(i));
  return array_in(variable).index_of({indexes.data(), count});
}

Value element(const Array& array, std::size_t at) {
  if (array.holds_bytes()) return Value::byte(static_cast<std::uint8_t>(array.bytes()[at]));
  return array.elements()[at];
}

void store_element(Array& array, std::size_t at, const Value& value) {
  if (array.holds_bytes()) {
    if (value.is_object()) raise(errors::kTypeMismatch);
    array.bytes()[at] = static_cast<char>(to_byte(value));
  } else {
    array.elements()[at] = value;
  }
}

bool is_object(const Value& value) {
  return value.is_object();
}

}  // namespace

void Machine::index(Frame& frame, const Value& base, std::span<const Operand> indexes,
                    Value& result) {
  if (base.is_array()) {
    const std::size_t place = place_in(
        base, indexes.size(), [&](std::size_t i) -> const Value& { return at(frame, indexes[i]); });
    Value found = element(base.as_array(), place);
    result = std::move(found);
    return;
  }
  if (!base.is_object()) raise(errors::kTypeMismatch);
  if (base.as_object() == nullptr) raise(errors::kObjectNotSet);
  const Ref<Object> object(base.as_object());
  ArgumentBuffer buffer;
  collect(frame, indexes, buffer);
  invoke(*object, kDefaultMember, CallKind::Get, buffer.arguments(), &result);
}

void Machine::store_index(Frame& frame, Value& base, std::span<const Operand> indexes,
                          const Value& value, bool set) {
  if (set && !value.is_object()) raise(errors::kObjectRequired);
  if (base.is_array()) {
    // What is stored is read first: that may run script too.
    Value stored = value;
    if (!set) let(stored, value);
    const auto index_at = [&](std::size_t i) -> const Value& { return at(frame, indexes[i]); };
    const std::size_t place = place_in(base, indexes.size(), index_at);
    if (!base.as_array().unique()) charge(base);  // copied now
    store_element(base.writable_array(), place, stored);
    return;
  }
  if (!base.is_object()) raise(errors::kTypeMismatch);
  if (base.as_object() == nullptr) raise(errors::kObjectNotSet);
  const Ref<Object> object(base.as_object());
  ArgumentBuffer buffer;
  for (const Operand o : indexes) buffer.add_copy(at(frame, o));
  buffer.add_copy(value);
  invoke(*object, kDefaultMember, set ? CallKind::Set : CallKind::Let, buffer.arguments(), nullptr);
}

// a(i)(j) = value. Indexes become plain values one by one; as that may run script, the walk, which
// points into arrays, begins anew behind it.
void Machine::store_path(Value& base, Rows rows, const Value& value, bool set) {
  Value* holder = &base;
  std::size_t walked = 0;
  while (holder->is_array()) {
    std::vector<Value>& row = rows[walked];
    if (const auto object = std::find_if(row.begin(), row.end(), is_object); object != row.end()) {
      *object = plain_value(*object);
      holder = &base;
      walked = 0;
      continue;
    }
    const auto index_at = [&](std::size_t i) -> const Value& { return row[i]; };
    const std::size_t place = place_in(*holder, row.size(), index_at);
    if (!holder->as_array().unique()) charge(*holder);  // copied now
    Array& array = holder->writable_array();
    if (++walked == rows.size()) return store_element(array, place, value);
    if (array.holds_bytes()) raise(errors::kTypeMismatch);
    holder = &array.elements()[place];
  }
  if (!holder->is_object()) raise(errors::kTypeMismatch);
  if (holder->as_object() == nullptr) raise(errors::kObjectNotSet);
  const Ref<Object> object(holder->as_object());
  const bool last = walked + 1 == rows.size();
  std::vector<Value*> arguments;
  for (Value& index : rows[walked]) arguments.push_back(&index);
  Value stored = value;
  if (last) {
    arguments.push_back(&stored);
    invoke(*object, kDefaultMember, set ? CallKind::Set : CallKind::Let, arguments, nullptr);
    return;
  }
  Value answer;
  invoke(*object, kDefaultMember, CallKind::Get, arguments, &answer);
  store_path(answer, rows.subspan(walked + 1), value, set);
}

void Machine::store_path(Frame& frame, const Instruction& i) {
  const bool set = i.n != 0;
  const Value& value = at(frame, i.c);
  if (set && !value.is_object()) raise(errors::kObjectRequired);
  Value stored = value;
  if (!set) let(stored, value);
  std::vector<std::vector<Value>> rows = rows_of(frame, &frame.code->lists[i.b]);
  store_path(at(frame, i.a), rows, stored, set);
}

std::vector<std::vector<Value>> Machine::rows_of(Frame& frame, const std::uint32_t* list) {
  std::vector<std::vector<Value>> rows;
  for (const std::uint32_t *row = list + 1, *end = row + list[0]; row < end; row += *row + 1) {
    std::vector<Value>& indexes = rows.emplace_back();
    for (std::uint32_t k = 1; k <= *row; ++k) indexes.push_back(at(frame, row[k]));
  }
  return rows;
}

// An element that was passed by reference, where the call changed it. What an object answered on
// the way is a copy: nothing is written to it.
void Machine::write_back(Frame& frame, const Instruction& i) {
  const Value& before = at(frame, i.b);
  const Value after = at(frame, i.c);
  Value& variable = at(frame, i.a);
  if (before.is_same(after) || !variable.is_array()) return;
  std::vector<std::vector<Value>> rows = rows_of(frame, &frame.code->lists[(&i + 1)->c]);
  store_path(variable, rows, after, after.is_object());
}

void Machine::member(Frame& frame, const Instruction& i, CallKind kind) {
  const std::uint32_t* const list = &frame.code->lists[i.c];
  const std::span<const Operand> operands(list + 3, list[0]);
  const Value& base = at(frame, i.b);
  if (!base.is_object() || base.as_object() == nullptr) raise(errors::kObjectRequired);
  const Ref<Object> object(base.as_object());
  const MemberId id = member_id(frame, *object, list[1], list[2]);
  ArgumentBuffer buffer;
  if (kind != CallKind::Let && kind != CallKind::Set) {
    collect(frame, operands, buffer);
    Value* const result = kind == CallKind::Get ? &at(frame, i.a) : nullptr;
    invoke(*object, id, kind, buffer.arguments(), result);
    return;
  }
  for (const Operand o : operands) buffer.add_copy(at(frame, o));
  const Value& value = at(frame, i.a);
  if (kind == CallKind::Set && !value.is_object()) raise(errors::kObjectRequired);
  buffer.add_copy(value);
  invoke(*object, id, kind, buffer.arguments(), nullptr);
}

MemberId Machine::member_id(Frame& frame, Object& object, std::uint32_t site, std::uint32_t name) {
  CallSite& known = frame.unit->sites[site];
  const void* const table = object.member_table();
  if (table != nullptr && known.table == table) return known.id;
  const std::string_view text = frame.bases[1][name].as_view();
  const MemberId id = object.member(text);
  if (id == kNoMember) raise_about(errors::kNoSuchMember, text);
  if (table != nullptr) known = {table, id};
  return id;
}

void Machine::invoke(Object& object, MemberId id, CallKind kind, Arguments arguments,
                     Value* result) {
  // A component may keep a copy of what it is given, as a stream does.
  if (kind != CallKind::Get) {
    for (const Value* argument : arguments) charge(*argument);
  }
  Value answer = object.invoke(id, kind, arguments);
  charge(answer);
  if (result != nullptr) *result = std::move(answer);
}

// --- members of script objects -----------------------------------------------------------------

namespace {

// The code that such a use of a member calls; below 0 where there is none for the world.
int callee_of(const ClassMember& member, CallKind kind) {
  switch (kind) {
    case CallKind::Method:
    case CallKind::Get:
      if (member.method >= 0) return member.is_public ? member.method : -1;
      return member.get_public ? member.property_get : -1;
    case CallKind::Let:
      // QUIRK: `object.Name = value` calls a method Name with the value behind its arguments.
      if (member.method >= 0) return member.is_public ? member.method : -1;
      return member.let_public ? member.property_let : -1;
    case CallKind::Set:
      return member.method < 0 && member.set_public ? member.property_set : -1;
  }
  return -1;
}

}  // namespace

Value Machine::invoke_member(ScriptObject& object, MemberId id, CallKind kind,
                             Arguments arguments) {
  const ClassCode& code = object.code();
  const int index = id == kDefaultMember ? code.default_member : id - 1;
  if (index < 0 || index >= static_cast<int>(code.members.size())) raise(errors::kNoSuchMember);
  const ClassMember& m = code.members[static_cast<std::size_t>(index)];
  const bool reads = kind == CallKind::Get || kind == CallKind::Method;
  if (m.field >= 0) {
    if (!m.is_public) raise_about(errors::kNoSuchMember, m.text);
    Value& field = object.fields()[static_cast<std::size_t>(m.field)];
    if (reads) return field_element(field, arguments);
    store_field(field, kind, arguments);
    return Value();
  }
  const int callee = callee_of(m, kind);
  if (callee >= 0) {
    const Code& called = *object.unit().unit->codes[static_cast<std::size_t>(callee)];
    const bool indexes = reads && m.method < 0 && called.parameters() == 0 && !arguments.empty();
    if (!indexes) return answer(object, callee, arguments);
    // object.Items(1): the brackets index what the property answers.
    Value items = answer(object, callee, {});
    return field_element(items, arguments);
  }
  // What a property answers is assigned to by its elements or default member.
  const bool only_read =
      m.get_public && m.property_get >= 0 && m.property_let < 0 && m.property_set < 0;
  if (reads || arguments.size() < 2 || !only_read) raise_about(errors::kNoSuchMember, m.text);
  Value items = answer(object, m.property_get, {});
  store_field(items, kind, arguments);
  return Value();
}

Value Machine::answer(ScriptObject& object, int code, Arguments arguments) {
  LoadedUnit& unit = object.unit();
  Value result;
  call({unit.unit->codes[static_cast<std::size_t>(code)].get(), &unit}, &object, arguments,
       &result);
  return result;
}

Value Machine::field_element(Value& field, Arguments arguments) {
  if (arguments.empty()) return field;
  if (field.is_array()) {
    const auto index_at = [&](std::size_t i) -> const Value& { return *arguments[i]; };
    const std::size_t place = place_in(field, arguments.size(), index_at);
    return element(field.as_array(), place);
  }
  if (!field.is_object()) raise(errors::kWrongArgumentCount);
  if (field.as_object() == nullptr) raise(errors::kObjectNotSet);
  const Ref<Object> object(field.as_object());
  return object->invoke(kDefaultMember, CallKind::Get, arguments);
}

void Machine::store_field(Value& field, CallKind kind, Arguments arguments) {
  const Value value = *arguments.back();
  const Arguments indexes = arguments.first(arguments.size() - 1);
  if (indexes.empty()) {
    if (kind == CallKind::Set) {
      set_object(field, value);
    } else {
      let(field, value);
    }
    return;
  }
  if (field.is_array()) {
    Value stored = value;
    if (kind == CallKind::Let) let(stored, value);
    const auto index_at = [&](std::size_t i) -> const Value& { return *indexes[i]; };
    const std::size_t place = place_in(field, indexes.size(), index_at);
    store_element(field.writable_array(), place, stored);
    return;
  }
  if (!field.is_object()) raise(errors::kWrongArgumentCount);
  if (field.as_object() == nullptr) raise(errors::kObjectNotSet);
  const Ref<Object> object(field.as_object());
  object->invoke(kDefaultMember, kind, arguments);
}

}  // namespace rk::vbscript
