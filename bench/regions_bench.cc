// The drop-down of a province with 400 cities beside a hand-written loop over SQLite that makes the
// same bytes.
#include <memory>
#include <string>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "site/regions.h"

namespace rk::bench {
namespace {

// A province of 400 cities in a table of 31 provinces with 20 each. Codes have room for 99 cities
// of a district; here they stand under letters too.
BenchSite& regions_site() {
  static BenchSite site(
      "With Recursive n(i) As (Select 1 Union All Select i + 1 From n Where i < 400) Insert Into "
      "Rk_CT (PostCode, Name, PinYin, simple) Select '44' || Char(97 + i / 90) || (i % 90 + 10) || "
      "'00', '城市' || i, 'City' || i, 'CS' From n;"
      "With Recursive n(i) As (Select 0 Union All Select i + 1 From n Where i < 619) Insert Into "
      "Rk_CT (PostCode, Name, PinYin, simple) Select (i / 20 + 50) || (i % 20 + 10) || '00', "
      "'城市' || i, 'City' || i, 'CS' From n;");
  return site;
}

class Floor {
 public:
  explicit Floor(sqlite3* db)
      : page_(db),
        cities_(db,
                "Select PostCode,Name From Rk_CT Where PostCode Like '44%00' And "
                "PostCode<>'440000'") {}

  std::string show() {
    page_.begin();
    std::string out;
    out.reserve(4096);
    while (cities_.step()) {
      out.append("<option value=\"").append(cities_.text(0)).append("\"");
      if (cities_.text(0) == "44b3300") out += " selected";
      out.append(">").append(cities_.text(1)).append("</option>");
    }
    cities_.reset();
    page_.commit();
    return out;
  }

 private:
  FloorPage page_;
  Statement cities_;
};

const bool kAdded = [] {
  add_measure(
      "cities_400",
      [] {
        return site::GetCTSelect(regions_site().new_page(), Value::text("44b3300"),
                                 Value::text("ct"), Value::text("44"));
      },
      [] { return Floor(regions_site().floor()); });
  return true;
}();

}  // namespace
}  // namespace rk::bench
