import assert from "node:assert/strict";
import { test } from "node:test";
import { demoVisits, follow, signIn } from "./demo_site.mjs";

const { visit } = demoVisits({ services: true });
const visitAsOwner = (host, path, look, options) =>
  visit(host, "/user/login.asp", async (page) => {
    await signIn(page, "owner", "owner");
    await page.goto(new URL(path, page.url()).href);
    await look(page);
  }, options);

// Fills fields and sends their form.
async function send(page, fields, button = "form.tool button") {
  for (const [name, value] of Object.entries(fields)) await page.fill(`#${name}`, value);
  await follow(page, page.locator(button).first());
}
const outcome = (page) => page.locator("[role=status]").innerText();

test("every tool is one click away from the list of tools", () =>
  visit("localhost", "/services/index.asp", async (page) => {
    assert.equal(await page.locator(".menu [aria-current]").innerText(), "工具");
    const links = await page.locator(".tools a").evaluateAll((all) => all.map((a) => a.pathname));
    assert.equal(links.length, 3);
    for (const link of links) {
      await page.goto(new URL(link, page.url()).href);
      assert.equal(await page.locator("form.tool").count(), 1, link);
    }
  }));

test("a free domain and a taken one are told apart", () =>
  visit("localhost", "/services/domain.asp", async (page) => {
    await send(page, { domain: "My-Shop.example" });
    assert.equal(await outcome(page), "my-shop.example 可以注册。");
    await send(page, { domain: "shanhai.example" });
    assert.equal(await outcome(page), "shanhai.example 已被注册。");
    await send(page, { domain: "a <b>.example" });
    assert.equal(await outcome(page), "a <b>.example 不是域名。");
    await send(page, { domain: "中文.example" });
    assert.equal(await outcome(page), "中文.example 可以注册。");
  }));

test("the English storefront says it in English", () =>
  visit("green.localhost", "/services/domain.asp", async (page) => {
    await send(page, { domain: "taken.example" });
    assert.equal(await outcome(page), "taken.example is taken.");
  }));

test("a filing number is on record, on record for another domain, or not on record", () =>
  visit("localhost", "/services/filing.asp", async (page) => {
    await send(page, { number: "粤ICP备20210001号", domain: "shanhai.example" });
    assert.equal(await outcome(page), "备案号有效，与域名相符。");
    await send(page, { number: "粤ICP备20210001号", domain: "other.example" });
    assert.equal(await outcome(page), "备案号与域名不符，或备案系统没有回答。");
    await send(page, { number: "粤ICP备9号", domain: "shanhai.example" });
    assert.equal(await outcome(page), "备案库中没有这个备案号。");
  }));

test("lines of the order log come back, the last first", () =>
  visitAsOwner("localhost", "/owner/log.asp", async (page) => {
    await send(page, { message: "订单 1024 已付款" });
    await send(page, { message: "<b>订单 1025</b>" });
    const lines = await page.locator(".lines li").allInnerTexts();
    assert.equal(lines.length, 2);
    assert.match(lines[0], /^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \[山海主机\] <b>订单 1025<\/b>$/);
    assert.match(lines[1], /订单 1024 已付款$/);
  }));

test("settings are kept in the storefront's own section", async () => {
  await visitAsOwner("localhost", "/owner/settings.asp", async (page) => {
    await send(page, { notice: " 春节放假 ", hours: "9:00" });
    assert.equal(await outcome(page), "已保存。");
    assert.equal(await page.inputValue("#notice"), "春节放假");
  });
  await visitAsOwner("blue.localhost", "/owner/settings.asp", async (page) => {
    assert.equal(await page.inputValue("#notice"), "");
    await send(page, { notice: "蓝湾" });
  });
  await visitAsOwner("localhost", "/owner/settings.asp", async (page) => {
    assert.equal(await page.inputValue("#notice"), "春节放假");
    await send(page, { hours: "" });
    assert.equal(await page.inputValue("#hours"), "");
    await send(page, {}, "[name=clear]");
    assert.equal(await page.inputValue("#notice"), "");
  });
  await visitAsOwner("blue.localhost", "/owner/settings.asp", async (page) => {
    assert.equal(await page.inputValue("#notice"), "蓝湾");
  });
});

test("the console shows what the control server answers", () =>
  visitAsOwner("localhost", "/owner/console.asp", async (page) => {
    await send(page, { command: "ping" });
    assert.equal(await outcome(page), "> ping\n200 pong");
    await send(page, { command: "open blog H2" });
    assert.equal(await outcome(page), "> open blog H2\n200 blog 已开通");
    await send(page, { command: "list" });
    assert.equal(await outcome(page), "> list\n200 blog (H2), shanhai (H1)");
  }));
