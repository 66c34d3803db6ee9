import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { openPage, signIn, startBrowser, startDemo } from "./demo_site.mjs";

let demo;
let browser;

before(async () => {
  demo = await startDemo();
  browser = await startBrowser();
});

after(async () => {
  await browser?.close();
  await demo?.stop();
});

// Opens `path`, hands the page and the messages that it showed over, and asserts that nothing went
// wrong on it meanwhile.
async function visit(host, path, look, options) {
  const page = await openPage(browser, options);
  const messages = [];
  page.on("dialog", (dialog) => {
    messages.push(dialog.message());
    return dialog.accept();
  });
  await page.goto(demo.address(host, path));
  await look(page, messages);
  assert.deepEqual(page.troubles, []);
  await page.context().close();
}

const entries = (page) =>
  page.locator(".menu ul").first().locator("a").evaluateAll((links) =>
    links.map((link) => `${link.textContent} ${link.getAttribute("href")}`),
  );
const marked = (page, kind) =>
  page.locator(`.menu a[aria-current=${kind}]`).evaluateAll((links) => links.map((l) => l.textContent));
const here = (page) => new URL(page.url()).pathname;

// --- the menu -----------------------------------------------------------------------------------

test("the master's menu has the five areas and its shop categories", () =>
  visit("localhost", "/", async (page) => {
    const found = await entries(page);
    assert.deepEqual(found.slice(0, 5), [
      "首页 /index.asp",
      "域名 /domain/domain.asp",
      "虚拟主机 /host/index.asp",
      "数据库 /database/index.asp",
      "企业邮局 /mail/mail.asp",
    ]);
    assert.ok(found.includes("网站建设 /shop?Id=1"), found.join());
    assert.ok(found.includes("安全服务 /shop?Id=2"), found.join());
  }));

test("an agent's menu has its own shop categories, one of which leads elsewhere", async () => {
  await visit("blue.localhost", "/", async (page) => {
    const found = await entries(page);
    assert.ok(found.includes("店铺装修 /shop?Id=91"), found.join());
    assert.ok(!found.join().includes("网站建设"), found.join());
  });
  await visit("green.localhost", "/", async (page) => {
    assert.ok((await entries(page)).includes("Web design /shop?Id=92"));
    const outside = page.locator(".menu").getByRole("link", { name: "Status" });
    assert.equal(await outside.getAttribute("href"), "http://status.example/");
    assert.equal(await outside.getAttribute("target"), "_blank");
  });
});

test("the running page is marked in the menu of every storefront", async () => {
  const places = [
    ["/", 0],
    ["/domain/domain.asp", 1],
    ["/host/index.asp", 2],
    ["/database/index.asp", 3],
    ["/mail/mail.asp", 4],
  ];
  for (const host of ["localhost", "blue.localhost", "green.localhost"]) {
    await visit(host, "/", async (page) => {
      for (const [path, number] of places) {
        await page.goto(demo.address(host, path));
        const name = (await entries(page))[number].split(" ")[0];
        assert.deepEqual(await marked(page, "page"), [name], `${host}${path}`);
      }
    });
  }
});

test("a page of the second row is marked by its folder", () =>
  visit("green.localhost", "/order/index.asp?plan=H7", async (page) => {
    assert.deepEqual(await marked(page, "page"), []);
    assert.deepEqual(await marked(page, "true"), ["Order"]);
  }));

test("on a phone the marked entry is in sight", () =>
  visit(
    "green.localhost",
    "/contact.asp",
    async (page) => {
      const box = await page.locator(".menu a[aria-current]").boundingBox();
      assert.ok(box.x >= 0 && box.x + box.width <= 360, JSON.stringify(box));
    },
    { width: 360 },
  ));

test("every entry of every menu leads to a page with the menu on it", async () => {
  for (const host of ["localhost", "blue.localhost", "green.localhost"]) {
    await visit(host, "/", async (page) => {
      const addresses = await page
        .locator(".menu a:not([target])")
        .evaluateAll((links) => links.map((link) => link.href));
      assert.ok(addresses.length >= 15, addresses.join());
      for (const address of addresses) {
        const text = await page.evaluate((href) => fetch(href).then((answer) => answer.text()), address);
        assert.match(text, /<nav class="menu"/, address);
      }
    });
  }
});

// --- the order form -----------------------------------------------------------------------------

const fill = async (page, values) => {
  for (const [label, value] of Object.entries(values)) await page.getByLabel(label).fill(value);
};
const send = (page, name) =>
  Promise.all([page.waitForEvent("load"), page.getByRole("button", { name }).click()]);

test("the plan that a visitor picked stands in the order form", () =>
  visit("localhost", "/contact.asp?plan=H40", async (page) => {
    await Promise.all([page.waitForEvent("load"), page.locator(".note a").click()]);
    assert.equal(await page.getByLabel("方案编号").inputValue(), "H40");
  }));

test("an order that lacks something shows why and goes back with what was filled in", () =>
  visit("localhost", "/order/index.asp", async (page, messages) => {
    await fill(page, { 邮箱: "li@shop.example" });
    await send(page, "提交订单");
    await page.waitForURL("**/order/index.asp");
    assert.deepEqual(messages, ["请填写姓名。"]);
    assert.equal(await page.getByLabel("邮箱").inputValue(), "li@shop.example");
  }));

