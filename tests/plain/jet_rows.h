// Conditions, order and Top over rows in memory, step by step and without an engine: what the
// translated text of a random select is compared with.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace rk::plain {

// One row of: id, n (a number or Null), t (a text or Null), f (a flag).
struct JetRow {
  int id = 0;
  std::optional<int> n;
  std::optional<std::string> t;
  bool f = false;
};

// True, false or unknown.
using Truth = std::optional<bool>;

inline Truth negation(Truth a) {
  return a ? Truth(!*a) : a;
}

inline Truth conjunction(Truth a, Truth b) {
  if ((a && !*a) || (b && !*b)) return false;
  return a && b ? Truth(true) : std::nullopt;
}

inline Truth disjunction(Truth a, Truth b) {
  return negation(conjunction(negation(a), negation(b)));
}

inline Truth difference(Truth a, Truth b) {
  return a && b ? Truth(*a != *b) : std::nullopt;
}

inline std::string folded(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

// "%" any text, "_" one character; both sides folded already.
inline bool like(const std::string& text, const std::string& pattern, std::size_t t = 0,
                 std::size_t p = 0) {
  if (p == pattern.size()) return t == text.size();
  if (pattern[p] == '%') {
    for (std::size_t rest = t; rest <= text.size(); ++rest) {
      if (like(text, pattern, rest, p + 1)) return true;
    }
    return false;
  }
  if (t == text.size()) return false;
  return (pattern[p] == '_' || pattern[p] == text[t]) && like(text, pattern, t + 1, p + 1);
}

// How two values compare: below 0, 0, above 0; a Null is unknown.
template <class T>
std::optional<int> order_of(const std::optional<T>& a, const std::optional<T>& b) {
  if (!a || !b) return std::nullopt;
  return *a < *b ? -1 : *b < *a ? 1 : 0;
}

inline Truth compared(std::optional<int> order, const std::string& symbol) {
  if (!order) return std::nullopt;
  if (symbol == "=") return *order == 0;
  if (symbol == "<>") return *order != 0;
  if (symbol == "<") return *order < 0;
  if (symbol == "<=") return *order <= 0;
  if (symbol == ">") return *order > 0;
  return *order >= 0;
}

// Nulls come first; ties keep the order stored in either direction.
template <class Key>
void sort_rows(std::vector<JetRow>& rows, Key key, bool descending) {
  std::stable_sort(rows.begin(), rows.end(), [&](const JetRow& a, const JetRow& b) {
    return descending ? key(b) < key(a) : key(a) < key(b);
  });
}

}  // namespace rk::plain
