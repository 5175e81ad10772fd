"""Runs the golden cases with their definitions turned into XML and back.

    throughxml.py TZPARSE

A case whose definition the XML form can hold must give the same results as it does itself. Which
ones these are is what `convert` says: 0 for nothing lost. The others are listed with its reason.
"""

import importlib.machinery
import importlib.util
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent.parent
# So many of the cases at least have to go all the way, or the command loses what it should hold.
SHARE = 0.6


def load_golden():
    loader = importlib.machinery.SourceFileLoader("golden", str(ROOT / "scripts" / "golden"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("golden", loader))
    sys.dont_write_bytecode = True
    loader.exec_module(module)
    return module


def convert(tool, source, form, target):
    done = subprocess.run([tool, "convert", str(source), "--to", form, "-o", str(target)],
                          stdin=subprocess.DEVNULL, capture_output=True, timeout=60, check=False)
    words = done.stderr.decode("utf-8", "replace").replace(str(source), "definition").strip()
    return done.returncode, words


def shown_differences(golden, case, tool, folder):
    """What differs, and why the case can't go through XML; one of both is empty."""
    xml, back = Path(folder) / "rules.xml", Path(folder) / "definition.json"
    status, words = convert(tool, case.definition, "xml", xml)
    if status in (1, 2):
        return [], words.splitlines()[0] if words else f"status {status} without a word"
    if status == 0:
        status, words = convert(tool, xml, "json", back)
    if status != 0:
        return [f"status {status} on the way: {words}"], ""
    case.definition = back
    try:
        return case.compare(tool), ""
    except golden.Broken as error:
        return [str(error)], ""


def main():
    golden = load_golden()
    # The converted definition stands outside of the tree.
    golden.Case.check = lambda case: None
    tool = str(Path(sys.argv[1]).resolve())
    same, unheld, failed = 0, [], 0
    cases = golden.all_cases()
    for case in cases:
        with tempfile.TemporaryDirectory() as folder:
            shown, reason = shown_differences(golden, case, tool, folder)
        if reason:
            unheld.append(f"{case.name}: {reason}")
        elif shown:
            failed += 1
            print(f"--- case {case.name} through XML ---", *shown, "", sep="\n")
        else:
            same += 1
    print(f"not held by XML, {len(unheld)} cases:", *unheld, "", sep="\n")
    print(f"{same} of {len(cases)} cases give the same through XML, {failed} differ")
    return 1 if failed or any(": status" in reason for reason in unheld) or same < SHARE * len(cases) else 0


if __name__ == "__main__":
    sys.exit(main())
