#!/usr/bin/env python3
"""Runs every command on every registry below the folder that REDFISHCONFIG_REGISTRIES names.

    RealRegistries.py REDFISHCONFIG

A registry is a file registry.json, with the current values beside it as bios.json where there are any. Checked are the
exit codes, that stderr holds nothing but complaints, and that JSON has the shape that the manual gives.
"""

import json
import os
import pathlib
import re
import subprocess
import sys

PROPERTIES = {"hidden", "grayOut", "readOnly", "writeOnly", "protected", "immutable", "systemUnique"}
TYPES = {"string", "integer", "enumeration", "boolean", "password"}
STEERING = re.compile("[\x00-\x09\x0b-\x1f\x7f-\x9f\u2028-\u202e\u2066-\u2069]")
NAMES_AT_ONCE = 20
MOST_SHOWN = 60  # of a large registry only some settings, spread over it, are shown


class Registry:
    def __init__(self, binary, path):
        self.binary = binary
        self.path = path
        self.files = ["--registry", str(path)]
        values = path.with_name("bios.json")
        if values.exists():
            self.files += ["--values", str(values)]
        document = json.loads(path.read_text())
        self.attributes = {entry["AttributeName"]: entry for entry in document["RegistryEntries"]["Attributes"]
                           if entry.get("Type", "").lower() in TYPES}
        self.count = 0

    def run(self, *arguments):
        """Runs a command; gives the lines of stdout, or the document with --json."""
        done = subprocess.run([self.binary, *self.files, *arguments], capture_output=True, timeout=300, check=False)
        where = f"{self.path}: {' '.join(arguments)[:200]}"
        self.count += 1
        assert done.returncode in (0, 1), f"{where}: exit {done.returncode}\n{done.stderr.decode()[:1000]}"
        complaints = done.stderr.decode().splitlines()
        assert all(line.startswith("redfishconfig: ") for line in complaints), f"{where}\n{done.stderr.decode()[:1000]}"
        refused = [line for line in complaints if not line.startswith("redfishconfig: /")]  # no remark on a file
        assert bool(refused) == (done.returncode == 1), f"{where}: exit {done.returncode} with {refused[:3]}"
        text = done.stdout.decode()
        if "--json" not in arguments:
            assert not STEERING.search(text), f"{where}: raw {STEERING.search(text)!r}"
            return text.splitlines()
        return json.loads(text)

    def is_password(self, name):
        return self.attributes[name]["Type"].lower() == "password"

    def check_list(self):
        lines = self.run("list", "--all")
        assert len(lines) == len(self.attributes), f"{self.path}: {len(lines)} lines"
        assert len(self.run("list")) <= len(lines)
        self.run("list", "--changed")
        document = self.run("list", "--all", "--json")
        assert set(document) == {"settings"}
        settings = document["settings"]
        assert {setting["name"] for setting in settings} == set(self.attributes)
        for setting in settings:
            assert set(setting) == {"name", "type", "menu", "value", "default", "status"}, setting
            assert setting["type"].lower() in TYPES
            assert setting["menu"] is None or isinstance(setting["menu"], str)
            check_status(setting["status"])
            for key in ("value", "default"):
                assert setting[key] is None or isinstance(setting[key], (str, int, bool)), setting
                assert setting[key] is None or not self.is_password(setting["name"]), setting
        order = [setting["name"] for setting in settings]
        shown = [line.split("  ")[0] for line in lines]
        assert shown == order, f"{self.path}: the two forms have another order"
        return order

    def check_questions(self, order):
        for command, key in (("get", "values"), ("defaults", "defaults"), ("choices", "choices"),
                             ("describe", "descriptions")):
            self.run(command, "--all")
            for options in ([], ["--hex"], ["--include-protected"]):
                document = self.run(command, "--all", "--json", *options)
                assert set(document) == {key, "refused"}, document.keys()
                refused = [check_refusal(refusal) for refusal in document["refused"]]
                assert sorted([*document[key], *refused]) == sorted(self.attributes), f"{self.path}: {command}"
                assert [name for name in order if name in document[key]] == list(document[key])
            for name in document[key]:
                assert command in ("choices", "describe") or not self.is_password(name), name

    def check_show(self, order):
        chosen = order[::-(-len(order) // MOST_SHOWN)]
        for begin in range(0, len(chosen), NAMES_AT_ONCE):
            names = chosen[begin:begin + NAMES_AT_ONCE]
            assert sum(1 for line in self.run("show", "--", *names) if line in names) >= len(names)
            document = self.run("show", "--json", "--", *names)
            assert set(document) == {"settings", "refused"} and document["refused"] == []
            assert [setting["name"] for setting in document["settings"]] == names
            for setting in document["settings"]:
                assert set(setting) == {"name", "displayName", "type", "menu", "menuTitles", "value", "default",
                                        "choices", "status", "resetRequired", "warning", "help", "refusals"}, setting
                check_status(setting["status"])
                assert isinstance(setting["resetRequired"], bool)
                assert set(setting["refusals"]) <= {"value", "default", "choices"}
                for key in ("value", "default", "choices"):
                    assert (setting[key] is None) or key not in setting["refusals"], setting

    def check_groups(self, order):
        self.run("groups")
        document = self.run("groups", "--json")
        assert set(document) == {"menus", "withoutMenu", "groups"}
        total = document["withoutMenu"] + sum(check_menu(menu) for menu in document["menus"])
        assert total == len(order), f"{self.path}: {total} settings in the menus"
        assert all(isinstance(names, list) for names in document["groups"].values())


def check_status(status):
    assert set(status) == PROPERTIES, status
    for state in status.values():
        assert set(state) == {"value", "reason"}, state
        assert isinstance(state["value"], bool) and isinstance(state["reason"], str), state


def check_refusal(refusal):
    assert set(refusal) == {"name", "code", "message"}, refusal
    assert refusal["code"] > 0 and refusal["message"], refusal
    return refusal["name"]


def check_menu(menu):
    assert set(menu) == {"name", "displayName", "path", "settings", "allSettings", "menus"}, menu
    total = menu["settings"] + sum(check_menu(child) for child in menu["menus"])
    assert total == menu["allSettings"], menu["path"]
    return total


def main(arguments):
    if len(arguments) != 1:
        sys.exit(__doc__)
    folder = os.environ.get("REDFISHCONFIG_REGISTRIES")
    if not folder:
        print("skipped: REDFISHCONFIG_REGISTRIES names no folder of registries")
        return 77
    paths = sorted(pathlib.Path(folder).resolve().rglob("registry.json"))
    assert paths, f"{folder}: no registry.json in it"
    for path in paths:
        registry = Registry(os.path.abspath(arguments[0]), path)
        order = registry.check_list()
        registry.check_questions(order)
        registry.check_show(order)
        registry.check_groups(order)
        print(f"{path.parent.name}: {len(order)} settings, {registry.count} command lines")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
