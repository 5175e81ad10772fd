"""The sessions on the page about the package are what happens."""

import doctest
import pathlib


def test_sessions_of_the_page(monkeypatch):
    root = pathlib.Path(__file__).parents[2]
    monkeypatch.chdir(root)
    failed, tried = doctest.testfile(str(root / "docs" / "python.md"), module_relative=False)
    assert (failed, tried > 15) == (0, True)
