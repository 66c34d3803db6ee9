// Repeat expansion: how every list fills its item template, row by row.
//
// Its meaning is that of one accumulated text. It begins as a raw copy of the item template; a
// fill replaces a tag in all of it, so that a value that itself holds a tag is filled by a later
// fill or row; a Null empties it; what is appended stands behind the copy; each row ends with a
// fresh raw copy. At the end every raw copy is removed, wherever it stands, and the text takes the
// place of every raw copy in the block around it. An empty item template is never removed and
// never replaced.
//
// Its cost is linear in the output: what holds none of the renderer's tags, nor the beginning of
// one that later text could complete, is settled and never looked at again. One object serves one
// list; `item` and the tag names must outlive it.
#ifndef RK_SITE_REPEAT_H_
#define RK_SITE_REPEAT_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "value/value.h"

namespace rk::site {

class Repeat {
 public:
  // `tags`: the names, without braces, that rows fill. None holds a brace.
  Repeat(std::string_view item, std::span<const std::string_view> tags);

  // Text behind this row's copy; Null appends nothing.
  void append(const Value& text);

  // Fills one of the tags in all that was accumulated.
  void fill(std::string_view tag, std::string_view content);
  void fill(std::string_view tag, const Value& content);
  // With a field of the current row.
  void fill(std::string_view tag, platform::Recordset& rows, std::size_t ordinal);

  // Ends the row: a fresh raw copy follows.
  void next();

  // The block with the list in the place of its raw copies; or the list alone. Both end the list.
  Text into(std::string_view block);
  std::string list();
  // What the rows made of the item, with nothing removed: of one row, the item with its tags
  // filled, for a file that is filled once. Ends the list too.
  std::string filled();

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  // A stretch of the item template and the tag behind it (kNone behind the last).
  struct Piece {
    std::string_view literal;
    std::size_t tag;
  };
  // What a row does to the accumulated text, in order. Contents lie in contents_.
  struct Step {
    enum class Kind : std::uint8_t { Fill, Append, Empty } kind;
    std::size_t tag;
    std::size_t begin;
    std::size_t size;
  };

  std::size_t tag_number(std::string_view tag);
  void add_fill(std::string_view tag, std::size_t begin);
  std::string_view content(const Step& step) const;
  void cut_item();
  std::size_t tag_at(std::string_view text, std::size_t at) const;
  bool begins_tag(std::string_view rest) const;
  std::size_t settled_length(std::string_view text) const;
  bool write_straight();
  void write_step_by_step();

  const std::string_view item_;
  const std::span<const std::string_view> tags_;
  std::vector<Piece> pieces_;
  bool straight_item_ = false;  // no tag can come to be but those that stand in the item

  std::string settled_;
  std::string open_;  // behind settled_, before the fresh copy: still holds a tag
  std::vector<Step> steps_;
  std::string contents_;
  std::vector<std::size_t> filled_by_;  // tag -> step of this row, kNone where it has none
  std::size_t expected_tag_ = 0;
};

}  // namespace rk::site

#endif  // RK_SITE_REPEAT_H_
