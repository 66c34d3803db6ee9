// What GetRef answers: an object whose default member calls a procedure of the script.
#ifndef RK_VBSCRIPT_PROCEDURE_OBJECT_H_
#define RK_VBSCRIPT_PROCEDURE_OBJECT_H_

#include <memory>
#include <utility>

#include "value/object.h"
#include "value/script_error.h"
#include "vbscript/machine.h"

namespace rk::vbscript {

class ProcedureObject final : public Object {
 public:
  // `machine` points at null once the run is over: the object may be kept longer.
  ProcedureObject(std::shared_ptr<Machine* const> machine, ProcedureRef procedure)
      : machine_(std::move(machine)), procedure_(procedure) {}

  std::string_view type_name() const override { return "Object"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override {
    if (id != kDefaultMember || kind == CallKind::Let || kind == CallKind::Set) {
      raise(errors::kNoSuchMember);
    }
    if (*machine_ == nullptr) raise(errors::kObjectNotSet);
    Value result;
    (*machine_)->call(procedure_, nullptr, arguments, &result);
    return result;
  }

 private:
  std::shared_ptr<Machine* const> machine_;
  ProcedureRef procedure_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_PROCEDURE_OBJECT_H_
