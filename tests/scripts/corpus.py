#!/usr/bin/python3
"""Tests scripts/corpus on a folder of outputs and an example that are made up here.

usage: corpus.py SCRIPT TZPARSE
"""
import json
import subprocess
import sys
import tempfile
from pathlib import Path

DEFINITION = {"samples": [{"parserRules": {"parserule": [{"keywords": {"keyword": [
    "^Name: $name", "^Ports: $mstring:ports", "^Up: $int:days days", "^State: $state"]}}]}}]}
FIELDS = {"host": "name", "ports": {"variable": "ports", "split": ",", "lower": True},
          "uptime": {"text": "{days}d", "replace": [["^d$", ""]]}}
TEXT = "Name: sw-1\nPorts: Gi1, Gi2\nUp: 3 days\nState: ok\n"
RECORD = {"host": "sw-1", "ports": ["gi1", "gi2"], "uptime": "3d"}
OTHER = {**RECORD, "host": "sw-2"}

# name, the mapping beside commands and fields, the text, its records, the exit status, words that the
# output must hold
CASES = [
    ("equal", {}, TEXT, [RECORD], 0, ["demo: 1 texts, 1 records, 3 values, 3 equal, 0 different, 0 miss"]),
    ("a value differs", {}, TEXT, [OTHER], 1,
     ["2 equal, 1 different", 'file a.txt, record 1, field host: ours "sw-1", theirs "sw-2"']),
    ("a value is missing", {}, "Name: sw-1\nPorts: Gi1,Gi2\n", [RECORD], 1,
     ["2 equal, 0 different, 1 missing", 'field uptime: ours "", theirs "3d"']),
    ("a record is missing", {}, TEXT, [RECORD, OTHER], 1, ["2 records, 6 values, 3 equal, 0 different, 3 miss"]),
    ("a record is ours alone", {}, TEXT, [], 1, ["file a.txt, surplus sw-1: ours alone"]),
    ("known", {"known": [{"file": "a.txt", "record": 1, "field": "host", "reason": "theirs wrong"}]},
     TEXT, [OTHER], 0, ["1 different, 0 missing; 1 known", 'theirs "sw-2"; theirs wrong']),
    ("known of another record", {"known": [{"file": "a.txt", "record": 2, "reason": "theirs wrong"}]},
     TEXT, [OTHER], 1, ["2 UNEXPLAINED", "known difference that no longer occurs"]),
    ("a known one covers no surplus", {"known": [{"file": "a.txt", "record": 1, "reason": "r"}]},
     TEXT, [], 1, ["ours alone"]),
    ("known without reason", {"known": [{"file": "a.txt"}]}, TEXT, [RECORD], 1, ["FAULTY", "reason"]),
    ("a field is forgotten", {}, TEXT, [{**RECORD, "state": "ok"}], 1,
     ['field "state" is neither mapped nor left out']),
    ("a field is left out", {"leftout": {"st*": "of no use"}}, TEXT, [{**RECORD, "state": "ok"}], 0, []),
    ("a text is left out", {"skip": {"a.txt": "cut off"}}, TEXT, [OTHER], 0, ["0 texts", "left out: cut off"]),
    ("an unknown variable", {"fields": {"host": "nothing"}}, TEXT, [RECORD], 1,
     ["FAULTY: the result has no variable 'nothing'"]),
    ("no texts of the command", {"commands": ["ios/other"]}, TEXT, [RECORD], 1, ["no texts of ios/other"]),
]


def write(path, content):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(content if isinstance(content, str) else json.dumps(content), encoding="utf-8")


def run(script, tool, mapping, text, records):
    with tempfile.TemporaryDirectory() as folder:
        home = Path(folder)
        example = home / "examples" / "demo"
        write(example / "definition.json", DEFINITION)
        write(example / "corpus.json", {"commands": ["ios/show"], "fields": FIELDS, **mapping})
        write(home / "outputs/ios/show/a.txt", text)
        write(home / "outputs/ios/show/a.json", records)
        done = subprocess.run([script, "--examples", home / "examples", tool, home / "outputs"],
                              capture_output=True, text=True, check=False)
        return done.returncode, done.stdout + done.stderr


def main():
    script, tool = sys.argv[1:]
    failed = 0
    for name, mapping, text, records, status, words in CASES:
        found, output = run(script, tool, mapping, text, records)
        lacking = [word for word in words if word not in output]
        if found != status or lacking:
            failed += 1
            print(f"--- {name}: status {found}, wanted {status}; lacking {lacking}\n{output}")
    print(f"{len(CASES) - failed} of {len(CASES)} cases as wanted")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
