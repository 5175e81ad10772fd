"""Fragments of configurations, for scripts."""

import functools

__all__ = ["PyConfigLet"]

_init = PyConfigLet.__init__


def _init_of_text(self, text=""):
    if isinstance(text, PyConfigLet):
        text = text.GetStrValue()
    if not isinstance(text, (str, bytes)):
        raise TypeError("a PyConfigLet is made of str or bytes, not of %s" % type(text).__name__)
    _init(self, text)


def _compare(self, other, method):
    if not isinstance(other, PyConfigLet):
        return NotImplemented
    return method(self.GetStrValue(), other.GetStrValue())


PyConfigLet.__doc__ = """A fragment of a configuration.

PyConfigLet('interface Gi0/1\\n shutdown\\n'), of bytes, of another PyConfigLet, or empty. Its length is
that of its text, iteration gives its lines without their ends, and "in" looks in the text.
"""
PyConfigLet.__init__ = _init_of_text
PyConfigLet.__str__ = lambda self: self.GetStrValue()
PyConfigLet.__repr__ = lambda self: "PyConfigLet(%r)" % self.GetStrValue()
PyConfigLet.__format__ = lambda self, form: format(self.GetStrValue(), form)
PyConfigLet.__eq__ = lambda self, other: _compare(self, other, str.__eq__)
PyConfigLet.__lt__ = lambda self, other: _compare(self, other, str.__lt__)
PyConfigLet.__hash__ = lambda self: hash((PyConfigLet, self.GetStrValue()))
PyConfigLet.__len__ = lambda self: len(self.GetStrValue())
PyConfigLet.__iter__ = lambda self: iter(self.lines)
PyConfigLet.__contains__ = lambda self, text: text in self.GetStrValue()
PyConfigLet.__reduce__ = lambda self: (PyConfigLet, (self.GetStrValue(),))
PyConfigLet.text = property(lambda self: self.GetStrValue(), doc="The text.")
PyConfigLet.lines = property(lambda self: self.GetStrValue().splitlines(),
                             doc="The lines without their ends.")
functools.total_ordering(PyConfigLet)
