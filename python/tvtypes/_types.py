"""The table of the types of a model."""

from __future__ import annotations

import math
import operator
from collections.abc import Iterable, Iterator, Sequence
from typing import Any, NamedTuple, SupportsIndex, Union, overload

from . import _native
from ._errors import Error
from ._fixed_point import FixedPoint

_NO_TYPE = -10
_AUTO = -1

#: What is taken as a type: one of the table, its id, or its name.
TypeLike = Union["DataType", SupportsIndex, str]


class Element(NamedTuple):
    """The description of an element of a struct type.

    Attributes
    ----------
    name : str
    type : DataType, int or str
        A type of the table, its id or its name.
    dimensions : tuple of int
        Empty for one value.
    unit : str or None
        An expression of units.
    complex : bool
        Whether values are complex.
    minimum, maximum : float
        The limits, in the unit; infinite without any.
    """

    name: str
    type: TypeLike
    dimensions: tuple[int, ...] = ()
    unit: str | None = None
    complex: bool = False
    minimum: float = -math.inf
    maximum: float = math.inf


class Node(NamedTuple):
    """An element, a node, a leaf or a scalar of a struct type.

    Attributes
    ----------
    name : str
        The name of the element; empty for a scalar.
    path : tuple of (str, int or None)
        The names from the outermost struct on, each with its index in an array of structs. Empty
        for elements and scalars.
    type : DataType
    unit : str or None
    dimensions : tuple of int
    complex : bool
    offset : int
        Bytes from the start of the struct.
    """

    name: str
    path: tuple[tuple[str, int | None], ...]
    type: DataType
    unit: str | None
    dimensions: tuple[int, ...]
    complex: bool
    offset: int


class View(Sequence[Node]):
    """The nodes of a struct type in one numbering, as a sequence."""

    def __init__(self, table: TypeTable, numbering: str, id: int) -> None:
        self._table = table
        self._view = table._table.view(numbering, id)

    def __len__(self) -> int:
        return len(self._view)

    @overload
    def __getitem__(self, index: SupportsIndex) -> Node: ...
    @overload
    def __getitem__(self, index: slice) -> list[Node]: ...
    def __getitem__(self, index):
        if isinstance(index, slice):
            return [self[i] for i in range(*index.indices(len(self)))]
        position = operator.index(index)
        node = self._view.node(position + len(self) if position < 0 else position)
        path = tuple((name, None if i < 0 else i) for name, i in node.path)
        type_ = DataType(self._table, node.type)
        dimensions = tuple(node.dimensions)
        return Node(
            node.name, path, type_, node.unit or None, dimensions, node.is_complex, node.offset
        )


class DataType:
    """A type of a table. Types of one table with the same id compare as equal."""

    __slots__ = ("_table", "_id")

    def __init__(self, table: TypeTable, id: int) -> None:
        self._table = table
        self._id = id

    @property
    def id(self) -> int:
        """The id in the table."""
        return self._id

    @property
    def name(self) -> str:
        """The name, by which the table finds the type."""
        return self._native.name(self._id)

    @property
    def size(self) -> int:
        """The bytes of a value; -1 if the type has no definition."""
        return self._native.bytes(self._id)

    @property
    def alias_of(self) -> DataType | None:
        """The type that an alias names; None for all others."""
        target = self._native.alias_target(self._id)
        return None if target == _NO_TYPE else DataType(self._table, target)

    @property
    def resolved(self) -> DataType:
        """The type at the end of the chain of aliases."""
        return DataType(self._table, self._native.end(self._id))

    @property
    def is_struct(self) -> bool:
        """Whether this is a struct type, or an alias of one."""
        return self._native.is_struct(self._id)

    @property
    def fixed_point(self) -> FixedPoint | None:
        """The fixed-point type, also of an alias of one; None for all others."""
        if not self._native.is_fixed_point(self._id):
            return None
        return FixedPoint(self.resolved.name)

    @property
    def elements(self) -> View:
        """The elements of a struct type."""
        return View(self._table, "elements", self._id)

    @property
    def nodes(self) -> View:
        """The nodes in depth-first order: the struct, its elements, and all that they contain."""
        return View(self._table, "nodes", self._id)

    @property
    def leaves(self) -> View:
        """The nodes that are no structs."""
        return View(self._table, "leaves", self._id)

    @property
    def scalars(self) -> View:
        """The values in memory; a complex one is two."""
        return View(self._table, "scalars", self._id)

    @property
    def _native(self) -> Any:
        return self._table._table

    def __index__(self) -> int:
        return self._id

    def __eq__(self, other: object) -> bool:
        return (
            isinstance(other, DataType) and self._table is other._table and self._id == other._id
        )

    def __hash__(self) -> int:
        return hash((id(self._table), self._id))

    def __str__(self) -> str:
        return self.name

    def __repr__(self) -> str:
        return f"<DataType {self.name!r}, id {self._id}>"


