#include "app/schema.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

namespace rk::app {
namespace {

// An empty storefront database in memory.
class Shop {
 public:
  Shop() {
    sqlite3* handle = nullptr;
    EXPECT_EQ(sqlite3_open(":memory:", &handle), SQLITE_OK);
    database_.reset(handle);
    run(schema_ddl(SchemaEngine::Sqlite));
  }

  void run(const std::string& sql) {
    char* message = nullptr;
    sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, &message);
    EXPECT_EQ(message, nullptr) << message << " in " << sql;
    sqlite3_free(message);
  }

  bool refuses(const std::string& sql) {
    return sqlite3_exec(database_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK;
  }

  // The values of every row, NULL as "NULL", joined by "," within a row.
  std::vector<std::string> rows(const std::string& sql) {
    std::vector<std::string> found;
    EXPECT_EQ(sqlite3_exec(database_.get(), sql.c_str(), &Shop::take_row, &found, nullptr),
              SQLITE_OK)
        << sql << ": " << sqlite3_errmsg(database_.get());
    return found;
  }

 private:
  static int take_row(void* found, int count, char** values, char**) {
    std::string row;
    for (int i = 0; i < count; ++i) {
      row += i == 0 ? "" : ",";
      row += values[i] == nullptr ? "NULL" : values[i];
    }
    static_cast<std::vector<std::string>*>(found)->push_back(row);
    return 0;
  }

  struct Closer {
    void operator()(sqlite3* handle) const { sqlite3_close(handle); }
  };
  std::unique_ptr<sqlite3, Closer> database_;
};

struct Wanted {
  const char* table;
  std::vector<std::string> columns;  // name and declared type
};

// What the operations name, written down apart from the table of constants.
const std::vector<Wanted>& wanted() {
  static const std::vector<Wanted> tables = {
      {"Rk_Template", {"Id INTEGER", "templatePath TEXT", "UseThis INTEGER"}},
      {"System", {"SiteDomain TEXT", "succlass TEXT"}},
      {"Rk_AgentSet", {"AgentUser TEXT", "AgentDomain TEXT", "template INTEGER", "succlass TEXT"}},
      {"Rk_CT", {"PostCode TEXT", "Name TEXT", "PinYin TEXT", "simple TEXT"}},
      {"Rk_HostList",
       {"Id INTEGER", "HostName TEXT", "HostSpace TEXT", "Scriptmaps TEXT",
        "MaxConnections INTEGER", "MaxBandwidth INTEGER", "Price CURRENCY", "MonPrice CURRENCY",
        "freeMail INTEGER", "freeMsSql INTEGER", "freeMySql INTEGER", "ProClass INTEGER",
        "AgentS INTEGER", "HostNo TEXT", "HostInfo TEXT", "vPathNo INTEGER", "AppModeName TEXT",
        "TestDay INTEGER", "canupdate BOOLEAN"}},
      {"Rk_SqlList",
       {"Id INTEGER", "DbName TEXT", "db_MaxSize INTEGER", "lg_MaxSize INTEGER", "Price CURRENCY",
        "freeSql INTEGER", "ProClass INTEGER", "AgentS INTEGER"}},
      {"Rk_mySqlList",
       {"Id INTEGER", "DbName TEXT", "db_MaxSize INTEGER", "Price CURRENCY", "freesql INTEGER",
        "ProClass INTEGER", "AgentS INTEGER"}},
      {"Rk_MailList",
       {"Id INTEGER", "MailName TEXT", "Size INTEGER", "Num INTEGER", "Price CURRENCY",
        "freemail INTEGER", "ProClass INTEGER", "AgentS INTEGER"}},
      {"Rk_DomainList",
       {"Id INTEGER", "Domain TEXT", "Type TEXT", "DefaultCheck BOOLEAN", "cnDomain INTEGER",
        "Money CURRENCY", "UpdateMoney CURRENCY", "AgentS INTEGER", "IdKey INTEGER"}},
      {"Rk_ProClass", {"Id INTEGER", "ClassName TEXT", "ClassType TEXT", "AgentUser TEXT"}},
      {"Rk_AppPoolMode", {"AppPoolMoldName TEXT", "CPULimit INTEGER"}},
      {"Rk_AgentPriceSet",
       {"Id INTEGER", "AgentUser TEXT", "MastId INTEGER", "PriceType TEXT", "AgentSetName TEXT",
        "Price CURRENCY", "MonPrice CURRENCY", "UpdatePrice CURRENCY", "ProClass INTEGER"}},
      {"Rk_ShopItem",
       {"Id INTEGER", "ItemName TEXT", "Link TEXT", "ParentID INTEGER", "Depth INTEGER",
        "ChildStr TEXT", "ServDay BOOLEAN", "Info TEXT", "ShowIndex BOOLEAN", "sysType TEXT",
        "AgentUser TEXT"}},
      {"Rk_ShopList",
       {"Id INTEGER", "ShopName TEXT", "ItemId INTEGER", "Price CURRENCY", "MonPrice CURRENCY",
        "ThMonPrice CURRENCY", "HfyPrice CURRENCY", "DanWei TEXT", "shInfo TEXT", "Info TEXT",
        "PicUrl TEXT", "AgentUser TEXT"}},
      {"Pay", {"Id INTEGER", "AgentUser TEXT", "Paytype TEXT", "PayIco TEXT", "PayInfo TEXT"}},
      {"MoneyLog",
       {"user TEXT", "type TEXT", "money CURRENCY", "buymoney CURRENCY", "logmoney CURRENCY",
        "info TEXT", "now DATETIME"}},
      {"Rk_news",
       {"Id INTEGER", "Type TEXT", "Title TEXT", "Time DATETIME", "AgentUser TEXT",
        "EveryOne INTEGER"}},
      {"Rk_Success",
       {"Id INTEGER", "SiteName TEXT", "SiteUrl TEXT", "Info TEXT", "PicUrl TEXT", "succlass TEXT",
        "AgentUser TEXT"}},
      {"Rk_DownLoad",
       {"Id INTEGER", "DownName TEXT", "DownICO TEXT", "DownUrl TEXT", "AgentUser TEXT"}},
      {"Rk_Links",
       {"Id INTEGER", "linkName TEXT", "linkUrl TEXT", "linkType BOOLEAN", "linkPic TEXT",
        "FtpUser TEXT", "BePass INTEGER", "AgentUser TEXT"}},
      {"Rk_NCompany", {"Id INTEGER", "City TEXT", "Tel TEXT"}},
      {"Rk_Ads", {"picurl TEXT", "link TEXT", "adinfo TEXT", "AgentUser TEXT"}}};
  return tables;
}

TEST(Schema, HoldsEveryColumnThatAnOperationNamesUnderItsType) {
  Shop shop;
  for (const Wanted& table : wanted()) {
    for (const std::string& column : table.columns) {
      const std::string name = column.substr(0, column.find(' '));
      const std::string type = column.substr(column.find(' ') + 1);
      EXPECT_EQ(shop.rows("Select type From pragma_table_info('" + std::string(table.table) +
                          "') Where name='" + name + "' Collate NOCASE"),
                std::vector<std::string>{type})
          << table.table << "." << name;
    }
  }
  EXPECT_EQ(schema_tables().size(), wanted().size());
}

TEST(Schema, TakesNullInEveryColumnButTheKey) {
  Shop shop;
  for (const SchemaTable& table : schema_tables()) {
    for (const SchemaColumn& column : table.columns) {
      if (column.kind == ColumnKind::Key) continue;
      const std::string name = "[" + std::string(column.name) + "]";
      const std::string into = std::string(table.name) + "(" + name + ")";
      shop.run("Insert Into " + into + " Values(NULL)");
      EXPECT_EQ(shop.rows("Select " + name + " From " + std::string(table.name) +
                          " Order By rowid Desc Limit 1"),
                std::vector<std::string>{"NULL"})
          << into;
    }
  }
}

TEST(Schema, FlagsThatNobodySetAreOff) {
  Shop shop;
  shop.run("Insert Into Rk_HostList(HostName) Values('A')");
  EXPECT_EQ(shop.rows("Select AgentS,freeMail,freeMsSql,freeMySql,ProClass,canupdate,Price From "
                      "Rk_HostList"),
            std::vector<std::string>{"0,0,0,0,0,0,NULL"});
}

TEST(Schema, PricesAreReadAsTheyWereWritten) {
  Shop shop;
  shop.run("Insert Into Rk_HostList(Price,MonPrice) Values(100,99.5)");
  EXPECT_EQ(shop.rows("Select Price,MonPrice From Rk_HostList"),
            std::vector<std::string>{"100,99.5"});
}

TEST(Schema, TextsCompareWithoutLetterCase) {
  Shop shop;
  shop.run("Insert Into Rk_AgentSet(AgentUser) Values('Blue')");
  EXPECT_EQ(shop.rows("Select AgentUser From Rk_AgentSet Where AgentUser='bLUE'"),
            std::vector<std::string>{"Blue"});
}

TEST(Schema, AnAgentsUserNameIsUnique) {
  Shop shop;
  shop.run("Insert Into Rk_AgentSet(AgentUser) Values('blue')");
  EXPECT_TRUE(shop.refuses("Insert Into Rk_AgentSet(AgentUser) Values('BLUE')"));
}

TEST(Schema, AKeyIsNeverGivenTwice) {
  Shop shop;
  shop.run("Insert Into Rk_News(Title) Values('one'),('two')");
  shop.run("Delete From Rk_News Where Id=2");
  shop.run("Insert Into Rk_News(Title) Values('three')");
  EXPECT_EQ(shop.rows("Select Id,Title From Rk_News"),
            (std::vector<std::string>{"1,one", "3,three"}));
}

TEST(Schema, PlansByFallingPriceNeedNoSortAndTiesComeAsStored) {
  Shop shop;
  shop.run("Insert Into Rk_HostList(Price) Values(10),(30),(10),(NULL),(30)");
  const std::string sql = "Select Id From Rk_HostList Order By Price Desc, rowid";
  EXPECT_EQ(shop.rows(sql), (std::vector<std::string>{"2", "5", "1", "3", "4"}));
  for (const std::string& step : shop.rows("Explain Query Plan " + sql)) {
    EXPECT_EQ(step.find("TEMP B-TREE"), std::string::npos) << step;
  }
}

TEST(Schema, RowsFoundByAnIndexComeAsStored) {
  Shop shop;
  shop.run(
      "Insert Into Rk_AgentPriceSet(AgentUser,MastId,PriceType,ProClass) Values"
      "('b',2,'Host',7),('a',2,'Host',7),('b',1,'Host',7),('b',2,'host',7)");
  EXPECT_EQ(shop.rows("Select Id From Rk_AgentPriceSet Where AgentUser='b' And MastId=2 And "
                      "PriceType='Host'"),
            (std::vector<std::string>{"1", "4"}));
}

TEST(Schema, KnowsItsEnginesByName) {
  EXPECT_EQ(schema_engine("sqlite"), SchemaEngine::Sqlite);
  EXPECT_EQ(schema_engine("postgresql"), SchemaEngine::PostgreSql);
  EXPECT_EQ(schema_engine("mariadb"), SchemaEngine::MariaDb);
  EXPECT_EQ(schema_engine("sqlserver"), SchemaEngine::SqlServer);
  EXPECT_EQ(schema_engine("oracle"), std::nullopt);
  EXPECT_EQ(schema_engine(""), std::nullopt);
}

TEST(Schema, WritesNamesInSmallLettersWhereTheEngineTellsThemApart) {
  const std::string postgresql = schema_ddl(SchemaEngine::PostgreSql);
  EXPECT_NE(postgresql.find("CREATE TABLE \"rk_hostlist\" (\n  \"id\" integer GENERATED BY "
                            "DEFAULT AS IDENTITY PRIMARY KEY,\n  \"hostname\" citext,"),
            std::string::npos);
  const std::string mariadb = schema_ddl(SchemaEngine::MariaDb);
  EXPECT_NE(mariadb.find("CREATE TABLE `rk_ads` (\n  `Id` INT AUTO_INCREMENT PRIMARY KEY"),
            std::string::npos);
  EXPECT_NE(mariadb.find("CREATE INDEX `hostlist_price` ON `rk_hostlist` (`Price` Desc);"),
            std::string::npos);
}

TEST(Schema, EndsABatchBehindEachStatementForSqlServersClient) {
  const std::string ddl = schema_ddl(SchemaEngine::SqlServer);
  std::size_t statements = 0;
  for (std::size_t at = ddl.find(";\nGO\n"); at != std::string::npos;
       at = ddl.find(";\nGO\n", at + 1)) {
    ++statements;
  }
  EXPECT_EQ(statements, schema_tables().size() + schema_indexes().size());
}

}  // namespace
}  // namespace rk::app
