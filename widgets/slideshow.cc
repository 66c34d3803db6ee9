#include "widgets/slideshow.h"

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/database.h"
#include "site/agent_filter.h"
#include "site/storefront.h"
#include "value/comparison.h"
#include "value/script_error.h"
#include "widgets/html.h"

namespace rk::widgets {

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// The columns of a picture, found once a show.
struct Columns {
  explicit Columns(const platform::Recordset& rows)
      : picture(rows.ordinal("picurl")),
        link(rows.ordinal("link")),
        caption(rows.ordinal("adinfo")) {}
  std::size_t picture;
  std::size_t link;
  std::size_t caption;
};

// --- the player ---------------------------------------------------------------------------------

constexpr std::string_view kImageFunctions[] = {
    R"(<script language="JavaScript">)",
    "<!--",
    "function MM_swapImgRestore() { //v3.0",
    "  var i,x,a=document.MM_sr; for(i=0;a&&i<a.length&&(x=a[i])&&x.oSrc;i++) x.src=x.oSrc;",
    "}",
    "",
    "function MM_preloadImages() { //v3.0",
    "  var d=document; if(d.images){ if(!d.MM_p) d.MM_p=new Array();",
    "    var i,j=d.MM_p.length,a=MM_preloadImages.arguments; for(i=0; i<a.length; i++)",
    R"(    if (a[i].indexOf("#")!=0){ d.MM_p[j]=new Image; d.MM_p[j++].src=a[i];}})",
    "}",
    "",
    "function MM_findObj(n, d) { //v4.0",
    R"(  var p,i,x;  if(!d) d=document; if((p=n.indexOf("?"))>0&&blank.frames.length) {)",
    "    d=blank.frames[n.substring(p+1)].document; n=n.substring(0,p);}",
    "  if(!(x=d[n])&&d.all) x=d.all[n]; for (i=0;!x&&i<d.forms.length;i++) x=d.forms[i][n];",
    "  for(i=0;!x&&d.layers&&i<d.layers.length;i++) x=MM_findObj(n,d.layers[i].document);",
    "  if(!x && document.getElementById) x=document.getElementById(n); return x;",
    "}",
    "",
    "function MM_swapImage() { //v3.0",
    R"(  var i,j=0,x,a=MM_swapImage.arguments; document.MM_sr=new Array; for(i=0;i<(a.length-2);i+=3))",
    R"(   if ((x=MM_findObj(a[i]))!=null){document.MM_sr[j++]=x; if(!x.oSrc) x.oSrc=x.src; x.src=a[i+2];})",
    "}",
    "//-->",
    "</script>    ",
    R"(<script language="" type="text/javascript">)",
    "<!--",
};

constexpr std::string_view kPlayerParameters[] = {
    R"( document.write('<param name="allowScriptAccess" value="sameDomain"><param name="movie" value="/Images/pixviewer.swf"><param name="quality" value="high"><param name="bgcolor" value="#AFDBFE">');)",
    R"( document.write('<param name="menu" value="false"><param name=wmode value="opaque">');)",
    R"( document.write('<param name="FlashVars" value="pics='+pics+'&links='+links+'&texts='+texts+'&borderwidth='+focus_width+'&borderheight='+focus_height+'&textheight='+text_height+'">');)",
};

constexpr std::string_view kPlayerEnd[] = {
    " document.write('</object>');",
    " ",
    " //-->",
    "</script>",
};

// Texts of the rows, to be listed from the last one to the first.
// OPTIMIZATION: kept in the order of the rows and turned round at the end; putting each in front of
// the list costs the square of its length. The texts are the same.
class BackwardList {
 public:
  void add(platform::Recordset& rows, std::size_t column) {
    rows.append_field_text(column, texts_);
    ends_.push_back(texts_.size());
  }
  // "|" between two.
  std::string text() const {
    std::string list;
    list.reserve(texts_.size() + ends_.size());
    for (std::size_t row = ends_.size(); row-- > 0;) {
      const std::size_t begin = row == 0 ? 0 : ends_[row - 1];
      list.append(texts_, begin, ends_[row] - begin);
      if (row > 0) list.push_back('|');
    }
    return list;
  }
  bool empty() const { return ends_.empty(); }

