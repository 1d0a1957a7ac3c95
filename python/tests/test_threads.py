"""Calls from several threads at the same time, without the lock of the interpreter.

Each part runs in a process of its own, so that the first calls, which fill what is kept, are among
those of the threads.
"""

import subprocess
import sys

import pytest

START = """
import concurrent.futures
import tvtypes

def results(calls):
    with concurrent.futures.ThreadPoolExecutor(8) as pool:
        futures = [pool.submit(call) for call in calls for _ in range(8)]
        return [future.result() for future in futures]

def check(calls):
    first = results(calls)
    assert first == results(calls) == [call() for call in calls for _ in range(8)]
"""

PARTS = {
    "units": """
        check([
            lambda: tvtypes.unit("km/h").to("m/s").factor,
            lambda: tvtypes.unit("Da").systems,
            lambda: tvtypes.complete_unit("kilom"),
            lambda: tvtypes.search_units("pressure"),
            lambda: tvtypes.unit("W/(m2.K)").canonical,
        ])
    """,
    "reports": """
        check([
            lambda: tvtypes.check("{examples}/vehicle.ssd"),
            lambda: tvtypes.inspect("{examples}/vehicle.xml"),
            lambda: tvtypes.inspect("{examples}/motor_drive.xml"),
        ])
    """,
    "fixed_point": """
        check([
            lambda: tvtypes.FixedPoint("sfix16_En12").constructor(),
            lambda: tvtypes.FixedPoint("ufix8_Sp375_B1").quantize(range(5000)).tolist(),
        ])
    """,
}


@pytest.mark.parametrize("part", PARTS)
def test_threads(part, examples):
    lines = [line[8:] for line in PARTS[part].format(examples=examples).splitlines()]
    program = START + "\n".join(lines)
    subprocess.run([sys.executable, "-c", program], check=True, timeout=120)
