// The remote in real browsers: how a device is let in, what it does, two of them at once, and what
// somebody who listens can make of what he hears.

import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { audit, Clock, expect, open, openPage, pause, prove, until } from "./browser.mjs";

const [bin, picture] = process.argv.slice(2);
const kSizes = [[320, 568], [390, 844], [844, 390], [1024, 768], [3840, 2160]];

const text = (page, id) => page.$eval(`#${id}`, (e) => e.textContent);
const roundOf = async (clock) => (await clock.state()).round;

/** A browser of its own: what one device keeps, no other has. */
async function device(browser, url, width = 390, height = 844) {
  const context = await browser.createBrowserContext();
  return openPage({ newPage: () => context.newPage() }, url, width, height);
}

/** The form, filled in and sent. */
async function comeIn(page, name, code) {
  await until(page, () => !document.getElementById("come").hidden);
  if (code !== undefined) await page.$eval("#code", (e, value) => { e.value = value; }, code);
  await page.$eval("#name", (e, value) => { e.value = value; }, name);
  await page.bringToFront();
  await page.click("#comeIn");
}
const isIn = (page) => until(page, () => !document.getElementById("lead").hidden &&
  !document.getElementById("undo").textContent.includes("…") && document.getElementById("digits").textContent !== "");

async function press(page, id) {
  await until(page, `!document.getElementById("${id}").disabled`);
  await page.bringToFront();
  await page.click(`#${id}`);
}

async function holdNext(page, milliseconds) {
  await page.bringToFront();
  const box = await (await page.$("#next")).boundingBox();
  await page.mouse.move(box.x + box.width / 2, box.y + box.height / 2);
  await page.mouse.down();
  await pause(milliseconds);
  await page.mouse.up();
}

/** The same for two at once, of which only one can have the mouse. */
const holdBoth = (pages) => Promise.all(pages.map((page) => page.evaluate(() => {
  const next = document.getElementById("next");
  next.dispatchEvent(new PointerEvent("pointerdown"));
  return new Promise((done) => { setTimeout(() => { next.dispatchEvent(new PointerEvent("pointerup")); done(); }, 1300); });
})));

const cutOff = () => [...document.querySelectorAll("#lead p, #lead button, #lead li, #come input, #come button")]
  .filter((e) => e.offsetParent !== null && e.textContent !== "")
  .filter((e) => e.scrollWidth > e.clientWidth + 1 || e.getBoundingClientRect().right > innerWidth + 1 ||
    e.getBoundingClientRect().left < -1 || (e.tagName === "BUTTON" && e.scrollHeight > e.clientHeight + 1)).map((e) => e.id || e.tagName);

const folder = mkdtempSync(`${tmpdir()}/corvanel-remote-`);
const store = `${folder}/settings.json`;

