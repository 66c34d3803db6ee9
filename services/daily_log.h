// The day's log file of a site: pages add a line for what they want to trace.
#ifndef RK_SERVICES_DAILY_LOG_H_
#define RK_SERVICES_DAILY_LOG_H_

#include <string>

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "value/value.h"

namespace rk::services {

// What the log needs of the outside; owned by the program.
struct LogStore {
  platform::Files& files;
  const platform::Clock& clock;
  const platform::CodePages& code_pages;
  int ansi_code_page;
  std::string folder;  // physical path; one file a day lies in it, named for its date
};

// Adds the time, 18 blanks and the message. Raises nothing; what cannot be written is lost.
// Two pages that write at once may lose one of the two lines.
void writelog(const LogStore& store, const Value& msgstrs);

}  // namespace rk::services

#endif  // RK_SERVICES_DAILY_LOG_H_
