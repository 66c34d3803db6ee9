#include "services/daily_log.h"

#include <cmath>
#include <utility>

#include "site/trapped.h"
#include "value/conversions.h"

namespace rk::services {

namespace {

std::string todays_file(const LogStore& store) {
  return store.folder + "/" + date_text(std::floor(store.clock.now())) + ".log";
}

std::string line(const LogStore& store, const Value& message) {
  std::string text = date_text(store.clock.now());
  text.append(18, ' ');
  text.append(joined_text(message).view());
  return store.code_pages.from_utf8(text, store.ansi_code_page);
}

}  // namespace

void writelog(const LogStore& store, const Value& msgstrs) {
  std::string content;
  site::trapped([&] {
    // What is there already goes through as bytes; only the new line is encoded.
    std::string before;
    const bool there = !site::trapped([&] { before = store.files.read(todays_file(store)); });
    // QUIRK: an existing but empty file cannot be read whole, so this call's message is lost and
    // the file gets an empty line.
    if (there && before.empty()) return;
    before += line(store, msgstrs);
    content = std::move(before);
  });
  content += "\r\n";
  site::trapped([&] { store.files.write(todays_file(store), content); });
}

}  // namespace rk::services
