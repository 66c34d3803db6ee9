// Err: the error that On Error Resume Next went over last.
#ifndef RK_VBSCRIPT_ERR_OBJECT_H_
#define RK_VBSCRIPT_ERR_OBJECT_H_

#include <cstdint>
#include <string>

#include "value/object.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::vbscript {

class ErrObject final : public Object {
 public:
  std::string_view type_name() const override { return "Object"; }
  MemberId member(std::string_view name) const override;
  const void* member_table() const override;
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override;

  void clear();
  void set(const ScriptError& error);
  std::int32_t number() const { return number_; }

 private:
  Value read(MemberId id) const;
  void write(MemberId id, const Value& value);
  [[noreturn]] void raise_error(Arguments arguments);

  std::int32_t number_ = 0;
  std::string description_;
  std::string source_;
  std::string help_file_;
  std::int32_t help_context_ = 0;
};

// The language's text of a number; "Unknown runtime error" where it has none.
std::string_view error_text(std::int32_t number);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_ERR_OBJECT_H_
