"""Results: values with their places, tables by rows and by columns.

Every class here is a view of the result in the library's own memory. It makes objects of what it is
asked for: a table of a million rows costs nothing until a row is read. Each view keeps its whole
result alive.
"""

from __future__ import annotations

import copyreg
from collections.abc import Iterator, Mapping, Sequence
from typing import TYPE_CHECKING, Any, Generic, TypeVar, Union, overload

from tzparser import _tzparser
from tzparser._tzparser import Node

if TYPE_CHECKING:
    import pandas  # type: ignore[import]

Span = tuple[tuple[int, int], tuple[int, int]]
Part = Union["Value", "Column", "Table", "Group"]
Member = TypeVar("Member", covariant=True)


def _restore(document: bytes, values: bytes, path: tuple[int, ...]) -> Node:
    """The node of a pickle; functions of the module in C++ can't be named in pickles."""
    return _tzparser.restore(document, values, path)


# Every view pickles by its node, and that with its whole result.
copyreg.pickle(Node, lambda node: (_restore, node.state()))


class Value:
    """One value: its text, its place, and what the text means by its data type.

    False when nothing was found; str() is the text. Two values are equal when text, place and type
    are.
    """

    __slots__ = ("_index", "_node")

    def __init__(self, node: Node, index: int = 0) -> None:
        self._node = node
        self._index = index

    @property
    def text(self) -> str:
        """The text as it stands in the line; "" when nothing was found.

        A byte that isn't UTF-8 is the surrogate that "surrogateescape" makes of it.
        """
        return self._node.text(self._index)

    @property
    def span(self) -> Span | None:
        """((row, column), (row, column)) from 0, columns in bytes, the end exclusive.

        None when nothing was found, and for what has no place in the text, as values of scripts.
        """
        return self._node.span(self._index)

    @property
    def value(self) -> Any:
        """int, float, bool, str, PyIP, PyMac, PyIPv6 or PyPercent, by the data type.

        None when nothing was found and when the text is no value of the type: `text` has it still.
        """
        return self._node.value(self._index)

    @property
    def lines(self) -> tuple[int, ...]:
        """The rows that a text gathered from several lines comes from, else ()."""
        return self._node.lines(self._index)

    @property
    def type(self) -> str:
        """The data type by name: "int", "IP"."""
        return self._node.type

    def __bool__(self) -> bool:
        return self._node.is_found(self._index)

    def __str__(self) -> str:
        return self.text

    def _key(self) -> tuple[str, Span | None, str]:
        return self.text, self.span, self.type

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Value):
            return NotImplemented
        return self._key() == other._key()

    def __hash__(self) -> int:
        return hash(self._key())

    def __reduce__(self) -> tuple[Any, ...]:
        return Value, (self._node, self._index)

    def __repr__(self) -> str:
        if not self:
            return "<Value, not found>"
        return f"<Value {self.text!r} at {self.span}>"


class Column(Sequence[Value]):
    """The values of one column of a table, top down, or of a variable with several values.

    As long as its table; a cell that isn't there is a value that wasn't found.
    """

    __slots__ = ("_length", "_node")

    def __init__(self, node: Node, length: int | None = None) -> None:
        self._node = node
        self._length = len(node) if length is None else length

    @property
    def name(self) -> str:
        """The column's name."""
        return self._node.name

    @property
    def type(self) -> str:
        """The data type of the values by name."""
        return self._node.type

    def to_list(self) -> list[Any]:
        """The typed values, as Value.value gives each."""
        return self._node.values(self._length)

    def texts(self) -> list[str]:
        """The texts."""
        return self._node.texts(self._length)

    def spans(self) -> list[Span | None]:
        """The places, as Value.span gives each."""
        return self._node.spans(self._length)

    def __len__(self) -> int:
        return self._length

    @overload
    def __getitem__(self, index: int) -> Value: ...
    @overload
    def __getitem__(self, index: slice) -> list[Value]: ...
    def __getitem__(self, index: int | slice) -> Value | list[Value]:
        if isinstance(index, slice):
            return [Value(self._node, i) for i in range(self._length)[index]]
        return Value(self._node, _position(index, self._length))

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Column):
            return NotImplemented
        return list(self) == list(other)

    __hash__ = object.__hash__

    def __reduce__(self) -> tuple[Any, ...]:
        return Column, (self._node, self._length)

    def __repr__(self) -> str:
        return f"<Column {self.name} of {self._length} values>"


class _Named(Mapping[str, Member], Generic[Member]):
    """A mapping whose members are attributes too.

    Items only are members with the names of operations of the class, and those that begin with "_".
    """

    __slots__ = ()

    def __getattr__(self, name: str) -> Member:
        if not name.startswith("_") and name in self:
            return self[name]
        raise AttributeError(f"{type(self).__name__} has no {name!r}", name=name, obj=self)

    def __dir__(self) -> list[str]:
        return [*super().__dir__(), *self]

    __hash__ = object.__hash__

    def __eq__(self, other: object) -> bool:
        if type(self) is not type(other):
            return NotImplemented
        return list(self.items()) == list(other.items())  # type: ignore[attr-defined]


