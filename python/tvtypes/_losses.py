"""What a conversion lost."""

from __future__ import annotations

import dataclasses
from collections.abc import Iterable

#: The number of indices that a report keeps.
MOST_INDICES = 5

Index = tuple[int, ...]


@dataclasses.dataclass(frozen=True)
class LossReport:
    """What a conversion of an array lost.

    An element is lost if it differs from its source when it is converted back, or if it is NaN. It
    has overflowed if it is outside the range of the destination.

    Attributes
    ----------
    elements : int
        The number of elements.
    lost, overflowed : int
        The number of elements that were lost, and of those that overflowed.
    first_lost, first_overflowed : list of tuple of int
        The indices of the first five, in the order of the memory.
    greatest_error : float or None
        The greatest difference of a finite result from its source; None if nothing was lost.
    nan, infinities : int
        The number of elements of the source that are NaN, and infinite.

    Examples
    --------
    >>> import tvtypes
    >>> values, losses = tvtypes.convert([1.0, 2.5, 300.0], "int8", report=True)
    >>> values
    array([  1,   2, 127], dtype=int8)
    >>> losses.lost, losses.overflowed, losses.first_overflowed
    (2, 1, [(2,)])
    >>> print(losses)
    3 values, 2 lost something, of which 1 overflowed; greatest error 173
    """

    elements: int = 0
    lost: int = 0
    overflowed: int = 0
    first_lost: list[Index] = dataclasses.field(default_factory=list)
    first_overflowed: list[Index] = dataclasses.field(default_factory=list)
    greatest_error: float | None = None
    nan: int = 0
    infinities: int = 0

    def __str__(self) -> str:
        text = f"{self.elements} {'value' if self.elements == 1 else 'values'}, "
        if self.lost == 0:
            return text + "nothing lost"
        text += f"{self.lost} lost something"
        if self.overflowed > 0:
            text += f", of which {self.overflowed} overflowed"
        if self.greatest_error is not None:
            text += f"; greatest error {self.greatest_error:g}"
        return text

    def shifted(self, start: Index) -> LossReport:
        """Return the report of a block as one of the array, in which the block begins at `start`."""

        def shift(indices: list[Index]) -> list[Index]:
            return [tuple(i + s for i, s in zip(index, start)) for index in indices]

        return dataclasses.replace(
            self,
            first_lost=shift(self.first_lost),
            first_overflowed=shift(self.first_overflowed),
        )

    @staticmethod
    def combined(reports: Iterable[LossReport]) -> LossReport:
        """Return one report of several, in their order."""
        reports = list(reports)

        def first(lists: Iterable[list[Index]]) -> list[Index]:
            return [index for indices in lists for index in indices][:MOST_INDICES]

        errors = [r.greatest_error for r in reports if r.greatest_error is not None]
        return LossReport(
            elements=sum(r.elements for r in reports),
            lost=sum(r.lost for r in reports),
            overflowed=sum(r.overflowed for r in reports),
            first_lost=first(r.first_lost for r in reports),
            first_overflowed=first(r.first_overflowed for r in reports),
            greatest_error=max(errors, default=None),
            nan=sum(r.nan for r in reports),
            infinities=sum(r.infinities for r in reports),
        )
