import pathlib

import pytest

import tzparser
from definitions import ARP, ARP_TEXT, PING, PING_TEXT

EXAMPLES = pathlib.Path(__file__).parents[2] / "examples"


@pytest.fixture
def ping():
    return tzparser.Parser(PING)


@pytest.fixture
def result(ping):
    return ping.parse(PING_TEXT)


@pytest.fixture
def arp():
    return tzparser.Parser(ARP).parse(ARP_TEXT).arp


@pytest.fixture
def examples():
    """The parser and the text of each example."""
    folders = sorted(path.parent for path in EXAMPLES.glob("*/definition.json"))
    return {
        folder.name: (
            tzparser.Parser(folder / "definition.json"),
            (folder / "input.txt").read_bytes(),
        )
        for folder in folders
    }
