// The connection to the clock: what was told last, the clock's own time, and whether there is contact.
// It comes back by itself.

import { lengthText } from "./count.js";
import { ServerTime } from "./sync.js";

const ASK_SOON = 250; // milliseconds between the first questions for the time
const ASK = 10000; // and between later ones
const SOON = 6; // first questions
const SILENT = 5; // seconds without an answer to a question, after which it is told
const AWAKE = 2000; // milliseconds for an answer after the device has slept
const AGAIN = [500, 1000, 2000, 4000]; // milliseconds before the next attempt to connect

const local = () => performance.now() / 1000;

export class ClockLine {
  /**
   * `path`: of what is told. `told`: called with every message that is not of the time. `opened`: called with every new
   * connection.
   */
  constructor({ path = "/session", told = () => {}, opened = () => {} } = {}) {
    this.path = path;
    this.server = new ServerTime();
    this.room = null; // what was told of the session
    this.heard = null; // this device's clock, when something came last
    this.socket = null;
    this.attempts = 0;
    this.told = told;
    this.opened = opened;
    document.addEventListener("visibilitychange", () => this.wake());
  }

  get open() {
    return this.socket?.readyState === WebSocket.OPEN;
  }

  get lost() {
    return this.heard === null || !this.open || local() - this.heard > ASK / 1000 + SILENT;
  }

  /** What is to be told of the contact; empty when there is nothing. */
  get contactText() {
    if (this.heard === null) return "Looking for the clock";
    const silence = local() - this.heard;
    return this.lost && silence > SILENT ? `No contact with the clock for ${lengthText(silence)}` : "";
  }

  connect() {
    const socket = new WebSocket(`ws://${location.host}${this.path}`);
    this.socket = socket;
    socket.onopen = () => {
      this.attempts = 0;
      this.asked = 0;
      this.ask();
      this.opened();
    };
    socket.onmessage = (event) => this.hear(JSON.parse(event.data));
    socket.onclose = () => {
      if (this.socket !== socket) return;
      clearTimeout(this.next);
      const wait = AGAIN[Math.min(this.attempts, AGAIN.length - 1)];
      this.attempts += 1;
      setTimeout(() => this.connect(), wait);
    };
  }

  ask() {
    if (!this.open) return;
    this.socket.send(`time ${local()}`);
    this.asked += 1;
    clearTimeout(this.next);
    this.next = setTimeout(() => this.ask(), this.asked < SOON ? ASK_SOON : ASK);
  }

  /** After a sleep the connection may be dead without anybody having said so. */
  wake() {
    if (document.visibilityState !== "visible" || !this.open) return;
    const { socket, heard } = this;
    this.ask();
    setTimeout(() => {
      if (this.socket !== socket || this.heard !== heard || !this.open) return;
      socket.onclose = null;
      socket.close();
      this.connect();
    }, AWAKE);
  }

  hear(message) {
    this.heard = local();
    if (message.asked !== undefined) {
      this.server.answered(message.asked, message.now);
      return;
    }
    if (message.room) {
      if (this.room && this.room.clock !== message.clock) this.server.forget();
      this.server.hint(message.now);
      this.room = { ...message.room, clock: message.clock, midnight: message.midnight };
    }
    this.told(message);
  }
}
