// CommandObject (ADODB.Command): a statement with parameters, which are bound as values and never
// read as SQL; and the Parameter objects.
#ifndef RK_PAGEHOST_COMPONENTS_COMMAND_OBJECT_H_
#define RK_PAGEHOST_COMPONENTS_COMMAND_OBJECT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/components/connection_object.h"
#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class ParameterObject final : public TabledObject<ParameterObject> {
 public:
  std::string_view type_name() const override { return "Parameter"; }
  static std::span<const Member<ParameterObject>> members();

  // The value as the parameter's type has it; raises 3421 where it has none.
  void set_value(const Value& given);
  // Raises 3708 where what it was made of says too little.
  void check_complete() const;

  std::string name;
  Value value;
  std::int32_t type = 0;
  std::int32_t direction = 1;
  std::int32_t size = 0;

 private:
  Value value_member(const Call& call);
  Value name_member(const Call& call);
  Value type_member(const Call& call);
  Value direction_member(const Call& call);
  Value size_member(const Call& call);
  Value ignored(const Call& call);
  Value append_chunk(const Call& call);

  bool in_parts_ = false;  // the value came by AppendChunk, and may grow
};

using ParameterList = std::vector<Ref<ParameterObject>>;

// The statement with the values of its "?" outside of quotes and brackets, in order; "@name" of a
// parameter is a "?" for that one. A statement that has neither names its parameters in a
// Parameters clause: all are bound, in order. Those that only give something back (output, return
// value) are none of them. Raises -2147217904 where parameters are missing.
platform::SqlText with_parameters(std::string_view statement, const ParameterList& given);

class CommandObject final : public TabledObject<CommandObject> {
 public:
  explicit CommandObject(AdoServices services) : services_(std::move(services)) {}
  std::string_view type_name() const override { return "Command"; }
  static std::span<const Member<CommandObject>> members();

  platform::SqlText statement() const { return statement(*parameters_); }
  // As a page would set the two.
  void take(std::string text, Ref<ConnectionObject> connection);
  const Ref<ConnectionObject>& connection() const { return connection_; }

 private:
  platform::SqlText statement(const ParameterList& parameters) const;
  ParameterList given_parameters(const Call& call) const;
  Value parameters(const Call& call);
  Value create_parameter(const Call& call);
  Value execute(const Call& call);
  Value active_connection(const Call& call);
  Value command_text(const Call& call);
  Value command_type(const Call& call);
  Value command_timeout(const Call& call);
  Value prepared(const Call& call);
  Value name(const Call& call);
  Value state(const Call& call);
  Value cancel(const Call& call);

  AdoServices services_;
  Ref<ConnectionObject> connection_;
  std::shared_ptr<ParameterList> parameters_ = std::make_shared<ParameterList>();
  std::string text_;
  std::string name_;
  std::int32_t type_ = 8;
  std::int32_t timeout_ = 30;
  bool prepared_ = false;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_COMMAND_OBJECT_H_
