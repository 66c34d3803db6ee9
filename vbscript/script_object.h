// ScriptObject: an object of a class that the script defines. It belongs to the run that made it;
// when that run is over it can no longer be called.
#ifndef RK_VBSCRIPT_SCRIPT_OBJECT_H_
#define RK_VBSCRIPT_SCRIPT_OBJECT_H_

#include <vector>

#include "value/object.h"
#include "value/value.h"
#include "vbscript/unit.h"

namespace rk::vbscript {

class Machine;
struct LoadedUnit;

class ScriptObject final : public Object {
 public:
  ScriptObject(Machine& machine, LoadedUnit& unit, const ClassCode& code);

  std::string_view type_name() const override;
  // A member's number is its place in the class and one; 0 is the default member.
  MemberId member(std::string_view name) const override;
  const void* member_table() const override { return code_; }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override;
  // Classes of scripts have no way to be walked: 438.
  std::unique_ptr<Enumeration> enumerate() override;

  const ClassCode& code() const { return *code_; }
  LoadedUnit& unit() { return *unit_; }
  std::vector<Value>& fields() { return fields_; }

  // Ends its life while others still refer to it: fields go, calls raise from now on.
  void abandon() noexcept;

 protected:
  void last_reference_gone() noexcept override;

 private:
  friend class Machine;
  ~ScriptObject() override;

  Machine* machine_;  // null once the run is over
  LoadedUnit* unit_;
  const ClassCode* code_;
  std::vector<Value> fields_;
  ScriptObject* newer_ = nullptr;
  ScriptObject* older_ = nullptr;
  bool terminated_ = false;
  std::string type_name_;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_SCRIPT_OBJECT_H_
