// A real browser, and the program whose pages it looks at.

import { spawn } from "node:child_process";
import { once } from "node:events";
import puppeteer from "puppeteer-core";

export const pause = (milliseconds) => new Promise((done) => setTimeout(done, milliseconds));

let faults = 0;
export function expect(holds, what) {
  if (holds) return;
  faults += 1;
  console.error(`FAULT: ${what}`);
}
export const faultsSoFar = () => faults;

/** corvanel-console, serving a session of these settings on a port (0: any). */
export class Clock {
  static async start(bin, settings, port = 0, more = []) {
    const clock = new Clock();
    const set = Object.entries(settings).flatMap(([key, value]) => ["--set", `${key}=${value}`]);
    const program = spawn(`${bin}/corvanel-console`,
      ["run", "--store", "/nowhere/settings.json", "--serve", `127.0.0.1:${port}`, ...set, ...more]);
    clock.program = program;
    program.stderr.on("data", (text) => console.error(String(text)));
    let told = "";
    while (!told.includes("\n")) told += (await once(program.stdout, "data"))[0];
    program.stdout.resume();
    clock.url = told.split("\t")[1].split("\n")[0];
    return clock;
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

export const launch = () =>
  puppeteer.launch({ executablePath: "/usr/bin/chromium", headless: true,
    // Pages beside one another, none of them asleep behind another.
    args: ["--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-background-timer-throttling",
      "--disable-renderer-backgrounding", "--disable-backgrounding-occluded-windows"] });

/** Until that holds in the page, looked at whether or not anything is drawn. */
export const until = (page, holds, timeout = 30000) => page.waitForFunction(holds, { timeout, polling: 100 });

/** A page of that size, which tells of everything that goes wrong in it. */
export async function open(browser, url, width, height) {
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
  await until(page, () => document.getElementById("digits").textContent !== "" ||
    document.getElementById("caption").textContent !== "");
  return page;
}
