// The menu step by step: one text in which every fill and link replaces everywhere. What Show_Menu
// must equal.
#ifndef RK_TESTS_PLAIN_MENU_H_
#define RK_TESTS_PLAIN_MENU_H_

#include <string>
#include <vector>

#include "value/value.h"

namespace rk::plain {

// Id, ItemName and Link.
using MenuCategory = std::vector<Value>;

// `mark` stands where the category `current` is marked.
std::string menu_categories(const std::string& item, const std::vector<MenuCategory>& rows,
                            const std::string& current, const std::string& mark);

// The menu with `mark` at the fixed entry of that name, such as "Index".
std::string menu_entries(std::string menu, const std::string& current, const std::string& mark);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_MENU_H_
