"""Counts objects, and references to those that stay, while the package is used. Fails if they grow.

The debug build of Python, /usr/bin/python3-dbg, also aborts at a wrong reference count. Its total of
references is of no use here: it leaves out those of modules that are compiled for the other build.
"""

import contextlib
import gc
import sys

import numpy as np
import tvtypes

ARRAY = np.linspace(-200, 200, 3000)
OUT = np.empty(3000, np.int8)


def use():
    """Calls each function, and makes each error of the module."""
    tvtypes.convert(ARRAY, np.int8, out=OUT)
    tvtypes.convert(ARRAY[::2], "int8", report=True)
    tvtypes.convert([1 + 2j], tvtypes.complex_dtype("int16"), report=True)
    tvtypes.convert(np.arange(5), "single")
    fixed = tvtypes.FixedPoint("sfix8_Sp375_B1")
    fixed.real_values(fixed.quantize(ARRAY))
    fixed.constructor()
    assert fixed.minimum < fixed.maximum
    tvtypes.unit("km/h").to("m/s")
    table = tvtypes.TypeTable()
    struct = table.struct("S", [tvtypes.Element("x", "double", (2,), "m")])
    assert [node.unit for node in [*struct.elements, *struct.leaves]] == ["m", "m"]
    assert len(struct.nodes) == len(struct.scalars) == 2
    dims = tvtypes.Dims()
    dims.state_equal("N", dims.size("M") + 1, block="A")
    assert dims.is_greater("N", "M") and dims.size("[2, N]").elements == "2*N"
    wrong = [
        lambda: tvtypes.convert(ARRAY, np.int8, out=OUT[:1]),
        lambda: tvtypes.convert(ARRAY, "int12"),
        lambda: tvtypes.convert(ARRAY, "int8", rounding="x"),
        lambda: tvtypes.convert(np.zeros(1, ">f8"), "int8"),
        lambda: fixed.real_values([1000]),
        lambda: tvtypes.unit("km").to("s"),
        lambda: table[99],
        lambda: struct.leaves[9],
        lambda: table.struct("T", [tvtypes.Element("x", "double", (0,))]),
        lambda: dims.size("N+"),
        lambda: dims.state_greater("M", "N", block="B"),
        lambda: tvtypes.inspect("nofile"),
    ]
    for call in wrong:
        with contextlib.suppress(tvtypes.Error, IndexError):
            call()
            raise AssertionError


STAYING = {
    "None": None,
    "True": True,
    "()": (),
    "an array": ARRAY,
    "out": OUT,
    "int8": np.dtype(np.int8),
    "double": np.dtype(float),
    "Error": tvtypes.Error,
    "LossReport": tvtypes.LossReport,
    "ndarray": np.ndarray,
}


def counts():
    gc.collect()
    return [sys.getallocatedblocks(), *(sys.getrefcount(each) for each in STAYING.values())]


ROUNDS = 1000
for _ in range(300):
    use()  # fills the caches
before = counts()
for _ in range(ROUNDS):
    use()
grown = [b - a for a, b in zip(before, counts())]
print(f"growth after {ROUNDS} rounds:", dict(zip(["objects", *STAYING], grown)))
# What NumPy and Python keep for reuse varies; a leak grows with every round.
sys.exit(any(growth > 0.9 * ROUNDS for growth in grown))
