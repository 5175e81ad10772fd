"""Uses the installed Python package; its folder is the argument."""

import sys

import tzparser

assert tzparser.__file__.startswith(sys.argv[1]), tzparser.__file__
rule = {"keywords": {"keyword": ["up $int:days days"]}}
parser = tzparser.Parser({"samples": [{"parserRules": {"parserule": rule}}]})
assert parser.parse("up 12 days").days.value == 12
print("the installed package parses")
