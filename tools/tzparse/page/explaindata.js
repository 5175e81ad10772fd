// The report: what the page shows, read from its data. Rows, columns and indexes count from 0 here and
// ends are exclusive; only what people see counts from 1.

// The places in a value's record.
const RULE = 0, NAME = 1, INDEX = 2, TYPE = 3, BEGIN_ROW = 4, BEGIN_COL = 5, END_ROW = 6, END_COL = 7, TEXT = 8;

const HUES = 8;

// A value of more rows than this is only quoted in part.
const QUOTED_ROWS = 200;
const QUOTED_CHARS = 20000;

// How many bytes of the device's text a character stands for. A lone low surrogate is one byte that was no
// part of valid UTF-8.
function bytesOf(code) {
  if (code < 0x80 || (code >= 0xdc80 && code <= 0xdcff)) return 1;
  if (code < 0x800) return 2;
  return code < 0x10000 ? 3 : 4;
}

// The place in the string at which the column, counted in bytes, stands; the string's length at most.
function charColumn(line, byteColumn) {
  let at = 0;
  for (let bytes = 0; at < line.length && bytes < byteColumn;) {
    const code = line.codePointAt(at);
    bytes += bytesOf(code);
    at += code > 0xffff ? 2 : 1;
  }
  return at;
}

// Spans of rows, ends included, sorted by their begins: finds those around a row without looking at all.
// A node of the binary tree holds the last row of all spans below it.
class SpanTree {
  constructor(spans) {
    this.spans = spans;
    this.size = 1;
    while (this.size < spans.length) this.size *= 2;
    this.last = new Int32Array(2 * this.size).fill(-1);
    spans.forEach(([, last], i) => { this.last[this.size + i] = last; });
    for (let node = this.size - 1; node > 0; --node)
      this.last[node] = Math.max(this.last[2 * node], this.last[2 * node + 1]);
  }

  // The places of the spans around the row, in their order.
  around(row) {
    const places = [];
    const visit = (node, first, width) => {
      if (this.last[node] < row || first >= this.spans.length || this.spans[first][0] > row) return;
      if (width === 1) {
        places.push(first);
        return;
      }
      visit(2 * node, first, width / 2);
      visit(2 * node + 1, first + width / 2, width / 2);
    };
    visit(1, 0, this.size);
    return places;
  }
}

class Report {
  constructor(data) {
    Object.assign(this, data);
    this.isAscii = new Uint8Array(this.lines.length);  // 0: not looked at; 1: it is; 2: it isn't
    this.giveHues();
    this.indexRows();
    this.gatherTroubles();
  }

  // Rules that own values get a hue each, in the order of the rules.
  giveHues() {
    this.counts = new Array(this.rules.length).fill(0);
    for (const value of this.values) if (value[RULE] >= 0) ++this.counts[value[RULE]];
    let next = 0;
    this.hues = this.counts.map((count) => (count > 0 ? String(next++ % HUES) : "none"));
  }

  hue(rule) {
    return this.hues[rule] ?? "none";
  }

  hasPlace(value) {
    return value[BEGIN_ROW] >= 0 && value[BEGIN_ROW] < this.lines.length &&
        (value[BEGIN_ROW] < value[END_ROW] ||
         (value[BEGIN_ROW] === value[END_ROW] && value[BEGIN_COL] < value[END_COL]));
  }

  // Sorts the values that have a place by it. Those within a row can be asked for by row; those of several
  // rows stand in a tree over their last rows, as lists by row could grow with the square of the text.
  indexRows() {
    const placed = [];
    this.values.forEach((value, i) => { if (this.hasPlace(value)) placed.push(i); });
    this.ordered = placed.sort((a, b) => this.comparePlaces(this.values[a], this.values[b]) || a - b);
    this.wide = this.ordered.filter((i) => this.values[i][END_ROW] > this.values[i][BEGIN_ROW]);
    this.narrow = this.ordered.filter((i) => this.values[i][END_ROW] === this.values[i][BEGIN_ROW]);
    this.firstOfRow = new Int32Array(this.lines.length + 1);
    for (const i of this.narrow) ++this.firstOfRow[this.values[i][BEGIN_ROW] + 1];
    for (let row = 0; row < this.lines.length; ++row) this.firstOfRow[row + 1] += this.firstOfRow[row];
    this.wideTree = new SpanTree(this.wide.map((i) => [this.values[i][BEGIN_ROW], this.values[i][END_ROW]]));
  }

