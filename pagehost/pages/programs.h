// Programs: what Server.CreateObject makes, by program identifier; and PageServices, what a page
// offers to the objects that it creates.
//
// The page host knows no class by itself: components/ adds the common ones, the program's wiring
// the storefront's. The table is filled before the first page and only read from then on.
#ifndef RK_PAGEHOST_PAGES_PROGRAMS_H_
#define RK_PAGEHOST_PAGES_PROGRAMS_H_

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "pagehost/pages/held_memory.h"
#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/database.h"
#include "platform/files.h"
#include "platform/page.h"
#include "platform/random.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::pagehost {

// A page's time and place, for what works on its behalf (the database's interrupt, a fetch, a
// trace). It outlives the page where an object of the page does (one kept in a session), and says
// then that there is no limit. One thread, but for over(), which any may ask.
class PageWatch {
 public:
  virtual ~PageWatch() = default;
  virtual std::chrono::steady_clock::time_point deadline() const = 0;
  // Whether the page must end: its time is over, or the server's is.
  virtual bool over() const = 0;
  // Throws platform::PageEnd where it must.
  virtual void check() const = 0;
  // The statement that runs, as "PATH:LINE"; empty outside a page.
  virtual std::string place() const = 0;
};

// Of the page's thread. Lives as long as the page: an object that may be kept in a session copies
// the handles that it needs.
class PageServices {
 public:
  virtual ~PageServices() = default;
  virtual std::shared_ptr<platform::Database> database() = 0;  // one a page, made when first asked
  virtual std::shared_ptr<const PageWatch> watch() = 0;
  virtual std::shared_ptr<HeldMemory> memory() = 0;
  virtual platform::Files& files() = 0;
  virtual const platform::CodePages& code_pages() = 0;
  virtual const platform::Clock& clock() = 0;
  virtual platform::Random& random() = 0;
  virtual int ansi_code_page() const = 0;
  virtual int page_code_page() const = 0;  // of the response, at the moment
  virtual std::string map_path(std::string_view virtual_path) = 0;
  virtual const std::string& site_root() const = 0;
  virtual Ref<platform::ScriptingContext> context() = 0;
};

// What the application keeps of an object that belongs to a page: never called itself, and held by
// any thread. Each page that reads it has an object of its own made from it.
class KeptObject : public Object {
 public:
  MemberId member(std::string_view) const final { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) final { raise(errors::kNoSuchMember); }
  virtual Ref<Object> made_for(PageServices& page) const = 0;
};

// An object that may be stored in the application.
class KeepableObject {
 public:
  virtual ~KeepableObject() = default;
  virtual Ref<KeptObject> kept() const = 0;
};

using ObjectFactory = std::function<Ref<Object>(PageServices& page)>;

// A program identifier without a version behind it: of "MSXML2.DOMDocument.6.0" the rest.
std::string_view without_version(std::string_view name);

class Programs {
 public:
  // Names in any letter case; a later one replaces an earlier.
  void add(std::string_view program_identifier, ObjectFactory factory);
  // Null where nothing is known by this name. A version behind the name (".3.0", ".6") is left
  // out of the comparison where the name as it stands is not known.
  const ObjectFactory* find(std::string_view program_identifier) const;

 private:
  std::unordered_map<std::string, ObjectFactory> factories_;  // by lower-case name
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_PROGRAMS_H_
