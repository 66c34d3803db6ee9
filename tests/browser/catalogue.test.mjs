// The product pages of the demo: one plan, databases, mail, domains, class links, the jump list.
import assert from "node:assert/strict";
import { once } from "node:events";
import { get } from "node:http";
import { test } from "node:test";
import { cards, demoVisits, follow, names } from "./demo_site.mjs";

const { visit, address } = demoVisits();

// The texts of a locator's elements, trimmed.
const texts = async (locator) => (await locator.allTextContents()).map((text) => text.trim());

// What the page of a plan says, head and value.
const facts = (page) =>
  page.locator(".plan-page").evaluate((plan) =>
    Object.fromEntries(
      [...plan.querySelectorAll("dt, th")].map((head) => [
        head.textContent.trim(),
        head.nextElementSibling.textContent.trim(),
      ]),
    ),
  );

// The status and text of an address, asked for without a browser; redirections are not followed.
async function answer(host, path) {
  const { port, host: asked } = new URL(address(host, "/"));
  const [reply] = await once(get({ host: "127.0.0.1", port, path, headers: { Host: asked } }), "response");
  const pieces = await reply.setEncoding("utf8").toArray();
  return { status: reply.statusCode, text: pieces.join("") };
}

const rows = (page, heading) =>
  page
    .locator("section", { has: page.getByRole("heading", { name: heading }) })
    .locator("tbody tr")
    .evaluateAll((lines) =>
      lines.map((line) => [...line.children].map((cell) => cell.textContent.trim()).join("|")),
    );

test("a plan's name in the list leads to its own page", () =>
  visit("localhost", "/host/index.asp?ServerId=4", async (page) => {
    await follow(page, page.getByRole("link", { name: "企业型 D1", exact: true }));
    assert.equal(new URL(page.url()).pathname, "/host/info.asp");
    assert.equal(await page.locator("h1").textContent(), "企业型 D1");
    assert.equal((await texts(page.locator(".plan-page .price")))[0], "2398元/年 230元/月");
    const said = await facts(page);
    assert.equal(said["并发连接"], "1200 个");
    assert.equal(said["带宽"], "5120 KB/S");
    assert.equal(said["处理器上限"], "80%");
    assert.equal(said["赠送数据库"], "SQL 2000 型/MySQL 2000 型");
    assert.equal(said["在线升级"], "支持");
  }));

test("the table leads to the same page", () =>
  visit("localhost", "/host/index.asp?ServerId=4&View=table", async (page) => {
    await follow(page, page.locator("#plan-13 th a"));
    const said = await facts(page);
    assert.equal(said["并发连接"], "无限制");
    assert.equal(said["带宽"], "无限制");
  }));

test("a plan without a monthly price shows the yearly one alone", () =>
  visit("localhost", "/host/info.asp?id=34", async (page) => {
    assert.equal((await texts(page.locator(".plan-page .price")))[0], "49元/年");
    const said = await facts(page);
    assert.equal(said["赠送邮局"], "无");
    assert.equal(said["赠送数据库"], "MySQL 200 型");
    assert.equal(said["在线升级"], "不支持");
  }));

test("an agent's plan page has the agent's own name and prices", async () => {
  await visit("blue.localhost", "/host/info.asp?id=30", async (page) => {
    assert.equal(await page.locator("h1").textContent(), "小店 数据版");
    assert.equal((await facts(page))["价格"], "408元/年 38.5元/月");
  });
  await visit("green.localhost", "/host/info.asp?id=30", async (page) => {
    assert.equal(await page.locator("h1").textContent(), "Sprout 10");
    assert.equal((await facts(page))["Disk space"], "10 GB");
  });
});

test("the free mail plan of a hosting plan is marked in its list", () =>
  visit("localhost", "/host/info.asp?id=16", async (page) => {
    await follow(page, page.getByRole("link", { name: "邮局 50 用户" }));
    assert.deepEqual(await texts(page.locator(".plan[aria-current] h3")), ["邮局 50 用户"]);
  }));

test("a plan that is not there, or not the agent's to sell, is not found", async () => {
  for (const [host, id] of [
    ["localhost", "id=9999"],
    ["localhost", "id=abc"],
    ["localhost", "id="],
    ["localhost", ""],
    ["blue.localhost", "id=12"],
  ]) {
    const { status, text } = await answer(host, `/host/info.asp?${id}`);
    assert.equal(status, 404, `${host} ${id}`);
    assert.match(text, /没有这个方案/);
  }
});

test("the master's class links limit the database lists", () =>
  visit("localhost", "/database/index.asp", async (page) => {
    assert.deepEqual(await texts(page.locator(".classes a")), ["全部", "个人数据库", "企业数据库"]);
    await follow(page, page.getByRole("link", { name: "企业数据库" }));
    assert.deepEqual(await names(page), ["SQL 2000 型", "MySQL 2000 型", "MySQL 1000 型"]);
    assert.deepEqual(await texts(page.locator(".classes [aria-current]")), ["企业数据库"]);
    await follow(page, page.getByRole("link", { name: "全部", exact: true }));
    assert.equal((await names(page)).length, 7);
  }));

