#pragma once

#include <RedfishConfig/SettingValue.h>

#include <boost/json.hpp>

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/**
 * Reads the rules of a registry as they are published, one by one, and says what they give for the values of a system.
 * Written plainly, and with nothing of what adapts registries.
 */
namespace Published {

namespace json = boost::json;
using RedfishConfig::SettingValue;
using RedfishConfig::SettingValueMap;

/** Unknown: depends on something that the registry does not have. */
enum class Truth { False, Unknown, True };

inline Truth Of(bool holds)
{
    return holds ? Truth::True : Truth::False;
}
inline Truth And(Truth a, Truth b)
{
    return std::min(a, b);
}
inline Truth Or(Truth a, Truth b)
{
    return std::max(a, b);
}
inline Truth Not(Truth a)
{
    return a == Truth::Unknown ? a : Of(a == Truth::False);
}

inline std::string Text(const json::value& value)
{
    if (value.is_string()) {
        return std::string(value.get_string());
    }
    return json::serialize(value);
}

class Registry {
public:
    explicit Registry(json::value document) : m_Document(std::move(document))
    {
        for (const json::value& attribute : Entries().at("Attributes").as_array()) {
            m_Attributes.emplace(Text(attribute.at("AttributeName")), &attribute.get_object());
        }
        for (const json::value& rule : Rules()) {
            for (const json::value& term : rule.at("Dependency").at("MapFrom").as_array()) {
                m_HasJoiners |= term.as_object().contains("MapTerms");
            }
        }
    }

    const json::object& Entries() const { return m_Document.at("RegistryEntries").as_object(); }

    const json::array& Rules() const
    {
        static const json::array none;
        const json::value* rules = Entries().if_contains("Dependencies");
        return rules != nullptr ? rules->as_array() : none;
    }

    const std::map<std::string, const json::object*>& Attributes() const { return m_Attributes; }

    const json::object* Attribute(const std::string& name) const
    {
        const auto found = m_Attributes.find(name);
        return found != m_Attributes.end() ? found->second : nullptr;
    }

    /** Whether the rule holds under the values. */
    Truth Holds(const json::value& rule, const SettingValueMap& values) const
    {
        const json::array& terms = rule.at("Dependency").at("MapFrom").as_array();
        const bool hasJoinerFirst = !JoinersOf(terms.front()).empty();
        return hasJoinerFirst ? FromTheRight(terms, 0, values) : Stack(terms, values);
    }

    /** What a property of a setting is under the values: what the rules give, else the registry's own flag. */
    bool Property(const std::string& name, const std::string& property, const SettingValueMap& values) const
    {
        const json::value* flag = m_Attributes.at(name)->if_contains(property);
        const bool own = property != "Hidden" && flag != nullptr && flag->is_bool() && flag->get_bool();
        for (const json::value* rule : RulesFor(name, property)) {
            if (Holds(*rule, values) == Truth::True) {
                return Text(rule->at("Dependency").at("MapToValue")) == "true";
            }
        }
        return own;
    }

    const std::vector<const json::value*>& RulesFor(const std::string& name, const std::string& property) const
    {
        if (m_RulesFor.empty()) {
            for (const json::value& rule : Rules()) {
                const json::value& to = rule.at("Dependency");
                m_RulesFor[{Text(to.at("MapToAttribute")), Text(to.at("MapToProperty"))}].push_back(&rule);
            }
        }
        return m_RulesFor[{name, property}];
    }

    /** The current value: the system's, else the registry's own. */
    std::optional<std::string> Held(const json::object& attribute, const SettingValueMap& values) const
    {
        const auto found = values.find(Text(attribute.at("AttributeName")));
        if (found != values.end()) {
            std::string text;
            return RedfishConfig::GetOptionalVarAsString(found->second, text) ? std::optional(text) : std::nullopt;
        }
        const json::value* own = attribute.if_contains("CurrentValue");
        return own != nullptr && !own->is_null() ? std::optional(Text(*own)) : std::nullopt;
    }

private:
    static std::vector<std::string> JoinersOf(const json::value& term)
    {
        std::vector<std::string> joiners;
        const json::value* mapTerms = term.as_object().if_contains("MapTerms");
        std::string word;
        for (const char character : mapTerms != nullptr ? Text(*mapTerms) + "," : std::string()) {
            if (character != ',') {
                word += character;
            } else if (!word.empty()) {
                joiners.push_back(std::exchange(word, {}));
            }
        }
        return joiners;
    }

