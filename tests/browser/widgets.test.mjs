// The scripts that bring the slideshow and the link strips to life.
import assert from "node:assert/strict";
import { test } from "node:test";
import { demoVisits } from "./demo_site.mjs";

const { visit, address } = demoVisits();

const shown = (page) => page.locator("#pic").getAttribute("src");

const stopClock = async (page) => {
  await page.clock.install({ time: 0 });
  await page.clock.pauseAt(1000);
};

// A page whose clock only moves when the test says so.
const atRest = (host, look, media = {}) =>
  visit(host, "/contact.asp", async (page) => {
    await page.emulateMedia({ reducedMotion: "no-preference", ...media });
    await stopClock(page);
    await page.goto(address(host, "/"));
    await look(page);
  });

test("the pictures change every five seconds, and begin again behind the last", () =>
  atRest("localhost", async (page) => {
    const seen = [];
    for (let n = 0; n < 5; n++) {
      seen.push(await shown(page));
      await page.clock.runFor(4900);
      assert.equal(await shown(page), seen[n]);
      await page.clock.runFor(101);
    }
    assert.deepEqual(seen, [1, 2, 3, 4, 1].map((n) => `/images/slide${n}.svg`));
  }));

test("a small picture jumps, and the show goes on from there", () =>
  atRest("localhost", async (page) => {
    await page.getByRole("link", { name: "从第一件商品到整座商城" }).last().click();
    assert.equal(await shown(page), "/images/slide3.svg");
    assert.equal(await page.locator("#url").getAttribute("href"), "/shop?Id=1");
    assert.equal(await page.locator("#pic").getAttribute("alt"), "从第一件商品到整座商城");
    assert.equal(await page.locator("#xxjdjj3").getAttribute("class"), "bxx");
    await page.clock.runFor(5001);
    assert.equal(await shown(page), "/images/slide4.svg");
  }));

test("the button stops the show, also after a jump, and lets it go on", () =>
  atRest("green.localhost", async (page) => {
    await page.getByRole("button", { name: "Stop the pictures" }).click();
    await page.clock.runFor(11000);
    assert.equal(await shown(page), "/images/slide-green1.svg");
    await page.locator("#xxjdjj3").click();
    await page.clock.runFor(11000);
    assert.equal(await shown(page), "/images/slide-green3.svg");
    await page.getByRole("button", { name: "Let the pictures go on" }).click();
    await page.clock.runFor(5001);
    assert.equal(await shown(page), "/images/slide-green2.svg");
  }));

test("the show stands still for visitors who asked for less motion", () =>
  atRest(
    "blue.localhost",
    async (page) => {
      await page.clock.runFor(11000);
      assert.equal(await shown(page), "/images/slide-blue1.svg");
      assert.equal(await page.getByRole("button", { name: "继续播放" }).count(), 1);
    },
    { reducedMotion: "reduce" },
  ));

test("no link of the show is fetched as a picture", () =>
  visit("localhost", "/contact.asp", async (page) => {
    const asked = [];
    page.on("request", (request) => asked.push(new URL(request.url()).pathname));
    await page.goto(address("localhost", "/"));
    await page.waitForLoadState("networkidle");
    assert.ok(asked.includes("/images/slide4.svg"), asked.join());
    assert.deepEqual(asked.filter((path) => /^\/(host|shop)/.test(path)), []);
  }));

// The strip of partner links, made so low that it has more than it shows.
const strip = async (page, media) => {
  await page.emulateMedia({ reducedMotion: "no-preference", ...media });
  await stopClock(page);
  await page.setContent(
    `<body style="margin:0"><div id="s"><ul style="margin:0;padding:0;list-style:none">` +
      [1, 2, 3].map((n) => `<li style="height:31px"><a href="#${n}">${n}</a></li>`).join("") +
      `</ul></div><p style="margin-top:200px"><button>away</button></p></body>`,
  );
  await page.addScriptTag({ url: address("localhost", "/js/marquee.js") });
  // Smooth movement is the browser's; the test wants to see where it ends.
  await page.evaluate(() => {
    const scroll = Element.prototype.scrollTo;
    Element.prototype.scrollTo = function (to) {
      scroll.call(this, { ...to, behavior: "instant" });
    };
    new Marquee("s", 0, 31, 200, 30, 4000, 0, 0);
  });
};
const place = (page) => page.locator("#s").evaluate((node) => node.scrollTop);

test("a strip moves on after every pause, and back to its top", () =>
  visit("localhost", "/contact.asp", async (page) => {
    await strip(page);
    const places = [];
    for (let n = 0; n < 4; n++) {
      places.push(await place(page));
      await page.clock.runFor(4000);
    }
    assert.deepEqual(places, [0, 31, 62, 0]);
    assert.equal(await page.locator("#s").evaluate((node) => node.clientHeight), 31);
  }));

test("a strip waits while it is pointed at or has the focus", () =>
  visit("localhost", "/contact.asp", async (page) => {
    await strip(page);
    await page.locator("#s").hover();
    await page.clock.runFor(9000);
    assert.equal(await place(page), 0);
    await page.mouse.move(300, 400);
    await page.clock.runFor(4000);
    assert.equal(await place(page), 31);
    await page.locator("#s a").nth(1).focus();
    await page.clock.runFor(9000);
    assert.equal(await place(page), 31);
    await page.getByRole("button").focus();
    await page.clock.runFor(4001);
    assert.equal(await place(page), 62);
  }));

test("a strip stands still, to be scrolled by hand, where less motion is asked for", () =>
  visit("localhost", "/contact.asp", async (page) => {
    await strip(page, { reducedMotion: "reduce" });
    await page.clock.runFor(9000);
    assert.equal(await place(page), 0);
    assert.equal(await page.locator("#s").evaluate((node) => getComputedStyle(node).overflowY), "auto");
  }));

test("both strips of every storefront are strips", async () => {
  for (const host of ["localhost", "blue.localhost", "green.localhost"]) {
    await visit(host, "/links/index.asp", async (page) => {
      assert.equal(await page.locator("#fl_CSS.marquee li").count() > 0, true, host);
      assert.equal(await page.locator("#fl_CSS1.marquee li").count() > 0, true, host);
    });
  }
});
