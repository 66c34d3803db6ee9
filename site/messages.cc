#include "site/messages.h"

#include <array>
#include <string>
#include <string_view>

#include "value/conversions.h"

namespace rk::site {

namespace {

constexpr std::array<std::string_view, 9> kRefusal{
    "<br><br><br><br><br><table cellpadding=0 cellspacing=0 border='1' align='center' "
    "style='border-collapse:collapse; font-size:12px; width:400px'>",
    "   <tr >",
    "       <td width='100%' height='25' >",
    "       <p align='center'><font color='#FF0000'>系统信息提示</font></td>",
    "   </tr>",
    "   <tr>",
    "       <td width='100%' height='25' ><p align='center'>数据来源错误</td>",
    "   </tr>",
    "</table>",
};

// Units before the host in "http://host/".
constexpr std::size_t kSchemeLength = 7;

Text server_variable(const PageContext& page, std::string_view name) {
  return joined_text(page.request().server_variable(name));
}

}  // namespace

void MessBox(const PageContext& page, const Value& errorcode, const Value& locpage,
             const Value& beend) {
  const Text address = joined_text(locpage);
  // QUIRK: nothing is escaped, so that a "'" or a line's end in a message breaks the script.
  std::string script = "<script>alert('";
  append_text(script, errorcode);
  if (address.view() == "local") {
    script.append("')</script>");
  } else if (!address.empty()) {
    script.append("');location.href='").append(address.view()).append("'</script>");
  } else {
    script.append("');history.back();</script>");
  }
  page.response().write(script);
  if (joined_text(beend).view() == "1") page.response().end();
}

void ShowMsg(const PageContext& page, const Value& MsgStr) {
  page.response().write(joined_text(MsgStr).view());
  page.response().end();
}

void checkpost(const PageContext& page) {
  const Text referer = server_variable(page, "HTTP_REFERER");
  const Text server = server_variable(page, "SERVER_NAME");
  // QUIRK: a place is compared, not an address: a referer of the https scheme is refused, and a
  // host that merely begins with the server's name is not.
  if (referer.mid(kSchemeLength, server.length()) == server) return;
  for (const std::string_view line : kRefusal) page.response().write(line);
  page.response().end();
}

}  // namespace rk::site
