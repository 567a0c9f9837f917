// What a session that was told shows at a moment of the clock's time, in seconds.

const two = (number) => String(number).padStart(2, "0");

/** "42 s", "3 min 07 s". */
export const lengthText = (seconds) =>
  seconds < 60 ? `${Math.floor(seconds)} s` : `${Math.floor(seconds / 60)} min ${two(Math.floor(seconds % 60))} s`;

/** Of the faces that were told, the last that has begun. */
export const faceAt = (room, now) => room.faces.findLast((face) => face.from <= now) ?? room.faces[0];

/** The next full step above, so that it never says less than there is; then every second. */
function shownSeconds(left, step) {
  const whole = Math.ceil(left - 0.001);
  return whole <= step ? Math.max(whole, 0) : Math.ceil(whole / step) * step;
}

export function countdown(room, face, now) {
  const left = face.ends > 0 ? face.ends - now : Math.round(face.left);
  const seconds = shownSeconds(left, room.step);
  return `${Math.floor(seconds / 60)}:${two(seconds % 60)}`;
}

export function timeOfDay(room, now) {
  const seconds = (((now - room.midnight) % 86400) + 86400) % 86400;
  const hour = Math.floor(seconds / 3600);
  const minute = two(Math.floor(seconds / 60) % 60);
  if (room.hours24) return `${two(hour)}:${minute}`;
  return `${hour % 12 || 12}:${minute} ${hour < 12 ? "am" : "pm"}`;
}
