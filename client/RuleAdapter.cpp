#include "RuleAdapter.h"

#include "FormulaText.h"
#include "KeyNames.h"
#include "Limits.h"
#include "Place.h"
#include "RuleForm.h"
#include "RuleTerms.h"
#include "Value.h"

#include <boost/json/serialize.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** Properties of an attribute that a rule can decide, and that are no flags. */
constexpr std::string_view otherProperties[] = {
    "CurrentValue", "DefaultValue",  "DisplayName",     "DisplayOrder", "HelpText",        "LowerBound",  "MaxLength",
    "MinLength",    "ResetRequired", "ScalarIncrement", "UpperBound",   "ValueExpression", "WarningText",
};

void RepairTermKeys(json::array& terms, const std::string& place, Findings& findings)
{
    for (std::size_t position = 0; position < terms.size(); ++position) {
        json::object* term = terms[position].if_object();
        if (term == nullptr) {
            continue;
        }
        const std::string here = Element(place, position);
        RepairKeys(*term, KeyedObject::Term, here, findings);
        json::value* nested = term->if_contains("Subexpressions");
        if (nested != nullptr && nested->is_array()) {
            RepairTermKeys(nested->get_array(), Member(here, "Subexpressions"), findings);
        }
    }
}

/** A copy of the published rules with the keys that they have today. */
json::array WithTodaysKeys(const json::array& published, const std::string& place, Findings& findings)
{
    json::array rules = published;
    for (std::size_t position = 0; position < rules.size(); ++position) {
        json::object* rule = rules[position].if_object();
        if (rule == nullptr) {
            continue;
        }
        const std::string here = Element(place, position);
        RepairKeys(*rule, KeyedObject::Rule, here, findings);
        json::value* dependency = rule->if_contains("Dependency");
        if (dependency == nullptr || !dependency->is_object()) {
            continue;
        }
        const std::string inner = Member(here, "Dependency");
        RepairKeys(dependency->get_object(), KeyedObject::Dependency, inner, findings);
        json::value* mapFrom = dependency->get_object().if_contains("MapFrom");
        if (mapFrom != nullptr && mapFrom->is_array()) {
            RepairTermKeys(mapFrom->get_array(), Member(inner, "MapFrom"), findings);
        }
    }
    return rules;
}

std::unordered_set<std::string> MenuNames(const json::object& entries)
{
    std::unordered_set<std::string> names;
    const json::value* menus = entries.if_contains("Menus");
    if (menus == nullptr || !menus->is_array()) {
        return names;
    }
    for (const json::value& menu : menus->get_array()) {
        const json::object* object = menu.if_object();
        const json::value* name = object != nullptr ? object->if_contains("MenuName") : nullptr;
        if (name != nullptr && name->is_string()) {
            names.emplace(name->get_string());
        }
    }
    return names;
}

/** Whether any text in the value, and in what it holds, is one of the names, letter case apart. */
bool NamesAny(const json::value& value, const std::unordered_set<std::string>& names)
{
    if (const json::string* text = value.if_string()) {
        return names.count(LowerCase(*text)) > 0;
    }
    if (const json::array* list = value.if_array()) {
        return std::any_of(list->begin(), list->end(), [&](const json::value& item) { return NamesAny(item, names); });
    }
    const json::object* object = value.if_object();
    return object != nullptr && std::any_of(object->begin(), object->end(),
                                            [&](const auto& member) { return NamesAny(member.value(), names); });
}

/** Covers every member whose key tells that it is a value. */
void CoverValues(json::value& value)
{
    if (json::array* list = value.if_array()) {
        std::for_each(list->begin(), list->end(), CoverValues);
    } else if (json::object* object = value.if_object()) {
        for (auto& member : *object) {
            if (LowerCase(member.key()).find("value") == std::string::npos) {
                CoverValues(member.value());
            } else if (!member.value().is_null() && !member.value().is_bool()) {
                member.value() = "********";
            }
        }
    }
}

/** Where a rule leads. */
struct Outcome {
    const Attribute* target = nullptr;
    std::string property;
    bool isFlag = false;
    SettingValue value;
};

/** Why a rule is left out. */
struct LeftOut : std::runtime_error {
    LeftOut(Severity level, FindingKind kind, const std::string& text)
        : std::runtime_error(text), Level(level), Kind(kind)
    {
    }
    Severity Level;
    FindingKind Kind;
};