    Truth FromTheRight(const json::array& terms, std::size_t position, const SettingValueMap& values) const
    {
        const Truth first = Term(terms[position], values);
        if (position + 1 == terms.size()) {
            return first;
        }
        const Truth rest = FromTheRight(terms, position + 1, values);
        return JoinersOf(terms[position]).front() == "AND" ? And(first, rest) : Or(first, rest);
    }

    Truth Stack(const json::array& terms, const SettingValueMap& values) const
    {
        std::vector<Truth> stack;
        for (const json::value& term : terms) {
            stack.push_back(Term(term, values));
            for (const std::string& joiner : JoinersOf(term)) {
                const Truth right = stack.back();
                stack.pop_back();
                stack.back() = joiner == "AND" ? And(stack.back(), right) : Or(stack.back(), right);
            }
        }
        if (!m_HasJoiners) {
            return *std::max_element(stack.begin(), stack.end());
        }
        if (stack.size() != 1) {
            throw std::runtime_error("a rule in no form");
        }
        return stack.back();
    }

    Truth Term(const json::value& term, const SettingValueMap& values) const
    {
        const json::object* attribute = Attribute(Text(term.at("MapFromAttribute")));
        if (attribute == nullptr) {
            return Truth::Unknown;
        }
        if (Text(term.at("MapFromProperty")) != "CurrentValue") {
            throw std::runtime_error("a term on another property");
        }
        const std::string condition = Text(term.at("MapFromCondition"));
        const std::optional<std::string> held = Held(*attribute, values);
        const json::value* wanted = term.as_object().if_contains("MapFromValue");
        if (wanted == nullptr || wanted->is_null()) {
            return Of(held.has_value() == (condition == "NEQ"));
        }
        if (condition == "EQU" || condition == "NEQ") {
            const bool equal = held && AreEqual(*attribute, *held, Text(*wanted));
            return Of(equal == (condition == "EQU"));
        }
        return Of(held && IsInOrder(*attribute, *held, condition, Text(*wanted)));
    }

    static bool AreEqual(const json::object& attribute, const std::string& held, const std::string& wanted)
    {
        if (held == wanted) {
            return true;
        }
        const json::value* choices = attribute.if_contains("Value");
        if (choices == nullptr || !choices->is_array()) {
            return false;
        }
        for (const json::value& choice : choices->get_array()) { // either name of a choice speaks for it
            const json::value* displayName = choice.as_object().if_contains("ValueDisplayName");
            const std::set<std::string> names{Text(choice.at("ValueName")),
                                              displayName != nullptr ? Text(*displayName) : std::string()};
            if (names.count(held) > 0 && names.count(wanted) > 0) {
                return true;
            }
        }
        return false;
    }

    static bool IsInOrder(const json::object& attribute, const std::string& held, const std::string& condition,
                          const std::string& wanted)
    {
        int order = held.compare(wanted);
        if (Text(attribute.at("Type")) == "Integer") {
            const std::int64_t a = std::stoll(held);
            const std::int64_t b = std::stoll(wanted);
            order = a < b ? -1 : (a > b ? 1 : 0);
        }
        return (condition == "GTR" && order > 0) || (condition == "GEQ" && order >= 0) ||
               (condition == "LSS" && order < 0) || (condition == "LEQ" && order <= 0);
    }

    json::value m_Document;
    std::map<std::string, const json::object*> m_Attributes;
    mutable std::map<std::pair<std::string, std::string>, std::vector<const json::value*>> m_RulesFor;
    bool m_HasJoiners = false;
};

} // namespace Published
