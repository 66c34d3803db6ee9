// A text that grows at its end while tags and marked stretches are replaced in all of it.
//
// Its meaning is that of one string; its cost is linear in the output, because what holds none of
// the beginnings that it was told of is settled and never searched again. Every search, fill and
// replacement must be for a text that begins with one of them, but for replaced_everywhere(). One
// object serves one call.
#ifndef RK_SHOP_SETTLING_TEXT_H_
#define RK_SHOP_SETTLING_TEXT_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "value/value.h"

namespace rk::shop {

class SettlingText {
 public:
  // `beginnings`: what searches begin with. `lasting`, where not empty, is one more that mostly
  // stays in the text for good, so that it does not keep the text behind it from settling; only
  // replace() may look for what begins with it. All must outlive this object.
  explicit SettlingText(std::span<const std::string_view> beginnings, std::string_view lasting = {})
      : beginnings_(beginnings), lasting_(lasting) {}

  void append(std::string_view text) { open_.append(text); }
  // As Set_Tags on the whole text: a Null, or what has no text, empties it.
  void fill(std::string_view tag, const Value& content);
  void fill(std::string_view tag, std::string_view content);
  // As GetKey on the whole text; valid until the next change.
  std::string_view cut(std::string_view start, std::string_view last) const;
  void replace(std::string_view from, std::string_view to);

  // Leaves out of later searches what can change no more.
  void settle();

  // The text with each `from` replaced, whatever it begins with; an empty one replaces nothing.
  std::string replaced_everywhere(std::string_view from, std::string_view to) &&;
  std::string whole() &&;

 private:
  std::size_t settled_length() const;
  void settle_to(std::size_t length);
  void reopen_for(std::string_view from);

  std::span<const std::string_view> beginnings_;
  std::string_view lasting_;
  std::vector<std::size_t> lasting_places_;  // in settled_
  std::string settled_;
  std::string open_;
};

}  // namespace rk::shop

#endif  // RK_SHOP_SETTLING_TEXT_H_
