"""Conversion of arrays between the built-in types."""

from __future__ import annotations

from typing import Any, Literal, overload

import numpy as np
import numpy.typing as npt

from . import _native
from ._losses import LossReport

Rounding = Literal["convergent", "zero", "near", "ceil", "floor", "round"]
Overflow = Literal["saturate", "wrap"]


@overload
def convert(
    array: npt.ArrayLike,
    dtype: npt.DTypeLike,
    *,
    rounding: Rounding = ...,
    overflow: Overflow = ...,
    out: npt.NDArray[Any] | None = ...,
    report: Literal[False] = ...,
) -> Any: ...
@overload
def convert(
    array: npt.ArrayLike,
    dtype: npt.DTypeLike,
    *,
    rounding: Rounding = ...,
    overflow: Overflow = ...,
    out: npt.NDArray[Any] | None = ...,
    report: Literal[True],
) -> tuple[Any, LossReport]: ...
def convert(array, dtype, *, rounding="convergent", overflow="saturate", out=None, report=False):
    """Convert an array to a built-in type.

    Parameters
    ----------
    array : array_like
        Values of one of the nine types: double, single, int8, uint8, int16, uint16, int32, uint32 and
        boolean, in any shape. Complex integers are of :func:`complex_dtype`. An array that is
        contiguous is not copied. Integers of 64 bits are read as doubles.
    dtype : str or dtype
        The name of a type, or its dtype.
    rounding : {"convergent", "zero", "near", "ceil", "floor", "round"}
        How values are rounded to integers: to nearest, with ties to even; toward zero; to nearest, with
        ties toward positive infinity; up; down; to nearest, with ties away from zero.
    overflow : {"saturate", "wrap"}
        Whether a value outside the range of an integer type becomes the nearer bound, or is taken modulo
        2 to the number of bits.
    out : ndarray, optional
        Where the result is written: of its shape and dtype. It may share memory with the array.
    report : bool
        Whether to return what was lost, too.

    Returns
    -------
    result : ndarray or scalar
        `out`, or a new array in the order of `array`. NaN becomes 0 as an integer. Complex values become
        real ones without their imaginary parts.
    losses : LossReport
        What was lost, with ``report=True``.

    Raises
    ------
    Error
        A dtype, a mode or `out` is refused.

    Notes
    -----
    The lock of the interpreter is released, so that several threads convert at the same time.

    Examples
    --------
    >>> import numpy as np
    >>> import tvtypes
    >>> tvtypes.convert(np.array([0.5, 1.5, -200.0]), "int8")
    array([   0,    2, -128], dtype=int8)
    >>> tvtypes.convert([0.5, 1.5, -200.0], "int8", rounding="ceil", overflow="wrap")
    array([ 1,  2, 56], dtype=int8)
    """
    if not (isinstance(rounding, str) and isinstance(overflow, str)):
        raise TypeError("rounding and overflow are names, as str")
    return _native.convert(array, dtype, rounding, overflow, out, report)


def complex_dtype(dtype: npt.DTypeLike) -> np.dtype[Any]:
    """Return the dtype of complex values of a type.

    Complex integers have the fields ``real`` and ``imag``.

    Parameters
    ----------
    dtype : str or dtype
        Any of the types but boolean.

    Examples
    --------
    >>> import tvtypes
    >>> tvtypes.convert([1.25 - 2j], tvtypes.complex_dtype("int16"))
    array([(1, -2)], dtype=[('real', '<i2'), ('imag', '<i2')])
    """
    return _native.complex_dtype(dtype)
