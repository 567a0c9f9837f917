// The remote: leads the session from between the tables. A device is let in by a code, of which it
// makes a key that never leaves it; everything it says is signed with that, and counted.

import { countdown, faceAt, lengthText } from "./count.js";
import { ClockLine } from "./line.js";
import { hmac, scrypt, sha256, x25519 } from "./noble.js";

const LOOK = 100; // milliseconds between two looks at the time
const HOLD = 1000; // milliseconds for which the next round's button is held
const AGAIN = 4000; // milliseconds in which it is pressed a second time instead
const ANSWER = 6000; // milliseconds for which an answer stands
const KEY = "corvanel remote key"; // what the browser keeps it under
const SALT = "corvanel remote"; // this and the work as in network/remote_devices.cpp
const WORK = { N: 16384, r: 8, p: 1, dkLen: 32 };
// Why the clock did not take a word.
const REFUSALS = {
  late: "That took too long on its way: nothing was done.",
  repeated: "That came twice: it was done once.",
  name: "Please give this device another name.",
};

const $ = (id) => document.getElementById(id);
const hex = (bytes) => [...bytes].map((byte) => byte.toString(16).padStart(2, "0")).join("");
const bytesOf = (digits) => Uint8Array.from(digits.match(/../g), (pair) => parseInt(pair, 16));

let key = localStorage.getItem(KEY) ?? ""; // of this device; empty: it was never let in
let joining = null; // what its key will be made of, while it waits to be let in
let challenge = "";
let number = 0; // of the last word on this connection
let lead = null; // how the session can be led; null while this device is not let in

const line = new ClockLine({ told, opened: () => { lead = joining = null; line.socket.send("hello"); } });

const sign = (withKey, text) => hex(hmac(sha256, bytesOf(withKey), text));

/** Returns what was signed. */
function say(text, withKey = key) {
  number += 1;
  const when = line.server.now().toFixed(3);
  const signed = `${challenge} ${number} ${when} ${text}`;
  line.socket.send(`say ${sign(withKey, "id").slice(0, 16)} ${number} ${when} ${sign(withKey, signed)} ${text}`);
  return signed;
}

function told(message) {
  if (/^[0-9a-f]{32}$/.test(message.challenge)) {
    challenge = message.challenge;
    number = 0;
    if (key !== "") say("here");
    else show("come");
  } else if (message.device) {
    if (joining !== null && !agree(message)) return;
    answer("");
    show("lead");
  } else if (message.lead) {
    lead = message.lead;
    showLead();
  } else if (message.refused) {
    refuse(message.refused);
  }
}

/** Makes this device's key; false for a clock that does not know the code. */
function agree({ public: theirs = "", proof }) {
  const { invited, secret, signed } = joining;
  const both = `${signed} ${theirs}`;
  joining = null;
  if (!/^[0-9a-f]{64}$/.test(theirs) || proof !== sign(invited, `server ${both}`)) {
    show("come");
    answer("That is not the clock that showed the code.");
    return false;
  }
  key = sign(invited, `device ${both} ${hex(x25519.getSharedSecret(secret, bytesOf(theirs)))}`);
  localStorage.setItem(KEY, key);
  return true;
}

function refuse(why) {
  const typed = joining !== null;
  joining = null;
  if (typed || why === "unknown") {
    lead = null;
    show("come");
  }
  if (why !== "unknown") answer(REFUSALS[why] ?? why);
  else answer(typed ? "That is not the code, or it has been used: each lets one device in."
    : "This device is not let in any more.");
}

function show(section) {
  $("come").hidden = section !== "come";
  $("lead").hidden = section !== "lead";
  $("comeIn").disabled = false;
}

let forget = 0;
function answer(text) {
  $("answer").textContent = text;
  clearTimeout(forget);
  if (lead !== null) forget = setTimeout(() => { $("answer").textContent = ""; }, ANSWER);
}

// Coming in.

const kinds = [[/iPhone/, "iPhone"], [/iPad/, "iPad"], [/Android.*Mobile/, "Android phone"],
  [/Android/, "Android tablet"]];
$("name").value = kinds.find(([sign]) => sign.test(navigator.userAgent))?.[1] ?? "Computer";

/** The code travels behind the #, which browsers send to nobody; nor does it stay in the address. */
function takeCode() {
  if (location.hash.length < 2) return;
  $("code").value = location.hash.slice(1);
  history.replaceState(null, "", location.pathname);
  key = "";
  if (line.open) show("come");
}
takeCode();
window.addEventListener("hashchange", takeCode);

