"""Symbolic sizes, and facts about them."""

from __future__ import annotations

import operator
from collections.abc import Iterator
from fractions import Fraction
from typing import NamedTuple, SupportsIndex, Union

from . import _native
from ._errors import Error

#: What is taken as a size: one of the same table, a whole number, or the text of an expression.
SizeLike = Union["Size", SupportsIndex, str]


class Fact(NamedTuple):
    """A fact of a model, such as ``"N > 4"``, and the block that states it, if that has a name."""

    text: str
    block: str = ""

    def __str__(self) -> str:
        return f"{self.text} ({self.block})" if self.block else self.text


class Contradiction(Error):
    """A fact contradicts those that were stated before.

    Attributes
    ----------
    fact : Fact
        The fact that was refused.
    reasons : list of Fact
        The facts that together exclude it.
    conclusion : str
        What follows from them; may be empty.
    """

    def __init__(self, fact: Fact, reasons: list[Fact], conclusion: str) -> None:
        because = [str(reason) for reason in reasons] + ([conclusion] if conclusion else [])
        super().__init__(f"{fact} cannot hold: {', '.join(because)}")
        self.fact = fact
        self.reasons = reasons
        self.conclusion = conclusion

    def __reduce__(self):
        return Contradiction, (self.fact, self.reasons, self.conclusion)


class Size:
    """A size or a list of sizes, simplified. Equal sizes of a table compare as equal.

    Sizes are made by :meth:`Dims.size`, and by ``+ - * /`` of others.
    """

    __slots__ = ("_dims", "_id")

    def __init__(self, dims: Dims, id: int) -> None:
        self._dims = dims
        self._id = id

    def _combined(self, operation: str, left: SizeLike, right: SizeLike) -> Size:
        table = self._dims
        ids = table.size(left)._id, table.size(right)._id
        return Size(table, table._table.combine(operation, *ids))

    def __add__(self, other: SizeLike) -> Size:
        return self._combined("+", self, other)

    def __radd__(self, other: SizeLike) -> Size:
        return self._combined("+", other, self)

    def __sub__(self, other: SizeLike) -> Size:
        return self._combined("-", self, other)

    def __rsub__(self, other: SizeLike) -> Size:
        return self._combined("-", other, self)

    def __mul__(self, other: SizeLike) -> Size:
        return self._combined("*", self, other)

    def __rmul__(self, other: SizeLike) -> Size:
        return self._combined("*", other, self)

    def __truediv__(self, other: SizeLike) -> Size:
        return self._combined("/", self, other)

    def __rtruediv__(self, other: SizeLike) -> Size:
        return self._combined("/", other, self)

    def __neg__(self) -> Size:
        return self._combined("-", 0, self)

    def __len__(self) -> int:
        """Return the number of dimensions: 1 unless this is a list."""
        return len(self._dims._table.entries(self._id))

    def __getitem__(self, index: SupportsIndex) -> Size:
        return Size(self._dims, self._dims._table.entries(self._id)[operator.index(index)])

    def __iter__(self) -> Iterator[Size]:
        return (Size(self._dims, id) for id in self._dims._table.entries(self._id))

    @property
    def elements(self) -> Size:
        """The number of elements: of a list, the product of its entries."""
        return Size(self._dims, self._dims._table.total(self._id))

    @property
    def value(self) -> Fraction | None:
        """The number; None for a size with names."""
        number = self._dims._table.number(self._id)
        return None if number is None else Fraction(number)

    def __eq__(self, other: object) -> bool:
        if isinstance(other, (int, str)):
            other = self._dims.size(other)
        return isinstance(other, Size) and self._dims is other._dims and self._id == other._id

    def __hash__(self) -> int:
        return hash((id(self._dims), self._id))

    def __str__(self) -> str:
        return self._dims._table.text(self._id)

    def __repr__(self) -> str:
        return f"Size({str(self)!r})"


class Dims:
    """The symbolic sizes of a model, and the facts that its blocks state about them.

    Parameters
    ----------
    whole : bool
        Whether sizes are whole numbers that are not negative; else they are any fractions.

    Examples
    --------
    >>> from tvtypes import Contradiction, Dims
    >>> dims = Dims()
    >>> n = dims.size("N")
    >>> 2 * (n + 1) - 2, dims.size("[2, N]").elements
    (Size('2*N'), Size('2*N'))
    >>> dims.state_equal(n, 8, block="Source")
    >>> dims.is_greater(n + 1, 4)
    True
    >>> try:
    ...     dims.state_greater(n, 20, block="Window")
    ... except Contradiction as contradiction:
    ...     print(contradiction)
    N > 20 (Window) cannot hold: N == 8 (Source)
    """

    def __init__(self, *, whole: bool = True) -> None:
        self._table = _native.DimsTable(whole)
        self._facts: list[Fact] = []

    def size(self, size: SizeLike) -> Size:
        """Return a size of this table.

        Parameters
        ----------
        size : Size, int or str
            A text is an expression of names and whole numbers with ``+ - * /``, or a list of such
            in brackets. It is simplified.

        Raises
        ------
        Error
            The text is no expression, or the size is one of another table.
        """
        if isinstance(size, Size):
            if size._dims is not self:
                raise Error(f"the size {size} is one of another table")
            return size
        text = size if isinstance(size, str) else str(operator.index(size))
        return Size(self, self._table.parse(text))

    def state_equal(self, left: SizeLike, right: SizeLike, *, block: str = "") -> None:
        """State that two sizes are equal. Lists are compared by their numbers of elements.

        Raises
        ------
        Contradiction
            The facts that were stated before exclude it.
        """
        self._state(True, left, right, block)

    def state_greater(self, left: SizeLike, right: SizeLike, *, block: str = "") -> None:
        """State that the first size is greater than the second.

        Raises
        ------
        Contradiction
            The facts that were stated before exclude it.
        """
        self._state(False, left, right, block)

    def is_equal(self, left: SizeLike, right: SizeLike) -> bool | None:
        """Return whether sizes are equal by all facts; None if the facts do not decide it."""
        return self._table.ask(True, self.size(left)._id, self.size(right)._id)

    def is_greater(self, left: SizeLike, right: SizeLike) -> bool | None:
        """Return whether the first size is the greater; None if the facts do not decide it."""
        return self._table.ask(False, self.size(left)._id, self.size(right)._id)

    @property
    def facts(self) -> list[Fact]:
        """The facts that were stated, without those that contradict others."""
        return list(self._facts)

    def _state(self, is_equal: bool, left: SizeLike, right: SizeLike, block: str) -> None:
        sizes = self.size(left), self.size(right)
        fact = Fact(f"{sizes[0]} {'==' if is_equal else '>'} {sizes[1]}", block)
        contradiction = self._table.state(is_equal, sizes[0]._id, sizes[1]._id, block)
        if contradiction is not None:
            steps, conclusion = contradiction
            raise Contradiction(fact, [Fact(*step) for step in steps], conclusion)
        self._facts.append(fact)
