#include "pagehost/components/field_objects.h"

#include <memory>
#include <span>
#include <string>
#include <utility>

#include "pagehost/components/ado_values.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

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
        {"OriginalValue", &F::value},
        {"UnderlyingValue", &F::value},
        {"Precision", &F::precision},
        {"NumericScale", &F::zero},
        {"Attributes", &F::attributes},
        {"Status", &F::zero},
        {"AppendChunk", &F::append_chunk, 1, 1},
        {"GetChunk", &F::chunk, 1, 1},
    };
    return kMembers;
  }

 private:
  Value current() { return recordset_->rows().field(ordinal_); }
  // For what is asked of a field without a row: nothing is known of its values then.
  Value current_or_null() {
    platform::Recordset& rows = recordset_->rows();
    return rows.bof() || rows.eof() ? Value::null() : rows.field(ordinal_);
  }

  Value value(const Call& call) {
    if (!call.assigns()) return current();
    recordset_->set_field(ordinal_, plain_value(call.assigned()));
    return {};
  }
  Value name(const Call&) { return Value::text(recordset_->rows().field_name(ordinal_)); }
  Value type(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(ado_type_of(current_or_null())));
  }
  Value actual_size(const Call&) { return Value::long_integer(actual_size_of(current_or_null())); }
  Value defined_size(const Call&) {
    constexpr std::int32_t kTextSize = 255;
    const Value now = current_or_null();
    const bool sized = now.is_text() || now.is_null() || now.is_array();
    return Value::long_integer(sized ? kTextSize : actual_size_of(now));
  }
  Value precision(const Call&) { return Value::long_integer(255); }
  Value zero(const Call&) { return Value::long_integer(0); }
  Value attributes(const Call&) {
    constexpr std::int32_t kMayBeNullAndUpdated = 0x20 | 0x40 | 0x4;
    return Value::long_integer(kMayBeNullAndUpdated);
  }
  Value append_chunk(const Call& call) {
    Value more = plain_value(call.at(0));
    const bool bytes = more.is_array() && more.as_array().holds_bytes();
    if (!bytes && !more.is_text()) raise(errors::kTypeMismatch);
    const Value now = appended_ ? current_or_null() : Value::null();
    appended_ = true;
    if (bytes && now.is_array()) {
      more = Value::array(Array::of_bytes(now.as_array().bytes() + more.as_array().bytes()));
    } else if (!bytes && now.is_text()) {
      more = Value::text(std::string(now.as_view()) + std::string(more.as_view()));
    }
    recordset_->set_field(ordinal_, more);
    return {};
  }
  // The next part of a long value; Null behind its end.
  Value chunk(const Call& call) {
    const std::int32_t most = call.number(0);
    if (most < 1) raise(errors::kInvalidCall);
    const auto count = static_cast<std::size_t>(most);
    const Value now = current();
    Value out = Value::null();
    if (now.is_array() && chunk_at_ < now.as_array().bytes().size()) {
      out = Value::array(Array::of_bytes(now.as_array().bytes().substr(chunk_at_, count)));
    } else if (now.is_text() && chunk_at_ < now.as_text().length()) {
      out = Value::text(now.as_text().mid(chunk_at_, count));
    }
    chunk_at_ += count;
    return out;
  }

  Ref<RecordsetObject> recordset_;
  std::size_t ordinal_;
  std::size_t chunk_at_ = 0;
  bool appended_ = false;
};

class FieldWalk final : public Enumeration {
 public:
  explicit FieldWalk(Ref<RecordsetObject> recordset) : recordset_(std::move(recordset)) {}
  bool next(Value& item) override {
    if (at_ >= recordset_->rows().field_count()) return false;
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
    return Value::long_integer(static_cast<std::int32_t>(recordset_->rows().field_count()));
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