  // What begins first comes first; of two that begin together, the longer one.
  comparePlaces(a, b) {
    return a[BEGIN_ROW] - b[BEGIN_ROW] || a[BEGIN_COL] - b[BEGIN_COL] || b[END_ROW] - a[END_ROW] ||
        b[END_COL] - a[END_COL];
  }

  gatherTroubles() {
    this.troubles = [];
    this.troubleRows = new Map();
    this.rules.forEach((rule, i) => {
      for (const fact of rule.facts) {
        if (!fact.trouble) continue;
        this.troubles.push({ rule: i, fact });
        if (fact.line < 0) continue;
        if (!this.troubleRows.has(fact.line)) this.troubleRows.set(fact.line, []);
        this.troubleRows.get(fact.line).push({ rule: i, fact });
      }
    });
  }

  // The column in characters of a column in bytes.
  column(row, byteColumn) {
    const line = this.lines[row];
    if (this.isAscii[row] === 0) this.isAscii[row] = /^[\0-\x7f]*$/.test(line) ? 1 : 2;
    if (this.isAscii[row] === 1) return Math.max(0, Math.min(byteColumn, line.length));
    return charColumn(line, byteColumn);
  }

  // Where a value begins and ends in one of its rows, in characters.
  spanInRow(i, row) {
    const value = this.values[i];
    return {
      from: value[BEGIN_ROW] === row ? this.column(row, value[BEGIN_COL]) : 0,
      to: value[END_ROW] === row ? this.column(row, value[END_COL]) : this.lines[row].length,
    };
  }

  // The values, by index, of which a part stands in the row, those that begin first before the others.
  valuesInRow(row) {
    const wide = this.wideTree.around(row).map((place) => this.wide[place]);
    return wide.concat(this.narrow.slice(this.firstOfRow[row], this.firstOfRow[row + 1]));
  }

  isWide(i) {
    return this.values[i][END_ROW] > this.values[i][BEGIN_ROW];
  }

  // The value's own text; a very long one is cut.
  text(i) {
    const value = this.values[i];
    if (value.length > TEXT) return value[TEXT];
    const last = Math.min(value[END_ROW], value[BEGIN_ROW] + QUOTED_ROWS);
    const pieces = [];
    for (let row = value[BEGIN_ROW]; row <= last; ++row) {
      const { from, to } = this.spanInRow(i, row);
      pieces.push(this.lines[row].slice(from, Math.min(to, from + QUOTED_CHARS)));
    }
    return pieces.join("\n") + (last < value[END_ROW] ? "\n…" : "");
  }

  // Whether the text shown at the value's place isn't the value's text: a rule works on lines that its
  // operations have rewritten.
  isRewritten(i) {
    return this.values[i].length > TEXT && this.hasPlace(this.values[i]);
  }

  name(i) {
    return this.names[this.values[i][NAME]];
  }

  type(i) {
    return this.types[this.values[i][TYPE]];
  }

  // The place as people read it: "12:5-17", "12:5-15:8", or "no place".
  place(i) {
    const value = this.values[i];
    if (!this.hasPlace(value)) return "no place";
    const begin = `${value[BEGIN_ROW] + 1}:${value[BEGIN_COL] + 1}`;
    return value[BEGIN_ROW] === value[END_ROW] ? `${begin}-${value[END_COL]}`
                                               : `${begin}-${value[END_ROW] + 1}:${value[END_COL]}`;
  }

  ruleTitle(rule) {
    const { kind, name } = this.rules[rule];
    return name ? `${kind} $${name}` : kind;
  }
}
