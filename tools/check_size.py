#!/usr/bin/env python3
"""Tells how large the tests are beside the code, and fails where they outgrow it.

Lines of code are counted: blank lines, comments and docstrings are not, nor golden files, data and build files.
"""

import os
import re
import sys

# At most so many lines of tests for 100 of src/, and for 100 of src/, tools/ and bench/. Neither may ever be raised.
OF_SOURCES, OF_ALL = 44, 29
KINDS = (".cpp", ".h", ".py", ".sh")


def lines(*folders):
    count = 0
    for folder, _, names in (place for top in folders for place in os.walk(top)):
        for name in names:
            kind = os.path.splitext(name)[1]
            if kind not in KINDS or folder.startswith(("tests/golden", "tests/data")):
                continue
            with open(os.path.join(folder, name), encoding="utf-8") as file:
                text = file.read()
            if kind == ".py":
                text = re.sub(r'^ *"""(.|\n)*?"""$', "", text, flags=re.M)
            mark = "//" if kind in (".cpp", ".h") else "#"
            count += sum(1 for line in text.split("\n") if line.strip() and not line.lstrip().startswith(mark))
    return count


def main():
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
    tests, sources, others = lines("tests"), lines("src"), lines("tools", "bench")
    of_sources, of_all = 100 * tests / sources, 100 * tests / (sources + others)
    print(f"lines of code: tests {tests}, src {sources}, tools and bench {others}; tests are {of_sources:.1f} % of src "
          f"(at most {OF_SOURCES}) and {of_all:.1f} % of all other code (at most {OF_ALL:.1f})")
    return of_sources > OF_SOURCES or of_all > OF_ALL


sys.exit(main())
