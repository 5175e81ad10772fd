// The tree of rules and the tree of variables, both as lists of rows with a level.

// What both trees share: rows out of `rows`, one of them active for the keyboard. A subclass makes `rows`
// ({level, fold: undefined, true when folded, ...}) and says what a row shows and does.
class Tree {
  constructor(id) {
    this.pane = document.getElementById(id);
    this.rows = [];
    this.active = 0;
    this.list = new RowList(this.pane, 18, (i) => this.makeRow(i));
    this.pane.addEventListener("keydown", (event) => this.onKey(event));
    this.pane.addEventListener("click", (event) => this.onClick(event));
    this.pane.addEventListener("focus", () => this.activate(this.active));
  }

  makeRow(i) {
    const row = this.rows[i];
    const element = make("div", "row", make("span", "fold", row.fold === undefined ? "" : row.fold ? "▸" : "▾"));
    element.id = `${this.pane.id}-${i}`;
    element.setAttribute("role", "treeitem");
    element.setAttribute("aria-level", row.level + 1);
    if (row.fold !== undefined) element.setAttribute("aria-expanded", !row.fold);
    element.style.paddingLeft = 6 + 14 * Math.min(row.level, 40) + "px";
    element.classList.toggle("active", i === this.active);
    const isSelected = this.isSelected(row);
    element.classList.toggle("selected", isSelected);
    element.setAttribute("aria-selected", isSelected);
    this.fill(element, row);
    return element;
  }

  onClick(event) {
    const element = event.target.closest(".row");
    if (!element) return;
    const i = this.list.first + [...this.list.window.children].indexOf(element);
    this.activate(i);
    if (event.target.classList.contains("fold")) this.fold(i, !this.rows[i].fold);
    else this.choose(this.rows[i], event);
  }

  onKey(event) {
    const row = this.rows[this.active];
    if (!row) return;
    const page = Math.max(1, Math.floor(this.pane.clientHeight / this.list.rowHeight) - 1);
    const moves = { ArrowDown: 1, ArrowUp: -1, PageDown: page, PageUp: -page, Home: -this.rows.length, End: this.rows.length };
    if (event.key in moves) this.activate(this.active + moves[event.key]);
    else if (event.key === "ArrowRight") this.fold(this.active, false);
    else if (event.key === "ArrowLeft") this.foldOrLeave(row);
    else if (event.key === "Enter" || event.key === " ") this.choose(row, event);
    else return;
    event.preventDefault();
  }

  // Folds an open row; from any other goes to the row that it stands below.
  foldOrLeave(row) {
    if (row.fold === false) {
      this.fold(this.active, true);
      return;
    }
    for (let i = this.active - 1; i >= 0; --i) {
      if (this.rows[i].level >= row.level) continue;
      this.activate(i);
      return;
    }
  }

  fold(i, isFolded) {
    const row = this.rows[i];
    if (!row || row.fold === undefined || row.fold === isFolded) return;
    this.setFolded(row, isFolded);
  }

  activate(i) {
    const before = this.active;
    this.active = Math.max(0, Math.min(i, this.rows.length - 1));
    if (this.rows.length === 0) return;
    this.list.scrollTo(this.active);
    this.list.show();
    this.list.rowElement(before)?.classList.remove("active");
    this.list.rowElement(this.active)?.classList.add("active");
    this.pane.setAttribute("aria-activedescendant", `${this.pane.id}-${this.active}`);
  }

  refresh() {
    this.list.refresh();
  }
}

class RuleTree extends Tree {
  constructor(report, app) {
    super("rules");
    this.report = report;
    this.app = app;
    this.folded = new Set();
    this.level = [];
    report.rules.forEach((rule, i) => { this.level[i] = rule.parent < 0 ? 0 : this.level[rule.parent] + 1; });
    this.parents = new Set(report.rules.map((rule) => rule.parent));
    this.build();
  }

  build() {
    this.rows = [];
    let hidden = Infinity;  // rows below this level stand in a folded one
    this.report.rules.forEach((rule, i) => {
      const level = this.level[i];
      if (level > hidden) return;
      hidden = this.folded.has(i) ? level : Infinity;
      this.rows.push({ level, rule: i, fold: this.parents.has(i) ? this.folded.has(i) : undefined });
    });
    this.list.reset(this.rows.length);
  }

