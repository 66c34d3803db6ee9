#include "pagehost/components/field_objects.h"

#include <memory>
#include <span>
#include <string>
#include <utility>

#include "pagehost/components/ado_values.h"
#include "pagehost/components/property_objects.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using platform::ColumnTraits;
using platform::ColumnType;

constexpr std::int32_t kUnlimitedText = 536'870'910;  // as such columns are told to be
constexpr std::int32_t kUnlimitedBytes = 1'073'741'823;

std::int32_t defined_size_of(const ColumnTraits& traits, const Value& now) {
  constexpr std::int32_t kUsualText = 255;
  switch (traits.type) {
    case ColumnType::Text:
      return traits.size > 0 ? traits.size : kUnlimitedText;
    case ColumnType::Bytes:
      return kUnlimitedBytes;
    case ColumnType::Integer:
      return 4;
    case ColumnType::Boolean:
      return 2;
    case ColumnType::Unknown:
      return now.is_text() || now.is_null() || now.is_array() ? kUsualText : actual_size_of(now);
    default:
      return 8;
  }
}

std::int32_t precision_of(const ColumnTraits& traits) {
  switch (traits.type) {
    case ColumnType::Integer:
      return 10;
    case ColumnType::Double:
      return 15;
    case ColumnType::Currency:
      return 19;
    default:
      return 255;
  }
}

std::int32_t attributes_of(const ColumnTraits& traits) {
  constexpr std::int32_t kUpdatable = 0x4;
  constexpr std::int32_t kFixed = 0x10;
  constexpr std::int32_t kMayBeNull = 0x20 | 0x40;
  constexpr std::int32_t kLong = 0x2 | 0x80;  // and read only where it is asked for
  const bool text = traits.type == ColumnType::Text || traits.type == ColumnType::Unknown;
  const bool long_one =
      (traits.type == ColumnType::Text && traits.size == 0) || traits.type == ColumnType::Bytes;
  std::int32_t out = text || traits.type == ColumnType::Bytes ? 0 : kFixed;
  if (long_one) out |= kLong;
  if (traits.writable && !traits.counter) out |= kUpdatable;
  if (!traits.required && !traits.counter) out |= kMayBeNull;
  return out;
}

class FieldObject final : public TabledObject<FieldObject> {
 public:
  FieldObject(Ref<RecordsetObject> recordset, std::size_t ordinal)
      : recordset_(std::move(recordset)), ordinal_(ordinal) {}
  std::string_view type_name() const override { return "Field"; }
  static std::span<const Member<FieldObject>> members() {
    using F = FieldObject;
    static constexpr Member<F> kMembers[] = {
        {"Value", &F::value, 0, 0, Access::Both},
        {"Name", &F::name},
        {"Type", &F::type},
        {"ActualSize", &F::actual_size},
        {"DefinedSize", &F::defined_size},
        {"OriginalValue", &F::original_value},
        {"UnderlyingValue", &F::original_value},
        {"Precision", &F::precision},
        {"NumericScale", &F::zero},
        {"Attributes", &F::attributes},
        {"Status", &F::zero},
        {"AppendChunk", &F::append_chunk, 1, 1},
        {"GetChunk", &F::chunk, 1, 1},
        {"Properties", &F::properties, 0, 1, Access::Both},
    };
    return kMembers;
  }

 private:
  Value current() { return recordset_->row().field(ordinal_); }
  // For what is asked of a field without a row: nothing is known of its values then.
  Value current_or_null() {
    if (recordset_->is_made()) return Value::null();
    platform::Recordset& rows = recordset_->rows();
    return rows.bof() || rows.eof() ? Value::null() : rows.field(ordinal_);
  }