class Row(_Named[Value]):
    """One row of a table: its values by the names of the columns, as items and as attributes."""

    __slots__ = ("_index", "_members")

    def __init__(self, members: dict[str, Node], index: int) -> None:
        self._members = members
        self._index = index

    def to_dict(self) -> dict[str, Any]:
        """The typed values by name."""
        return {name: node.value(self._index) for name, node in self._members.items()}

    def __getitem__(self, name: str) -> Value:
        return Value(self._members[name], self._index)

    def __iter__(self) -> Iterator[str]:
        return iter(self._members)

    def __len__(self) -> int:
        return len(self._members)

    def __reduce__(self) -> tuple[Any, ...]:
        return Row, (self._members, self._index)

    def __repr__(self) -> str:
        return f"<Row {self.to_dict()}>"


class Table(Sequence[Row]):
    """A table: a sequence of rows; by the name of a column, as item or attribute, that column.

    As long as its longest column. A column whose name is that of an operation here, or begins with
    "_", is reached as an item only.
    """

    __slots__ = ("_length", "_members", "_node")

    def __init__(self, node: Node) -> None:
        self._node = node
        self._length = len(node)
        self._members = {child.name: child for child in node.children()}

    @property
    def name(self) -> str:
        """The table's name."""
        return self._node.name

    @property
    def columns(self) -> tuple[str, ...]:
        """The names of the columns."""
        return tuple(self._members)

    def to_dict(self) -> list[dict[str, Any]]:
        """The rows as dicts of typed values."""
        return self._node.rows()

    def to_columns(self) -> dict[str, list[Any]]:
        """The columns as lists of typed values, all of the table's length."""
        return {name: node.values(self._length) for name, node in self._members.items()}

    def to_pandas(self) -> pandas.DataFrame:
        """The table as a DataFrame; raises ImportError when pandas isn't installed."""
        import pandas

        return pandas.DataFrame(self.to_columns(), columns=list(self._members))

    def __len__(self) -> int:
        return self._length

    @overload
    def __getitem__(self, key: int) -> Row: ...
    @overload
    def __getitem__(self, key: slice) -> list[Row]: ...
    @overload
    def __getitem__(self, key: str) -> Column: ...
    def __getitem__(self, key: int | slice | str) -> Row | list[Row] | Column:
        if isinstance(key, str):
            return Column(self._members[key], self._length)
        if isinstance(key, slice):
            return [Row(self._members, i) for i in range(self._length)[key]]
        return Row(self._members, _position(key, self._length))

    def __getattr__(self, name: str) -> Column:
        if not name.startswith("_") and name in self._members:
            return self[name]
        raise AttributeError(f"table has no column {name!r}", name=name, obj=self)

    def __dir__(self) -> list[str]:
        return [*super().__dir__(), *self._members]

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Table):
            return NotImplemented
        return self.columns == other.columns and list(self) == list(other)

    __hash__ = object.__hash__

    def __reduce__(self) -> tuple[Any, ...]:
        return Table, (self._node,)

    def __repr__(self) -> str:
        return f"<Table {self.name} of {self._length} rows: {', '.join(self._members)}>"


class Group(_Named[Part]):
    """Variables by name, without dollar signs, as items and as attributes.

    A variable whose name is that of an operation here, begins with "_" or is no identifier, is
    reached as an item only.
    A name with dots goes down: group["routes.prefix"] is the column of that table.
    """

    __slots__ = ("_members", "_node")

    def __init__(self, node: Node) -> None:
        self._node = node
        self._members = {child.name: child for child in node.children()}

    def to_dict(self) -> dict[str, Any]:
        """All that was found, in plain and typed objects: tables are lists of dicts."""
        root: dict[str, Any] = {}
        pending: list[tuple[Group, dict[str, Any]]] = [(self, root)]
        while pending:
            group, target = pending.pop()
            for name, node in group._members.items():
                part = _part_of(node)
                if isinstance(part, Group):
                    target[name] = {}
                    pending.append((part, target[name]))
                else:
                    target[name] = _plain(part)
        return root

    def __getitem__(self, name: str) -> Part:
        node = self._members.get(name)
        if node is not None:
            return _part_of(node)
        head, dot, tail = name.partition(".")
        if dot and head in self._members:
            part = _part_of(self._members[head])
            if isinstance(part, (Group, Table)):
                return part[tail]
        raise KeyError(name)

    def __iter__(self) -> Iterator[str]:
        return iter(self._members)

    def __len__(self) -> int:
        return len(self._members)

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (self._node,)

    def __repr__(self) -> str:
        return f"<{type(self).__name__} of {', '.join(self._members)}>"


class Result(Group):
    """What a parse found: see Group for the variables. It needs the parser no longer."""

    __slots__ = ()

    @property
    def builtins(self) -> dict[str, str]:
        """The properties of definitions of extended access ("__allOriText" and others)."""
        return self._node.builtins()


def _position(index: int, length: int) -> int:
    """The place that an index, from the end when negative, means; raises IndexError."""
    return range(length)[index]


def _part_of(node: Node) -> Part:
    kind = node.kind
    if kind == "table":
        return Table(node)
    if kind == "group":
        return Group(node)
    return Column(node) if kind == "column" else Value(node)


def _plain(part: Value | Column | Table) -> Any:
    if isinstance(part, Value):
        return part.value
    return part.to_list() if isinstance(part, Column) else part.to_dict()