class RuleAdapter {
public:
    RuleAdapter(const json::object& entries, const std::string& place, const Attributes& attributes, Findings& findings)
        : m_Place(Member(place, "Dependencies")),
          m_Menus(MenuNames(entries)),
          m_Attributes(attributes),
          m_Formulas(attributes),
          m_Findings(findings),
          m_Terms(attributes, m_Formulas, findings)
    {
        for (const Attribute& attribute : attributes.List()) {
            if (attribute.Type == "password") {
                m_Passwords.insert(LowerCase(attribute.Name));
            }
        }
    }

    AdaptedRules Run(const json::array& published)
    {
        const json::array rules = WithTodaysKeys(published, m_Place, m_Findings);
        m_Survey = Survey(rules);
        for (std::size_t position = 0; position < rules.size(); ++position) {
            AdaptOne(rules[position], position, published[position]);
        }
        return std::move(m_Adapted);
    }

private:
    void AdaptOne(const json::value& rule, std::size_t position, const json::value& published)
    {
        const std::string place = Element(m_Place, position);
        const json::array* mapFrom = TermsOf(rule);
        const FormedRule formed = mapFrom != nullptr ? TellForm(*mapFrom, m_Survey) : FormedRule();
        RuleCount& count = m_Adapted.Counts[formed.Form];
        ++count.Published;
        try {
            if (mapFrom == nullptr) {
                throw LeftOut(Severity::Error, FindingKind::UnusableRule, "a rule without a list of terms");
            }
            if (formed.Form == RuleForm::None) {
                throw LeftOut(Severity::Error,
                              formed.UsesBits ? FindingKind::UnsupportedCondition : FindingKind::NoForm, formed.Defect);
            }
            AdaptFormed(rule.get_object(), formed, place, position, published);
            ++count.Adapted;
        } catch (const LeftOut& reason) {
            TellLeftOut(reason.Level, reason.Kind, reason.what(), place, published);
            ++count.LeftOut;
        }
    }

    /** A rule for a finding. Where it names a password its values are covered, wherever they stand in it. */
    std::string QuoteRule(const json::value& rule) const
    {
        if (m_Passwords.empty() || !NamesAny(rule, m_Passwords)) {
            return Quote(rule);
        }
        json::value covered = rule;
        CoverValues(covered);
        return Quote(covered);
    }

    void TellLeftOut(Severity level, FindingKind kind, const std::string& reason, const std::string& place,
                     const json::value& published)
    {
        m_Findings.Add(level, kind, place, reason, "the rule is left out: " + QuoteRule(published));
    }

    void AdaptFormed(const json::object& rule, const FormedRule& formed, const std::string& place, std::size_t position,
                     const json::value& published)
    {
        const json::object& dependency = rule.at("Dependency").get_object();
        const Outcome outcome = ReadOutcome(dependency, place);
        RuleTests tests;
        const std::vector<TermMeaning> terms = ReadTerms(formed, place, tests);
        if (!CountsAtAll(formed.Root, terms)) {
            throw LeftOut(Severity::Note, FindingKind::ControllerTerm, "a rule on the controller itself alone");
        }
        const auto disjunction = ToDisjunction(formed.Root, terms);
        if (disjunction && disjunction->empty()) {
            throw LeftOut(Severity::Warning, FindingKind::NeverHolds, "a rule whose condition never holds");
        }
        const std::optional<Joined> joined = Join(formed, terms, disjunction);
        if (!joined) {
            throw LeftOut(Severity::Error, FindingKind::TooLarge,
                          "a condition that takes more than " + std::to_string(Limits::conjunctions) +
                              " conjunctions or " + std::to_string(Limits::termsOfConjunctions) + " terms in them");
        }
        const json::object surroundings = WithoutDependency(rule);
        Decide(outcome, Measure(*joined, tests, surroundings), joined->size());
        TellFormNotes(formed, place);
        TellHeldValues(tests, place, published);
        for (const JoinedTerms& list : *joined) {
            Write(surroundings, outcome, WriteTerms(list, tests), position);
        }
    }

    Outcome ReadOutcome(const json::object& dependency, const std::string& place)
    {
        Outcome outcome;
        ReadTarget(dependency, place, outcome);
        ReadProperty(dependency, place, outcome);
        ReadOutcomeValue(dependency, place, outcome);
        return outcome;
    }

