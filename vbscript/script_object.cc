#include "vbscript/script_object.h"

#include "value/array.h"
#include "value/script_error.h"
#include "vbscript/machine.h"
#include "vbscript/names.h"

namespace rk::vbscript {

ScriptObject::ScriptObject(Machine& machine, LoadedUnit& unit, const ClassCode& code)
    : machine_(&machine),
      unit_(&unit),
      code_(&code),
      fields_(code.fields.size()),
      older_(machine.objects),
      type_name_(code.name) {
  if (older_ != nullptr) older_->newer_ = this;
  machine.objects = this;
  for (std::size_t i = 0; i < code.fields.size(); ++i) {
    const ClassField& field = code.fields[i];
    if (field.is_array) fields_[i] = Value::array(Array::make(field.bounds, !field.bounds.empty()));
  }
}

ScriptObject::~ScriptObject() {
  if (machine_ == nullptr) return;
  if (newer_ != nullptr) {
    newer_->older_ = older_;
  } else {
    machine_->objects = older_;
  }
  if (older_ != nullptr) older_->newer_ = newer_;
}

std::string_view ScriptObject::type_name() const {
  return type_name_;
}

MemberId ScriptObject::member(std::string_view name) const {
  if (machine_ == nullptr) return kNoMember;
  const auto at = code_->member_index.find(folded_name(name));
  return at == code_->member_index.end() ? kNoMember : at->second + 1;
}

Value ScriptObject::invoke(MemberId id, CallKind kind, Arguments arguments) {
  if (machine_ == nullptr) raise(errors::kObjectNotSet);
  return machine_->invoke_member(*this, id, kind, arguments);
}

std::unique_ptr<Enumeration> ScriptObject::enumerate() {
  raise(errors::kNoSuchMember);
}

void ScriptObject::last_reference_gone() noexcept {
  if (machine_ == nullptr) {
    delete this;
    return;
  }
  machine_->bury(*this);
}

void ScriptObject::abandon() noexcept {
  std::vector<Value> fields = std::move(fields_);
  fields_.clear();
  machine_ = nullptr;
}

}  // namespace rk::vbscript
