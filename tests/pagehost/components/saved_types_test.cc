#include "pagehost/components/saved_types.h"

#include <gtest/gtest.h>

#include "tests/support/object_calls.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::pagehost {
namespace {

using tests::error_number;
using tests::text_of;

TEST(SavedTypes, EachTypeIsReadAsItself) {
  for (const AdoType type : {AdoType::SmallInt,      AdoType::Integer,         AdoType::Single,
                             AdoType::Double,        AdoType::Currency,        AdoType::Date,
                             AdoType::Boolean,       AdoType::Variant,         AdoType::Decimal,
                             AdoType::TinyInt,       AdoType::UnsignedTinyInt, AdoType::UnsignedInt,
                             AdoType::BigInt,        AdoType::Binary,          AdoType::Char,
                             AdoType::WChar,         AdoType::Numeric,         AdoType::DbDate,
                             AdoType::DbTime,        AdoType::DbTimeStamp,     AdoType::VarChar,
                             AdoType::VarWChar,      AdoType::LongVarWChar,    AdoType::VarBinary,
                             AdoType::LongVarBinary, AdoType::UnsignedSmallInt}) {
    const SavedType& saved = saved_type(type);
    EXPECT_EQ(saved.type, type);
    EXPECT_EQ(type_of_saved(saved.data_type, saved.database_type, saved.fixed, saved.is_long), type)
        << static_cast<int>(type);
  }
}

TEST(SavedTypes, ATypeThatIsNotKnownIsText) {
  EXPECT_EQ(saved_type(static_cast<AdoType>(201)).type, AdoType::LongVarWChar);
  EXPECT_EQ(type_of_saved("uuid", "", true, false), AdoType::VarWChar);
  EXPECT_EQ(type_of_saved("number", "", false, false), AdoType::Numeric);
}

TEST(SavedTypes, NumbersKeepEveryDigit) {
  for (const double number : {0.1 + 0.2, 1e300, -5e-324, 1234567890123456789.0}) {
    const std::string text = saved_value(AdoType::Double, Value::real(number));
    EXPECT_EQ(value_of_saved(AdoType::Double, text).as_double(), number) << text;
  }
  EXPECT_EQ(value_of_saved(AdoType::Integer, "-7").as_long(), -7);
  EXPECT_EQ(value_of_saved(AdoType::BigInt, "9007199254740991").as_double(), 9007199254740991.0);
  EXPECT_EQ(saved_value(AdoType::Currency, Value::currency(-12345)), "-1.2345");
  EXPECT_EQ(text_of(value_of_saved(AdoType::Currency, "-1.2345")), "-1.2345");
}

TEST(SavedTypes, DatesKeepTheirSeconds) {
  const double days = 45000.75;
  EXPECT_EQ(saved_value(AdoType::Date, Value::date(days)), "2023-03-15T18:00:00");
  EXPECT_EQ(saved_value(AdoType::DbDate, Value::date(days)), "2023-03-15");
  EXPECT_EQ(saved_value(AdoType::DbTime, Value::date(days)), "18:00:00");
  EXPECT_EQ(text_of(value_of_saved(AdoType::Date, "2023-03-15T18:00:01.999000000")),
            "2023-03-15 18:00:01");
  EXPECT_EQ(text_of(value_of_saved(AdoType::DbDate, "0150-01-02")), "0150-01-02");
  EXPECT_EQ(text_of(value_of_saved(AdoType::DbTime, "18:00:00")), "18:00:00");
  for (const double each : {-1.25, 0.5, -657434.0, 2958465.5, 1.0}) {
    const std::string text = saved_value(AdoType::Date, Value::date(each));
    EXPECT_EQ(value_of_saved(AdoType::Date, text).as_date(), each) << text;
  }
}

TEST(SavedTypes, BytesAndFlagsComeBack) {
  const std::string bytes("\0\xFF\x10", 3);
  EXPECT_EQ(saved_value(AdoType::LongVarBinary, Value::array(Array::of_bytes(bytes))), "00ff10");
  EXPECT_EQ(value_of_saved(AdoType::LongVarBinary, "00FF10").as_array().bytes(), bytes);
  EXPECT_EQ(saved_value(AdoType::Boolean, Value::boolean(true)), "True");
  EXPECT_FALSE(value_of_saved(AdoType::Boolean, "0").as_boolean());
}

TEST(SavedTypes, WhatIsNoValueOfItsTypeIsRefused) {
  EXPECT_EQ(error_number([] { value_of_saved(AdoType::Integer, "1x"); }), 13);
  EXPECT_EQ(error_number([] { value_of_saved(AdoType::Double, ""); }), 13);
  EXPECT_EQ(error_number([] { value_of_saved(AdoType::Currency, "x"); }), 13);
  EXPECT_EQ(error_number([] { value_of_saved(AdoType::Boolean, "maybe"); }), 13);
  EXPECT_EQ(error_number([] { value_of_saved(AdoType::LongVarBinary, "0"); }), 13);
  for (const char* date : {"", "2023", "2023-13-01", "2023-01-32", "2023-01-01T1", "T", "a-b-c"}) {
    EXPECT_EQ(error_number([&] { value_of_saved(AdoType::Date, date); }), 13) << date;
  }
}

}  // namespace
}  // namespace rk::pagehost
