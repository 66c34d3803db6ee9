// The shop categories of the menu, filled one behind the other.
//
// Their meaning is that of one accumulated text: each row appends a raw copy of the item, and then
// every fill replaces its tag, and a link its place, in all of it; a Null empties it; at the end
// the raw copies that are left are removed. Its cost is linear in the output. One object serves one
// call of Show_Menu; the item must outlive it.
#ifndef RK_SITE_MENU_CATEGORIES_H_
#define RK_SITE_MENU_CATEGORIES_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "site/linked_text.h"

namespace rk::site {

// A row's texts, nothing where they are Null, and the text of its mark.
struct MenuCategory {
  std::optional<std::string> id;
  std::optional<std::string> name;
  std::optional<std::string> mark;
  std::string link;
};

// The item cut at the tags that templates of the usual form have, and no others.
class StraightItem {
 public:
  explicit StraightItem(std::string_view item);

  // Appends the filled item. False, and nothing is appended, where tags have to be looked for.
  bool append_to(std::string& text, const MenuCategory& category) const;

 private:
  enum Content : std::size_t { Id, Name, Mark, Nothing };
  struct Tag {
    std::size_t at;
    Content content;
  };
  struct Piece {
    std::string_view literal;
    Content content;
  };

  static Tag first_tag(std::string_view item);

  std::vector<Piece> pieces_;
  bool is_straight_ = true;
};

class MenuCategories {
 public:
  explicit MenuCategories(std::string_view item) : item_(item), straight_(item) {}

  void add(const MenuCategory& category);
  // All of them; none are left.
  std::string list();

 private:
  void fill_all(const MenuCategory& category, std::string_view number);
  void fill(std::string_view tag, const std::optional<std::string>& content);
  void link(std::string_view number, std::string_view address);
  void settle();
  void reopen();

  const std::string_view item_;
  const StraightItem straight_;
  LinkedText settled_;
  std::string open_;  // behind settled_: may still hold a tag
};

}  // namespace rk::site

#endif  // RK_SITE_MENU_CATEGORIES_H_
