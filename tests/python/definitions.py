"""What the tests of the Python package share: small definitions and texts."""


def rules(*rule):
    """A definition of one sample with these rules."""
    return {"samples": [{"index": 1, "parserRules": {"parserule": list(rule)}}]}


def keywords(*statements):
    """A keyword rule with these statements."""
    return {"keywords": {"keyword": list(statements)}}


def table(name, headers, variables):
    """A table rule; headers and their variables are separated by ";"."""
    pairs = zip(headers.split(";"), variables.split(";"))
    columns = ";".join(f"{header}:{variable}" for header, variable in pairs)
    return {"type": 3, "name": name, "headers": headers, "headertovariables": columns}


def script(body, *variables):
    """A script rule whose ParseText has the body; variables are given as (name, type)."""
    lines = "".join(f"    {line}\n" for line in body.splitlines())
    types = [{"name": "$" + name, "type": kind} for name, kind in variables]
    return {
        "type": 8,
        "script": f"def ParseText(text):\n{lines}",
        "variabletypes": {"variabletype": types},
    }


PING = rules(
    keywords(
        "Success rate is $int:success percent ($int:received/$int:sent)",
        "min/avg/max = $double:min/$double:avg/$double:max ms",
        "ICMP Echos to $target,",
    )
)
PING_TEXT = (
    "Sending 5, 100-byte ICMP Echos to 192.0.2.7, timeout is 2 seconds:\n!!!!.\n"
    "Success rate is 80 percent (4/5), round-trip min/avg/max = 1/2/4 ms\n"
)
ARP = rules(table("arp", "Address;MAC;Age", "$address;$mac;$int:age"))
ARP_TEXT = (
    "Address         MAC             Age\n"
    "192.0.2.1       0000.5e00.5301  17\n"
    "192.0.2.2       0000.5e00.5302  -\n"
    "198.51.100.9    incomplete\n"
)
TYPED = rules(
    script(
        "import pyapplib\n"
        "return {'ip': pyapplib.PyIP('192.0.2.7/24'), 'mac': pyapplib.PyMac('0000.5e00.5301'),\n"
        "        'load': '12.5%', 'v6': '2001:db8::1/64'}",
        ("ip", "ip"),
        ("mac", "mac"),
        ("load", "percent"),
        ("v6", "ipv6"),
    )
)
FAILING = rules(script("raise ValueError('no ' + text[:3])", ("a", "int")))
