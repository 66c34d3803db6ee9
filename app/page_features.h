// What a page's syntax tree tells before it runs: classes that nobody serves, members that their
// objects do not have, and which of the library's renderers it calls.
//
// A variable counts as an object of a class where the page gives it nothing but CreateObject of
// that class's name, written as a text, or Nothing. Anything less certain is passed over: a finding
// is a fault. One thread.
#ifndef RK_APP_PAGE_FEATURES_H_
#define RK_APP_PAGE_FEATURES_H_

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/pages/page_reader.h"
#include "pagehost/pages/programs.h"
#include "value/object.h"

namespace rk::app {

struct RendererCall {
  std::string operation;             // as the page writes it
  std::optional<std::string> style;  // the first argument, where that is written as a text
  std::string place;                 // "PATH:LINE"
};

class PageFeatures {
 public:
  // Both must outlive this. The page is asked for its objects' members only.
  PageFeatures(const pagehost::Programs& programs, pagehost::PageServices& page)
      : programs_(programs), page_(page) {}

  // "PATH:LINE: message" for each fault, in the order of the source. The source must compile.
  std::vector<std::string> faults(const pagehost::PageSource& page);
  // Whether the page makes an object of a class by its name, written as a text.
  static bool creates(const pagehost::PageSource& page, std::string_view program_identifier);
  // Calls of members whose name begins with "Show_"; so that renderers can be asked what they need.
  static std::vector<RendererCall> renderer_calls(const pagehost::PageSource& page);

 private:
  friend class FaultFinder;
  // Null where the class is not served.
  const Object* object_of(std::string_view program_identifier);
  const Object* intrinsic(std::string_view name);

  const pagehost::Programs& programs_;
  pagehost::PageServices& page_;
  std::map<std::string, Ref<Object>> made_;  // by lower-case class or name
};

}  // namespace rk::app

#endif  // RK_APP_PAGE_FEATURES_H_
