#!/usr/bin/env python3
"""Breaks a part of the project on purpose, in one place at a time, and reports which breaks no test notices.

    Mutate.py PART COUNT [SEED] [REPORT.json]

PART is core, client, app or tool. Works on a copy of the committed tree below build/mutation, so the tree itself is never
touched. The breaks are spread evenly over the sources of the part; each changes an operator, a truth value, a number, a text, the level of a log
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
SECONDS = 120  # a break may make a program run for ever


def gtest(program):
    return [str(program), "--gtest_brief=1", "--gtest_fail_fast"]


def transcripts():
    tool = ROOT / "tests" / "tool"
    files = sorted(str(file) for file in (tool / "transcripts").glob("*.txt"))
    return [sys.executable, "-B", str(tool / "RunTranscripts.py"), str(BUILD / "tool" / "redfishconfig"), *files]


OF_THE_COMMAND = {"targets": ["tool_tests", "redfishconfig_command"],
                  "tests": [gtest(BUILD / "tests" / "tool" / "tool_tests"), transcripts()]}

# What is built of each part, the tests that are run then, and the target and tests for breaks that these let pass.
PARTS = {
    "core": {"folder": "RedfishConfig", "targets": ["redfishconfig"],
             "tests": [gtest(RELEASE / "library_tests"), gtest(RELEASE / "exact" / "exact_tests")],
             "last": ("internal_tests", gtest(BUILD / "tests" / "internal_tests"))},
    "client": {"folder": "client", "targets": ["redfishconfig_client"],
               "tests": [gtest(RELEASE / "client" / "client_tests"), gtest(RELEASE / "tool" / "tool_tests")]},
    "app": {"folder": "app", **OF_THE_COMMAND},
    "tool": {"folder": "tool", **OF_THE_COMMAND},
}

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


def sources(folder):
    listed = run(["git", "-C", str(ROOT), "ls-files", folder]).stdout.decode().split()
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


def choose(folder, count, seed):
    """Mutants in turn from each source, so that small ones are broken as often as large ones until they run out."""
    chance = random.Random(seed)
    by_file = []
    for name in sources(folder):
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


def build(targets):
    return run(["cmake", "--build", str(BUILD), "--target", *targets]).returncode == 0


def fails(command):
    libraries = f"{BUILD / 'RedfishConfig'}:{BUILD / 'client'}"
    try:
        done = run(command, timeout=SECONDS, cwd=BUILD, env={**os.environ, "LD_LIBRARY_PATH": libraries})
        return done.returncode != 0
    except subprocess.TimeoutExpired:
        return True


def noticed(part):
    if any(fails(command) for command in part["tests"]):
        return True
    target, last = part.get("last", (None, None))
    return target is not None and (not build([target]) or fails(last))


def prepare(part):
    run(["rm", "-rf", str(COPY)])
    assert run(["git", "clone", "-q", str(ROOT), str(COPY)]).returncode == 0
    done = run(["cmake", "-S", str(COPY), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None", "-DCMAKE_CXX_FLAGS=-O1",
                "-DREDFISHCONFIG_BUILD_EXAMPLES=OFF", "-DBUILD_TESTING=ON"])
    assert done.returncode == 0 and build(part["targets"]), done.stdout.decode()
    assert RELEASE.exists(), "run make test first"
    assert not noticed(part), "the tests fail before anything is broken"


def main(arguments):
    if len(arguments) < 2 or arguments[0] not in PARTS:
        sys.exit(__doc__)
    part = PARTS[arguments[0]]
    count = int(arguments[1])
    seed = int(arguments[2]) if len(arguments) > 2 else 1
    prepare(part)
    report = {"noticed": 0, "notCompiled": 0, "survived": []}
    for name, number, line, broken in choose(part["folder"], count, seed):
        file = COPY / name
        text = file.read_text()
        lines = text.split("\n")
        lines[number] = broken
        file.write_text("\n".join(lines))
        if not build(part["targets"]):
            report["notCompiled"] += 1
        elif noticed(part):
            report["noticed"] += 1
        else:
            report["survived"].append(f"{name}:{number + 1}: {line.strip()}  ->  {broken.strip()}")
            print(report["survived"][-1], flush=True)
        file.write_text(text)
        if len(arguments) > 3:
            pathlib.Path(arguments[3]).write_text(json.dumps(report, indent=1))
    compiled = report["noticed"] + len(report["survived"])
    print(f"{compiled} breaks, {report['noticed']} noticed, {len(report['survived'])} not; "
          f"{report['notCompiled']} more did not compile")


if __name__ == "__main__":
    main(sys.argv[1:])
