"""Values that device texts hold, for scripts.

PyIP is an IPv4 address with a mask, PyMac a hardware address, PyIPv6 an IPv6 address with a prefix
length, PyPercent a percentage. PyIP and PyMac never raise for a text: what can't be read is an
invalid value, which is false. PyIPv6 and PyPercent raise ValueError.
"""

import functools
import ipaddress
import math
import re

__all__ = ["GetPythonObject", "PyIP", "PyIPv6", "PyMac", "PyPercent"]


def GetPythonObject(code):
    """Makes an object without a value: 3 a PyIP, 4 a PyMac."""
    if code == 3:
        return PyIP()
    if code == 4:
        return PyMac()
    raise ValueError("no type has the code %r" % (code,))


def _methods_of(target):
    """Copies the methods and properties of a class, and its docstring, into the target."""

    def copy(source):
        for name, value in vars(source).items():
            if name not in ("__module__", "__dict__", "__weakref__", "__qualname__", "__firstlineno__",
                            "__static_attributes__"):
                setattr(target, name, value)
        return target

    return copy


def _ipv4_pair(value):
    """Address and mask of a PyIP or ipaddress.IPv4Interface as numbers; None for anything else."""
    if isinstance(value, PyIP):
        return value._address, value._mask
    if isinstance(value, ipaddress.IPv4Interface):
        return int(value.ip), int(value.netmask)
    return None


def _compare_ip(method):
    """A comparison by the pairs of address and mask; only what has such a pair can be compared."""

    def compare(self, other):
        pair = _ipv4_pair(other)
        if pair is None:
            return NotImplemented
        return method((self._address, self._mask), pair)

    return compare


def _route_order(pair):
    address, mask = pair
    return address & mask, mask, address


# What pickles name; functions of the C++ part can't be pickled.
def _ip_of(address, mask):
    return _make_ip(address, mask)


def _mac_of(number):
    return _make_mac(number)


def _refuse(name, args):
    raise TypeError("no %s can be made of (%s)" % (name, ", ".join(type(a).__name__ for a in args)))


_init_ip = PyIP.__init__
_init_mac = PyMac.__init__


@functools.total_ordering
@_methods_of(PyIP)
class _IP:
    """An IPv4 address with the mask of its network.

    PyIP('192.0.2.7/24'), PyIP('192.0.2.7', '255.255.255.0'), PyIP('192.0.2.7', 24), PyIP(0xc0000207),
    PyIP() or a PyIP of any address, interface or network of the module ipaddress. It compares with, hashes
    like and has the properties of ipaddress.IPv4Interface, and orders as routes do: by network, then by address.
    As a number it is the address. Formats: '' the text, 'a' the address, 'm' with the mask; 'b', 'x'
    and 'X' take the number; any other is that of a text.
    """

    def __init__(self, *args):
        if len(args) == 1 and isinstance(args[0], (int, ipaddress.IPv4Address, ipaddress.IPv4Network)):
            value = args[0] if not isinstance(args[0], int) else ipaddress.IPv4Address(args[0])
            args = (str(value),)
        elif len(args) == 2 and isinstance(args[1], int):
            args = (args[0], str(args[1]))
        if len(args) > 2 or not all(isinstance(a, (str, PyIP)) for a in args):
            _refuse("PyIP", args)
        _init_ip(self, *args)

    def __str__(self):
        return self.IPMaskLen()

    def __repr__(self):
        return "PyIP('%s')" % self.IPMaskLen()

    def __format__(self, form):
        if form == "a":
            return self.GetIPAddress()
        if form == "m":
            return self.IpMask()
        if form[-1:] in ("b", "x", "X"):
            return format(self._address, form)
        return format(str(self), form)

    def __bool__(self):
        return self.IsValid()

    def __int__(self):
        return self._address

    __index__ = __int__

    __eq__ = _compare_ip(lambda mine, other: mine == other)
    __lt__ = _compare_ip(lambda mine, other: _route_order(mine) < _route_order(other))

    def __hash__(self):
        # As ipaddress.IPv4Interface does, since the two can be equal.
        return hash((self._address, self.GetMaskLen(), self._address & self._mask))

    def __reduce__(self):
        return _ip_of, (self._address, self._mask)

    version = property(lambda self: 4, doc="4.")
    is_valid = property(lambda self: self.IsValid(), doc="Whether there is an address.")
    ip = property(lambda self: ipaddress.IPv4Address(self._address),
                  doc="The address, as ipaddress.IPv4Address.")
    netmask = property(lambda self: ipaddress.IPv4Address(self._mask),
                       doc="The mask, as ipaddress.IPv4Address.")
    hostmask = property(lambda self: ipaddress.IPv4Address(self._mask ^ 0xffffffff),
                        doc="The inverse of the mask, as ipaddress.IPv4Address.")
    prefixlen = property(lambda self: self.GetMaskLen(), doc="The number of set bits of the mask.")
    packed = property(lambda self: self._address.to_bytes(4, "big"), doc="The address as four bytes.")
    with_prefixlen = property(lambda self: self.IPMaskLen(), doc="'192.0.2.7/24'.")
    with_netmask = property(lambda self: self.GetIPAddress() + "/" + self.Mask(),
                            doc="'192.0.2.7/255.255.255.0'.")

    @property
    def interface(self):
        """The same as ipaddress.IPv4Interface; raises ValueError when the mask has gaps."""
        return ipaddress.IPv4Interface(self.with_netmask)

    @property
    def network(self):
        """The network as ipaddress.IPv4Network; raises ValueError when the mask has gaps."""
        return self.interface.network


