#include "classes/site_main.h"

#include <array>

#include "catalogue/domain_lists.h"
#include "catalogue/host_info.h"
#include "catalogue/host_list.h"
#include "catalogue/plan_lists.h"
#include "catalogue/selectors.h"
#include "classes/page_binding.h"
#include "services/lookups.h"
#include "services/text_codecs.h"
#include "services/web_fetch.h"
#include "shop/news.h"
#include "shop/payment.h"
#include "shop/shop_item_page.h"
#include "shop/shop_list.h"
#include "shop/success.h"
#include "site/menu.h"
#include "site/messages.h"
#include "site/money_log.h"
#include "site/random_letters.h"
#include "site/regions.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/conversions.h"
#include "value/script_error.h"
#include "widgets/slideshow.h"
#include "widgets/strips.h"

namespace rk::classes {

namespace {

constexpr std::array kOperations{
    operation<&SiteMain::OnStartPage>("OnStartPage"),
    operation<&SiteMain::OnEndPage>("OnEndPage"),
    operation<&SiteMain::GetTempPath>("GetTempPath"),
    operation<&SiteMain::GetScriptPath>("GetScriptPath"),
    operation<&SiteMain::loadfile>("loadfile"),
    operation<&SiteMain::loadfile_fromcache>("loadfile_fromcache"),
    operation<&SiteMain::update_cache>("update_cache"),
    operation<&SiteMain::Set_Tags>("Set_Tags"),
    operation<&SiteMain::GetKey>("GetKey"),
    operation<&SiteMain::ReStr>("ReStr"),
    operation<&SiteMain::CheckTempType>("CheckTempType"),
    operation<&SiteMain::MessBox>("MessBox"),
    operation<&SiteMain::ShowMsg>("ShowMsg"),
    operation<&SiteMain::checkpost>("checkpost"),
    operation<&SiteMain::Show_Menu>("Show_Menu"),
    operation<&SiteMain::GetBarClass>("GetBarClass"),
    operation<&SiteMain::WriteMoneyLog>("WriteMoneyLog"),
    operation<&SiteMain::MyRandc>("MyRandc"),
    operation<&SiteMain::GetCTSelect>("GetCTSelect"),
    operation<&SiteMain::GetCTName>("GetCTName"),
    operation<&SiteMain::GetURL>("GetURL"),
    operation<&SiteMain::bytes2bstr>("bytes2bstr"),
    operation<&SiteMain::getapiurl>("getapiurl"),
    operation<&SiteMain::Getbeian>("Getbeian"),
    operation<&SiteMain::Show_HostList>("Show_HostList"),
    operation<&SiteMain::Show_SqlList>("Show_SqlList"),
    operation<&SiteMain::Show_MySqlList>("Show_MySqlList"),
    operation<&SiteMain::Show_MailList>("Show_MailList"),
    operation<&SiteMain::Show_HostInfo>("Show_HostInfo"),
    operation<&SiteMain::Show_DomainPriceList>("Show_DomainPriceList"),
    operation<&SiteMain::Show_sDomainList>("Show_sDomainList"),
    operation<&SiteMain::ShowPro_List>("ShowPro_List"),
    operation<&SiteMain::Show_ServerList>("Show_ServerList"),
    operation<&SiteMain::Show_ShopList>("Show_ShopList"),
    operation<&SiteMain::Show_ShopInfo>("Show_ShopInfo"),
    operation<&SiteMain::Show_PayType>("Show_PayType"),
    operation<&SiteMain::Show_EnterPay>("Show_EnterPay"),
    operation<&SiteMain::getnews>("getnews"),
    operation<&SiteMain::Show_NewsList>("Show_NewsList"),
    operation<&SiteMain::Show_NewsPageList>("Show_NewsPageList"),
    operation<&SiteMain::Show_SuccessItem>("Show_SuccessItem"),
    operation<&SiteMain::Show_SuccessList>("Show_SuccessList"),
    operation<&SiteMain::Show_SuccessPageList>("Show_SuccessPageList"),
    operation<&SiteMain::Show_Links>("Show_Links"),
    operation<&SiteMain::Show_FtpLinks>("Show_FtpLinks"),
    operation<&SiteMain::Show_NCompany>("Show_NCompany"),
    operation<&SiteMain::Show_DownLoad>("Show_DownLoad"),
    operation<&SiteMain::ShowFlash_Ad>("ShowFlash_Ad"),
};

}  // namespace

std::span<const Operation<SiteMain>> SiteMain::operations() {
  return kOperations;
}

MemberId SiteMain::member(std::string_view name) const {
  return member_of(operations(), name);
}

Value SiteMain::invoke(MemberId id, CallKind kind, Arguments arguments) {
  return call_operation(operations(), *this, id, kind, arguments);
}

// --- page and site ------------------------------------------------------------------------------

void SiteMain::OnStartPage(Value& mysc) {
  page_.start(scripting_context(mysc));
}

void SiteMain::OnEndPage() {
  page_.end();
}

Value SiteMain::GetTempPath() {
  return Value::text(site::GetTempPath(page_));
}

Value SiteMain::GetScriptPath() {
  return Value::text(site::GetScriptPath(page_));
}

// --- templates ----------------------------------------------------------------------------------

Value SiteMain::loadfile(Value& filename) {
  return site::loadfile(page_, filename);
}

void SiteMain::loadfile_fromcache(Value& filename) {
  site::loadfile_fromcache(page_, filename);
}

void SiteMain::update_cache(Value& filename) {
  site::update_cache(page_, filename);
}

Value SiteMain::Set_Tags(Value& FileCon, Value& TagName, Value& TagCon) {
  return Value::text(site::Set_Tags(FileCon, TagName, TagCon));
}

Value SiteMain::GetKey(Value& HTML, Value& Start, Value& Last) {
  return site::GetKey(HTML, Start, Last);
}

Value SiteMain::ReStr(Value& mystr) {
  return Value::text(site::ReStr(mystr));
}

Value SiteMain::CheckTempType(Value& chkStr1, Value& chkStr2) {
  return Value::text(site::CheckTempType(chkStr1, chkStr2));
}

// --- messages, menu, money log, random letters, regions
// -------------------------------------------

void SiteMain::MessBox(Value& errorcode, Value& locpage, Value& beend) {
  site::MessBox(page_, errorcode, locpage, beend);
}

void SiteMain::ShowMsg(Value& MsgStr) {
  site::ShowMsg(page_, MsgStr);
}

void SiteMain::checkpost() {
  site::checkpost(page_);
}

Value SiteMain::Show_Menu(Value& Back_Str, Value& Agent_User) {
  return Value::text(site::Show_Menu(page_, Back_Str, Agent_User));
}

Value SiteMain::GetBarClass(Value& barurl, Value& inputvalue) {
  return site::GetBarClass(page_, barurl, inputvalue);
}

void SiteMain::WriteMoneyLog(Value& User, Value& LogType, Value& Money, Value& BuyMoney,
                             Value& LogMoney, Value& Info) {
  site::WriteMoneyLog(page_, equipment_.clock, {User, LogType, Money, BuyMoney, LogMoney, Info});
}

Value SiteMain::MyRandc(Value& count) {
  return Value::text(site::MyRandc(count, equipment_.random));
}

Value SiteMain::GetCTSelect(Value& NowValue, Value& GetType, Value& sIndex) {
  return Value::text(site::GetCTSelect(page_, NowValue, GetType, sIndex));
}

Value SiteMain::GetCTName(Value& ProvCode, Value& ShowType) {
  return site::GetCTName(page_, ProvCode, ShowType);
}

// --- web fetch and lookups
// ------------------------------------------------------------------------

services::Web SiteMain::web() const {
  return {*equipment_.http, equipment_.code_pages, equipment_.deployment.ansi_code_page};
}

Value SiteMain::GetURL(Value& url) {
  return services::server_fetch(web(), url);
}

Value SiteMain::bytes2bstr(Value& vin) {
  return services::bytes2bstr(vin, equipment_.code_pages, equipment_.deployment.ansi_code_page);
}

Value SiteMain::getapiurl(Value& apitype) {
  return services::getapiurl(equipment_.deployment.endpoints, equipment_.random, apitype);
}

Value SiteMain::Getbeian(Value& sStr, Value& domain) {
  return services::Getbeian(web(), equipment_.deployment.endpoints, page_.server(), sStr, domain);
}

// --- catalogue ----------------------------------------------------------------------------------

Value SiteMain::Show_HostList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                              Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                              Value& PageSize, Value& Agent_User) {
  return Value::text(
      catalogue::Show_HostList(page_, {Style, ListNum, NewLineNum, LineCode, OrderType,
                                       ConLineHeight, ListLineHeight, PageSize, Agent_User}));
}

