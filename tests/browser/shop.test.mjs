// The shop, ways to pay, news and success cases of the demo.
import assert from "node:assert/strict";
import { test } from "node:test";
import { demoVisits, follow } from "./demo_site.mjs";

const { visit } = demoVisits();

const total = (page) => page.locator("#wmoney").textContent();
const texts = async (locator) => (await locator.allTextContents()).map((text) => text.trim());

test("period and quantity make the total of an article that is paid by period", () =>
  visit("localhost", "/shop/item.asp?Id=22", async (page) => {
    assert.equal(await page.locator("h1").textContent(), "文件备份 100 GB");
    assert.equal(await total(page), "480");
    const choices = await texts(page.locator("[name=BuyType] option"));
    assert.deepEqual(choices, ["年", "月", "季", "半年"]);
    await page.locator("[name=BuyYear]").selectOption("3");
    assert.equal(await total(page), "1440");
    await page.locator("[name=BuyType]").selectOption("月");
    assert.equal(await total(page), "136.5");
    await page.locator("[name=BuyNo]").fill("4");
    await page.locator("[name=BuyNo]").press("Tab");
    assert.equal(await total(page), "546");
    await page.locator("[name=BuyType]").selectOption("半年");
    assert.equal(await total(page), "3024");
    await page.locator("[name=BuyType]").selectOption("季");
    await page.locator("[name=BuyYear]").selectOption("11");
    assert.equal(await total(page), "5808");
  }));

test("quantity makes the total of an article with one price", () =>
  visit("localhost", "/shop/item.asp?Id=12", async (page) => {
    assert.equal((await texts(page.locator(".item-page .price")))[0], "380/页");
    assert.equal(await page.locator("[name=BuyType]").count(), 0);
    assert.equal(await total(page), "380");
    await page.locator("[name=BuyNo]").fill("7");
    await page.locator("[name=BuyNo]").press("Tab");
    assert.equal(await total(page), "2660");
  }));

test("a total of hundredths is not shown with the tail of a binary fraction", () =>
  visit("green.localhost", "/shop/item.asp?Id=44", async (page) => {
    await page.locator("[name=BuyType]").selectOption("月");
    await page.locator("[name=BuyYear]").selectOption("3");
    assert.equal(await total(page), "36.3");
    assert.deepEqual(await texts(page.locator("[name=BuyType] option")), [
      "year(s)",
      "month(s)",
      "quarter(s)",
      "half-year(s)",
    ]);
  }));

test("only the periods that have a price can be chosen", () =>
  visit("blue.localhost", "/shop/item.asp?Id=32", async (page) => {
    assert.deepEqual(await texts(page.locator("[name=BuyType] option")), ["年", "月"]);
    assert.equal((await texts(page.locator(".item-page .price")))[0], "2400元/年 220元/月");
  }));

for (const [host, shop, first, second] of [
  ["localhost", "#sp1", ["双语展示站", "活动页", "五页展示站"], ["商城加会员", "标准商城"]],
  ["blue.localhost", "#sp101", ["晚间客服", "周末客服"], ["每月十件"]],
  ["green.localhost", "#sp111", ["Security check", "Speed check"], ["Broken page"]],
]) {
  test(`the tabs of ${host} show their panels, by click and by key`, () =>
    visit(host, "/shop/index.asp", async (page) => {
      const tabs = page.locator(`${shop} [role=tab]`);
      const shown = async () =>
        (await texts(page.locator(`${shop} .panel:visible h3`))).sort();
      const chosen = () =>
        tabs.evaluateAll((all) => all.map((tab) => tab.getAttribute("aria-selected")).join());
      assert.deepEqual(await shown(), [...first].sort());
      await tabs.nth(1).click();
      assert.deepEqual(await shown(), [...second].sort());
      assert.equal(await chosen(), "false,true");
      await tabs.nth(1).press("ArrowRight");
      assert.deepEqual(await shown(), [...first].sort());
      assert.equal(await chosen(), "true,false");
      await page.keyboard.press("ArrowLeft");
      assert.deepEqual(await shown(), [...second].sort());
      await page.keyboard.press("Home");
      assert.deepEqual(await shown(), [...first].sort());
      await page.keyboard.press("End");
      assert.equal(await chosen(), "false,true");
      const name = await tabs.nth(1).textContent();
      assert.equal(await page.getByRole("tabpanel", { name }).count(), 1);
    }));
}

test("the shop lists every category of the master, those without tabs too", () =>
  visit("localhost", "/shop/index.asp", async (page) => {
    assert.deepEqual(await texts(page.locator(".shop-category h2")), ["网站建设", "安全服务", "云备份"]);
    assert.equal(await page.locator("#sp2 .tabs").count(), 0);
    assert.deepEqual(await texts(page.locator("#sp2 h3")), ["漏洞巡检", "防火墙", "证书"]);
    const dashes = await texts(page.locator("#sp2 .plan").first().locator("dd"));
    assert.deepEqual(dashes, ["240", "130", "-", "-"]);
    assert.ok(!(await page.content()).match(/\{(PagesID|ShopName|Price|Id|MenuId)\}/));
  }));

