"""Conversion of arrays."""

import sys
import threading

import numpy as np
import pytest
import tvtypes
from tvtypes import _native

DTYPES = {
    "double": np.float64,
    "single": np.float32,
    "int8": np.int8,
    "uint8": np.uint8,
    "int16": np.int16,
    "uint16": np.uint16,
    "int32": np.int32,
    "uint32": np.uint32,
    "boolean": np.bool_,
}

ROUND = {
    "zero": np.trunc,
    "near": lambda x: np.floor(x + 0.5),
    "ceil": np.ceil,
    "floor": np.floor,
    "round": lambda x: np.copysign(np.floor(np.abs(x) + 0.5), x),
    "convergent": np.rint,
}


def expected(values, dtype, rounding, overflow):
    """Convert by NumPy. The values must be small enough for 64-bit integers."""
    if dtype == np.bool_:
        return values != 0
    if np.issubdtype(dtype, np.floating):
        return values.astype(dtype)
    rounded = ROUND[rounding](values.astype(np.float64))
    limits = np.iinfo(dtype)
    if overflow == "saturate":
        return np.clip(rounded, limits.min, limits.max).astype(dtype)
    return rounded.astype(np.int64).astype(dtype)


@pytest.mark.parametrize("source", DTYPES)
@pytest.mark.parametrize("destination", DTYPES)
def test_pairs_in_all_modes(source, destination):
    random = np.random.default_rng(1)
    values = random.integers(-(2**34), 2**34, 300) / 8
    values[::2] = random.integers(-800, 800, 150) / 4
    values = tvtypes.convert(values, source)
    for rounding in _native.roundings:
        for overflow in _native.overflows:
            result = tvtypes.convert(values, destination, rounding=rounding, overflow=overflow)
            assert result.dtype == DTYPES[destination]
            np.testing.assert_array_equal(
                result,
                expected(values, DTYPES[destination], rounding, overflow),
                err_msg=f"{rounding}, {overflow}",
            )


LAYOUTS = {
    "rows": lambda a: a,
    "columns": np.asfortranarray,
    "reversed": lambda a: a[::-1, :, ::-2],
    "transposed": lambda a: a.transpose(1, 2, 0),
    "broadcast": lambda a: np.broadcast_to(a[:1], a.shape),
    "empty": lambda a: a[:, :0],
    "one": lambda a: a[1:2, 1:2, 1:2],
    "unaligned": lambda a: np.frombuffer(b"x" + a.tobytes(), np.uint8)[1:].view(a.dtype),
}


@pytest.mark.parametrize("layout", LAYOUTS)
def test_layouts(layout):
    array = LAYOUTS[layout](np.arange(2 * 3 * 4, dtype=np.float64).reshape(2, 3, 4) * 20 - 100)
    before = array.copy()
    wanted = np.clip(array, -128, 127).astype(np.int8)
    result = tvtypes.convert(array, np.int8)
    np.testing.assert_array_equal(result, wanted)
    assert result.flags.c_contiguous or result.flags.f_contiguous
    for out in (np.empty(array.shape, np.int8), np.asfortranarray(np.empty(array.shape, np.int8))):
        assert tvtypes.convert(array, "int8", out=out) is out
        np.testing.assert_array_equal(out, wanted)
    reported, losses = tvtypes.convert(array, "int8", report=True)
    np.testing.assert_array_equal(reported, wanted)
    assert losses.elements == array.size
    assert losses.lost == losses.overflowed == np.count_nonzero(array != wanted)
    for index in losses.first_lost:
        assert array[index] != wanted[index]
    np.testing.assert_array_equal(array, before)


def test_contiguous_arrays_are_not_copied():
    array = np.zeros((1000, 1000))
    out = np.empty((1000, 1000), np.int8)
    import tracemalloc

    for source in (array, np.asfortranarray(array)):
        target = out if source.flags.c_contiguous else np.asfortranarray(out)
        tracemalloc.start()
        tvtypes.convert(source, np.int8, out=target)
        peak = tracemalloc.get_traced_memory()[1]
        tracemalloc.stop()
        assert peak < 100_000


def test_out_in_the_memory_of_the_array():
    values = np.arange(8, dtype=np.float64) * 1.6
    wanted = np.rint(values).astype(np.int8)
    for offset in (0, 1, 8, 9, 56):
        memory = values.copy()
        out = memory.view(np.int8)[offset : offset + 8]
        np.testing.assert_array_equal(tvtypes.convert(memory, np.int8, out=out), wanted)
        memory = values.copy()
        out = memory.view(np.int8)[offset : offset + 8]
        _, losses = tvtypes.convert(memory, np.int8, out=out, report=True)
        np.testing.assert_array_equal(out, wanted)
        assert losses == tvtypes.convert(values, np.int8, report=True)[1]
    grown = np.arange(16, dtype=np.int8)
    source = grown[:2].copy()
    tvtypes.convert(grown[:2], np.float64, out=grown.view(np.float64))
    np.testing.assert_array_equal(grown.view(np.float64), source)


def test_complex():
    values = np.array([1.5 - 2.5j, 300 + 0j])
    np.testing.assert_array_equal(
        tvtypes.convert(values, np.complex64), values.astype(np.complex64)
    )
    pairs = tvtypes.convert(values, tvtypes.complex_dtype("int8"), rounding="floor")
    assert pairs.dtype == np.dtype([("real", "i1"), ("imag", "i1")])
    assert pairs.tolist() == [(1, -3), (127, 0)]
    np.testing.assert_array_equal(tvtypes.convert(pairs, np.complex128), [1 - 3j, 127])
    real, losses = tvtypes.convert(values, np.float64, report=True)
    np.testing.assert_array_equal(real, values.real)
    assert losses.first_lost == [(0,)] and losses.overflowed == 0
    assert losses.greatest_error == 2.5
    assert tvtypes.convert(values, "boolean").tolist() == [True, True]


