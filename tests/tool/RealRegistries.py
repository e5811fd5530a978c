#!/usr/bin/env python3
"""Runs every command on every registry below the folder that REDFISHCONFIG_REGISTRIES names.

    RealRegistries.py REDFISHCONFIG

A registry is a file registry.json, with the current values beside it as bios.json where there are any. Checked are the
exit codes, that stderr holds nothing but complaints, and that JSON has the shape that the manual gives: of registries as
they are understood, and as they are published.
"""

import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

PROPERTIES = {"hidden", "grayOut", "readOnly", "writeOnly", "protected", "immutable", "systemUnique"}
TYPES = {"string", "integer", "enumeration", "boolean", "password"}
STEERING = re.compile("[\x00-\x09\x0b-\x1f\x7f-\x9f\u2028-\u202e\u2066-\u2069]")
CHANGES = {"set", "reset", "save", "restore", "compare", "adapt"}  # their reports go to stderr too
NAMES_AT_ONCE = 20
MOST_SHOWN = 60  # of a large registry only some settings, spread over it, are shown


class Registry:
    def __init__(self, binary, path, *options):
        self.binary = binary
        self.path = path
        self.as_published = "--as-published" in options
        values = path.with_name("bios.json")
        self.values = ["--values", str(values)] if values.exists() else []
        self.files = ["--registry", str(path), *self.values, *options]
        document = json.loads(path.read_text())
        self.attributes = {entry["AttributeName"]: entry for entry in document["RegistryEntries"]["Attributes"]
                           if entry.get("Type", "").lower() in TYPES}
        self.count = 0
        self.documents = {}

    def run(self, *arguments):
        """Runs a command; gives the lines of stdout, or the document with --json."""
        done = subprocess.run([self.binary, *self.files, *arguments], capture_output=True, timeout=300, check=False)
        where = f"{self.path}: {' '.join(arguments)[:200]}"
        self.count += 1
        assert done.returncode in (0, 1), f"{where}: exit {done.returncode}\n{done.stderr.decode()[:1000]}"
        complaints = done.stderr.decode().splitlines()
        assert all(line.startswith("redfishconfig: ") for line in complaints), f"{where}\n{done.stderr.decode()[:1000]}"
        refused = [line for line in complaints if not line.startswith("redfishconfig: /")]  # no remark on a file
        if arguments[0] not in CHANGES:
            assert bool(refused) == (done.returncode == 1), f"{where}: exit {done.returncode} with {refused[:3]}"
        text = done.stdout.decode()
        if "--json" not in arguments:
            assert not STEERING.search(text), f"{where}: raw {STEERING.search(text)!r}"
            return text.splitlines()
        return json.loads(text)

    def check_status(self, status):
        assert set(status) == PROPERTIES, status
        for state in status.values():
            assert isinstance(state["value"], bool) and isinstance(state["reason"], str), state
            if self.as_published:
                assert set(state) == {"value", "reason"}, state
                continue
            assert set(state) == {"value", "certain", "reason", "rules", "marked"}, state
            assert (state["reason"] == "") == (state["certain"] and not state["value"]), state
            assert all(isinstance(rule, int) for rule in state["rules"]), state
            assert bool(state["rules"]) + state["marked"] == bool(state["reason"]), state

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
            self.check_status(setting["status"])
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
                expected = {key, "refused"} | ({"uncertain"} if command in ("choices", "defaults") else set())
                assert set(document) == expected, document.keys()
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
                                        "choices", "status", "resetRequired", "warning", "help", "refusals", "uncertain"}, setting
                self.check_status(setting["status"])
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


    def check_lint(self):
        """The findings in both shapes; gives how many there are of each severity."""
        done = subprocess.run([self.binary, *self.files, "lint", "--json"], capture_output=True, timeout=60, check=False)
        document = json.loads(done.stdout)
        assert set(document) == {"rules", "counts", "findings"}, document.keys()
        counts, findings = document["counts"], document["findings"]
        assert (done.returncode, done.stderr) == (1 if counts["error"] else 0, b""), done
        for finding in findings:
            assert set(finding) == {"severity", "kind", "document", "place", "found", "consequence", "count",
                                    "attribute", "rule"}, finding
            assert finding["found"] and finding["consequence"], finding
            self.look_up(finding)
        assert counts == {level: sum(1 for finding in findings if finding["severity"] == level) for level in counts}
        rules = json.loads(self.path.read_text())["RegistryEntries"].get("Dependencies") or []
        assert sum(form["published"] for form in document["rules"].values()) == len(rules)
        assert all(form["read"] + form["leftOut"] == form["published"] for form in document["rules"].values())
        told = subprocess.run([self.binary, *self.files, "lint"], capture_output=True, timeout=60, check=False)
        assert (told.returncode, told.stderr) == (done.returncode, b""), told
        text = told.stdout.decode()
        assert not STEERING.search(text)
        headings = re.findall(r"^(?:error|warning|note) [a-z-]+: (\d+)$", text, re.MULTILINE)
        assert sum(map(int, headings)) == len(findings)
        return counts

    def look_up(self, finding):
        """The place of a finding is there, or its last key is what is missing."""
        path = self.path if finding["document"] == "registry" else pathlib.Path(self.values[1])
        if path not in self.documents:
            self.documents[path] = json.loads(path.read_text())
        value = self.documents[path]
        keys = [key.replace("~1", "/").replace("~0", "~") for key in finding["place"].split("/")[1:]]
        for number, key in enumerate(keys):
            last = number == len(keys) - 1
            assert isinstance(value, (dict, list)), finding
            if isinstance(value, dict) and key not in value:
                assert last, finding
                return
            value = value[int(key)] if isinstance(value, list) else value[key]

    def check_adapt(self, order):
        """Adapted once more a registry is the same, and so are its settings."""
        with tempfile.TemporaryDirectory() as name:
            first, second = pathlib.Path(name) / "first.json", pathlib.Path(name) / "second.json"
            self.run("adapt", "-o", str(first))
            again = Registry(self.binary, first)
            again.files += self.values
            again.run("adapt", "-o", str(second))
            assert first.read_bytes() == second.read_bytes(), f"{self.path}: adapted twice it is another"
            self.run("adapt", "-o", str(second), "--force")
            assert first.read_bytes() == second.read_bytes()
            mine, its = self.run("list", "--all", "--json")["settings"], again.run("list", "--all", "--json")["settings"]
            assert [setting["name"] for setting in its] == order
            for here, there in zip(mine, its):
                # a flag that hides a setting for want of knowledge is adapted as the registry's own
                verdicts = [{key: state["value"] for key, state in one["status"].items() if key != "protected"}
                            for one in (here, there)]
                assert verdicts[0] == verdicts[1], f"{self.path}: {here} {there}"
                if here["status"]["protected"]["value"] == there["status"]["protected"]["value"]:
                    assert here | {"status": None} == there | {"status": None}, f"{self.path}: {here} {there}"

    def check_body(self, body):
        """A PATCH body whose values are JSON of their settings' types."""
        assert set(body) == {"Attributes"}, body.keys()
        for name, value in body["Attributes"].items():
            kind = {"integer": int, "boolean": bool}.get(self.attributes[name]["Type"].lower(), str)
            assert type(value) is kind, f"{self.path}: {name}={value!r}"
        return body["Attributes"]

    def candidates(self, name, current):
        """Values for a setting, those that it should accept and some that it should not."""
        entry = self.attributes[name]
        choices = [choice.get("ValueName") for choice in entry.get("Value") or [] if isinstance(choice, dict)]
        found = [current, entry.get("DefaultValue"), entry.get("LowerBound"), entry.get("UpperBound"), *choices]
        if entry["Type"].lower() in ("string", "password"):
            found += ['quo"te', "back\\slash", "tab\there", "", "12345678"]
        return [value for value in found if isinstance(value, (str, int, bool))] + [True, "false", "+7", "007", "-1"]

    def check_set(self, current, folder):
        """Sets the first candidate of every setting, then the second and so on; gives how many were accepted."""
        file = folder / "changes.json"
        tried = {name: self.candidates(name, current.get(name)) for name in self.attributes}
        accepted = 0
        for number in range(12):
            layer = {name: values[number] for name, values in tried.items() if number < len(values)}
            file.write_text(json.dumps(layer))
            answer = self.run("set", "--from", str(file), "--partial", "--json")
            assert set(answer) == {"body", "refused"}, answer.keys()
            refused = {refusal["name"] for refusal in answer["refused"]}
            body = {} if answer["body"] is None else self.check_body(answer["body"])
            assert refused.isdisjoint(body) and refused | set(body) == set(layer), f"{self.path}: {number}"
            accepted += len(body)
        return accepted

    def check_round_trip(self, folder):
        file = folder / "saved.json"
        file.unlink(missing_ok=True)
        self.run("save", "-o", str(file))
        assert file.stat().st_mode & 0o777 == 0o600
        saved = json.loads(file.read_text())
        assert set(saved) == {"format", "version", "registry", "savedAt", "values", "leftOut"}
        assert len(saved["values"]) + sum(saved["leftOut"].values()) == len(self.attributes)
        assert self.run("compare", str(file)) == []
        answer = self.run("restore", str(file), "--json")
        assert answer["body"] == {"Attributes": {}}, f"{self.path}: {answer}"
        assert answer["report"]["alreadySo"] == len(saved["values"])
        return saved

    def check_three_changes(self, saved, folder):
        """Other values for three settings that may be changed; restoring gives exactly these three."""
        changed = {}
        for name, value in saved["values"].items():
            if len(changed) == 3:
                break
            file = folder / "one.json"
            for candidate in self.candidates(name, value):
                file.write_text(json.dumps({name: candidate}))
                body = self.run("restore", str(file), "--json")["body"]["Attributes"]
                if body:
                    changed[name] = (candidate, body[name])
                    break
        file = folder / "changed.json"
        file.write_text(json.dumps(saved | {"values": saved["values"] | {name: pair[0] for name, pair in changed.items()}}))
        body = self.check_body(self.run("restore", str(file), "--json")["body"])
        assert body == {name: pair[1] for name, pair in changed.items()}, f"{self.path}: {body}"
        return len(changed)

    def check_changes(self):
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            current = {setting["name"]: setting["value"] for setting in self.run("list", "--all", "--json")["settings"]}
            accepted = self.check_set(current, folder)
            self.check_body(self.run("reset", "--all", "--json")["body"])
            saved = self.check_round_trip(folder)
            return accepted, self.check_three_changes(saved, folder), saved


def check_elsewhere(saved, registry):
    """Restores what another system saved: every name that this one lacks is reported."""
    with tempfile.TemporaryDirectory() as name:
        file = pathlib.Path(name) / "saved.json"
        file.write_text(json.dumps(saved))
        report = registry.run("restore", str(file), "--json")["report"]
    known = {name.lower() for name in registry.attributes}
    expected = [name for name in saved["values"] if name.lower() not in known]
    assert [remark["name"] for remark in report["unknown"]] == expected, f"{registry.path}: {report['unknown'][:3]}"


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
    previous = None
    for path, options in [(path, options) for options in ([], ["--as-published"]) for path in paths]:
        registry = Registry(os.path.abspath(arguments[0]), path, *options)
        order = registry.check_list()
        if not options:
            print(f"{path.parent.name}: {registry.check_lint()}")
            registry.check_adapt(order)
        registry.check_questions(order)
        registry.check_show(order)
        registry.check_groups(order)
        accepted, changed, saved = registry.check_changes()
        if previous is not None:
            check_elsewhere(previous, registry)
        previous = saved
        print(f"{path.parent.name} {' '.join(options)}: {len(order)} settings, {registry.count} command lines, {accepted} values accepted, "
              f"{changed} changed and restored")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
