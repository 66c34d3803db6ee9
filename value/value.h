// Value: the loosely typed value that pages, the library's public operations and databases share.
//
// Two of its kinds are absences, and they differ. Empty is a variable that was never assigned and
// the result of an operation that returns nothing: it reads as "" and as 0. Null is a database
// field without a value: it takes part in no comparison, joins as nothing with "&", and raises 94
// where a text or a number is demanded. Nothing is an object value without an object.
//
// The numbers keep their width (Byte, Integer of 16 bits, Long of 32, Single, Double, Currency
// with four decimals in 64 bits), because arithmetic widens from one to the next. A Date is a
// count of days since 1899-12-30 with the time of day as fraction. Error holds a number, and one
// particular number stands for an argument that was left out.
//
// A Value is 16 bytes. Texts, arrays and objects are counted references; a Value is used by one
// thread unless share() was called on it.
#ifndef RK_VALUE_VALUE_H_
#define RK_VALUE_VALUE_H_

#include <cstdint>
#include <string_view>
#include <utility>

#include "value/object.h"
#include "value/ref.h"
#include "value/text.h"
#include "value/text_buffer.h"

namespace rk {

class Array;

inline constexpr std::int64_t kCurrencyScale = 10000;

class Value {
 public:
  enum class Kind : std::uint8_t {
    Empty,
    Null,
    Boolean,
    Byte,
    Integer,
    Long,
    Single,
    Double,
    Currency,
    Date,
    String,
    Error,
    Array,
    Object,
  };

  Value() noexcept : kind_(Kind::Empty) { payload_.bits = 0; }
  Value(const Value& other) noexcept : kind_(other.kind_), payload_(other.payload_) {
    if (counted()) retain();
  }
  Value(Value&& other) noexcept
      : kind_(std::exchange(other.kind_, Kind::Empty)), payload_(other.payload_) {}
  ~Value() {
    if (counted()) release();
  }
  Value& operator=(const Value& other) noexcept {
    Value copy(other);
    swap(copy);
    return *this;
  }
  Value& operator=(Value&& other) noexcept {
    Value taken(std::move(other));
    swap(taken);
    return *this;
  }
  void swap(Value& other) noexcept {
    std::swap(kind_, other.kind_);
    std::swap(payload_, other.payload_);
  }

  static Value null() noexcept { return Value(Kind::Null); }
  static Value boolean(bool b) noexcept {
    Value v(Kind::Boolean);
    v.payload_.boolean = b;
    return v;
  }
  static Value byte(std::uint8_t n) noexcept {
    Value v(Kind::Byte);
    v.payload_.byte = n;
    return v;
  }
  static Value integer(std::int16_t n) noexcept {
    Value v(Kind::Integer);
    v.payload_.integer = n;
    return v;
  }
  static Value long_integer(std::int32_t n) noexcept {
    Value v(Kind::Long);
    v.payload_.long_integer = n;
    return v;
  }
  static Value single(float n) noexcept {
    Value v(Kind::Single);
    v.payload_.single = n;
    return v;
  }
  static Value real(double n) noexcept {
    Value v(Kind::Double);
    v.payload_.real = n;
    return v;
  }
  // In ten-thousandths.
  static Value currency(std::int64_t scaled) noexcept {
    Value v(Kind::Currency);
    v.payload_.bits = scaled;
    return v;
  }
  static Value date(double days) noexcept {
    Value v(Kind::Date);
    v.payload_.real = days;
    return v;
  }
  static Value text(Text t) noexcept {
    Value v(Kind::String);
    v.payload_.text = t.detach();
    return v;
  }
  static Value text(std::string_view utf8) { return text(Text(utf8)); }
  static Value error(std::int32_t number) noexcept {
    Value v(Kind::Error);
    v.payload_.long_integer = number;
    return v;
  }
  static Value missing() noexcept { return error(kMissing); }
  static Value array(Ref<Array> array) noexcept;
  static Value object(Ref<Object> object) noexcept {
    Value v(Kind::Object);
    v.payload_.object = object.detach();
    return v;
  }
  static Value nothing() noexcept { return object(nullptr); }

  Kind kind() const noexcept { return kind_; }
  bool is_empty() const noexcept { return kind_ == Kind::Empty; }
  bool is_null() const noexcept { return kind_ == Kind::Null; }
  bool is_text() const noexcept { return kind_ == Kind::String; }
  bool is_object() const noexcept { return kind_ == Kind::Object; }
  bool is_array() const noexcept { return kind_ == Kind::Array; }
  bool is_missing() const noexcept {
    return kind_ == Kind::Error && payload_.long_integer == kMissing;
  }

  // What is held, without conversion: the kind must be the one named.
  bool as_boolean() const noexcept { return payload_.boolean; }
  std::uint8_t as_byte() const noexcept { return payload_.byte; }
  std::int16_t as_integer() const noexcept { return payload_.integer; }
  std::int32_t as_long() const noexcept { return payload_.long_integer; }
  std::int32_t as_error() const noexcept { return payload_.long_integer; }
  float as_single() const noexcept { return payload_.single; }
  double as_double() const noexcept { return payload_.real; }
  double as_date() const noexcept { return payload_.real; }
  std::int64_t as_currency() const noexcept { return payload_.bits; }
  // UTF-8, valid while this value is unchanged.
  std::string_view as_view() const noexcept {
    return payload_.text == nullptr ? std::string_view() : payload_.text->view();
  }
  Text as_text() const noexcept {
    if (payload_.text != nullptr) payload_.text->retain();
    return Text(payload_.text);
  }
  // Null for Nothing.
  Object* as_object() const noexcept { return payload_.object; }
  const Array& as_array() const noexcept { return *payload_.array; }
  Ref<Array> array_ref() const noexcept;

  // The array for writing; copies it first where other values share it.
  Array& writable_array();
  // Appends in place to a String (design of loops that build a text).
  void append(std::string_view utf8);
  void append(const Text& more);

  // The very same: of one kind and with the same number, or sharing one text, array or object.
  bool is_same(const Value& other) const noexcept {
    return kind_ == other.kind_ && payload_.bits == other.payload_.bits;
  }

  // Before another thread can see this value; recursive through arrays.
  void share() const noexcept;

 private:
  // The number by which an argument that was left out is known.
  static constexpr std::int32_t kMissing = static_cast<std::int32_t>(0x80020004);

  explicit Value(Kind kind) noexcept : kind_(kind) { payload_.bits = 0; }
  bool counted() const noexcept {
    return kind_ == Kind::String || kind_ == Kind::Array || kind_ == Kind::Object;
  }
  void retain() const noexcept {
    if (payload_.text == nullptr) return;
    if (kind_ == Kind::String) {
      payload_.text->retain();
    } else {
      retain_object();
    }
  }
  void release() noexcept {
    if (payload_.text == nullptr) return;
    if (kind_ == Kind::String) {
      payload_.text->release();
    } else {
      release_object();
    }
  }
  void retain_object() const noexcept;
  void release_object() noexcept;

  Kind kind_;
  union {
    bool boolean;
    std::uint8_t byte;
    std::int16_t integer;
    std::int32_t long_integer;
    float single;
    double real;
    std::int64_t bits;
    TextBuffer* text;
    Array* array;
    Object* object;
  } payload_;
};

static_assert(sizeof(Value) == 16);

}  // namespace rk

#endif  // RK_VALUE_VALUE_H_
