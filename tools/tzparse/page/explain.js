// The page: what is chosen, its details, the tooltip, keys and splitters. Everything that is shown is put in
// as text; nothing of the data becomes markup.

function plural(count, word) {
  return `${count} ${word}${count === 1 ? "" : "s"}`;
}

// The innermost value under an event of the pointer, -1 when there is none.
function valueAt(event) {
  const values = event.target.closest("[data-values]")?.dataset.values;
  return values ? app.innermost(values.split(" ").map(Number)) : -1;
}

class App {
  constructor(report) {
    this.report = report;
    this.rule = this.value = -1;
    this.trouble = -1;
    this.text = new TextPane(report, this);
    this.rules = new RuleTree(report, this);
    this.values = new ValueTree(report, this);
    this.showHeader();
    this.connect();
  }

  innermost(values) {
    return this.text.innermost(values);
  }

  showHeader() {
    const { report } = this;
    const put = (id, text) => appendText(document.getElementById(id), text);
    document.title = `${report.textName} – tzparse explain`;
    put("textname", report.textName);
    put("definitionname", report.definition);
    put("chosen", report.choice.at(-1) ?? "");
    document.getElementById("trials").append(...report.choice.map((line) => textElement("li", "", line)));
    put("rulecount", String(report.rules.length));
    this.showCount(report.values.length);
    const status = document.getElementById("status");
    status.textContent = report.parsed ? "✓ parsed" : "✗ not parsed";
    status.classList.toggle("bad", !report.parsed);
    const error = document.getElementById("error");
    error.hidden = report.parsed;
    appendText(error, report.error || "The text couldn't be parsed.", true);
    const troubles = document.getElementById("troubles");
    troubles.hidden = report.troubles.length === 0;
    troubles.textContent = "▲ " + plural(report.troubles.length, "trouble");
  }

  showCount(shown) {
    const all = this.report.values.length;
    document.getElementById("valuecount").textContent = shown === all ? String(all) : `${shown} of ${all}`;
  }

  connect() {
    const on = (id, type, handler) => document.getElementById(id).addEventListener(type, handler);
    on("troubles", "click", () => this.nextTrouble());
    on("filter", "input", (event) => this.showCount(this.values.filter(event.target.value)));
    on("find", "input", (event) => { this.text.found = -1; this.find(event.target.value, 1); });
    on("find", "keydown", (event) => { if (event.key === "Enter") this.find(event.target.value, event.shiftKey ? -1 : 1); });
    on("theme", "click", (event) => this.nextTheme(event.currentTarget));
    document.addEventListener("keydown", (event) => this.onKey(event));
    document.querySelectorAll(".splitter").forEach(connectSplitter);
    new Tooltip(this);
  }

  find(words, step) {
    const { at, of } = this.text.find(words, step);
    document.getElementById("findcount").textContent = words === "" ? "" : of === 0 ? "none" : `${at} of ${of}`;
  }

  nextTheme(button) {
    const themes = ["light dark", "light", "dark"], names = ["as the system", "light", "dark"];
    const next = (themes.indexOf(document.documentElement.style.colorScheme || themes[0]) + 1) % themes.length;
    document.documentElement.style.colorScheme = themes[next];
    button.setAttribute("aria-label", "Colours: " + names[next]);
    this.text.overview.draw();
  }

  onKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const field = event.target.closest("input");
    if (event.key === "Escape") {
      field?.blur();
      this.clear();
    } else if (!field) {
      const actions = { n: () => this.stepValue(1), p: () => this.stepValue(-1), t: () => this.nextTrouble(),
                        "/": () => document.getElementById("filter").focus(),
                        f: () => document.getElementById("find").focus() };
      if (!(event.key in actions)) return;
      actions[event.key]();
      event.preventDefault();
    }
  }

  clear() {
    this.rule = this.value = -1;
    document.getElementById("details").replaceChildren();
    this.refresh();
  }

  refresh() {
    this.text.refresh();
    this.rules.refresh();
    this.values.refresh();
  }

  chooseValue(i, { scrollsText = true } = {}) {
    this.value = i;
    this.rule = this.report.values[i][RULE];
    if (scrollsText && this.report.hasPlace(this.report.values[i])) this.text.revealValue(i);
    else this.text.refresh();
    this.values.reveal(i);
    this.rules.reveal(this.rule);
    showDetails(valueDetails(this, i));
  }

  chooseRule(i) {
    this.rule = i;
    this.value = -1;
    const rule = this.report.rules[i];
    const row = rule.ranges.length > 0 ? rule.ranges[0][0] : rule.begin;
    if (rule.ran && row < this.report.lines.length) this.text.reveal(row);
    else this.text.refresh();
    this.rules.refresh();
    this.values.refresh();
    showDetails(ruleDetails(this, i));
  }

  stepValue(step) {
    const { ordered } = this.report;
    if (ordered.length === 0) return;
    const at = ordered.indexOf(this.value);
    const next = at < 0 ? (step > 0 ? 0 : ordered.length - 1) : at + step;
    this.chooseValue(ordered[(next + ordered.length) % ordered.length]);
  }

  nextTrouble() {
    const { troubles } = this.report;
    if (troubles.length === 0) return;
    this.trouble = (this.trouble + 1) % troubles.length;
    const { rule, fact } = troubles[this.trouble];
    this.chooseRule(rule);
    this.rules.reveal(rule);
    if (fact.line >= 0) this.goTo(fact.line, fact.column);
  }

  goTo(row, byteColumn) {
    if (row >= this.report.lines.length) return;
    this.text.reveal(row, byteColumn > 0 ? this.report.column(row, byteColumn) : 0);
  }
}

function showDetails(content) {
  const details = document.getElementById("details");
  details.replaceChildren(...content);
  details.scrollTop = 0;
}

function jump(text, action) {
  const button = make("button", "jump", text);
  button.type = "button";
  button.addEventListener("click", action);
  return button;
}

const LISTED = 500;  // ranges or facts in the details

function ruleDetails(app, i) {
  const { report } = app;
  const rule = report.rules[i];
  const title = make("h3", "", make("span", `chip c${report.hue(i)}`, String(i)), textElement("span", "", report.ruleTitle(i)));
  const run = rule.ran ? `ran over lines ${rule.begin + 1} to ${rule.end}, ${rule.open} of ${rule.end - rule.begin} open to it`
                       : "was not run";
  const content = [title, textElement("p", "path", rule.path), make("p", "", run),
                   make("p", "", plural(report.counts[i], "value"))];
  if (rule.ranges.length > 0) {
    const ranges = make("p", "ranges", plural(rule.ranges.length, "range") + ": ");
    for (const [begin, end] of rule.ranges.slice(0, LISTED))
      ranges.append(jump(`${begin + 1}–${end}`, () => app.goTo(begin, 0)), " ");
    content.push(ranges);
  }
  const facts = make("ul", "");
  facts.append(...rule.facts.slice(0, LISTED).map((fact) => factItem(app, fact)));
  content.push(facts);
  if (rule.facts.length > LISTED) content.push(make("p", "quiet", `and ${rule.facts.length - LISTED} more`));
  return content;
}

function factItem(app, fact) {
  const item = textElement("li", fact.trouble ? "trouble" : "", fact.text);
  if (fact.line >= 0) {
    const place = fact.column >= 0 ? `line ${fact.line + 1}:${fact.column + 1}` : `line ${fact.line + 1}`;
    item.append(" ", jump(place, () => app.goTo(fact.line, fact.column)));
  }
  if (fact.statement) {
    const statement = textElement("pre", "statement", fact.statement);
    if (fact.caret >= 0) {
      const before = " ".repeat(charColumn(fact.statement, fact.caret));
      statement.append("\n" + before, make("span", "caret", "^"));
    }
    item.append(statement);
  }
  return item;
}

