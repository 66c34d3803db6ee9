#include "pagehost/components/stream_object.h"

#include <algorithm>
#include <utility>

#include "pagehost/components/charsets.h"
#include "value/array.h"
#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::int32_t kReadAll = -1;
constexpr std::int32_t kReadLine = -2;
constexpr std::int32_t kWriteLine = 1;
constexpr std::int32_t kSaveOverwrite = 2;
constexpr KnownError kNotOpened{3002, "File could not be opened."};
constexpr KnownError kNotWritten{3004, "Write to file failed."};

// How much a call takes, all where it does not say; raises 3001 below the least.
std::int32_t amount(const Call& call, std::size_t place, std::int32_t least) {
  const std::int32_t asked = call.number_or(place, kReadAll);
  if (asked < least) raise(errors::kInvalidArgument);
  return asked;
}

}  // namespace

std::span<const Member<StreamObject>> StreamObject::members() {
  using S = StreamObject;
  static constexpr Member<S> kMembers[] = {
      {"", nullptr},
      {"Open", &S::open, 0, 5},
      {"Close", &S::close},
      {"Type", &S::type, 0, 0, Access::Both},
      {"Charset", &S::charset, 0, 0, Access::Both},
      {"Mode", &S::mode, 0, 0, Access::Both},
      {"State", &S::state},
      {"Position", &S::position, 0, 0, Access::Both},
      {"Size", &S::size},
      {"EOS", &S::eos},
      {"SetEOS", &S::set_eos},
      {"LineSeparator", &S::line_separator, 0, 0, Access::Both},
      {"Read", &S::read, 0, 1},
      {"ReadText", &S::read_text, 0, 1},
      {"Write", &S::write, 1, 1},
      {"WriteText", &S::write_text, 1, 2},
      {"SkipLine", &S::skip_line},
      {"CopyTo", &S::copy_to, 1, 2},
      {"LoadFromFile", &S::load_from_file, 1, 1},
      {"SaveToFile", &S::save_to_file, 1, 2},
      {"Flush", &S::flush},
      {"Cancel", &S::flush},
  };
  return kMembers;
}

StreamObject::StreamObject(const FileSystem& system, std::string bytes) : StreamObject(system) {
  held_.set(bytes.size());
  bytes_ = std::move(bytes);
  type_ = Type::Binary;
  open_ = true;
}

std::string StreamObject::rest() {
  must_be_open();
  if (type_ == Type::Text) return "\xEF\xBB\xBF" + next_text(kReadAll).string();
  const std::size_t from = std::exchange(at_, bytes_.size());
  return bytes_.substr(from);
}

void StreamObject::take_text(std::string_view utf8) {
  open_ = true;
  at_ = 0;
  resize(0);
  type_ == Type::Text ? put_text(utf8) : put(utf8);
  at_ = 0;
}

void StreamObject::must_be_open() const {
  if (!open_) raise(errors::kObjectClosed);
}

void StreamObject::must_be(Type type) const {
  must_be_open();
  if (type_ != type) raise(errors::kNotAllowedInContext);
}

Value StreamObject::open(const Call&) {
  if (open_) raise(errors::kObjectOpen);
  open_ = true;
  bytes_.clear();
  at_ = 0;
  return {};
}

Value StreamObject::close(const Call&) {
  must_be_open();
  open_ = false;
  bytes_.clear();
  bytes_.shrink_to_fit();
  held_.set(0);
  at_ = 0;
  return {};
}

Value StreamObject::type(const Call& call) {
  if (!call.assigns()) return Value::long_integer(static_cast<std::int32_t>(type_));
  const std::int32_t wanted = to_long(call.assigned());
  if (wanted != 1 && wanted != 2) raise(errors::kInvalidArgument);
  if (at_ != 0) raise(errors::kNotAllowedInContext);
  type_ = static_cast<Type>(wanted);
  return {};
}

Value StreamObject::charset(const Call& call) {
  if (!call.assigns()) return Value::text(charset_);
  std::string wanted = to_text(call.assigned()).string();
  if (!code_page_of_charset(wanted)) raise(errors::kInvalidArgument);
  if (at_ != 0) raise(errors::kNotAllowedInContext);
  charset_ = std::move(wanted);
  return {};
}

