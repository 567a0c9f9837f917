// The session's sounds on this device, once somebody has touched the page: before that browsers
// play nothing.

export class Sounds {
  constructor() {
    this.player = null;
    this.known = new Map(); // by number: the sound as it is played
  }

  get on() {
    return this.player !== null;
  }

  /** To be called by a touch. Fetches those of `numbers` at once, so that none comes late. */
  async turnOn(numbers) {
    this.player = new AudioContext();
    await Promise.all([...numbers].map((number) => this.fetch(number)));
  }

  turnOff() {
    this.player.close();
    this.player = null;
    this.known.clear();
  }

  async fetch(number) {
    try {
      const answer = await fetch(`sound/${number}`);
      if (answer.ok) this.known.set(number, await this.player.decodeAudioData(await answer.arrayBuffer()));
    } catch {
      this.known.delete(number); // not of a kind that this browser plays
    }
  }

  async play(number) {
    if (!this.on) return;
    if (!this.known.has(number)) await this.fetch(number);
    const sound = this.known.get(number);
    if (!sound) return;
    const source = this.player.createBufferSource();
    source.buffer = sound;
    source.connect(this.player.destination);
    source.start();
  }
}