function valueDetails(app, i) {
  const { report } = app;
  const rule = report.values[i][RULE];
  const title = make("h3", "", make("span", `chip c${report.hue(rule)}`, rule >= 0 ? String(rule) : "–"),
                     ...valueTitle(report, i));
  const content = [title];
  if (rule >= 0) {
    content.push(make("p", "", "of rule ", jump(report.ruleTitle(rule), () => app.chooseRule(rule))),
                 textElement("p", "path", report.rules[rule].path));
  }
  content.push(appendText(make("pre", ""), report.text(i).slice(0, QUOTED_CHARS), true));
  if (report.isRewritten(i))
    content.push(make("p", "quiet", "The rule read this line after it had been rewritten, or the value was made of several pieces."));
  return content;
}

// Name with the row of a table, type, place.
function valueTitle(report, i) {
  const index = report.values[i][INDEX], isCell = report.name(i).includes(".");
  const name = textElement("b", "", report.name(i) + (isCell || index > 0 ? `[${index + 1}]` : ""));
  return [name, " ", make("span", "quiet", report.type(i)), " ", make("span", "", report.place(i))];
}

// What stands under the pointer, the innermost value first.
class Tooltip {
  constructor(app) {
    this.app = app;
    this.box = document.getElementById("tip");
    for (const id of ["text", "values"]) {
      const pane = document.getElementById(id);
      pane.addEventListener("pointerover", (event) => this.show(event));
      pane.addEventListener("pointerleave", () => this.hide());
      pane.addEventListener("scroll", () => this.hide(), { passive: true });
    }
  }

  hide() {
    this.box.hidden = true;
  }

  show(event) {
    const values = event.target.closest("[data-values]")?.dataset.values;
    if (!values) {
      this.hide();
      return;
    }
    const inside = values.split(" ").map(Number);
    const inner = this.app.innermost(inside);
    const others = inside.filter((i) => i !== inner).reverse().slice(0, 4);
    this.box.replaceChildren(...[inner, ...others].map((i) => this.item(i)));
    this.box.hidden = false;
    this.moveTo(event.clientX, event.clientY);
  }

  item(i) {
    const { report } = this.app;
    const rule = report.values[i][RULE];
    const item = make("div", "item", make("span", `chip c${report.hue(rule)}`, rule >= 0 ? String(rule) : "–"), " ",
                      ...valueTitle(report, i));
    const text = report.text(i);
    item.append(appendText(make("div", "shown"), text.length > 300 ? text.slice(0, 300) + "…" : text, true));
    if (rule >= 0) item.append(textElement("div", "path", `${report.ruleTitle(rule)} – ${report.rules[rule].path}`));
    return item;
  }

  moveTo(x, y) {
    const { width, height } = this.box.getBoundingClientRect();
    this.box.style.left = Math.max(4, Math.min(x + 12, innerWidth - width - 4)) + "px";
    this.box.style.top = Math.max(4, y + 16 + height < innerHeight ? y + 16 : y - height - 10) + "px";
  }
}

// A splitter changes the length of its neighbour, by the pointer or by arrow keys.
function connectSplitter(splitter) {
  const { property, sign, axis } = splitter.dataset;
  const neighbour = Number(sign) > 0 ? splitter.previousElementSibling : splitter.nextElementSibling;
  const length = () => (axis === "x" ? neighbour.offsetWidth : neighbour.offsetHeight);
  const set = (pixels) => document.documentElement.style.setProperty(property, Math.max(40, pixels) + "px");
  splitter.addEventListener("pointerdown", (down) => {
    const begin = length(), from = axis === "x" ? down.clientX : down.clientY;
    const move = (event) => set(begin + Number(sign) * ((axis === "x" ? event.clientX : event.clientY) - from));
    splitter.setPointerCapture(down.pointerId);
    splitter.addEventListener("pointermove", move);
    splitter.addEventListener("lostpointercapture", () => splitter.removeEventListener("pointermove", move), { once: true });
    down.preventDefault();
  });
  splitter.addEventListener("keydown", (event) => {
    const steps = { ArrowRight: 20, ArrowDown: 20, ArrowLeft: -20, ArrowUp: -20 };
    if (!(event.key in steps)) return;
    set(length() + Number(sign) * steps[event.key]);
    event.preventDefault();
  });
}

const app = new App(new Report(JSON.parse(document.getElementById("data").textContent)));
