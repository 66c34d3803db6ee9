#include "pagehost/http/chunked_body.h"

#include <algorithm>

namespace rk::http {
namespace {

// 60 bits: no sum of sizes overflows, and no body comes near.
constexpr std::size_t kMaxDigits = 15;

int hexadecimal(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

bool is_control(char c) {
  return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7F;
}

}  // namespace

std::size_t ChunkedBody::feed(std::string_view bytes) {
  std::size_t at = 0;
  while (at < bytes.size() && !complete() && refused_status_ == 0) {
    if (state_ != State::Data) {
      frame(bytes[at++]);
      continue;
    }
    const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size_, bytes.size() - at));
    body_.append(bytes.substr(at, wanted));
    at += wanted;
    size_ -= wanted;
    if (size_ == 0) state_ = State::DataReturn;
  }
  return at;
}

void ChunkedBody::frame(char c) {
  if (++frame_bytes_ > kMaxFrameBytes) return refuse(400);
  switch (state_) {
    case State::Size:
      return size_digit(c);
    case State::Extension:
      if (c == '\r') {
        state_ = State::SizeEnd;
      } else if (is_control(c)) {
        refuse(400);
      }
      return;
    case State::SizeEnd:
      return c == '\n' ? end_size() : refuse(400);
    case State::DataReturn:
      return expect(c, '\r', State::DataEnd);
    case State::DataEnd:
      return expect(c, '\n', State::Size);
    case State::LineStart:
    case State::Line:
      if (c == '\r') {
        state_ = state_ == State::LineStart ? State::LastEnd : State::LineEnd;
      } else if (is_control(c)) {
        refuse(400);
      } else {
        state_ = State::Line;
      }
      return;
    case State::LineEnd:
      return expect(c, '\n', State::LineStart);
    case State::LastEnd:
      return expect(c, '\n', State::Complete);
    case State::Data:
    case State::Complete:
      return;
  }
}

void ChunkedBody::size_digit(char c) {
  const int digit = hexadecimal(c);
  if (digit >= 0 && digits_ < kMaxDigits) {
    size_ = size_ * 16 + static_cast<std::uint64_t>(digit);
    ++digits_;
  } else if (digits_ == 0 || digit >= 0) {
    refuse(400);
  } else if (c == '\r') {
    state_ = State::SizeEnd;
  } else if (c == ';' || c == ' ' || c == '\t') {
    state_ = State::Extension;
  } else {
    refuse(400);
  }
}

void ChunkedBody::end_size() {
  digits_ = 0;
  if (size_ > room_) return refuse(413);
  room_ -= size_;
  state_ = size_ == 0 ? State::LineStart : State::Data;
}

void ChunkedBody::expect(char c, char wanted, State next) {
  if (c != wanted) return refuse(400);
  state_ = next;
}

}  // namespace rk::http
