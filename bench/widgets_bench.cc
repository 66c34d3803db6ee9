// The strips and both forms of the slideshow over 20, 200 and 2,000 rows, beside hand-written loops
// over SQLite that make the same bytes.
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "tests/plain/slideshow.h"
#include "widgets/slideshow.h"
#include "widgets/strips.h"

namespace rk::bench {
namespace {

constexpr std::int32_t kLength = 6;  // names of more than so many units are cut

std::string rows_of(int n) {
  return "With Recursive row(n) As (Select 1 Union All Select n + 1 From row Where n < " +
         std::to_string(n) + ") ";
}

std::string widget_rows(int n) {
  return rows_of(n) +
         "Insert Into Rk_Links (linkName, linkUrl, linkType, linkPic, FtpUser, BePass, AgentUser) "
         "Select 'partner ' || n, 'http://p' || n || '.example/', n % 2, '/images/l' || n || "
         "'.gif', '', 1, '' From row;" +
         rows_of(n) +
         "Insert Into Rk_Links (linkName, linkUrl, linkType, linkPic, FtpUser, BePass, AgentUser) "
         "Select 'site ' || n, 'http://s' || n || '.example/', 0, '', 'ftp' || n, 1, '' From row;" +
         rows_of(n) +
         "Insert Into Rk_NCompany (City, Tel) Select '城市' || n, '010-' || n From row;" +
         rows_of(n) +
         "Insert Into Rk_DownLoad (DownName, DownICO, DownUrl, AgentUser) Select 'download ' || n, "
         "'/images/d.gif', '/files/' || n || '.zip', '' From row;" +
         rows_of(n) +
         "Insert Into Rk_Ads (picurl, link, adinfo, AgentUser) Select '/images/ad' || n || "
         "'.jpg', '/news/shownews.asp?id=' || n, '优惠' || n, '' From row;";
}

BenchSite& site_of(int rows) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[rows];
  if (site == nullptr) site = std::make_unique<BenchSite>(widget_rows(rows));
  return *site;
}

widgets::LinkParameters link_parameters(int rows) {
  return {Value::long_integer(200),
          Value::long_integer(31),
          Value::long_integer(90),
          Value::long_integer(rows),
          Value::long_integer(3),
          Value::long_integer(kLength),
          Value()};
}

// The name, cut where it is too long; names are ASCII here.
void append_short(std::string& out, std::string_view name) {
  out.append(name.substr(0, kLength));
  if (name.size() > kLength) out.append("...");
}

class LinksFloor {
 public:
  LinksFloor(sqlite3* db, int rows, bool hosted)
      : page_(db),
        rows_(db, std::string("Select linkName,linkUrl,linkType,linkPic From Rk_Links Where ") +
                      (hosted ? "FtpUser<>''" : "(FtpUser='' Or FtpUser Is Null)") +
                      " And (AgentUser='' Or AgentUser Is Null) And BePass=1 Order By Id Desc "
                      "Limit " +
                      std::to_string(rows)),
        hosted_(hosted) {}

  std::string show() {
    std::string out = hosted_
                          ? "<Style>#fl_CSS li{text-align:center;float:left;width:90px;}#fl_CSS "
                            "ul{margin:0px;}#fl_CSS{width:200px;}</Style><div "
                            "id=\"fl_CSS\"><ul>"
                          : "<Style>#fl_CSS1 li{text-align:center;float:left;width:90px;height:"
                            "31px;}#fl_CSS1 ul{margin:0px;}#fl_CSS1{width:200px;}#fl_CSS1 "
                            "img{margin-right:2px;}</Style><div id=\"fl_CSS1\"><ul>";
    page_.begin();
    while (rows_.step()) {
      out.append("<li><a href=\"").append(rows_.text(1)).append("\" target=\"_blank\" title=\"");
      out.append(rows_.text(0)).append("\">");
      if (rows_.number(2) != 0) {
        out.append("<img src=\"").append(rows_.text(3));
        out.append("\" border=\"0\" width=\"88\" height=\"31\">");
      } else {
        append_short(out, rows_.text(0));
      }
      out.append("</a></li>");
    }
    rows_.reset();
    page_.commit();
    out.append("</ul></div><script>new Marquee(\"").append(hosted_ ? "fl_CSS" : "fl_CSS1");
    return out.append("\",0,31,200,30,3,0,0)</script>");
  }