def test_scalars_and_lists():
    result = tvtypes.convert(2.5, "int8")
    assert result == 2 and type(result) is np.int8
    assert tvtypes.convert(True, np.float32) == np.float32(1)
    assert tvtypes.convert([1, 2**40], "int32").tolist() == [1, 2**31 - 1]
    assert tvtypes.convert(np.uint64(2**63), "double") == 2.0**63
    result, losses = tvtypes.convert(2.5, "int8", report=True)
    assert (result, losses.lost, losses.first_lost) == (2, 1, [()])
    assert tvtypes.convert([], "int8").shape == (0,)


def test_report():
    values = np.array([[1.0, np.nan, 2.25], [np.inf, -np.inf, 1e10]])
    _, losses = tvtypes.convert(values, "int16", report=True)
    assert losses == tvtypes.LossReport(
        elements=6,
        lost=5,
        overflowed=3,
        first_lost=[(0, 1), (0, 2), (1, 0), (1, 1), (1, 2)],
        first_overflowed=[(1, 0), (1, 1), (1, 2)],
        greatest_error=1e10 - 32767,
        nan=1,
        infinities=2,
    )
    exact = tvtypes.convert([1.0, 2.0], "int8", report=True)[1]
    assert str(exact) == "2 values, nothing lost"


READ_ONLY = np.zeros(2, np.int8)
READ_ONLY.flags.writeable = False


@pytest.mark.parametrize(
    ("values", "dtype", "keywords", "part"),
    [
        ([1.0], "int12", {}, "'int12' is not one of the built-in types: double, single"),
        ([1.0], np.int64, {}, "int64 is not one"),
        ([1.0], None, {}, "None is not one"),
        ([1.0], object(), {}, "is not one"),
        ([1.0], [("real", "i2"), ("imag", "i4")], {}, "is not one"),
        ([1.0], [("real", "?"), ("imag", "?")], {}, "is not one"),
        ([1.0], ">i2", {}, "byte order"),
        (np.zeros(2, ">f8"), "int8", {}, "byte order of other machines (dtype >f8)"),
        (np.zeros(2, np.float16), "int8", {}, "float16 is not one"),
        (np.zeros(2, np.longdouble), "int8", {}, "float128 is not one"),
        (np.array([1, None]), "int8", {}, "object is not one"),
        (np.array(["a"]), "int8", {}, "<U1 is not one"),
        ([2**70], "int8", {}, "object is not one"),
        ([0, 2**53 + 1], "double", {}, "at index 1 is no double"),
        ([1.0], "int8", {"rounding": "up"}, 'rounding cannot be "up", it is one of zero, near'),
        ([1.0], "int8", {"overflow": "clip"}, "wrap, saturate"),
        ([1.0, 2.0], "int8", {"out": READ_ONLY}, "out is read-only"),
        ([1.0, 2.0], "int8", {"out": [0, 0]}, "out is not a NumPy array"),
        ([1.0, 2.0], "int8", {"out": np.zeros(2, np.int16)}, "out has the dtype int16"),
        ([1.0, 2.0], "int8", {"out": np.zeros((2, 1), np.int8)}, "shape (2, 1)"),
        ([1.0, 2.0], "int8", {"out": np.zeros(0, np.int8)}, "shape (0,)"),
    ],
)
def test_errors(values, dtype, keywords, part):
    with pytest.raises(tvtypes.Error) as caught:
        tvtypes.convert(values, dtype, **keywords)
    assert part in str(caught.value)
    assert caught.value.message_id is None and caught.value.arguments == ()


def test_arguments_of_other_types():
    with pytest.raises(TypeError):
        tvtypes.convert([1.0])
    with pytest.raises(TypeError):
        tvtypes.convert([1.0], "int8", "floor")
    for call in (
        lambda: tvtypes.convert([1.0], "int8", rounding=None),
        lambda: tvtypes.FixedPoint(16),
        lambda: tvtypes.unit(3),
    ):
        with pytest.raises(TypeError, match=r"\bstr\b"):
            call()
    with pytest.raises(tvtypes.Error):
        tvtypes.convert([[1.0], [2.0, 3.0]], "int8")


def test_threads_convert_at_the_same_time():
    values = np.linspace(-200, 200, 100_000)
    wanted = tvtypes.convert(values, "int8")
    failures = []

    def work():
        for _ in range(50):
            if not np.array_equal(tvtypes.convert(values, "int8"), wanted):
                failures.append(1)

    threads = [threading.Thread(target=work) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert not failures


def test_reference_counts():
    array = np.linspace(-200, 200, 3000)
    out = np.empty(3000, np.int8)
    dtype = np.dtype(np.int8)
    objects = (array, out, dtype, tvtypes.Error, tvtypes.LossReport)

    def work():
        tvtypes.convert(array, dtype, out=out)
        tvtypes.convert(array[::2], dtype, report=True)
        tvtypes.FixedPoint("sfix8_En2").quantize(array)
        for wrong in ({"out": out[:1]}, {"rounding": "x"}):
            with pytest.raises(tvtypes.Error):
                tvtypes.convert(array, dtype, **wrong)

    work()
    before = [sys.getrefcount(each) for each in objects]
    for _ in range(100):
        work()
    after = [sys.getrefcount(each) for each in objects]
    assert all(abs(b - a) < 5 for a, b in zip(before, after)), (before, after)
