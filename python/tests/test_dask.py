"""Conversions of Dask arrays, by threads and by processes of a cluster."""

import doctest
import pathlib
import subprocess
import sys
import warnings

import dask
import dask.array as da
import numpy as np
import pytest
import tvtypes
import tvtypes.dask


@pytest.fixture(scope="module")
def cluster():
    from distributed import Client, LocalCluster

    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        with LocalCluster(
            n_workers=2, threads_per_worker=1, processes=True, dashboard_address=None
        ) as local, Client(local) as client:
            yield client


def values():
    return np.random.default_rng(3).uniform(-300, 300, (50, 70))


def array_of(chunks):
    return da.from_array(values(), chunks=chunks)


@pytest.mark.parametrize("chunks", [(50, 70), (20, 33), ((7, 43), (70,))])
def test_blocks_give_the_result_of_the_whole_array(chunks):
    wanted, whole = tvtypes.convert(values(), "int8", rounding="floor", report=True)
    lazy = tvtypes.dask.convert(array_of(chunks), "int8", rounding="floor")
    assert lazy.dtype == np.int8 and lazy.chunks == array_of(chunks).chunks
    np.testing.assert_array_equal(lazy.compute(), wanted)
    both = tvtypes.dask.convert(array_of(chunks), "int8", rounding="floor", report=True)
    result, losses = dask.compute(*both)
    np.testing.assert_array_equal(result, wanted)
    for field in ("elements", "lost", "overflowed", "greatest_error", "nan", "infinities"):
        assert getattr(losses, field) == getattr(whole, field), field
    for index in losses.first_overflowed:
        assert not -128 <= np.floor(values()[index]) <= 127
    assert len(losses.first_lost) == 5


def test_each_block_is_converted_once(monkeypatch):
    calls = []
    convert = tvtypes.convert

    def counted(array, *arguments, **keywords):
        if array.size > 1:
            calls.append(array.shape)
        return convert(array, *arguments, **keywords)

    monkeypatch.setattr(tvtypes, "convert", counted)
    dask.compute(*tvtypes.dask.convert(array_of((25, 35)), "int16", report=True))
    assert calls == [(25, 35)] * 4


def test_many_blocks_and_none():
    lazy, losses = tvtypes.dask.convert(da.ones(2000, chunks=10), "int8", report=True)
    assert losses.compute().elements == 2000 and lazy.sum().compute() == 2000
    lazy, losses = tvtypes.dask.convert(da.zeros((0, 3)), "int8", report=True)
    assert lazy.compute().shape == (0, 3) and losses.compute() == tvtypes.LossReport()
    scalar, losses = tvtypes.dask.convert(da.asarray(2.5), "int8", report=True)
    assert scalar.compute() == 2 and losses.compute().lost == 1


def test_blocks_of_unknown_sizes():
    array = da.from_array(np.arange(10), chunks=4)
    array = array[array > 2]
    assert tvtypes.dask.convert(array, "int8").compute().tolist() == list(range(3, 10))
    with pytest.raises(tvtypes.Error, match="compute_chunk_sizes"):
        tvtypes.dask.convert(array, "int8", report=True)
    assert tvtypes.dask.convert(da.asarray(7), "int8").compute() == 7


def test_persisted_results():
    lazy, losses = dask.persist(*tvtypes.dask.convert(array_of((25, 35)), "int8", report=True))
    np.testing.assert_array_equal(lazy.compute(), tvtypes.convert(values(), "int8"))
    assert losses.compute().elements == 3500


def test_errors_before_anything_is_computed():
    def fails(block):
        raise AssertionError

    array = da.map_blocks(fails, array_of((25, 35)), dtype=float, meta=np.empty((0, 0)))
    with pytest.raises(tvtypes.Error, match="int12"):
        tvtypes.dask.convert(array, "int12")
    with pytest.raises(tvtypes.Error, match="rounding"):
        tvtypes.dask.convert(array, "int8", rounding="up")
    with pytest.raises(tvtypes.Error, match="the unit is not known"):
        tvtypes.dask.convert_units(array, "nosuchunit", "m")


def test_processes_of_a_cluster(cluster):
    array = array_of((10, 20))
    both = tvtypes.dask.convert(array, "int8", report=True)
    result, losses = dask.compute(*both, scheduler=cluster)
    np.testing.assert_array_equal(result, tvtypes.convert(values(), "int8"))
    assert losses.overflowed == tvtypes.convert(values(), "int8", report=True)[1].overflowed
    feet = tvtypes.dask.convert_units(array, "m", "ft").compute(scheduler=cluster)
    np.testing.assert_allclose(feet, values() / 0.3048, rtol=1e-15)
    workers = cluster.run(lambda: __import__("os").getpid())
    assert len(set(workers.values())) == 2


def test_errors_of_workers(cluster):
    wide = da.from_array(np.array([0, 2**53 + 1]), chunks=1)
    with pytest.raises(tvtypes.Error, match="is no double"):
        tvtypes.dask.convert(wide, "double").compute(scheduler=cluster)


def test_example_of_a_large_array():
    program = pathlib.Path(__file__).parents[1] / "examples" / "large_array.py"
    result = subprocess.run(
        [sys.executable, program, "0.1"], capture_output=True, text=True, check=True, timeout=120
    )
    assert result.stdout.splitlines()[0] == "0.1 GB to int16, from -32768 to 32767"
    assert "100% Completed" in result.stderr


def test_examples():
    assert doctest.testmod(tvtypes.dask).failed == 0
