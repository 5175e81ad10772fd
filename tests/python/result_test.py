"""Results: values, tables, names, pickles."""

import gc
import pickle
import sys

import pytest

import tzparser
from definitions import ARP, ARP_TEXT, PING_TEXT, TYPED, keywords, rules
from tzparser import PyIP, PyIPv6, PyMac, PyPercent


@pytest.mark.parametrize(
    ("name", "text", "span", "value", "kind"),
    [
        ("success", "80", ((2, 16), (2, 18)), 80, "int"),
        ("sent", "5", ((2, 30), (2, 31)), 5, "int"),
        ("avg", "2", ((2, 61), (2, 62)), 2.0, "double"),
        ("target", "192.0.2.7", ((0, 34), (0, 43)), "192.0.2.7", "string"),
    ],
)
def test_value_has_text_place_and_meaning(result, name, text, span, value, kind):
    found = getattr(result, name)
    assert found == result[name]
    assert found
    assert (found.text, str(found), found.span, found.lines) == (text, text, span, ())
    assert found.value == value
    assert type(found.value) is type(value)
    assert found.type == kind


def test_addresses_and_percentages_are_objects():
    result = tzparser.Parser(TYPED).parse("")
    assert result.to_dict() == {
        "ip": PyIP("192.0.2.7/24"),
        "mac": PyMac("0000.5e00.5301"),
        "load": PyPercent("12.5%"),
        "v6": PyIPv6("2001:db8::1/64"),
    }
    assert (result.ip.text, result.ip.span, bool(result.ip)) == ("192.0.2.7/24", None, True)


def test_text_that_is_no_value_of_its_type_stays_as_text():
    parser = tzparser.Parser(rules(keywords(r"regex[$int:size]:size (\S+)", "up $bool:up ,")))
    result = parser.parse("size huge\nup TRUE ,\n")
    assert (result["size"].text, result["size"].value, bool(result["size"])) == ("huge", None, True)
    assert result.up.value is True


def test_result_is_a_mapping(result):
    assert len(result) == 7
    assert dict(result.items())["sent"].value == 5
    assert "success" in result
    assert "nothing" not in result
    assert "success" in dir(result)
    assert result.to_dict()["max"] == 4.0
    with pytest.raises(KeyError, match="nothing"):
        result["nothing"]
    with pytest.raises(AttributeError, match="nothing"):
        result.nothing


def test_names_of_operations_and_odd_names_are_items():
    parser = tzparser.Parser(rules(keywords("a $keys .", "b $_low .", "c $class .")))
    result = parser.parse("a 1 .\nb 2 .\nc 3 .\n")
    assert [result[name].text for name in ("keys", "_low", "class")] == ["1", "2", "3"]
    assert sorted(result.keys()) == ["_low", "class", "keys"]
    with pytest.raises(AttributeError):
        result._low


def test_table_by_rows_and_by_columns(arp):
    assert arp.to_dict() == [
        {"address": "192.0.2.1", "mac": "0000.5e00.5301", "age": 17},
        {"address": "192.0.2.2", "mac": "0000.5e00.5302", "age": None},
        {"address": "198.51.100.9", "mac": "incomplete", "age": None},
    ]
    assert arp.to_columns()["age"] == [17, None, None]
    assert arp.columns == ("address", "mac", "age")
    assert [row.to_dict() for row in arp] == arp.to_dict()
    assert arp.mac.texts() == ["0000.5e00.5301", "0000.5e00.5302", "incomplete"]
    assert arp["mac"].spans()[0] == arp[0].mac.span == ((1, 16), (1, 30))
    assert arp[-1].mac.text == arp.mac[-1].text == "incomplete"
    assert [value.text for value in arp.mac[1:]] == [row["mac"].text for row in arp[1:]]
    assert len(arp) == len(arp.age) == 3
    assert not arp[2].age
    for missing in (lambda: arp[3], lambda: arp.age[-4]):
        with pytest.raises(IndexError):
            missing()
    with pytest.raises(AttributeError, match="no column 'speed'"):
        arp.speed


def test_dots_go_down_to_a_column():
    result = tzparser.Parser(ARP).parse(ARP_TEXT)
    assert result["arp.mac"][2].text == "incomplete"
    for name in ("arp.speed", "arp.", "other.mac", ".mac"):
        with pytest.raises(KeyError):
            result[name]


def test_built_in_properties_of_extended_access():
    parser = tzparser.Parser({"accessType": 16, **rules(keywords("name $name ."))})
    result = parser.parse("name x .\n")
    assert result.builtins["__allOriText"] .strip() == "name x ."
    assert pickle.loads(pickle.dumps(result)).builtins == result.builtins


def test_large_table_makes_objects_only_when_asked():
    rows = "".join(f"192.0.2.{i % 250:<8}0000.5e00.5301  {i}\n" for i in range(20_000))
    parser = tzparser.Parser(ARP)
    text = ("Address         MAC             Age\n" + rows).encode()
    before = sys.getallocatedblocks()
    table = parser.parse(text).arp
    assert table[19_999].age.value == 19_999
    assert sys.getallocatedblocks() - before < 2000


def test_to_pandas(arp):
    pandas = pytest.importorskip("pandas")
    frame = arp.to_pandas()
    assert list(frame.columns) == ["address", "mac", "age"]
    assert frame.age[0] == 17
    assert pandas.isna(frame.age[2])


def test_pandas_is_not_required(arp, monkeypatch):
    monkeypatch.setitem(sys.modules, "pandas", None)
    with pytest.raises(ImportError):
        arp.to_pandas()


def test_everything_pickles(examples):
    for name, (parser, text) in examples.items():
        result = parser.parse(text)
        copy = pickle.loads(pickle.dumps(result))
        assert copy == result, name
        assert copy.to_dict() == result.to_dict(), name
        again = pickle.loads(pickle.dumps(parser)).parse(text)
        assert again.to_dict() == result.to_dict(), name


def test_parts_of_a_result_pickle(arp, result):
    for part in (arp, arp[1], arp.mac, arp[0].mac, result.target):
        copy = pickle.loads(pickle.dumps(part))
        assert type(copy) is type(part)
        assert copy == part


def test_results_of_one_parser_share_their_shape_in_a_pickle(ping):
    one = len(pickle.dumps([ping.parse(PING_TEXT)]))
    ten = len(pickle.dumps([ping.parse(PING_TEXT) for _ in range(10)]))
    assert ten < 5 * one


def test_broken_pickles_are_refused(arp):
    restore = tzparser._tzparser.restore
    document, values, path = arp[0]._members["mac"].state()
    assert restore(document, values, path).texts(3)[2] == "incomplete"
    for end in range(len(values)):
        with pytest.raises(ValueError, match="not the values of a result"):
            restore(document, values[:end], path)
    for wrong in ((document, values + b"0", path), (b"[", values, path), (document, values, (9,))):
        with pytest.raises(ValueError, match="not "):
            restore(*wrong)


def test_part_keeps_its_result_alive():
    mac = tzparser.Parser(ARP).parse(ARP_TEXT).arp[0].mac
    gc.collect()
    assert mac.text == "0000.5e00.5301"