    static std::string TextMember(const json::object& dependency, std::string_view key)
    {
        const json::value* member = dependency.if_contains(key);
        const json::string* text = member != nullptr ? member->if_string() : nullptr;
        if (text == nullptr || text->empty()) {
            throw LeftOut(Severity::Error, FindingKind::UnusableRule, "a rule without " + Quote(key));
        }
        return std::string(*text);
    }

    void ReadTarget(const json::object& dependency, const std::string& place, Outcome& outcome)
    {
        const std::string name = TextMember(dependency, "MapToAttribute");
        outcome.target = m_Attributes.Find(name);
        if (outcome.target == nullptr && m_Menus.count(name) > 0) {
            throw LeftOut(Severity::Warning, FindingKind::MenuTarget,
                          "the target " + Quote(name) + " is a menu, about which the library has no rules");
        }
        if (outcome.target == nullptr) {
            throw LeftOut(Severity::Warning, FindingKind::UnknownTarget,
                          "the target " + Quote(name) + " is no attribute of the registry");
        }
        if (outcome.target->Name != name) {
            m_Findings.Add(Severity::Note, FindingKind::NameInOtherCase, place, "the target " + Quote(name),
                           "read as " + Quote(outcome.target->Name));
        }
    }

    void ReadProperty(const json::object& dependency, const std::string& place, Outcome& outcome)
    {
        const std::string published = TextMember(dependency, "MapToProperty");
        outcome.property = published;
        if (const char* flag = FindFlag(published)) {
            outcome.property = flag;
            outcome.isFlag = true;
        } else {
            const auto* const found =
                std::find_if(std::begin(otherProperties), std::end(otherProperties),
                             [&](std::string_view known) { return LowerCase(known) == LowerCase(published); });
            if (found == std::end(otherProperties)) {
                throw LeftOut(Severity::Warning, FindingKind::UnsupportedTargetProperty,
                              "the property " + Quote(published) + ", which the library does not know");
            }
            outcome.property = *found;
        }
        if (outcome.property != published) {
            m_Findings.Add(Severity::Note, FindingKind::KeyName, place, "the property " + Quote(published),
                           "read as " + Quote(outcome.property));
        }
    }

    void ReadOutcomeValue(const json::object& dependency, const std::string& place, Outcome& outcome)
    {
        const json::value* member = dependency.if_contains("MapToValue");
        if (member == nullptr || member->is_null()) {
            throw LeftOut(Severity::Error, FindingKind::UnusableRule, "a rule without \"MapToValue\"");
        }
        const SettingValue published = ReadValue(*member);
        outcome.value = published;
        if (outcome.isFlag) {
            outcome.value = ConvertToType(published, "boolean");
            if (!IsBoolenSetting(outcome.value)) {
                throw LeftOut(Severity::Error, FindingKind::OutcomeOfOtherType,
                              "a flag is to become " + Quote(*member));
            }
            if (outcome.value != published) {
                m_Findings.Add(Severity::Note, FindingKind::OutcomeOfOtherType, place,
                               "a flag is to become " + Quote(*member), "it is read as a boolean");
            }
        } else if (!published) {
            throw LeftOut(Severity::Warning, FindingKind::UnsupportedTargetProperty,
                          Quote(outcome.property) + " is to become " + KindOf(*member));
        } else if (outcome.property == "CurrentValue" || outcome.property == "DefaultValue") {
            outcome.value = TranslateValue(*outcome.target, published, Document::Registry, place,
                                           "the value that a rule gives", m_Findings);
        }
    }

    /** Tells every term that cannot be put, not only the first. */
    std::vector<TermMeaning> ReadTerms(const FormedRule& formed, const std::string& place, RuleTests& tests)
    {
        std::vector<TermMeaning> terms;
        terms.reserve(formed.Terms.size());
        std::optional<TermDefect> defect;
        for (const json::object* term : formed.Terms) {
            try {
                terms.push_back(m_Terms.Read(*term, place, tests));
            } catch (const TermDefect& found) {
                if (defect) { // the last one quotes the rule
                    m_Findings.Add(Severity::Error, defect->Kind, place, defect->what(), "the rule is left out");
                }
                defect = found;
            }
        }
        if (defect) {
            throw LeftOut(Severity::Error, defect->Kind, defect->what());
        }
        return terms;
    }

