"""Uses the page of "tzparse explain --html" in a browser as an author of definitions does.

    explainpage.py TZPARSE EXAMPLES
"""

import json
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

import browser

TOOL, EXAMPLES = sys.argv[1], Path(sys.argv[2])

# Keyword rules with bounds and a value of several lines; a keyword rule beside a table; CRLF and pager marks;
# paragraphs in paragraphs.
PAGES = ["cisco_ios_running_config", "fortinet_get_router_info_bgp_summary", "huawei_vrp_display_version",
         "arista_eos_running_config"]

# For each row that is there: [row, text, length, [[values, begin, end, text] of each piece with values]]. A
# label of what can't be seen counts as the one character that it stands for.
ROWS = """
const length = node => node.className === "odd" ? 1 : node.nodeType === Node.TEXT_NODE ? node.length
    : [...node.childNodes].reduce((sum, child) => sum + length(child), 0);
return [...document.querySelectorAll("#text .line")].map(line => {
  const code = line.querySelector(".code"), pieces = [];
  let at = 0;
  for (const piece of code.children) {
    const end = at + length(piece);
    if (piece.dataset.values) pieces.push([piece.dataset.values.split(" ").map(Number), at, end, piece.textContent]);
    at = end;
  }
  return [Number(line.dataset.row), code.textContent, at, pieces];
});"""

IN_SIGHT = """
const box = arguments[0].getBoundingClientRect(), pane = document.getElementById("text").getBoundingClientRect();
return box.top >= pane.top && box.bottom <= pane.bottom && box.left >= pane.left && box.left < pane.right;"""

# Time for one frame while the text scrolls by half a pane a frame.
SCROLL = """
const done = arguments[0], pane = document.getElementById("text"), frames = 40;
let left = frames, begin = performance.now();
pane.scrollTop = 0;
requestAnimationFrame(function step() {
  pane.scrollTop += pane.clientHeight / 2;
  if (--left > 0) requestAnimationFrame(step);
  else done((performance.now() - begin) / frames);
});"""


def rule_document(*rules):
    return json.dumps({"samples": [{"index": 1, "parserRules": {"parserule": list(rules)}}]}).encode()


def keywords(*statements):
    return {"type": 0, "keywords": {"keyword": list(statements)}}


def lets(node, path=()):
    """The values of a tree that have a place: (name, beginRow, beginCol, endRow, endCol)."""
    found = []
    for child in node.get("children", []):
        name = (*path, child["name"])
        for let in child.get("values", []):
            place = tuple(let[key] for key in ("beginRow", "beginCol", "endRow", "endCol"))
            if place[:2] != place[2:]:
                found.append((".".join(name), *place))
        found += lets(child, name)
    return found


class ExplainPageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.driver = browser.start()
        cls.addClassCleanup(cls.driver.quit)

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    # A page mustn't complain, nor load anything but itself.
    def tearDown(self):
        self.assertEqual(self.driver.get_log("browser"), [])
        self.assertEqual(set(browser.requests(self.driver)), set(self.opened))

    def open(self, definition, text, status):
        """Opens the page of two files and returns its data."""
        page = self.folder / "page.html"
        self.assertEqual(browser.explain(TOOL, definition, text, page), status)
        browser.requests(self.driver)
        self.driver.get(page.as_uri())
        self.opened = [page.as_uri()]
        data = re.search(r'<script id="data" type="application/json">(.*?)</script>', page.read_text("utf-8"), re.S)
        return json.loads(data.group(1))

    def open_example(self, name):
        return self.open(EXAMPLES / name / "definition.json", EXAMPLES / name / "input.txt", 0)

    def open_bytes(self, definition, text, status=0):
        (self.folder / "<b>&.json").write_bytes(definition)
        (self.folder / "text").write_bytes(text)
        return self.open(self.folder / "<b>&.json", self.folder / "text", status)

    def find(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def find_all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def wait(self, condition, words):
        return WebDriverWait(self.driver, 10, 0.02).until(lambda _: condition(), words)

    def run_script(self, script, *args):
        return self.driver.execute_script(script, *args)

    def all_rows(self, count):
        """Length and pieces of each row, gathered by scrolling through the text."""
        rows = {}
        while len(rows) < count:
            shown = self.run_script(ROWS)
            before = len(rows)
            rows.update({row: (length, pieces) for row, _, length, pieces in shown})
            self.assertGreater(len(rows), before, "scrolling brings no more rows")
            last = max(rows)
            self.run_script("document.getElementById('text').scrollTop += document.getElementById('text').clientHeight")
            if last + 1 < count:
                self.wait(lambda: self.find_all(f".line[data-row='{last + 1}']"), "the next rows")
        return rows

    def test_values_stand_at_their_characters(self):
        for name in PAGES:
            with self.subTest(name):
                data = self.open_example(name)
                tree = json.loads(subprocess.check_output(
                    [TOOL, "parse", EXAMPLES / name / "definition.json", EXAMPLES / name / "input.txt",
                     "--format", "tree"]))
                placed = [(data["names"][v[1]], *v[4:8]) for v in data["values"] if v[4:6] != v[6:8]]
                self.assertEqual(sorted(placed), sorted(lets(tree)))
                rows = self.all_rows(len(data["lines"]))
                for i, value in enumerate(data["values"]):
                    self.check_marked(rows, i, *value[4:8])

    # The pieces that belong to a value are exactly the characters of its span.
    def check_marked(self, rows, i, begin_row, begin, end_row, end):
        marked = {(row, column) for row, (_, pieces) in rows.items()
                  for values, at, to, _ in pieces if i in values for column in range(at, to)}
        wanted = set()
        if (begin_row, begin) != (end_row, end):
            for row in range(begin_row, end_row + 1):
                length = rows[row][0]
                last = min(end, length) if row == end_row else length
                wanted |= {(row, column) for column in range(begin if row == begin_row else 0, last)}
        self.assertEqual(marked, wanted, f"value {i}")

    def test_hovering_shows_span_and_rule(self):
        self.open_example("fortinet_get_router_info_bgp_summary")
        tip = self.find("#tip")
        self.assertFalse(tip.is_displayed())
        for text, words in [("192.0.2.8", ["router_id", "string", "2:23-31", "parserule[0]"]),
                            ("4200000001", ["neighbors.as[3]", "int", "10:19-28", "parserule[1]"])]:
            with self.subTest(text):
                piece = next(e for e in self.find_all("#text .value") if e.text == text)
                ActionChains(self.driver).move_to_element(piece).perform()
                self.wait(lambda: text in tip.text, "the tooltip")
                for word in words:
                    self.assertIn(word, tip.text)
        ActionChains(self.driver).move_to_element(self.find("footer")).perform()
        self.wait(lambda: not tip.is_displayed(), "no tooltip")

    def test_clicking_a_variable_scrolls_to_it(self):
        self.open_example("cisco_ios_running_config")
        self.find("#filter").send_keys("vty_trans")
        rows = self.wait(lambda: [r for r in self.find_all("#values .row") if "vty_transport" in r.text], "the row")
        self.assertEqual(len(self.find_all("#values .row")), 1)
        self.assertIn("1 of", self.find("#valuecount").text)
        rows[0].click()
        marked = self.wait(lambda: self.find("#text .value.selected"), "the mark")
        self.assertEqual(marked.text, "ssh")
        self.assertTrue(self.run_script(IN_SIGHT, marked))
        self.assertIn("77:18-20", self.find("#details").text)

    def test_a_table_is_a_grid(self):
        self.open_example("fortinet_get_router_info_bgp_summary")
        head = self.find("#values .row.head").text.split()
        self.assertEqual(head, ["neighbor", "as", "received", "sent", "up", "state"])
        cell = next(c for c in self.find_all("#values .cell.filled") if c.text == "4200000001")
        self.assertEqual(cell.find_element(By.XPATH, "..").find_element(By.CSS_SELECTOR, ".cell.quiet").text, "3")
        cell.click()
        self.assertEqual(self.wait(lambda: self.find("#text .value.selected"), "the mark").text, "4200000001")

    def test_clicking_a_rule_shows_its_range_and_facts(self):
        data = self.open_example("cisco_ios_running_config")
        self.find("#rules .row[data-rule='2']").click()
        rule = data["rules"][2]
        self.wait(lambda: self.find_all(".range.run"), "the range")
        shown = self.run_script("return [...document.querySelectorAll('.line:has(.range.run)')]"
                                ".map(line => Number(line.dataset.row))")
        self.assertEqual(shown, list(range(rule["begin"], rule["end"])))
        details = self.find("#details").text
        self.assertIn(rule["path"], details)
        for fact in rule["facts"]:
            self.assertIn(fact["text"], details)
        of_rule = {e.text for e in self.find_all("#text .value.of-rule")}
        self.assertIn("198.51.100.2", of_rule)
        self.assertNotIn("edge-rtr-1", of_rule)
        data = self.open_example("fortinet_get_router_info_bgp_summary")
        self.find("#rules .row[data-rule='2']").click()
        shown = self.run_script("return [...document.querySelectorAll('.line:has(.range.own)')]"
                                ".map(line => Number(line.dataset.row))")
        self.assertEqual([shown[0], shown[-1] + 1], data["rules"][2]["ranges"][0])

    def test_clicking_a_paragraph_shows_each_and_the_values_below(self):
        data = self.open_example("arista_eos_running_config")
        i = next(i for i, rule in enumerate(data["rules"]) if rule["name"] == "interfaces")
        self.find(f"#rules .row[data-rule='{i}']").click()
        begins = self.run_script("return [...document.querySelectorAll('.line:has(.range.own.first)')]"
                                 ".map(line => Number(line.dataset.row))")
        self.assertEqual(begins, [begin for begin, _ in data["rules"][i]["ranges"]])
        self.assertGreater(len(begins), 1)
        of_rule = {e.text for e in self.find_all("#text .value.of-rule")}
        self.assertIn("Ethernet1", of_rule)
        self.assertNotIn("leaf-1", of_rule)

    # A paragraph's values are handed down to the tables in it, so several values stand at one place.
    def test_values_at_one_place_show_the_one_that_is_read_there(self):
        ports = {"type": 4, "name": "ports", "startline": "regex:^ port ", "idlines": [" port $port"],
                 "child": {"parserule": [keywords("mtu $int:mtu")]}}
        vrfs = {"type": 4, "name": "vrfs", "startline": "regex:^vrf ", "idlines": ["vrf $vrf"],
                "child": {"parserule": [ports]}}
        text = "vrf RED\n" + "".join(f" port e{i}\n  mtu {i}\n" for i in range(3000))
        data = self.open_bytes(rule_document(vrfs), text.encode())
        copies = [i for i, value in enumerate(data["values"]) if value[4:8] == [0, 4, 0, 7]]
        self.assertEqual(len(copies), 3001)
        piece = self.find(".line[data-row='0'] .value")
        self.assertEqual(piece.text, "RED")
        ActionChains(self.driver).move_to_element(piece).perform()
        tip = self.find("#tip")
        self.wait(tip.is_displayed, "the tooltip")
        self.assertIn("vrfs.vrf[1]", tip.text.split("\n")[0])
        self.assertIn("1001 more values", self.find(".line[data-row='0']").text)
        self.run_script("app.chooseValue(arguments[0])", copies[-1])
        self.assertEqual(self.find("#text .value.selected").text, "RED")

    def test_trouble_is_seen_at_once(self):
        definition = rule_document(keywords("^mtu $int:mtu bytes"))
        self.open_bytes(definition, b"\n" * 200 + b"mtu 1500 octets\n", status=1)
        self.find("#troubles").click()
        self.assertIn("mtu", self.find("#details li.trouble").text)
        mark = self.wait(lambda: next((e for e in self.find_all(".trouble-mark") if e.text), None), "the mark")
        self.assertTrue(self.run_script(IN_SIGHT, mark))
        self.open_bytes(b'{"samples": []}', b"text\n", status=1)
        self.assertIn("not parsed", self.find("#status").text)
        self.assertTrue(self.find("#error").is_displayed())

    def test_hostile_text_is_shown_as_text(self):
        attack = "</script><script>window.broken=1</script><!--<img src=x onerror=window.broken=1>"
        text = (attack.encode() + b"\n" + attack.encode().replace(b"<", b"\\u003c") + b"\n"
                + b"a\xff\xc3\xa9\xf0\x9f\x98\x80\x00 \x1b[31m v=12;\n"
                + "\u2028\u202e\u05d0\u05d1\u200b w=<b>7</b>;\t.\n".encode())
        data = self.open_bytes(rule_document(keywords("v=$v;", "w=$w;", "<script>$_dummy=$x</script>")), text)
        rows = {row: (shown, pieces) for row, shown, _, pieces in self.run_script(ROWS)}
        self.assertEqual(rows[0][0], attack)
        self.assertEqual(rows[2][0], r"a\xFFé😀\x00 \x1B[31m v=12;")
        self.assertEqual(rows[3][0], "U+2028U+202E\u05d0\u05d1U+200B w=<b>7</b>;\t.")
        shown = {data["names"][data["values"][values[-1]][1]]: piece
                 for _, pieces in rows.values() for values, _, _, piece in pieces}
        self.assertEqual(shown, {"v": "12", "w": "<b>7</b>", "x": "1"})
        self.assertEqual(self.find("#definitionname").text, str(self.folder / "<b>&.json"))
        self.assertEqual(self.run_script("return [window.broken ?? 0, document.querySelectorAll('img, b:has(*)').length]"),
                         [0, 0])

    def test_keys_alone_are_enough(self):
        self.open_example("cisco_ios_running_config")
        body = self.find("body")
        body.send_keys("n")
        self.assertEqual(self.find("#text .value.selected").text, "2874")
        body.send_keys("nnp")
        self.assertEqual(self.find("#text .value.selected").text, "10:42:17")
        body.send_keys("/")
        focused = self.driver.switch_to.active_element
        self.assertEqual(focused.get_attribute("id"), "filter")
        focused.send_keys("wan_m", Keys.TAB)
        self.driver.switch_to.active_element.send_keys(Keys.DOWN, Keys.HOME, Keys.ENTER)
        self.assertEqual(self.find("#text .value.selected").text, "255.255.255.252")
        body.send_keys("f")
        self.driver.switch_to.active_element.send_keys("ntp server", Keys.ENTER)
        self.assertEqual(self.find("#findcount").text, "2 of 2")
        self.assertEqual(self.find(".line.found .code").text.split()[0], "ntp")
        self.driver.switch_to.active_element.send_keys(Keys.ESCAPE)
        self.assertEqual(self.find_all("#text .value.selected"), [])
        rules = self.find("#rules")
        rules.send_keys(Keys.HOME, Keys.DOWN, Keys.DOWN, Keys.ENTER)
        self.assertIn("parserule[1]", self.find("#details").text)
        rules.send_keys(Keys.HOME, Keys.LEFT)
        self.assertEqual(len(self.find_all("#rules .row")), 1)

    # The limits leave room for a busy machine; the figures printed are what to look at.
    def test_a_large_page_stays_usable(self):
        names = "abcdefghij"
        table = {"type": 3, "name": "t", "headers": ";".join(f"Col{n}" for n in names),
                 "headertovariables": ";".join(f"Col{n}:${n}" for n in names)}
        lines = ["".join(f"Col{n}".ljust(9) for n in names)]
        lines += ["".join(f"{n}{row}".ljust(9) for n in names) for row in range(10000)]
        data = self.open_bytes(rule_document(table), "\n".join(lines).encode())
        self.assertEqual(len(data["values"]), 100000)
        timing = self.run_script("const [page] = performance.getEntriesByType('navigation');"
                                 "return [page.loadEventEnd]")
        self.assertLess(timing[0], 2500)
        self.assertLess(len(self.find_all("#text *")), 6000)
        self.find("#filter").send_keys("j9876")
        row = self.wait(lambda: next((c for c in self.find_all("#values .cell.filled") if c.text == "j9876"), None),
                        "the cell")
        took = self.driver.execute_async_script(
            "const done = arguments[1], begin = performance.now(); arguments[0].click();"
            "requestAnimationFrame(() => setTimeout(() => done(performance.now() - begin)));", row)
        self.assertTrue(self.run_script(IN_SIGHT, self.find("#text .value.selected")))
        self.assertLess(took, 1000)
        frame = self.driver.execute_async_script(SCROLL)
        self.assertLess(frame, 150)
        print(f"10,000 lines, 100,000 values: opened in {timing[0]:.0f} ms, click to its line in {took:.0f} ms, "
              f"{frame:.0f} ms a frame while scrolling", file=sys.stderr)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
