#include "tests/plain/slideshow.h"

#include "tests/plain/repeat.h"

namespace rk::plain {

namespace {

void line(std::string& page, const std::string& text) {
  page += text + "\r\n";
}

std::string image_functions() {
  std::string page;
  for (
      const char* text : {
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
      }) {
    line(page, text);
  }
  return page;
}

std::string player_page(const std::vector<Picture>& pictures,
                        const widgets::PlayerAddresses& player,
                        const widgets::SlideshowParameters& parameters) {
  std::string pics;
  std::string links;
  std::string texts;
  for (const Picture& picture : pictures) {
    pics = plain_text(picture.picurl) + "|" + pics;
    links = plain_text(picture.link) + "|" + links;
    texts = plain_text(picture.adinfo) + "|" + texts;
  }
  pics.pop_back();
  links.pop_back();
  texts.pop_back();
  std::string page = image_functions();
  line(page, " var focus_width=" + plain_text(parameters.FlashWidth));
  line(page, " var focus_height=" + plain_text(parameters.FlashHeight));
  line(page, " var text_height=" + plain_text(parameters.textheight));
  line(page, " var swf_height = focus_height+text_height");
  line(page, " ");
  line(page, " var pics='" + pics + "'");
  line(page, " var links='" + links + "'");
  line(page, " var texts='" + texts + "'   ");
  line(
      page,
      R"( document.write('<object ID="focus_flash" classid="clsid:d27cdb6e-ae6d-11cf-96b8-444553540000" codebase=")" +
          player.download +
          R"(#version=6,0,0,0" width="'+ focus_width +'" height="'+ swf_height +'">');)");
  line(
      page,
      R"( document.write('<param name="allowScriptAccess" value="sameDomain"><param name="movie" value="/Images/pixviewer.swf"><param name="quality" value="high"><param name="bgcolor" value="#AFDBFE">');)");
  line(page,
       R"( document.write('<param name="menu" value="false"><param name=wmode value="opaque">');)");
  line(
      page,
      R"( document.write('<param name="FlashVars" value="pics='+pics+'&links='+links+'&texts='+texts+'&borderwidth='+focus_width+'&borderheight='+focus_height+'&textheight='+text_height+'">');)");
  line(
      page,
      R"( document.write('<embed ID="focus_flash" src="/Images/pixviewer.swf" wmode="opaque" FlashVars="pics='+pics+'&links='+links+'&texts='+texts+'&borderwidth='+focus_width+'&borderheight='+focus_height+'&textheight='+text_height+'" menu="false" bgcolor="#5A9FB5" quality="high" width="'+ focus_width +'" height="'+ swf_height +'" allowScriptAccess="sameDomain" type="application/x-shockwave-flash" pluginspage=")" +
          player.page + R"(" />');     )");
  line(page, " document.write('</object>');");
  line(page, " ");
  line(page, " //-->");
  line(page, "</script>");
  return page;
}

std::string styles(const std::string& width, const std::string& height) {
  std::string page;
  line(page, R"(<style type="text/css"> )");
  line(page, ".picshow {position:relative; background-color:#e4f2fa; width: 100%; height: 250px}");
  line(page,
       ".picshow_main {position: relative; width: " + width + "px; height: " + height + "px}");
  line(page,
       ".picshow_main .imgbig {filter: "
       "progid:dximagetransform.microsoft.wipe(gradientsize=1.0,wipestyle=4, motion=forward); "
       "width: " +
           width + "px; height: " + height + "px}");
  line(
      page,
      R"(.picshow_change {position: absolute; text-align: left; bottom: 0px; height: 20px; right: 0px;})");
  line(page, ".picshow_change img {width:20px; height: 15px}");
  line(
      page,
      R"(.picshow_change a {border: 1px solid; display: block; float: left; margin-right: 5px;  -display: inline})");
  line(page, "a.axx {border-color: #555}");
  line(page, "a.axx:hover {border-color: #000}");
  line(page, "a.axx img {filter: alpha(opacity=40); opacity: 0.4; -moz-opacity: 0.4}");
  line(page, "a.axx:hover img {filter: alpha(opacity=100); opacity: 1.0; -moz-opacity: 1.0}");
  line(page, "a.bxx {border-color: #000}");
  line(page, "a.bxx:hover {border-color: #000}");
  line(page, "</style>");
  return page;
}

std::string changer() {
  std::string page;
  for (const char* text : {
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
       }) {
    line(page, text);
  }
  return page;
}

std::string jump_and_writer(const std::string& width, const std::string& height) {
  std::string page;
  for (const char* text : {
           " function changeimg(n) {",
           "     nn = n;",
           "     window.clearInterval(tt);",
           "     change_img();",
           " }",
           " function ImageShow() {",
           R"(     document.write('<div class="picshow_main">');)",
       }) {
    line(page, text);
  }
  line(page, R"(     document.write('<div><a id="url"><img width=")" + width + R"(" height=")" +
                 height + R"(" border="0" id="pic" class="imgbig" /></a></div>');)");
  for (
      const char* text : {
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
      }) {
    line(page, text);
  }
  return page;
}

std::string lists(const std::vector<Picture>& pictures) {
  std::string big;
  std::string small;
  std::string links;
  std::string captions;
  int n = 0;
  for (const Picture& picture : pictures) {
    n = n + 1;
    const std::string number = std::to_string(n);
    line(big, "   img" + number + " = new Image();");
    line(big, "   img" + number + ".src = '" + plain_text(picture.picurl) + "';");
    line(small,
         " smallImg[" + std::to_string(n - 1) + "] = '/images/index_adb" + number + ".gif';");
    line(links, " url" + number + " = new Image();");
    line(links, " url" + number + ".src = '" + plain_text(picture.link) + "';");
    line(captions, "   alt" + number + " = new Image();");
    line(captions, "   alt" + number + ".alt = '" + plain_text(picture.adinfo) + "';");
  }
  std::string page;
  line(page, " var counts = " + std::to_string(n) + ";");
  line(page, " //大图");
  page += big;
  line(page, " var smallImg = new Array();");
  line(page, " //小图");
  page += small;
  line(page, " //链接地址");
  page += links;
  line(page, " //alt值");
  page += captions;
  line(page, " //");
  return page;
}

}  // namespace

std::string slideshow(const std::vector<Picture>& pictures, const widgets::PlayerAddresses& player,
                      const widgets::SlideshowParameters& parameters) {
  if (!parameters.Style.is_null() && plain_text(parameters.Style) == "1") {
    return player_page(pictures, player, parameters);
  }
  const std::string width = plain_text(parameters.FlashWidth);
  const std::string height = plain_text(parameters.FlashHeight);
  std::string page = styles(width, height);
  line(page, R"(<SCRIPT language="javascript">)");
  line(page, " //图片滚动展示 Start");
  page += lists(pictures);
  page += changer();
  page += jump_and_writer(width, height);
  return page;
}

}  // namespace rk::plain