 private:
  std::string texts_;
  std::vector<std::size_t> ends_;
};

struct PlayerLists {
  BackwardList pics;
  BackwardList links;
  BackwardList texts;
};

PlayerLists player_lists(platform::Recordset& rows) {
  PlayerLists lists;
  if (rows.eof()) return lists;
  const Columns columns(rows);
  for (; !rows.eof(); rows.move_next()) {
    lists.pics.add(rows, columns.picture);
    lists.links.add(rows, columns.link);
    lists.texts.add(rows, columns.caption);
  }
  return lists;
}

std::string player_page(const PlayerLists& lists, const PlayerAddresses& player,
                        const SlideshowParameters& parameters) {
  // The "|" behind each list's last text is cut off, and an empty list has none to cut.
  if (lists.pics.empty()) raise(errors::kInvalidCall);
  Html html;
  html << kImageFunctions;
  html << " var focus_width=" << parameters.FlashWidth << kLineEnd;
  html << " var focus_height=" << parameters.FlashHeight << kLineEnd;
  html << " var text_height=" << parameters.textheight << kLineEnd;
  html << " var swf_height = focus_height+text_height" << kLineEnd << " " << kLineEnd;
  html << " var pics='" << lists.pics.text() << "'" << kLineEnd;
  html << " var links='" << lists.links.text() << "'" << kLineEnd;
  html << " var texts='" << lists.texts.text() << "'   " << kLineEnd;
  html
      << R"( document.write('<object ID="focus_flash" classid="clsid:d27cdb6e-ae6d-11cf-96b8-444553540000" codebase=")"
      << player.download
      << R"(#version=6,0,0,0" width="'+ focus_width +'" height="'+ swf_height +'">');)" << kLineEnd;
  html << kPlayerParameters;
  html
      << R"( document.write('<embed ID="focus_flash" src="/Images/pixviewer.swf" wmode="opaque" FlashVars="pics='+pics+'&links='+links+'&texts='+texts+'&borderwidth='+focus_width+'&borderheight='+focus_height+'&textheight='+text_height+'" menu="false" bgcolor="#5A9FB5" quality="high" width="'+ focus_width +'" height="'+ swf_height +'" allowScriptAccess="sameDomain" type="application/x-shockwave-flash" pluginspage=")"
      << player.page << R"(" />');     )" << kLineEnd;
  html << kPlayerEnd;
  return std::move(html).text();
}

// --- the script ---------------------------------------------------------------------------------

constexpr std::string_view kSmallPictureStyles[] = {
    R"(.picshow_change {position: absolute; text-align: left; bottom: 0px; height: 20px; right: 0px;})",
    ".picshow_change img {width:20px; height: 15px}",
    R"(.picshow_change a {border: 1px solid; display: block; float: left; margin-right: 5px;  -display: inline})",
    "a.axx {border-color: #555}",
    "a.axx:hover {border-color: #000}",
    "a.axx img {filter: alpha(opacity=40); opacity: 0.4; -moz-opacity: 0.4}",
    "a.axx:hover img {filter: alpha(opacity=100); opacity: 1.0; -moz-opacity: 1.0}",
    "a.bxx {border-color: #000}",
    "a.bxx:hover {border-color: #000}",
    "</style>",
};

constexpr std::string_view kChanger[] = {
    " var nn = 1;",
    " var key = 0;",
    " function change_img() {",
    "     if (key == 0) {",
    "         key = 1;",
    "     } else if (document.all) {",
    R"(         document.getElementById("pic").filters[0].Apply();)",
    R"(         document.getElementById("pic").filters[0].Play(duration = 2);)",
    "     }",
    R"(     eval('document.getElementById("pic").src=img' + nn + '.src');)",
    R"(     eval('document.getElementById("url").href=url' + nn + '.src');)",
    R"(     eval('document.getElementById("pic").alt=alt' + nn + '.alt');)",
    "     if (nn == 1) {",
    R"(         document.getElementById("url").target = "_blank";)",
    R"(         document.getElementById("url").style.cursor = "pointer";)",
    "     } else {",
    R"(         document.getElementById("url").target = "_blank")",
    R"(         document.getElementById("url").style.cursor = "pointer")",
    "     }",
    "",
    "     for ( var i = 1; i <= counts; i++) {",
    R"(         document.getElementById("xxjdjj" + i).className = 'axx';)",
    "     }",
    R"(     document.getElementById("xxjdjj" + nn).className = 'bxx';)",
    "     nn++;",
    "     if (nn > counts) {",
    "         nn = 1;",
    "     }",
    "     tt = setTimeout('change_img()', 5000);",
    " }",
    " function changeimg(n) {",
    "     nn = n;",
    "     window.clearInterval(tt);",
    "     change_img();",
    " }",
    " function ImageShow() {",
    R"(     document.write('<div class="picshow_main">');)",
};

