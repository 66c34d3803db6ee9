// ConnectionObject (ADODB.Connection): a page's own connection, over platform::Connection.
//
// It keeps the page's database alive, so that a connection in a session works on after its page.
#ifndef RK_PAGEHOST_COMPONENTS_CONNECTION_OBJECT_H_
#define RK_PAGEHOST_COMPONENTS_CONNECTION_OBJECT_H_

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pagehost/components/ado_services.h"
#include "pagehost/components/property_objects.h"
#include "pagehost/pages/programs.h"
#include "pagehost/pages/tabled_object.h"
#include "platform/database.h"
#include "value/script_error.h"

namespace rk::pagehost {

class RecordsetObject;

inline constexpr std::int32_t kUseClient = 3;  // of CursorLocation

class ConnectionObject final : public TabledObject<ConnectionObject>, public KeepableObject {
 public:
  explicit ConnectionObject(AdoServices services) : services_(std::move(services)) {}
  std::string_view type_name() const override { return "Connection"; }
  static std::span<const Member<ConnectionObject>> members();
  // In the application it stands for a connection of each page's own, opened as this one was.
  Ref<KeptObject> kept() const override;

  // The open connection; raises 3709 where it is closed.
  std::shared_ptr<platform::Connection> opened() const;
  void open_with(const std::string& connection_string);
  // Whether it was opened to saved record sets in place of a database: its statements are files.
  bool is_of_files() const { return of_files_; }
  // In place of a page that assigns it.
  void set_cursor_location(std::int32_t location) { cursor_location_ = location; }
  // Runs a step and keeps its failure for the Errors collection.
  Value remembering(const std::function<Value()>& step);
  const std::optional<ScriptError>& last_failure() const { return failure_; }
  void forget_failure() { failure_.reset(); }
  std::int32_t cursor_location() const { return cursor_location_; }

  // A statement as Execute runs it: a record set, closed where it gives no rows or the options want
  // none; held by the client, and static then, where the connection says so.
  Value run(platform::SqlText sql, std::int32_t options, std::int64_t& affected);

  // The record sets whose connection it is, which close with it. Each leaves before it ends.
  void add_set(RecordsetObject& set) { sets_.push_back(&set); }
  void remove_set(const RecordsetObject& set);

 private:
  Value connection_string(const Call& call);
  Value open(const Call& call);
  Value close(const Call& call);
  Value execute(const Call& call);
  Value begin_trans(const Call& call);
  Value commit_trans(const Call& call);
  Value rollback_trans(const Call& call);
  Value state(const Call& call);
  Value errors(const Call& call);
  Value open_schema(const Call& call);
  Value version(const Call& call);
  Value cursor_location(const Call& call);
  Value command_timeout(const Call& call);
  Value connection_timeout(const Call& call);
  Value mode(const Call& call);
  Value isolation_level(const Call& call);
  Value provider(const Call& call);
  Value default_database(const Call& call);
  Value attributes(const Call& call);
  Value properties(const Call& call);
  Value nothing_to_do(const Call& call);
  std::unique_ptr<platform::Recordset> rows_of(const platform::SqlText& sql,
                                               std::int64_t& affected);
  Value saved_rows(const Value& file);
  std::string whole_connection_string(const std::string& connection_string) const;
  Value number_property(const Call& call, std::int32_t& kept);
  Value text_property(const Call& call, std::string& kept);

  AdoServices services_;
  std::shared_ptr<platform::Connection> connection_;
  std::optional<ScriptError> failure_;
  std::string connection_string_;
  std::string provider_;  // as the page set it
  std::string default_database_;
  std::vector<RecordsetObject*> sets_;
  std::shared_ptr<PropertyList> properties_;  // once the page asked for them
  bool of_files_ = false;
  std::int32_t transactions_ = 0;  // levels that are open
  std::int32_t attributes_ = 0;
  std::int32_t cursor_location_ = 2;
  std::int32_t command_timeout_ = 30;
  std::int32_t connection_timeout_ = 15;
  std::int32_t mode_ = 0;
  std::int32_t isolation_level_ = 4096;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_CONNECTION_OBJECT_H_
