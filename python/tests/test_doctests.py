"""The examples in the docstrings."""

import doctest
import importlib

import pytest

MODULES = ["_convert", "_dims", "_errors", "_fixed_point", "_losses", "_tool", "_types", "_units"]


@pytest.mark.parametrize("name", MODULES)
def test_examples(name):
    results = doctest.testmod(importlib.import_module(f"tvtypes.{name}"))
    assert results.failed == 0
