// Draws the room display: every text as large as the window, the session and the director's choice
// of fonts allow. Sizes are shares of the window's height, as on the room display itself.

const REFERENCE = 768; // pixels of height for which chosen sizes hold
const POINT = 96 / 72; // pixels
const CAPITAL = 0.72; // height of a capital or digit for its font's size
const MARGIN = 0.0435; // of width and height, each side together half of it
const GAP = 0.012;
const MESSAGE = 0.15; // heights of capitals
const LARGE = 0.1;
const LEAST_LARGE = 0.05;
const TAG = 0.0405;
const DIGITS_OF_MOVE = 0.22;
const LEAST_DIGITS = 0.4;
const SMALLER = 0.94;
const LEAST_SCALE = 0.52;
const CELL = 0.105;
const CELLS = 0.21;

const $ = (id) => document.getElementById(id);
const ink = document.createElement("canvas").getContext("2d");

const familyOf = (style) => `"${style.font.replace(/["\\]/g, "")}", Arial, "Liberation Sans", sans-serif`;

function widthOf(text, style, pixels) {
  ink.font = `${style.italic ? "italic " : ""}${style.bold ? "bold " : ""}100px ${familyOf(style)}`;
  return (ink.measureText(text).width * pixels) / 100;
}

/** The text in so many lines of about one length. */
function broken(text, lines) {
  const words = text.split(" ");
  if (lines === 1 || words.length < lines) return [text];
  let best = [text];
  let least = Infinity;
  for (let cut = 1; cut < words.length; cut += 1) {
    const rest = broken(words.slice(cut).join(" "), lines - 1);
    const all = [words.slice(0, cut).join(" "), ...rest];
    const longest = Math.max(...all.map((line) => line.length));
    if (longest < least) [best, least] = [all, longest];
  }
  return best;
}

/** The largest size up to `most` pixels at which the text fits, in up to three lines. */
function fitted(text, style, width, height, most) {
  if (!text.trim()) return null;
  let best = null;
  for (let count = 1; count <= 3; count += 1) {
    const lines = broken(text, count);
    if (lines.length < count) break;
    const widest = Math.max(...lines.map((line) => widthOf(line, style, 1)));
    const size = Math.min(most, (0.985 * width) / widest, height / (1.15 * lines.length));
    if (!best || size > best.size * 1.2) best = { lines, size, height: size * 1.15 * lines.length };
  }
  return best;
}

function dress(element, style) {
  const css = element.style;
  css.fontFamily = familyOf(style);
  css.fontWeight = style.bold ? "bold" : "normal";
  css.fontStyle = style.italic ? "italic" : "normal";
  css.textDecoration = `${style.underline ? "underline " : ""}${style.strikethrough ? "line-through" : ""}`;
  css.color = style.colour;
}

function place(element, x, y, width, height) {
  Object.assign(element.style, {
    left: `${x}px`, top: `${y}px`, width: `${width}px`, height: `${height}px`,
  });
}

/** The rows of cells: few sections begin a row each, with their letter before it. */
function cellsIn(sections, width, height) {
  const letters = sections.length > 1;
  const most = Math.max(...sections.map((section) => section.tables.length));
  let best = { cell: 0 };
  // Fewer rows, where more of them would not make the cells much larger.
  for (let columns = most; columns >= 1; columns -= 1) {
    const rows = sections.reduce((sum, s) => sum + Math.ceil(s.tables.length / columns), 0);
    const across = columns + (letters ? 0.5 : 0);
    const cell = Math.min(CELL * height, (CELLS * height) / rows, width / across / 1.1);
    if (cell > best.cell * (rows > (best.rows ?? rows) ? 1.2 : 1)) best = { cell, columns, rows, across };
  }
  return best;
}

/** More tables than can be told apart: those that still play. */
function shownOf(sections) {
  const all = sections.reduce((sum, section) => sum + section.tables.length, 0);
  if (all <= 40) return sections;
  const done = ["finished", "notPlaying", "leftOut"];
  return sections
    .map((s) => ({ ...s, tables: s.tables.filter((table) => !done.includes(table.state)) }))
    .filter((s) => s.tables.length > 0);
}