@functools.total_ordering
@_methods_of(PyMac)
class _Mac:
    """A hardware address.

    PyMac('00:00:5e:00:53:01') in any usual notation, PyMac(0x5e005301), PyMac() or a PyMac. As a
    number it is its bits. Formats: ':', '-' and '.' for the notations, any other is that of a text.
    """

    def __init__(self, *args):
        if len(args) == 1 and isinstance(args[0], int):
            if not 0 <= args[0] < 1 << 64:
                raise ValueError("%r is no MAC address" % (args[0],))
            args = (_make_mac(args[0]),)
        elif len(args) > 1 or not all(isinstance(a, (str, PyMac)) for a in args):
            _refuse("PyMac", args)
        _init_mac(self, *args)

    def __str__(self):
        return self.MacStr()

    def __repr__(self):
        if self._number >> 48:  # texts of 64 bits aren't read
            return "PyMac(0x%016x)" % self._number
        return "PyMac('%s')" % self.MacStr()

    def __format__(self, form):
        forms = {":": self.colon, "-": self.dash, ".": self.dotted}
        return forms[form] if form in forms else format(str(self), form)

    def __bool__(self):
        return self.IsValid()

    def __int__(self):
        return self._number

    __index__ = __int__

    def __eq__(self, other):
        return self._number == other._number if isinstance(other, PyMac) else NotImplemented

    def __lt__(self, other):
        return self._number < other._number if isinstance(other, PyMac) else NotImplemented

    def __hash__(self):
        return hash((PyMac, self._number))

    def __reduce__(self):
        return _mac_of, (self._number,)

    is_valid = property(lambda self: self.IsValid(), doc="Whether there is an address.")
    bare = property(lambda self: self._form(1), doc="'00005e005301'.")
    dash = property(lambda self: self._form(2), doc="'00-00-5e-00-53-01'.")
    colon = property(lambda self: self._form(3), doc="'00:00:5e:00:53:01'.")
    dotted = property(lambda self: self._form(4), doc="'0000.5e00.5301'.")
    packed = property(lambda self: bytes.fromhex(self.bare), doc="The bytes.")
    oui = property(lambda self: self.bare[:6], doc="The maker's part, '00005e'.")


class PyIPv6(ipaddress.IPv6Interface):
    """An IPv6 address with a prefix length, 128 without one; an ipaddress.IPv6Interface."""

    def __repr__(self):
        return "PyIPv6('%s')" % self

    def __reduce__(self):
        return type(self), (str(self),)


class PyPercent(float):
    """A percentage: PyPercent('12.5%') and PyPercent(12.5) are the number 12.5.

    str() gives the text it was made of, and the type "%" of format() doesn't multiply:
    format(PyPercent('12.5%'), '.1%') is '12.5%'.
    """

    _form = re.compile(r"[+-]?[0-9]+(?:\.[0-9]+)?(?:[eE][+-]?[0-9]+)?%")

    def __new__(cls, value=0.0):
        text = None
        if isinstance(value, str):
            text = value.strip()
            if not cls._form.fullmatch(text):
                raise ValueError("%r is no percentage" % (value,))
            value = text[:-1]
        self = super().__new__(cls, value)
        if not math.isfinite(self):
            raise ValueError("%r is no percentage" % (value,))
        self._text = text if text is not None else float.__repr__(self) + "%"
        return self

    fraction = property(lambda self: float(self) / 100, doc="0.125 for 12.5%.")

    def __str__(self):
        return self._text

    def __repr__(self):
        return "PyPercent('%s')" % self._text

    def __format__(self, form):
        if form[-1:] == "%":
            return format(float(self), form[:-1] + "f") + "%"
        return format(float(self), form) if form else str(self)

    def __reduce__(self):
        return type(self), (self._text,)
