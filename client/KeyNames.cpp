#include "KeyNames.h"

#include "Place.h"
#include "Value.h"

#include <map>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

using KeyTable = std::map<std::string, std::string_view, std::less<>>; // from the name in lower case

KeyTable Table(const std::vector<std::string_view>& names, const KeyTable& olderNames = {})
{
    KeyTable table = olderNames;
    for (const std::string_view name : names) {
        table[LowerCase(name)] = name;
    }
    return table;
}

const KeyTable& TableOf(KeyedObject kind)
{
    static const KeyTable attribute =
        Table({"AttributeName",   "CurrentValue",    "DefaultValue", "DisplayName", "DisplayOrder",
               "GrayOut",         "HelpText",        "Hidden",       "Immutable",   "IsSystemUniqueProperty",
               "LowerBound",      "MaxLength",       "MenuPath",     "MinLength",   "ReadOnly",
               "ResetRequired",   "ScalarIncrement", "Type",         "UpperBound",  "Value",
               "ValueExpression", "WarningText",     "WriteOnly"},
              {{"name", "AttributeName"}, {"values", "Value"}});
    static const KeyTable choice =
        Table({"ValueName", "ValueDisplayName"}, {{"name", "ValueName"}, {"displayname", "ValueDisplayName"}});
    static const KeyTable rule = Table({"Dependency", "DependencyFor", "Type"});
    static const KeyTable dependency = Table({"MapFrom", "MapToAttribute", "MapToProperty", "MapToValue"});
    static const KeyTable term = Table(
        {"MapFromAttribute", "MapFromCondition", "MapFromProperty", "MapFromValue", "MapTerms", "Subexpressions"});
    switch (kind) {
    case KeyedObject::Attribute:
        return attribute;
    case KeyedObject::Choice:
        return choice;
    case KeyedObject::Rule:
        return rule;
    case KeyedObject::Dependency:
        return dependency;
    case KeyedObject::Term:
        break;
    }
    return term;
}

} // namespace

void RepairKeys(json::object& object, KeyedObject kind, const std::string& place, Findings& findings)
{
    const KeyTable& table = TableOf(kind);
    std::vector<std::pair<std::string, std::string_view>> renamed;
    for (const auto& [key, member] : object) {
        const auto found = table.find(LowerCase(key));
        if (found != table.end() && found->second != std::string_view(key) && !object.contains(found->second)) {
            renamed.emplace_back(key, found->second);
        }
    }
    for (const auto& [from, to] : renamed) {
        if (object.contains(to)) {
            continue; // two keys for one
        }
        json::value member = std::move(object.at(from));
        object.erase(from);
        object[to] = std::move(member);
        findings.Add(Severity::Note, FindingKind::KeyName, Member(place, from), "the key " + Quote(from),
                     "read as " + Quote(to));
    }
}

} // namespace RedfishConfig::Client