 private:
  FloorPage page_;
  Statement rows_;
  bool hosted_;
};

class CompaniesFloor {
 public:
  explicit CompaniesFloor(sqlite3* db)
      : page_(db), rows_(db, "Select Id,City,Tel From Rk_NCompany Order By Id Desc") {}

  std::string show() {
    std::string out =
        "<style>.NC_CSS li{margin-top:5px;margin-bottom:5px;float:left;width:120px;text-align:"
        "center;}.NC_CSS{margin:0px;}</style><div style=\"margin:auto; border-width: "
        "1px;border-style: solid;border-color: #1559AB;width:400px;padding:5px;\"><ul "
        "class=\"NC_CSS\">";
    page_.begin();
    while (rows_.step()) {
      out.append("<li><a href=\"/NComPany?Id=").append(rows_.text(0)).append("\">&#9742;");
      out.append(rows_.text(1)).append("：").append(rows_.text(2)).append("</a></li>");
    }
    rows_.reset();
    page_.commit();
    return out.append("<li><a href=\"/links/?id=2\">more</a></li></ul></div>");
  }

 private:
  FloorPage page_;
  Statement rows_;
};

class DownloadsFloor {
 public:
  DownloadsFloor(sqlite3* db, int rows)
      : page_(db),
        rows_(db,
              "Select DownName,DownICO,DownUrl From Rk_DownLoad Where AgentUser='' Or AgentUser "
              "Is Null Order By Id Desc Limit " +
                  std::to_string(rows)) {}

  std::string show() {
    std::string out =
        "<Style>.DL_CSS li{width:120px;float:left;}.DL_CSS{margin:0px;padding-left:10px;}</Style>"
        "<div><ul class=\"DL_CSS\">";
    page_.begin();
    while (rows_.step()) {
      out.append("<li><span style=\"float:left;\"><img width=\"19\" height=\"19\" src=\"");
      out.append(rows_.text(1)).append("\"></span><span style=\"float:left;\"><a title=\"");
      out.append(rows_.text(0)).append("\" href=\"").append(rows_.text(2));
      out.append("\" target=\"_blank\">");
      append_short(out, rows_.text(0));
      out.append("</a></span></li>");
    }
    rows_.reset();
    page_.commit();
    return out.append("</ul></div>");
  }

 private:
  FloorPage page_;
  Statement rows_;
};

widgets::SlideshowParameters show_parameters(bool player) {
  return {Value::text(player ? "1" : ""), Value::long_integer(500), Value::long_integer(200),
          Value::long_integer(20), Value()};
}

// Reads the rows; the frame around their lists, the same for any number of them, is made once.
class SlideshowFloor {
 public:
  SlideshowFloor(sqlite3* db, bool player)
      : page_(db),
        rows_(db, "Select picurl,link,adinfo From Rk_Ads Where AgentUser='' Or AgentUser Is Null"),
        player_(player) {
    const Value mark = Value::text("@");
    std::string frame = plain::slideshow({{mark, mark, mark}}, {}, show_parameters(player));
    const auto cut = [&](std::string_view behind) {
      const std::size_t at = frame.find(behind);
      parts_.push_back(frame.substr(0, at));
      frame.erase(0, at + behind.size());
    };
    if (player) {
      for (int list = 0; list < 3; ++list) cut("@");
    } else {
      cut("1;\r\n //大图\r\n   img1 = new Image();\r\n   img1.src = '@';\r\n");
      cut(" smallImg[0] = '/images/index_adb1.gif';\r\n");
      cut(" url1 = new Image();\r\n url1.src = '@';\r\n");
      cut("   alt1 = new Image();\r\n   alt1.alt = '@';\r\n");
    }
    parts_.push_back(frame);
  }

