// All rooms that tell the broker how their sessions stand: each counts by its own computer's clock, of
// which this page is told how far ours is ahead.

import { countdown, faceAt, lengthText, timeOfDay } from "./count.js";
import { ClockLine } from "./line.js";

const LOOK = 100; // milliseconds between two looks at the time
const SIZES = [64, 56, 48, 40, 34, 29, 25, 22, 20, 18, 16, 14, 12.5]; // pixels, of which the largest that shows all rooms is taken
const LEAST = 14; // where not even the smallest does, pixels
const PARTS = ["name", "title", "digits", "tag", "caption", "line", "contact"];

const list = document.getElementById("rooms");
const cards = new Map(); // by the room's name
let rooms = [];

const line = new ClockLine({
  path: "/rooms",
  told: (message) => {
    if (!message.rooms) return;
    rooms = message.rooms.sort((a, b) => a.name.localeCompare(b.name, undefined, { numeric: true }));
    arrange();
  },
});

function newCard(name) {
  const card = document.createElement("li");
  const parts = {};
  for (const part of PARTS) {
    parts[part] = document.createElement(part === "name" ? "h2" : "p");
    parts[part].className = part;
    card.append(parts[part]);
  }
  parts.name.textContent = name;
  cards.set(name, { card, parts });
  return card;
}

/** One card for each room, in their order, as large as all of them can be seen at. */
function arrange() {
  const names = rooms.map((room) => room.name);
  const before = [...cards.keys()].sort().join("\n");
  for (const [name, { card }] of cards) {
    if (!names.includes(name)) {
      card.remove();
      cards.delete(name);
    }
  }
  names.forEach((name, place) => {
    const card = cards.get(name)?.card ?? newCard(name);
    if (list.children[place] !== card) list.insertBefore(card, list.children[place] ?? null);
  });
  document.getElementById("none").hidden = names.length > 0;
  look();
  if ([...cards.keys()].sort().join("\n") !== before) fit();
}

function fit() {
  const { style, scrollHeight } = document.documentElement;
  const shows = (size) => {
    style.setProperty("--size", `${size}px`);
    return document.documentElement.scrollHeight <= innerHeight;
  };
  if (scrollHeight !== 0 && !SIZES.some(shows)) style.setProperty("--size", `${LEAST}px`);
}

/** Where a room stands at the server's time `now`: by its own clock, or as it was told, where that is all there is. */
function standing(told, now) {
  const { room } = told;
  const own = told.lag === undefined ? told.at : now - told.lag;
  const face = faceAt(room, own);
  let contact = "";
  if (told.lag === undefined) {
    contact = `As it stood there at ${timeOfDay(room, own)}`;
  } else if (told.silentSince !== undefined) {
    contact = `No word for ${lengthText(now - told.silentSince)}`;
  } else if (!told.here) {
    contact = "No contact";
  }
  const counts = face.phase !== "idle" && face.phase !== "ended";
  const soon = face.phase === "round" && face.style !== "calm";
  const state = face.paused ? "paused" : soon ? "soon" : face.phase;
  return {
    classes: `${state}${contact ? " lost" : ""}`,
    texts: {
      tag: face.large || face.tag,
      title: room.title,
      digits: counts ? countdown(room, face, own) : "",
      caption: face.phase === "move" ? face.message : face.caption,
      line: counts ? room.line : "",
      contact,
    },
  };
}

function look() {
  const words = document.getElementById("contact");
  words.textContent = line.contactText;
  words.hidden = words.textContent === "";
  const now = line.server.now();
  if (now === null) return;
  for (const told of rooms) {
    const { card, parts } = cards.get(told.name);
    const { classes, texts } = standing(told, now);
    if (card.className !== classes) card.className = classes;
    for (const [part, text] of Object.entries(texts)) {
      if (parts[part].textContent !== text) parts[part].textContent = text;
    }
  }
}

line.connect();
setInterval(look, LOOK);
window.addEventListener("resize", fit);
