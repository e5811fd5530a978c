"""Checks facts about the example system: python3 ExampleSystemTest.py registry.json values.json

Reads the two files as plain JSON, without the library, lists everything that is wrong and exits with 1 when
anything is.
"""

import json
import operator
import re
import sys
from collections import Counter

TYPES = {"String", "Integer", "Enumeration", "Boolean", "Password"}
OUTCOMES = {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"}
FLAGS = OUTCOMES | {"ResetRequired"}
CONDITIONS = {
    "EQU": operator.eq,
    "EQ": operator.eq,
    "NEQ": operator.ne,
    "GTR": operator.gt,
    "GEQ": operator.ge,
    "LSS": operator.lt,
    "LEQ": operator.le,
}
RELATIONAL = {"GTR", "GEQ", "LSS", "LEQ"}
KEYS = FLAGS | {
    "AttributeName", "CurrentValue", "DefaultValue", "DisplayName", "DisplayOrder", "HelpText", "LowerBound",
    "MaxLength", "MenuPath", "MinLength", "ScalarIncrement", "Type", "UpperBound", "Value", "ValueExpression",
    "WarningText",
}
LOOKS_LIKE_FORMULA = re.compile(r"[()|!&<=>]")

violations = []


def check(fact, violation):
    if not fact:
        violations.append(violation)


def is_integer(value):
    return isinstance(value, int) and not isinstance(value, bool)


def as_text(value):
    """A value as formulas compare it."""
    return str(value).lower() if isinstance(value, bool) else str(value)


def value_names(setting):
    return [entry["ValueName"] for entry in setting.get("Value", [])]


def fits(setting, value):
    """Why the setting cannot have the value; None when it can."""
    kind = setting["Type"]
    if kind == "Boolean":
        return None if isinstance(value, bool) else "is no boolean"
    if kind == "Integer":
        if not is_integer(value):
            return "is no integer"
        if not setting["LowerBound"] <= value <= setting["UpperBound"]:
            return "is out of bounds"
        step = setting.get("ScalarIncrement", 1)
        return None if (value - setting["LowerBound"]) % step == 0 else "is between two increments"
    if not isinstance(value, str):
        return "is no text"
    if kind == "Enumeration":
        return None if value in value_names(setting) else "is none of the choices"
    if not setting.get("MinLength", 0) <= len(value.encode()) <= setting.get("MaxLength", len(value.encode())):
        return "has a wrong length"
    if "ValueExpression" in setting and not re.fullmatch(setting["ValueExpression"], value):
        return "does not match the pattern"
    return None


def check_shape(settings, menus, rules):
    """What the other checks take for granted."""

    def has_text(element, *keys):
        return all(isinstance(element.get(key), str) and element[key] for key in keys)

    for position, setting in enumerate(settings):
        name = setting.get("AttributeName", f"setting {position}")
        for key in ("AttributeName", "DisplayName", "HelpText", "MenuPath", "Type"):
            check(has_text(setting, key), f"{name}: no {key}")
        check(setting.get("Type") in TYPES, f"{name}: unknown type")
        if setting.get("Type") == "Integer":
            bounds = [setting.get("LowerBound"), setting.get("UpperBound")]
            check(all(map(is_integer, bounds)) and bounds[0] <= bounds[1], f"{name}: unusable bounds {bounds}")
            step = setting.get("ScalarIncrement", 1)
            check(is_integer(step) and step > 0, f"{name}: unusable increment {step}")
        for entry in setting.get("Value", []):
            check(has_text(entry, "ValueName", "ValueDisplayName"), f"{name}: a choice lacks one of its two names")
    for position, menu in enumerate(menus):
        check(has_text(menu, "MenuName", "DisplayName", "MenuPath"), f"menu {position}: no name or no path")
    for position, entry in enumerate(rules):
        rule = entry.get("Dependency", {})
        check(has_text(rule, "MapToAttribute", "MapToProperty"), f"rule {position}: no target")
        check(rule.get("MapFrom"), f"rule {position}: no terms")
        for term in rule.get("MapFrom", []):
            keys = {"MapFromAttribute", "MapFromProperty", "MapFromCondition", "MapFromValue"}
            check(set(term) - {"MapTerms"} == keys, f"rule {position}: a term with the keys {sorted(term)}")


def check_head(registry, values):
    for key in ("@odata.type", "Id", "Name", "Language", "OwningEntity", "RegistryVersion"):
        check(isinstance(registry.get(key), str) and registry[key], f"registry: {key} is missing")
    check(".AttributeRegistry" in registry.get("@odata.type", ""), "registry: wrong @odata.type")
    check(registry.get("SupportedSystems"), "registry: no SupportedSystems")
    for key in ("@odata.id", "@odata.type", "Id", "Name"):
        check(isinstance(values.get(key), str) and values[key], f"values: {key} is missing")
    check(".Bios" in values.get("@odata.type", ""), "values: wrong @odata.type")
    check(values.get("AttributeRegistry") == registry.get("Id"), "values: they name another registry")


def check_names(settings):
    names = [setting["AttributeName"] for setting in settings]
    folded = [name.casefold() for name in names]
    for name, count in Counter(folded).items():
        check(count == 1, f"{name}: the name occurs {count} times")
    for name in names:
        check(re.fullmatch(r"[A-Z][A-Za-z0-9]*", name), f"{name}: the name is not one plain word")
        for other in names:
            if other.casefold() != name.casefold():
                check(not other.casefold().endswith(name.casefold()), f"{name}: the name is the ending of {other}")


def check_setting(setting):
    name = setting["AttributeName"]
    check(not set(setting) - KEYS, f"{name}: unknown keys {sorted(set(setting) - KEYS)}")
    check(is_integer(setting.get("DisplayOrder")), f"{name}: no DisplayOrder")
    for flag in FLAGS & set(setting):
        check(isinstance(setting[flag], bool), f"{name}: {flag} is no boolean")

    kind = setting["Type"]
    if kind != "Integer":
        bounds = {"LowerBound", "UpperBound", "ScalarIncrement"} & set(setting)
        check(not bounds, f"{name}: bounds without being an Integer")
    if kind in ("String", "Password"):
        shortest, longest = setting.get("MinLength", 0), setting.get("MaxLength")
        check(is_integer(shortest) and shortest >= 0, f"{name}: unusable MinLength")
        check(longest is None or (is_integer(longest) and longest >= shortest), f"{name}: unusable MaxLength")
    else:
        limits = {"MinLength", "MaxLength", "ValueExpression"} & set(setting)
        check(not limits, f"{name}: lengths or a pattern without being a text")
    if kind == "Password":
        check(setting.get("WriteOnly") is True, f"{name}: a password that is not write only")
        values = {setting.get("DefaultValue"), setting.get("CurrentValue")}
        check(values == {None}, f"{name}: a password with a value")
    choices = value_names(setting)
    check(bool(choices) == (kind == "Enumeration"), f"{name}: choices do not go with its type")
    check(len(choices) == len(set(choices)), f"{name}: a choice occurs twice")
    for choice in choices:
        check(not LOOKS_LIKE_FORMULA.search(choice), f"{name}: the choice {choice} looks like a formula")


def check_values(settings, values):
    """Defaults and current values, of the registry and of the values file."""
    given = values["Attributes"]
    names = {setting["AttributeName"] for setting in settings}
    for name in given:
        check(name in names, f"values: the registry has no {name}")
    check(len(given) >= len(settings) * 9 // 10, f"values: only {len(given)} of {len(settings)} settings are given")
    for setting in settings:
        name = setting["AttributeName"]
        current = {"registry's CurrentValue": setting.get("CurrentValue"), "current value": given.get(name)}
        for what, value in {"DefaultValue": setting.get("DefaultValue"), **current}.items():
            if value is not None:
                wrong = fits(setting, value)
                check(wrong is None, f"{name}: the {what} {value!r} {wrong}")
        if setting["Type"] == "Password":
            is_null = name in given and given[name] is None
            check(is_null, f"{name}: the current value of a password is not given as null")

    in_registry = sum(setting.get("CurrentValue") is not None for setting in settings)
    check(0 < in_registry < len(settings) // 2, f"registry: {in_registry} settings have a CurrentValue")
    changed = [
        s["AttributeName"] for s in settings
        if s.get("DefaultValue") is not None and given.get(s["AttributeName"]) not in (None, s["DefaultValue"])
    ]
    check(len(changed) >= 12, f"values: only {len(changed)} settings differ from their defaults")
    others = [setting for setting in settings if setting["Type"] != "Password"]
    check(any(s.get("DefaultValue") is None for s in others), "registry: every setting has a default")
    without_value = [s for s in others if s.get("CurrentValue") is None and given.get(s["AttributeName"]) is None]
    check(without_value, "values: every setting has a current value")


def check_menus(settings, menus):
    paths = [menu["MenuPath"] for menu in menus]
    for menu in menus:
        path = menu["MenuPath"]
        check(re.fullmatch(r"\.(/[A-Za-z0-9]+){1,3}", path), f"menu {path}: not a path of one to three pieces")
        check(menu["MenuName"] == path.split("/")[-1], f"menu {path}: MenuName is not its last piece")
        check(is_integer(menu.get("DisplayOrder")), f"menu {path}: no DisplayOrder")
        parent = path.rsplit("/", 1)[0]
        check(parent == "." or parent in paths, f"menu {path}: the menu above is not listed")
        used = any((setting["MenuPath"] + "/").startswith(path + "/") for setting in settings)
        check(used, f"menu {path}: nothing in it")
    check(len(paths) == len(set(paths)), "menus: a menu is listed twice")
    names = Counter(menu["MenuName"] for menu in menus)
    check(max(names.values(), default=0) <= 1, "menus: a MenuName occurs twice")
    check(sum(path.count("/") == 1 for path in paths) >= 5, "menus: fewer than five at the top")
    check(any(s["MenuPath"].count("/") == 3 for s in settings), "menus: no setting is three menus deep")
    check("./Processors/Cores/Power" in paths, "menus: ./Processors/Cores/Power is missing")
    for setting in settings:
        check(setting["MenuPath"] in paths, f"{setting['AttributeName']}: its menu {setting['MenuPath']} is not listed")
    for what, places in (
        ("settings", Counter((s["MenuPath"], s.get("DisplayOrder")) for s in settings)),
        ("menus", Counter((m["MenuPath"].rsplit("/", 1)[0], m.get("DisplayOrder")) for m in menus)),
    ):
        for (path, order), count in places.items():
            check(count == 1, f"menu {path}: {count} {what} at position {order}")


def check_term(rule_name, term, by_name, given, last):
    joiner = term.get("MapTerms")
    check(joiner is None if last else joiner in ("AND", "OR"), f"{rule_name}: the joiner {joiner} is out of place")
    condition, tested, value = term["MapFromCondition"], term["MapFromProperty"], term["MapFromValue"]
    check(condition in CONDITIONS, f"{rule_name}: unknown condition {condition}")
    source = by_name.get(term["MapFromAttribute"])
    if source is None:
        check(False, f"{rule_name}: there is no setting {term['MapFromAttribute']}")
        return
    if tested != "CurrentValue":
        check(tested in OUTCOMES, f"{rule_name}: unknown property {tested}")
        check(isinstance(value, bool), f"{rule_name}: {tested} compared with something other than a boolean")
        return
    check(source["Type"] != "Password", f"{rule_name}: reads a password")
    if value is None:
        check(condition in ("EQU", "NEQ"), f"{rule_name}: null compared by {condition}")
        return
    wrong = fits(source, value)
    check(wrong is None, f"{rule_name}: {value!r} {wrong} of {source['AttributeName']}")
    for inserted in (value, given.get(source["AttributeName"]), source.get("CurrentValue")):
        check(not LOOKS_LIKE_FORMULA.search(as_text(inserted)), f"{rule_name}: {inserted!r} looks like a formula")
    if condition in RELATIONAL:
        # Texts are compared, so the order of the texts has to be the order that an administrator has in mind.
        if source["Type"] == "Integer":
            widths = {len(str(source["LowerBound"])), len(str(source["UpperBound"])), len(str(value))}
            one_width = source["LowerBound"] >= 0 and len(widths) == 1
            check(one_width, f"{rule_name}: numbers of different width are ordered as texts")
        else:
            check(source["Type"] == "Enumeration", f"{rule_name}: {source['AttributeName']} has no order")
            in_order = value_names(source) == sorted(value_names(source))
            check(in_order, f"{rule_name}: the choices are not listed in the order of their texts")


def holds(rule, by_name, given):
    """The rule's verdict under the current values; AND and OR have one precedence and group to the right."""
    verdict, joiner = None, None
    for term in reversed(rule["MapFrom"]):
        source = by_name[term["MapFromAttribute"]]
        if term["MapFromProperty"] != "CurrentValue":
            actual = source.get(term["MapFromProperty"], False)
        else:
            actual = given.get(term["MapFromAttribute"], source.get("CurrentValue"))
        if term["MapFromValue"] is None:
            own = (actual is None) == (term["MapFromCondition"] == "EQU")
        else:
            # A setting without a value is left in the formula by its name.
            left = term["MapFromAttribute"] + ".CurrentValue" if actual is None else as_text(actual)
            own = CONDITIONS[term["MapFromCondition"]](left.encode(), as_text(term["MapFromValue"]).encode())
        joiner = term.get("MapTerms")
        verdict = own if joiner is None else (own and verdict if joiner == "AND" else own or verdict)
    return verdict


def check_rules(entries, by_name, values):
    rules, outcomes = [], {}
    for position, entry in enumerate(entries):
        rule = entry["Dependency"]
        target, outcome = rule["MapToAttribute"], rule["MapToProperty"]
        name = f"rule {position} ({target}.{outcome})"
        rules.append(rule)
        check(entry.get("Type") == "Map", f"{name}: Type is not Map")
        check(entry.get("DependencyFor") == target, f"{name}: DependencyFor is not the target")
        check(target in by_name, f"{name}: the target is no setting")
        check(outcome in OUTCOMES, f"{name}: unknown outcome")
        check(isinstance(rule.get("MapToValue"), bool), f"{name}: MapToValue is no boolean")
        earlier = outcomes.setdefault((target, outcome), rule.get("MapToValue"))
        check(earlier == rule.get("MapToValue"), f"{name}: the opposite of an earlier rule")
        terms = rule["MapFrom"]
        for term in terms:
            check_term(name, term, by_name, values["Attributes"], last=term is terms[-1])
            check(term["MapFromAttribute"] != target, f"{name}: reads its own target")

    terms = [term for rule in rules for term in rule["MapFrom"]]
    used = Counter(term["MapFromCondition"] for term in terms)
    for condition in CONDITIONS:
        check(used[condition] > 0, f"rules: no term has the condition {condition}")
    check(used["EQ"] == 1, f"rules: EQ occurs {used['EQ']} times")
    for joiner in ("AND", "OR"):
        check(any(term.get("MapTerms") == joiner for term in terms), f"rules: no term has the joiner {joiner}")
    for condition in ("EQU", "NEQ"):
        found = any(term["MapFromValue"] is None and term["MapFromCondition"] == condition for term in terms)
        check(found, f"rules: no exist test with {condition}")
    for outcome in OUTCOMES:
        check(any(rule["MapToProperty"] == outcome for rule in rules), f"rules: none decides {outcome}")
    targets = Counter((rule["MapToAttribute"], rule["MapToProperty"]) for rule in rules)
    check(max(targets.values()) > 1, "rules: no two decide the same property")
    if not violations:
        verdicts = Counter(holds(rule, by_name, values["Attributes"]) for rule in rules)
        enough = min(verdicts[True], verdicts[False]) >= 8
        check(enough, f"rules: {verdicts[True]} hold and {verdicts[False]} do not")


def check_everything(registry, values):
    entries = registry["RegistryEntries"]
    settings, menus, rules = entries["Attributes"], entries["Menus"], entries["Dependencies"]
    check_shape(settings, menus, rules)
    if violations:
        return
    by_name = {setting["AttributeName"]: setting for setting in settings}

    check(64 <= len(settings) <= 75, f"registry: {len(settings)} settings")
    check(28 <= len(rules) <= 35, f"registry: {len(rules)} rules")
    check_head(registry, values)
    check_names(settings)
    for setting in settings:
        check_setting(setting)
    for kind in TYPES:
        check(any(setting["Type"] == kind for setting in settings), f"registry: no {kind}")
    for key in FLAGS:
        check(any(setting.get(key) is True for setting in settings), f"registry: no setting has the flag {key}")
    for key in ("ScalarIncrement", "ValueExpression", "WarningText", "MinLength", "MaxLength"):
        check(any(key in setting for setting in settings), f"registry: no setting has {key}")
    choices = [entry for setting in settings for entry in setting.get("Value", [])]
    renamed = any(choice["ValueName"] != choice["ValueDisplayName"] for choice in choices)
    check(renamed, "registry: every choice is shown by its own name")
    helps = Counter(setting["HelpText"] for setting in settings)
    check(max(helps.values()) == 1, "registry: two settings have the same help text")
    check_values(settings, values)
    check_menus(settings, menus)
    check_rules(rules, by_name, values)


def main(registry_file, values_file):
    with open(registry_file, encoding="utf-8") as file:
        registry = json.load(file)
    with open(values_file, encoding="utf-8") as file:
        values = json.load(file)
    check_everything(registry, values)
    for violation in violations:
        print(violation)
    print(f"{len(violations)} violations")
    return 1 if violations else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: ExampleSystemTest.py REGISTRY VALUES")
    sys.exit(main(sys.argv[1], sys.argv[2]))
