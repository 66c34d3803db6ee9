// The texts of commands before the database reads them: a table's name that stands for all of its
// rows, and names in a statement that stand for the values of a command.
#ifndef RK_PAGEHOST_COMPONENTS_COMMAND_TEXTS_H_
#define RK_PAGEHOST_COMPONENTS_COMMAND_TEXTS_H_

#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/database.h"

namespace rk::pagehost {

// As pages number the kinds of commands, and what they may add to them.
inline constexpr std::int32_t kCommandTable = 2;
inline constexpr std::int32_t kCommandTableDirect = 512;
inline constexpr std::int32_t kExecuteNoRecords = 128;
// What pages pass where they tell nothing is negative.
constexpr bool has_option(std::int32_t options, std::int32_t one) {
  return options > 0 && (options & one) != 0;
}

// The text without blanks and line ends around it.
std::string_view trimmed(std::string_view text);

// "Select * From [name]" where a table is named in place of a statement: by the kind of command
// that `options` give, or because the text is one word or one name in brackets.
platform::SqlText statement_of(const platform::SqlText& text, std::int32_t options);

// Whether the text begins as one that gives rows does.
bool begins_as_select(std::string_view text);

// Runs `step` with the statement. A name that the database does not know stands for the next of the
// values where it has values and no "?" and no Parameters clause for them: such names get a clause,
// in the order of the text, and the step runs again. Passes on every other failure.
void naming_parameters(platform::SqlText& sql, const std::function<void()>& step);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_COMMAND_TEXTS_H_
