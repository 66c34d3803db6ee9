#include "site/template_files.h"

#include <array>

namespace rk::site {

namespace {

using Tag = std::string_view;

constexpr std::array kHostStyles{TemplateStyle{"<!--HostList Style", "<!--End HostList Style"}};
constexpr std::array<Tag, 1> kHostNeeded{"{HostList_HostName}"};
constexpr std::array<Tag, 8> kHostOptional{
    "{Price}",      "{MonPrice}", "{HostList_HostSpace}", "{MaxConnections}",
    "{Scriptmaps}", "{DataBase}", "{HostListId}",         "{ConLineHeight}"};
constexpr std::array<Tag, 6> kHostFrame{"{Page}",   "{PageCount}", "{Page-1}",
                                        "{Page+1}", "{ServerId}",  "{ListLineHeight}"};
constexpr std::array kHostBlocks{TemplateBlock{"<!--HostList For Index-->",
                                               "<!--End HostList For Index-->", kHostNeeded,
                                               kHostOptional, kHostFrame}};

constexpr std::array<Tag, 1> kPlanFrame{"{ListLineHeight}"};
constexpr std::array<Tag, 1> kSqlNeeded{"{SqlList_SqlName}"};

constexpr std::array kSqlStyles{TemplateStyle{"<!--SqlList Style", "<!--End SqlList Style"}};
constexpr std::array<Tag, 5> kSqlOptional{"{SqlListId}", "{db_MaxSize}", "{lg_MaxSize}", "{Price}",
                                          "{ConLineHeight}"};
constexpr std::array kSqlBlocks{TemplateBlock{"<!--SqlList For Index-->",
                                              "<!--End SqlList For Index-->", kSqlNeeded,
                                              kSqlOptional, kPlanFrame}};

constexpr std::array kMySqlStyles{TemplateStyle{"<!--MySqlList Style", "<!--End MySqlList Style"}};
constexpr std::array<Tag, 4> kMySqlOptional{"{SqlListId}", "{db_MaxSize}", "{Price}",
                                            "{ConLineHeight}"};
constexpr std::array kMySqlBlocks{TemplateBlock{"<!--MySqlList For Index-->",
                                                "<!--End MySqlList For Index-->", kSqlNeeded,
                                                kMySqlOptional, kPlanFrame}};

constexpr std::array kMailStyles{TemplateStyle{"<!--MailList Style", "<!--End MailList Style"}};
constexpr std::array<Tag, 1> kMailNeeded{"{MailList_MailName}"};
constexpr std::array<Tag, 4> kMailOptional{"{MailListId}", "{Size}", "{Price}", "{ConLineHeight}"};
constexpr std::array kMailBlocks{TemplateBlock{"<!--MailList For Index-->",
                                               "<!--End MailList For Index-->", kMailNeeded,
                                               kMailOptional, kPlanFrame}};

constexpr std::array<Tag, 5> kMenuMarks{"{NowMunVal_Index}", "{NowMunVal_Domain}",
                                        "{NowMunVal_Host}", "{NowMunVal_DataBase}",
                                        "{NowMunVal_Mail}"};
constexpr std::array<Tag, 1> kMenuNeeded{"{ItemName}"};
constexpr std::array<Tag, 2> kMenuOptional{"{ItemId}", "{NowMunVal_Shop_{ItemId}}"};
constexpr std::array kMenuBlocks{
    TemplateBlock{"<!--ShopItem-->", "<!--End ShopItem-->", kMenuNeeded, kMenuOptional, {}}};

constexpr std::array<Tag, 1> kPlanNeeded{"{HostName}"};
constexpr std::array<Tag, 14> kPlanOptional{
    "{HostNo}",     "{id}",       "{HostPrice}", "{HostInfo}",       "{HostSpace}",
    "{Scriptmaps}", "{vPathNo}",  "{TestDay}",   "{MaxConnections}", "{MaxBandwidth}",
    "{CPU}",        "{FreeMail}", "{FreeDB}",    "{Update}"};

constexpr std::array kPriceStyles{TemplateStyle{"<!--PriceList Style", "<!--End PriceList Style"}};
constexpr std::array<Tag, 1> kDomainNeeded{"{Domain}"};
constexpr std::array<Tag, 4> kDomainOptional{"{Price}", "{UpdatePrice}", "{id}", "{Id}"};
constexpr std::array kDomainBlocks{
    TemplateBlock{"<!--Loop-->", "<!--End Loop-->", kDomainNeeded, kDomainOptional, {}}};

constexpr std::array kShopStyles{
    TemplateStyle{"<!--Shop ServDay Style", "<!--End Shop ServDay Style"},
    TemplateStyle{"<!--Shop NoServDay Style", "<!--End Shop NoServDay Style"}};
constexpr std::array<Tag, 4> kShopFrame{"{ParentItemName}", "{PagesID}", "{ListLineHeight}",
                                        "{ConLineHeight}"};
constexpr std::array<Tag, 1> kShopTabNeeded{"{LitItemName}"};
constexpr std::array<Tag, 2> kShopTabOptional{"{MenuId}", "{MenuStyle}"};
constexpr std::array<Tag, 2> kShopPanelOptional{"{PtbodyStyle}", "{ShopInfo}"};
constexpr std::array<Tag, 1> kShopPanelExcluded{"{ParentItemName}"};
constexpr std::array<Tag, 1> kShopItemNeeded{"{ShopName}"};
constexpr std::array<Tag, 7> kShopItemOptional{"{Id}",       "{DanWei}",     "{shInfo}",  "{Price}",
                                               "{MonPrice}", "{ThMonPrice}", "{HfyPrice}"};
constexpr std::array kShopBlocks{
    TemplateBlock{"<!--Pages Top-->", "<!--End Pages Top-->", {}, {}, {}},
    TemplateBlock{
        "<!--Pages MenuLoop-->", "<!--End Pages MenuLoop-->", kShopTabNeeded, kShopTabOptional, {}},
    TemplateBlock{"<!--Pages ConLoop-->",
                  "<!--End Pages ConLoop-->",
                  {},
                  kShopPanelOptional,
                  kShopPanelExcluded},
    TemplateBlock{"<!--Loop-->", "<!--End Loop-->", kShopItemNeeded, kShopItemOptional, {}}};

constexpr std::array<Tag, 1> kArticleNeeded{"{ShopName}"};
constexpr std::array<Tag, 6> kArticleOptional{"{Price}", "{ShopPrice}", "{SelectDate}",
                                              "{Info}",  "{Image}",     "{Id}"};

constexpr std::array<Tag, 1> kWayNeeded{"{Paytype}"};
constexpr std::array<Tag, 2> kWayOptional{"{PayIco}", "{PayInfo}"};
constexpr std::array kWayBlocks{
    TemplateBlock{"<!--Loop-->", "<!--End Loop-->", kWayNeeded, kWayOptional, {}}};
constexpr std::array<Tag, 1> kChoiceNeeded{"{PayType}"};
constexpr std::array<Tag, 1> kChoiceOptional{"{Id}"};
constexpr std::array kChoiceBlocks{
    TemplateBlock{"<!--Loop-->", "<!--End Loop-->", kChoiceNeeded, kChoiceOptional, {}}};
constexpr std::array<Tag, 2> kChoiceFrame{"{UserName}", "{Date}"};

constexpr std::array kCaseStyles{TemplateStyle{"<!--Style", "<!--End Style"}};
constexpr std::array<Tag, 1> kCaseNeeded{"{SiteName}"};
constexpr std::array<Tag, 3> kCaseOptional{"{SiteUrl}", "{Info}", "{PicUrl}"};
constexpr std::array<Tag, 1> kCaseFrame{"{PageSelect}"};
constexpr std::array kCaseBlocks{
    TemplateBlock{"<!--Loop-->", "<!--End Loop-->", kCaseNeeded, kCaseOptional, {}}};

constexpr std::array<TemplateFile, 12> kFiles{{
    {"Host-HostList-LitInfo.html", "Show_HostList", kHostStyles, kHostBlocks, {}, kHostFrame},
    {"DataBase-SqlList-LitInfo.html", "Show_SqlList", kSqlStyles, kSqlBlocks, {}, kPlanFrame},
    {"DataBase-MySqlList-LitInfo.html",
     "Show_MySqlList",
     kMySqlStyles,
     kMySqlBlocks,
     {},
     kPlanFrame},
    {"Mail-MailList-LitInfo.html", "Show_MailList", kMailStyles, kMailBlocks, {}, kPlanFrame},
    {"Menu.html", "Show_Menu", {}, kMenuBlocks, {}, kMenuMarks},
    {"Host-ShowHost-Info.html", "Show_HostInfo", {}, {}, kPlanNeeded, kPlanOptional},
    {"Domain-PriceList.html", "Show_DomainPriceList", kPriceStyles, kDomainBlocks, {}, {}},
    {"Shop-List.html", "Show_ShopList", kShopStyles, kShopBlocks, {}, kShopFrame},
    {"Shop-ShowShop-Info.html", "Show_ShopInfo", {}, {}, kArticleNeeded, kArticleOptional},
    {"User-Service-PayType.html", "Show_PayType", {}, kWayBlocks, {}, {}},
    {"User-Service-EnterPay.html", "Show_EnterPay", {}, kChoiceBlocks, {}, kChoiceFrame},
    {"User-Success-Info.html", "Show_SuccessPageList", kCaseStyles, kCaseBlocks, {}, kCaseFrame},
}};

}  // namespace

std::span<const TemplateFile> template_files() {
  return kFiles;
}

}  // namespace rk::site
