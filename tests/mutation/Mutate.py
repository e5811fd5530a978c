#!/usr/bin/env python3
"""Breaks the library on purpose, in one place at a time, and reports which breaks no test notices.

    Mutate.py COUNT [SEED] [REPORT.json]

Works on a copy of the committed tree below build/mutation, so the tree itself is never touched. The breaks are spread
evenly over the sources of RedfishConfig/; each changes an operator, a truth value, a number, a text, the level of a log
line or a result code, or leaves a statement out. A break that does not compile does not count.
"""

import json
import os
import pathlib
import random
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
COPY = ROOT / "build" / "mutation" / "tree"
BUILD = ROOT / "build" / "mutation" / "build"
RELEASE = ROOT / "build" / "release" / "tests"  # as make test builds them; they load the broken library
SHARED = [[str(RELEASE / "library_tests")], [str(RELEASE / "exact" / "exact_tests")]]
INTERNAL = [[str(BUILD / "tests" / "internal_tests")]]  # built anew with what the others let pass
SECONDS = 120  # a break may make the library run for ever

# (what to look for, what to put there)
CHANGES = [
    (r" == ", " != "), (r" != ", " == "), (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" && ", " || "), (r" \|\| ", " && "), (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"(?<=[(\s])!(?=[\w(])", ""),
    (r" \+ 1\b", " + 2"), (r" - 1\b", " - 2"), (r" \+ ", " - "), (r"\b0\b(?=[;,) ])", "1"), (r"\b1\b(?=[;,) ])", "2"),
    (r"\bRESULT_(?!SUCCEED)[A-Z_]+(?=[;,}])", "RESULT_SUCCEED"), (r"\bRESULT_SUCCEED(?=[;,}])", "RESULT_INTERNAL_ERROR"),
    (r"LogDefect", "LogDetail"), (r"LogDetail", "LogDefect"), (r"LogTrace", "LogDetail"), (r"LogLeftOut", "LogTrace"),
    (r'"([^"\\]{3,})"', r'"\1~"'), (r"\bempty\(\)", "size() > 1"), (r"\bemplace\(", "insert_or_assign("),
    (r"^(\s+)(?!return|throw|break|continue|case|default|using|const|auto|std::|static|struct|class|enum|#)"
     r"([\w\->.:]+\(.*\);|[\w\->.\[\]*]+ (?:=|\+=) .*;|\+\+.*;|LOG_LINE.*;)\s*$", r"\1;"),
]


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False, **options)


def sources():
    listed = run(["git", "-C", str(ROOT), "ls-files", "RedfishConfig"]).stdout.decode().split()
    return [name for name in listed if name.endswith(".cpp") or (name.endswith(".h") and "/include/" not in name)]


def code_lines(text):
    """The numbers of lines that hold code and no comment."""
    for number, line in enumerate(text.split("\n")):
        stripped = line.strip()
        if stripped and not stripped.startswith(("//", "/*", "*", "#", "static_assert", "namespace", "}")):
            yield number, re.split(r" ///?<? ", line)[0]


def mutants_of(name):
    text = (ROOT / name).read_text()
    lines = text.split("\n")
    for number, line in code_lines(text):
        for pattern, replacement in CHANGES:
            for match in re.finditer(pattern, line):
                broken = line[:match.start()] + match.expand(replacement) + line[match.end():]
                if broken != line:
                    yield name, number, lines[number], broken


def choose(count, seed):
    """Mutants in turn from each source, so that small ones are broken as often as large ones until they run out."""
    chance = random.Random(seed)
    by_file = []
    for name in sources():
        found = list(mutants_of(name))
        chance.shuffle(found)
        by_file.append(found)
    chance.shuffle(by_file)
    chosen = []
    while len(chosen) < count and any(by_file):
        for found in by_file:
            if found and len(chosen) < count:
                chosen.append(found.pop())
    return chosen


def build(target):
    return run(["cmake", "--build", str(BUILD), "--target", target]).returncode == 0


def fails(tests):
    for command in tests:
        try:
            done = run([*command, "--gtest_brief=1", "--gtest_fail_fast"], timeout=SECONDS, cwd=BUILD,
                       env={**os.environ, "LD_LIBRARY_PATH": str(BUILD / "RedfishConfig")})
            if done.returncode != 0:
                return True
        except subprocess.TimeoutExpired:
            return True
    return False


def noticed():
    return fails(SHARED) or not build("internal_tests") or fails(INTERNAL)


def prepare():
    run(["rm", "-rf", str(COPY)])
    assert run(["git", "clone", "-q", str(ROOT), str(COPY)]).returncode == 0
    done = run(["cmake", "-S", str(COPY), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1",
                "-DREDFISHCONFIG_BUILD_TOOL=OFF", "-DREDFISHCONFIG_BUILD_EXAMPLES=OFF", "-DBUILD_TESTING=ON"])
    assert done.returncode == 0 and build("redfishconfig"), done.stdout.decode()
    assert all(pathlib.Path(command[0]).exists() for command in SHARED), "run make test first"
    assert not noticed(), "the tests fail before anything is broken"


def main(arguments):
    if not arguments:
        sys.exit(__doc__)
    count = int(arguments[0])
    seed = int(arguments[1]) if len(arguments) > 1 else 1
    prepare()
    report = {"noticed": 0, "notCompiled": 0, "survived": []}
    for name, number, line, broken in choose(count, seed):
        file = COPY / name
        text = file.read_text()
        lines = text.split("\n")
        lines[number] = broken
        file.write_text("\n".join(lines))
        if not build("redfishconfig"):
            report["notCompiled"] += 1
        elif noticed():
            report["noticed"] += 1
        else:
            report["survived"].append(f"{name}:{number + 1}: {line.strip()}  ->  {broken.strip()}")
            print(report["survived"][-1], flush=True)
        file.write_text(text)
        if len(arguments) > 2:
            pathlib.Path(arguments[2]).write_text(json.dumps(report, indent=1))
    compiled = report["noticed"] + len(report["survived"])
    print(f"{compiled} breaks, {report['noticed']} noticed, {len(report['survived'])} not; "
          f"{report['notCompiled']} more did not compile")


if __name__ == "__main__":
    main(sys.argv[1:])
