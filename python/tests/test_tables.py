"""Tables of types, struct types and symbolic sizes."""

import gc
import pickle

import pytest
import tvtypes
from tvtypes import Contradiction, Dims, Element, TypeTable


def test_types_of_a_new_table():
    table = TypeTable()
    assert [t.name for t in table][:3] == ["auto", "double", "single"] and len(table) == 15
    assert table["int16"].size == 2 and table[4] == table["int16"] and table[table["int16"]].id == 4
    assert table["boolean"].alias_of is None and not table["boolean"].is_struct
    assert "int16" in table and "int17" not in table and TypeTable()["int16"] not in table


def test_registered_types_and_aliases():
    table = TypeTable()
    fixed = table.register("sfix16_En12")
    assert fixed == table.register("sfix16_En12") == table[fixed.id]
    assert fixed.fixed_point == tvtypes.FixedPoint("sfix16_En12")
    alias = table.alias("Position", fixed)
    second = table.alias("Place", "Position")
    assert (second.alias_of, second.resolved, second.fixed_point) == (
        alias,
        fixed,
        fixed.fixed_point,
    )
    assert {alias, table["Position"]} == {alias} and alias != fixed


def car():
    table = TypeTable()
    wheel = table.struct(
        "Wheel",
        [Element("speed", "single", unit="km/h"), Element("force", "double", (2,), complex=True)],
    )
    return table.struct("Car", [Element("id", "uint8"), Element("wheels", wheel, (2,))])


def test_layout_and_numberings():
    struct = car()
    gc.collect()
    assert struct.size == 88
    assert [(e.name, e.offset, e.dimensions) for e in struct.elements] == [
        ("id", 0, ()),
        ("wheels", 8, (2,)),
    ]
    assert [n.name for n in struct.nodes] == [
        "", "id", "wheels", "wheels", "speed", "force", "wheels", "speed", "force",
    ]  # fmt: skip
    assert [leaf.offset for leaf in struct.leaves] == [0, 8, 16, 48, 56]
    assert len(struct.scalars) == 11 and struct.scalars[-1].offset == 80
    leaf = struct.leaves[-1]
    assert leaf == struct.leaves[4] == struct.leaves[2:][-1]
    assert leaf.path == (("wheels", 1), ("force", None))
    assert (leaf.type.name, leaf.complex, leaf.dimensions) == ("double", True, (2,))
    assert struct.leaves[1].unit == "km/h" and leaf.unit is None
    view = struct.nodes
    del struct
    gc.collect()
    assert view[0].type.name == "Car"


def test_large_views_are_read_in_order():
    table = TypeTable()
    inner = table.struct("Inner", [Element(f"e{i}", "double") for i in range(9)])
    outer = table.struct("Outer", [Element("inner", inner, (2000,))])
    assert sum(leaf.offset for leaf in outer.leaves) == sum(8 * i for i in range(18000))


@pytest.mark.parametrize(
    ("call", "part"),
    [
        (lambda t: t.register("a b"), '"a b" is not'),
        (lambda t: t["nothing"], "no type nothing"),
        (lambda t: t[99], "99"),
        (lambda t: t[-2], "-2"),
        (lambda t: t[TypeTable()["int8"]], "another table"),
        (lambda t: t.alias("S", "int8"), "has a type S already"),
        (lambda t: t.alias("int8", "int16"), "has a type int8 already"),
        (lambda t: t.alias("New", 99), "99"),
        (lambda t: t.struct("S", []), "has a type S already"),
        (lambda t: t.struct("New", [Element("e", "nothing")]), "no type nothing"),
        (lambda t: t.struct("New", 2 * [Element("e", "int8")]), "two elements e"),
        (lambda t: t.struct("New", [Element("e", "int8", (2, 0))]), "below 1"),
        (lambda t: t.struct("New", [Element("e", "int8", (2**20, 2**20))]), "more than"),
        (lambda t: t.struct("New", [Element("e", "int8", unit="nosuchunit")]), "not known"),
        (lambda t: t.struct("New", [Element("e", t.register("Undefined"))]), "no size"),
        (lambda t: t["int8"].elements[0], "int8 is no struct type"),
    ],
)
def test_errors_change_nothing(call, part):
    table = TypeTable()
    table.struct("S", [Element("x", "double")])
    with pytest.raises(tvtypes.Error) as caught:
        call(table)
    assert part in str(caught.value)
    assert "New" not in table
    assert [e.name for e in table["S"].elements] == ["x"]
    table.struct("New", [Element("e", "int8")])


def test_errors_of_the_library_have_ids():
    with pytest.raises(tvtypes.Error) as caught:
        TypeTable()[99]
    assert caught.value.message_id.endswith("::InvalidDataTypeId")
    assert caught.value.arguments == ("99",)


def test_indices_outside_of_views():
    for index in (2, -3, 2**31, "0"):
        with pytest.raises((IndexError, TypeError)):
            car().elements[index]


def test_arithmetic_of_sizes():
    dims = Dims()
    n, m = dims.size("N"), dims.size("M")
    assert str((n + m) * (n - m)) == "N*N-M*M" or (n + m) * (n - m) == dims.size("N*N - M*M")
    assert 2 * n / 2 == n and -n + n == 0 and 1 - (1 - n) == "N" and 6 / dims.size(4) == "3/2"
    assert dims.size(2**80).value == 2**80 and n.value is None
    shape = dims.size("[2, N, M]")
    assert len(shape) == 3 and list(shape) == [2, n, m] and shape.elements == 2 * n * m
    assert {n, dims.size("N")} == {n} and n != Dims().size("N")


def test_facts_and_contradictions():
    dims = Dims()
    n = dims.size("N")
    dims.state_equal("M", n + 1, block="Pad")
    dims.state_greater(n, 4, block="Window")
    assert dims.is_greater("M", 5) is True and dims.is_equal(n, 3) is False
    assert dims.is_equal(n, "K") is None
    with pytest.raises(Contradiction) as caught:
        dims.state_greater(4, "M", block="Buffer")
    contradiction = caught.value
    assert contradiction.fact == ("4 > M", "Buffer")
    assert {fact.block for fact in contradiction.reasons} == {"Pad", "Window"}
    assert isinstance(contradiction, tvtypes.Error)
    copy = pickle.loads(pickle.dumps(contradiction))
    assert (str(copy), copy.reasons) == (str(contradiction), contradiction.reasons)
    assert dims.facts == [("M == N+1", "Pad"), ("N > 4", "Window")]
    assert dims.is_greater("M", 5) is True
    any_sizes = Dims(whole=False)
    any_sizes.state_greater(0, "N")
    with pytest.raises(Contradiction):
        dims.state_greater(0, "N")


@pytest.mark.parametrize("text", ["", "N+", "2**N", "(" * 5000, "N" * 10 + "?", "[1,", "é"])
def test_texts_that_are_no_sizes(text):
    dims = Dims()
    with pytest.raises(tvtypes.Error):
        dims.size(text)
    assert dims.size("N") + 1 == "N+1"


def test_sizes_of_other_tables():
    with pytest.raises(tvtypes.Error, match="another table"):
        Dims().state_equal(Dims().size("N"), 1)
    with pytest.raises(TypeError):
        Dims().size(1.5)
    with pytest.raises(IndexError):
        Dims().size("[1, 2]")[2]
