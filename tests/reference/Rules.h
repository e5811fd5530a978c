#pragma once

#include "Formula.h"

#include <boost/json.hpp>

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Reference {

/** A value of a setting, or none. */
using Value = std::optional<std::variant<std::string, std::int64_t, bool>>;

inline std::string ToText(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&*value)) {
        return *text;
    }
    if (const auto* number = std::get_if<std::int64_t>(&*value)) {
        return std::to_string(*number);
    }
    return std::get<bool>(*value) ? "true" : "false";
}

inline const boost::json::value* Member(const boost::json::value* json, const char* key)
{
    return json != nullptr && json->is_object() ? json->get_object().if_contains(key) : nullptr;
}

inline std::optional<std::int64_t> ToInteger(const boost::json::value* json)
{
    if (json == nullptr || !json->is_number()) {
        return std::nullopt;
    }
    boost::json::error_code error;
    const auto number = json->to_number<std::int64_t>(error);
    return error ? std::nullopt : std::optional<std::int64_t>(number);
}

inline Value ToValue(const boost::json::value* json)
{
    if (json == nullptr) {
        return std::nullopt;
    }
    if (json->is_string()) {
        return std::string(json->get_string());
    }
    if (json->is_bool()) {
        return json->get_bool();
    }
    if (const auto number = ToInteger(json)) {
        return *number;
    }
    return std::nullopt;
}

inline std::string ToString(const boost::json::value* json)
{
    return json != nullptr && json->is_string() ? std::string(json->get_string()) : std::string();
}

struct Term {
    std::string Attribute;
    std::string Condition;
    std::string Property;
    Value Compared;
    std::string Joiner;
};

struct Rule {
    std::size_t Position = 0;
    std::string Attribute;
    std::string Property;
    Value MapToValue;
    std::vector<Term> Terms;
};

struct Expression {
    Value MapToValue;
    std::string Formula;
    std::string DisplayText;
    std::vector<std::size_t> Rules;
};

using Maps = std::map<std::string, std::map<std::string, Expression>>;

/** The rules of a registry and the formulas built from them. */
class RuleBook {
public:
    /** @return whether the list could be read */
    bool Read(const boost::json::value& registry, Lines& log)
    {
        if (m_Read) {
            return true;
        }
        const boost::json::value* list = Member(Member(&registry, "RegistryEntries"), "Dependencies");
        if (list == nullptr) {
            log.emplace_back(4, "The schema not include dependency information.");
        } else if (!list->is_array()) {
            log.emplace_back(4, "Parse settings dependency failed.");
            log.emplace_back(4, "Failed to parse the settings dependency info.");
            return false;
        } else {
            ReadList(list->get_array());
        }
        m_Read = true;
        return true;
    }

    void BuildAll(Maps& maps, Lines& log) const
    {
        for (const Rule& rule : m_Rules) {
            Build(rule, maps, log);
        }
    }

    /** @return the names that the rules for a setting read */
    std::vector<std::string> BuildFor(const std::string& setting, Maps& maps, Lines& log) const
    {
        std::vector<std::string> related;
        for (const Rule& rule : m_Rules) {
            if (Upper(rule.Attribute) == Upper(setting) && Build(rule, maps, log)) {
                AddSources(rule, related);
            }
        }
        return related;
    }

    /** The names that the rules of some formulas read, in the rules' order. */
    std::vector<std::string> SourcesOf(const std::map<std::string, Expression>& expressions) const
    {
        std::vector<std::string> names;
        for (const Rule& rule : m_Rules) {
            for (const auto& [property, expression] : expressions) {
                if (std::count(expression.Rules.begin(), expression.Rules.end(), rule.Position) > 0) {
                    AddSources(rule, names);
                    break;
                }
            }
        }
        return names;
    }

private:
    void ReadList(const boost::json::array& list)
    {
        for (std::size_t position = 0; position < list.size(); ++position) {
            const boost::json::value* dependency = Member(&list[position], "Dependency");
            Rule rule;
            rule.Position = position;
            rule.Attribute = ToString(Member(dependency, "MapToAttribute"));
            rule.Property = ToString(Member(dependency, "MapToProperty"));
            rule.MapToValue = ToValue(Member(dependency, "MapToValue"));
            const boost::json::value* terms = Member(dependency, "MapFrom");
            if (terms != nullptr && terms->is_array()) {
                for (const boost::json::value& json : terms->get_array()) {
                    Term term{ToString(Member(&json, "MapFromAttribute")), ToString(Member(&json, "MapFromCondition")),
                              ToString(Member(&json, "MapFromProperty")), ToValue(Member(&json, "MapFromValue")),
                              ToString(Member(&json, "MapTerms"))};
                    term.Joiner = term.Joiner == "OR" ? "||" : term.Joiner == "AND" ? "&&" : term.Joiner;
                    if (term.Attribute != "SYSACS") {
                        rule.Terms.push_back(term);
                    }
                }
            }
            if (!rule.Terms.empty()) {
                m_Rules.push_back(rule);
            }
        }
    }

