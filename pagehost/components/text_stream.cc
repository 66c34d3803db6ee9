#include "pagehost/components/text_stream.h"

#include <algorithm>
#include <utility>

#include "value/script_error.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

constexpr std::string_view kUtf16Mark = "\xFF\xFE";

}  // namespace

StreamUse stream_use(std::int32_t mode) {
  if (mode != 1 && mode != 2 && mode != 8) raise(errors::kInvalidCall);
  return static_cast<StreamUse>(mode);
}

TextStream::TextStream(const FileSystem& system, std::string path, StreamUse use, TextFormat format)
    : system_(system), path_(std::move(path)), use_(use), format_(format) {
  if (use_ == StreamUse::Read) {
    text_ = decoded(system_.files->read(path_));
  } else if (use_ == StreamUse::Write) {
    system_.files->write(path_, format_ == TextFormat::Unicode ? kUtf16Mark : std::string_view());
  } else if (!system_.files->find(path_) && format_ == TextFormat::Unicode) {
    system_.files->write(path_, kUtf16Mark);
  } else {
    system_.files->append(path_, "");
  }
}

TextStream::~TextStream() {
  try {
    store();
  } catch (const ScriptError&) {
    // There is no one left to tell: the page let go of the stream without Close.
  }
}

std::span<const Member<TextStream>> TextStream::members() {
  using T = TextStream;
  static constexpr Member<T> kMembers[] = {
      {"", nullptr},
      {"ReadAll", &T::read_all},
      {"ReadLine", &T::read_line},
      {"Read", &T::read, 1, 1},
      {"Skip", &T::skip, 1, 1},
      {"SkipLine", &T::skip_line},
      {"Write", &T::write, 1, 1},
      {"WriteLine", &T::write_line, 0, 1},
      {"WriteBlankLines", &T::write_blank_lines, 1, 1},
      {"Close", &T::close},
      {"AtEndOfStream", &T::at_end_of_stream},
      {"AtEndOfLine", &T::at_end_of_line},
      {"Line", &T::line},
      {"Column", &T::column},
  };
  return kMembers;
}

void TextStream::must_read() const {
  if (!open_ || use_ != StreamUse::Read) raise(errors::kBadFileMode);
}

Value TextStream::read_all(const Call&) {
  must_read();
  if (at_ >= text_.size()) raise(errors::kInputPastEnd);
  const std::size_t from = std::exchange(at_, text_.size());
  return Value::text(std::string_view(text_).substr(from));
}

// The line without its end, which is passed over.
std::string_view TextStream::next_line() {
  must_read();
  if (at_ >= text_.size()) raise(errors::kInputPastEnd);
  const std::string_view rest = std::string_view(text_).substr(at_);
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  at_ += std::min(end + 1, rest.size());
  const bool has_return = end > 0 && rest[end - 1] == '\r';
  return rest.substr(0, has_return ? end - 1 : end);
}

Value TextStream::read_line(const Call&) {
  return Value::text(next_line());
}

Value TextStream::skip_line(const Call&) {
  next_line();
  return {};
}

std::string_view TextStream::next_units(std::int32_t units) {
  must_read();
  if (units < 0) raise(errors::kInvalidCall);
  if (at_ >= text_.size()) raise(errors::kInputPastEnd);
  std::size_t end = at_;
  for (std::int32_t left = units; left > 0 && end < text_.size();) {
    const auto lead = static_cast<unsigned char>(text_[end]);
    const std::size_t bytes = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    left -= bytes == 4 ? 2 : 1;
    end = std::min(end + bytes, text_.size());
  }
  const std::size_t from = std::exchange(at_, end);
  return std::string_view(text_).substr(from, end - from);
}

Value TextStream::read(const Call& call) {
  return Value::text(next_units(call.number(0)));
}

Value TextStream::skip(const Call& call) {
  next_units(call.number(0));
  return {};
}

void TextStream::add(std::string_view utf8) {
  if (!open_ || use_ == StreamUse::Read) raise(errors::kBadFileMode);
  if (text_.size() + utf8.size() > kMaxStreamBytes) raise(errors::kDiskFull);
  lines_written_ += static_cast<std::int32_t>(std::count(utf8.begin(), utf8.end(), '\n'));
  text_ += utf8;
}

Value TextStream::write(const Call& call) {
  add(joined_text(call.at(0)).view());
  return {};
}

Value TextStream::write_line(const Call& call) {
  if (call.has(0)) add(joined_text(call.at(0)).view());
  add("\r\n");
  return {};
}

Value TextStream::write_blank_lines(const Call& call) {
  for (std::int32_t i = 0; i < call.number(0); ++i) add("\r\n");
  return {};
}

// A mark in the file decides; else it is what the page said.
std::string TextStream::decoded(std::string bytes) const {
  if (bytes.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
  const bool marked = bytes.starts_with(kUtf16Mark);
  if (marked || format_ == TextFormat::Unicode) {
    return Text::from_bytes(std::string_view(bytes).substr(marked ? 2 : 0)).string();
  }
  if (is_ascii(bytes)) return bytes;
  return system_.code_pages->to_utf8(bytes, system_.ansi_code_page);
}

std::string TextStream::encoded(std::string_view utf8) const {
  if (format_ == TextFormat::Unicode) return Text(utf8).bytes();
  if (is_ascii(utf8)) return std::string(utf8);
  return system_.code_pages->from_utf8(utf8, system_.ansi_code_page);
}

void TextStream::store() {
  if (!open_ || use_ == StreamUse::Read) return;
  const std::string text = std::exchange(text_, {});
  if (!text.empty()) system_.files->append(path_, encoded(text));
}

Value TextStream::close(const Call&) {
  store();
  open_ = false;
  text_.clear();
  return {};
}

Value TextStream::at_end_of_stream(const Call&) {
  if (!open_) raise(errors::kBadFileMode);
  return Value::boolean(use_ != StreamUse::Read || at_ >= text_.size());
}

Value TextStream::at_end_of_line(const Call&) {
  must_read();
  const std::string_view rest = std::string_view(text_).substr(at_);
  return Value::boolean(rest.empty() || rest[0] == '\n' || rest.starts_with("\r\n"));
}

Value TextStream::line(const Call&) {
  const auto read = text_.begin() + static_cast<std::ptrdiff_t>(at_);
  const auto lines = use_ == StreamUse::Read ? std::count(text_.begin(), read, '\n')
                                             : std::ptrdiff_t{lines_written_};
  return Value::long_integer(static_cast<std::int32_t>(lines + 1));
}

Value TextStream::column(const Call&) {
  const std::string_view before =
      std::string_view(text_).substr(0, use_ == StreamUse::Read ? at_ : text_.size());
  const std::size_t line_end = before.rfind('\n');
  const std::string_view line =
      line_end == std::string_view::npos ? before : before.substr(line_end + 1);
  return Value::long_integer(static_cast<std::int32_t>(unit_length(line) + 1));
}

}  // namespace rk::pagehost
