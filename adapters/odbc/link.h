// One connection to a data source, as pages borrow it one after the other. One thread at a time.
#ifndef RK_ADAPTERS_ODBC_LINK_H_
#define RK_ADAPTERS_ODBC_LINK_H_

#include <chrono>
#include <cstdint>
#include <string>

#include "adapters/odbc/canceller.h"

namespace rk::odbc {

// The engines whose SQL this adapter can write itself; the others are sent what they are given.
enum class Dialect : std::uint8_t { Other, PostgreSql, MySql, SqlServer, Sqlite };

class Link {
 public:
  // Connects. `environment` and `canceller` outlive it. Raises the driver's errors.
  Link(void* environment, Canceller& canceller, std::string connection_string);
  ~Link();
  Link(const Link&) = delete;
  Link& operator=(const Link&) = delete;

  const std::string& connection_string() const noexcept { return connection_string_; }
  void* handle() const noexcept { return handle_; }
  Canceller& canceller() const noexcept { return canceller_; }
  Dialect dialect() const noexcept { return dialect_; }
  const std::string& engine_name() const noexcept { return engine_name_; }
  // A name between the signs that the engine quotes names by.
  std::string quoted(const std::string& name) const;
  // Whether only one statement may have rows left to read.
  bool reads_one_at_a_time() const noexcept { return one_at_a_time_; }

  void begin();
  void commit();
  void roll_back() noexcept;

  // The connection is lost: nobody may borrow it again.
  void note_lost() noexcept { lost_ = true; }
  bool is_lost() const noexcept { return lost_; }
  // Asks the driver, as far as it knows without asking its server.
  bool is_alive() const noexcept;
  // When it was given back.
  std::chrono::steady_clock::time_point idle_since{};

 private:
  void read_traits();
  std::string information(unsigned short kind) const;
  void end(short how);
  void set_autocommit(bool on);

  Canceller& canceller_;
  const std::string connection_string_;
  void* handle_ = nullptr;
  Dialect dialect_ = Dialect::Other;
  std::string engine_name_;
  std::string quote_ = "\"";
  bool one_at_a_time_ = false;
  bool lost_ = false;
};

}  // namespace rk::odbc

#endif  // RK_ADAPTERS_ODBC_LINK_H_
