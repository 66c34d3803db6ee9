// The demo storefront on a port of its own, and the browser that looks at it.
import { execFileSync, spawn } from "node:child_process";
import { once } from "node:events";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { createInterface } from "node:readline";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

const ROOT = join(dirname(fileURLToPath(import.meta.url)), "../..");
const PROGRAM = process.env.RKCLIENT ?? join(ROOT, "build/rkclient");

// Makes and serves the demo. Its domains carry the port 8080 in the database; here they get the
// port that the system gave.
export async function startDemo() {
  const folder = mkdtempSync(join(tmpdir(), "rk-demo-"));
  const env = { ...process.env, RKCLIENT: PROGRAM };
  execFileSync(join(ROOT, "script/demo-site"), [folder], { env });
  const server = spawn(PROGRAM, ["serve", folder, "--listen", "127.0.0.1:0"], {
    stdio: ["ignore", "pipe", "inherit"],
  });
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
