"""The reports of the command line tool as objects."""

from __future__ import annotations

import json
import os
from typing import Any

from . import _native
from ._errors import Error

#: The status of a call that failed.
_FAILED = 2


def report(command: str, *arguments: str | bytes) -> dict[str, Any]:
    """Return what a command of the tool prints with ``--json``.

    Raises
    ------
    Error
        A file cannot be read, or an argument is refused.
    """
    status, output, errors = _native.run_tool([command, "--json", *arguments])
    result = json.loads(output) if output else {}
    if status == _FAILED:
        failure = result.get("error") or {}
        sentence = failure.get("sentence") or errors.decode(errors="replace").strip()
        # A sentence about a text, such as a unit, does not repeat it.
        place = failure.get("file") or failure.get("text")
        raise Error(f"{place}: {sentence}" if place else sentence)
    return result


def _file(path: str | os.PathLike[str]) -> bytes:
    name = os.fsencode(path)
    # The tool reads the standard input for "-".
    return b"./-" if name == b"-" else name


def inspect(path: str | os.PathLike[str]) -> dict[str, Any]:
    """Return what is known of a model: its variables, types, units and sizes, and what is wrong.

    Parameters
    ----------
    path : path-like
        A model description, or an archive or a folder that contains one.

    Returns
    -------
    dict
        The JSON of ``tvtypes inspect --json``; ``result["findings"]`` is what is wrong.

    Raises
    ------
    Error
        The file cannot be read, or is no model description.
    """
    return report("inspect", "--", _file(path))


def check(path: str | os.PathLike[str]) -> dict[str, Any]:
    """Return what is wrong in a system of connected models.

    Parameters
    ----------
    path : path-like
        A system structure description, or an archive or a folder that contains one.

    Returns
    -------
    dict
        The JSON of ``tvtypes check --json``; ``result["findings"]`` is what is wrong.

    Raises
    ------
    Error
        The file cannot be read, or is no system.
    """
    return report("check", "--", _file(path))
