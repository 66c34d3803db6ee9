// TextStream: a text file that a page reads or writes, as OpenTextFile gives it. What is written is
// kept until Close (or the end of the object), then stored at once; what is read is read whole.
#ifndef RK_PAGEHOST_COMPONENTS_TEXT_STREAM_H_
#define RK_PAGEHOST_COMPONENTS_TEXT_STREAM_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "pagehost/pages/held_memory.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/code_page.h"
#include "platform/files.h"

namespace rk::pagehost {

// Text of one stream that is not stored yet; a page that writes more is told 61 "Disk full".
inline constexpr std::size_t kMaxStreamBytes = std::size_t{64} << 20;

enum class StreamUse : std::uint8_t { Read = 1, Write = 2, Append = 8 };

// As pages number it; raises 5 for a number that is none.
StreamUse stream_use(std::int32_t mode);

// Of a file without a byte-order mark, and of a new one.
enum class TextFormat : std::uint8_t { Ansi, Unicode };

// The files and code pages outlive the page, as the host does.
struct FileSystem {
  platform::Files* files = nullptr;
  const platform::CodePages* code_pages = nullptr;
  int ansi_code_page = platform::kGb2312;
  std::shared_ptr<HeldMemory> memory = nullptr;  // of the page
};

class TextStream final : public TabledObject<TextStream> {
 public:
  // For reading: raises 53, 70 or 76. For writing: an empty file is stored at once, so that what
  // stands in its way is told here.
  TextStream(const FileSystem& system, std::string path, StreamUse use, TextFormat format);
  ~TextStream() override;
  std::string_view type_name() const override { return "TextStream"; }
  static std::span<const Member<TextStream>> members();

 private:
  Value read_all(const Call& call);
  Value read_line(const Call& call);
  Value read(const Call& call);
  Value skip(const Call& call);
  Value skip_line(const Call& call);
  Value write(const Call& call);
  Value write_line(const Call& call);
  Value write_blank_lines(const Call& call);
  Value close(const Call& call);
  Value at_end_of_stream(const Call& call);
  Value at_end_of_line(const Call& call);
  Value line(const Call& call);
  Value column(const Call& call);

  void must_read() const;  // 54 otherwise
  std::string_view next_line();
  std::string_view next_units(std::int32_t units);
  void add(std::string_view utf8);
  void store();
  std::string decoded(std::string bytes) const;
  std::string encoded(std::string_view utf8) const;

  FileSystem system_;
  std::string path_;
  StreamUse use_;
  TextFormat format_;
  bool open_ = true;
  std::string text_;    // all of the file, or what is not stored yet
  std::size_t at_ = 0;  // bytes of text_ that were read
  std::int32_t lines_written_ = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_TEXT_STREAM_H_