class TypeTable:
    """All types of a model, by name and by id.

    A new table has ``"auto"``, the nine built-in and the five predefined types. Ids count from -1,
    ``"auto"``; a table is a collection of its types in the order of their ids.

    Examples
    --------
    >>> from tvtypes import Element, TypeTable
    >>> table = TypeTable()
    >>> speed = table.alias("Speed", "single")
    >>> wheel = table.struct("Wheel", [Element("speed", speed, unit="m/s"), Element("slip", "double")])
    >>> car = table.struct("Car", [Element("id", "uint8"), Element("wheels", wheel, (4,))])
    >>> car.size, [(e.name, e.offset) for e in car.elements]
    (72, [('id', 0), ('wheels', 8)])
    >>> [leaf.offset for leaf in car.leaves][:4]
    [0, 8, 16, 24]
    >>> car.leaves[3].path
    (('wheels', 1), ('speed', None))
    >>> table["Speed"].resolved
    <DataType 'single', id 1>
    """

    def __init__(self) -> None:
        self._table = _native.TypeTable()

    def register(self, name: str) -> DataType:
        """Register a type by name, and return it; one that exists already is returned as it is.

        The name of a fixed-point type, such as ``"sfix16_En12"``, defines one. Any other type has no
        definition.

        Raises
        ------
        Error
            The name is no identifier.
        """
        return DataType(self, self._table.register(name))

    def alias(self, name: str, target: TypeLike) -> DataType:
        """Register a new name of a type.

        Raises
        ------
        Error
            The name is no identifier or exists already, or there is no such target.
        """
        return DataType(self, self._table.register_alias(name, self[target].id))

    def struct(self, name: str, elements: Iterable[Element]) -> DataType:
        """Register a struct type with its layout, by the natural alignment of its elements.

        Raises
        ------
        Error
            The name is no identifier or exists already, or an element is refused. No type is
            registered then.
        """
        elements = [Element(*each) for each in elements]
        names = [element.name for element in elements]
        if len(set(names)) < len(names):
            twice = next(each for each in names if names.count(each) > 1)
            raise Error(f"the struct has two elements {twice}")
        texts = [
            _native.ElementTexts(
                element.name,
                self[element.type].id,
                list(element.dimensions),
                element.unit,
                element.complex,
                element.minimum,
                element.maximum,
            )
            for element in elements
        ]
        return DataType(self, self._table.register_struct(name, texts))

    def __getitem__(self, key: TypeLike) -> DataType:
        """Return the type with a name or an id.

        Raises
        ------
        Error
            There is none, or it is one of another table.
        """
        if isinstance(key, str):
            id = self._table.find(key)
            if id == _NO_TYPE:
                raise Error(f"the table has no type {key}")
            return DataType(self, id)
        if isinstance(key, DataType) and key._table is not self:
            raise Error(f"{key} is a type of another table")
        id = operator.index(key)
        self._table.name(id)  # an error for an id without a type
        return DataType(self, id)

    def __contains__(self, key: object) -> bool:
        if isinstance(key, DataType):
            return key._table is self
        return isinstance(key, str) and self._table.find(key) != _NO_TYPE

    def __len__(self) -> int:
        return self._table.size()

    def __iter__(self) -> Iterator[DataType]:
        return (DataType(self, id) for id in range(_AUTO, len(self) + _AUTO))