Value StreamObject::mode(const Call& call) {
  if (!call.assigns()) return Value::long_integer(mode_);
  if (open_) raise(errors::kObjectOpen);
  mode_ = to_long(call.assigned());
  return {};
}

Value StreamObject::state(const Call&) {
  return Value::long_integer(open_ ? 1 : 0);
}

// In bytes, whatever the type.
Value StreamObject::position(const Call& call) {
  must_be_open();
  if (!call.assigns()) return Value::long_integer(static_cast<std::int32_t>(at_));
  const std::int32_t place = to_long(call.assigned());
  if (place < 0 || static_cast<std::size_t>(place) > kMaxStreamBytes) {
    raise(errors::kInvalidArgument);
  }
  at_ = static_cast<std::size_t>(place);
  if (at_ > bytes_.size()) resize(at_);
  return {};
}

Value StreamObject::size(const Call&) {
  must_be_open();
  return Value::long_integer(static_cast<std::int32_t>(bytes_.size()));
}

Value StreamObject::eos(const Call&) {
  must_be_open();
  return Value::boolean(at_ >= bytes_.size());
}

Value StreamObject::set_eos(const Call&) {
  must_be_open();
  resize(at_);
  return {};
}

Value StreamObject::line_separator(const Call& call) {
  if (!call.assigns()) return Value::long_integer(line_separator_);
  const std::int32_t wanted = to_long(call.assigned());
  if (wanted != -1 && wanted != 10 && wanted != 13) raise(errors::kInvalidArgument);
  line_separator_ = wanted;
  return {};
}

// Null where nothing is left.
Value StreamObject::read(const Call& call) {
  must_be(Type::Binary);
  const std::int32_t most = amount(call, 0, kReadAll);
  if (at_ >= bytes_.size()) return Value::null();
  const std::size_t count = most < 0 ? bytes_.size() : static_cast<std::size_t>(most);
  std::string part = bytes_.substr(at_, count);
  at_ += part.size();
  return Value::array(Array::of_bytes(std::move(part)));
}

std::string_view StreamObject::mark() const {
  const int code_page = *code_page_of_charset(charset_);
  if (code_page == kUtf16) return "\xFF\xFE";
  return code_page == platform::kUtf8 ? std::string_view("\xEF\xBB\xBF") : std::string_view();
}

// A mark at the beginning is no text.
void StreamObject::pass_mark() {
  if (at_ == 0 && std::string_view(bytes_).starts_with(mark())) at_ = mark().size();
}

std::string StreamObject::decoded(std::string_view bytes) const {
  return charset_decoded(bytes, *code_page_of_charset(charset_), *system_.code_pages);
}

std::string StreamObject::encoded(std::string_view utf8) const {
  return charset_encoded(utf8, *code_page_of_charset(charset_), *system_.code_pages);
}

std::string_view StreamObject::separator() const {
  const bool wide = *code_page_of_charset(charset_) == kUtf16;
  if (line_separator_ == 10) return wide ? std::string_view("\n\0", 2) : std::string_view("\n");
  if (line_separator_ == 13) return wide ? std::string_view("\r\0", 2) : std::string_view("\r");
  return wide ? std::string_view("\r\0\n\0", 4) : std::string_view("\r\n");
}

std::string StreamObject::next_line() {
  pass_mark();
  const std::size_t end = std::min(bytes_.find(separator(), at_), bytes_.size());
  std::string line = decoded(std::string_view(bytes_).substr(at_, end - at_));
  at_ = std::min(end + separator().size(), bytes_.size());
  return line;
}

// ReadText(characters): all (-1), a line (-2) or so many units.
Value StreamObject::read_text(const Call& call) {
  must_be(Type::Text);
  const std::int32_t most = amount(call, 0, kReadLine);
  return Value::text(most == kReadLine ? Text(next_line()) : next_text(most));
}

