"""ezdxf on the same kind of file as bench_dxf: 120,000 entities, read and written. Prints milliseconds.

    /usr/bin/python3 benchmarks/bench_dxf_peer.py
"""

import tempfile
import time
from pathlib import Path

import ezdxf

ENTITIES = 120_000


def plan():
    document = ezdxf.new("R2000")
    space = document.modelspace()
    for i in range(ENTITIES):
        x, y = (i % 400) * 1.37, (i // 400) * 0.93
        if i % 8 == 0:
            space.add_circle((x, y), 0.37)
        elif i % 8 == 1:
            space.add_text(f"R-{i}", dxfattribs={"insert": (x, y), "height": 0.25})
        else:
            space.add_line((x, y), (x + 1.21, y + 0.77 * (i % 3)))
    return document


with tempfile.TemporaryDirectory() as folder:
    path = Path(folder) / "plan.dxf"
    document = plan()
    start = time.perf_counter()
    document.saveas(path)
    written = time.perf_counter()
    ezdxf.readfile(path)
    read = time.perf_counter()
    print(f"ezdxf writes {1000 * (written - start):8.0f} ms")
    print(f"ezdxf reads  {1000 * (read - written):8.0f} ms")
