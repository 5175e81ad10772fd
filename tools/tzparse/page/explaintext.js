// The text: a row a line, with its gutter, its values in place and the ranges of the chosen rule.

const DRAWN_CHARS = 20000;   // of one line; the rest is only told
const DRAWN_VALUES = 2000;   // of one line, the same

// Cuts a line where values begin or end: [{from, to, values}], the values as indexes, the outermost first.
// `spans` are {from, to, value}, those that begin first before the others.
function cutLine(spans, length) {
  const cuts = new Set([0, length]);
  for (const { from, to } of spans) cuts.add(from).add(to);
  const places = [...cuts].filter((place) => place <= length).sort((a, b) => a - b);
  const pieces = [];
  let open = [], next = 0;
  for (let i = 0; i + 1 < places.length; ++i) {
    const from = places[i];
    open = open.filter((span) => span.to > from);
    while (next < spans.length && spans[next].from <= from) {
      if (spans[next].to > from) open.push(spans[next]);
      ++next;
    }
    pieces.push({ from, to: places[i + 1], values: open.map((span) => span.value) });
  }
  return pieces;
}

class TextPane {
  constructor(report, app) {
    this.report = report;
    this.app = app;
    this.pane = document.getElementById("text");
    this.found = -1;
    this.here = -1;
    this.pane.style.setProperty("--digits", String(report.lines.length).length);
    this.list = new RowList(this.pane, 18, (row) => this.makeLine(row));
    this.list.reset(report.lines.length, this.widestLine() + 16);
    this.pane.addEventListener("click", (event) => {
      const value = valueAt(event);
      if (value >= 0) app.chooseValue(value, { scrollsText: false });
    });
    this.overview = new Overview(report, this);
  }

  widestLine() {
    return this.report.lines.reduce((widest, line) => Math.max(widest, Math.min(line.length, DRAWN_CHARS)), 0);
  }

  makeLine(row) {
    const line = make("div", "line");
    line.dataset.row = row;
    line.classList.toggle("found", row === this.found);
    line.classList.toggle("here", row === this.here);
    const values = this.report.valuesInRow(row);
    line.append(this.makeGutter(row, values), this.makeCode(row, values));
    return line;
  }

  makeGutter(row, values) {
    const gutter = make("span", "gutter");
    gutter.append(this.makeRange(row), this.makeTroubleMark(row), make("span", "number", String(row + 1)));
    const owners = make("span", "owners");
    for (const rule of new Set(values.slice(0, 50).map((i) => this.report.values[i][RULE])))
      if (rule >= 0) owners.append(make("span", "c" + this.report.hue(rule), String(rule)));
    gutter.append(owners);
    return gutter;
  }

  // The bar of the chosen rule: pale over the range of its run, full over what it found.
  makeRange(row) {
    const bar = make("span", "range");
    const rule = this.report.rules[this.app.rule];
    if (!rule) return bar;
    bar.classList.add("c" + this.report.hue(this.app.rule));
    if (rule.ran && row >= rule.begin && row < rule.end) bar.classList.add("run");
    const own = this.ownRange(rule.ranges, row);
    if (own) bar.classList.add("own");
    if (own && own[0] === row) bar.classList.add("first");
    return bar;
  }

  // Paragraphs come in the order of their lines and don't overlap, so a search by halves finds one.
  ownRange(ranges, row) {
    let low = 0, high = ranges.length;
    while (low < high) {
      const middle = (low + high) >> 1;
      if (ranges[middle][0] <= row) low = middle + 1;
      else high = middle;
    }
    return low > 0 && row < ranges[low - 1][1] ? ranges[low - 1] : null;
  }

  makeTroubleMark(row) {
    const troubles = this.report.troubleRows.get(row);
    const mark = make("span", "trouble-mark", troubles ? "▲" : "");
    if (troubles) mark.title = troubles.slice(0, 10).map(({ fact }) => fact.text).join("\n");
    return mark;
  }

