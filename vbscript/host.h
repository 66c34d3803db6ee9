// Host: what a script meets outside the language, given by whoever runs it.
//
// One host serves one run on one thread. What its operations throw reaches the script as its error,
// but for platform::PageEnd, which no On Error sees.
#ifndef RK_VBSCRIPT_HOST_H_
#define RK_VBSCRIPT_HOST_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/regexp.h"
#include "value/value.h"

namespace rk::vbscript {

// The services that built-in functions stand on. Referred to, not owned.
struct Services {
  const platform::Clock* clock = nullptr;
  // Without code pages, Asc and Chr know ASCII and the 256 first characters only.
  const platform::CodePages* code_pages = nullptr;
  int ansi_code_page = 936;  // for Asc and Chr
  // Without regular expressions New RegExp raises 429.
  const platform::Regexps* regexps = nullptr;
  // Lowest stack address that the script may reach (limits.h); 0: found out at the start.
  std::uintptr_t stack_floor = 0;
};

class Host {
 public:
  virtual ~Host() = default;

  // An object that scripts know by name (Response, an <object> declaration), asked once a run for
  // each name that the script uses and neither declares nor assigns. Letter case as in the script.
  virtual std::optional<Value> lookup(std::string_view name) = 0;

  // Page text, and the value of a written expression (Null writes nothing).
  virtual void write(std::string_view utf8) = 0;
  virtual void write(const Value& value) = 0;

  // CreateObject of the language. Raises 429 where there is no such class.
  virtual Value create_object(std::string_view program_identifier) = 0;

  // Called every so many loop turns and calls (limits.h); throws platform::PageEnd when the page's
  // time is over.
  virtual void check_time() = 0;

  virtual const Services& services() const = 0;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_HOST_H_
