"""The example that parses a folder on a cluster, run as a user runs it, with processes of its own."""

import json
import pathlib
import subprocess
import sys

import pytest

import tzparser
from definitions import PING, PING_TEXT, rules, script

pytest.importorskip("distributed")
RUN = pathlib.Path(__file__).parents[2] / "examples" / "cluster" / "run.py"


@pytest.fixture
def run(tmp_path):
    """Writes definition and texts, runs the example, gives the process and the lines it wrote."""

    def run_example(definition, texts, *arguments):
        folder = tmp_path / "outputs"
        for name, text in texts.items():
            path = folder / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(text)
        (tmp_path / "definition.json").write_text(json.dumps(definition))
        out = tmp_path / "out.jsonl"
        command = [sys.executable, RUN, tmp_path / "definition.json", folder, "--out", out]
        done = subprocess.run(
            [*command, *arguments], capture_output=True, text=True, timeout=200, check=False
        )
        lines = out.read_text().splitlines() if out.exists() else []
        return done, [json.loads(line) for line in lines]

    return run_example


def test_two_workers_parse_a_folder_in_order(run):
    texts = {
        f"{i % 3}/{i:03}.txt": PING_TEXT.replace("/2/4", f"/2/{i}").encode() for i in range(50)
    }
    done, lines = run(PING, texts, "--workers", "2", "--batch", "4")
    assert done.returncode == 0, done.stderr
    assert "50/50 texts, 0 failed" in done.stderr
    assert [line["file"] for line in lines] == sorted(texts)
    parser = tzparser.Parser(PING)
    assert [line["values"] for line in lines] == [
        parser.parse(texts[name]).to_dict() for name in sorted(texts)
    ]


def test_failing_text_harms_no_other(run):
    body = "if 'bad' in text: raise ValueError('a bad one')\nreturn {'n': len(text)}"
    texts = {"1": b"good", "2": b"bad", "3": b"\xff\xfe", "4": b""}
    done, lines = run(rules(script(body, ("n", "int"))), texts, "--workers", "2", "--batch", "2")
    assert done.returncode == 1
    assert [line.get("values") for line in lines] == [{"n": 4}, None, {"n": 0}, {"n": 0}]
    assert "ValueError: a bad one" in lines[1]["error"]
    assert "2: parse failed" in done.stderr


def test_worker_that_dies_fails_its_batch_only(run):
    body = "import os\nif text == 'die': os._exit(3)\nreturn {'n': 1}"
    texts = {"1": b"live", "2": b"die", "3": b"live"}
    done, lines = run(rules(script(body, ("n", "int"))), texts, "--workers", "2", "--batch", "1")
    assert done.returncode == 1, done.stderr
    assert [line.get("values") for line in lines] == [{"n": 1}, None, {"n": 1}]
    assert "the batch failed" in lines[1]["error"]


def test_what_cannot_start_says_why(run):
    done, lines = run({"samples": []}, {"1": b""})
    assert (done.returncode, lines) == (2, [])
    assert "the definition can't be loaded" in done.stderr
