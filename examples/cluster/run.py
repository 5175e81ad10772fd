#!/usr/bin/python3
"""Parses a folder of outputs on many processes or machines, by Dask.

    run.py DEFINITION FOLDER [--workers N] [--out FILE]

By itself it starts a scheduler and N workers on the loopback interface and ends them again; with
--scheduler ADDRESS it uses a cluster that runs, on whose machines the package tzparser is installed.
The output is a line of JSON for each file, in the order of their names: {"file": ..., "values": ...}
or {"file": ..., "error": ...}. The exit status is 0 when all texts were parsed, 1 when some failed,
2 when nothing could be done.
"""

from __future__ import annotations

import argparse
import contextlib
import logging
import os
import sys
import tempfile
import time
from collections.abc import Iterator
from pathlib import Path
from typing import IO, Any

import dask.config
import tzparser
from distributed import Client, Future, LocalCluster, as_completed

from batchwork import Line, Named, failed_line, parse_batch


BATCH_BYTES = 1 << 20  # a batch ends with the text that reaches it
BATCHES_A_WORKER = 16  # on their way at once: it takes some milliseconds to hand out the next


def read_text(path: Path) -> bytes | str:
    try:
        return path.read_bytes()
    except OSError as error:
        return f"cannot read the file: {error.strerror}"


def batches_of(folder: Path, names: list[str], size: int) -> Iterator[Named]:
    """The files with their texts, so many at a time, fewer of large ones; read when it's their turn."""
    batch: Named = []
    room = BATCH_BYTES
    for name in names:
        text = read_text(folder / name)
        batch.append((name, text))
        room -= len(text)
        if len(batch) == size or room <= 0:
            yield batch
            batch, room = [], BATCH_BYTES
    if batch:
        yield batch


class Progress:
    """A bar on standard error while work goes on, when that is a terminal, and one line at the end."""

    def __init__(self, total: int) -> None:
        self._total = total
        self._done = 0
        self._errors = 0
        self._begin = time.monotonic()
        self._drawn = 0.0

    def add(self, lines: list[Line]) -> None:
        self._done += len(lines)
        self._errors += sum(line.error is not None for line in lines)
        if sys.stderr.isatty() and time.monotonic() - self._drawn > 0.1:
            self._drawn = time.monotonic()
            full = 30 * self._done // max(self._total, 1)
            print(f"\r[{'#' * full:<30}] {self._words()}", end="", file=sys.stderr, flush=True)

    def end(self) -> None:
        print(f"\r{self._words():<78}" if self._drawn else self._words(), file=sys.stderr)

    def _words(self) -> str:
        rate = self._done / max(time.monotonic() - self._begin, 1e-9)
        return f"{self._done}/{self._total} texts, {self._errors} failed, {rate:,.0f} texts/s"


class Run:
    """The way of all batches through a cluster; memory is needed for a few batches a worker only.

    Batches are finished in any order and written in that of their numbers, so at most `window` of
    them are on their way or waiting to be written.
    """

    def __init__(self, client: Client, parser: tzparser.Parser, batches: Iterator[Named]) -> None:
        self._client = client
        client.upload_file(str(Path(__file__).with_name("batchwork.py")))
        self._parser = parser  # goes with each task, and is loaded once a worker
        self._batches = enumerate(batches)
        self._window = BATCHES_A_WORKER * max(1, sum(client.nthreads().values()))
        self._running: dict[Future, tuple[int, Named]] = {}
        self._suspects: dict[int, Named] = {}  # batches over which a worker died
        self._finished: dict[int, list[Line]] = {}
        self._next = 0  # the number of the first batch that isn't written

    def lines(self) -> Iterator[list[Line]]:
        """The lines of each batch, in the order of the batches."""
        completed = as_completed()
        self._submit_some(completed)
        while self._running or self._suspects:
            if self._running:
                self._take(next(completed))
            else:
                self._try_suspect()
            while self._next in self._finished:
                yield self._finished.pop(self._next)
                self._next += 1
            self._submit_some(completed)

    def _submit_some(self, completed: as_completed) -> None:
        while len(self._running) + len(self._suspects) + len(self._finished) < self._window:
            number, batch = next(self._batches, (0, None))
            if batch is None:
                return
            future = self._submit(batch)
            self._running[future] = number, batch
            completed.add(future)

    def _submit(self, batch: Named) -> Future:
        return self._client.submit(parse_batch, self._parser, batch, pure=False)

    def _take(self, future: Future) -> None:
        number, batch = self._running.pop(future)
        if future.status == "finished":
            self._finished[number] = future.result()
        else:
            self._suspects[number] = batch

    def _try_suspect(self) -> None:
        """Tries the first suspect again with nothing beside it, so that no other batch suffers."""
        number = min(self._suspects)
        batch = self._suspects.pop(number)
        future = self._submit(batch)
        try:
            self._finished[number] = future.result()
        except Exception as error:  # whatever it is, it is about these texts
            reason = f"the batch failed: {error!r}"
            self._finished[number] = [failed_line(name, reason) for name, _ in batch]


