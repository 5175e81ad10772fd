#!/usr/bin/python3
"""Measures the Python package over the example whose text has the median size, 1 KB.

    ./dev python bench/pythonbench.py [TEXTS]

Prints microseconds a text, the best of five runs, and the ratio to a plain loop over Parser.parse.
"""

import multiprocessing
import pathlib
import sys
import time
from collections.abc import Callable

import tzparser

EXAMPLE = pathlib.Path(__file__).parents[1] / "examples" / "cisco_nxos_show_version"
PARSER = tzparser.Parser(EXAMPLE / "definition.json")
TEXT = (EXAMPLE / "input.txt").read_bytes()


def best_seconds(work: Callable[[], object]) -> float:
    times = []
    for _ in range(5):
        begin = time.perf_counter()
        work()
        times.append(time.perf_counter() - begin)
    return min(times)


def values_of(text: bytes) -> dict[str, object]:
    return PARSER.parse(text).to_dict()


def main() -> None:
    count = int(sys.argv[1]) if len(sys.argv) > 1 else 5000
    texts = [TEXT] * count
    results = PARSER.parse_many(texts[:100], 1)
    with multiprocessing.Pool(2) as pool:
        pool.map(values_of, texts[:100])
        rows = {
            "loop over parse": lambda: [PARSER.parse(text) for text in texts],
            "parse_many, 1 thread": lambda: PARSER.parse_many(texts, 1),
            "parse_many, 2 threads": lambda: PARSER.parse_many(texts, 2),
            "loop over parse, to_dict": lambda: [values_of(text) for text in texts],
            "2 processes, to_dict": lambda: pool.map(values_of, texts, 100),
        }
        seconds = {name: best_seconds(work) for name, work in rows.items()}
    seconds["to_dict alone"] = best_seconds(lambda: [r.to_dict() for r in results]) * count / 100
    loop = seconds["loop over parse"]
    print(f"{len(TEXT)} bytes, {len(TEXT.splitlines())} lines, {len(results[0])} variables")
    for name, value in seconds.items():
        print(f"| {name:<26} | {value / count * 1e6:6.1f} | {loop / value:5.2f} |")


if __name__ == "__main__":
    main()
