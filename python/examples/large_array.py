"""Converts an array that is larger than the memory, and shows a progress bar.

usage: large_array.py [GIGABYTES [ADDRESS]]

The array has 20 GB of doubles, which are generated block by block. Without ADDRESS, two threads of
this process convert them, whose memory is limited to 1 GiB; else the cluster whose scheduler has this
address.
"""

import resource
import sys

import dask.array as da
import numpy as np
import tvtypes.dask

BLOCK = 2**22  # elements: 32 MiB


def generated(block_info=None):
    """Returns the values of a block: waves that grow beyond the range of int16."""
    ((start, stop),) = block_info[None]["array-location"]
    angle = np.arange(start, stop) * 1e-3
    return 40_000 * np.sin(angle, out=angle)


def main():
    gigabytes = float(sys.argv[1]) if len(sys.argv) > 1 else 20
    elements = int(gigabytes * 1e9) // 8
    blocks = da.core.normalize_chunks(BLOCK, (elements,))
    array = da.map_blocks(generated, chunks=blocks, dtype=float, meta=np.empty(0))

    converted, losses = tvtypes.dask.convert(array, "int16", rounding="round", report=True)
    # The result is reduced; converted.to_zarr() or da.store() would write it, block by block, too.
    least, greatest = converted.min(), converted.max()
    results = da.compute if len(sys.argv) > 2 else compute_here
    if len(sys.argv) > 2:
        from distributed import Client

        Client(sys.argv[2])
    least, greatest, losses = results(least, greatest, losses)

    print(f"{gigabytes:g} GB to int16, from {least} to {greatest}")
    print(losses)
    peak = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
    print(f"at most {peak:.0f} MiB of memory", file=sys.stderr)


def compute_here(*collections):
    """Computes by two threads in 1 GiB, and shows a progress bar on standard error."""
    from dask.diagnostics import ProgressBar

    limit = 2**30
    resource.setrlimit(resource.RLIMIT_DATA, (limit, limit))
    with ProgressBar(out=sys.stderr):
        return da.compute(*collections, scheduler="threads", num_workers=2)


if __name__ == "__main__":
    main()