  fill(element, { rule: i }) {
    const rule = this.report.rules[i];
    element.dataset.rule = i;
    element.classList.toggle("idle", !rule.ran);
    element.append(make("span", `chip c${this.report.hue(i)}`, String(i)), textElement("span", "", this.report.ruleTitle(i)));
    const troubles = rule.facts.filter((fact) => fact.trouble).length;
    if (troubles > 0) element.append(make("span", "bad", `▲${troubles}`));
    const counts = [];
    if (this.report.counts[i] > 0) counts.push(plural(this.report.counts[i], "value"));
    if (rule.ranges.length > 0) counts.push(plural(rule.ranges.length, "range"));
    if (!rule.ran) counts.push("not run");
    element.append(make("span", "place", counts.join(", ")));
  }

  isSelected(row) {
    return row.rule === this.app.rule;
  }

  choose(row) {
    this.app.chooseRule(row.rule);
  }

  setFolded(row, isFolded) {
    if (isFolded) this.folded.add(row.rule);
    else this.folded.delete(row.rule);
    this.build();
  }

  reveal(rule) {
    const i = this.rows.findIndex((row) => row.rule === rule);
    if (i >= 0) this.activate(i);
    this.refresh();
  }
}

const WIDEST_CELL = 28;    // characters
const MEASURED_ROWS = 300; // of a table, for the widths of its columns

// The variables. Names without a "." are leaves; "interfaces.mtu" is a column of the table "interfaces",
// which shows as a grid with a row for each index.
class ValueTree extends Tree {
  constructor(report, app) {
    super("values");
    this.report = report;
    this.app = app;
    this.folded = new Set();
    this.words = "";
    this.roots = this.group();
    this.build();
  }

  // Puts names into nodes ({name, nodes, leaves, columns}), the values of a table into its cells.
  group() {
    const root = { name: "", nodes: new Map(), leaves: [], columns: new Map(), cells: new Map() };
    const nodes = this.report.names.map((name) => this.nodeOf(root, name.split(".").slice(0, -1)));
    this.report.values.forEach((value, i) => {
      const node = nodes[value[NAME]];
      if (node === root) root.leaves.push(i);
      else this.addCell(node, i, value);
    });
    return root;
  }

  nodeOf(root, parts) {
    let node = root;
    let path = "";
    for (const part of parts) {
      path += (path ? "." : "") + part;
      if (!node.nodes.has(part)) {
        node.nodes.set(part, { name: part, path, nodes: new Map(), leaves: [], columns: new Map(), cells: new Map() });
      }
      node = node.nodes.get(part);
    }
    return node;
  }

  // A second value of one cell stands below the grid by itself.
  addCell(node, i, value) {
    if (!node.columns.has(value[NAME])) {
      node.columns.set(value[NAME], this.report.names[value[NAME]].split(".").at(-1).length);
    }
    if (!node.cells.has(value[INDEX])) node.cells.set(value[INDEX], new Map());
    const cells = node.cells.get(value[INDEX]);
    if (cells.has(value[NAME])) node.leaves.push(i);
    else cells.set(value[NAME], i);
    if (node.cells.size > MEASURED_ROWS) return;
    const length = Math.min(this.report.text(i).length, WIDEST_CELL);
    node.columns.set(value[NAME], Math.max(node.columns.get(value[NAME]), length));
  }

  build() {
    this.rows = [];
    this.shown = 0;
    this.rowOfValue = new Map();
    this.addNode(this.roots, 0);
    this.list.reset(this.rows.length, this.widestRow());
    this.active = Math.min(this.active, Math.max(0, this.rows.length - 1));
  }

  // Nodes nest as deep as names have parts, which a definition bounds by the depth of its rules.
  addNode(node, level) {
    for (const i of node.leaves) if (this.matches(i)) this.addRow({ level, value: i }, [i]);
    this.addGrid(node, level);
    for (const child of node.nodes.values()) {
      const at = this.rows.length, before = this.shown;
      this.rows.push({ level, node: child, fold: this.folded.has(child.path) });
      if (this.folded.has(child.path)) continue;
      this.addNode(child, level + 1);
      if (this.shown === before && this.words !== "") this.rows.length = at;
    }
  }

