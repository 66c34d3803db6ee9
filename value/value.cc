#include "value/value.h"

#include "value/array.h"
#include "value/script_error.h"

namespace rk {

std::unique_ptr<Enumeration> Object::enumerate() {
  raise(errors::kNotACollection);
}

Value Value::array(Ref<Array> array) noexcept {
  Value v(Kind::Array);
  v.payload_.array = array.detach();
  return v;
}

Ref<Array> Value::array_ref() const noexcept {
  return Ref<Array>(payload_.array);
}

Array& Value::writable_array() {
  if (!payload_.array->unique()) *this = array(payload_.array->copy());
  return *payload_.array;
}

void Value::append(std::string_view utf8) {
  Text text = Text(std::exchange(payload_.text, nullptr));
  text.append(utf8);
  payload_.text = text.detach();
}

void Value::append(const Text& more) {
  // OPTIMIZATION: as in Text::append, without a handle between: the step of loops that build a
  // text.
  constexpr char kHalfBegins = '\xED';
  TextBuffer* const own = payload_.text;
  const TextBuffer* const other = more.buffer_;
  if (own != nullptr && other != nullptr && own != other && own->unique() &&
      !own->trailing_byte() && !other->trailing_byte()) {
    const std::string_view bytes = other->view();
    if (!bytes.empty() && bytes.front() != kHalfBegins && bytes.size() <= own->room()) {
      own->add(bytes);
      return;
    }
  }
  Text text = Text(std::exchange(payload_.text, nullptr));
  text.append(more);
  payload_.text = text.detach();
}

void Value::share() const noexcept {
  if (!counted() || payload_.text == nullptr) return;
  if (kind_ == Kind::String) {
    payload_.text->share();
  } else if (kind_ == Kind::Object) {
    payload_.object->share();
  } else if (!payload_.array->shared()) {
    payload_.array->share();
    for (const Value& element : payload_.array->elements()) element.share();
  }
}

void Value::retain_object() const noexcept {
  if (kind_ == Kind::Array) {
    payload_.array->retain();
  } else {
    payload_.object->retain();
  }
}

void Value::release_object() noexcept {
  if (kind_ == Kind::Array) {
    payload_.array->release();
  } else {
    payload_.object->release();
  }
}

}  // namespace rk