Value SiteMain::Show_SqlList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                             Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                             Value& Agent_User) {
  return Value::text(
      catalogue::Show_SqlList(page_, {Style, ListNum, NewLineNum, LineCode, OrderType,
                                      ConLineHeight, ListLineHeight, Agent_User}));
}

Value SiteMain::Show_MySqlList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                               Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                               Value& Agent_User) {
  return Value::text(
      catalogue::Show_MySqlList(page_, {Style, ListNum, NewLineNum, LineCode, OrderType,
                                        ConLineHeight, ListLineHeight, Agent_User}));
}

Value SiteMain::Show_MailList(Value& Style, Value& ListNum, Value& NewLineNum, Value& LineCode,
                              Value& OrderType, Value& ConLineHeight, Value& ListLineHeight,
                              Value& Agent_User) {
  return Value::text(
      catalogue::Show_MailList(page_, {Style, ListNum, NewLineNum, LineCode, OrderType,
                                       ConLineHeight, ListLineHeight, Agent_User}));
}

Value SiteMain::Show_HostInfo(Value& Agent_User) {
  return catalogue::Show_HostInfo(page_, Agent_User);
}

Value SiteMain::Show_DomainPriceList(Value& Style, Value& DomainLanguage, Value& Agent_User) {
  return Value::text(catalogue::Show_DomainPriceList(page_, Style, DomainLanguage, Agent_User));
}