  addGrid(node, level) {
    const at = this.rows.length;
    this.rows.push({ level, grid: node });
    for (const [index, cells] of node.cells) {
      const values = [...cells.values()];
      if (values.some((i) => this.matches(i))) this.addRow({ level, grid: node, index, cells }, values);
    }
    if (this.rows.length === at + 1) this.rows.length = at;
  }

  // About how many characters the widest row has.
  widestRow() {
    let widest = 0;
    for (const { level, value, grid, cells } of this.rows.slice(0, MEASURED_ROWS)) {
      let width = 2 * level + 8;
      if (value !== undefined) width += this.report.name(value).length + this.shortText(value).length + 20;
      if (grid && !cells) for (const column of grid.columns.values()) width += Math.max(3, column) + 3;
      widest = Math.max(widest, width);
    }
    return widest;
  }

  addRow(row, values) {
    for (const i of values) this.rowOfValue.set(i, this.rows.length);
    this.shown += values.length;
    this.rows.push(row);
  }

  matches(i) {
    return this.words === "" || this.report.name(i).toLowerCase().includes(this.words) ||
        this.report.text(i).toLowerCase().includes(this.words);
  }

  filter(words) {
    this.words = words.toLowerCase();
    this.pane.scrollTop = 0;
    this.active = 0;
    this.build();
    return this.shown;
  }

  fill(element, row) {
    if (row.node) this.fillNode(element, row.node);
    else if (row.cells) this.fillCells(element, row);
    else if (row.grid) this.fillHead(element, row.grid);
    else this.fillLeaf(element, row.value);
  }

  fillNode(element, node) {
    element.dataset.path = node.path;
    const facts = node.cells.size > 0 ? plural(node.cells.size, "row") : "";
    element.append(textElement("b", "", node.name), make("span", "place", facts));
  }

  fillHead(element, grid) {
    element.classList.add("head");
    element.append(this.makeCell("", 5));
    for (const [name, width] of grid.columns)
      element.append(this.makeCell(this.report.names[name].split(".").at(-1), width));
  }

  fillCells(element, { grid, index, cells }) {
    element.append(this.makeCell(String(index + 1), 5, "quiet"));
    for (const [name, width] of grid.columns) {
      const i = cells.get(name);
      const cell = this.makeCell(i === undefined ? "" : this.shortText(i), width);
      element.append(cell);
      if (i === undefined) continue;
      cell.classList.add("filled", "c" + this.report.hue(this.report.values[i][RULE]));
      cell.classList.toggle("selected", i === this.app.value);
      cell.dataset.values = i;
    }
  }

  makeCell(text, width, className = "") {
    const cell = textElement("span", "cell " + className, text);
    cell.style.width = `calc(${Math.max(3, width)}ch + 10px)`;
    return cell;
  }

  fillLeaf(element, i) {
    const value = this.report.values[i];
    element.dataset.values = i;
    element.classList.toggle("idle", !this.report.hasPlace(value));
    const name = this.report.name(i) + (value[INDEX] > 0 ? `[${value[INDEX] + 1}]` : "");
    element.append(make("span", `chip c${this.report.hue(value[RULE])}`, value[RULE] >= 0 ? String(value[RULE]) : "–"),
        textElement("span", "", name), textElement("span", "cell", this.shortText(i)),
        make("span", "place", this.report.place(i)));
  }

  shortText(i) {
    const text = this.report.text(i);
    return text.length > 120 ? text.slice(0, 120) + "…" : text;
  }

  isSelected(row) {
    return row.value !== undefined && row.value === this.app.value;
  }

  // The cell that was clicked, or the first cell of the row for the keyboard: pressing again goes on.
  choose(row, event) {
    if (row.node) {
      this.setFolded(row, !row.fold);
      return;
    }
    const clicked = event.type === "click" ? valueAt(event) : -1;
    if (clicked >= 0) this.app.chooseValue(clicked);
    else if (row.value !== undefined) this.app.chooseValue(row.value);
    else if (row.cells) this.app.chooseValue(this.nextCell([...row.cells.values()]));
  }

  nextCell(values) {
    return values[(values.indexOf(this.app.value) + 1) % values.length];
  }

  setFolded(row, isFolded) {
    if (isFolded) this.folded.add(row.node.path);
    else this.folded.delete(row.node.path);
    this.build();
  }

  reveal(i) {
    const row = this.rowOfValue.get(i);
    if (row !== undefined) this.activate(row);
    this.refresh();
  }
}
