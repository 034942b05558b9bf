"""Lisp beside CPython: the same tasks, each in its own program, timed inside. Prints milliseconds (the best of
three runs) and the ratio; below 1 Lisp is the faster one.

    python3 benchmarks/bench_lisp.py build/release/veldrin
"""

import pathlib
import subprocess
import sys
import time

RUNS = 3


def fib(n):
    return n if n < 2 else fib(n - 1) + fib(n - 2)


def count_up(n):
    i = 0
    while i < n:
        i += 1
    return i


def build_and_reverse(n):
    numbers = []
    for i in range(n):
        numbers.append(i)
    for _ in range(10):
        numbers = list(reversed(numbers))
    return len(numbers)


def random_numbers(n):
    seed, numbers = 12345, []
    for _ in range(n):
        seed = (seed * 1103 + 12345) % 1000003
        numbers.append(seed / 7.0)
    numbers.reverse()
    return numbers


def build_text(n):
    text = ""
    for _ in range(n):
        text = text + "pipe "
    return len(text)


def assoc(key, pairs):
    for pair in pairs:
        if pair[0] == key:
            return pair
    return None


def look_up_all(pairs, rounds):
    total = 0
    for _ in range(rounds):
        for pair in pairs:
            total += len(assoc(pair[0], pairs)[1])
    return total


class Line:
    """A drawing's line: it gives and takes groups, and keeps what it was for undo, as the host does."""

    undo = []

    def __init__(self, y):
        self.layer, self.start, self.end = "0", (0.0, y, 0.0), (10.0, y, 0.0)

    def get(self):
        return [(0, "LINE"), (5, "1F"), (100, "AcDbEntity"), (8, self.layer), (100, "AcDbLine"),
                (10, *self.start), (11, *self.end), (210, 0.0, 0.0, 1.0)]

    def modify(self, data):
        Line.undo.append((self, self.layer, self.start, self.end))
        for code, *value in data:
            if code == 8:
                self.layer = value[0]
            elif code == 10:
                self.start = tuple(float(x) for x in value)
            elif code == 11:
                self.end = tuple(float(x) for x in value)


def lengthen(lines):
    for line in lines:
        data = line.get()
        old = assoc(11, data)
        new = (11, 20.0, old[2], 0.0)
        line.modify([new if group == old else group for group in data])
    return len(lines)


def measure(task):
    best = float("inf")
    for _ in range(RUNS):
        start = time.perf_counter()
        task()
        best = min(best, time.perf_counter() - start)
    return best * 1000.0


def python_times():
    numbers = random_numbers(100000)
    pairs = [(n, str(n)) for n in range(1, 1001)]
    lines = [Line(float(n)) for n in range(10000)]
    return {
        "fib": measure(lambda: fib(27)),
        "loop": measure(lambda: count_up(10000000)),
        "lists": measure(lambda: build_and_reverse(500000)),
        "sort": measure(lambda: [sorted(numbers) for _ in range(5)]),
        "texts": measure(lambda: build_text(1000000)),
        "assoc": measure(lambda: look_up_all(pairs, 20)),
        "entities": measure(lambda: lengthen(lines)),
    }


def lisp_times(program):
    script = pathlib.Path(__file__).with_name("lisp_tasks.lsp")
    output = subprocess.run([program, "run", "--bare", script], check=True, capture_output=True, text=True).stdout
    return {name: float(spent) for name, spent in (line.split() for line in output.splitlines() if line.strip())}


def main():
    lisp, python = lisp_times(sys.argv[1]), python_times()
    print(f"{'task':10}{'Lisp ms':>10}{'CPython ms':>12}{'ratio':>8}   CPython {sys.version.split()[0]}")
    for name, spent in lisp.items():
        print(f"{name:10}{spent:10.0f}{python[name]:12.0f}{spent / python[name]:8.2f}")


if __name__ == "__main__":
    main()
