// A real browser, and the program whose pages it looks at.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import { connect, createServer } from "node:net";
import puppeteer from "puppeteer-core";

export const pause = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

let faults = 0;
export function expect(holds, what) {
  if (holds) return;
  faults += 1;
  console.error(`FAULT: ${what}`);
}

/** corvanel-console, serving a session of these settings on a port (0: any). */
export class Clock {
  static async start(bin, settings, port = 0, store = "/nowhere/settings.json", more = []) {
    const clock = new Clock();
    const set = Object.entries(settings).flatMap(([key, value]) => ["--set", `${key}=${value}`]);
    const program = spawn(`${bin}/corvanel-console`,
      ["run", "--store", store, "--serve", `127.0.0.1:${port}`, ...set, ...more]);
    clock.program = program;
    clock.told = "";
    program.stderr.on("data", (text) => console.error(String(text)));
    program.stdout.on("data", (text) => { clock.told += text; });
    while (!clock.told.includes("lead")) await once(program.stdout, "data");
    clock.url = clock.told.split("\t")[1].split("\n")[0];
    return clock;
  }
  /** Where the next device comes in, with the code for it. */
  get invitation() {
    return this.told.match(/(?<=lead\t)\S+/g).at(-1);
  }
  get port() {
    return new URL(this.url).port;
  }
  async state() {
    return (await fetch(`${this.url}state`)).json();
  }
  async stop() {
    this.program.kill("SIGKILL");
    if (this.program.exitCode === null && this.program.signalCode === null) await once(this.program, "exit");
  }
}

/** A bad network before a port: everything takes its time each way, and now and then much more. */
export async function badNetwork(port, { delay = 150, jitter = 40, stall = 400, stalls = 0.02 } = {}) {
  const pass = (from, to) => {
    let order = Promise.resolve();
    const later = (what) => {
      const late = delay + (Math.random() * 2 - 1) * jitter + (Math.random() < stalls ? stall : 0);
      const due = performance.now() + late;
      order = order.then(() => pause(Math.max(due - performance.now(), 0))).then(what);
    };
    from.on("data", (bytes) => later(() => to.write(bytes)));
    from.on("close", () => later(() => to.destroy()));
    from.on("error", () => {});
  };
  const server = createServer((near) => {
    const far = connect(port, "127.0.0.1");
    pass(near, far);
    pass(far, near);
  });
  server.listen(0, "127.0.0.1");
  await once(server, "listening");
  return { url: `http://127.0.0.1:${server.address().port}/`, close: () => server.close() };
}

/** Until that holds in the page, looked at whether or not anything is drawn. */
export const until = (page, holds, timeout = 30000) => page.waitForFunction(holds, { timeout, polling: 100 });

/** A page of that size, which tells of everything that goes wrong in it. */
export async function openPage(browser, url, width, height) {
  const page = await browser.newPage();
  page.on("pageerror", (error) => expect(false, `an error in the page: ${error.message}`));
  page.on("console", (message) => {
    // That the server is away, the browser tells by itself.
    const away = message.text().includes("WebSocket connection");
    expect(message.type() !== "error" || away, `in the page's console: ${message.text()}`);
  });
  page.on("request", (request) =>
    expect(new URL(request.url()).host === new URL(url).host, `asks elsewhere: ${request.url()}`));
  await page.setViewport({ width, height });
  await page.goto(url);
  return page;
}

/** A display page, once it shows the session. */
export async function open(browser, url, width, height) {
  const page = await openPage(browser, url, width, height);
  await until(page, () => document.getElementById("digits").textContent !== "" ||
    document.getElementById("caption").textContent !== "");
  return page;
}

/** What axe-core finds wrong. */
export async function audit(page) {
  await page.evaluate(axe);
  const { violations } = await page.evaluate(() => window.axe.run());
  for (const violation of violations) {
    expect(false, `${violation.id}: ${violation.nodes.map((node) => node.html).join(" ")}`);
  }
}

/** Runs the scenes of a page in a browser; the program's exit code tells whether they held. */
export async function prove(what, ...scenes) {
  const browser = await puppeteer.launch({ executablePath: "/usr/bin/chromium", headless: true,
    // Pages beside one another, none of them asleep behind another.
    args: ["--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-background-timer-throttling",
      "--disable-renderer-backgrounding", "--disable-backgrounding-occluded-windows"] });
  try {
    for (const scene of scenes) await scene(browser);
  } finally {
    await browser.close();
  }
  console.log(faults === 0 ? `${what} holds` : `${faults} faults`);
  process.exitCode = faults === 0 ? 0 : 1;
}
