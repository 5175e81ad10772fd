"""The errors of the package, one family, and what the check of a definition finds."""

from __future__ import annotations

from typing import NamedTuple


class Finding(NamedTuple):
    """One thing that is wrong with a definition; str() shows it with a caret under the place."""

    where: str  #: the path in the definition: "samples[0].parserRules.parserule[2]"
    line: int  #: of a JSON error, from 1; 0 when there is no such place
    column: int  #: the same, in bytes
    message: str  #: what is wrong and what comes of it
    statement: str  #: the statement or expression in question, or ""
    caret: int | None  #: the byte offset in it where it breaks
    text: str  #: all of it in one to three lines

    def __str__(self) -> str:
        return self.text.rstrip("\n")


class Error(Exception):
    """Any error of this package."""


class DefinitionError(Error, ValueError):
    """A definition that can't be loaded; `findings` tells what is wrong with it."""

    def __init__(self, message: str, findings: tuple[Finding, ...] = ()) -> None:
        super().__init__(message, findings)
        self.message = message
        self.findings = findings

    def __str__(self) -> str:
        return "\n".join([self.message, *map(str, self.findings)])


class ParseError(Error):
    """A text whose parse failed: a script raised or ran too long, a replacement was broken.

    A text in which nothing is found is no error. `index` is the text's place, from 0, among those
    given to parse_many, else None.
    """

    def __init__(self, message: str, index: int | None = None) -> None:
        super().__init__(message, index)
        self.message = message
        self.index = index

    def __str__(self) -> str:
        return self.message if self.index is None else f"text {self.index}: {self.message}"