test("an order that is whole goes on to its page", () =>
  visit("localhost", "/order/index.asp?plan=H40", async (page, messages) => {
    await fill(page, { 姓名: "李 <b>", 邮箱: "li@shop.example" });
    await page.getByLabel("城市").selectOption("440300");
    await send(page, "提交订单");
    await page.waitForURL("**/order/done.asp");
    assert.deepEqual(messages, ["订单已收到，谢谢！"]);
    assert.deepEqual(await page.locator(".facts dd").allTextContents(), [
      "李 <b>",
      "li@shop.example",
      "H40",
      "广东 · 深圳",
    ]);
  }));

test("the English agent romanises the region", () =>
  visit("green.localhost", "/order/index.asp", async (page, messages) => {
    await fill(page, { Name: "Ann", "E-mail": "ann@shop.example" });
    await send(page, "Send the order");
    await page.waitForURL("**/order/done.asp");
    assert.deepEqual(messages, ["We have your order. Thank you!"]);
    assert.equal(await page.locator(".facts dd").last().textContent(), "GuangDong · GuangZhou");
  }));

test("a form of another site is refused, and one without the session's secret", () =>
  visit("localhost", "/", async (page, messages) => {
    const post = (host, secret) =>
      page.evaluate(
        async ([url, value]) => {
          const body = new URLSearchParams({ name: "x", mail: "x@shop.example", form_secret: value });
          const options = { method: "POST", body, mode: "no-cors" };
          const answer = await fetch(url, options);
          return answer.type === "opaque" ? "opaque" : answer.text();
        },
        [demo.address(host, "/order/save.asp"), secret],
      );
    assert.match(await post("localhost", "guessed"), /^\s*<script>alert\('表单已过期/);
    assert.match(await post("localhost", ""), /^\s*<script>alert\('表单已过期/);
    // The page of the master's site posts to the agent's.
    assert.equal(await post("blue.localhost", "guessed"), "opaque");
    await page.goto(demo.address("blue.localhost", "/order/done.asp"));
    assert.equal(here(page), "/order/index.asp");
    assert.deepEqual(messages, []);
  }));

test("a post without a referer gets the library's refusal", async () => {
  const answer = await fetch(demo.address("localhost", "/order/save.asp").replace("localhost", "127.0.0.1"), {
    method: "POST",
    body: new URLSearchParams({ name: "x" }),
    referrerPolicy: "no-referrer",
  });
  assert.match(await answer.text(), /系统信息提示.*数据来源错误/s);
});

// --- provinces and cities -----------------------------------------------------------------------

const cities = (page) =>
  page.getByLabel("城市").locator("option").evaluateAll((options) => options.map((o) => o.textContent));

test("choosing a province offers its cities", () =>
  visit("localhost", "/order/index.asp", async (page) => {
    assert.deepEqual((await cities(page)).slice(0, 3), ["广州", "韶关", "深圳"]);
    await page.getByLabel("省份").selectOption({ label: "四川" });
    await page.locator("#city option[value='510100']").waitFor({ state: "attached" });
    assert.deepEqual((await cities(page)).slice(0, 2), ["成都", "自贡"]);
  }));

test("a municipality is its only city", () =>
  visit("localhost", "/order/index.asp", async (page) => {
    await page.getByLabel("省份").selectOption({ label: "上海" });
    await page.locator("#city option[value='310000']").waitFor({ state: "attached" });
    assert.deepEqual(await cities(page), ["上海"]);
  }));

test("a province that is none has no cities", async () => {
  for (const wrong of ["", "4", "444", "%25", "4'", "x1"]) {
    const answer = await fetch(demo.address("127.0.0.1", `/order/cities.asp?province=${wrong}`));
    assert.equal(answer.status, 200);
    assert.equal((await answer.text()).trim(), "", wrong);
  }
});

// --- the money log ------------------------------------------------------------------------------

// Sends the form, whose answer shows a message and leads to the form again.
async function record(page) {
  const button = page.getByRole("button", { name: "记账" });
  await Promise.all([page.waitForEvent("dialog"), button.click()]);
  await button.waitFor();
}
const firstRow = (page) => page.locator("tbody tr").first().locator("th, td").allTextContents();

test("a movement is recorded and shown above the last ones", () =>
  visit("localhost", "/user/login.asp", async (page, messages) => {
    await signIn(page, "owner", "owner");
    await page.goto(demo.address("localhost", "/owner/money.asp"));
    const before = await page.locator("tbody tr").count();
    await fill(page, { 客户: "o'neil", 金额: "120.50", 说明: "<i>汇款</i>" });
    await record(page);
    assert.deepEqual((await firstRow(page)).slice(0, 5), ["o'neil", "充值", "120.50", "120.50", "<i>汇款</i>"]);
    assert.equal(await page.locator("tbody tr").count(), before + 1);
    await fill(page, { 客户: "o'neil", 金额: "20.5" });
    await page.getByLabel("类型").selectOption("spend");
    await record(page);
    assert.deepEqual((await firstRow(page)).slice(0, 5), ["o'neil", "消费", "-20.50", "100.00", ""]);
    assert.deepEqual(messages, ["已记账。", "已记账。"]);
  }));

test("an amount that is no number is not recorded", () =>
  visit("localhost", "/user/login.asp", async (page, messages) => {
    await signIn(page, "owner", "owner");
    await page.goto(demo.address("localhost", "/owner/money.asp"));
    const before = await firstRow(page);
    for (const amount of ["", "x", "-5", "1e9", "1.234"]) {
      await fill(page, { 客户: "ann", 金额: amount });
      await record(page);
    }
    assert.deepEqual(messages, Array(5).fill("金额须为数字，最多两位小数。"));
    await page.goto(demo.address("localhost", "/owner/money.asp"));
    assert.deepEqual(await firstRow(page), before);
  }));