function element(parent, kind, text) {
  const made = document.createElement("div");
  made.className = kind;
  made.textContent = text;
  parent.append(made);
  return made;
}

function drawTables(sections, looks, area, height) {
  const box = $("tables");
  box.replaceChildren();
  if (sections.length === 0) return;
  dress(box, looks.styles.units);
  for (const name of ["ink", "faint", "faintLine"]) box.style.setProperty(`--${name}`, looks[name]);
  const grid = cellsIn(sections, area.width, height);
  const wide = Math.min(area.width / grid.across, grid.cell * 2.2);
  const left = (area.width - wide * grid.across) / 2;
  let row = 0;
  for (const section of sections) {
    const indent = sections.length > 1 ? wide / 2 : 0;
    if (indent) {
      const letter = element(box, "letter", section.letter);
      place(letter, left, row * grid.cell, indent, grid.cell);
      letter.style.fontSize = `${grid.cell * 0.5}px`;
    }
    section.tables.forEach((table, index) => {
      const cell = element(box, `table ${table.state}`, table.number);
      const gap = grid.cell * 0.04;
      place(cell, left + indent + (index % grid.columns) * wide + gap,
        (row + Math.floor(index / grid.columns)) * grid.cell + gap, wide - 2 * gap, grid.cell - 2 * gap);
      cell.setAttribute("role", "listitem");
      cell.style.fontSize = `${grid.cell * 0.46}px`;
      element(cell, "part", table.text).style.fontSize = `${grid.cell * 0.27}px`;
    });
    row += Math.ceil(section.tables.length / grid.columns);
  }
}

/** The height that the tables take. */
const tablesHeight = (sections, width, height) => {
  if (sections.length === 0) return 0;
  const grid = cellsIn(sections, width, height);
  return grid.cell * grid.rows;
};

/** Sizes of the rows at a scale of the chosen ones, and what they leave for the countdown. */
function rowsAt(scale, room, face, area, tables, height) {
  const { styles, show } = room.looks;
  const chosen = (style) => (style.points * POINT * height * scale) / REFERENCE;
  const row = (text, style, smaller = 1) =>
    fitted(text, style, area.width, area.height / 3, Math.max(chosen(style) * smaller, 11));
  const news = face.message !== "" && face.large === "";
  const rows = {};
  if (show.title) rows.title = row(room.title, styles.title);
  if (show.now) rows.now = row(room.nowText, styles.now);
  if (face.large) {
    const capitals = Math.max(LARGE * scale, LEAST_LARGE) * height;
    rows.large = fitted(face.large, styles.caption, area.width, area.height / 3.5, capitals / CAPITAL);
  }
  if (!news && (show.caption || face.message)) {
    rows.caption = row(face.message || face.caption, styles.caption, face.large ? 0.6 : 1);
  }
  if (show.finish) rows.finish = row(face.finish, styles.finish);
  rows.units = row(room.line || room.info, styles.units);
  const taken = () => Object.values(rows).reduce((sum, r) => (r ? sum + r.height + GAP * area.height : sum), 0);
  let left = area.height - taken() - (tables ? tables + GAP * area.height : 0);
  if (news) {
    const panel = Math.min((DIGITS_OF_MOVE * height) / 0.89, left * 0.4);
    rows.caption = fitted(face.message, styles.caption, area.width, left - panel - GAP * area.height,
      (MESSAGE * height) / CAPITAL);
    left -= (rows.caption?.height ?? 0) + GAP * area.height;
  }
  return { rows, left, news };
}

const countWidth = (digits, style) =>
  [...digits].reduce((sum, c) => sum + widthOf(c === ":" ? c : "0", style, 1), 0);

function digitsIn(panel, digits, style, area, height, tagged) {
  const width = countWidth(digits, style);
  const tag = TAG * height * 1.6;
  const byWidth = (0.955 * area.width) / width;
  const high = (free) => Math.max(free, 1) / CAPITAL;
  const below = Math.min(byWidth, high(panel - 2 * Math.max(panel * 0.055, tagged ? tag : 0)));
  const aside = (area.width - 2 * widthOf("WARNING", { ...style, bold: true }, (TAG * height) / CAPITAL) * 1.1) / width;
  const beside = Math.min(byWidth, aside, high(panel * 0.89));
  return tagged && beside >= below ? { size: beside, beside: true } : { size: below, beside: false };
}

