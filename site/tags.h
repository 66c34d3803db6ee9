// Template text: tags ("{" + name + "}"), marker blocks and the cleaning of request values.
//
// Set_Tags and GetKey are pages' operations and pass over failures; the functions beneath them are
// what the renderers use on texts that they hold. All texts are UTF-8 and compare byte by byte, so
// letter case counts. Pure functions.
#ifndef RK_SITE_TAGS_H_
#define RK_SITE_TAGS_H_

#include <optional>
#include <string>
#include <string_view>

#include "value/value.h"

namespace rk::site {

// FileCon with every "{TagName}" replaced by TagCon; TagName becomes "{TagName}". Empty where one
// of the three is Null or has no text.
Text Set_Tags(const Value& FileCon, Value& TagName, const Value& TagCon);
// The text between the first Start and the Last that follows it, up to the next Start or the end
// where there is no Last. Empty, not "", where Start does not occur or nothing follows it.
Value GetKey(const Value& HTML, const Value& Start, const Value& Last);
// mystr without blanks, "'", "*" and "%". Raises 94 on Null.
std::string ReStr(const Value& mystr);
// "table" where chkStr1 without chkStr2 holds both table tags in any letter case, else "div".
// Raises 94 on Null.
std::string_view CheckTempType(const Value& chkStr1, const Value& chkStr2);

// string_view::find. OPTIMIZATION: a marker is found by its "!", which is rare, not by its "<".
std::size_t place_of(std::string_view wanted, std::string_view text, std::size_t from = 0);

// GetKey on texts; the result is a part of `html`.
std::string_view cut(std::string_view html, std::string_view start, std::string_view last);

// `text` with every `from` replaced by `to`; an empty `from` replaces nothing. A text without
// `from` is the same text again, uncopied.
Text replaced(const Text& text, std::string_view from, std::string_view to);
void replace_all(std::string& text, std::string_view from, std::string_view to);

// What a tag is filled with, or nothing where the value has no text: a Null, an object whose value
// is Null or that has none, an array.
std::optional<Text> text_if_any(const Value& value);
// Fills a tag of a text in place, as Set_Tags does. False where the content has no text, and the
// whole text is lost.
void fill(std::string& text, std::string_view tag, std::string_view content);
bool fill(std::string& text, std::string_view tag, const Value& content);
Text filled(const Text& text, std::string_view tag, const Value& content);

}  // namespace rk::site

#endif  // RK_SITE_TAGS_H_
