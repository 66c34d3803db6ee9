// Generators for the catalogue's properties: template text out of pieces, values as columns hold
// them, parameters as pages pass them.
#ifndef RK_TESTS_CATALOGUE_GENERATED_H_
#define RK_TESTS_CATALOGUE_GENERATED_H_

#include <rapidcheck.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/support/recording_database.h"
#include "value/value.h"

namespace rk::tests {

// At most so many of the pieces, joined.
inline rc::Gen<std::string> joined_pieces(const std::vector<std::string>& pieces, int most) {
  const auto some = rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(pieces));
  return rc::gen::map(rc::gen::resize(most, some), [](const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) text += part;
    return text;
  });
}

inline rc::Gen<Value> small_number(int least, int most) {
  return rc::gen::map(rc::gen::inRange(least, most + 1),
                      [](int n) { return Value::long_integer(n); });
}

// What a column shows: mostly a number or a plain text, now and then a text that looks like a
// template or a Null.
inline rc::Gen<Value> shown_value(const std::vector<std::string>& pieces) {
  return rc::gen::weightedOneOf<Value>(
      {{1, rc::gen::just(Value::null())},
       {6, rc::gen::map(joined_pieces(pieces, 3),
                        [](const std::string& text) { return Value::text(text); })},
       {15, rc::gen::just(Value::text("v"))},
       {8, small_number(0, 99)},
       {7, rc::gen::map(rc::gen::inRange(-8, 40), [](int n) { return Value::real(n / 4.0); })}});
}

// Rows of so many columns, numbered 1, 2, 3 ... in one of them.
inline Rows numbered_rows(std::vector<std::string> columns, std::size_t id_column,
                          const std::vector<std::string>& pieces, int most = 8) {
  Rows made{std::move(columns), {}};
  const int count = *rc::gen::inRange(0, most + 1);
  for (int id = 1; id <= count; ++id) {
    auto row = *rc::gen::container<std::vector<Value>>(made.columns.size(), shown_value(pieces));
    row[id_column] = Value::long_integer(id);
    made.rows.push_back(std::move(row));
  }
  return made;
}

}  // namespace rk::tests

#endif  // RK_TESTS_CATALOGUE_GENERATED_H_
