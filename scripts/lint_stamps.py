#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Tells which files the linter has to look at: those that were not found clean before with all that they include.

usage: lint_stamps.py BUILD-FOLDER LINTER-COMMAND FILE...
Prints a line FILE<tab>STAMP for each of them; who finds the file clean creates STAMP. A stamp's name is the hash of all
that the findings depend on: the linter, its command and configuration, the compiler's command, and what is included.
"""
import functools
import hashlib
import json
import os
import subprocess
import sys


@functools.lru_cache(maxsize=None)
def hash_of(path):
    try:
        with open(path, "rb") as file:
            return hashlib.sha256(file.read()).digest()
    except OSError:
        return b"missing"


def included_files(folder):
    """What each object was compiled of, as {object: [path, ...]}; nothing for what isn't built."""
    output = subprocess.run(["ninja", "-C", folder, "-t", "deps"], capture_output=True, text=True, check=False).stdout
    objects, own = {}, []
    for line in output.splitlines():
        if line.startswith("    "):
            own.append(os.path.normpath(os.path.join(folder, line.strip())))
        elif ": #deps" in line and "STALE" not in line:
            own = objects.setdefault(line.split(": #deps")[0], [])
        else:
            own = []
    return objects


def main():
    folder, linter, *files = sys.argv[1:]
    cache = os.path.join(os.environ.get("XDG_CACHE_HOME", os.path.expanduser("~/.cache")), "kxapi-lint")
    os.makedirs(cache, exist_ok=True)
    version = subprocess.run([linter.split()[0], "--version"], capture_output=True, text=True, check=True).stdout
    common = hashlib.sha256((version + linter).encode() + hash_of(".clang-tidy"))
    objects = included_files(folder)
    with open(os.path.join(folder, "compile_commands.json"), encoding="utf-8") as file:
        entries = json.load(file)
    for path in files:
        key, known = common.copy(), True
        for entry in entries:
            if entry["file"] != os.path.abspath(path):
                continue
            included = objects.get(entry.get("output") or entry["command"].split(" -o ")[1].split()[0])
            known = known and bool(included)
            key.update(entry["command"].replace(os.getcwd(), "").encode())
            for other in included or []:
                key.update(hash_of(other))
        stamp = os.path.join(cache, key.hexdigest())
        if not known or not os.path.exists(stamp):
            # Without a list of what it includes a file is looked at each time.
            print(f"{path}\t{stamp if known else os.devnull}")


if __name__ == "__main__":
    main()
