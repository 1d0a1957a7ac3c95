"""Fixed-point types, units and the reports of the tool."""

import json
import pickle
from fractions import Fraction

import numpy as np
import pytest
import tvtypes
from tvtypes import FixedPoint, _native

ROUND = {
    "zero": lambda x: int(x),
    "near": lambda x: (2 * x + 1) // 2,
    "ceil": lambda x: -((-x) // 1),
    "floor": lambda x: x // 1,
    "round": lambda x: (1 if x >= 0 else -1) * ((2 * abs(x) + 1) // 2),
    "convergent": lambda x: round(x),
}


def stored_integer(value, fixed_point, rounding, overflow):
    """Quantize by fractions of Python."""
    exact = (Fraction(float(value)) - fixed_point.bias) / fixed_point.slope
    integer = int(ROUND[rounding](exact))
    least = (fixed_point.minimum - fixed_point.bias) / fixed_point.slope
    greatest = (fixed_point.maximum - fixed_point.bias) / fixed_point.slope
    if overflow == "saturate":
        return int(min(max(integer, least), greatest))
    return int((integer - least) % (greatest - least + 1) + least)


NAMES = [
    "sfix16_En12", "ufix8", "int8", "uint32", "sfix12_E3", "ufix5_En7", "sfix1", "sfix33_En2",
    "ufix64_En60", "sfix8_Sp375_Bn10", "ufix24_Sp01_B5", "sfix32_E900", "ufix16_En1020",
    "sfix7_F1p5_En3",
]  # fmt: skip


@pytest.mark.parametrize("name", NAMES)
def test_quantization_is_exact(name):
    fixed_point = FixedPoint(name)
    random = np.random.default_rng(2)
    span = float(fixed_point.maximum - fixed_point.minimum)
    values = random.uniform(-1.6, 1.6, 60) * span
    ties = float(fixed_point.slope) * (random.integers(-40, 40, 40) / 2) + float(fixed_point.bias)
    special = [0.0, -0.0, 5e-324, -5e-324, 1.5, -1.5]
    values = np.concatenate([values, ties, special])
    for rounding in _native.roundings:
        for overflow in _native.overflows:
            stored = fixed_point.quantize(values, rounding=rounding, overflow=overflow)
            assert stored.dtype == fixed_point.dtype
            wanted = [stored_integer(v, fixed_point, rounding, overflow) for v in values]
            assert stored.tolist() == wanted, (rounding, overflow)
    real = fixed_point.real_values(stored)
    wanted = [float(fixed_point.slope * int(q) + fixed_point.bias) for q in stored]
    assert real.tolist() == wanted


def test_quantization_of_values_that_are_not_finite():
    values = [np.nan, np.inf, -np.inf]
    for name in ("sfix8_En4", "sfix8_Sp375_Bn10", "sfix40"):
        fixed_point = FixedPoint(name)
        least, greatest = -(2 ** (fixed_point.word_length - 1)), 2 ** (
            fixed_point.word_length - 1
        ) - 1
        assert fixed_point.quantize(values).tolist() == [0, greatest, least]
        assert fixed_point.quantize(values, overflow="wrap").tolist() == [0, 0, 0]


def test_forms_of_fixed_point_types():
    by_name = FixedPoint("sfix16_En12")
    assert by_name == FixedPoint("fixdt(1,16,12)")
    assert by_name == FixedPoint(word_length=16, fraction_length=12)
    assert by_name == FixedPoint(word_length=16, slope="2^-12") == pickle.loads(
        pickle.dumps(by_name)
    )
    assert by_name.constructor(scaling="slope and bias") == "fixdt(1,16,0.000244140625,0)"
    assert (by_name.storage, by_name.signed, by_name.kind) == ("int16", True, "fixed point")
    shape = by_name.quantize(np.asfortranarray(np.ones((3, 4))))
    assert shape.shape == (3, 4) and shape.flags.f_contiguous
    assert by_name.quantize(1.0) == 4096 and type(by_name.quantize(1.0)) is np.int16


@pytest.mark.parametrize(
    ("call", "part"),
    [
        (lambda: FixedPoint("sfix"), "sfix"),
        (lambda: FixedPoint(), "word_length is missing"),
        (lambda: FixedPoint("int8", word_length=8), "a name excludes word_length"),
        (lambda: FixedPoint(word_length=0), "word_length"),
        (lambda: FixedPoint(word_length=8, slope=-1.0), "slope"),
        (lambda: FixedPoint(word_length=8, slope=1, fraction_length=2), "excludes"),
        (lambda: FixedPoint("double").quantize([1.0]), "no fixed-point type"),
        (lambda: FixedPoint("double").maximum, "no fixed-point type"),
        (lambda: FixedPoint("sfix65").quantize([1.0]), "more than 64 bits"),
        (lambda: FixedPoint("int8").quantize([1j]), "complex"),
        (lambda: FixedPoint("int8").quantize(["a"]), "<U1 is not one"),
        (lambda: FixedPoint("int8").quantize([1.0], rounding="up"), "rounding"),
        (lambda: FixedPoint("sfix4").real_values([1, 8]), "index 1 "),
        (lambda: FixedPoint("int8").real_values([1, 300]), "1 to 300"),
        (lambda: FixedPoint("uint8").real_values(np.array([-1])), "-1 to -1"),
        (lambda: FixedPoint("int8").real_values([1.0]), "float64"),
        (lambda: tvtypes.unit("km/hour/"), "km/hour/"),
        (lambda: tvtypes.unit("nosuchunit"), "the unit is not known"),
        (lambda: tvtypes.unit("m").to("s"), "canonical form"),
        (lambda: tvtypes.convert_units([1j], "m", "km"), "complex128"),
        (lambda: tvtypes.convert_units(["1"], "m", "km"), "<U1"),
        (lambda: tvtypes.inspect("nofile.xml"), "nofile.xml: cannot be opened"),
        (lambda: tvtypes.inspect("-"), "./-: cannot be opened"),
        (lambda: tvtypes.check("--help"), "--help: cannot be opened"),
    ],
)
def test_errors(call, part):
    with pytest.raises(tvtypes.Error) as caught:
        call()
    assert part in str(caught.value)
    copy = pickle.loads(pickle.dumps(caught.value))
    assert str(copy) == str(caught.value) and copy.message_id == caught.value.message_id


def test_units():
    assert tvtypes.unit("km/h").to("m/s").factor == Fraction(5, 18)
    conversion = tvtypes.unit("degC").to("degF")
    assert (conversion.factor, conversion.offset, conversion.exact) == (Fraction(9, 5), 32, True)
    assert tvtypes.unit("degC").to("degF", differences=True).offset == 0
    assert not tvtypes.unit("rad").to("deg").exact
    assert tvtypes.unit("rad").to("deg")(np.pi) == pytest.approx(180, rel=1e-15)
    assert tvtypes.unit("Da").to("kg").uncertainty > 0
    assert tvtypes.unit("m.s-1").to("km/h").notes
    values = np.array([[36, 72], [90, -18]])
    np.testing.assert_array_equal(
        tvtypes.convert_units(values, "km/h", "m/s"), [[10, 20], [25, -5]]
    )
    single = tvtypes.convert_units(np.float32([20]), tvtypes.unit("degC"), "degF")
    assert single.dtype == np.float32 and single[0] == 68
    assert tvtypes.convert_units(100, "degC", "degF") == 212
    assert "kilometer" in tvtypes.complete_unit("kilom")
    assert tvtypes.complete_unit("-") == []
    assert any(unit["symbol"] == "nmi" for unit in tvtypes.search_units("nautical"))


def test_reports_are_those_of_the_tool(examples):
    model = tvtypes.inspect(examples / "vehicle_suspension.xml")
    _, output, _ = _native.run_tool(["inspect", str(examples / "vehicle_suspension.xml"), "--json"])
    assert model == json.loads(output) and model["command"] == "inspect"
    system = tvtypes.check(examples / "vehicle.ssd")
    assert system["command"] == "check" and system["findings"]