    /** A term of an adapted rule, and what joins it to the next. */
    struct JoinedTerm {
        Literal literal;
        const char* joiner; ///< null on the last
    };
    using JoinedTerms = std::vector<JoinedTerm>;
    using Joined = std::vector<JoinedTerms>; ///< a list for each adapted rule

    /** The terms of a rule that has the library's form already stay, when each of them is one test. */
    static std::optional<Joined> Join(const FormedRule& formed, const std::vector<TermMeaning>& terms,
                                      const std::optional<Disjunction>& disjunction)
    {
        const auto isOneTest = [](const TermMeaning& term) {
            return term.Counts && term.Holds.size() == 1 && term.Holds.front().size() == 1;
        };
        if (formed.Form == RuleForm::JoinerOnEarlier && std::all_of(terms.begin(), terms.end(), isOneTest)) {
            return Joined{AsItIs(formed, terms)};
        }
        if (!disjunction) {
            return std::nullopt;
        }
        Joined joined;
        for (const Conjunction& conjunction : *disjunction) {
            JoinedTerms& list = joined.emplace_back();
            for (const Literal literal : conjunction) {
                list.push_back({literal, literal != conjunction.back() ? "AND" : nullptr});
            }
        }
        return joined;
    }

    static JoinedTerms AsItIs(const FormedRule& formed, const std::vector<TermMeaning>& terms)
    {
        JoinedTerms list;
        for (std::size_t position = 0; position < terms.size(); ++position) {
            const char* joiner = nullptr;
            if (position + 1 < terms.size()) {
                const std::string published(formed.Terms[position]->at("MapTerms").get_string());
                joiner = LowerCase(published).find("and") != std::string::npos ? "AND" : "OR";
            }
            list.push_back({terms[position].Holds.front().front(), joiner});
        }
        return list;
    }

    static json::array WriteTerms(const JoinedTerms& terms, const RuleTests& tests)
    {
        json::array list;
        for (const auto& [literal, joiner] : terms) {
            json::object term = tests.Write(literal);
            if (joiner != nullptr) {
                term["MapTerms"] = joiner;
            }
            list.push_back(std::move(term));
        }
        return list;
    }

    /** Of a rule, before it is written. */
    struct Size {
        std::size_t formula = 0;
        std::size_t text = 0;
    };

    static Size Measure(const Joined& joined, const RuleTests& tests, const json::object& surroundings)
    {
        constexpr std::size_t keysOfTerm = 120;
        constexpr std::size_t keysOfRule = 100;
        Size size;
        for (const JoinedTerms& terms : joined) {
            for (const JoinedTerm& term : terms) {
                const std::size_t bytes = tests.FormulaBytes(term.literal);
                size.formula += bytes;
                size.text += bytes + keysOfTerm;
            }
        }
        size.text += joined.size() * (json::serialize(surroundings).size() + keysOfRule);
        return size;
    }

    /** The members of a rule that are kept as they are. */
    static json::object WithoutDependency(const json::object& rule)
    {
        json::object rest;
        for (const auto& [key, member] : rule) {
            if (key != "Dependency") {
                rest[key] = member;
            }
        }
        return rest;
    }

    /** Settles whether the rule can stand beside the earlier ones for its property. */
    void Decide(const Outcome& outcome, const Size& size, std::size_t rules)
    {
        Decided& decided = m_Decided[outcome.target][outcome.property];
        if (outcome.isFlag && decided.value && decided.value != outcome.value) {
            throw LeftOut(Severity::Error, FindingKind::OppositeOutcome,
                          "an earlier rule gives " + outcome.property + " of " + outcome.target->Name +
                              " the opposite value, and counts");
        }
        if (decided.formula + size.formula > Limits::formulaBytes) {
            throw LeftOut(Severity::Error, FindingKind::TooLarge,
                          "the rules for " + outcome.property + " of " + outcome.target->Name +
                              " take more than a formula of the library can hold");
        }
        if (m_Adapted.List.size() + rules > Limits::adaptedRules || m_TextBytes + size.text > Limits::ruleListBytes) {
            throw LeftOut(Severity::Error, FindingKind::TooLarge, "more rules than the library reads");
        }
        decided.value = outcome.value;
        decided.formula += size.formula;
        m_TextBytes += size.text;
    }

