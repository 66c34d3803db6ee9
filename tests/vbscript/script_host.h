// A host for scripts of tests: Print, a toy object, a clock that stands, code pages of two bytes.
#ifndef RK_TESTS_VBSCRIPT_SCRIPT_HOST_H_
#define RK_TESTS_VBSCRIPT_SCRIPT_HOST_H_

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/page.h"
#include "value/conversions.h"
#include "value/dates.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/text.h"
#include "vbscript/host.h"

namespace rk::vbscript::testing {

class StandingClock final : public platform::Clock {
 public:
  double now() const override { return date_value({2024, 3, 5, 14, 30, 15}); }
  std::chrono::steady_clock::time_point steady() const override { return {}; }
};

// Prints what its default member is called with.
class Printer final : public Object {
 public:
  explicit Printer(std::vector<std::string>& lines) : lines_(lines) {}
  std::string_view type_name() const override { return "Printer"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments arguments) override {
    std::string line;
    for (const Value* value : arguments) {
      if (!line.empty()) line += ' ';
      if (value->is_null()) {
        line += "Null";
      } else {
        append_text(line, *value);
      }
    }
    while (line.ends_with(' ')) line.pop_back();  // as expectations are read
    lines_.push_back(line);
    return Value();
  }

 private:
  std::vector<std::string>& lines_;
};

// Members: Value (default, readable and assignable), Add(a, b), Bump(x) which adds one to its
// argument in place, Fail, Item(key), Count, and Self.
class Toy final : public Object {
 public:
  std::string_view type_name() const override { return "Toy"; }
  MemberId member(std::string_view name) const override {
    constexpr std::array<std::string_view, 8> kNames{"Value", "Add",   "Bump", "Fail",
                                                     "Item",  "Count", "Self", "Execute"};
    for (std::size_t i = 0; i < kNames.size(); ++i) {
      if (equal_ignoring_case(name, kNames[i])) return static_cast<MemberId>(i);
    }
    return kNoMember;
  }
  const void* member_table() const override { return "Toy"; }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override {
    switch (id) {
      case 0:
        if (kind == CallKind::Let || kind == CallKind::Set)
          return value_ = *arguments.back(), Value();
        return arguments.empty() ? value_ : *arguments[0];
      case 1:
        if (arguments.size() != 2) raise(errors::kWrongArgumentCount);
        return Value::real(to_double(*arguments[0]) + to_double(*arguments[1]));
      case 2:
        if (arguments.size() != 1) raise(errors::kWrongArgumentCount);
        *arguments[0] = Value::real(to_double(*arguments[0]) + 1);
        return Value();
      case 3:
        throw ScriptError(-2147217900, "Toy failed", "Toy.Source");
      case 4:
        if (arguments.size() != 1) raise(errors::kWrongArgumentCount);
        return *arguments[0];
      case 5:
        return Value::long_integer(3);
      case 6:
        return Value::object(Ref<Object>(this));
      default:
        return Value::long_integer(static_cast<std::int32_t>(arguments.size()));
    }
  }
  std::unique_ptr<Enumeration> enumerate() override {
    class Three final : public Enumeration {
     public:
      bool next(Value& item) override {
        if (at_ == 3) return false;
        item = Value::integer(static_cast<std::int16_t>(++at_));
        return true;
      }

     private:
      int at_ = 0;
    };
    return std::make_unique<Three>();
  }

 private:
  Value value_ = Value::integer(7);
};

class ScriptHost : public Host {
 public:
  ScriptHost() { services_.clock = &clock_; }

  std::optional<Value> lookup(std::string_view name) override {
    if (equal_ignoring_case(name, "Print")) return Value::object(make_ref<Printer>(printed_));
    if (equal_ignoring_case(name, "Toy")) return Value::object(make_ref<Toy>());
    return std::nullopt;
  }
  void write(std::string_view utf8) override { written_ += utf8; }
  void write(const Value& value) override { append_text(written_, value); }
  Value create_object(std::string_view name) override {
    if (equal_ignoring_case(name, "Test.Toy")) return Value::object(make_ref<Toy>());
    raise(errors::kCannotCreateObject);
  }
  void check_time() override {
    if (++looks_ > most_looks_) throw platform::PageEnd{platform::PageEnd::Reason::TimedOut};
  }
  const Services& services() const override { return services_; }

  Services& changeable_services() { return services_; }
  // Looks at the time until the page's time is over.
  void end_after(int looks) { most_looks_ = looks; }
  const std::vector<std::string>& printed() const { return printed_; }
  const std::string& written() const { return written_; }

 private:
  StandingClock clock_;
  Services services_;
  std::vector<std::string> printed_;
  std::string written_;
  int looks_ = 0;
  int most_looks_ = 20000;
};

}  // namespace rk::vbscript::testing

#endif  // RK_TESTS_VBSCRIPT_SCRIPT_HOST_H_
