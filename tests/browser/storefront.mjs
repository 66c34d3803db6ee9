// The demo storefront, served from a fresh folder on a free port, and a browser to look at it with.
// In the browser it stands at its usual addresses (http://localhost:8080/ and the agents' hosts):
// their connections are led to the free port, so that tests need no port of their own.

import { execFileSync, spawn } from "node:child_process";
import { once } from "node:events";
import { existsSync, mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { createInterface } from "node:readline";
import { fileURLToPath } from "node:url";
import { chromium } from "playwright-core";

const root = join(dirname(fileURLToPath(import.meta.url)), "../..");
const program = process.env.RKCLIENT ?? join(root, "build/rkclient");
const browserPath = process.env.CHROMIUM ?? ["/usr/bin/chromium", "/usr/bin/google-chrome"].find(existsSync);

async function serve(site) {
  const server = spawn(program, ["serve", site, "--listen", "127.0.0.1:0"], {
    stdio: ["ignore", "pipe", "inherit"],
  });
  const lines = createInterface({ input: server.stdout });
  const [line] = await Promise.race([
    once(lines, "line"),
    once(server, "exit").then(([code]) => Promise.reject(new Error(`rkclient serve ended: exit ${code}`))),
  ]);
  const port = /^serving .* at http:\/\/127\.0\.0\.1:(\d+)\/$/.exec(line)?.[1];
  if (!port) throw new Error(`no address in "${line}"`);
  return { server, port };
}

/** Starts server and browser; `close()` ends both and takes the folder away. */
export async function openStorefront() {
  const folder = mkdtempSync(join(tmpdir(), "rkclient-browser-"));
  const site = join(folder, "site");
  execFileSync(join(root, "script/demo-site"), [site], { env: { ...process.env, RKCLIENT: program } });
  const { server, port } = await serve(site);
  const browser = await chromium.launch({
    executablePath: browserPath,
    chromiumSandbox: process.getuid() !== 0, // Chromium refuses its sandbox to root
    args: [`--host-resolver-rules=MAP *:8080 127.0.0.1:${port}`],
  });
  return {
    browser,
    site,
    async close() {
      await browser.close();
      server.kill("SIGTERM");
      const [code] = server.exitCode === null ? await once(server, "exit") : [server.exitCode];
      rmSync(folder, { recursive: true, force: true });
      if (code !== 0) throw new Error(`rkclient serve ended with exit ${code}`);
    },
  };
}

/** A new page whose failed requests and script errors are collected in `page.complaints`. */
export async function openPage(browser, options = {}) {
  const page = await browser.newPage(options);
  page.complaints = [];
  page.on("pageerror", (error) => page.complaints.push(`script: ${error.message}`));
  page.on("response", (answer) => {
    if (answer.status() >= 400) page.complaints.push(`${answer.status()} ${answer.url()}`);
  });
  page.on("requestfailed", (request) => page.complaints.push(`failed: ${request.url()}`));
  return page;
}