constexpr std::string_view kWriterEnd[] = {
    R"(     document.write('<div class="picshow_change">');)",
    "     for ( var i = 0; i < counts; i++) {",
    R"(         document.write('<a href="javascript:changeimg(' + (i + 1))",
    R"(                 + ');" id="xxjdjj' + (i + 1))",
    R"(                 + '" class="axx" target="_self"><img border="0" src="' + smallImg[i])",
    R"(                 + '"></a>');)",
    "     }",
    "     document.write('</div></div>');",
    "     change_img();",
    " }",
    " //图片滚动展示 End",
    "</SCRIPT>",
    "<SCRIPT language=javascript type=text/javascript>",
    " ImageShow();",
    "</SCRIPT>",
    "",
};

// What the script is told of the pictures, by their numbers from 1. A quote in a text of a row ends
// the script's text there.
struct ScriptLists {
  std::string big;
  std::string small;
  std::string links;
  std::string captions;
  std::int64_t count = 0;
};

void add_picture(ScriptLists& lists, platform::Recordset& rows, const Columns& columns) {
  const std::string n = std::to_string(++lists.count);
  lists.big.append("   img").append(n).append(" = new Image();\r\n");
  lists.big.append("   img").append(n).append(".src = '");
  rows.append_field_text(columns.picture, lists.big);
  lists.big.append("';\r\n");
  // QUIRK: the small pictures are files of the site, whatever the row shows.
  lists.small.append(" smallImg[").append(std::to_string(lists.count - 1));
  lists.small.append("] = '/images/index_adb").append(n).append(".gif';\r\n");
  lists.links.append(" url").append(n).append(" = new Image();\r\n");
  lists.links.append(" url").append(n).append(".src = '");
  rows.append_field_text(columns.link, lists.links);
  lists.links.append("';\r\n");
  lists.captions.append("   alt").append(n).append(" = new Image();\r\n");
  lists.captions.append("   alt").append(n).append(".alt = '");
  rows.append_field_text(columns.caption, lists.captions);
  lists.captions.append("';\r\n");
}

ScriptLists script_lists(platform::Recordset& rows) {
  ScriptLists lists;
  if (rows.eof()) return lists;
  const Columns columns(rows);
  for (; !rows.eof(); rows.move_next()) add_picture(lists, rows, columns);
  return lists;
}

void add_styles(Html& html, const Value& width, const Value& height) {
  html << "<style type=\"text/css\"> " << kLineEnd;
  html << ".picshow {position:relative; background-color:#e4f2fa; width: 100%; height: 250px}"
       << kLineEnd;
  html << ".picshow_main {position: relative; width: " << width << "px; height: " << height << "px}"
       << kLineEnd;
  html << ".picshow_main .imgbig {filter: "
          "progid:dximagetransform.microsoft.wipe(gradientsize=1.0,wipestyle=4, motion=forward); "
          "width: "
       << width << "px; height: " << height << "px}" << kLineEnd;
  html << kSmallPictureStyles;
}

std::string script_page(const ScriptLists& lists, const SlideshowParameters& parameters) {
  const Value& width = parameters.FlashWidth;
  const Value& height = parameters.FlashHeight;
  Html html;
  add_styles(html, width, height);
  html << "<SCRIPT language=\"javascript\">" << kLineEnd << " //图片滚动展示 Start" << kLineEnd;
  html << " var counts = " << std::to_string(lists.count) << ";" << kLineEnd;
  html << " //大图" << kLineEnd << lists.big << " var smallImg = new Array();" << kLineEnd;
  html << " //小图" << kLineEnd << lists.small;
  html << " //链接地址" << kLineEnd << lists.links;
  html << " //alt值" << kLineEnd << lists.captions << " //" << kLineEnd;
  html << kChanger;
  html << R"(     document.write('<div><a id="url"><img width=")" << width << R"(" height=")"
       << height << R"(" border="0" id="pic" class="imgbig" /></a></div>');)" << kLineEnd;
  html << kWriterEnd;
  return std::move(html).text();
}

}  // namespace

std::string ShowFlash_Ad(const site::PageContext& page, const PlayerAddresses& player,
                         const SlideshowParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(pictures_sql(parameters.Agent_User));
  if (equals(parameters.Style, "1")) {
    const PlayerLists lists = player_lists(*rows);
    rows->close();
    db->close();
    return player_page(lists, player, parameters);
  }
  const ScriptLists lists = script_lists(*rows);
  rows->close();
  db->close();
  return script_page(lists, parameters);
}

std::string pictures_sql(const Value& agent_user) {
  Html sql;
  sql << "Select * From Rk_Ads Where [AgentUser]='";
  if (site::is_master(agent_user)) {
    sql << "' Or [AgentUser] Is Null";
  } else {
    sql << agent_user << "'";
  }
  return std::move(sql).text();
}

}  // namespace rk::widgets
