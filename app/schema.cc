#include "app/schema.h"

#include <array>
#include <cstddef>

namespace rk::app {
namespace {

using enum ColumnKind;

// Site and templates.
constexpr SchemaColumn kTemplate[] = {{"Id", Key}, {"templatePath", Text}, {"UseThis", Flag}};
constexpr SchemaColumn kSysTem[] = {{"Id", Key}, {"SiteDomain", Memo}, {"succlass", Memo}};
constexpr SchemaColumn kAgentSet[] = {{"Id", Key},
                                      {"AgentUser", Text},
                                      {"AgentDomain", Memo},
                                      {"template", Number},
                                      {"succlass", Memo}};
constexpr SchemaColumn kCT[] = {
    {"Id", Key}, {"PostCode", Text}, {"Name", Text}, {"PinYin", Text}, {"simple", Text}};

// The catalogue. HostSpace and HostNo are shown as they were typed ("1000M", "HK-01").
constexpr SchemaColumn kHostList[] = {{"Id", Key},
                                      {"HostName", Text},
                                      {"HostSpace", Text},
                                      {"Scriptmaps", Text},
                                      {"MaxConnections", Number},
                                      {"MaxBandwidth", Number},
                                      {"Price", Money},
                                      {"MonPrice", Money},
                                      {"freeMail", Reference},
                                      {"freeMsSql", Reference},
                                      {"freeMySql", Reference},
                                      {"ProClass", Reference},
                                      {"AgentS", Flag},
                                      {"HostNo", Text},
                                      {"HostInfo", Memo},
                                      {"vPathNo", Number},
                                      {"AppModeName", Text},
                                      {"TestDay", Number},
                                      {"canupdate", Boolean}};
constexpr SchemaColumn kSqlList[] = {
    {"Id", Key},      {"DbName", Text},  {"db_MaxSize", Number},  {"lg_MaxSize", Number},
    {"Price", Money}, {"freeSql", Flag}, {"ProClass", Reference}, {"AgentS", Flag}};
constexpr SchemaColumn kMySqlList[] = {{"Id", Key},      {"DbName", Text},  {"db_MaxSize", Number},
                                       {"Price", Money}, {"freeSql", Flag}, {"ProClass", Reference},
                                       {"AgentS", Flag}};
constexpr SchemaColumn kMailList[] = {
    {"Id", Key},      {"MailName", Text}, {"Size", Number},        {"Num", Number},
    {"Price", Money}, {"freeMail", Flag}, {"ProClass", Reference}, {"AgentS", Flag}};
constexpr SchemaColumn kDomainList[] = {
    {"Id", Key},        {"Domain", Text}, {"Type", Text},         {"DefaultCheck", Boolean},
    {"cndomain", Flag}, {"Money", Money}, {"UpdateMoney", Money}, {"AgentS", Flag},
    {"IdKey", Number}};
constexpr SchemaColumn kProClass[] = {
    {"Id", Key}, {"ClassName", Text}, {"ClassType", Text}, {"AgentUser", Text}};
constexpr SchemaColumn kAppPoolMode[] = {
    {"Id", Key}, {"AppPoolMoldName", Text}, {"CPULimit", Number}};
constexpr SchemaColumn kAgentPriceSet[] = {
    {"Id", Key},         {"AgentUser", Text},    {"MastId", Number},
    {"PriceType", Text}, {"AgentSetName", Text}, {"Price", Money},
    {"MonPrice", Money}, {"UpdatePrice", Money}, {"ProClass", Reference}};

// The shop and its payments.
constexpr SchemaColumn kShopItem[] = {{"Id", Key},
                                      {"ItemName", Text},
                                      {"Link", Memo},
                                      {"ParentID", Reference},
                                      {"Depth", Reference},
                                      {"ChildStr", Memo},
                                      {"ServDay", Boolean},
                                      {"Info", Memo},
                                      {"ShowIndex", Boolean},
                                      {"sysType", Text},
                                      {"AgentUser", Text}};
constexpr SchemaColumn kShopList[] = {
    {"Id", Key},         {"ShopName", Text},    {"ItemId", Reference}, {"Price", Money},
    {"MonPrice", Money}, {"ThMonPrice", Money}, {"HfyPrice", Money},   {"DanWei", Text},
    {"shInfo", Memo},    {"Info", Memo},        {"PicUrl", Memo},      {"AgentUser", Text}};
constexpr SchemaColumn kPay[] = {
    {"Id", Key}, {"AgentUser", Text}, {"PayType", Text}, {"PayIco", Memo}, {"PayInfo", Memo}};
constexpr SchemaColumn kMoneyLog[] = {{"Id", Key},      {"user", Text},      {"type", Text},
                                      {"money", Money}, {"buymoney", Money}, {"logmoney", Money},
                                      {"info", Memo},   {"now", Date}};

// Content, each row the master site's or an agent's.
constexpr SchemaColumn kNews[] = {{"Id", Key},    {"Type", Text},      {"Title", Text},
                                  {"Time", Date}, {"AgentUser", Text}, {"EveryOne", Flag}};
constexpr SchemaColumn kSuccess[] = {{"Id", Key},        {"SiteName", Text}, {"SiteUrl", Memo},
                                     {"Info", Memo},     {"PicUrl", Memo},   {"succlass", Text},
                                     {"AgentUser", Text}};
constexpr SchemaColumn kDownLoad[] = {
    {"Id", Key}, {"DownName", Text}, {"DownICO", Memo}, {"DownUrl", Memo}, {"AgentUser", Text}};
constexpr SchemaColumn kLinks[] = {{"Id", Key},           {"linkName", Text}, {"linkUrl", Memo},
                                   {"linkType", Boolean}, {"linkPic", Memo},  {"FtpUser", Text},
                                   {"BePass", Flag},      {"AgentUser", Text}};
constexpr SchemaColumn kNCompany[] = {{"Id", Key}, {"City", Text}, {"Tel", Text}};
constexpr SchemaColumn kAds[] = {
    {"Id", Key}, {"picurl", Memo}, {"link", Memo}, {"adinfo", Memo}, {"AgentUser", Text}};

constexpr SchemaTable kTables[] = {{"Rk_Template", kTemplate},
                                   {"SysTem", kSysTem},
                                   {"Rk_AgentSet", kAgentSet},
                                   {"Rk_CT", kCT},
                                   {"Rk_HostList", kHostList},
                                   {"Rk_SqlList", kSqlList},
                                   {"Rk_MySqlList", kMySqlList},
                                   {"Rk_MailList", kMailList},
                                   {"Rk_DomainList", kDomainList},
                                   {"Rk_ProClass", kProClass},
                                   {"Rk_AppPoolMode", kAppPoolMode},
                                   {"Rk_AgentPriceSet", kAgentPriceSet},
                                   {"Rk_ShopItem", kShopItem},
                                   {"Rk_ShopList", kShopList},
                                   {"Pay", kPay},
                                   {"MoneyLog", kMoneyLog},
                                   {"Rk_News", kNews},
                                   {"Rk_Success", kSuccess},
                                   {"Rk_DownLoad", kDownLoad},
                                   {"Rk_Links", kLinks},
                                   {"Rk_NCompany", kNCompany},
                                   {"Rk_Ads", kAds}};

// Each is met by equality or repeats the order that the query asks for, so rows that tie still come
// as they were stored: rows of one index entry lie in the order of their numbers.
constexpr SchemaIndex kIndexes[] = {
    {"AgentSet_User", "Rk_AgentSet", "AgentUser", true},
    // The price override: one look-up a plan shown on an agent's site.
    {"AgentPriceSet_Product", "Rk_AgentPriceSet", "AgentUser, MastId, PriceType", false},
    // The join of a list by class, from the class to the plans and from a plan to the class.
    {"AgentPriceSet_Class", "Rk_AgentPriceSet", "ProClass, PriceType, MastId", false},
    {"HostList_Class", "Rk_HostList", "ProClass", false},
    // Plans are listed by falling price; only the rows of the page shown are then read.
    {"HostList_Price", "Rk_HostList", "Price Desc", false},
    {"ShopList_Item", "Rk_ShopList", "ItemId", false},
    {"CT_PostCode", "Rk_CT", "PostCode", false}};

constexpr std::size_t kKinds = 9;
using Declarations = std::array<std::string_view, kKinds>;  // in the order of ColumnKind

// SQLite's declared types decide the values that pages see; texts compare without letter case.
constexpr Declarations kSqliteTypes = {"INTEGER PRIMARY KEY AUTOINCREMENT",
                                       "INTEGER",
                                       "INTEGER DEFAULT 0",
                                       "INTEGER DEFAULT 0",
                                       "BOOLEAN DEFAULT 0",
                                       "CURRENCY",
                                       "DATETIME",
                                       "TEXT COLLATE NOCASE",
                                       "TEXT COLLATE NOCASE"};
constexpr Declarations kPostgreSqlTypes = {"integer GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY",
                                           "integer",
                                           "integer DEFAULT 0",
                                           "integer DEFAULT 0",
                                           "boolean DEFAULT false",
                                           "numeric(19,4)",
                                           "timestamp(0)",
                                           "citext",
                                           "citext"};
constexpr Declarations kMariaDbTypes = {"INT AUTO_INCREMENT PRIMARY KEY",
                                        "INT",
                                        "INT DEFAULT 0",
                                        "INT DEFAULT 0",
                                        "BOOLEAN DEFAULT FALSE",
                                        "DECIMAL(19,4)",
                                        "DATETIME",
                                        "VARCHAR(255)",
                                        "LONGTEXT"};
constexpr Declarations kSqlServerTypes = {
    "int IDENTITY(1,1) PRIMARY KEY",
    "int NULL",
    "int NULL DEFAULT 0",
    "int NULL DEFAULT 0",
    "bit NULL DEFAULT 0",
    "money NULL",
    "datetime2(0) NULL",
    "nvarchar(255) COLLATE Latin1_General_100_CI_AS_KS_WS_SC NULL",
    "nvarchar(max) COLLATE Latin1_General_100_CI_AS_KS_WS_SC NULL"};

// What one engine's DDL differs in.
struct Dialect {
  std::string_view name;
  const Declarations* types;
  char quote_open;
  char quote_close;
  bool small_tables;
  bool small_columns;
  std::string_view head;       // before the first table
  std::string_view table_end;  // between the last column and ";"
  std::string_view separator;  // behind each statement
};

// In the order of SchemaEngine.
constexpr Dialect kDialects[] = {
    {"sqlite", &kSqliteTypes, '[', ']', false, false, "", "", "\n"},
    // citext compares and searches without letter case, as the queries expect of texts.
    {"postgresql", &kPostgreSqlTypes, '"', '"', true, true,
     "CREATE EXTENSION IF NOT EXISTS citext;\n", "", "\n"},
    // NOPAD: a text and the same text with blanks behind it are two, as on the other engines.
    {"mariadb", &kMariaDbTypes, '`', '`', true, false, "",
     " DEFAULT CHARACTER SET utf8mb4 COLLATE utf8mb4_unicode_520_nopad_ci", "\n"},
    {"sqlserver", &kSqlServerTypes, '[', ']', false, false, "", "", "\nGO\n"}};

const Dialect& dialect_of(SchemaEngine engine) {
  return kDialects[static_cast<std::size_t>(engine)];
}

char small_letter(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

void append_name(std::string& ddl, const Dialect& dialect, std::string_view name, bool small) {
  ddl += dialect.quote_open;
  for (char letter : name) ddl += small ? small_letter(letter) : letter;
  ddl += dialect.quote_close;
}

void append_table(std::string& ddl, const Dialect& dialect, const SchemaTable& table) {
  ddl += "CREATE TABLE ";
  append_name(ddl, dialect, table.name, dialect.small_tables);
  ddl += " (";
  std::string_view before = "\n  ";
  for (const SchemaColumn& column : table.columns) {
    ddl += before;
    append_name(ddl, dialect, column.name, dialect.small_columns);
    ddl += ' ';
    ddl += (*dialect.types)[static_cast<std::size_t>(column.kind)];
    before = ",\n  ";
  }
  ddl += ")";
  ddl += dialect.table_end;
  ddl += ";";
  ddl += dialect.separator;
}

// `columns` is a list between ", " whose entries may end in " Desc".
void append_index_columns(std::string& ddl, const Dialect& dialect, std::string_view columns) {
  while (!columns.empty()) {
    const std::size_t comma = columns.find(", ");
    const std::string_view entry = columns.substr(0, comma);
    const std::size_t blank = entry.find(' ');
    append_name(ddl, dialect, entry.substr(0, blank), dialect.small_columns);
    if (blank != std::string_view::npos) ddl += entry.substr(blank);
    if (comma == std::string_view::npos) return;
    ddl += ", ";
    columns.remove_prefix(comma + 2);
  }
}

void append_index(std::string& ddl, const Dialect& dialect, const SchemaIndex& index) {
  ddl += index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
  append_name(ddl, dialect, index.name, dialect.small_tables);
  ddl += " ON ";
  append_name(ddl, dialect, index.table, dialect.small_tables);
  ddl += " (";
  append_index_columns(ddl, dialect, index.columns);
  ddl += ");";
  ddl += dialect.separator;
}

}  // namespace

std::span<const SchemaTable> schema_tables() {
  return kTables;
}

std::span<const SchemaIndex> schema_indexes() {
  return kIndexes;
}

std::string_view column_declaration(SchemaEngine engine, ColumnKind kind) {
  return (*dialect_of(engine).types)[static_cast<std::size_t>(kind)];
}

std::optional<SchemaEngine> schema_engine(std::string_view name) {
  for (std::size_t i = 0; i < std::size(kDialects); ++i) {
    if (kDialects[i].name == name) return static_cast<SchemaEngine>(i);
  }
  return std::nullopt;
}

std::string schema_ddl(SchemaEngine engine) {
  const Dialect& dialect = dialect_of(engine);
  std::string ddl(dialect.head);
  for (const SchemaTable& table : schema_tables()) append_table(ddl, dialect, table);
  for (const SchemaIndex& index : schema_indexes()) append_index(ddl, dialect, index);
  return ddl;
}

}  // namespace rk::app