@contextlib.contextmanager
def cluster_client(scheduler: str | None, workers: int) -> Iterator[Client]:
    """A client of the cluster at the address, or of one of our own with so many processes."""
    if scheduler is not None:
        with Client(scheduler) as client:
            yield client
        return
    dask.config.set({"distributed.scheduler.allowed-failures": 1})
    with tempfile.TemporaryDirectory() as scratch, LocalCluster(
        n_workers=workers,
        threads_per_worker=1,
        processes=True,
        host="127.0.0.1",
        dashboard_address=None,
        memory_limit=0,
        local_directory=scratch,
        silence_logs=logging.ERROR,
    ) as cluster, Client(cluster) as client:
        yield client


def files_of(folder: Path) -> list[str]:
    """The files anywhere below the folder, by their paths in it."""
    if not folder.is_dir():
        raise OSError(f"{folder} is no folder")
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_file())


def parse_folder(arguments: argparse.Namespace, out: IO[str]) -> list[Line]:
    """Parses all and writes the lines; gives back those that failed."""
    parser = tzparser.Parser(arguments.definition, script_time_limit=arguments.script_limit)
    names = files_of(arguments.folder)
    failed: list[Line] = []
    with cluster_client(arguments.scheduler, arguments.workers) as client:
        progress = Progress(len(names))
        batches = batches_of(arguments.folder, names, arguments.batch)
        for lines in Run(client, parser, batches).lines():
            out.writelines(line.json + "\n" for line in lines)
            failed += [line for line in lines if line.error is not None]
            progress.add(lines)
        progress.end()
    return failed


def show_failures(failed: list[Line], most: int = 20) -> None:
    """The first of them on standard error; the output has all."""
    for line in failed[:most]:
        print(f"{line.name}: {line.error}", file=sys.stderr)
    if len(failed) > most:
        print(f"... and {len(failed) - most} more", file=sys.stderr)


def positive(text: str) -> int:
    number = int(text)
    if number < 1:
        raise ValueError
    return number


def read_arguments() -> argparse.Namespace:
    words: Any = argparse.ArgumentParser(description="Parses a folder of outputs on many processes.")
    words.add_argument("definition", type=Path, metavar="DEFINITION", help="the parser definition")
    words.add_argument("folder", type=Path, metavar="FOLDER", help="the outputs, a file each")
    words.add_argument("--workers", type=positive, default=os.cpu_count(), help="processes to start")
    words.add_argument("--out", type=Path, metavar="FILE", help="for the lines; else standard output")
    words.add_argument("--batch", type=positive, default=256, help="texts a task (256)")
    words.add_argument("--scheduler", metavar="ADDRESS", help="of a cluster that runs already")
    words.add_argument("--script-limit", type=float, metavar="SECONDS", help="for each script rule")
    arguments: argparse.Namespace = words.parse_args()
    return arguments


def main() -> int:
    arguments = read_arguments()
    try:
        with contextlib.ExitStack() as stack:
            out = sys.stdout
            if arguments.out is not None:
                out = stack.enter_context(arguments.out.open("w", encoding="utf-8"))
            failed = parse_folder(arguments, out)
    except (OSError, tzparser.Error) as error:
        print(f"run.py: {error}", file=sys.stderr)
        return 2
    show_failures(failed)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
