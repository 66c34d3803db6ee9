// Reads a chunked body, in whatever pieces it comes, more strictly than most: every line ends in CR
// LF, a chunk's end stands where its size says. Extensions and trailers are passed over.
// One connection's thread.
#ifndef RK_PAGEHOST_HTTP_CHUNKED_BODY_H_
#define RK_PAGEHOST_HTTP_CHUNKED_BODY_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace rk::http {

// Sizes, extensions and trailers of one body together: far beyond what clients send, and no way
// to keep a connection busy for nothing.
inline constexpr std::size_t kMaxFrameBytes = std::size_t{16} << 10;

class ChunkedBody {
 public:
  explicit ChunkedBody(std::uint64_t max_bytes) : room_(max_bytes) {}

  // How many of the bytes belong to the body; all of them while it is not complete.
  std::size_t feed(std::string_view bytes);
  bool complete() const noexcept { return state_ == State::Complete; }
  // 0, or the status that refuses the body: 400, 413.
  int refused_status() const noexcept { return refused_status_; }
  std::string take() { return std::move(body_); }

 private:
  enum class State : std::uint8_t {
    Size,       // its digits
    Extension,  // what stands behind them
    SizeEnd,    // LF
    Data,
    DataReturn,  // CR
    DataEnd,     // LF
    LineStart,   // of a trailer, or of the empty line
    Line,
    LineEnd,  // LF
    LastEnd,  // LF of the empty line
    Complete,
  };

  void frame(char c);
  void size_digit(char c);
  void end_size();
  void expect(char c, char wanted, State next);
  void refuse(int status) { refused_status_ = status; }

  std::uint64_t room_;
  State state_ = State::Size;
  std::uint64_t size_ = 0;
  std::size_t digits_ = 0;
  std::size_t frame_bytes_ = 0;
  std::string body_;
  int refused_status_ = 0;
};

}  // namespace rk::http

#endif  // RK_PAGEHOST_HTTP_CHUNKED_BODY_H_
