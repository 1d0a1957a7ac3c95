"""Fixed-point types."""

from __future__ import annotations

from fractions import Fraction
from typing import Any

import numpy as np
import numpy.typing as npt

from . import _native
from ._errors import Error

_SCALINGS = ("fraction length", "slope and bias", "none")


class FixedPoint:
    """A fixed-point type, whose real-world values are slope * stored integer + bias.

    Parameters
    ----------
    name : str, optional
        A name such as ``"sfix16_En12"``, or a constructor such as ``"fixdt(1,16,12)"``. Without it,
        the keywords describe the type.
    signed : bool, optional
        Whether stored integers are signed. They are by default.
    word_length : int, optional
        The bits of a stored integer.
    fraction_length : int, optional
        The negated exponent of a slope that is a power of two.
    slope, bias : float or str, optional
        A positive slope, also as a text such as ``"2^-4"``, and the bias. By default 1 and 0.

    Raises
    ------
    Error
        The name is not one of a type, or the keywords describe none.

    Examples
    --------
    >>> from tvtypes import FixedPoint
    >>> t = FixedPoint("sfix16_En12")
    >>> t.minimum, t.maximum, t.resolution
    (Fraction(-8, 1), Fraction(32767, 4096), Fraction(1, 4096))
    >>> stored = t.quantize([0.1, -3.14159, 99.0])
    >>> stored
    array([   410, -12868,  32767], dtype=int16)
    >>> t.real_values(stored)
    array([ 0.10009766, -3.14160156,  7.99975586])
    >>> FixedPoint(word_length=8, signed=False, slope=0.5, bias=-40).name
    'ufix8_En1_Bn40'
    """

    __slots__ = ("_record", "_details")

    def __init__(
        self,
        name: str | None = None,
        *,
        signed: bool | None = None,
        word_length: int | None = None,
        fraction_length: int | None = None,
        slope: float | str | None = None,
        bias: float | str | None = None,
    ) -> None:
        keywords = {
            "signed": None if signed is None else int(signed),
            "word_length": word_length,
            "fraction_length": fraction_length,
            "slope": slope,
            "bias": bias,
        }
        given = {key: str(value) for key, value in keywords.items() if value is not None}
        if name is not None and not isinstance(name, str):
            raise TypeError(f"the name of a fixed-point type is a str, not {type(name).__name__}")
        if name is not None and given:
            raise Error(f"a name excludes {', '.join(given)}")
        if name is None and "word_length" not in given:
            raise Error("a name or word_length is missing")
        if "slope" in given and "fraction_length" in given:
            raise Error("slope excludes fraction_length")
        if name is not None:
            self._record = _native.FixedPointRecord(name)
        else:
            texts = _native.FixedPointTexts()
            for key, text in given.items():
                setattr(texts, key, text)
            self._record = _native.FixedPointRecord(texts)
        self._details = self._record.details()

    @property
    def name(self) -> str:
        """The canonical name, such as ``"sfix16_En12"``."""
        return self._details["name"]

    @property
    def kind(self) -> str:
        """The kind in words, such as ``"fixed point"``."""
        return self._details["kind"]

    @property
    def signed(self) -> bool:
        """Whether stored integers are signed."""
        return self._record.signed

    @property
    def word_length(self) -> int:
        """The bits of a stored integer."""
        return self._record.word_length

    @property
    def storage(self) -> str | None:
        """The built-in type that stores a value; None if there is none."""
        return self._details["storage"]

    @property
    def dtype(self) -> np.dtype[Any]:
        """The dtype of the stored integers of :meth:`quantize`."""
        return self._record.dtype()

    @property
    def slope(self) -> Fraction:
        """The slope, exactly."""
        return Fraction(self._record.factor) * Fraction(2) ** self._record.exponent

    @property
    def resolution(self) -> Fraction:
        """The difference of adjacent values, which is the slope."""
        return self.slope

    @property
    def bias(self) -> Fraction:
        """The bias, exactly."""
        return Fraction(self._record.bias)

    @property
    def minimum(self) -> Fraction:
        """The least value, exactly."""
        return self.slope * self._record.limits()[0] + self.bias

    @property
    def maximum(self) -> Fraction:
        """The greatest value, exactly."""
        return self.slope * self._record.limits()[1] + self.bias

    def constructor(self, *, function: str = "fixdt", scaling: str = "fraction length") -> str:
        """Return the text that constructs the type in the numeric environment of a host.

        Parameters
        ----------
        function : {"fixdt", "numerictype"}
        scaling : {"fraction length", "slope and bias", "none"}

        Examples
        --------
        >>> FixedPoint("sfix16_En12").constructor()
        'fixdt(1,16,12)'
        """
        if function not in ("fixdt", "numerictype") or scaling not in _SCALINGS:
            raise Error(
                f"function is fixdt or numerictype, and scaling one of {', '.join(_SCALINGS)}"
            )
        return self._record.constructor(function == "numerictype", _SCALINGS.index(scaling))

    def quantize(
        self, values: npt.ArrayLike, *, rounding: str = "convergent", overflow: str = "saturate"
    ) -> Any:
        """Return the stored integers of real-world values, exactly rounded.

        Parameters
        ----------
        values : array_like
            Real values of a built-in type, in any shape.
        rounding, overflow : str
            As in :func:`tvtypes.convert`.

        Returns
        -------
        ndarray or scalar
            Integers of :attr:`dtype`. NaN becomes 0; an infinity becomes a bound, or 0 where values
            wrap.

        Raises
        ------
        Error
            The type has no stored integers, or more than 64 bits.
        """
        return self._record.quantize(values, rounding, overflow)

    def real_values(self, stored: npt.ArrayLike) -> Any:
        """Return the real-world values of stored integers, as the nearest doubles.

        Raises
        ------
        Error
            An integer is not in the range of the type.
        """
        return self._record.real_values(stored)

    def __repr__(self) -> str:
        return f"FixedPoint({self.name!r})"

    def __str__(self) -> str:
        return self.name

    def __eq__(self, other: object) -> bool:
        return isinstance(other, FixedPoint) and self.name == other.name

    def __hash__(self) -> int:
        return hash(self.name)

    def __reduce__(self):
        return FixedPoint, (self.name,)