Value SiteMain::Show_sDomainList(Value& TopNum, Value& InputWidth, Value& InputHeight,
                                 Value& DomainType, Value& OrderType, Value& Agent_User) {
  return Value::text(catalogue::Show_sDomainList(
      page_, {TopNum, InputWidth, InputHeight, DomainType, OrderType, Agent_User}));
}

Value SiteMain::ShowPro_List(Value& Agent_User) {
  return Value::text(catalogue::ShowPro_List(page_, Agent_User));
}

Value SiteMain::Show_ServerList(Value& Width, Value& sHeight, Value& ShowPage, Value& Agent_User) {
  return Value::text(catalogue::Show_ServerList(page_, {Width, sHeight, ShowPage, Agent_User}));
}

// --- shop, payment, news and success cases -------------------------------------------------------

Value SiteMain::Show_ShopList(Value& Style, Value& ShowItems, Value& ListNum, Value& NewsLineNum,
                              Value& LineCode, Value& OrderType, Value& ItemOrders,
                              Value& ConLineHeight, Value& ListLineHeight, Value& showIndex,
                              Value& Agent_User) {
  return Value::text(shop::Show_ShopList(
      page_, {Style, ShowItems, ListNum, NewsLineNum, LineCode, OrderType, ItemOrders,
              ConLineHeight, ListLineHeight, showIndex, Agent_User}));
}

Value SiteMain::Show_ShopInfo() {
  return shop::Show_ShopInfo(page_);
}

Value SiteMain::Show_PayType(Value& Agent_User) {
  return Value::text(shop::Show_PayType(page_, Agent_User));
}

Value SiteMain::Show_EnterPay(Value& Agent_User) {
  return Value::text(shop::Show_EnterPay(page_, equipment_.clock, Agent_User));
}

void SiteMain::getnews(Value& types, Value& nos, Value& swdata, Value& lfno, Value& Agent_User) {
  shop::getnews(page_, equipment_.clock, {types, nos, swdata, lfno, Agent_User});
}

Value SiteMain::Show_NewsList(Value& NewsType, Value& NewsNum, Value& TitleType, Value& TitleLength,
                              Value& lineheight, Value& ShowTime, Value& Agent_User) {
  return Value::text(shop::Show_NewsList(
      page_, {NewsType, NewsNum, TitleType, TitleLength, lineheight, ShowTime, Agent_User}));
}

Value SiteMain::Show_NewsPageList(Value& Agent_User) {
  return Value::text(shop::Show_NewsPageList(page_, equipment_.clock, Agent_User));
}

Value SiteMain::Show_SuccessItem(Value& Width, Value& sHeight, Value& Agent_User) {
  return shop::Show_SuccessItem(page_, Width, sHeight, Agent_User);
}

Value SiteMain::Show_SuccessList(Value& SuccNum, Value& TitleLength, Value& Width, Value& titHeight,
                                 Value& TitleType, Value& Agent_User) {
  return Value::text(shop::Show_SuccessList(
      page_, {SuccNum, TitleLength, Width, titHeight, TitleType, Agent_User}));
}

Value SiteMain::Show_SuccessPageList(Value& Style, Value& PageNumber, Value& NewLineNum,
                                     Value& LineCode, Value& OrderType, Value& Agent_User) {
  return Value::text(shop::Show_SuccessPageList(
      page_, {Style, PageNumber, NewLineNum, LineCode, OrderType, Agent_User}));
}

// --- strips --------------------------------------------------------------------------------------

Value SiteMain::Show_Links(Value& linkWidth, Value& linkHeight, Value& NumWidth, Value& TopNum,
                           Value& stopTime, Value& sLen, Value& Agent_User) {
  return Value::text(widgets::Show_Links(
      page_, {linkWidth, linkHeight, NumWidth, TopNum, stopTime, sLen, Agent_User}));
}

Value SiteMain::Show_FtpLinks(Value& linkWidth, Value& linkHeight, Value& NumWidth, Value& TopNum,
                              Value& stopTime, Value& sLen, Value& Agent_User) {
  return Value::text(widgets::Show_FtpLinks(
      page_, {linkWidth, linkHeight, NumWidth, TopNum, stopTime, sLen, Agent_User}));
}

Value SiteMain::Show_NCompany(Value& sNum, Value& sWindth, Value& ulWidth, Value& Agent_User) {
  return widgets::Show_NCompany(page_, sNum, sWindth, ulWidth, Agent_User);
}

Value SiteMain::Show_DownLoad(Value& ShowNum, Value& sWidth, Value& sNum, Value& Agent_User) {
  return Value::text(widgets::Show_DownLoad(page_, ShowNum, sWidth, sNum, Agent_User));
}

Value SiteMain::ShowFlash_Ad(Value& Style, Value& FlashWidth, Value& FlashHeight, Value& textheight,
                             Value& Agent_User) {
  return Value::text(
      widgets::ShowFlash_Ad(page_, equipment_.deployment.player,
                            {Style, FlashWidth, FlashHeight, textheight, Agent_User}));
}

}  // namespace rk::classes
