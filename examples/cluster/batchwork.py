"""What a worker does: parsing a batch of texts into lines of JSON. run.py sends it to the workers."""

from __future__ import annotations

import json
from typing import NamedTuple

import tzparser


class Line(NamedTuple):
    """What became of one file: a line of the output, and the reason when it failed."""

    name: str
    json: str
    error: str | None


Named = list[tuple[str, "bytes | str"]]  # file and text, or the reason why it couldn't be read


def failed_line(name: str, error: str) -> Line:
    return Line(name, json.dumps({"file": name, "error": error}), error)


def good_line(name: str, result: tzparser.Result) -> Line:
    """Addresses and the like become texts, percentages numbers."""
    values = result.to_dict()
    return Line(name, json.dumps({"file": name, "values": values}, default=str), None)


def parse_batch(parser: tzparser.Parser, batch: Named) -> list[Line]:
    """Runs on a worker: parses the texts, and brings the values into their last form there."""
    texts = [text for _, text in batch if isinstance(text, bytes)]
    outcomes = iter(parser.parse_many(texts, threads=1))
    lines = []
    for name, text in batch:
        outcome = next(outcomes) if isinstance(text, bytes) else text
        if isinstance(outcome, tzparser.Result):
            lines.append(good_line(name, outcome))
        else:
            reason = outcome if isinstance(outcome, str) else outcome.message
            lines.append(failed_line(name, reason))
    return lines
