// The page as the library sees it: the five objects that the page host binds to a SiteMain or Host
// object, typed. Scripts reach the same things through objects of the page host.
//
// All belong to one request's thread, but for Application, which any thread may use.
#ifndef RK_PLATFORM_PAGE_H_
#define RK_PLATFORM_PAGE_H_

#include <memory>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "platform/files.h"
#include "value/object.h"
#include "value/value.h"

namespace rk::platform {

// Why a page ends before its last statement. Thrown through everything: no On Error, no guard of a
// service and no `catch (const std::exception&)` sees it; only the page run catches it.
struct PageEnd {
  enum class Reason : std::uint8_t { Ended, TimedOut, OutOfMemory, Stopping };
  Reason reason = Reason::Ended;
};

class Response {
 public:
  virtual ~Response() = default;
  virtual void write(std::string_view utf8) = 0;
  // Throws PageEnd.
  [[noreturn]] virtual void end() = 0;
  [[noreturn]] virtual void redirect(std::string_view address) = 0;
};

class Request {
 public:
  virtual ~Request() = default;
  // Each answers a String; Empty where the request has no such item. Names in any letter case.
  // An item named several times is its values joined with ", ".
  virtual Value query(std::string_view name) = 0;
  virtual Value form(std::string_view name) = 0;
  virtual Value server_variable(std::string_view name) = 0;
  // The request's default lookup: query string, form, cookies, client certificate, server
  // variables, in that order.
  virtual Value item(std::string_view name) = 0;
};

// Values that live as long as the application. Names have no letter case.
class Application {
 public:
  virtual ~Application() = default;
  virtual Value value(std::string_view name) = 0;  // Empty where never stored
  virtual void set_value(std::string_view name, Value value) = 0;
  // Held by one page at a time, may be taken again by its holder; given back at the page's end.
  virtual void lock() = 0;
  virtual void unlock() = 0;
};

class Session {
 public:
  virtual ~Session() = default;
  virtual Value value(std::string_view name) = 0;  // Empty where never stored
  virtual void set_value(std::string_view name, Value value) = 0;
};

class Server {
 public:
  virtual ~Server() = default;
  // Closed; open() comes next.
  virtual std::unique_ptr<Connection> create_connection() = 0;
  // The site's files, as the file system object sees them.
  virtual Files& files() = 0;
  // Physical path of a virtual one. Raises for a path out of the site.
  virtual std::string map_path(std::string_view virtual_path) = 0;
  virtual std::string url_encode(std::string_view utf8) = 0;
};

// The scripting context that a page host passes to OnStartPage: an Object for scripts which the
// library reads through this interface.
class ScriptingContext : public Object {
 public:
  virtual std::shared_ptr<Response> response() = 0;
  virtual std::shared_ptr<Server> server() = 0;
  virtual std::shared_ptr<Request> request() = 0;
  virtual std::shared_ptr<Application> application() = 0;
  virtual std::shared_ptr<Session> session() = 0;
};

}  // namespace rk::platform

#endif  // RK_PLATFORM_PAGE_H_
