// The dictionary's tables against a list that is searched from its start.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "pagehost/components/dictionary.h"
#include "tests/plain/dictionary.h"
#include "tests/support/object_calls.h"
#include "value/array.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::get;
using tests::let;

// Whole numbers of all widths, near one another and far apart, beside what is no whole number.
rc::Gen<Value> key() {
  const auto near = rc::gen::inRange<std::int16_t>(-3, 12);
  return rc::gen::weightedOneOf<Value>(
      {{8, rc::gen::map(near, [](std::int16_t n) { return Value::integer(n); })},
       {4, rc::gen::map(near, [](std::int16_t n) { return Value::long_integer(n); })},
       {3, rc::gen::map(near, [](std::int16_t n) { return Value::real(n); })},
       {1, rc::gen::map(near, [](std::int16_t n) { return Value::real(n + 0.5); })},
       {1, rc::gen::map(near, [](std::int16_t n) { return Value::text(std::to_string(n)); })},
       {1, rc::gen::element(Value(), Value::null(), Value::boolean(true), Value::boolean(false),
                            Value::currency(3 * kCurrencyScale), Value::byte(4), Value::date(5),
                            Value::long_integer(INT32_MAX), Value::long_integer(INT32_MIN),
                            Value::real(1e300), Value::real(-1e300), Value::real(-0.0),
                            Value::real(9007199254740992.0))}});
}

class Both {
 public:
  void assign(const Value& key, const Value& item) {
    let(d_, "", {key, item});
    if (plain_.has(key)) {
      plain_.find(key)->item = item;
    } else {
      plain_.add(key, item);
    }
  }

  void add(const Value& key, const Value& item) {
    const bool has = plain_.has(key);
    if (!has) plain_.add(key, item);
    RC_ASSERT(error_number([&] {
                get(d_, "Add", {key, item});
              }) == (has ? errors::kKeyInUse.number : 0));
  }

  void remove(const Value& key) {
    const bool has = plain_.has(key);
    if (has) plain_.remove(plain_.find(key));
    RC_ASSERT(error_number([&] { get(d_, "Remove", {key}); }) ==
              (has ? 0 : errors::kElementNotFound.number));
  }

  void rename(const Value& from, const Value& to) {
    std::int32_t expected = errors::kElementNotFound.number;
    if (plain_.has(from)) {
      const bool taken = plain_.has(to) && plain_.find(to) != plain_.find(from);
      expected = taken ? errors::kKeyInUse.number : 0;
      if (!taken) plain_.find(from)->key = to;
    }
    RC_ASSERT(error_number([&] { let(d_, "Key", {from, to}); }) == expected);
  }

  void clear() {
    get(d_, "RemoveAll");
    plain_.clear();
  }

  void compare(const Value& key) {
    RC_ASSERT(get(d_, "Exists", {key}).as_boolean() == plain_.has(key));
    RC_ASSERT(joined("Keys") == plain_.keys());
    RC_ASSERT(joined("Items") == plain_.items());
  }

 private:
  std::string joined(std::string_view list) {
    std::string out;
    const Value values = get(d_, list);
    for (const Value& value : values.as_array().elements()) out += tests::text_of(value) + ",";
    return out;
  }

  Value d_ = Value::object(make_ref<Dictionary>());
  plain::Dictionary plain_;
};

RC_GTEST_PROP(DictionaryPlain, AllOperationsAreThoseOfASearchedList, ()) {
  Both both;
  // Most begin with keys that count up, which have a way of their own.
  const auto first = *rc::gen::inRange<std::int16_t>(-3, 5);
  const auto counted = *rc::gen::inRange<std::int16_t>(0, 8);
  for (std::int16_t n = 0; n < counted; ++n) {
    both.assign(Value::integer(static_cast<std::int16_t>(first + n)), Value::integer(n));
  }
  const int steps = *rc::gen::inRange(0, 40);
  for (int step = 0; step < steps; ++step) {
    const Value one = *key();
    const Value item = Value::long_integer(1000 + step);
    switch (*rc::gen::inRange(0, 13)) {
      case 0:
      case 1:
        both.remove(one);
        break;
      case 2:
        both.rename(one, *key());
        break;
      case 3:
        if (*rc::gen::inRange(0, 4) == 0) both.clear();
        break;
      case 4:
      case 5:
      case 6:
        both.add(one, item);
        break;
      default:
        both.assign(one, item);
    }
    both.compare(*key());
  }
}

}  // namespace
}  // namespace rk::pagehost
