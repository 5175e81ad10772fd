"""Definitions: loading, checking, and parsing texts by them."""

from __future__ import annotations

import functools
import json
import os
from collections.abc import Iterable, Mapping
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Literal, NamedTuple, Union, overload

from tzparser import _tzparser
from tzparser._errors import DefinitionError, Finding, ParseError
from tzparser._result import Result

Source = Union[Mapping[str, Any], str, bytes, "os.PathLike[str]"]
Text = Union[str, bytes]


@dataclass(frozen=True)
class FailedCondition:
    """A condition of a sample that a text doesn't fulfil."""

    group: str  #: "must" or "optional"
    index: int  #: its "@Index"
    kind: str  #: in words
    value: str


class Trial(NamedTuple):
    """A sample that was tried for a text; without a failed condition it fits."""

    sample: int
    failed: FailedCondition | None


class Choice(NamedTuple):
    """The sample that reads a text, by its "index", and why."""

    sample: int | None
    reason: str  #: "matched", "catch-all", "only" or "none"
    trials: tuple[Trial, ...]  #: in the order of trying


def _bytes_of_text(text: Text) -> bytes:
    """The bytes to parse. Surrogates are the bytes that were no UTF-8 when a file was read."""
    if isinstance(text, str):
        try:
            return text.encode("utf-8", "surrogateescape")
        except UnicodeEncodeError as error:
            raise ParseError(f"the text can't be encoded: {error}") from error
    if isinstance(text, bytes):
        return text
    if isinstance(text, (bytearray, memoryview)):
        return bytes(text)
    raise TypeError(f"a text is str or bytes, not {type(text).__name__}")


def _bytes_of_definition(source: Source) -> bytes:
    if isinstance(source, bytes):
        return source
    try:
        if isinstance(source, Mapping):
            return json.dumps(source, ensure_ascii=False, allow_nan=False).encode(
                "utf-8", "surrogateescape"
            )
        if isinstance(source, str) and (source.lstrip()[:1] in ("{", "[", "") or "\n" in source):
            return source.encode("utf-8", "surrogateescape")
        return Path(source).read_bytes()
    except OSError as error:
        raise DefinitionError(f"cannot read the definition: {error}") from error
    except (TypeError, ValueError) as error:
        raise DefinitionError(f"not a definition: {error}") from error


def check(definition: Source) -> list[Finding]:
    """Tells what is wrong with a definition, as `tzparse check` does; empty when it is sound.

    Takes what Parser takes, and definitions that can't be loaded too. Raises DefinitionError only
    when it can't be read at all.
    """
    return [Finding(*row) for row in _tzparser.check(_bytes_of_definition(definition))]


@functools.lru_cache(maxsize=16)
def _load(definition: bytes, limit: int) -> _tzparser.Definition:
    """The loaded definition, which all parsers of it share: loading can take longer than parsing."""
    try:
        return _tzparser.Definition(definition, limit)
    except ValueError as error:
        findings = tuple(Finding(*row) for row in _tzparser.check(definition))
        raise DefinitionError(f"the definition can't be loaded: {error}", findings) from None


def _restore(definition: bytes, limit: float | None) -> Parser:
    return Parser(definition, script_time_limit=limit)


class Parser:
    """A loaded definition, which parses any number of texts.

    `definition` is a dict, the JSON text (str or bytes), or the path of a file: a str that begins
    with "{" or has several lines is JSON, any other is a path. Loading is lenient: what can't be
    read is left out, and check() tells what that is. Raises DefinitionError when nothing is left.

    `script_time_limit` is in seconds, for each script rule of a parse; a script that takes longer
    fails the parse.

    Any number of threads may use a parser at once. It pickles by its definition, and a process that
    gets the same one again doesn't load it again.
    """

    __slots__ = ("_definition", "_limit", "_native")

    def __init__(self, definition: Source, *, script_time_limit: float | None = None) -> None:
        if script_time_limit is not None and script_time_limit <= 0:
            raise ValueError("script_time_limit is a positive number of seconds")
        self._definition = _bytes_of_definition(definition)
        self._limit = script_time_limit
        milliseconds = 0 if script_time_limit is None else max(1, round(script_time_limit * 1000))
        self._native = _load(self._definition, milliseconds)

    @property
    def script_time_limit(self) -> float | None:
        """The limit of each script rule in seconds."""
        return self._limit

    def parse(self, text: Text) -> Result:
        """Parses one text; other threads run meanwhile. Raises ParseError.

        Of a str its UTF-8 bytes are parsed, and columns count these bytes.
        """
        outcome = self._native.parse(_bytes_of_text(text))
        if isinstance(outcome, str):
            raise ParseError(outcome)
        return Result(outcome)

    @overload
    def parse_many(
        self,
        texts: Iterable[Text],
        threads: int | None = ...,
        *,
        errors: Literal["return"] = ...,
    ) -> list[Result | ParseError]: ...

    @overload
    def parse_many(
        self, texts: Iterable[Text], threads: int | None = ..., *, errors: Literal["raise"]
    ) -> list[Result]: ...

    def parse_many(
        self,
        texts: Iterable[Text],
        threads: int | None = None,
        *,
        errors: Literal["return", "raise"] = "return",
    ) -> list[Result | ParseError] | list[Result]:
        """Parses texts on several threads, by default one a core; results in the texts' order.

        A text that fails doesn't harm the others: its ParseError stands in its place, or with
        errors="raise" the first of them is raised once all texts are parsed. Scripts run one at a
        time, as all Python does. Ctrl-C stops between two texts and raises KeyboardInterrupt.
        """
        if errors not in ("return", "raise"):
            raise ValueError('errors is "return" or "raise"')
        count = len(os.sched_getaffinity(0)) if threads is None else threads
        if count < 1:
            raise ValueError("threads is at least 1")
        outcomes: list[Any] = [_encoded(text, index) for index, text in enumerate(texts)]
        parsed = iter(
            self._native.parse_many([text for text in outcomes if isinstance(text, bytes)], count)
        )
        for index, outcome in enumerate(outcomes):
            if isinstance(outcome, bytes):
                outcomes[index] = _result_of(next(parsed), index)
            if errors == "raise" and isinstance(outcomes[index], ParseError):
                raise outcomes[index]
        return outcomes

    def identify(self, text: Text) -> Choice:
        """Tells which sample reads the text, and which condition of the others it fails."""
        sample, reason, trials = self._native.identify(_bytes_of_text(text))
        return Choice(
            sample,
            reason,
            tuple(
                Trial(index, None if failed is None else FailedCondition(*failed))
                for index, failed in trials
            ),
        )

    def schema(self) -> dict[str, Any]:
        """The variables that the definition yields, as `tzparse schema` prints them."""
        schema: dict[str, Any] = json.loads(self._native.schema())
        return schema

    def check(self) -> list[Finding]:
        """What loading left out of the definition, and why; empty when it is sound."""
        return check(self._definition)

    def __reduce__(self) -> tuple[Any, ...]:
        return _restore, (self._definition, self._limit)

    def __repr__(self) -> str:
        return f"<Parser of {len(self._definition)} bytes>"


def _encoded(text: Text, index: int) -> bytes | ParseError:
    try:
        return _bytes_of_text(text)
    except ParseError as error:
        return ParseError(error.message, index)


def _result_of(outcome: _tzparser.Node | str, index: int) -> Result | ParseError:
    return ParseError(outcome, index) if isinstance(outcome, str) else Result(outcome)
