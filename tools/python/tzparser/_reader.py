"""The design reader of the process, which selects lines for design reader rules."""

from __future__ import annotations

from collections.abc import Callable, Iterable
from typing import Union

from tzparser import _tzparser

Selection = Union[str, bytes, Iterable[Union[str, bytes]], None]
DesignReader = Callable[[str, str, str], Selection]


def _bytes_of(line: str | bytes) -> bytes:
    if isinstance(line, str):
        return line.encode("utf-8", "surrogateescape")
    if isinstance(line, bytes):
        return line
    raise TypeError(f"a line is str or bytes, not {type(line).__name__}")


def _bytes_of_selection(selection: Selection) -> bytes:
    if selection is None:
        return b""
    if isinstance(selection, (str, bytes)):
        return _bytes_of(selection)
    return b"\n".join(_bytes_of(line) for line in selection)


def set_design_reader(reader: DesignReader | None) -> None:
    """Sets what selects the lines of design reader rules in all parsers; None takes it away.

    `reader(name, code, text)` gets "drname" and "drcode" of the rule and the lines that the rule
    sees, joined by CR LF. It returns the lines to keep, as one text or one by one; None keeps none.
    White space at their ends doesn't count, and what is no line of the text is passed over.

        >>> def uplinks(name, code, text):
        ...     return [line for line in text.splitlines() if code in line]
        >>> tzparser.set_design_reader(uplinks)

    Threads that parse call it, several at once for parse_many. What it raises is shown by
    sys.unraisablehook, and the rule then keeps no line; the parse goes on. A process that is
    started afresh has none until it sets one. Without one, rules of this kind keep no line.
    """
    if reader is None:
        _tzparser.set_design_reader(None)
        return
    if not callable(reader):
        raise TypeError(f"a design reader is callable or None, not {type(reader).__name__}")

    def select(name: str, code: str, text: str) -> bytes:
        return _bytes_of_selection(reader(name, code, text))

    _tzparser.set_design_reader(select)
