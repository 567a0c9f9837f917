// The display page: it counts by itself, in step with the clock's own time, and goes on by itself
// while it hears nothing.

import { countdown, faceAt, timeOfDay } from "./count.js";
import { ClockLine } from "./line.js";
import { draw, drawDigits } from "./room.js";
import { Sounds } from "./sounds.js";

const LOOK = 40; // milliseconds between two looks at the time
const LATE = 3; // seconds, after which a sound would only confuse

const line = new ClockLine({ told: () => { drawn = ""; } });
const sounds = new Sounds();
let drawn = ""; // what stands there, but for the digits
let digits = "";
let shownFrom = null; // the uptime from which the face that was shown last stands

function showContact() {
  const contact = document.getElementById("contact");
  contact.textContent = line.contactText;
  contact.hidden = contact.textContent === "";
}

/** The sounds of a stretch that begins before our eyes. */
function playWhatBegins(face, now) {
  const before = shownFrom;
  shownFrom = face.from;
  if (before === null || face.from <= before || now - face.from > LATE) return;
  face.sounds.forEach((number) => sounds.play(number));
}

function look() {
  showContact();
  const { room } = line;
  const now = line.server.now();
  if (room === null || now === null) return;
  const face = faceAt(room, now);
  playWhatBegins(face, now);
  const text = countdown(room, face, now);
  room.nowText = timeOfDay(room, now);
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
    sounds.turnOn(new Set((line.room?.faces ?? []).flatMap((face) => face.sounds)));
  }
  soundSwitch.textContent = sounds.on ? "Sounds off" : "Sounds on";
  soundSwitch.setAttribute("aria-pressed", String(sounds.on));
};
document.addEventListener("fullscreenchange", () => { bar.hidden = true; });
for (const sign of ["pointermove", "pointerdown", "keydown"]) document.addEventListener(sign, showBar);
document.addEventListener("visibilitychange", stayAwake);

line.connect();
stayAwake();
setInterval(look, LOOK);
window.addEventListener("resize", () => { drawn = ""; });
