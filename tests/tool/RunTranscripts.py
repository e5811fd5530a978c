#!/usr/bin/env python3
"""Runs the command lines of transcripts and compares what they answer, word for word.

    RunTranscripts.py REDFISHCONFIG TRANSCRIPT...
    RunTranscripts.py REDFISHCONFIG --manual MANUAL.md...

A transcript (.txt) is a sequence of

    $ [VARIABLE=VALUE ...] redfishconfig ARGUMENT...
    what it writes to stdout
    ! what it writes to stderr, behind two characters
    [exit N]

Text between an exit line and the next command line is for the reader. Commands run in the folder of the tests, so
that data/ and ../../examples/ are at hand, and without any other REDFISHCONFIG_ variable. --update writes what was
answered into the transcripts; read the difference before you keep it.

In a manual, the blocks fenced as ```console hold command lines and what a terminal shows of them: stdout, then stderr.
A line "..." stands for any lines. Their commands run in the root of the project, on the example system.
"""

import os
import pathlib
import re
import shlex
import subprocess
import sys

TESTS = pathlib.Path(__file__).resolve().parent
ROOT = TESTS.parent.parent
EXAMPLE = {"REDFISHCONFIG_REGISTRY": "examples/registry.json", "REDFISHCONFIG_VALUES": "examples/values.json"}


def unescape(word):
    """The bytes of a word that is written as $'...' with \\xNN and \\n in it; any other word as it is."""
    return word[1:].encode().decode("unicode_escape").encode("latin-1") if word.startswith("$") else word


def run(binary, line, folder, variables):
    """Runs "$ ..." and gives stdout, stderr and the exit code."""
    words = shlex.split(line[2:])
    environment = {key: value for key, value in os.environ.items() if not key.startswith("REDFISHCONFIG_")}
    environment.update(variables)
    while words and re.match(r"[A-Z_]+=", words[0]):
        key, value = words.pop(0).split("=", 1)
        environment[key] = value
    if not words or words[0] != "redfishconfig":
        raise ValueError(f"not a command line of redfishconfig: {line}")
    done = subprocess.run([binary] + [unescape(word) for word in words[1:]], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                          capture_output=True, timeout=60, check=False)
    return done.stdout.decode(), done.stderr.decode(), done.returncode


def lines_of(text):
    """The lines of an answer; only a line feed ends one."""
    lines = text.split("\n")
    return lines[:-1] if lines[-1] == "" else lines[:-1] + [lines[-1] + "(no line feed)"]


def answered(binary, line):
    """The lines that a transcript has behind a command line."""
    out, err, code = run(binary, line, TESTS, {})
    return lines_of(out) + [("! " + text).rstrip() for text in lines_of(err)] + [f"[exit {code}]"]


def read_transcript(text):
    """Pieces of a transcript: (lines for the reader, command line, lines expected)."""
    pieces, prose, lines = [], [], iter(lines_of(text))
    for line in lines:
        if not line.startswith("$ "):
            prose.append(line)
            continue
        expected = []
        for answer in lines:
            expected.append(answer)
            if re.fullmatch(r"\[exit \d+\]", answer):
                break
            if answer.startswith("$ "):
                raise ValueError(f"no exit line before: {answer}")
        pieces.append((prose, line, expected))
        prose = []
    return pieces, prose


def check_transcript(binary, path, update):
    pieces, rest = read_transcript(path.read_text())
    failures, written = [], []
    for prose, line, expected in pieces:
        actual = answered(binary, line)
        written += prose + [line] + actual
        if actual != expected and not update:
            failures.append((line, expected, actual))
    if update:
        path.write_text("\n".join(written + rest) + "\n")
    if not pieces:
        raise ValueError(f"{path}: no command line")
    return len(pieces), failures


def matches(expected, actual):
    """Whether the lines are the expected ones, "..." standing for any."""
    pattern = "".join("(?:.*\n)*?" if line == "..." else re.escape(line) + "\n" for line in expected)
    return re.fullmatch(pattern, "".join(line + "\n" for line in actual)) is not None


def check_manual(binary, path):
    count, failures = 0, []
    for block in re.findall(r"^```console\n(.*?)^```$", path.read_text(), re.MULTILINE | re.DOTALL):
        command, expected = None, []
        for line in lines_of(block) + ["$ "]:
            if not line.startswith("$ "):
                expected.append(line)
                continue
            if command is not None:
                out, err, _ = run(binary, command, ROOT, EXAMPLE)
                actual = lines_of(out) + lines_of(err)
                count += 1
                if not matches(expected, actual):
                    failures.append((command, expected, actual))
            command, expected = line, []
    if count == 0:
        raise ValueError(f"{path}: no command line")
    return count, failures


def main(arguments):
    options = {argument for argument in arguments if argument in ("--manual", "--update")}
    rest = [argument for argument in arguments if argument not in options]
    if len(rest) < 2:
        sys.exit(__doc__)
    binary = os.path.abspath(rest[0])
    total, failed = 0, 0
    for name in rest[1:]:
        path = pathlib.Path(name)
        if "--manual" in options:
            count, failures = check_manual(binary, path)
        else:
            count, failures = check_transcript(binary, path, "--update" in options)
        total += count
        failed += len(failures)
        for line, expected, actual in failures:
            print(f"{path}: {line}\n--- expected\n" + "\n".join(expected) + "\n--- answered\n" + "\n".join(actual) + "\n")
    print(f"{total} command lines, {failed} with another answer")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
