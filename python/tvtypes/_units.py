"""Physical units and their conversions."""

from __future__ import annotations

import functools
import math
from fractions import Fraction
from typing import Any

import numpy as np
import numpy.typing as npt

from . import _native
from ._errors import Error
from ._tool import report


class UnitConversion:
    """The conversion of values from one unit to another: factor * value + offset.

    Attributes
    ----------
    source, destination : str
        The units.
    factor, offset : Fraction or float
        Fractions where they are exact; a float for a factor with pi or a measured constant.
    uncertainty : float
        The relative standard uncertainty of a measured factor; 0 for all others.
    notes : list of str
        How the texts of the units were read, if not as expressions of the library.

    Examples
    --------
    >>> from tvtypes import unit
    >>> unit("km/h").to("m/s").factor
    Fraction(5, 18)
    >>> unit("degC").to("degF")(100)
    212.0
    """

    __slots__ = ("source", "destination", "factor", "offset", "uncertainty", "notes")

    def __init__(self, source: str, destination: str, *, differences: bool = False) -> None:
        factor, offset, pi_power, uncertainty, notes = _native.relate_units(
            source, destination, differences
        )
        exact = pi_power == 0 and uncertainty == 0
        self.source = source
        self.destination = destination
        self.factor: Fraction | float = Fraction(*factor) if exact else float(Fraction(*factor))
        self.offset = Fraction(*offset)
        self.uncertainty: float = uncertainty
        self.notes: list[str] = notes

    @property
    def exact(self) -> bool:
        """Whether the factor is exact."""
        return isinstance(self.factor, Fraction)

    def __call__(self, values: npt.ArrayLike) -> Any:
        """Return the values in the destination unit.

        The results are single for single values, and double for all others.
        """
        array = np.asarray(values)
        if array.dtype.kind not in "iuf":
            raise Error(f"values with a unit are real numbers, and the dtype is {array.dtype}")
        result = self._doubles(array)
        if array.dtype == np.float32:
            result = result.astype(np.float32)
        return result if np.ndim(values) else result[()]

    def _doubles(self, array: npt.NDArray[Any]) -> Any:
        numerator, denominator, offset = self._integers()
        result = np.multiply(array, numerator, dtype=np.float64)
        if offset:
            result += offset
        if denominator != 1:
            result /= denominator
        return result

    def _integers(self) -> tuple[float, float, float]:
        """Return n, d and o of (n * value + o) / d, which rounds less than factor and offset."""
        if not isinstance(self.factor, Fraction):
            return self.factor, 1.0, float(self.offset)
        denominator = math.lcm(self.factor.denominator, self.offset.denominator)
        numerator, offset = self.factor * denominator, self.offset * denominator
        largest: Fraction | int = max(abs(numerator), Fraction(denominator), abs(offset))
        if largest <= 2**53:
            return float(numerator), float(denominator), float(offset)
        return float(self.factor), 1.0, float(self.offset)

    def __repr__(self) -> str:
        return (
            f"UnitConversion({self.source!r}, {self.destination!r}, "
            f"factor={self.factor!r}, offset={self.offset!r})"
        )


class Unit:
    """A unit: a name, symbol or alias, or an expression such as ``"kg*m/s^2"``.

    Other ways to write units, as ``"N.m"``, ``"m.s-1"`` or ``"µm"``, are read as such expressions.

    Examples
    --------
    >>> from tvtypes import unit
    >>> unit("mile").quantity
    'length'
    >>> unit("W/(m2.K)").canonical
    'K^-1kg^1m^0s^-3'
    """

    __slots__ = ("text", "_details")

    def __init__(self, text: str) -> None:
        if not isinstance(text, str):
            raise TypeError(f"a unit is written as str, not {type(text).__name__}")
        self.text = text
        self._details = report("unit", "--", text)["units"][0]

    @property
    def name(self) -> str:
        """The name in the unit database, composed for a product."""
        return self._details["name"]

    @property
    def symbol(self) -> str:
        """The symbol, composed for a product."""
        return self._details["symbol"]

    @property
    def aliases(self) -> list[str]:
        """Further names."""
        return self._details["aliases"]

    @property
    def quantity(self) -> str | None:
        """What the unit measures; None if that has no name."""
        return self._details["quantity"]

    @property
    def canonical(self) -> str | None:
        """The powers of fundamental units; None without a dimension."""
        return self._details["canonical"]

    @property
    def systems(self) -> list[str]:
        """The unit systems that have the unit."""
        return self._details["systems"]

    def to(self, other: str | Unit, *, differences: bool = False) -> UnitConversion:
        """Return the conversion to another unit.

        Parameters
        ----------
        other : str or Unit
        differences : bool
            Whether values are differences, as of temperatures, to which offsets do not apply.

        Raises
        ------
        Error
            A unit is not known, or the two do not measure the same.
        """
        return conversion(self.text, str(other), differences=differences)

    def __str__(self) -> str:
        return self.text

    def __repr__(self) -> str:
        return f"unit({self.text!r})"

    def __eq__(self, other: object) -> bool:
        return isinstance(other, Unit) and self.text == other.text

    def __hash__(self) -> int:
        return hash(self.text)

    def __reduce__(self):
        return Unit, (self.text,)


def unit(text: str) -> Unit:
    """Return a unit.

    Parameters
    ----------
    text : str
        A name, symbol or alias, or an expression.

    Raises
    ------
    Error
        The unit is not known.
    """
    return Unit(text)


@functools.lru_cache(maxsize=1024)
def conversion(source: str, destination: str, *, differences: bool = False) -> UnitConversion:
    """Return the conversion between two units; see :meth:`Unit.to`."""
    return UnitConversion(source, destination, differences=differences)


def convert_units(
    array: npt.ArrayLike, source: str | Unit, destination: str | Unit, *, differences: bool = False
) -> Any:
    """Return values in another unit.

    Parameters
    ----------
    array : array_like
        Real values.
    source, destination : str or Unit
        The units of the array and of the result.
    differences : bool
        Whether values are differences, as of temperatures, to which offsets do not apply.

    Returns
    -------
    ndarray or scalar
        Single for single values, double for all others. The result of an exact conversion is within
        two roundings of the exact value.

    Raises
    ------
    Error
        A unit is not known, or the two do not measure the same.

    Examples
    --------
    >>> import numpy as np
    >>> import tvtypes
    >>> tvtypes.convert_units(np.array([-40.0, 20.0, 100.0]), "degC", "degF")
    array([-40.,  68., 212.])
    """
    return conversion(str(source), str(destination), differences=differences)(array)


def complete_unit(prefix: str) -> list[str]:
    """Return the names, symbols and aliases of units that begin with a prefix, sorted.

    Examples
    --------
    >>> import tvtypes
    >>> tvtypes.complete_unit("kilometer_per_h")
    ['kilometer_per_hour']
    """
    return [word["word"] for word in report("unit", f"--complete={prefix}")["words"]]


def search_units(word: str) -> list[dict[str, Any]]:
    """Return the units with a word in a name, an alias or the quantity, whatever its case.

    Each is a dict with the members ``name``, ``symbol``, ``quantity``, ``definition`` and
    ``systems``.

    Examples
    --------
    >>> import tvtypes
    >>> [unit["symbol"] for unit in tvtypes.search_units("nautical")]
    ['gal_per_nmi', 'nmi', 'nmi_per_gal']
    """
    return report("unit", f"--search={word}")["units"]
