#include "bench/bench_site.h"

#include <benchmark/benchmark.h>

#include <charconv>
#include <stdexcept>
#include <utility>

#include "adapters/posix/kept_memory.h"
#include "app/schema.h"

namespace rk::bench {

namespace {

// As the program does; floors gain by it too.
const bool kKept = [] {
  posix::keep_freed_memory();
  return true;
}();

void run(sqlite3* db, const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    throw std::runtime_error(message);
  }
}

}  // namespace

Statement::Statement(sqlite3* db, std::string_view sql) {
  if (sqlite3_prepare_v2(db, sql.data(), static_cast<int>(sql.size()), &statement_, nullptr) !=
      SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(db));
  }
}

std::string_view Statement::text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (bytes == nullptr) return {};
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

FloorPage::FloorPage(sqlite3* db)
    : begin_(db, "Begin"),
      commit_(db, "Commit"),
      folder_(db, "Select templatePath From Rk_Template Where UseThis=1"),
      domain_(db, "Select SiteDomain From SysTem Limit 1") {}

void FloorPage::find_folder() {
  folder_.step();
  const std::string folder = "/Template/" + std::string(folder_.text(0)) + "/";
  benchmark::DoNotOptimize(folder.data());
  folder_.reset();
  run(domain_);
}

void FloorPage::run(Statement& statement) {
  statement.step();
  statement.reset();
}

void append_number(std::string& out, double number) {
  char digits[32];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

BenchSite::BenchSite(const std::string& data, const std::filesystem::path& parent)
    : folder_(parent) {
  const std::string file = folder_.path() + "/shop.db";
  if (sqlite3_open(file.c_str(), &floor_) != SQLITE_OK) throw std::runtime_error("no database");
  run(floor_, app::schema_ddl(app::SchemaEngine::Sqlite));
  run(floor_,
      "Begin;"
      "Insert Into Rk_Template (Id, templatePath, UseThis) Values (1, 'bench', 1);"
      "Insert Into SysTem (SiteDomain) Values ('');"
      "Insert Into Rk_AgentSet (AgentUser, AgentDomain, template) "
      "Values ('blue', 'blue.localhost', 1);" +
          data + "Commit;");
  engine_ = std::make_unique<sqlite::Engine>(
      sqlite::EngineSettings{.site_folder = folder_.path(), .data_folders = {}}, folder_, clock_);
  context_ = make_ref<tests::SqliteContext>(*engine_);
  context_->fake_application->values["rk_connstr"] = Value::text("Data Source=shop.db");
  context_->fake_request->server_variables["http_host"] = "localhost:8080";
  page_.start(*context_);
}

BenchSite::~BenchSite() {
  sqlite3_close(floor_);
}

void BenchSite::put_template(std::string_view file, std::string text) {
  context_->sqlite_server->memory_files().put(std::string("/Template/bench/").append(file),
                                              std::move(text));
}

void BenchSite::put_query(const std::string& name, std::string text) {
  context_->fake_request->queries[name] = std::move(text);
}

void BenchSite::put_server_variable(const std::string& name, std::string text) {
  context_->fake_request->server_variables[name] = std::move(text);
}

const site::PageContext& BenchSite::new_page() {
  context_->sqlite_server->next_page();
  return page_;
}

std::string hosting_plans(int n) {
  const std::string count = std::to_string(n);
  return "With Recursive plan(n) As (Select 1 Union All Select n + 1 From plan Where n < " + count +
         ") Insert Into Rk_HostList (Id, HostName, HostSpace, Scriptmaps, MaxConnections, "
         "MaxBandwidth, Price, MonPrice, freeMail, freeMsSql, freeMySql, ProClass, AgentS) "
         "Select n, '标准型主机 ' || n, (n % 20 + 1) || ' GB', 'ASP / ASP.NET / PHP', "
         "Case When n % 10 = 0 Then 9999 Else n % 10 * 50 End, 1024, n % 500 + 99.5, n % 4 * 9.5, "
         "0, n % 7 = 0, n % 3 = 0, n % 5 + 1, n % 3 > 0 From plan;"
         "Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, "
         "MonPrice, ProClass) Select 'blue', Id, 'Host', '蓝湾 ' || Id, Price + 10, MonPrice, 11 "
         "From Rk_HostList Where AgentS = 1 And Id % 2 = 0;";
}

std::string whole_catalogue(int n) {
  const std::string rows =
      "With Recursive row(n) As (Select 1 Union All Select n + 1 From row Where n < " +
      std::to_string(n) + ") ";
  std::string sql =
      rows +
      "Insert Into Rk_HostList (Id, HostName, HostSpace, Scriptmaps, MaxConnections, MaxBandwidth, "
      "Price, MonPrice, freeMail, freeMsSql, freeMySql, ProClass, AgentS, HostNo, HostInfo, "
      "vPathNo, AppModeName, TestDay, canupdate) "
      "Select n, '标准型主机 ' || n, (n % 20 + 1) || ' GB', 'ASP / ASP.NET / PHP', 300, 9999, "
      "n % 500 + 99.5, n % 4 * 9.5 + 1, n, n, n, n % 5 + 1, 1, 'H-' || n, "
      "'适合公司展示站和小型论坛。' || char(13, 10) || '每日备份，随时升级。', 3, '标准池', 7, 1 "
      "From row;";
  sql +=
      "Insert Into Rk_AppPoolMode (AppPoolMoldName, CPULimit) Values "
      "('经济池', 10), ('标准池', 20), ('商务池', 40), ('企业池', 80);";
  sql += rows +
         "Insert Into Rk_SqlList (Id, DbName, db_MaxSize, lg_MaxSize, Price, ProClass, AgentS) "
         "Select n, 'SQL 数据库 ' || n, n * 10, n * 5, n % 500 + 9.5, n % 5 + 1, 1 From row;";
  sql += rows +
         "Insert Into Rk_MySqlList (Id, DbName, db_MaxSize, Price, ProClass, AgentS) "
         "Select n, 'MySQL 数据库 ' || n, n * 10, n % 500 + 9.5, n % 5 + 1, 1 From row;";
  sql += rows +
         "Insert Into Rk_MailList (Id, MailName, Size, Num, Price, ProClass, AgentS) "
         "Select n, '企业邮局 ' || n, n * 100, 5, n % 500 + 9.5, n % 5 + 1, 1 From row;";
  sql += rows +
         "Insert Into Rk_DomainList (Id, Domain, Type, DefaultCheck, cndomain, Money, UpdateMoney, "
         "AgentS, IdKey) Select n, '.d' || n, '.d' || n || '.cn', n % 5 = 0, 0, n % 90 + 9.5, "
         "n % 90 + 19.5, 1, n From row;";
  sql += rows +
         "Insert Into Rk_ProClass (Id, ClassName, ClassType, AgentUser) "
         "Select n * 2, '类别 ' || n, 'host', '' From row Union All "
         "Select n * 2 + 1, '类别 ' || n, 'host', 'blue' From row;";
  for (const char* type : {"Host", "Sql", "MySql", "Mail", "Domain"}) {
    sql += rows +
           "Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, "
           "MonPrice, UpdatePrice, ProClass) Select 'blue', n, '" +
           type +
           "', '蓝湾 ' || n, n % 500 + 19.5, 12, n % 90 + 29.5, 11 From row "
           "Where n % 10 > 0;";
  }
  return sql;
}

}  // namespace rk::bench
