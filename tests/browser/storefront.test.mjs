import assert from "node:assert/strict";
import { test } from "node:test";
import { cards, demoVisits, follow, names } from "./demo_site.mjs";

const { visit } = demoVisits();

test("the master's home page shows the six newest plans under the master's prices", () =>
  visit("localhost", "/", async (page) => {
    assert.equal(await page.title(), "首页 - 山海主机");
    assert.deepEqual(await cards(page), [
      "经济型 A1|¥68|1 GB|60|Access|ASP / PHP|-",
      "经济型 A2|¥98|2 GB|80|Access|ASP / PHP|-",
      "经济型 A3|¥128|3 GB|100|Access/MySql|ASP / PHP|12",
      "经济型 A5|¥158|5 GB|120|Access/MySql|ASP / PHP|15",
      "经济型 静态版|¥39.5|1 GB|50|Access/MySql|HTML|-",
      "经济型 个人版|¥79|2 GB|60|Access/MySql|ASP|8",
    ]);
  }));

test("an agent's home page shows the agent's own names and prices", () =>
  visit("blue.localhost", "/", async (page) => {
    assert.equal(await page.title(), "首页 - 蓝湾建站");
    assert.deepEqual(await cards(page), [
      "入门 1 号|66",
      "入门 2 号|92",
      "入门 3 号|118",
      "入门 5 号|148",
      "名片网页|36",
      "入门 8 号|188",
    ]);
  }));

test("the English agent speaks English and leaves out what agents may not sell", () =>
  visit("green.localhost", "/", async (page) => {
    assert.equal(await page.locator("html").getAttribute("lang"), "en");
    assert.deepEqual(await cards(page), [
      "Seed 1|¥75|1 GB|60|Access|ASP / PHP|-",
      "Seed 2|¥110|2 GB|80|Access|ASP / PHP|-",
      "Seed 3|¥140|3 GB|100|Access/MySql|ASP / PHP|13",
      "Seed 5|¥175|5 GB|120|Access/MySql|ASP / PHP|16.5",
      "Seed Static|¥45|1 GB|50|Access/MySql|HTML|-",
      "Seed 8|¥220|8 GB|150|Access/MySql|ASP / PHP|21",
    ]);
  }));

test("a plan that the agent gave no name keeps the master's name and price", () =>
  visit("blue.localhost", "/host/index.asp?Page=2", async (page) => {
    assert.deepEqual((await cards(page)).slice(0, 2), ["标准型 B5|528", "社群空间|448"]);
  }));

test("plans without a limit of connections say so", () =>
  visit("localhost", "/host/index.asp?ServerId=4&View=table", async (page) => {
    const cell = page.locator("#plan-13 [data-label=并发连接]");
    assert.equal(await cell.textContent(), "无限制");
    assert.equal(await page.locator("#plan-14 [data-label=并发连接]").textContent(), "2000");
  }));

test("the pager walks through all forty plans, nine a page", () =>
  visit("localhost", "/host/", async (page) => {
    const seen = [];
    const labels = [];
    for (;;) {
      seen.push(...(await names(page)));
      labels.push(await page.locator(".pager span").textContent());
      const next = page.locator(".pager [rel=next][href]");
      if ((await next.count()) === 0) break;
      await follow(page, next);
    }
    assert.deepEqual(labels, ["第 1 / 5 页", "第 2 / 5 页", "第 3 / 5 页", "第 4 / 5 页", "第 5 / 5 页"]);
    assert.equal(seen.length, 40);
    assert.equal(new Set(seen).size, 40);
    assert.equal(seen[39], "海外型 外贸版");
  }));

test("the first page has no way back and the second leads to the first", () =>
  visit("localhost", "/host/index.asp", async (page) => {
    assert.equal(await page.locator(".pager [rel=prev][href]").count(), 0);
    await follow(page, page.locator(".pager [rel=next]"));
    await follow(page, page.locator(".pager [rel=prev]"));
    assert.equal((await names(page))[0], "经济型 A1");
  }));

test("a page past the end shows the last plans", () =>
  visit("localhost", "/host/index.asp?Page=99", async (page) => {
    assert.deepEqual(await names(page), [
      "海外型 东京 T3",
      "海外型 法兰克福 F1",
      "海外型 法兰克福 F3",
      "海外型 外贸版",
    ]);
    assert.equal(await page.locator(".pager [rel=next][href]").count(), 0);
  }));

