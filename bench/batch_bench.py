#!/usr/bin/python3
"""Batch runs end to end: many tools in one drawing, and many drawings side by side.

usage: bench/batch_bench.py PROGRAM [TOOLS [DRAWINGS]]

Draws TOOLS (1000) framed tools of 200 entities into one drawing, and DRAWINGS (100) drawings of ten
such tools, in a temporary folder, and prints for each run of the program: seconds, milliseconds per
tool, and the peak memory of the largest process.
"""

import os
import pathlib
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "qzenvelope"))
from framed_tools import Sheet  # noqa: E402

ENTITIES, TOOLS_OF_A_DRAWING = 200, 10


def draw(path, prefix, tools, seed):
    sheet = Sheet(seed)
    for i in range(tools):
        sheet.add(f"{prefix}{i:04}", ENTITIES)
    sheet.save(path)


def run(program, title, tools, arguments):
    out = os.open(os.devnull, os.O_WRONLY)
    start = time.monotonic()
    process = os.posix_spawn(program, [program, "batch", *map(str, arguments)], os.environ,
                             file_actions=[(os.POSIX_SPAWN_DUP2, out, 1),
                                           (os.POSIX_SPAWN_DUP2, out, 2)])
    _, status, usage = os.wait4(process, 0)
    seconds = time.monotonic() - start
    os.close(out)
    print(f"{title:44} {seconds:8.2f} s {1000 * seconds / tools:8.2f} ms/tool "
          f"{usage.ru_maxrss / 1024:8.0f} MB  status {os.waitstatus_to_exitcode(status)}",
          flush=True)


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    tools = int(sys.argv[2]) if len(sys.argv) > 2 else 1000
    drawings = int(sys.argv[3]) if len(sys.argv) > 3 else 100
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        draw(folder / "many.dxf", "T", tools, 1)
        many = [folder / "many.dxf", "--out", folder / "out"]
        title = f"{tools} tools of {ENTITIES} entities"
        run(program, title, tools, many)
        run(program, title + ", with report", tools,
            [*many, "--report", folder / "out" / "index.html"])
        paths = []
        for i in range(drawings):
            paths.append(folder / f"d{i:03}.dxf")
            draw(paths[-1], f"D{i:03}-", TOOLS_OF_A_DRAWING, i)
        for jobs in (1, 2):
            run(program, f"{drawings} drawings of {TOOLS_OF_A_DRAWING} tools, --jobs {jobs}",
                drawings * TOOLS_OF_A_DRAWING,
                [*paths, "--out", folder / f"jobs{jobs}", "--jobs", jobs])


if __name__ == "__main__":
    main()