test("the menu leads to one category, and an article of it to its page", () =>
  visit("localhost", "/shop?Id=5", async (page) => {
    assert.equal(new URL(page.url()).pathname, "/shop/");
    assert.deepEqual(await texts(page.locator(".shop-category h2")), ["云备份"]);
    await follow(page, page.getByRole("link", { name: "查看 文件备份 10 GB" }));
    assert.equal(await page.locator("h1").textContent(), "文件备份 10 GB");
    assert.equal(await total(page), "120");
  }));

test("a mistyped category leads to the whole shop, one of another storefront to a note", async () => {
  await visit("localhost", "/shop/index.asp?Id=x", async (page) => {
    assert.equal(new URL(page.url()).search, "");
    assert.equal(await page.locator(".shop-category").count(), 3);
  });
  await visit("localhost", "/shop/index.asp?Id=101", async (page) => {
    assert.equal(await page.locator(".shop-category").count(), 0);
    assert.equal(await page.locator(".note").count(), 1);
  });
});

// The numbers of the news shown, out of their links.
const items = (page) =>
  page
    .locator("#table19 a")
    .evaluateAll((links) => links.map((link) => Number(new URL(link.href).searchParams.get("id"))));

test("the news pager walks to the last page and back, newest first", () =>
  visit("localhost", "/news/news.asp", async (page) => {
    const there = [await items(page)];
    for (let next; (next = page.getByRole("link", { name: "下一页" })), await next.count(); ) {
      await follow(page, next);
      there.push(await items(page));
    }
    assert.deepEqual(there.map((shown) => shown.length), [20, 20, 7]);
    const all = there.flat();
    assert.deepEqual(all, [...new Set(all)].sort((a, b) => b - a));
    assert.match(await page.locator("#table20").textContent(), /共 47 条记录　　第 3\/3/);
    for (const shown of [there[1], there[0]]) {
      await follow(page, page.getByRole("link", { name: "上一页" }));
      assert.deepEqual(await items(page), shown);
    }
    assert.equal(await page.getByRole("link", { name: "上一页" }).count(), 0);
  }));

test("the kind stays while the visitor turns the pages of the news", () =>
  visit("localhost", "/news/news.asp?type=news", async (page) => {
    await follow(page, page.getByRole("link", { name: "下一页" }));
    assert.equal(new URL(page.url()).searchParams.get("type"), "news");
    assert.match(await page.locator("#table20").textContent(), /第 2\/2/);
    assert.equal(await page.locator(".chips [aria-current]").textContent(), "新闻");
  }));

