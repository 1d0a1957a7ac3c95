"""The package as it is in the build tree; CTest sets PYTHONPATH."""

import pathlib

import pytest

ROOT = pathlib.Path(__file__).parents[2]


@pytest.fixture
def examples() -> pathlib.Path:
    return ROOT / "examples"