$("comeForm").onsubmit = (event) => {
  event.preventDefault();
  const code = $("code").value.toUpperCase().replace(/[^A-Z0-9]/g, "");
  if (!line.open || challenge === "") return;
  $("comeIn").disabled = true;
  answer("One moment");
  // The work takes a second: first the words are to be seen.
  setTimeout(() => {
    const invited = hex(scrypt(code, SALT, WORK));
    const secret = x25519.utils.randomPrivateKey();
    const signed = say(`join ${hex(x25519.getPublicKey(secret))} ${$("name").value}`, invited);
    joining = { invited, secret, signed };
  }, 50);
};

// Leading.

/** The words for a button are the clock's own: they hold what is seen now. */
function can(word) {
  const text = line.lost || lead === null ? undefined : lead.can[word];
  return text?.split(" ")[0] === word ? text : undefined;
}

const give = (word) => {
  const text = can(word);
  if (text === undefined) return;
  answer("");
  navigator.vibrate?.(20);
  say(text);
};

const paused = () => lead?.can.resume !== undefined;
$("pause").onclick = () => give(paused() ? "resume" : "pause");
for (const word of ["shorter", "longer", "undo"]) $(word).onclick = () => give(word);

/** A round is not ended by a thumb that slips: held for a second, or pressed twice. */
const next = $("next");
let holding = 0;
let held = false; // for long enough
let asked = 0; // when it was pressed once
const letGo = () => {
  clearTimeout(holding);
  holding = 0;
  next.classList.remove("held");
};
const hold = () => {
  if (holding !== 0 || next.disabled) return;
  next.classList.add("held");
  held = false;
  holding = setTimeout(() => { letGo(); held = true; give("next"); }, HOLD);
};
next.onpointerdown = hold;
for (const end of ["pointerup", "pointercancel", "pointerleave", "blur"]) next.addEventListener(end, letGo);
// A key that is held down presses again and again.
next.onkeydown = (event) => { if (event.repeat) event.preventDefault(); };
next.oncontextmenu = (event) => event.preventDefault();
next.onclick = () => {
  if (held) {
    held = false; // the end of a press that has done its work
  } else if (Date.now() - asked < AGAIN) {
    asked = 0;
    give("next");
  } else if (!next.disabled) {
    asked = Date.now();
  }
};

/** "42 s ago", "3 min ago". */
const agoText = (seconds) => `${lengthText(Math.max(seconds, 0)).split(" ", 2).join(" ")} ago`;

function undoText(now) {
  if (!lead.undo) return "Undo";
  const by = lead.undo.by === "" ? "" : ` by ${lead.undo.by}`;
  return `Undo ${lead.undo.what}${by}\n${agoText(now - lead.undo.at)}`;
}

function put(id, text) {
  if ($(id).textContent !== text) $(id).textContent = text;
}

function showLead() {
  $("lines").replaceChildren(...lead.lines.map((text) => {
    const item = document.createElement("li");
    item.textContent = text;
    return item;
  }));
}

function showClock(room, now) {
  const face = faceAt(room, now);
  const style = room.looks.styles[face.style];
  const panel = $("panel");
  panel.style.color = face.paused ? style.still : style.colour;
  panel.style.background = face.paused ? style.stillBack : style.back;
  put("title", room.title || "The session");
  put("tag", face.large || face.tag);
  $("tag").style.color = face.paused ? room.looks.ink : "";
  const digits = face.phase === "idle" ? "–" : countdown(room, face, now);
  put("digits", digits);
  panel.style.setProperty("--signs", Math.max(digits.length, 5));
  put("caption", face.message || face.caption);
  put("finish", face.finish);
  put("units", room.line || room.info);
}

function showButtons(now) {
  put("pause", paused() ? "Resume" : "Pause");
  put("undo", undoText(now));
  const twice = Date.now() - asked < AGAIN;
  put("next", twice ? "Press again for the next round" : "Next round (hold)");
  $("pause").disabled = can("pause") === undefined && can("resume") === undefined;
  for (const word of ["shorter", "longer", "next", "undo"]) $(word).disabled = can(word) === undefined;
}

function look() {
  put("contact", line.contactText);
  const now = line.server.now();
  if (line.room === null || now === null || lead === null) return;
  showClock(line.room, now);
  showButtons(now);
}

line.connect();
setInterval(look, LOOK);
