"""The classes of values, from the module that the library adds to the interpreter."""

from tzparser import _tzparser  # noqa: F401  (makes "pyapplib" importable)

from pyapplib import PyIP, PyIPv6, PyMac, PyPercent  # isort: skip

__all__ = ["PyIP", "PyIPv6", "PyMac", "PyPercent"]
