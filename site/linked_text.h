// What Show_Menu has written of its categories: a text that changes in two ways only, by links and
// at its end.
//
// A category's own link stands in the place of "/shop?Id=" and its number, wherever that is found
// in the categories so far, within longer numbers too. To look through all of them for each link
// would cost the square of their number; this text knows where its places are, so that a link costs
// what it writes. One object serves one call of Show_Menu.
#ifndef RK_SITE_LINKED_TEXT_H_
#define RK_SITE_LINKED_TEXT_H_

#include <list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace rk::site {

inline constexpr std::string_view kShopPlace = "/shop?Id=";
inline constexpr std::string_view kShopMark = "NowMunVal_Shop_";

// Whether a category's number is one as databases make them: digits and "-", neither none nor more
// than any integer has.
bool is_shop_number(std::string_view id);

// How much of a text stays as it is whatever follows it: its end could be the begin of a place, of
// a place with a longer number, or of one of the tags that categories fill.
std::size_t steady_length(std::string_view text);
// The same where the tags in the text will be filled as well.
std::size_t settled_length(std::string_view text);

class LinkedText {
 public:
  // Appends a text that is settled to its end.
  void append(std::string_view text);

  // Puts `target` wherever kShopPlace and `id`, a shop number, stand. `target` is steady and holds
  // no "{". False, and nothing is changed, where a place or tag could come to be of what stands
  // before a target and its first letters: then the text has to be taken and looked through.
  bool link(std::string_view id, std::string_view target);

  // The whole text, which is empty afterwards.
  std::string take();
  void clear();

 private:
  // Stretches that hold no place, but at their begin where they stand in places_ by its number.
  using Pieces = std::list<std::string>;
  using Places = std::multimap<std::string, Pieces::iterator, std::less<>>;

  void insert(Pieces::iterator before, std::string_view text);
  void index();
  std::vector<Places::iterator> places_of(std::string_view id);
  bool is_steady_before(Pieces::iterator piece) const;

  std::string tail_;  // behind pieces_, not yet cut into such
  Pieces pieces_;
  Places places_;
};

}  // namespace rk::site

#endif  // RK_SITE_LINKED_TEXT_H_