/** Digits in cells of one width, so that nothing moves but what changes. */
function drawCountdown(digits, style, size) {
  const box = $("digits");
  box.style.fontSize = `${size}px`;
  const colon = ink.measureText(":");
  const digit = ink.measureText("0");
  // Fonts set the colon on the line, for words; between digits it belongs at their middle.
  const lift = (digit.actualBoundingBoxAscent - colon.actualBoundingBoxAscent + colon.actualBoundingBoxDescent) / 2;
  box.replaceChildren(...[...digits].map((character) => {
    const cell = document.createElement("span");
    cell.textContent = character;
    cell.style.width = `${widthOf(character === ":" ? ":" : "0", style, size)}px`;
    if (character === ":") cell.style.bottom = `${(lift * size) / 100}px`;
    return cell;
  }));
}

/** Draws everything anew. `digits`: the countdown; `room.nowText`: the time of day. */
export function draw(room, face, digits) {
  const width = window.innerWidth;
  const height = window.innerHeight;
  const { styles, show } = room.looks;
  const margin = (MARGIN * (width < height ? width : height)) / 1.2;
  const area = { width: width - 2 * margin, height: height - 2 * margin };
  const sections = shownOf(room.sections);
  const tables = tablesHeight(sections, area.width, height);
  const countdown = styles[face.style];
  const shown = show.countdown && face.phase !== "idle";
  let sized;
  let count;
  for (let scale = 1; ; scale *= SMALLER) {
    sized = rowsAt(scale, room, face, area, tables, height);
    count = digitsIn(sized.left, digits, countdown, area, height, face.tag !== "");
    const least = sized.news ? DIGITS_OF_MOVE : LEAST_DIGITS * (tables ? 0.8 : 1);
    const large = count.size * CAPITAL >= least * height || count.size * countWidth(digits, countdown) >= 0.95 * area.width;
    if (large || scale * SMALLER < LEAST_SCALE || !shown) break;
  }
  const { rows, left } = sized;
  const snug = shown ? Math.min(left, count.size * CAPITAL * 1.124 + (count.beside ? 0 : 2 * TAG * height * 1.6 * (face.tag ? 1 : 0))) : 0;
  const parts = Object.values(rows).filter(Boolean).length;
  const spread = Math.max((left - snug) / (parts + (tables ? 3 : 2)), 0);
  const gap = GAP * area.height + spread;
  document.body.style.background = styles.screen.back;
  let y = margin + spread;
  const put = (id, style, after = gap) => {
    const row = rows[id];
    $(id).hidden = !row;
    if (!row) return;
    dress($(id), style);
    place($(id), margin, y, area.width, row.height);
    $(id).style.fontSize = `${row.size}px`;
    const text = row.lines.join("\n");
    if ($(id).textContent !== text) $(id).textContent = text;
    y += row.height + after;
  };
  put("title", styles.title, GAP * area.height);
  put("now", styles.now);
  const panel = $("panel");
  panel.hidden = !shown;
  if (shown) {
    place(panel, margin, y, area.width, snug);
    dress(panel, countdown);
    panel.style.background = face.paused ? countdown.stillBack : countdown.back;
    panel.style.color = face.paused ? countdown.still : countdown.colour;
    drawCountdown(digits, countdown, count.size);
    $("tag").textContent = count.beside ? face.tag.replace(" ", "\n") : face.tag;
    $("tag").style.fontSize = `${(TAG * height) / CAPITAL}px`;
    place($("tag"), TAG * height * 0.45, TAG * height * 0.35, area.width, TAG * height);
    y += snug + gap;
  }
  put("large", styles.caption);
  put("caption", styles.caption);
  put("finish", styles.finish);
  put("units", styles.units);
  place($("tables"), margin, height - margin - tables, area.width, tables);
  drawTables(sections, room.looks, area, height);
}

/** Only the digits moved. */
export function drawDigits(digits) {
  [...digits].forEach((digit, index) => {
    const cell = $("digits").children[index];
    if (cell.textContent !== digit) cell.textContent = digit;
  });
}