  std::string show() { return player_ ? player() : script(); }

 private:
  std::string player() {
    std::string lists[3];
    page_.begin();
    while (rows_.step()) {
      for (int list = 0; list < 3; ++list) {
        const std::string_view text = rows_.text(list);
        lists[list].append(text.rbegin(), text.rend()).push_back('|');
      }
    }
    rows_.reset();
    page_.commit();
    std::string out = parts_[0];
    for (std::size_t list = 0; list < 3; ++list) {
      append_turned(out, lists[list]);
      out.append(parts_[list + 1]);
    }
    return out;
  }

  // Turned round as a whole, texts that were put in backwards come out forwards, the last first.
  static void append_turned(std::string& out, std::string_view list) {
    list.remove_suffix(1);
    out.append(list.rbegin(), list.rend());
  }

  std::string script() {
    std::string big, small, links, captions;
    std::int64_t count = 0;
    page_.begin();
    while (rows_.step()) {
      const std::string n = std::to_string(++count);
      big.append("   img").append(n).append(" = new Image();\r\n   img").append(n);
      big.append(".src = '").append(rows_.text(0)).append("';\r\n");
      small.append(" smallImg[").append(std::to_string(count - 1));
      small.append("] = '/images/index_adb").append(n).append(".gif';\r\n");
      links.append(" url").append(n).append(" = new Image();\r\n url").append(n);
      links.append(".src = '").append(rows_.text(1)).append("';\r\n");
      captions.append("   alt").append(n).append(" = new Image();\r\n   alt").append(n);
      captions.append(".alt = '").append(rows_.text(2)).append("';\r\n");
    }
    rows_.reset();
    page_.commit();
    std::string out = parts_[0] + std::to_string(count) + ";\r\n //大图\r\n" + big;
    return out.append(parts_[1])
        .append(small)
        .append(parts_[2])
        .append(links)
        .append(parts_[3])
        .append(captions)
        .append(parts_[4]);
  }

  FloorPage page_;
  Statement rows_;
  bool player_;
  std::vector<std::string> parts_;
};

void add_strips(int n) {
  const std::string size = "_" + std::to_string(n);
  add_measure(
      "links" + size,
      [n] { return widgets::Show_Links(site_of(n).new_page(), link_parameters(n)); },
      [n] { return LinksFloor(site_of(n).floor(), n, false); });
  add_measure(
      "ftp_links" + size,
      [n] { return widgets::Show_FtpLinks(site_of(n).new_page(), link_parameters(n)); },
      [n] { return LinksFloor(site_of(n).floor(), n, true); });
  add_measure(
      "companies" + size,
      [n] {
        return widgets::Show_NCompany(site_of(n).new_page(), Value::long_integer(0),
                                      Value::long_integer(120), Value::long_integer(400), Value());
      },
      [n] { return CompaniesFloor(site_of(n).floor()); });
  add_measure(
      "downloads" + size,
      [n] {
        return widgets::Show_DownLoad(site_of(n).new_page(), Value::long_integer(n),
                                      Value::long_integer(120), Value::long_integer(kLength),
                                      Value());
      },
      [n] { return DownloadsFloor(site_of(n).floor(), n); });
}

void add_show(const std::string& name, int n, bool player) {
  add_measure(
      name + "_" + std::to_string(n),
      [n, player] {
        return widgets::ShowFlash_Ad(site_of(n).new_page(), {}, show_parameters(player));
      },
      [n, player] { return SlideshowFloor(site_of(n).floor(), player); });
}

const bool kAdded = [] {
  for (const int n : {20, 200, 2000}) {
    add_strips(n);
    add_show("slideshow", n, false);
    add_show("player", n, true);
  }
  return true;
}();

}  // namespace
}  // namespace rk::bench
