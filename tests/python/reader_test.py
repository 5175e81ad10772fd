"""The design reader of the process as a callable."""

import signal
import threading

import pytest

import tzparser
from definitions import keywords, rules

READER = rules(
    {
        "type": 2,
        "name": "chosen",
        "drname": "words",
        "drcode": "up",
        "child": {"parserule": [keywords("port $port")]},
    }
)
TEXT = "port 1 down\nport 2 up\n port 3 up \n"


@pytest.fixture(autouse=True)
def without_reader():
    yield
    tzparser.set_design_reader(None)


@pytest.fixture
def parser():
    return tzparser.Parser(READER)


def by_code(name, code, text):
    return [line for line in text.splitlines() if line.strip().endswith(code)]


def test_rules_below_read_the_selected_lines(parser):
    asked = []

    def reader(name, code, text):
        asked.append((name, code, text))
        return by_code(name, code, text)

    assert parser.parse(TEXT).chosen.value is None
    tzparser.set_design_reader(reader)
    result = parser.parse(TEXT)
    assert asked == [("words", "up", "port 1 down\r\nport 2 up\r\n port 3 up \r\n")]
    assert result.chosen.text == "port 2 up\n port 3 up "
    assert (result.port.text, result.port.span) == ("2", ((1, 5), (1, 6)))
    tzparser.set_design_reader(None)
    assert not parser.parse(TEXT).port


@pytest.mark.parametrize(
    ("selection", "text", "port"),
    [
        (None, "", ""),
        ("port 3 up", "port 3 up", "3"),
        (b"port 3 up\r\n", "port 3 up\r\n", "3"),
        (["port 9 up", b"port 2 up"], "port 9 up\nport 2 up", "2"),
        (iter(()), "", ""),
        ("port \udcff", "port \udcff", ""),
    ],
)
def test_forms_of_a_selection(parser, selection, text, port):
    tzparser.set_design_reader(lambda name, code, text: selection)
    result = parser.parse(TEXT)
    assert (result.chosen.text, result.port.text) == (text, port)


@pytest.mark.parametrize("selection", [7, [7], object()])
def test_what_is_no_selection_is_shown_and_selects_nothing(parser, selection, monkeypatch):
    shown = []
    monkeypatch.setattr("sys.unraisablehook", lambda unraisable: shown.append(unraisable.exc_type))
    tzparser.set_design_reader(lambda name, code, text: selection)
    assert parser.parse(TEXT).chosen.text == ""
    assert shown == [TypeError]


def test_a_reader_that_raises_fails_no_parse(parser, monkeypatch):
    shown = []
    monkeypatch.setattr("sys.unraisablehook", lambda unraisable: shown.append(unraisable.exc_value))
    error = RuntimeError("no licence")

    def reader(name, code, text):
        raise error

    tzparser.set_design_reader(reader)
    assert not parser.parse(TEXT).port
    assert shown == [error]
    with pytest.raises(TypeError, match="callable or None, not int"):
        tzparser.set_design_reader(7)


def test_ctrl_c_in_a_reader_reaches_the_program(parser):
    def reader(name, code, text):
        signal.raise_signal(signal.SIGINT)
        return text

    tzparser.set_design_reader(reader)
    with pytest.raises(KeyboardInterrupt):
        parser.parse(TEXT)
        threading.Event().wait(10)


def test_threads_call_it_while_others_run(parser):
    threads = set()

    def reader(name, code, text):
        threads.add(threading.get_ident())
        inner = tzparser.Parser(rules(keywords("port $first"))).parse(text)
        return f"port {inner.first.text} up"

    tzparser.set_design_reader(reader)
    texts = [f"port {i} up" for i in range(200)]
    results = parser.parse_many(texts, threads=4)
    assert [r.port.text for r in results] == [str(i) for i in range(200)]
    assert threads