async function twoDevices(browser) {
  const clock = await Clock.start(bin, { nRounds: 9, MinPerRound: 10, Header: "Friday Evening Club Pairs" }, 0, store);
  // By the camera: the code comes with the address, and stays in nobody's history.
  const secret = clock.invitation.split("#")[1];
  const ann = await device(browser, clock.invitation);
  const sent = [];
  const wire = await ann.createCDPSession();
  await wire.send("Network.enable");
  wire.on("Network.webSocketFrameSent", ({ response }) => sent.push(response.payloadData));
  expect(!(await ann.evaluate(() => location.href)).includes("#"), "the code stays in the address");
  await audit(ann);
  await comeIn(ann, "Ann's <b>phone</b>");
  await isIn(ann);
  // By hand, and not with a code that was used.
  const bob = await device(browser, `${clock.url}remote`);
  await comeIn(bob, "Bob's tablet", secret);
  await until(bob, () => document.getElementById("answer").textContent.includes("not the code"));
  await pause(1200);
  const code = clock.invitation.split("#")[1].toLowerCase();
  await comeIn(bob, "\u200b", `${code.slice(0, 5)} ${code.slice(5)}`);
  await until(bob, () => document.getElementById("answer").textContent.includes("another name"));
  await comeIn(bob, "Bob's tablet");
  await isIn(bob);

  const display = await open(browser, clock.url, 1024, 768);
  await press(ann, "pause");
  await until(bob, () => document.getElementById("pause").textContent === "Resume");
  await until(display, () => document.getElementById("large").textContent === "PAUSED");
  expect((await text(bob, "undo")).startsWith("Undo pause by Ann's <b>phone</b>"), `Bob reads ${await text(bob, "undo")}`);
  expect((await ann.$("#undo b")) === null, "a device's name became markup");
  expect(await bob.$eval("#longer", (e) => e.disabled), "a minute can be added to a clock that stands");
  await press(bob, "pause");
  await until(ann, () => document.getElementById("pause").textContent === "Pause");
  const before = (await clock.state()).secondsLeft;
  await press(ann, "longer");
  await pause(300);
  expect(Math.abs((await clock.state()).secondsLeft - before - 60) < 2, "no minute was added");

  // A tap is not enough; held, or pressed twice, it is.
  await press(ann, "next");
  await pause(500);
  expect(await roundOf(clock) === 1, "a tap ended the round");
  await pause(4000);
  await ann.focus("#next");
  for (let repeats = 0; repeats < 6; repeats += 1) await ann.keyboard.down("Enter");
  await ann.keyboard.up("Enter");
  await pause(500);
  expect(await roundOf(clock) === 1, "a key that was held ended the round");
  await holdNext(bob, 1300);
  await until(ann, () => document.getElementById("caption").textContent.includes("Round 2"));
  // Both at the same moment: one round on, not two.
  await holdBoth([ann, bob]);
  await pause(500);
  expect(await roundOf(clock) === 3, `two at once led to round ${await roundOf(clock)}`);
  const answers = [await text(ann, "answer"), await text(bob, "answer")];
  expect(answers.some((answer) => answer.startsWith("The session has moved on")), `nobody was told: ${answers}`);
  await press(ann, "undo");
  await until(bob, () => document.getElementById("caption").textContent.includes("Round 2"));

  if (picture) await ann.screenshot({ path: picture });
  for (const [width, height] of kSizes) {
    await ann.setViewport({ width, height });
    await pause(200);
    const cut = await ann.evaluate(cutOff);
    expect(cut.length === 0, `${cut} cut off at ${width}x${height}`);
  }
  await audit(ann);
  // What went over the wire holds neither the code nor what follows from it.
  const key = await ann.evaluate(() => localStorage.getItem("corvanel remote key"));
  expect(key.length === 64, "no key was kept");
  expect(sent.length > 5 && sent.every((frame) => !frame.includes(secret) && !frame.includes(key)), "a secret was sent");
  await listener(clock, display, sent);

  // Killed and started again: who was let in still is.
  const { port } = clock;
  await clock.stop();
  await until(ann, () => document.getElementById("pause").disabled);
  const again = await Clock.start(bin, { nRounds: 9, MinPerRound: 20 }, port, store);
  await until(ann, () => !document.getElementById("pause").disabled);
  await press(ann, "pause");
  await pause(400);
  expect((await again.state()).paused, "after the crash Ann cannot pause");
  await again.stop();
}

/** Says again what was heard, from a page of his own. */
async function listener(clock, page, heard) {
  const before = JSON.stringify([await roundOf(clock), (await clock.state()).paused]);
  const words = heard.filter((frame) => frame.startsWith("say"));
  expect(words.length >= 4, "nothing was heard");
  for (const word of [...words.slice(-3), words.at(-1).replace(/ \S+$/, " pause")]) {
    const refusals = await page.evaluate((said) => new Promise((done) => {
      const socket = new WebSocket(`ws://${location.host}/session`);
      const heard = [];
      socket.onmessage = ({ data }) => {
        const { refused } = JSON.parse(data);
        if (refused) heard.push(refused);
      };
      socket.onopen = () => { socket.send("hello"); socket.send(said); };
      setTimeout(() => { socket.close(); done(heard.join()); }, 300);
    }), word);
    expect(refusals === "unknown", `"${word}" was answered with ${refusals}`);
  }
  expect(JSON.stringify([await roundOf(clock), (await clock.state()).paused]) === before, "a repeated word did something");
}

try {
  await prove("the remote", twoDevices);
} finally {
  rmSync(folder, { recursive: true });
}