    static void AddSources(const Rule& rule, std::vector<std::string>& names)
    {
        for (const Term& term : rule.Terms) {
            if (!term.Attribute.empty() && std::count(names.begin(), names.end(), term.Attribute) == 0) {
                names.push_back(term.Attribute);
            }
        }
    }

    static bool Build(const Rule& rule, Maps& maps, Lines& log)
    {
        static const std::map<std::string, std::string> conditions{
            {"EQU", "=="}, {"NEQ", "!="}, {"GTR", ">"}, {"GEQ", ">="}, {"LSS", "<"}, {"LEQ", "<="}, {"EQ", "=="}};
        if (rule.Attribute.empty() || rule.Property.empty() || !rule.MapToValue) {
            log.emplace_back(4, "Invalid dependency(MapTo) information for " + rule.Attribute);
            return false;
        }
        std::string formula;
        bool usable = true;
        for (const Term& term : rule.Terms) {
            const auto condition = conditions.find(term.Condition);
            if (term.Attribute.empty() || term.Property.empty() || condition == conditions.end()) {
                log.emplace_back(4, "Invalid dependency(MapFrom) information for " + rule.Attribute);
                usable = false;
                break;
            }
            const std::string left = "(" + term.Attribute + "." + term.Property + condition->second;
            if (term.Compared) {
                formula += left + ToText(term.Compared) + ")";
            } else if (term.Property != "CurrentValue") {
                log.emplace_back(4,
                                 "Found the dependency information that needs to compare setting property with null." +
                                     left + "nullopt)");
                usable = false;
                break;
            } else if (condition->second == "==") {
                formula += "(" + term.Attribute + " not exist)";
            } else if (condition->second == "!=") {
                formula += "(" + term.Attribute + " exist)";
            } else {
                log.emplace_back(4, "Found the dependency information that needs to compare relative size with null." +
                                        left + "nullopt)");
                usable = false;
                break;
            }
            formula += term.Joiner;
        }
        if (!formula.empty()) {
            formula = "(" + formula + ")";
        }
        if (formula.empty()) {
            log.emplace_back(4, "The expression is empty.");
        }
        if (!usable) {
            log.emplace_back(4, "The dependency information is invalid and throw away it. The expression:" + formula);
        }
        if (formula.empty() || !usable) {
            return false;
        }
        Store(rule, formula, maps, log);
        return true;
    }

    static void Store(const Rule& rule, const std::string& formula, Maps& maps, Lines& log)
    {
        auto& properties = maps[rule.Attribute];
        const auto known = properties.find(rule.Property);
        if (known == properties.end()) {
            properties[rule.Property] = {rule.MapToValue, formula, formula, {rule.Position}};
        } else if (std::count(known->second.Rules.begin(), known->second.Rules.end(), rule.Position) > 0) {
            // built before: neither joined again nor compared
        } else if (known->second.MapToValue == rule.MapToValue) {
            known->second.DisplayText += "||" + formula;
            known->second.Rules.push_back(rule.Position);
            std::sort(known->second.Rules.begin(), known->second.Rules.end());
        } else {
            log.emplace_back(4, "Found one property has opposite MapToValue, need comfirm with BMC and UEFI.");
        }
        log.emplace_back(4, "The property: " + rule.Property + " of setting: " + rule.Attribute +
                                " expression is: " + properties[rule.Property].DisplayText);
    }

    bool m_Read = false;
    std::vector<Rule> m_Rules;
};

/** Puts values into a formula: every key, in ascending byte order, everywhere. */
inline std::string Substitute(std::string formula, const std::map<std::string, std::string>& texts)
{
    for (const auto& [key, text] : texts) {
        std::size_t position = 0;
        while (!key.empty() && (position = formula.find(key, position)) != std::string::npos) {
            formula.replace(position, key.size(), text);
            position += text.size();
        }
    }
    return formula;
}

} // namespace Reference
