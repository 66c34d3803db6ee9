// Pictures of ten pages in two widths, for people to look at: build/screenshots/NAME-WIDTH.png, and
// NAME.png at half the size for documents.
import assert from "node:assert/strict";
import { mkdirSync, statSync } from "node:fs";
import { dirname, join } from "node:path";
import { after, before, test } from "node:test";
import { signIn, startBrowser, startDemo } from "./demo_site.mjs";

const FOLDER = join(dirname(process.env.RKCLIENT ?? "../../build/rkclient"), "screenshots");
const PAGES = {
  home: ["localhost", "/"],
  "home-blue": ["blue.localhost", "/"],
  "home-green": ["green.localhost", "/"],
  hosting: ["localhost", "/host/index.asp"],
  plan: ["blue.localhost", "/host/info.asp?id=37"],
  domains: ["green.localhost", "/domain/index.asp"],
  shop: ["localhost", "/shop/index.asp"],
  cases: ["green.localhost", "/success/success.asp"],
  news: ["blue.localhost", "/news/news.asp"],
  owner: ["localhost", "/owner/agents.asp"],
};
// A page without its pictures and styles is smaller than this.
const LEAST_BYTES = 8000;

let demo;
let browser;
before(async () => {
  mkdirSync(FOLDER, { recursive: true });
  demo = await startDemo();
  browser = await startBrowser();
});
after(async () => {
  await browser?.close();
  await demo?.stop();
});

async function shoot(width, options, name) {
  const context = await browser.newContext({ viewport: { width, height: 860 }, reducedMotion: "reduce", ...options });
  const page = await context.newPage();
  await page.goto(demo.address("localhost", "/user/login.asp"));
  await signIn(page, "owner", "owner");
  for (const [key, [host, path]] of Object.entries(PAGES)) {
    await page.goto(demo.address(host, path));
    const file = join(FOLDER, name(key));
    await page.screenshot({ path: file, fullPage: options.deviceScaleFactor === undefined });
    assert.ok(statSync(file).size > LEAST_BYTES, file);
  }
  await context.close();
}

for (const width of [360, 1280]) {
  test(`ten pages have their picture at ${width} pixels`, () => shoot(width, {}, (key) => `${key}-${width}.png`));
}

test("ten pages have a small picture", () => shoot(1280, { deviceScaleFactor: 0.5 }, (key) => `${key}.png`));
