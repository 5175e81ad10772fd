"""Runs the command line as a user does: exit statuses, streams, inputs of all kinds.

    tzparse.py TZPARSE VERSION EXAMPLES
"""

import json
import os
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree
from pathlib import Path

TOOL, VERSION, EXAMPLES = sys.argv[1:4]


def definition(*statements, **more):
    rules = {"parserule": [{"type": 0, "keywords": {"keyword": list(statements)}}]}
    return json.dumps({"samples": [{"index": 1, "parserRules": rules}], **more}).encode()


class Run:
    def __init__(self, *args, stdin=b"", stdout=subprocess.PIPE):
        done = subprocess.run([TOOL, *map(str, args)], input=stdin, stdout=stdout,
                              stderr=subprocess.PIPE, timeout=120, check=False)
        self.status = done.returncode
        self.out = done.stdout
        self.err = done.stderr.decode()


class TzparseTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def file(self, name, data):
        path = self.folder / name
        path.write_bytes(data)
        return path

    def values(self, document, text, *args):
        run = Run("parse", self.file("d.json", document), "-", *args, stdin=text)
        self.assertEqual((run.status, run.err), (0, ""))
        return json.loads(run.out)

    def fails(self, status, words, *args, stdin=b""):
        run = Run(*args, stdin=stdin)
        self.assertEqual((run.status, run.out), (status, b""), run.err)
        self.assertTrue(run.err.startswith("tzparse: "), run.err)
        self.assertIn(words, run.err)

    def test_help_and_version(self):
        for args, word in [(["--help"], b"Subcommands"), (["-h"], b"Subcommands"),
                           (["parse", "--help"], b"--access N"), (["schema", "-h"], b"DEFINITION"),
                           (["check", "--help"], b"DEFINITION"),
                           (["--version"], f"tzparse {VERSION}\n".encode()),
                           (["check", "--version"], f"tzparse {VERSION}\n".encode())]:
            with self.subTest(args=args):
                run = Run(*args)
                self.assertEqual((run.status, run.err), (0, ""))
                self.assertIn(word, run.out)

    def test_bad_usage(self):
        sound = self.file("d.json", definition("$a"))
        for args, words in [([], "subcommand is required"),
                            (["prase", "x"], "no command or option 'prase'"),
                            (["parse"], "DEFINITION is required"),
                            (["parse", sound], "TEXT is required"),
                            (["parse", sound, sound, "more"], "more"),
                            (["parse", sound, sound, "--format", "yaml"], "xml"),
                            (["parse", sound, sound, "--access", "x"], "--access"),
                            (["parse", sound, sound, "--script-limit", "-1"], "--script-limit"),
                            (["parse", "-", "-"], "only one of"),
                            (["check", sound, "--access", "1"], "--access")]:
            with self.subTest(args=args):
                self.fails(2, words, *args)

    def test_files_that_cannot_be_read(self):
        sound = self.file("d.json", definition("$a"))
        missing = self.folder / "missing"
        for args in [["parse", missing, sound], ["parse", sound, missing], ["schema", missing],
                     ["check", missing]]:
            with self.subTest(args=args):
                self.fails(2, f"cannot read '{missing}': No such file", *args)
        self.fails(2, "Is a directory", "parse", sound, self.folder)

    def test_definition_that_is_no_json(self):
        broken = self.file("d.json", b'{\n  "samples" 1}')
        for args in [["parse", broken, "-"], ["schema", broken]]:
            self.fails(2, f"{broken}:2:13: not JSON: A colon", *args)
        self.fails(2, "standard input:1:2: not JSON", "schema", "-", stdin=b"{")

    def test_failed_parse(self):
        self.fails(1, "cannot find matched parser.", "parse", "-",
                   self.file("t", b""), stdin=b"{}")
        self.fails(1, "parse failed when using parser rules. reseason:", "parse", "-",
                   self.file("t", b""), stdin=b'{"samples":[{"parserRules":"{"}]}')

    def test_standard_input(self):
        text = self.file("t.txt", b"up 5\n")
        document = definition("^up $int:up")
        as_definition = Run("parse", "-", text, stdin=document)
        self.assertEqual(json.loads(as_definition.out), {"up": 5})
        self.assertEqual(self.values(document, b"up 5\n"), {"up": 5})
        self.assertEqual(Run("schema", "-", stdin=document).status, 0)

    def test_texts_are_bytes(self):
        document = definition("regex[$line]:^x(.*)$", "mline[$all]:$line")
        for text, line in [(b"x1\r\nx2\r\n", "1"), (b"y\rx1", "1"), (b"x\0a\xe9\xc3\xa9\n",
                                                                  "\0a\u00e9\u00e9")]:
            with self.subTest(text=text):
                found = self.values(document, text)
                self.assertEqual(found, {"line": line, "all": "x" + line + "\n"})

    def test_values_by_type(self):
        document = definition("^i $int:i$", "^d $double:d$", "^b $bool:b$", "^s $s$",
                              "regex[$int:odd]:^o (.*)$", "^never $int:never",
                              "regex[$empty]:^e( ?)$")
        text = b"i 18446744073709551615\nd 1.50\nb TRUE\ns 7\no 7x\ne\n"
        run = Run("parse", self.file("d.json", document), "-", stdin=text)
        self.assertEqual(run.out.decode(), '{\n  "i": 18446744073709551615,\n  "d": 1.50,\n'
                         '  "b": true,\n  "s": "7",\n  "odd": "7x",\n  "never": null,\n'
                         '  "empty": null\n}\n')

    def test_no_variables(self):
        self.assertEqual(self.values(definition("none"), b"x"), {})

    def test_what_the_rules_found(self):
        document = self.file("d.json", definition("^up $int:up"))
        run = Run("parse", document, "-", "--format=result", stdin=b"up 5")
        variable = json.loads(run.out)["_original_result"][0]["parseResult"]["variables"][0]
        self.assertEqual((variable["name"], variable["details"][0]["text"]), ("$up", "5"))
        run = Run("parse", document, "-", "--format=xml", stdin=b"up <")
        root = xml.etree.ElementTree.fromstring(run.out)
        self.assertEqual((root.tag, root.findtext(".//variable/name")), ("_original_result", "$up"))
        broken = self.file("b.json", json.dumps({"samples": [{"parserRules": {}}]}).encode())
        run = Run("parse", broken, "-", "--format=xml", stdin=b"x")
        self.assertEqual((run.status, run.out), (1, b""))
        self.assertIn("parse failed when using parser rules. reseason:", run.err)

    def test_identify(self):
        def sample(index, value):
            item = {"@Index": 0, "@Type": 1, "@Value": value}
            return {"index": index, "identify": {"ConfigKey": {"MustConditions": {"Item": [item]}}},
                    "parserRules": {"parserule": [{"keywords": {"keyword": ["^up $up"]}}]}}
        document = json.dumps({"sequences": [1, 2], "samples": [sample(1, "IOS"), sample(2, "EOS")]})
        document = self.file("d.json", document.encode())
        for text, status, chosen, reason in [(b"EOS up", 0, 2, "matched"), (b"IOS EOS", 0, 1, "matched"),
                                             (b"none", 0, 2, "catch-all")]:
            with self.subTest(text=text):
                run = Run("identify", document, "-", "--format=json", stdin=text)
                answer = json.loads(run.out)
                self.assertEqual((run.status, answer["sample"], answer["reason"]), (status, chosen, reason))
        self.assertEqual([trial["failed"]["value"] for trial in answer["tried"]], ["IOS", "EOS"])
        words = Run("identify", document, "-", stdin=b"EOS").out.decode()
        self.assertIn("sample 1: must condition 0 fails: Contain all of strings: IOS\n", words)
        self.assertIn("chosen: sample 2", words)
        self.assertEqual(Run("identify", self.file("e.json", b"{}"), "-", stdin=b"x").status, 1)
        self.fails(2, "only one of", "identify", "-", "-")
        self.fails(2, "xml", "identify", document, "-", "--format", "xml")

    def test_explain(self):
        document = self.file("d.json", definition("mtu $int:mtu bytes", "name $mstring:name"))
        good = Run("explain", document, "-", stdin=b"name a\x1b\tb\nmtu 1500 bytes")
        self.assertEqual((good.status, good.err), (0, ""))
        self.assertIn('line 1: "name $mstring:name" matched: $name = "a\\x1b\\tb"\n', good.out.decode())
        self.assertTrue(good.out.endswith(b"\n2 values, 0 statements without a match, 0 things to look at\n"))
        text = b"name x\n" + b"\xff" * 60 + b" mtu 15 bits" + b"-" * 2000
        bad = Run("explain", document, "-", stdin=text)
        self.assertEqual((bad.status, bad.err), (1, ""))
        self.assertIn('  ! no line fits "mtu $int:mtu bytes"\n', bad.out.decode())
        lines = bad.out.decode().splitlines()
        at = next(i for i, line in enumerate(lines) if line.strip() == "nearest: line 2")
        self.assertEqual(lines[at + 1].index("its---"), lines[at + 2].index("^ matched up to here"))
        self.assertTrue(lines[at + 1].lstrip().startswith("...\\xff") and lines[at + 1].endswith("-..."))
        self.assertEqual(lines[at + 4].index("ytes"), lines[at + 5].index("^ stopped here"))
        self.assertEqual(lines[-1], "1 value, 1 statement without a match, 1 thing to look at")
        none = Run("explain", self.file("e.json", b"{}"), "-", stdin=b"x")
        self.assertEqual(none.status, 1)
        self.assertIn(b"! cannot find matched parser.\n", none.out)
        page = self.file("page.html", b"an old page, which is replaced" * 10000)
        self.assertEqual(Run("explain", document, "-", "--html", page, stdin=text).status, 1)
        self.assertTrue(page.read_bytes().startswith(b"<!DOCTYPE html>"))
        self.assertNotIn(b"an old page", page.read_bytes())
        self.fails(2, "cannot write", "explain", document, "-", "--html", self.folder / "none/page.html", stdin=text)
        self.fails(2, "cannot write", "explain", document, "-", "--html", "/dev/full", stdin=text)
        self.fails(2, "only one of", "explain", "-", "-")
        self.fails(2, "not JSON", "explain", self.file("f.json", b"{"), "-", stdin=b"x")

    def test_diff(self):
        document = self.file("d.json", definition("^up $int:up", "^host $host"))
        old = self.file("old.txt", b"up 5\nhost a\"b\n")
        new = self.file("new.txt", b"host a\"b\nup 6\n")
        same = Run("diff", document, old, old)
        self.assertEqual((same.status, same.out), (0, b""))
        run = Run("diff", document, old, new)
        self.assertEqual((run.status, run.out), (1, b'~ up: "5" -> "6"\n'))
        run = Run("diff", document, old, "-", "--format=json", stdin=b"host c")
        self.assertEqual(json.loads(run.out), [
            {"kind": "changed", "variable": "up", "old": "5", "new": None, "oldLine": 0, "newLine": None},
            {"kind": "changed", "variable": "host", "old": 'a"b', "new": "c", "oldLine": 1, "newLine": 0}])
        empty = self.file("e.json", b'{"samples": []}')
        self.fails(2, "cannot find matched parser.", "diff", empty, old, new)
        self.fails(2, "only one of", "diff", document, "-", "-")

    def test_convert(self):
        document = self.file("d.json", definition("^up $int:up"))
        xml = Run("convert", document, "--to", "xml")
        self.assertEqual((xml.status, xml.err), (0, ""))
        self.assertIn(b"<keyword>^up $int:up</keyword>", xml.out)
        back = Run("convert", "-", "--to=json", stdin=xml.out)
        self.assertEqual((back.status, back.err), (0, ""))
        self.assertEqual(self.values(back.out, b"up 5"), {"up": 5})
        lossy = self.file("l.json", json.dumps({"samples": [
            {"index": 1, "parserRules": {"parserule": [{"xxid": "a"}]}, "tableKeys": ["t.c"]}]}).encode())
        target = self.folder / "rules.xml"
        run = Run("convert", lossy, "--to", "xml", "-o", target)
        self.assertEqual((run.status, run.out), (1, b""))
        self.assertEqual(run.err, "samples[0].tableKeys: XML has no place for it\n"
                         "samples[0].parserRules.parserule[0].xxid (keyword): XML has no place for it\n")
        self.assertIn(b"<parserules>", target.read_bytes())
        two = self.file("two.json", b'{"samples":[{"index":1},{"index":4}]}')
        self.assertEqual(Run("convert", two, "--to", "xml", "--sample", 4).status, 1)
        for words, args in [("numbers 1, 4", [two, "--to", "xml"]), ("--to is required", [document]),
                            ("not XML", [document, "--to", "json"]), ("not JSON", [target, "--to", "xml"]),
                            ("--sample", [target, "--to", "json", "--sample", 1]),
                            ("cannot write", [document, "--to", "xml", "-o", "/dev/full"]),
                            ("yaml", [document, "--to", "yaml"])]:
            with self.subTest(words=words):
                self.fails(2, words, "convert", *args)

    def test_records(self):
        document = self.file("d.json", definition("^up $int:up", "^host $host"))
        record = Run("parse", document, "-", "--format=record", stdin=b"up 5\nhost x").out
        self.assertEqual(record[:1], b"\x01")
        self.assertEqual(json.loads(Run("record", "-", stdin=record).out), {"up": 5, "host": "x"})
        file = self.file("r.bin", record)
        self.assertEqual(json.loads(Run("record", file, "--variable", "up").out), 5)
        self.fails(1, "no variable", "record", file, "--variable", "down")
        for cut in (b"", record[:1], record[:-1], b"\x02" + record[1:]):
            with self.subTest(cut=cut):
                self.assertEqual(Run("record", "-", stdin=cut).status, 1)

    def test_inventory(self):
        folder = self.folder / "inventories"
        rows = b"device,interface,ip\r\nr1,GigabitEthernet0/1,192.0.2.1/24\nr1,Loopback0,\n"
        run = Run("inventory", "import", "-", "--tenant", "acme", "--inventory", folder, stdin=rows)
        self.assertEqual((run.status, run.out), (0, b"2 interfaces, 1 addresses\n"))
        bad = self.file("bad.csv", b"device,interface,ip\nr1,Lo0,192.0.2.300\n")
        self.fails(2, "line 2", "inventory", "import", bad, "--tenant", "acme", "--inventory", folder)
        self.fails(2, "--tenant", "inventory", "import", bad)

    def test_tree_and_access(self):
        document = definition("^up $int:up", accessType=0)
        tree = self.values(document, b"up 5", "--format", "tree")
        let = {"beginRow": 0, "beginCol": 3, "endRow": 0, "endCol": 4, "text": "5"}
        up = {"name": "up", "type": 1, "values": [let]}
        self.assertEqual(tree, {"name": "parser", "type": 14, "children": [up]})
        tree = self.values(document, b"up 5", "--format=tree", "--access=16")
        self.assertEqual([node["name"] for node in tree["builtIn"]],
                         ["__allPosInfo", "__allOriInfo", "__allOriText", "__allOriTextLineNums",
                          "__allExtendLineNums"])
        extended = definition("^up $int:up", accessType=16)
        self.assertNotIn("builtIn", self.values(extended, b"up 5", "--format=tree", "--access=0"))

    def test_large_text(self):
        text = b"filler line of no interest\n" * 400000 + b"up 5\n"
        self.assertEqual(self.values(definition("^up $int:up"), text), {"up": 5})
        big = b"x" + b"y" * 10_000_000
        self.assertEqual(len(self.values(definition("$a"), big)["a"]), len(big))

    def test_schema(self):
        run = Run("schema", self.file("d.json", definition("$int:a $b")))
        saved = json.loads(run.out)
        self.assertEqual((saved["name"], saved["@data_type"]), ("parser", 14))
        self.assertEqual([(child["variable"]["name"], child["variable"]["@data_type"])
                          for child in saved["childs"]], [("a", 1), ("b", 4)])

    def test_check(self):
        sound = Run("check", self.file("d.json", definition("$int:a")))
        self.assertEqual((sound.status, sound.out, sound.err), (0, b"ok\n", ""))
        found = Run("check", "-", stdin=definition("regex[$a]:(", "$b"))
        self.assertEqual((found.status, found.err), (1, ""))
        path, statement, caret = found.out.decode().splitlines()
        self.assertTrue(path.startswith("samples[0].parserRules.parserule[0].keywords.keyword[0]: "
                                        "Invalid regex. "), path)
        self.assertEqual((statement, caret), ("    regex[$a]:(", " " * 15 + "^"))
        broken = Run("check", "-", stdin=b'{"a":\n1,}')
        self.assertEqual(broken.status, 1)
        self.assertIn(b"definition, line 2, column 3: This is not JSON", broken.out)

    def test_examples_are_sound(self):
        found = sorted(Path(EXAMPLES).glob("*/definition.json"))
        self.assertTrue(found)
        for path in found:
            with self.subTest(path=path):
                run = Run("check", path)
                self.assertEqual((run.status, run.out), (0, b"ok\n"))

    def test_output_that_cannot_be_written(self):
        sound = self.file("d.json", definition("$int:a"))
        for args in [["parse", sound, sound], ["schema", sound], ["check", sound], ["--help"]]:
            with self.subTest(args=args):
                with open("/dev/full", "wb") as full:
                    run = Run(*args, stdout=full)
                self.assertEqual(run.status, 2)
                self.assertIn("cannot write the output: No space left", run.err)
        reader, writer = os.pipe()
        os.close(reader)
        with os.fdopen(writer, "wb") as closed:
            run = Run("parse", sound, sound, stdout=closed)
        self.assertEqual(run.status, 2)
        self.assertIn("Broken pipe", run.err)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
