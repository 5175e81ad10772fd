"""Loads the library given into this Python, whose interpreter it then has to use.

usage: hosted.py LIBRARY
"""
import ctypes
import sys
import threading

library = ctypes.PyDLL(sys.argv[1])
join = getattr(library, "_Z14pythonlib_joinv")  # bool pythonlib_join()
join.restype = ctypes.c_bool

results = []
threads = [threading.Thread(target=lambda: results.append(join())) for _ in range(8)]
for thread in threads:
    thread.start()
for thread in threads:
    thread.join()
assert results == [True] * 8, results

import pyapplib  # noqa: E402
import pyconfiglet  # noqa: E402

assert repr(pyapplib.PyIP("192.0.2.7/24")) == "PyIP('192.0.2.7/24')"
assert pyapplib.PyIP("192.0.2.7/24").ip in pyapplib.PyIP("192.0.2.0/24").network
assert str(pyconfiglet.PyConfigLet("a")) == "a"