test("an item of today bears a picture and leads to its page", () =>
  visit("green.localhost", "/news/news.asp", async (page) => {
    const shown = await texts(page.locator("#table19 tr"));
    assert.ok(shown.every((line) => /\[\d{4}-\d\d-\d\d\]$/.test(line)), shown.join());
    assert.equal(await page.locator("#table19 img").count(), 1);
    const row = page.locator("#table19 tr", { hasText: "Today: the shop is open" });
    const picture = row.locator("img");
    assert.match(await picture.getAttribute("src"), /^\/Template\/leaf\/Images\//);
    assert.ok(await picture.evaluate((img) => img.complete && img.naturalWidth > 0));
    await follow(page, row.getByRole("link"));
    assert.equal(await page.locator("h1").textContent(), "Today: the shop is open");
  }));

test("the news front shows own items, help, and what is for every site", () =>
  visit("blue.localhost", "/news/index.asp", async (page) => {
    assert.equal(await page.locator("#latest a[title]").count(), 6);
    assert.equal(await page.locator("#latest a[title]").first().getAttribute("title"), "今日公告：小店服务开售");
    assert.equal(await page.locator("#help a[title]").count(), 5);
    assert.equal(await page.locator("#everyone a[title]").count(), 6);
    await follow(page, page.locator("#help p a"));
    assert.equal(new URL(page.url()).searchParams.get("type"), "help");
  }));

test("a page of news that is not there, and a kind that is none, lead back", async () => {
  for (const query of ["page=99", "page=0", "page=x", "type=%22%3E%3Cscript%3E"]) {
    await visit("localhost", `/news/news.asp?${query}`, async (page) => {
      assert.equal(new URL(page.url()).searchParams.get("page"), null, query);
      assert.equal((await items(page)).length, 20, query);
    });
  }
});

const cases = (page) => texts(page.locator(".cases h3"));

test("the pager of success cases walks there and back, and the list of pages jumps", () =>
  visit("localhost", "/success/success.asp", async (page) => {
    const there = [await cases(page)];
    for (let next; (next = page.getByRole("link", { name: "下一页" })), await next.count(); ) {
      await follow(page, next);
      there.push(await cases(page));
    }
    assert.deepEqual(there.map((shown) => shown.length), [6, 6, 5]);
    assert.equal(new Set(there.flat()).size, 17);
    await follow(page, page.getByRole("link", { name: "上一页" }));
    assert.deepEqual(await cases(page), there[1]);
    await follow(page, page.locator(".pages").getByRole("link", { name: "首页" }));
    assert.deepEqual(await cases(page), there[0]);
    await follow(page, page.getByRole("link", { name: "尾页" }));
    assert.deepEqual(await cases(page), there[2]);
    const jump = page.locator(".pages select").selectOption({ label: "2" });
    await Promise.all([page.waitForEvent("load"), jump]);
    assert.deepEqual(await cases(page), there[1]);
  }));

test("a category of success cases leaves its own, page after page", () =>
  visit("localhost", "/success/index.asp", async (page) => {
    await follow(page, page.getByRole("link", { name: "商城", exact: true }).last());
    assert.equal(new URL(page.url()).searchParams.get("Type"), "商城");
    const shown = await cases(page);
    assert.equal(shown.length, 6);
    assert.ok(shown.every((name) => /果园|书店/.test(name)), shown.join());
    assert.equal(await page.locator(".boxes [aria-current]").textContent(), "商城");
  }));

test("an agent shows its own cases and categories alone", () =>
  visit("green.localhost", "/success/success.asp", async (page) => {
    assert.deepEqual(await texts(page.locator(".boxes li")), ["Companies", "Shops"]);
    assert.ok((await cases(page)).every((name) => /Northwind|Harbour/.test(name)));
  }));

test("a category that is a script stays out of the page", () =>
  visit("localhost", "/success/success.asp?Type=%3Cscript%3Ealert(1)%3C/script%3E", async (page) => {
    assert.equal(new URL(page.url()).search, "");
  }));

test("instructions to pay keep their lines, and a payment is reported under the visitor's name", () =>
  visit("localhost", "/pay/index.asp", async (page) => {
    const bank = page.locator("li", { hasText: "银行转账" }).locator("p");
    assert.equal(await bank.locator("br").count(), 2);
    await follow(page, page.getByRole("link", { name: "我已付款" }));
    assert.equal(await page.getByLabel("用户名").inputValue(), "");
    assert.match(await page.getByLabel("付款日期").inputValue(), /^\d{4}-\d\d-\d\d$/);
    await page.getByLabel("用户名").fill("chunfeng");
    await page.getByLabel("汇款").check();
    await follow(page, page.getByRole("button", { name: "提交" }));
    assert.equal(await page.getByRole("status").count(), 1);
    assert.equal(await page.getByLabel("用户名").inputValue(), "chunfeng");
  }));

test("an agent's ways to pay are its own", () =>
  visit("green.localhost", "/pay/index.asp", async (page) => {
    assert.deepEqual(await texts(page.locator(".pay-types h2")), ["Bank transfer", "Cheque"]);
  }));

test("articles go into the cart under the storefront's prices, and from there into the order", () =>
  visit("localhost", "/shop/item.asp?Id=22", async (page) => {
    const rows = () =>
      page.locator(".cart tbody tr").evaluateAll((all) =>
        all.map((row) => [...row.children].map((cell) => cell.querySelector("input")?.value ?? cell.textContent).join("|")),
      );
    await page.locator("[name=BuyType]").selectOption("月");
    await page.locator("[name=BuyYear]").selectOption("3");
    await follow(page, page.locator("form[name=myfrm] button"));
    await page.goto(new URL("/shop/item.asp?Id=12", page.url()).href);
    await page.fill("[name=BuyNo]", "2");
    await follow(page, page.locator("form[name=myfrm] button"));
    assert.deepEqual(await rows(), [
      "文件备份 100 GB|3 月|45.50|1|136.50",
      "活动页|-|380.00|2|760.00",
      "合计（元）|896.50",
    ]);
    await page.fill("[name=count0]", "0");
    await page.fill("[name=count1]", "3");
    await follow(page, page.getByRole("button", { name: "更新数量" }));
    assert.deepEqual(await rows(), ["活动页|-|380.00|3|1,140.00", "合计（元）|1,140.00"]);
    await follow(page, page.getByRole("link", { name: "去下单" }));
    assert.deepEqual(await rows(), ["活动页|-|380.00|3|1,140.00", "合计（元）|1,140.00"]);
  }));

test("what is no article of the storefront, or not sold by that period, stays out of the cart", () =>
  visit("localhost", "/order/cart.asp", async (page) => {
    const asked = ["Id=32", "Id=999", "Id=x", "Id=12&BuyType=%E6%9C%88", "Id=12&BuyNo=0", "Id=12&BuyType=%3Cb%3E", "Id=12 Or 1=1"];
    for (const query of asked) {
      await page.goto(new URL(`/order/cart.asp?${query}`, page.url()).href);
      assert.equal(await page.locator(".cart").count(), 0, query);
    }
  }));
