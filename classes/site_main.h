// SiteMain, the storefront's renderer, as pages see it: public names and order, every argument by
// reference. What an operation does stands in the room that it forwards to.
//
// One object serves one page, on that page's thread. The page host calls OnStartPage before and
// OnEndPage after everything else; operations that need the page raise 424 outside of the two.
#ifndef RK_CLASSES_SITE_MAIN_H_
#define RK_CLASSES_SITE_MAIN_H_

#include <span>
#include <string_view>

#include "classes/equipment.h"
#include "classes/operations.h"
#include "services/web_fetch.h"
#include "site/page_context.h"
#include "value/object.h"
#include "value/value.h"

namespace rk::classes {

class SiteMain : public Object {
 public:
  explicit SiteMain(const Equipment& equipment) : equipment_(equipment) {}

  // The table of the operations that scripts reach.
  static std::span<const Operation<SiteMain>> operations();

  std::string_view type_name() const override { return "SiteMain"; }
  MemberId member(std::string_view name) const override;
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override;

  // Page and site. OnStartPage raises 424 or 438 for what is no scripting context.
  void OnStartPage(Value& mysc);
  void OnEndPage();
  Value GetTempPath();
  Value GetScriptPath();

  // Templates
  Value loadfile(Value& filename);
  void loadfile_fromcache(Value& filename);
  void update_cache(Value& filename);
  Value Set_Tags(Value& FileCon, Value& TagName, Value& TagCon);
  Value GetKey(Value& HTML, Value& Start, Value& Last);
  Value ReStr(Value& mystr);
  Value CheckTempType(Value& chkStr1, Value& chkStr2);

  // Messages, menu, money log, random letters and regions
  void MessBox(Value& errorcode, Value& locpage, Value& beend);
  void ShowMsg(Value& MsgStr);
  void checkpost();
  Value Show_Menu(Value& Back_Str, Value& Agent_User);
  Value GetBarClass(Value& barurl, Value& inputvalue);
  void WriteMoneyLog(Value& User, Value& LogType, Value& Money, Value& BuyMoney, Value& LogMoney,
                     Value& Info);
  Value MyRandc(Value& count);
  Value GetCTSelect(Value& NowValue, Value& GetType, Value& sIndex);
  Value GetCTName(Value& ProvCode, Value& ShowType);

  // Web fetch and lookups
  Value GetURL(Value& url);
  Value bytes2bstr(Value& vin);
  Value getapiurl(Value& apitype);
  Value Getbeian(Value& sStr, Value& domain);

  // Catalogue
  Value Show_HostList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                      Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                      Value& PageSize, Value& Agent_User);
  Value Show_SqlList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                     Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                     Value& Agent_User);
  Value Show_MySqlList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                       Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                       Value& Agent_User);
  Value Show_MailList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                      Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                      Value& Agent_User);
  Value Show_HostInfo(Value& Agent_User);
  Value Show_DomainPriceList(Value& Style, Value& DomainLanguage, Value& Agent_User);
  Value Show_sDomainList(Value& TopNum, Value& InputWidth, Value& InputHeight, Value& DomainType,
                         Value& OrderType, Value& Agent_User);
  Value ShowPro_List(Value& Agent_User);
  Value Show_ServerList(Value& Width, Value& sHeight, Value& ShowPage, Value& Agent_User);

  // Shop, payment, news and success cases
  Value Show_ShopList(Value& Style, Value& ShowItems, Value& ListNum, Value& NewsLineNum,
                      Value& LineCode, Value& OrderType, Value& ItemOrders, Value& ConLineHeight,
                      Value& ListLineHeight, Value& showIndex, Value& Agent_User);
  Value Show_ShopInfo();
  Value Show_PayType(Value& Agent_User);
  Value Show_EnterPay(Value& Agent_User);
  void getnews(Value& types, Value& nos, Value& swdata, Value& lfno, Value& Agent_User);
  Value Show_NewsList(Value& NewsType, Value& NewsNum, Value& TitleType, Value& TitleLength,
                      Value& lineheight, Value& ShowTime, Value& Agent_User);
  Value Show_NewsPageList(Value& Agent_User);
  Value Show_SuccessItem(Value& Width, Value& sHeight, Value& Agent_User);
  Value Show_SuccessList(Value& SuccNum, Value& TitleLength, Value& Width, Value& titHeight,
                         Value& TitleType, Value& Agent_User);
  Value Show_SuccessPageList(Value& Style, Value& PageNumber, Value& NewLineNum, Value& LineCode,
                             Value& OrderType, Value& Agent_User);

  // Strips and slideshow
  Value Show_Links(Value& linkWidth, Value& linkHeight, Value& NumWidth, Value& TopNum,
                   Value& stopTime, Value& sLen, Value& Agent_User);
  Value Show_FtpLinks(Value& linkWidth, Value& linkHeight, Value& NumWidth, Value& TopNum,
                      Value& stopTime, Value& sLen, Value& Agent_User);
  Value Show_NCompany(Value& sNum, Value& sWindth, Value& ulWidth, Value& Agent_User);
  Value Show_DownLoad(Value& ShowNum, Value& sWidth, Value& sNum, Value& Agent_User);
  Value ShowFlash_Ad(Value& Style, Value& FlashWidth, Value& FlashHeight, Value& textheight,
                     Value& Agent_User);

 private:
  services::Web web() const;

  const Equipment equipment_;
  site::PageContext page_;
};

}  // namespace rk::classes

#endif  // RK_CLASSES_SITE_MAIN_H_
