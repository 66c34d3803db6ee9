// Any rows of any columns: what is saved is read back as it was, or no document can hold it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <variant>

#include "adapters/xml/documents.h"
#include "pagehost/components/saved_rows.h"
#include "value/array.h"
#include "value/comparison.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr AdoType kTypes[] = {AdoType::Integer,      AdoType::Double,        AdoType::Currency,
                              AdoType::Boolean,      AdoType::Date,          AdoType::VarWChar,
                              AdoType::LongVarWChar, AdoType::LongVarBinary, AdoType::BigInt};

// Controls, lone halves and the two units that are no characters among all others.
rc::Gen<std::u16string> units() {
  const auto unit = rc::gen::weightedOneOf<char16_t>(
      {{12, rc::gen::inRange<char16_t>(0x20, 0x7F)},
       {3, rc::gen::element<char16_t>('\t', '\r', '\n', '\'', '&', '<', ' ')},
       {4, rc::gen::inRange<char16_t>(0x4E00, 0x9FFF)},
       {1, rc::gen::arbitrary<char16_t>()}});
  return rc::gen::container<std::u16string>(unit);
}

bool fits_a_document(const std::u16string& text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    const bool high = c >= 0xD800 && c < 0xDC00;
    if (high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000) {
      ++i;
      continue;
    }
    if (c >= 0xD800 && c < 0xE000) return false;
    if (c < 0x20 && c != '\t' && c != '\r' && c != '\n') return false;
    if (c >= 0xFFFE) return false;
  }
  return true;
}

struct Made {
  Value value;
  bool fits = true;
};

Made made_value(AdoType type) {
  if (*rc::gen::inRange(0, 5) == 0) return {Value::null()};
  switch (type) {
    case AdoType::Integer:
      return {Value::long_integer(*rc::gen::arbitrary<std::int32_t>())};
    case AdoType::BigInt:
      return {Value::real(static_cast<double>(
          *rc::gen::inRange<std::int64_t>(3'000'000'000, 9'007'199'254'740'992)))};
    case AdoType::Double:
      return {Value::real(*rc::gen::arbitrary<double>())};
    case AdoType::Currency:
      return {Value::currency(*rc::gen::arbitrary<std::int64_t>())};
    case AdoType::Boolean:
      return {Value::boolean(*rc::gen::arbitrary<bool>())};
    case AdoType::Date: {
      // To the second, as dates are.
      const int days = *rc::gen::inRange(-657434, 2958465);
      const double part = *rc::gen::inRange(0, 86400) / 86400.0;
      return {Value::date(days < 0 ? days - part : days + part)};
    }
    case AdoType::LongVarBinary:
      return {Value::array(Array::of_bytes(*rc::gen::arbitrary<std::string>()))};
    default: {
      const std::u16string text = *units();
      return {Value::text(Text::from_units(text)), fits_a_document(text)};
    }
  }
}

bool are_alike(const Value& a, const Value& b) {
  if (a.kind() != b.kind()) return false;
  if (a.is_null()) return true;
  if (a.is_array()) return a.as_array().bytes() == b.as_array().bytes();
  if (a.is_text()) return a.as_text() == b.as_text();
  if (a.kind() == Value::Kind::Date) return std::abs(a.as_date() - b.as_date()) < 1e-6;
  if (a.kind() == Value::Kind::Double) return a.as_double() == b.as_double();
  if (a.kind() == Value::Kind::Currency) return a.as_currency() == b.as_currency();
  return a.kind() == Value::Kind::Boolean ? a.as_boolean() == b.as_boolean()
                                          : a.as_long() == b.as_long();
}

RC_GTEST_PROP(SavedRowsOfAnyKind, AreReadAsTheyWere, ()) {
  xml::start_xml();
  const auto types = *rc::gen::nonEmpty(rc::gen::container<std::vector<AdoType>>(
      rc::gen::elementOf(std::vector(std::begin(kTypes), std::end(kTypes)))));
  std::vector<MemoryColumn> columns;
  bool fits = true;
  for (const AdoType type : types) {
    const std::u16string name = *units();
    fits = fits && fits_a_document(name);
    columns.push_back({Text::from_units(name).string(), type});
  }
  std::vector<std::vector<Value>> rows(static_cast<std::size_t>(*rc::gen::inRange(0, 4)));
  for (std::vector<Value>& row : rows) {
    for (const AdoType type : types) {
      const Made made = made_value(type);
      fits = fits && made.fits;
      row.push_back(made.value);
    }
  }
  MemoryRows given(columns, rows);
  auto parsed = xml::Documents().parse(saved_text(given), true);
  const bool is_document = std::holds_alternative<std::unique_ptr<platform::XmlDocument>>(parsed);
  RC_ASSERT(is_document == fits);
  if (!is_document) return;
  const auto back = rows_of_saved(*std::get<std::unique_ptr<platform::XmlDocument>>(parsed));
  RC_ASSERT(back->field_count() == columns.size());
  RC_ASSERT(back->record_count() == static_cast<std::int64_t>(rows.size()));
  for (const std::vector<Value>& row : rows) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      RC_ASSERT(back->field_name(i) == columns[i].name);
      RC_ASSERT(are_alike(back->field(i), row[i]));
    }
    back->move_next();
  }
}

}  // namespace
}  // namespace rk::pagehost
