"""Conversions of arrays of Dask, block by block, on one machine or many.

The functions are lazy: nothing is converted before the result is computed, stored or persisted, and
then only blocks that are needed are in memory.
"""

from __future__ import annotations

import itertools
import operator
from collections.abc import Callable, Iterator
from typing import Any

import dask.array as da
import dask.threaded
import numpy as np
import numpy.typing as npt
from dask.base import DaskMethodsMixin, tokenize
from dask.highlevelgraph import HighLevelGraph

import tvtypes

from ._convert import Overflow, Rounding
from ._losses import Index, LossReport
from ._units import Unit

__all__ = ["LazyLossReport", "convert", "convert_units"]

#: The number of reports that one task combines.
_REPORTS_PER_TASK = 32


class LazyLossReport(DaskMethodsMixin):
    """A :class:`tvtypes.LossReport` that is computed by ``compute()`` or ``dask.compute()``."""

    # As arrays, so that a report and an array are optimized together and share their blocks.
    __dask_optimize__ = staticmethod(da.Array.__dask_optimize__)
    __dask_scheduler__ = staticmethod(dask.threaded.get)

    def __init__(self, graph: HighLevelGraph, layer: str, key: Any) -> None:
        self._graph = graph
        self._layer = layer
        self._key = key

    def __dask_graph__(self) -> HighLevelGraph:
        return self._graph

    def __dask_keys__(self) -> list[Any]:
        return [self._key]

    def __dask_layers__(self) -> tuple[str]:
        return (self._layer,)

    def __dask_tokenize__(self) -> Any:
        return self._key

    def __dask_postcompute__(self) -> tuple[Any, tuple[()]]:
        return operator.itemgetter(0), ()

    def __dask_postpersist__(self) -> tuple[Any, tuple[str, Any]]:
        return LazyLossReport, (self._layer, self._key)


def convert(
    array: Any,
    dtype: npt.DTypeLike,
    *,
    rounding: Rounding = "convergent",
    overflow: Overflow = "saturate",
    report: bool = False,
) -> Any:
    """Convert a Dask array to a built-in type.

    Parameters
    ----------
    array : dask.array.Array
    dtype, rounding, overflow
        As in :func:`tvtypes.convert`.
    report : bool
        Whether to return what was lost, too.

    Returns
    -------
    result : dask.array.Array
    losses : LazyLossReport
        What was lost in the whole array, with ``report=True``. Computed together with the result, as
        by ``dask.compute(result, losses)``, each block is converted once. The first indices are
        those of the first blocks.

    Raises
    ------
    Error
        A dtype or a mode is refused, or there is to be a report for blocks of unknown sizes. Nothing
        has been computed then.

    Examples
    --------
    >>> import dask
    >>> import dask.array as da
    >>> import tvtypes.dask
    >>> values = da.linspace(-200, 200, 401, chunks=100)
    >>> result, losses = tvtypes.dask.convert(values, "int8", report=True)
    >>> result, losses = dask.compute(result, losses)
    >>> result.dtype, losses.lost, losses.first_lost
    (dtype('int8'), 145, [(0,), (1,), (2,), (3,), (4,)])
    """
    array = da.asanyarray(array)
    modes: dict[str, Any] = {"rounding": rounding, "overflow": overflow}
    # An empty array is converted for the dtype, and so that wrong arguments are refused at once.
    empty = tvtypes.convert(np.zeros((0,) * array.ndim, array.dtype), dtype, **modes)
    if not report:
        return array.map_blocks(
            tvtypes.convert, empty.dtype, **modes, dtype=empty.dtype, meta=np.asarray(empty)
        )
    if np.isnan(array.shape).any():
        raise tvtypes.Error(
            "a report has indices in the array, and sizes of its blocks are not known; "
            "array.compute_chunk_sizes() computes them"
        )
    return _converted_with_report(array, empty, modes)


def convert_units(
    array: Any, source: str | Unit, destination: str | Unit, *, differences: bool = False
) -> Any:
    """Convert the values of a Dask array to another unit; see :func:`tvtypes.convert_units`.

    Parameters
    ----------
    array : dask.array.Array
    source, destination, differences
        As in :func:`tvtypes.convert_units`.

    Returns
    -------
    dask.array.Array

    Raises
    ------
    Error
        A unit is not known, or the two do not measure the same, before anything is computed.

    Examples
    --------
    >>> import dask.array as da
    >>> import tvtypes.dask
    >>> tvtypes.dask.convert_units(da.arange(4, chunks=2), "km", "m").compute()
    array([   0., 1000., 2000., 3000.])
    """
    array = da.asanyarray(array)
    units = {"differences": differences}
    empty = tvtypes.convert_units(
        np.zeros((0,) * array.ndim, array.dtype), str(source), str(destination), **units
    )
    return array.map_blocks(
        tvtypes.convert_units, str(source), str(destination), **units, meta=np.asarray(empty)
    )


def _converted_with_report(
    array: Any, empty: npt.NDArray[Any], modes: dict[str, Any]
) -> tuple[Any, LazyLossReport]:
    token = tokenize(array, empty.dtype, modes)
    pairs, results = f"convert-with-report-{token}", f"convert-{token}"
    pair_tasks: dict[Any, Any] = {}
    result_tasks: dict[Any, Any] = {}
    for index, start in _blocks(array):
        pair = (pairs, *index)
        pair_tasks[pair] = (_converted_block, (array.name, *index), empty.dtype, modes, start)
        result_tasks[(results, *index)] = (operator.getitem, pair, 0)
    reports, key, report_tasks = _combining_tasks(token, list(pair_tasks))
    graph = HighLevelGraph(
        {**array.dask.layers, pairs: pair_tasks, results: result_tasks, reports: report_tasks},
        {**array.dask.dependencies, pairs: {array.name}, results: {pairs}, reports: {pairs}},
    )
    result = da.Array(graph, results, array.chunks, meta=empty)
    return result, LazyLossReport(graph, reports, key)


def _blocks(array: Any) -> Iterator[tuple[Index, Index]]:
    """Yield the index and the start of each block."""
    starts = [tuple(itertools.accumulate((0, *sizes[:-1]))) for sizes in array.chunks]
    for index in np.ndindex(*array.numblocks):
        yield index, tuple(starts[axis][i] for axis, i in enumerate(index))


def _combining_tasks(token: str, pairs: list[Any]) -> tuple[str, Any, dict[Any, Any]]:
    """Return the name of the layer, the last key and the tasks of a tree that combines reports."""
    name = f"loss-report-{token}"
    tasks: dict[Any, Any] = {}
    function: Callable[[list[Any]], LossReport] = _combined_of_pairs
    keys = pairs
    level = 0
    while level == 0 or len(keys) > 1:
        groups = range(0, max(len(keys), 1), _REPORTS_PER_TASK)
        combined = [(name, level, i) for i in groups]
        tasks.update(
            (key, (function, keys[i : i + _REPORTS_PER_TASK])) for key, i in zip(combined, groups)
        )
        function, keys, level = LossReport.combined, combined, level + 1
    return name, keys[0], tasks


def _converted_block(
    block: npt.NDArray[Any], dtype: np.dtype[Any], modes: dict[str, Any], start: Index
) -> tuple[Any, LossReport]:
    result, losses = tvtypes.convert(block, dtype, report=True, **modes)
    return result, losses.shifted(start)


def _combined_of_pairs(pairs: list[tuple[Any, LossReport]]) -> LossReport:
    return LossReport.combined(losses for _, losses in pairs)
