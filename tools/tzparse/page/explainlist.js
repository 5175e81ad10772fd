// Building elements, and lists of which only the rows in sight exist.

const LOOKAHEAD = 30;          // rows made beyond what is in sight, both ways
const TALLEST = 15000000;      // pixels; browsers don't lay out much taller elements

// What doesn't show by itself, or would change how what follows is shown: control characters, marks of
// direction and width, surrogates, separators of lines.
const UNSEEN = /[\p{C}\p{Zl}\p{Zp}]/u;
const UNSEEN_PIECES = /[^\P{C}\t]|[\p{Zl}\p{Zp}]/gu;

function make(tag, className, ...content) {
  const element = document.createElement(tag);
  if (className) element.className = className;
  element.append(...content);
  return element;
}

const hex = (code, digits) => code.toString(16).toUpperCase().padStart(digits, "0");

// What stands for a character that can't be seen: "\n", "\x1B", for a byte that is no UTF-8 "\xE9", else
// "U+202E".
function label(char) {
  const code = char.codePointAt(0);
  if (code === 10) return "\\n";
  if (code === 13) return "\\r";
  if (code < 0x80) return "\\x" + hex(code, 2);
  if (code >= 0xdc80 && code <= 0xdcff) return "\\x" + hex(code - 0xdc00, 2);
  return "U+" + hex(code, 4);
}

// Appends device text so that every character can be seen and none has an effect. Line feeds of values
// stay when `keepsLines`.
function appendText(element, text, keepsLines = false) {
  if (!UNSEEN.test(text)) {
    element.append(text);
    return element;
  }
  let done = 0;
  for (const { 0: char, index } of text.matchAll(UNSEEN_PIECES)) {
    if (keepsLines && char === "\n") continue;
    if (index > done) element.append(text.slice(done, index));
    element.append(make("span", "odd", label(char)));
    done = index + char.length;
  }
  if (done < text.length) element.append(text.slice(done));
  return element;
}

function textElement(tag, className, text) {
  return appendText(make(tag, className), text);
}

// A list of rows of one height in a pane that scrolls. `makeRow(i)` gives the element of a row.
class RowList {
  constructor(pane, rowHeight, makeRow) {
    this.pane = pane;
    this.rowHeight = rowHeight;
    this.makeRow = makeRow;
    this.count = 0;
    this.first = this.last = 0;  // the rows that exist, the last excluded
    this.window = make("div", "window");
    this.spacer = make("div", "spacer", this.window);
    pane.append(this.spacer);
    pane.addEventListener("scroll", () => this.show(), { passive: true });
    new ResizeObserver(() => this.show()).observe(pane);
  }

  // Takes so many rows, all to be made anew; the widest has about so many characters.
  reset(count, widest) {
    this.count = count;
    this.spacer.style.height = Math.min(count * this.rowHeight, TALLEST) + "px";
    this.spacer.style.minWidth = widest ? `max(100%, ${Math.min(widest, 100000)}ch)` : "";
    this.refresh();
  }

  // Makes the rows in sight anew.
  refresh() {
    this.window.replaceChildren();
    this.first = this.last = 0;
    this.show();
  }

  // Where the pane's upper edge stands among all rows, in pixels. Taller lists than a browser can lay out
  // scroll in proportion.
  get top() {
    const full = this.count * this.rowHeight, view = this.pane.clientHeight;
    if (full <= TALLEST) return this.pane.scrollTop;
    return this.pane.scrollTop / (TALLEST - view) * (full - view);
  }

  set top(pixels) {
    const full = this.count * this.rowHeight, view = this.pane.clientHeight;
    this.pane.scrollTop = full <= TALLEST ? pixels : pixels / (full - view) * (TALLEST - view);
  }

  show() {
    const top = this.top;
    const first = Math.max(0, Math.floor(top / this.rowHeight) - LOOKAHEAD);
    const last = Math.min(this.count, Math.ceil((top + this.pane.clientHeight) / this.rowHeight) + LOOKAHEAD);
    this.window.style.top = this.pane.scrollTop - (top - first * this.rowHeight) + "px";
    if (first >= this.last || last <= this.first) {
      this.window.replaceChildren(...this.makeRows(first, last));
    } else {
      while (this.first < first) { this.window.firstChild.remove(); ++this.first; }
      while (this.last > last) { this.window.lastChild.remove(); --this.last; }
      if (this.first > first) this.window.prepend(...this.makeRows(first, this.first));
      if (this.last < last) this.window.append(...this.makeRows(this.last, last));
    }
    this.first = first;
    this.last = last;
  }

  makeRows(first, last) {
    const rows = [];
    for (let i = first; i < last; ++i) rows.push(this.makeRow(i));
    return rows;
  }

  // The element of a row, when it exists.
  rowElement(i) {
    return i >= this.first && i < this.last ? this.window.children[i - this.first] : null;
  }

  // Scrolls so that the row is in sight: in the middle when it wasn't. What comes into sight is made by
  // `show` or `refresh`.
  scrollTo(i) {
    const top = this.top, view = this.pane.clientHeight, y = i * this.rowHeight;
    if (y >= top && y + this.rowHeight <= top + view) return;
    this.top = Math.max(0, y - (view - this.rowHeight) / 2);
  }
}
