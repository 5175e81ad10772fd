"""Typed, addressable data out of the text that network devices print.

    >>> import tzparser
    >>> parser = tzparser.Parser("show_version.json")
    >>> result = parser.parse(text)
    >>> result.version.text, result.version.span
    ('15.2(4)M6', ((1, 69), (1, 78)))
    >>> result.to_dict()
    {'version': '15.2(4)M6', ...}

A Parser holds a definition and may be used by any number of threads at once; see there for parsing
many texts. All errors are a tzparser.Error.
"""

from tzparser._errors import DefinitionError, Error, Finding, ParseError
from tzparser._parser import Choice, FailedCondition, Parser, Trial, check
from tzparser._reader import DesignReader, Selection, set_design_reader
from tzparser._result import Column, Group, Result, Row, Span, Table, Value
from tzparser._values import PyIP, PyIPv6, PyMac, PyPercent

__all__ = [
    "Choice",
    "Column",
    "DefinitionError",
    "DesignReader",
    "Error",
    "FailedCondition",
    "Finding",
    "Group",
    "ParseError",
    "Parser",
    "PyIP",
    "PyIPv6",
    "PyMac",
    "PyPercent",
    "Result",
    "Row",
    "Selection",
    "Span",
    "Table",
    "Trial",
    "Value",
    "check",
    "set_design_reader",
]