test("an agent's class links are the agent's own", async () => {
  await visit("blue.localhost", "/database/index.asp", async (page) => {
    await follow(page, page.getByRole("link", { name: "小店数据库", exact: true }));
    assert.deepEqual(await cards(page), ["小店数据库|188", "小店 MySQL|138"]);
  });
  await visit("green.localhost", "/mail/mail.asp", async (page) => {
    assert.deepEqual(await texts(page.locator(".classes a")), ["All", "For teams", "For companies"]);
    await follow(page, page.getByRole("link", { name: "For teams" }));
    assert.deepEqual(await names(page), ["Mail for 20", "Mail for 5"]);
  });
});

test("a mistyped class leads back to the whole list", async () => {
  for (const path of ["/database/index.asp", "/mail/mail.asp", "/host/index.asp"]) {
    for (const id of ["abc", "%27", "1%20Or%201=1", "-1"]) {
      await visit("localhost", `${path}?ServerId=${id}`, async (page) => {
        assert.equal(new URL(page.url()).search, "", `${path} ${id}`);
      });
    }
  }
});

test("the domain prices are those of the site, group by group", async () => {
  await visit("localhost", "/domain/index.asp", async (page) => {
    assert.deepEqual(await rows(page, "国际域名价格"), [
      ".com|65|78",
      ".cn|35|45",
      ".net|75|88",
      ".com.cn|35|45",
      ".org|80|92",
    ]);
    assert.deepEqual(await rows(page, "中文域名价格"), [".中国|280|280", ".公司|260|260", ".网络|240|240"]);
  });
  await visit("blue.localhost", "/domain/index.asp", async (page) => {
    assert.deepEqual((await rows(page, "国际域名价格")).slice(0, 3), [".com|59|72", ".cn|29|39", ".net|75|88"]);
    assert.deepEqual(await rows(page, "中文域名价格"), [".中国|258|268", ".网络|240|240"]);
  });
  await visit("green.localhost", "/domain/index.asp", async (page) => {
    assert.deepEqual(await rows(page, "Chinese suffixes, prices"), [".中国|280|280", ".网络|250|255"]);
  });
});

test("the search form ticks the usual suffixes and keeps two-label names apart", () =>
  visit("localhost", "/domain/index.asp", async (page) => {
    const boxes = await page
      .locator(".domain-search [type=checkbox]")
      .evaluateAll((all) => all.map((box) => [box.name, box.value, box.checked]));
    assert.deepEqual(boxes, [
      ["com", "yes", true],
      ["cn", "yes", true],
      ["net", "yes", false],
      ["comcn", "yes", false],
      ["org", "yes", false],
      ["中国", "yes", false],
      ["公司", "yes", false],
      ["网络", "yes", true],
    ]);
  }));

test("a search shows the name under each ticked suffix", () =>
  visit("localhost", "/domain/index.asp", async (page) => {
    await page.getByLabel("想要的名字").fill("rock<b>");
    await page.locator("[name=cn]").uncheck();
    await page.locator("[name=comcn]").check();
    await follow(page, page.getByRole("button", { name: "查询" }));
    assert.deepEqual(await texts(page.locator(".wanted li")), ["rock<b>.com", "rock<b>.com.cn", "rock<b>.网络"]);
  }));

test("the menu's link to the domains is marked", () =>
  visit("localhost", "/domain/domain.asp", async (page) => {
    assert.deepEqual(await texts(page.locator(".menu [aria-current]")), ["域名"]);
  }));

test("the jump list leads to every product, under the site's own names", async () => {
  await visit("localhost", "/products.asp", async (page) => {
    assert.equal(await page.locator("select[name=D1] option").count(), 4 + 40 + 3 + 4 + 3);
    const select = page.locator("select[name=D1]");
    await Promise.all([page.waitForEvent("load"), select.selectOption({ label: "┠企业型 D1" })]);
    assert.equal(await page.locator("h1").textContent(), "企业型 D1");
  });
  await visit("green.localhost", "/products.asp", async (page) => {
    const options = await texts(page.locator("select[name=D1] option"));
    assert.ok(options.includes("┠Oak 80"));
    assert.ok(options.includes("MySQL 200"));
    assert.ok(options.includes("┠Mail for 5"));
    assert.ok(!options.some((name) => name.includes("企业型 D1")));
  });
});

test("every address of the jump list answers", () =>
  visit("localhost", "/products.asp", async (page) => {
    const addresses = await page
      .locator("select[name=D1] option[value]")
      .evaluateAll((all) => [...new Set(all.map((option) => option.value))]);
    for (const path of addresses) {
      const { status } = await answer("localhost", path);
      assert.ok(status === 200 || status === 301 || status === 302, `${path}: ${status}`);
    }
  }));

test("the products page links to the classes of each area", () =>
  visit("localhost", "/products.asp", async (page) => {
    await follow(page, page.getByRole("link", { name: "团队邮局" }));
    assert.deepEqual(await names(page), ["邮局 20 用户", "邮局 5 用户"]);
  }));
