// INI settings files for pages: read a key, write one, delete a key or a section. Nothing is kept
// between calls; nothing is reported where a file cannot be read or written.
#ifndef RK_SERVICES_INI_SETTINGS_H_
#define RK_SERVICES_INI_SETTINGS_H_

#include <string>
#include <string_view>

#include "platform/code_page.h"
#include "platform/profile_strings.h"
#include "value/value.h"

namespace rk::services {

// What the operations need of the outside; owned by the program.
struct IniStore {
  platform::ProfileStrings& profile_strings;
  const platform::CodePages& code_pages;
  int ansi_code_page;
};

// Texts are UTF-8; each crosses to the file in the ANSI code page. The operations raise 94 for a
// Null argument and nothing else.
void WriteIniKey(const IniStore& store, std::string_view file, const Value& section,
                 const Value& key, const Value& value);
// At most 1023 bytes of the file's value, without blanks around them; "" where there is none.
Value GetIniKey(const IniStore& store, std::string_view file, const Value& section,
                const Value& key);
void DelIniKey(const IniStore& store, std::string_view file, const Value& section,
               const Value& key);
void DelIniSec(const IniStore& store, std::string_view file, const Value& section);

// The path of a file in a folder, both as pages for another system write them: exactly one "\"
// stands between them, however many end the folder and begin the name.
std::string ini_path(std::string_view folder, std::string_view name);

}  // namespace rk::services

#endif  // RK_SERVICES_INI_SETTINGS_H_