test("the master's class filter leaves the plans of that class", () =>
  visit("localhost", "/host/index.asp", async (page) => {
    await follow(page, page.getByRole("link", { name: "海外型", exact: true }));
    assert.deepEqual(await names(page), [
      "海外型 香港 H1",
      "海外型 香港 H3",
      "海外型 香港 H5",
      "海外型 东京 T1",
      "海外型 东京 T3",
      "海外型 法兰克福 F1",
      "海外型 法兰克福 F3",
      "海外型 外贸版",
    ]);
    assert.equal(await page.locator(".pager").isVisible(), false);
  }));

test("an agent's class filter goes by the agent's own classes", () =>
  visit("blue.localhost", "/host/index.asp", async (page) => {
    await follow(page, page.getByRole("link", { name: "海外主机" }));
    assert.deepEqual(await names(page), ["香港 轻量版", "香港 标准版", "东京 轻量版", "欧洲 标准版"]);
  }));

test("the class stays while the visitor turns pages and changes the view", () =>
  visit("green.localhost", "/host/index.asp", async (page) => {
    await follow(page, page.getByRole("link", { name: "Business" }));
    await follow(page, page.getByRole("link", { name: "Next" }));
    assert.equal(await page.locator(".pager span").textContent(), "Page 2 of 2");
    assert.equal((await names(page)).length, 9);
    await follow(page, page.getByRole("link", { name: "Table" }));
    assert.equal(await page.locator("tbody tr").count(), 9);
    assert.equal(await page.locator("tbody th").first().textContent(), "Sprout 5");
  }));

test("database plans are listed by falling price", () =>
  visit("localhost", "/database/index.asp", async (page) => {
    assert.deepEqual(await cards(page), [
      "SQL 2000 型|¥668|2000 MB|1000 MB",
      "SQL 1000 型|¥368|1000 MB|500 MB",
      "SQL 500 型|¥198|500 MB|250 MB",
      "MySQL 2000 型|¥468|2000 MB",
      "MySQL 1000 型|¥268|1000 MB",
      "MySQL 500 型|¥150|500 MB",
      "MySQL 200 型|¥80|200 MB",
    ]);
  }));

test("an agent's mail plans bear the agent's names", () =>
  visit("green.localhost", "/mail/mail.asp", async (page) => {
    assert.deepEqual(await cards(page), [
      "Mail for 50|¥660|50000 MB",
      "Mail for 20|¥330|20000 MB",
      "Mail for 5|¥110|5000 MB",
    ]);
  }));

test("a mistyped class or page leads back to the whole list", async () => {
  for (const query of ["ServerId=abc", "Page=x"]) {
    await visit("localhost", `/host/index.asp?${query}`, async (page) => {
      assert.equal(new URL(page.url()).search, "");
      assert.equal((await names(page)).length, 9);
    });
  }
});

test("a plan's button tells its name and leads to its number", () =>
  visit("localhost", "/", async (page) => {
    await follow(page, page.getByRole("link", { name: "选购 经济型 A1" }));
    assert.equal(await page.locator(".note strong").textContent(), "H40");
  }));

test("a plan number that is a script stays out of the page", () =>
  visit("localhost", "/contact.asp?plan=%3Cscript%3E1%3C/script%3E", async (page) => {
    assert.equal(await page.locator(".note").count(), 0);
  }));

const storefronts = ["localhost", "blue.localhost", "green.localhost"];


// Relative luminance and contrast as the accessibility guidelines for the web reckon them.
function contrast(one, other) {
  const luminance = (colour) => {
    const parts = colour.match(/[\d.]+/g).slice(0, 3).map((part) => {
      const share = Number(part) / 255;
      return share <= 0.03928 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
  };
  const [light, dark] = [luminance(one), luminance(other)].sort((a, b) => b - a);
  return (light + 0.05) / (dark + 0.05);
}

for (const scheme of ["light", "dark"]) {
  test(`texts stand out from their ground in the ${scheme} scheme`, async () => {
    const pairs = [
      ["ink", "ground"],
      ["ink", "panel"],
      ["ink", "soft"],
      ["quiet", "ground"],
      ["quiet", "panel"],
      ["link", "panel"],
      ["action-ink", "action"],
      ["strip-ink", "strip"],
    ];
    for (const host of storefronts) {
      const look = async (page) => {
        for (const [text, ground] of pairs) {
          const colours = await page.evaluate(
            (names) =>
              names.map((name) => {
                const probe = document.body.appendChild(document.createElement("i"));
                probe.style.color = `var(--${name})`;
                return getComputedStyle(probe).color;
              }),
            [text, ground],
          );
          const ratio = contrast(...colours);
          assert.ok(ratio >= 4.5, `${host}: ${text} on ${ground} is ${ratio.toFixed(2)}`);
        }
      };
      await visit(host, "/", look, { scheme });
    }
  });
}