  makeCode(row, values) {
    const code = make("span", "code");
    const line = this.report.lines[row];
    const length = Math.min(line.length, DRAWN_CHARS);
    const spans = values.slice(0, DRAWN_VALUES).map((value) => ({ value, ...this.report.spanInRow(value, row) }));
    const faults = (this.report.troubleRows.get(row) ?? []).filter(({ fact }) => fact.column >= 0)
        .map(({ fact }) => this.report.column(row, fact.column));
    for (const piece of cutLine(spans, length)) code.append(this.makePiece(row, line, piece, spans, faults));
    if (line.length > length || values.length > DRAWN_VALUES) {
      code.append(make("span", "rest", ` … ${line.length - length} more characters, ` +
          `${Math.max(0, values.length - DRAWN_VALUES)} more values`));
    }
    return code;
  }

  makePiece(row, line, { from, to, values }, spans, faults) {
    const text = line.slice(from, to);
    if (values.length === 0) return this.markFaults(textElement("span", "", text), text, from, faults);
    const { report } = this;
    const inner = this.innermost(values);
    const rule = report.values[inner][RULE];
    const piece = textElement("span", `value c${report.hue(rule)}`, text);
    const outer = values.find((value) => value !== inner && report.values[value][RULE] !== rule);
    if (outer !== undefined) piece.classList.add("nested", "o" + report.hue(report.values[outer][RULE]));
    piece.classList.toggle("wide", report.isWide(inner));
    piece.classList.toggle("begin", report.values[inner][BEGIN_ROW] === row &&
        spans.some((span) => span.value === inner && span.from === from));
    piece.classList.toggle("of-rule", values.some((value) => report.values[value][RULE] === this.app.rule));
    piece.classList.toggle("selected", values.includes(this.app.value));
    piece.dataset.values = values.slice(-12).join(" ");
    return this.markFaults(piece, text, from, faults);
  }

  // The value that is the least in extent, the last of several: it is what the pointer means.
  innermost(values) {
    const { report } = this;
    return values.reduce((least, value) => {
      const a = report.values[least], b = report.values[value];
      const rows = (b[END_ROW] - b[BEGIN_ROW]) - (a[END_ROW] - a[BEGIN_ROW]);
      const columns = (b[END_COL] - b[BEGIN_COL]) - (a[END_COL] - a[BEGIN_COL]);
      return rows < 0 || (rows === 0 && columns <= 0) ? value : least;
    });
  }

  // The word at a trouble's column is underlined by a wave.
  markFaults(piece, text, from, faults) {
    const fault = faults.find((column) => column >= from && column < from + text.length);
    if (fault === undefined) return piece;
    piece.replaceChildren();
    appendText(piece, text.slice(0, fault - from));
    const word = text.slice(fault - from).match(/^\S+|^\s/)[0];
    piece.append(textElement("span", "fault", word));
    return appendText(piece, text.slice(fault - from + word.length));
  }

  // Shows what the app has chosen: colours, bars, marks.
  refresh() {
    this.pane.classList.toggle("dimming", this.app.rule >= 0);
    this.list.refresh();
    this.overview.draw();
  }

  // Brings a place into sight, its column too.
  reveal(row, column = 0) {
    this.here = row;
    this.list.scrollTo(row);
    this.refresh();
    const code = this.list.rowElement(row)?.querySelector(".code");
    if (!code) return;
    const line = this.report.lines[row].slice(0, column);
    const x = (line.length + 7 * (line.match(/\t/g) ?? []).length) * this.charWidth();
    const view = this.pane.clientWidth - code.offsetLeft;
    if (x < this.pane.scrollLeft || x > this.pane.scrollLeft + view - 40)
      this.pane.scrollLeft = Math.max(0, x - view / 3);
  }

