"""Loading and checking of definitions, parsing of single texts."""

import json
import pickle
import time

import pytest

import tzparser
from definitions import FAILING, PING, PING_TEXT, keywords, rules, script


def test_definition_comes_as_dict_text_bytes_or_path(tmp_path):
    path = tmp_path / "ping.json"
    text = json.dumps(PING)
    path.write_text(text)
    commented = "// a comment\n" + text
    for source in (PING, text, commented, text.encode(), path, str(path)):
        assert tzparser.Parser(source).parse(PING_TEXT)["success"].value == 80


@pytest.mark.parametrize(
    ("source", "words"),
    [
        ("no-such-file.json", "cannot read the definition"),
        ("{", "not JSON"),
        ("", "no sample could be loaded"),
        ({}, "no sample could be loaded"),
        ({"samples": [float("nan")]}, "not a definition"),
        ({"samples": object()}, "not a definition"),
        (17, "not a definition"),
        ("\0.json", "not a definition"),
    ],
)
def test_what_is_no_definition_raises(source, words):
    with pytest.raises(tzparser.DefinitionError, match=words) as caught:
        tzparser.Parser(source)
    assert isinstance(caught.value, tzparser.Error)
    copy = pickle.loads(pickle.dumps(caught.value))
    assert str(copy) == str(caught.value)


def test_error_of_a_definition_shows_what_is_wrong():
    with pytest.raises(tzparser.DefinitionError) as caught:
        tzparser.Parser('{"samples": [,]}')
    (finding,) = caught.value.findings
    assert (finding.line, finding.column) == (1, 14)
    assert finding.message in str(caught.value)


def test_check_points_at_a_broken_statement():
    definition = rules(keywords("regex[$a]: (.*"))
    (finding,) = tzparser.Parser(definition).check()
    assert finding.where == "samples[0].parserRules.parserule[0].keywords.keyword[0]"
    assert finding.statement == "regex[$a]: (.*"
    assert str(finding).splitlines()[-1].strip() == "^"
    assert tzparser.check(definition) == [finding]
    assert tzparser.check("[") != []
    assert tzparser.Parser(PING).check() == []


def test_schema_lists_the_variables(ping):
    names = [child["variable"]["name"] for child in ping.schema()["childs"]]
    assert sorted(names) == ["avg", "max", "min", "received", "sent", "success", "target"]


def test_identify_tells_which_sample_and_why():
    condition = {"@Index": 4, "@Type": 1, "@Value": "one;two"}
    definition = {"sequences": [1], **rules(keywords("a $a b"))}
    identify = {"ConfigKey": {"MustConditions": {"Item": [condition]}}}
    definition["samples"][0]["identify"] = identify
    parser = tzparser.Parser(definition)
    assert parser.identify("one and two") == (1, "matched", ((1, None),))
    choice = parser.identify("something else")
    assert (choice.sample, choice.reason) == (1, "only")
    failed = choice.trials[0].failed
    assert (failed.group, failed.index, failed.value) == ("must", 4, "one;two")


def test_text_is_bytes_whatever_its_type():
    parser = tzparser.Parser(rules(keywords("name $name end")))
    # Columns count bytes: the two letters in front take two each. A byte that isn't UTF-8 goes through.
    text = "éé name caf\udce9 end"
    raw = text.encode("utf-8", "surrogateescape")
    for form in (text, raw, bytearray(raw), memoryview(raw)):
        value = parser.parse(form).name
        assert value.text == "caf\udce9"
        assert value.span == ((0, 10), (0, 14))
    with pytest.raises(tzparser.ParseError, match="can't be encoded"):
        parser.parse("\ud800")
    with pytest.raises(TypeError, match="a text is str or bytes"):
        parser.parse(None)


def test_nothing_found_is_no_error(ping):
    result = ping.parse("")
    assert not result.success
    assert (result.success.text, result.success.value, result.success.span) == ("", None, None)


def test_failing_script_raises_with_its_words():
    with pytest.raises(tzparser.ParseError, match="ValueError: no abc") as caught:
        tzparser.Parser(FAILING).parse("abcdef")
    assert caught.value.index is None


def test_scripts_have_a_time_limit():
    definition = rules(script("while True: pass", ("a", "int")))
    parser = tzparser.Parser(definition, script_time_limit=0.05)
    begin = time.monotonic()
    with pytest.raises(tzparser.ParseError, match="TimeoutError: the script ran longer than 50 ms"):
        parser.parse("")
    assert time.monotonic() - begin < 30
    assert pickle.loads(pickle.dumps(parser)).script_time_limit == 0.05
    with pytest.raises(ValueError, match="positive"):
        tzparser.Parser(definition, script_time_limit=0)


def test_script_runs_in_the_interpreter_of_the_program():
    """A host's modules and the script's are the same: no second interpreter stands beside it."""
    body = "import sys\nsys._of_a_script = text\nreturn {'a': sys._of_a_test}"
    import sys

    sys._of_a_test = 7
    assert tzparser.Parser(rules(script(body, ("a", "int")))).parse("seen").a.value == 7
    assert sys._of_a_script == "seen"
