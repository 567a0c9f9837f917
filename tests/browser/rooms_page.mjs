// The page of all rooms in a real browser, beside a real broker that goes and comes back.

import { spawn } from "node:child_process";
import { once } from "node:events";
import { createServer } from "node:net";
import { audit, Clock, expect, openPage, pause, prove, until } from "./browser.mjs";

const [bin] = process.argv.slice(2);
const pictures = process.env.CORVANEL_PICTURES;

async function freePort() {
  const server = createServer().listen(0, "127.0.0.1");
  await once(server, "listening");
  const { port } = server.address();
  server.close();
  return port;
}

/** A broker that keeps nothing over its end. */
class Broker {
  constructor(port) {
    this.port = port;
  }
  start() {
    const env = { ...process.env, PATH: `${process.env.PATH}:/usr/sbin` };
    this.program = spawn("mosquitto", ["-p", String(this.port)], { env, stdio: "ignore" });
  }
  async kill() {
    this.program.kill("SIGKILL");
    await once(this.program, "exit");
  }
}

const hall = (broker, name, settings) => Clock.start(bin, { nRounds: 9, MinPerRound: 10, ...settings }, 0,
  "/nowhere/settings.json", ["--broker", `127.0.0.1:${broker.port}`, "--room", name]);

/** What the card of a room says, by its parts. */
const card = (page, name) => page.evaluate((wanted) => {
  const found = [...document.querySelectorAll("#rooms li")].find((li) => li.querySelector("h2").textContent === wanted);
  if (!found) return null;
  const parts = [...found.children].map((part) => [part.className, part.textContent]);
  return { ...Object.fromEntries(parts), state: found.className };
}, name);
async function comes(page, name, holds, what) {
  const end = Date.now() + 50000;
  let last = null;
  while (Date.now() < end) {
    last = await card(page, name);
    if (last && holds(last)) return;
    await pause(100);
  }
  expect(false, `${what}: ${JSON.stringify(last)}`);
}
const seconds = (text) => text.split(":").reduce((sum, part) => sum * 60 + Number(part), 0);

const cutOff = () => [...document.querySelectorAll("#rooms li, #rooms li *")]
  .filter((e) => e.textContent !== "" && (e.scrollWidth > e.clientWidth + 1 || e.getBoundingClientRect().right > innerWidth + 1))
  .map((e) => e.textContent);

async function rooms(browser) {
  const broker = new Broker(await freePort());
  broker.start();
  const names = ["Hall 2", "Hall 10", "Bar", "<b>Attic & Cellar", "Library of the Old Town Hall"];
  const halls = [];
  for (const [place, name] of names.entries()) {
    halls.push(await hall(broker, name, { MinPerRound: 10 + place, Header: `Section ${place + 1}` }));
    await pause(300);
  }
  const annex = await hall(broker, "Annex", { MinPerRound: 0.05, MinBetweenRounds: 5 });
  const kiosk = await hall(broker, "Kiosk", { MinPerRound: 0.05, nRounds: 1 });
  halls.push(annex, kiosk);
  const page = await openPage(browser, `${halls[0].url}rooms`, 1920, 1080);
  for (const [place, name] of names.entries()) {
    await comes(page, name, (c) => c.digits !== "" && c.contact === "", `${name} counts`);
    const shown = seconds((await card(page, name)).digits);
    const { secondsLeft } = await halls[place].state();
    expect(Math.abs(shown - secondsLeft) < 1.3, `${name} shows ${shown}, not ${secondsLeft}`);
  }
  await comes(page, "Annex", (c) => c.state === "move" && c.tag === "MOVE" && c.caption.includes("ROUND 2"), "a move");
  await comes(page, "Kiosk", (c) => c.state === "ended" && c.tag === "END OF PLAY" && c.digits === "", "an end");
  const order = await page.$$eval("#rooms h2", (all) => all.map((e) => e.textContent));
  expect(JSON.stringify(order) === JSON.stringify([...order].sort((a, b) => a.localeCompare(b, undefined, { numeric: true }))) &&
    order.indexOf("Hall 2") < order.indexOf("Hall 10"), `order ${order}`);
  await audit(page);
  for (const [width, height] of [[390, 844], [1024, 768], [1920, 1080], [3840, 2160]]) {
    await page.setViewport({ width, height });
    await pause(400);
    const cut = await page.evaluate(cutOff);
    expect(cut.length === 0, `${width}x${height}: cut off ${cut}`);
    const fits = await page.evaluate(() => document.documentElement.scrollHeight <= innerHeight);
    expect(fits || width < 1000, `${width}x${height}: the rooms do not fit`);
    if (pictures) await page.screenshot({ path: `${pictures}/rooms-${width}.png` });
  }
  // A hall whose computer fails is missed at once; its session goes on where it was.
  await halls[1].stop();
  await comes(page, "Hall 10", (c) => c.contact === "No contact" && c.state.includes("lost"), "a hall that fails");
  // Without the broker every hall counts on, and is heard again after.
  await broker.kill();
  const before = seconds((await card(page, "Bar")).digits);
  await pause(3000);
  const after = seconds((await card(page, "Bar")).digits);
  expect(before - after >= 2 && before - after <= 4, `the bar went from ${before} to ${after}`);
  await comes(page, "Bar", (c) => c.contact.startsWith("No word for"), "a broker that is away");
  broker.start();
  await comes(page, "Bar", (c) => c.contact === "", "a broker that came back");
  if (pictures) {
    for (let number = 1; number <= 40; number += 1) {
      halls.push(await hall(broker, `Room ${number}`, { MinPerRound: 5 + (number % 9), Header: `Pairs, section ${number}` }));
    }
    await comes(page, "Room 40", (c) => c.contact === "", "forty more");
    for (const [width, height] of [[390, 844], [1024, 768], [1920, 1080], [3840, 2160]]) {
      await page.setViewport({ width, height });
      await pause(700);
      await page.screenshot({ path: `${pictures}/many-${width}.png` });
    }
  }
  for (const one of halls) await one.stop();
  await until(page, () => document.getElementById("contact").textContent.startsWith("No contact with the clock"));
  await broker.kill();
}

await prove("the page of rooms", rooms);
