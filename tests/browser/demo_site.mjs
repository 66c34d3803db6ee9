// The demo storefront on a port of its own, and the browser that looks at it.
import assert from "node:assert/strict";
import { execFileSync, spawn } from "node:child_process";
import { once } from "node:events";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { createInterface } from "node:readline";
import { after, before } from "node:test";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

const ROOT = join(dirname(fileURLToPath(import.meta.url)), "../..");
const PROGRAM = process.env.RKCLIENT ?? join(ROOT, "build/rkclient");

// Makes and serves the demo. Its domains carry the port 8080 in the database; here they get the
// port that the system gave.
// With `services` the stand-ins of the outside services run beside it.
export async function startDemo({ services = false } = {}) {
  const folder = mkdtempSync(join(tmpdir(), "rk-demo-"));
  const env = { ...process.env, RKCLIENT: PROGRAM };
  execFileSync(join(ROOT, "script/demo-site"), [folder], { env });
  const beside = services ? [join(ROOT, "demo/fakes/beside"), folder] : [];
  const [first, ...rest] = [...beside, PROGRAM, "serve", folder, "--listen", "127.0.0.1:0"];
  const server = spawn(first, rest, { stdio: ["ignore", "pipe", "inherit"] });
  const port = await listeningPort(server);
  execFileSync("sqlite3", [
    join(folder, "data/shop.db"),
    `Update SysTem Set SiteDomain=Replace(SiteDomain,':8080',':${port}');
     Update Rk_AgentSet Set AgentDomain=Replace(AgentDomain,':8080',':${port}');`,
  ]);
  return {
    // `host` is "localhost", "blue.localhost" or "green.localhost".
    address: (host, path) => `http://${host}:${port}${path}`,
    async stop() {
      const gone = server.exitCode === null ? once(server, "exit") : undefined;
      server.kill("SIGTERM");
      await gone;
      rmSync(folder, { recursive: true });
      return server.exitCode;
    },
  };
}

// The port in the line that says that the server is ready.
async function listeningPort(server) {
  for await (const line of createInterface({ input: server.stdout })) {
    const found = /^serving .* at http:\/\/127\.0\.0\.1:(\d+)\/$/.exec(line);
    if (found) return Number(found[1]);
  }
  throw new Error(`the server ended with ${server.exitCode}`);
}

export function startBrowser() {
  return chromium.launch({
    executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
    args: [
      "--headless",
      "--no-sandbox",
      "--disable-gpu",
      "--disable-quic",
      "--no-first-run",
      "--disable-background-networking",
      "--disable-component-update",
      "--disable-sync",
    ],
  });
}

// A page that remembers what went wrong on it: console errors, script errors, answers from 400 on,
// requests to another computer.
export async function openPage(browser, { width = 1280, scheme = "light" } = {}) {
  const context = await browser.newContext({
    viewport: { width, height: 800 },
    colorScheme: scheme,
  });
  const page = await context.newPage();
  page.troubles = [];
  page.on("console", (message) => {
    if (message.type() === "error") page.troubles.push(message.text());
  });
  page.on("pageerror", (error) => page.troubles.push(String(error)));
  page.on("response", (answer) => {
    if (answer.status() >= 400) page.troubles.push(`${answer.status()} ${answer.url()}`);
  });
  page.on("request", (request) => {
    const { hostname } = new URL(request.url());
    if (hostname !== "localhost" && !hostname.endsWith(".localhost")) {
      page.troubles.push(`foreign ${request.url()}`);
    }
  });
  return page;
}

// The demo and a browser for all tests of one file. `visit` opens a page, hands it over, and asserts
// that nothing went wrong on it meanwhile.
export function demoVisits(options) {
  let demo;
  let browser;
  before(async () => {
    demo = await startDemo(options);
    browser = await startBrowser();
  });
  after(async () => {
    await browser?.close();
    await demo?.stop();
  });
  return {
    address: (host, path) => demo.address(host, path),
    async visit(host, path, look, options) {
      const page = await openPage(browser, options);
      await page.goto(demo.address(host, path));
      await look(page);
      assert.deepEqual(page.troubles, []);
      await page.context().close();
    },
  };
}

// Clicks the link and waits until the page behind it is whole.
export const follow = (page, link) => Promise.all([page.waitForEvent("load"), link.click()]);

// On /user/login.asp. Owners land at their overview, customers at their account.
export async function signIn(page, name, password) {
  await page.fill("#account", name);
  await page.fill("#password", password);
  await follow(page, page.locator("form.tool button"));
}

// What a plan's card says: its name, price and the values of its list, one text each.
export const cards = (page) =>
  page.locator(".plan").evaluateAll((plans) =>
    plans.map((plan) => {
      const words = (selector) =>
        [...plan.querySelectorAll(selector)].map((node) => node.textContent.trim());
      return [...words("h3"), ...words(".sum, .price b"), ...words("dd")].join("|");
    }),
  );

export const names = (page) =>
  page.locator(".plan h3").evaluateAll((titles) => titles.map((title) => title.textContent));