// So many units from here on, or all that is left.
Text StreamObject::next_text(std::int32_t most) {
  pass_mark();
  const std::string_view left = std::string_view(bytes_).substr(std::min(at_, bytes_.size()));
  // A unit takes three bytes at most: what is far behind the part need not be read for it.
  const std::size_t enough = most < 0 ? left.size() : static_cast<std::size_t>(most) * 3 + 4;
  Text rest(decoded(left.substr(0, enough)));
  if (most < 0 || static_cast<std::size_t>(most) >= rest.length()) {
    at_ = bytes_.size();
    return rest;
  }
  Text part = rest.mid(0, static_cast<std::size_t>(most));
  at_ += encoded(part.view()).size();
  return part;
}

void StreamObject::resize(std::size_t bytes) {
  held_.set(bytes);
  bytes_.resize(bytes);
}

// Over what is there, and behind its end.
void StreamObject::put(std::string_view bytes) {
  if (at_ + bytes.size() > kMaxStreamBytes) raise(errors::kOutOfMemory);
  if (at_ + bytes.size() > bytes_.size()) resize(at_ + bytes.size());
  std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(at_));
  at_ += bytes.size();
}

// With the charset's mark where it is the beginning.
void StreamObject::put_text(std::string_view utf8) {
  if (bytes_.empty()) put(mark());
  put(encoded(utf8));
}

// Arrays of bytes only: a text of bytes, as MidB gives it, is none.
Value StreamObject::write(const Call& call) {
  must_be(Type::Binary);
  const Value given = plain_value(call.at(0));
  if (!given.is_array() || !given.as_array().holds_bytes()) raise(errors::kInvalidArgument);
  put(given.as_array().bytes());
  return {};
}

Value StreamObject::write_text(const Call& call) {
  must_be(Type::Text);
  const std::int32_t option = call.number_or(1, 0);
  if (option != 0 && option != kWriteLine) raise(errors::kInvalidArgument);
  put_text(joined_text(call.at(0)).view());
  if (option == kWriteLine) put(separator());
  return {};
}

Value StreamObject::skip_line(const Call&) {
  must_be(Type::Text);
  next_line();
  return {};
}

// CopyTo(stream, count): from the place of this stream to the place of that one, so many characters
// of a text or bytes.
Value StreamObject::copy_to(const Call& call) {
  must_be_open();
  const Value& target = call.at(0);
  auto* other = target.is_object() ? dynamic_cast<StreamObject*>(target.as_object()) : nullptr;
  if (other == nullptr) raise(errors::kInvalidArgument);
  other->must_be_open();
  const std::int32_t most = amount(call, 1, kReadAll);
  const bool recoded = type_ == Type::Text && other->type_ == Type::Text &&
                       !equal_ignoring_case(charset_, other->charset_);
  if (recoded) {
    other->put_text(next_text(most).view());
    return {};
  }
  const std::size_t from = at_;
  if (type_ == Type::Text && most >= 0) {
    next_text(most);  // a mark at the beginning goes along
  } else {
    const std::size_t left = bytes_.size() - at_;
    at_ += most < 0 ? left : std::min(left, static_cast<std::size_t>(most));
  }
  other->put(std::string(bytes_, from, at_ - from));
  return {};
}

Value StreamObject::load_from_file(const Call& call) {
  must_be_open();
  try {
    bytes_ = system_.files->read(call.text(0));
  } catch (const ScriptError&) {  // the stream has its own number for it
    raise(kNotOpened);
  }
  if (bytes_.size() > kMaxStreamBytes) raise(errors::kOutOfMemory);
  held_.set(bytes_.size());
  at_ = 0;
  return {};
}

// SaveToFile(path, options): 1 makes a new file only, 2 replaces.
Value StreamObject::save_to_file(const Call& call) {
  must_be_open();
  const std::string path = call.text(0);
  if (call.number_or(1, 1) != kSaveOverwrite && system_.files->find(path)) raise(kNotWritten);
  try {
    system_.files->write(path, bytes_);
  } catch (const ScriptError&) {
    raise(kNotWritten);
  }
  at_ = 0;
  return {};
}

// What is written is there at once.
Value StreamObject::flush(const Call&) {
  must_be_open();
  return {};
}

}  // namespace rk::pagehost
