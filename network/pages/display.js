// The display page: it counts by itself, in step with the clock's own time, and goes on by itself
// while it hears nothing.

import { ServerTime } from "./sync.js";
import { draw, drawDigits } from "./room.js";
import { Sounds } from "./sounds.js";

const LOOK = 40; // milliseconds between two looks at the time
const ASK_SOON = 250; // milliseconds between the first questions for the time
const ASK = 10000; // and between later ones
const SOON = 6; // first questions
const SILENT = 5; // seconds without an answer to a question, after which it is told
const LATE = 3; // seconds, after which a sound would only confuse
const AGAIN = [500, 1000, 2000, 4000]; // milliseconds before the next attempt to connect

const server = new ServerTime();
const sounds = new Sounds();
let socket = null;
let attempts = 0;
let room = null;
let heard = null; // this device's clock, when something came last
let asked = 0; // questions on this connection
let drawn = ""; // what stands there, but for the digits
let digits = "";
let shownFrom = null; // the uptime from which the face that was shown last stands

const local = () => performance.now() / 1000;

function ask() {
  if (socket?.readyState !== WebSocket.OPEN) return;
  socket.send(`time ${local()}`);
  asked += 1;
  setTimeout(ask, asked < SOON ? ASK_SOON : ASK);
}

function told(message) {
  heard = local();
  if (message.asked !== undefined) {
    server.answered(message.asked, message.now);
    return;
  }
  if (room && room.clock !== message.clock) server.forget();
  server.hint(message.now);
  room = { ...message.room, clock: message.clock, midnight: message.midnight };
  drawn = "";
}

function connect() {
  const line = new WebSocket(`ws://${location.host}/session`);
  socket = line;
  asked = 0;
  line.onopen = () => {
    attempts = 0;
    ask();
  };
  line.onmessage = (event) => told(JSON.parse(event.data));
  line.onclose = () => {
    const wait = AGAIN[Math.min(attempts, AGAIN.length - 1)];
    attempts += 1;
    setTimeout(connect, wait);
  };
}

/** What shows at the server's time `now`: of the faces that were told, the last that has begun. */
const faceAt = (now) => room.faces.findLast((face) => face.from <= now) ?? room.faces[0];

/** The next full step above, so that it never says less than there is; then every second. */
function shownSeconds(left, step) {
  const whole = Math.ceil(left - 0.001);
  return whole <= step ? Math.max(whole, 0) : Math.ceil(whole / step) * step;
}

const two = (number) => String(number).padStart(2, "0");

function countdown(face, now) {
  const left = face.ends > 0 ? face.ends - now : Math.round(face.left);
  const seconds = shownSeconds(left, room.step);
  return `${Math.floor(seconds / 60)}:${two(seconds % 60)}`;
}

function timeOfDay(now) {
  const seconds = (((now - room.midnight) % 86400) + 86400) % 86400;
  const hour = Math.floor(seconds / 3600);
  const minute = two(Math.floor(seconds / 60) % 60);
  if (room.hours24) return `${two(hour)}:${minute}`;
  return `${hour % 12 || 12}:${minute} ${hour < 12 ? "am" : "pm"}`;
}

function showContact() {
  const line = document.getElementById("contact");
  const silence = heard === null ? 0 : local() - heard;
  const lost = heard !== null && (socket.readyState !== WebSocket.OPEN || silence > ASK / 1000 + SILENT);
  line.hidden = heard !== null && !(lost && silence > SILENT);
  line.textContent = heard === null ? "Looking for the clock" : `No contact with the clock for ${silenceText(silence)}`;
}

const silenceText = (seconds) =>
  seconds < 60 ? `${Math.floor(seconds)} s` : `${Math.floor(seconds / 60)} min ${two(Math.floor(seconds % 60))} s`;

/** The sounds of a stretch that begins before our eyes. */
function playWhatBegins(face, now) {
  const before = shownFrom;
  shownFrom = face.from;
  if (before === null || face.from <= before || now - face.from > LATE) return;
  face.sounds.forEach((number) => sounds.play(number));
}

function look() {
  showContact();
  const now = server.now();
  if (room === null || now === null) return;
  const face = faceAt(now);
  playWhatBegins(face, now);
  const text = countdown(face, now);
  room.nowText = timeOfDay(now);
  const all = `${room.faces.indexOf(face)} ${room.nowText} ${text.length} ${innerWidth}x${innerHeight}`;
  if (all !== drawn) {
    drawn = all;
    digits = text;
    draw(room, face, text);
    document.title = room.title || "Corvanel";
  } else if (text !== digits) {
    digits = text;
    drawDigits(text);
  }
}

/** Screens that go dark in mid-round are of no use to a hall. */
let awake = null;
async function stayAwake() {
  if (awake !== null || document.visibilityState !== "visible") return;
  try {
    awake = await navigator.wakeLock.request("screen");
    awake.onrelease = () => { awake = null; };
  } catch {
    awake = null; // not on this device, or not over this connection
  }
}

const bar = document.getElementById("bar");
let hideBar = 0;
function showBar() {
  bar.hidden = false;
  full.hidden = document.fullscreenElement !== null || !document.fullscreenEnabled;
  clearTimeout(hideBar);
  hideBar = setTimeout(() => { bar.hidden = true; }, 4000);
  stayAwake();
}
const full = document.getElementById("full");
full.onclick = () => document.documentElement.requestFullscreen();
const soundSwitch = document.getElementById("sounds");
soundSwitch.onclick = () => {
  if (sounds.on) {
    sounds.turnOff();
  } else {
    sounds.turnOn(new Set((room?.faces ?? []).flatMap((face) => face.sounds)));
  }
  soundSwitch.textContent = sounds.on ? "Sounds off" : "Sounds on";
  soundSwitch.setAttribute("aria-pressed", String(sounds.on));
};
document.addEventListener("fullscreenchange", () => { bar.hidden = true; });
for (const sign of ["pointermove", "pointerdown", "keydown"]) document.addEventListener(sign, showBar);
document.addEventListener("visibilitychange", stayAwake);

connect();
stayAwake();
setInterval(look, LOOK);
window.addEventListener("resize", () => { drawn = ""; });
