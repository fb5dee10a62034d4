#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Lints files, those of a folder and of equal compiler options jointly: most of the time goes into headers otherwise.

usage: lint_batches.py BUILD-FOLDER LINTER-COMMAND < lines FILE<tab>STAMP, as lint_stamps.py prints them
Creates the stamps of clean files, prints what is found in others, and fails if there are any.

A joint file holds the texts of its files one after the other. All checks look at that but the static analyzer, which
takes a function for done that it has followed from another one, and so looks at each file alone. Where anything is
found in the joint file, or where its files can't stand together, each is linted alone by all checks.
"""
import collections
import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys

FILES_AT_ONCE = 12
NOISE = re.compile(r"\d+ warnings?( and \d+ errors?)? generated|Suppressed |Use -header-filter|Error while processing|$")


def compiler_options(folder):
    """The options of each file that is compiled once, without its own name and its object's."""
    found = collections.defaultdict(list)
    with open(os.path.join(folder, "compile_commands.json"), encoding="utf-8") as file:
        for entry in json.load(file):
            command = shlex.split(entry["command"].split(" -o ")[0])
            first = next(i for i, word in enumerate(command) if os.path.basename(word).startswith(("c++", "g++", "clang++")))
            found[entry["file"]].append(tuple(command[first + 1:]))
    return {file: options[0] for file, options in found.items() if len(options) == 1}


def batches(folder, files):
    options = compiler_options(folder)
    groups = collections.defaultdict(list)
    for file in files:
        path = os.path.abspath(file)
        with open(path, encoding="utf-8") as text:
            alone = path not in options or "foreach_target.h" in text.read()  # the latter includes its file repeatedly
        groups[path if alone else (os.path.dirname(path), options[path])].append(file)
    for key, group in groups.items():
        for i in range(0, len(group), FILES_AT_ONCE):
            yield (key[1] if isinstance(key, tuple) else ()), group[i:i + FILES_AT_ONCE]


def findings(*command):
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    lines = [line for line in (result.stdout + result.stderr).splitlines() if not NOISE.match(line)]
    return "\n".join(lines) or ("" if result.returncode == 0 else f"{shlex.join(command)} failed")


def joint_findings(linter, folder, options, files):
    path = os.path.join(folder, "lint", re.sub(r"\W+", "_", files[0]) + ".cpp")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as joint:
        for i, file in enumerate(files):
            with open(file, encoding="utf-8") as text:
                # A macro has the check of repeated includes begin anew.
                joint.write(f"{text.read()}\n#define KX_LINT_{i}\n")
    return findings(*linter, "--checks=-clang-analyzer-*", path, "--", *options,
                    "-iquote", os.path.dirname(os.path.abspath(files[0])))


def main():
    folder, linter = sys.argv[1], shlex.split(sys.argv[2])
    stamps = dict(line.rstrip("\n").split("\t") for line in sys.stdin)
    with open(".clang-tidy", encoding="utf-8") as file:
        excluded = re.findall(r"^\s+(-clang-analyzer-[\w.]+)", file.read(), re.M)
    analyzer = ",".join(["--checks=-*", "clang-diagnostic-thread-safety*", "clang-analyzer-*", *excluded])

    # What stands behind -- in a joint file's command are its options; a folder with commands would be asked in vain.
    joint_linter = [word for i, word in enumerate(linter) if word != "-p" and linter[i - 1] != "-p"]

    def lint(batch):
        options, files = batch
        jointly = len(files) > 1 and not joint_findings(joint_linter, folder, options, files)
        if len(files) > 1 and not jointly:
            print(f"linting {len(files)} files from {files[0]} on one by one", flush=True)
        clean = True
        for file in files:
            found = findings(*linter, *([analyzer] if jointly else []), file)
            if found:
                print(found, flush=True)
                clean = False
            else:
                with open(stamps[file], "a", encoding="utf-8"):
                    pass
        return clean

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        results = list(pool.map(lint, batches(folder, stamps)))
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
