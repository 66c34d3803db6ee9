#include "site/menu_categories.h"

#include <array>

#include "site/tags.h"

namespace rk::site {

namespace {

// In the order of StraightItem::Content.
constexpr std::array<std::string_view, 3> kStraightTags{"{ItemId}", "{ItemName}",
                                                        "{NowMunVal_Shop_{ItemId}}"};

bool holds_no_tag(const std::optional<std::string>& content) {
  return content && content->find('{') == std::string::npos;
}

}  // namespace

StraightItem::StraightItem(std::string_view item) {
  for (bool more = true; more && is_straight_;) {
    const Tag tag = first_tag(item);
    const std::string_view literal = item.substr(0, tag.at);
    is_straight_ = literal.find('{') == std::string_view::npos;
    pieces_.push_back({literal, tag.content});
    more = tag.content != Content::Nothing;
    if (more) item.remove_prefix(tag.at + kStraightTags[tag.content].size());
  }
}

bool StraightItem::append_to(std::string& text, const MenuCategory& category) const {
  if (!is_straight_ || !holds_no_tag(category.id)) return false;
  if (!holds_no_tag(category.name) || !holds_no_tag(category.mark)) return false;
  const std::string_view contents[] = {*category.id, *category.name, *category.mark, {}};
  for (const Piece& piece : pieces_) text.append(piece.literal).append(contents[piece.content]);
  return true;
}

StraightItem::Tag StraightItem::first_tag(std::string_view item) {
  Tag first{item.size(), Content::Nothing};
  for (const Content content : {Content::Id, Content::Name, Content::Mark}) {
    const std::size_t at = item.find(kStraightTags[content]);
    if (at < first.at) first = {at, content};
  }
  return first;
}

void MenuCategories::add(const MenuCategory& category) {
  const std::string number = category.id.value_or(std::string());
  if (!is_shop_number(number)) reopen();
  // OPTIMIZATION: where no tag is open and nothing to fill in holds a "{", each tag of the item is
  // filled where it stands; else all that is open is looked through for each.
  if (!open_.empty() || !straight_.append_to(open_, category)) fill_all(category, number);
  if (!category.link.empty()) link(number, category.link);
  settle();
}

std::string MenuCategories::list() {
  reopen();
  replace_all(open_.append(item_), item_, {});
  return std::move(open_);
}

void MenuCategories::fill_all(const MenuCategory& category, std::string_view number) {
  open_.append(item_);
  fill("ItemId", category.id);
  fill("ItemName", category.name);
  fill(std::string(kShopMark).append(number), category.mark);
}

void MenuCategories::fill(std::string_view tag, const std::optional<std::string>& content) {
  if (content) {
    site::fill(open_, tag, std::string_view(*content));
    return;
  }
  // QUIRK: a Null loses the categories up to here, not the tag alone.
  settled_.clear();
  open_.clear();
}

// QUIRK: the place is looked for in all categories, so "/shop?Id=1" is found in "/shop?Id=12".
void MenuCategories::link(std::string_view number, std::string_view address) {
  const std::string target = std::string(address).append("\" target=\"_blank");
  const bool plain = is_shop_number(number) && target.find('{') == std::string::npos;
  if (!plain || !settled_.link(number, target)) reopen();
  replace_all(open_, std::string(kShopPlace).append(number), target);
}

// OPTIMIZATION: what can change by links alone is not looked through for tags any more.
void MenuCategories::settle() {
  const std::size_t end = settled_length(open_);
  settled_.append(std::string_view(open_).substr(0, end));
  open_.erase(0, end);
}

void MenuCategories::reopen() {
  open_ = settled_.take().append(open_);
}

}  // namespace rk::site