    void TellFormNotes(const FormedRule& formed, const std::string& place)
    {
        if (formed.AgainstSurvey) {
            m_Findings.Add(Severity::Warning, FindingKind::MixedForms, place,
                           "joiners stand on other terms than in most rules of the registry",
                           "the rule is read as its own joiners have it");
        }
    }

    /** Values that break the formulas of the library as long as a setting has them, and values that would. */
    void TellHeldValues(const RuleTests& tests, const std::string& place, const json::value& published)
    {
        const Attribute* breaking = nullptr;
        for (const Test& test : tests.List()) {
            if (test.What == Test::Kind::Exists || test.Property != "CurrentValue") {
                continue;
            }
            if (Breaks(*test.Source)) {
                breaking = test.Source;
            }
        }
        if (breaking != nullptr) {
            m_Findings.Add(Severity::Error, FindingKind::Inexpressible, place,
                           "the value put in for " + breaking->Name + " has operator characters or names a setting",
                           "the rule cannot be calculated while it has: " + QuoteRule(published));
        }
    }

    /** Whether formulas cannot hold the current value of the attribute. Tells choices of that kind at the first asking.
     */
    bool Breaks(const Attribute& source)
    {
        const auto [entry, isNew] = m_Breaks.try_emplace(&source, false);
        if (isNew) {
            TellChoices(source);
            entry->second =
                source.Held ? !m_Formulas.IsSafe(GetOptionalVarAsString(source.Held)) : BreaksByAnotherValue(source);
        }
        return entry->second;
    }

    /** Without a value, the name stays in the formula, and values of attributes that it ends in are put into it. */
    bool BreaksByAnotherValue(const Attribute& source) const
    {
        const std::vector<std::string_view> endings = m_Formulas.NamesEnding(source.Name);
        return std::any_of(endings.begin(), endings.end(), [&](std::string_view ending) {
            const Attribute* other = m_Attributes.Find(std::string(ending));
            return other != nullptr && other->Held && !m_Formulas.IsSafe(GetOptionalVarAsString(other->Held));
        });
    }

    void TellChoices(const Attribute& source)
    {
        for (const std::string& choice : source.ChoiceNames) {
            if (!m_Formulas.IsSafe(choice)) {
                m_Findings.Add(Severity::Warning, FindingKind::ValueWithOperators, Member(source.Place, "Value"),
                               "the choice " + Quote(choice) + " of " + source.Name +
                                   ", which a formula of the library cannot hold",
                               "rules that test the attribute cannot be calculated while it has this value");
            }
        }
    }

    void Write(const json::object& surroundings, const Outcome& outcome, json::array list, std::size_t position)
    {
        json::object adapted = surroundings;
        adapted["Dependency"] = json::object{{"MapFrom", std::move(list)},
                                             {"MapToAttribute", outcome.target->Name},
                                             {"MapToProperty", outcome.property},
                                             {"MapToValue", ToJson(outcome.value)}};
        m_Adapted.List.push_back(std::move(adapted));
        m_Adapted.PublishedRule.push_back(position);
    }

    struct Decided {
        SettingValue value;
        std::size_t formula = 0; // in bytes
    };

    std::string m_Place;
    std::unordered_set<std::string> m_Menus;
    std::unordered_set<std::string> m_Passwords; // their names, in lower case
    const Attributes& m_Attributes;
    FormulaText m_Formulas;
    Findings& m_Findings;
    TermReader m_Terms;
    FormSurvey m_Survey;
    AdaptedRules m_Adapted;
    std::size_t m_TextBytes = 0; // of the adapted rules
    std::unordered_map<const Attribute*, std::map<std::string, Decided>> m_Decided;
    std::unordered_map<const Attribute*, bool> m_Breaks;
};

} // namespace

AdaptedRules AdaptRules(const json::object& entries, const std::string& place, const Attributes& attributes,
                        Findings& findings)
{
    const json::value* dependencies = entries.if_contains("Dependencies");
    if (dependencies == nullptr || dependencies->is_null()) {
        return {};
    }
    if (!dependencies->is_array()) {
        findings.Add(Severity::Error, FindingKind::WrongKind, Member(place, "Dependencies"),
                     std::string("the rules are ") + KindOf(*dependencies), "there are no rules");
        return {};
    }
    return RuleAdapter(entries, place, attributes, findings).Run(dependencies->get_array());
}

} // namespace RedfishConfig::Client
