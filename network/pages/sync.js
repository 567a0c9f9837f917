// The server's time on this device, in seconds: measured by questions and answers, of which the
// quickest is trusted most, and brought in step slowly, so that no second is skipped or shown twice.

const KEPT = 8; // answers
const DRIFT = 50e-6; // by which clocks of devices may go wrong, as a share
const SLEW = 0.05; // of the time passed, by which the offset may move
const STEP = 2; // seconds apart, from which the server's clock is another one

export class ServerTime {
  constructor(local = () => performance.now() / 1000) {
    this.local = local;
    this.forget();
  }

  /** The server's clock is another one: nothing that was measured holds. */
  forget() {
    this.answers = [];
    this.offset = null;
    this.slewedAt = 0;
  }

  /** A first guess, from a message on its way for nobody knows how long. */
  hint(now) {
    if (this.offset === null) {
      this.offset = now - this.local();
      this.slewedAt = this.local();
    }
  }

  /** An answer: asked at `asked` by this device's clock, when the server's said `now`. */
  answered(asked, now) {
    const came = this.local();
    const trip = came - asked;
    if (!(trip >= 0)) return;
    const offset = now - asked - trip / 2;
    // More than the way can explain: it is another clock.
    if (this.offset !== null && Math.abs(offset - this.offset) > STEP + trip / 2) this.forget();
    const first = this.answers.length === 0;
    this.answers.push({ offset, trip, came });
    if (this.answers.length > KEPT) this.answers.shift();
    if (first) {
      this.offset = this.best();
      this.slewedAt = came;
    }
  }

  best() {
    const local = this.local();
    const doubt = (answer) => answer.trip / 2 + (local - answer.came) * DRIFT;
    return this.answers.reduce((a, b) => (doubt(b) < doubt(a) ? b : a)).offset;
  }

  /** The server's time now; null while nothing is known of it. */
  now() {
    if (this.offset === null) return null;
    const local = this.local();
    if (this.answers.length > 0) {
      const most = (local - this.slewedAt) * SLEW;
      const wrong = this.best() - this.offset;
      this.offset += Math.max(-most, Math.min(most, wrong));
    }
    this.slewedAt = local;
    return local + this.offset;
  }
}
