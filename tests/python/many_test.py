"""Many texts: threads, errors, interruption, other processes."""

import concurrent.futures
import multiprocessing
import signal
import threading
import time

import pytest

import tzparser
from definitions import PING, PING_TEXT, keywords, rules, script


def numbered(count):
    return [f"number {i} .\n".encode() for i in range(count)]


@pytest.fixture
def numbers():
    return tzparser.Parser(rules(keywords("number $int:n .")))


@pytest.mark.parametrize("threads", [1, 2, 3, 50, None])
def test_results_are_in_order(numbers, threads):
    results = numbers.parse_many(iter(numbered(500)), threads)
    assert [result.n.value for result in results] == list(range(500))
    assert numbers.parse_many([], threads) == []


def test_script_rules_run_on_all_threads():
    parser = tzparser.Parser(rules(script("return {'n': len(text)}", ("n", "int"))))
    texts = ["x" * (i % 17) for i in range(300)]
    results = parser.parse_many(texts, 4)
    assert [result.n.value for result in results] == [len(text) for text in texts]


def test_errors_stand_in_their_places():
    parser = tzparser.Parser(rules(script("return {'n': 6 // len(text)}", ("n", "int"))))
    texts = ["a", "", "\ud800", "bb"]
    good, failed, odd, last = parser.parse_many(texts, 2)
    assert (good.n.value, last.n.value) == (6, 3)
    assert (failed.index, odd.index) == (1, 2)
    assert "ZeroDivisionError" in str(failed)
    assert str(odd).startswith("text 2: the text can't be encoded")
    with pytest.raises(tzparser.ParseError, match="ZeroDivisionError") as caught:
        parser.parse_many(texts, errors="raise")
    assert caught.value.index == 1


def test_wrong_arguments_raise(numbers):
    with pytest.raises(ValueError, match="threads"):
        numbers.parse_many([], 0)
    with pytest.raises(ValueError, match="errors"):
        numbers.parse_many([], errors="ignore")
    with pytest.raises(TypeError, match="a text is str or bytes"):
        numbers.parse_many([b"", 5])


@pytest.mark.parametrize("threads", [1, 2])
def test_other_threads_run_meanwhile(numbers, threads):
    """A thread that only counts gets on while the library works through a long list."""
    texts = [b"nothing here\n" * 20_000] * 500
    count, done = 0, threading.Event()

    def work():
        nonlocal count
        while not done.is_set():
            count += 1

    worker = threading.Thread(target=work)
    worker.start()
    before = count
    numbers._native.parse_many(texts, threads)
    during = count - before
    done.set()
    worker.join()
    assert during > 10_000


@pytest.mark.parametrize("threads", [1, 2])
def test_signal_interrupts(numbers, threads):
    class Rang(Exception):
        pass

    def ring(*_):
        raise Rang

    texts = [b"nothing here\n" * 5_000] * 20_000
    previous = signal.signal(signal.SIGALRM, ring)
    signal.setitimer(signal.ITIMER_REAL, 0.2)
    begin = time.monotonic()
    try:
        with pytest.raises(Rang):
            numbers.parse_many(texts, threads)
    finally:
        signal.signal(signal.SIGALRM, previous)
    assert time.monotonic() - begin < 10


def test_one_parser_serves_python_threads(ping):
    with concurrent.futures.ThreadPoolExecutor(4) as pool:
        results = list(pool.map(ping.parse, [PING_TEXT] * 200))
    assert {result.sent.value for result in results} == {5}


@pytest.mark.parametrize("method", ["fork", "spawn"])
def test_processes_exchange_parsers_and_results(ping, method):
    ping.parse_many([PING_TEXT] * 4, 2)
    with multiprocessing.get_context(method).Pool(2) as pool:
        results = pool.map(ping.parse, [PING_TEXT] * 6)
        (error,) = pool.map(
            _error_of, [tzparser.Parser(rules(script("return 1 / 0", ("a", "int"))))]
        )
    assert results == [ping.parse(PING_TEXT)] * 6
    assert "ZeroDivisionError" in error.message


def _error_of(parser):
    (error,) = parser.parse_many([""])
    return error


def test_equal_definitions_are_loaded_once():
    assert tzparser.Parser(PING)._native is tzparser.Parser(dict(PING))._native