  Value value(const Call& call) {
    if (!call.assigns()) return current();
    recordset_->set_field(ordinal_, plain_value(call.assigned()));
    return {};
  }
  Value name(const Call&) { return Value::text(recordset_->field_name(ordinal_)); }
  Value original_value(const Call&) { return recordset_->row().original(ordinal_); }
  platform::ColumnTraits traits() { return recordset_->field_traits(ordinal_); }
  Value type(const Call&) {
    if (const MemoryColumn* made = recordset_->memory_column(ordinal_)) {
      return Value::long_integer(static_cast<std::int32_t>(made->type));
    }
    const platform::ColumnTraits known = traits();
    const bool unknown = known.type == platform::ColumnType::Unknown;
    return Value::long_integer(
        static_cast<std::int32_t>(unknown ? ado_type_of(current_or_null()) : ado_type_of(known)));
  }
  Value actual_size(const Call&) { return Value::long_integer(actual_size_of(current_or_null())); }
  Value defined_size(const Call&) {
    return Value::long_integer(defined_size_of(traits(), current_or_null()));
  }
  Value precision(const Call&) { return Value::long_integer(precision_of(traits())); }
  Value zero(const Call&) { return Value::long_integer(0); }
  Value attributes(const Call&) { return Value::long_integer(attributes_of(traits())); }
  Value append_chunk(const Call& call) {
    recordset_->append_chunk(ordinal_, plain_value(call.at(0)));
    return {};
  }
  Value chunk(const Call& call) {
    const std::int32_t most = call.number(0);
    if (most < 1) raise(errors::kInvalidCall);
    return recordset_->next_chunk(ordinal_, static_cast<std::size_t>(most));
  }
  // Where the column comes from.
  Value properties(const Call& call) {
    const platform::ColumnTraits known = traits();
    const auto named = [](const std::string& name) {
      return name.empty() ? Value::null() : Value::text(name);
    };
    return properties_member(std::make_shared<PropertyList>(PropertyList{
                                 {"BASECATALOGNAME", Value::null()},
                                 {"BASESCHEMANAME", Value::null()},
                                 {"BASETABLENAME", named(known.base_table)},
                                 {"BASECOLUMNNAME", named(known.base_column)},
                                 {"ISAUTOINCREMENT", Value::boolean(known.counter)},
                                 {"KEYCOLUMN", Value::boolean(known.key)},
                                 {"ISCASESENSITIVE", Value::boolean(false)},
                                 {"OPTIMIZE", Value::boolean(false)},
                             }),
                             call);
  }

  Ref<RecordsetObject> recordset_;
  std::size_t ordinal_;
};

class FieldWalk final : public Enumeration {
 public:
  explicit FieldWalk(Ref<RecordsetObject> recordset) : recordset_(std::move(recordset)) {}
  bool next(Value& item) override {
    if (at_ >= recordset_->field_count()) return false;
    item = recordset_->field_object(at_++);
    return true;
  }

 private:
  Ref<RecordsetObject> recordset_;
  std::size_t at_ = 0;
};

class FieldsObject final : public TabledObject<FieldsObject> {
 public:
  explicit FieldsObject(Ref<RecordsetObject> recordset) : recordset_(std::move(recordset)) {}
  std::string_view type_name() const override { return "Fields"; }
  static std::span<const Member<FieldsObject>> members() {
    static constexpr Member<FieldsObject> kMembers[] = {
        {"Item", &FieldsObject::item, 1, 1, Access::Both},
        {"Count", &FieldsObject::count},
        {"Append", &FieldsObject::append, 2, 5},
        {"Delete", &FieldsObject::remove, 1, 1},
        {"Refresh", &FieldsObject::refresh},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    return std::make_unique<FieldWalk>(recordset_);
  }

 private:
  Value item(const Call& call) {
    const std::size_t ordinal = recordset_->ordinal_of(call.at(0));
    if (!call.assigns()) return recordset_->field_object(ordinal);
    recordset_->set_field(ordinal, plain_value(call.assigned()));
    return {};
  }
  Value count(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(recordset_->field_count()));
  }
  // Append(name, type, size, attributes, value)
  Value append(const Call& call) {
    recordset_->append_column(
        {call.text(0), static_cast<AdoType>(call.number(1)), call.number_or(2, 0)});
    return {};
  }
  Value remove(const Call& call) {
    recordset_->remove_column(call.at(0));
    return {};
  }
  Value refresh(const Call&) { return {}; }

  Ref<RecordsetObject> recordset_;
};

}  // namespace

Ref<Object> field_object(Ref<RecordsetObject> recordset, std::size_t ordinal) {
  return make_ref<FieldObject>(std::move(recordset), ordinal);
}

Ref<Object> fields_object(Ref<RecordsetObject> recordset) {
  return make_ref<FieldsObject>(std::move(recordset));
}

}  // namespace rk::pagehost