  charWidth() {
    if (!this.measured) {
      const probe = make("span", "code", "0".repeat(100));
      probe.style.position = "absolute";
      this.pane.append(probe);
      this.measured = (probe.getBoundingClientRect().width - 6) / 100;
      probe.remove();
    }
    return this.measured;
  }

  // Brings a value that has a place into sight.
  revealValue(i) {
    const value = this.report.values[i];
    this.reveal(value[BEGIN_ROW], this.report.column(value[BEGIN_ROW], value[BEGIN_COL]));
  }

  // Goes to the next line (or, backwards, the one before) that has the words; returns how many have them.
  find(words, step) {
    const wanted = words.toLowerCase();
    const rows = [];
    this.report.lines.forEach((line, row) => { if (line.toLowerCase().includes(wanted)) rows.push(row); });
    if (wanted === "" || rows.length === 0) {
      this.found = -1;
      this.list.refresh();
      return { at: 0, of: 0 };
    }
    let at = step >= 0 ? rows.findIndex((row) => row > this.found) : rows.findLastIndex((row) => row < this.found);
    if (at < 0) at = step >= 0 ? 0 : rows.length - 1;
    this.found = rows[at];
    this.reveal(this.found, this.report.lines[this.found].toLowerCase().indexOf(wanted));
    return { at: at + 1, of: rows.length };
  }
}

// The strip beside the text: the whole text on the height of the pane.
class Overview {
  constructor(report, text) {
    this.report = report;
    this.text = text;
    this.canvas = document.getElementById("overview");
    this.canvas.addEventListener("click", (event) => {
      const row = Math.floor(event.offsetY / this.canvas.clientHeight * report.lines.length);
      text.reveal(Math.min(row, report.lines.length - 1));
    });
    new ResizeObserver(() => this.draw()).observe(this.canvas);
  }

  draw() {
    const { canvas, report, text: { app } } = this;
    canvas.height = canvas.clientHeight;
    const context = canvas.getContext("2d");
    context.clearRect(0, 0, canvas.width, canvas.height);
    const rule = report.rules[app.rule];
    if (rule) {
      const hue = this.colour("c" + report.hue(app.rule));
      if (rule.ran) this.fill(context, hue, 0.25, 0, 12, rule.begin, rule.end);
      for (const [begin, end] of rule.ranges) this.fill(context, hue, 0.9, 0, 5, begin, end);
    }
    this.drawValues(context);
    for (const row of report.troubleRows.keys()) this.fill(context, this.colour("", "--bad"), 1, 6, 6, row, row + 1);
  }

  // The values of the chosen rule, one mark a pixel, and the chosen value over all.
  drawValues(context) {
    const { report, text: { app } } = this;
    const drawn = new Set();
    const hue = this.colour("c" + report.hue(app.rule));
    for (const i of app.rule >= 0 ? report.narrow : []) {
      const [rule, , , , row] = report.values[i];
      const y = Math.floor(row / report.lines.length * this.canvas.height);
      if (rule !== app.rule || drawn.has(y)) continue;
      drawn.add(y);
      this.fill(context, hue, 0.9, 6, 5, row, row + 1);
    }
    const value = report.values[app.value];
    if (value && report.hasPlace(value)) {
      const mark = this.colour("", "--mark");
      this.fill(context, mark, 1, 0, 12, value[BEGIN_ROW], value[BEGIN_ROW] + 1);
    }
  }

  fill(context, colour, alpha, x, width, begin, end) {
    const scale = this.canvas.height / Math.max(1, this.report.lines.length);
    context.globalAlpha = alpha;
    context.fillStyle = colour;
    context.fillRect(x, begin * scale, width, Math.max(2, (end - begin) * scale));
  }

  // A colour of the style sheet, as a canvas takes it.
  colour(className, property = "--hue") {
    const probe = make("span", className);
    probe.style.color = `var(${property})`;
    document.body.append(probe);
    const { color } = getComputedStyle(probe);
    probe.remove();
    return color;
  }
}
