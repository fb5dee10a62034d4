#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""usage: docs/snippets.py FOLDER

Writes the C++ of the pages in docs/ as source files into FOLDER, so that they are compiled. A block is the body of a function,
its includes apart; a comment `<!-- given: TYPE name, ... -->` before it tells the function's parameters.
"""
import glob
import os
import re
import sys


def main():
    folder = sys.argv[1]
    docs = os.path.dirname(os.path.abspath(__file__))
    os.makedirs(folder, exist_ok=True)
    for page in sorted(glob.glob(f"{docs}/*.md")):
        with open(page, encoding="utf-8") as file:
            blocks = re.findall(r"(?:<!-- given: ([^\n]*) -->\n)?```cpp\n(.*?)```", file.read(), re.S)
        for number, (given, code) in enumerate(blocks, 1):
            name = re.sub(r"\W", "_", os.path.basename(page)[:-3]) + f"_{number}"
            includes = "".join(re.findall(r"(?m)^#include .*\n", code))
            body = re.sub(r"(?m)^#include .*\n", "", code)
            # Types of parameters may be named by forward declarations alone otherwise.
            text = f"{includes}\nvoid Snippet_{name}({given});\nvoid Snippet_{name}({given})\n{{\n{body}}}\n"
            with open(f"{folder}/{name}.cpp", "w", encoding="utf-8") as file:
                file.write(text)
            print(f"{folder}/{name}.cpp")


if __name__ == "__main__":
    main()
