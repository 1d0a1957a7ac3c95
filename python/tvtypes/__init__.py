"""Types, units and conversions of models.

Conversion of arrays between the built-in types of a modelling tool, fixed-point types, physical units,
the types and the symbolic sizes of a model, and the reports of the command line tool.
"""

from __future__ import annotations

from ._convert import complex_dtype, convert
from ._dims import Contradiction, Dims, Fact, Size
from ._errors import Error
from ._fixed_point import FixedPoint
from ._losses import LossReport
from ._tool import check, inspect
from ._types import DataType, Element, Node, TypeTable
from ._units import Unit, UnitConversion, complete_unit, convert_units, search_units, unit

__all__ = [
    "Contradiction",
    "DataType",
    "Dims",
    "Element",
    "Error",
    "Fact",
    "FixedPoint",
    "LossReport",
    "Node",
    "Size",
    "TypeTable",
    "Unit",
    "UnitConversion",
    "check",
    "complete_unit",
    "complex_dtype",
    "convert",
    "convert_units",
    "inspect",
    "search_units",
    "unit",
]
