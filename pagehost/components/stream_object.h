// StreamObject (ADODB.Stream): bytes in memory, read and written as bytes or as text of a charset;
// loaded from and saved to the site's files. Upload classes and pictures from the database use it.
#ifndef RK_PAGEHOST_COMPONENTS_STREAM_OBJECT_H_
#define RK_PAGEHOST_COMPONENTS_STREAM_OBJECT_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "pagehost/components/text_stream.h"
#include "pagehost/pages/tabled_object.h"
#include "value/text.h"

namespace rk::pagehost {

class StreamObject final : public TabledObject<StreamObject> {
 public:
  explicit StreamObject(const FileSystem& system) : system_(system), held_(system.memory) {}
  // Open, at the beginning of these bytes.
  StreamObject(const FileSystem& system, std::string bytes);
  std::string_view type_name() const override { return "Stream"; }
  static std::span<const Member<StreamObject>> members();
  void add_held(rk::HeldMemory& held) const override { held.bytes += bytes_.capacity(); }

  // Its bytes from its place on, which is their end then; a text as UTF-8 with its mark. Raises
  // 3704.
  std::string rest();
  // Holds this text alone, in its charset where its type is text; opened, and at the beginning.
  void take_text(std::string_view utf8);

 private:
  enum class Type : std::uint8_t { Binary = 1, Text = 2 };

  Value open(const Call& call);
  Value close(const Call& call);
  Value type(const Call& call);
  Value charset(const Call& call);
  Value mode(const Call& call);
  Value state(const Call& call);
  Value position(const Call& call);
  Value size(const Call& call);
  Value eos(const Call& call);
  Value set_eos(const Call& call);
  Value line_separator(const Call& call);
  Value read(const Call& call);
  Value read_text(const Call& call);
  Value write(const Call& call);
  Value write_text(const Call& call);
  Value skip_line(const Call& call);
  Value copy_to(const Call& call);
  Value load_from_file(const Call& call);
  Value save_to_file(const Call& call);
  Value flush(const Call& call);

  void must_be(Type type) const;  // 3704 closed, 3219 of the other type
  void must_be_open() const;
  void put(std::string_view bytes);
  void put_text(std::string_view utf8);
  void resize(std::size_t bytes);
  std::string encoded(std::string_view utf8) const;
  std::string decoded(std::string_view bytes) const;
  std::string_view mark() const;  // the charset's byte-order mark
  void pass_mark();
  std::string_view separator() const;  // as bytes of the charset
  std::string next_line();
  Text next_text(std::int32_t most);

  FileSystem system_;
  bool open_ = false;
  Type type_ = Type::Text;
  std::string charset_ = "Unicode";
  std::int32_t mode_ = 0;
  std::int32_t line_separator_ = -1;  // -1 CR LF, 10 LF, 13 CR
  std::string bytes_;
  HeldBytes held_;
  std::size_t at_ = 0;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_STREAM_OBJECT_H_
