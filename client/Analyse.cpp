#include <RedfishConfig/Client/Analyse.h>

#include "Findings.h"
#include "Limits.h"
#include "Place.h"
#include "RuleCycles.h"
#include "RuleTerms.h"
#include "Value.h"

#include <boost/json/parse.hpp>

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

using Texts = std::set<std::string>;

/** An attribute, as far as rules can be judged by it. Values are known by their texts, as rules compare them. */
struct Subject {
    std::string name;
    std::string place;
    std::string type; ///< in lower case
    const json::object* object = nullptr;
    bool isClosed = false; ///< whether it can have the values listed and no others
    Texts values;
    std::optional<std::int64_t> lower, upper; ///< of an integer that has both, beside the values listed

    bool CanBe(const std::string& text) const
    {
        if (values.count(text) > 0) {
            return true;
        }
        if (!lower) {
            return !isClosed;
        }
        const auto number = ReadInteger(text);
        return number && *lower <= *number && *number <= *upper;
    }
};

/** A term of an adapted rule. */
struct Literal {
    enum class Kind { Equal, Unequal, HasValue, HasNone, Undecided };

    Kind what = Kind::Undecided;
    std::size_t subject = 0;
    std::string value;
};

using Conjunction = std::vector<Literal>;
using Disjunction = std::vector<Conjunction>;

/** For which states of one attribute an alternative holds, whatever other attributes are. */
struct Cover {
    std::size_t subject = 0;
    bool isAllBut = false; ///< every value but those listed; else those listed alone
    Texts values;
    bool withoutValue = false; ///< when there is no value too
    bool asksForValue = false; ///< tells whether there is one, on purpose
};

/** What a conjunction asks of one attribute. */
struct Demand {
    Texts equal;
    Texts unequal;
    bool hasValue = false;
    bool hasNone = false;

    bool CanHold(const Subject& subject) const
    {
        if (hasNone) {
            return equal.empty() && !hasValue;
        }
        if (!equal.empty()) {
            const std::string& only = *equal.begin();
            return equal.size() == 1 && unequal.count(only) == 0 && subject.CanBe(only);
        }
        if (!hasValue || !subject.isClosed) {
            return true;
        }
        return std::any_of(subject.values.begin(), subject.values.end(),
                           [this](const std::string& value) { return unequal.count(value) == 0; });
    }
};

std::string TextOf(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::string(*text) : std::string();
}

SettingValue ValueOf(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    return member != nullptr ? ReadValue(*member) : SettingValue();
}

std::optional<std::int64_t> NumberOf(const json::object& object, std::string_view key)
{
    const SettingValue value = ValueOf(object, key);
    return IsNumSetting(value) ? std::optional(std::get<std::int64_t>(*value)) : std::nullopt;
}

bool IsTrue(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    return member != nullptr && member->is_bool() && member->get_bool();
}

/** Without the blank that stands behind both sides of a comparison where one may be empty. */
bool TakeBlank(std::string& property, std::string& value)
{
    if (property.empty() || property.back() != ' ' || value.empty() || value.back() != ' ') {
        return false;
    }
    property.pop_back();
    value.pop_back();
    return true;
}

class Analysis {
public:
    Analysis(const RegistryDocument& registry, const Adaptation& adaptation, std::vector<Finding>& findings)
        : m_Place(registry.Place), m_Adaptation(adaptation), m_Findings(findings)
    {
        json::parse_options options;
        options.max_depth = Limits::documentDepth;
        json::error_code error;
        m_Document = json::parse(adaptation.RegistryText, error, {}, options);
        if (error) {
            return;
        }
        const json::object& entries = m_Document.at("RegistryEntries").get_object();
        ReadSubjects(entries.at("Attributes").get_array());
        ReadRules(entries.at("Dependencies").get_array());
    }

    void Run()
    {
        for (std::size_t group = 0; group < m_Rules.size(); ++group) {
            JudgeRule(m_Rules[group]);
        }
        JudgeProperties();
        for (std::size_t subject = 0; subject < m_Subjects.size(); ++subject) {
            JudgeSubject(subject);
        }
        TellCycles();
    }

private:
    /** The rules that one published rule became. */
    struct Rule {
        std::size_t published = 0;
        std::size_t target = 0;
        std::string property;
        SettingValue outcome;
        bool isDecided = true; ///< all of its alternatives are there
        Disjunction alternatives;
    };

    /** What the rules for one property of an attribute come to. */
    struct Property {
        std::vector<Cover> covers;
        std::size_t rules = 0;
        std::size_t firstRule = 0;
        bool isOutcomeTrue = true;
        std::string always; ///< how it always holds; empty when that is not known
        bool isTold = false;
    };

    std::string PlaceOfRule(std::size_t published) const { return Element(Member(m_Place, "Dependencies"), published); }

    void ReadSubjects(const json::array& attributes)
    {
        m_Subjects.reserve(attributes.size());
        for (std::size_t position = 0; position < attributes.size(); ++position) {
            const json::object& object = attributes[position].get_object();
            Subject subject;
            subject.object = &object;
            subject.name = TextOf(object, "AttributeName");
            subject.type = LowerCase(TextOf(object, "Type"));
            subject.place = Element(Member(m_Place, "Attributes"), m_Adaptation.PublishedAttribute[position]);
            ReadValues(object, subject);
            m_ByName.emplace(subject.name, position);
            m_Subjects.push_back(std::move(subject));
        }
    }

    void ReadValues(const json::object& object, Subject& subject) const
    {
        const auto add = [&subject](const SettingValue& value) {
            if (value) {
                subject.values.insert(GetOptionalVarAsString(value));
            }
        };
        const auto held = m_Adaptation.Values.find(subject.name);
        add(held != m_Adaptation.Values.end() ? held->second : ValueOf(object, "CurrentValue"));
        add(ValueOf(object, "DefaultValue"));
        if (subject.type == "boolean") {
            subject.isClosed = true;
            add(true);
            add(false);
        } else if (subject.type == "enumeration") {
            subject.isClosed = true;
            const json::value* choices = object.if_contains("Value");
            if (choices != nullptr && choices->is_array()) {
                for (const json::value& choice : choices->get_array()) {
                    subject.values.insert(TextOf(choice.get_object(), "ValueName"));
                }
            }
        } else if (subject.type == "integer") {
            ReadNumbers(object, subject);
        }
    }

    static void ReadNumbers(const json::object& object, Subject& subject)
    {
        const auto lower = NumberOf(object, "LowerBound");
        const auto upper = NumberOf(object, "UpperBound");
        if (!lower || !upper || *lower > *upper) {
            return;
        }
        if (static_cast<std::uint64_t>(*upper) - static_cast<std::uint64_t>(*lower) >= Limits::enumeratedNumbers) {
            subject.lower = lower;
            subject.upper = upper;
            return;
        }
        subject.isClosed = true;
        for (std::int64_t number = *lower;; ++number) {
            subject.values.insert(std::to_string(number));
            if (number == *upper) {
                return;
            }
        }
    }

    void ReadRules(const json::array& rules)
    {
        for (std::size_t position = 0; position < rules.size(); ++position) {
            const json::object& dependency = rules[position].at("Dependency").get_object();
            const std::size_t published = m_Adaptation.PublishedRule[position];
            if (m_Rules.empty() || m_Rules.back().published != published) {
                Rule& rule = m_Rules.emplace_back();
                rule.published = published;
                rule.target = m_ByName.at(TextOf(dependency, "MapToAttribute"));
                rule.property = TextOf(dependency, "MapToProperty");
                rule.outcome = ValueOf(dependency, "MapToValue");
            }
            ReadTerms(dependency.at("MapFrom").get_array(), m_Rules.back());
        }
    }

    /** Terms are grouped to the right, so what follows a term is worked out before it. */
    void ReadTerms(const json::array& terms, Rule& rule)
    {
        Disjunction alternatives;
        std::size_t size = 0;
        for (std::size_t position = terms.size(); position-- > 0;) {
            const json::object& term = terms[position].get_object();
            Literal literal = ReadTerm(term, rule);
            const std::string joiner = position + 1 < terms.size() ? TextOf(term, "MapTerms") : "";
            if (!rule.isDecided) {
                continue; // only what is read is still of interest
            }
            if (joiner == "AND") {
                size += alternatives.size();
                std::for_each(alternatives.begin(), alternatives.end(),
                              [&literal](Conjunction& conjunction) { conjunction.push_back(literal); });
            } else {
                ++size;
                alternatives.push_back({std::move(literal)});
            }
            rule.isDecided = size <= Limits::termsOfConjunctions;
        }
        std::move(alternatives.begin(), alternatives.end(), std::back_inserter(rule.alternatives));
    }

    Literal ReadTerm(const json::object& term, const Rule& rule)
    {
        Literal literal;
        literal.subject = m_ByName.at(TextOf(term, "MapFromAttribute"));
        const std::string condition = TextOf(term, "MapFromCondition");
        std::string property = TextOf(term, "MapFromProperty");
        const SettingValue value = ValueOf(term, "MapFromValue");
        literal.value = value ? GetOptionalVarAsString(value) : std::string();
        TakeBlank(property, literal.value);
        if (property != "CurrentValue") {
            return literal;
        }
        AddEdge(rule, literal.subject);
        const bool isEqual = condition == "EQU";
        if (isEqual || condition == "NEQ") {
            literal.what = value ? (isEqual ? Literal::Kind::Equal : Literal::Kind::Unequal)
                                 : (isEqual ? Literal::Kind::HasNone : Literal::Kind::HasValue);
        }
        return literal;
    }

    /** An attribute is read by another one once, or twice when the rules for its value do so too. */
    void AddEdge(const Rule& rule, std::size_t read)
    {
        const bool isOfValue = rule.property == "CurrentValue";
        if (m_Known.insert({rule.target, read, false}).second) {
            m_Edges.push_back({rule.target, read});
            m_RuleOfEdge.push_back(m_Rules.size() - 1);
        }
        if (isOfValue && m_Known.insert({rule.target, read, true}).second) {
            m_ValueEdges.push_back({rule.target, read});
            m_RuleOfValueEdge.push_back(m_Rules.size() - 1);
        }
    }

    /** What the conjunction asks, by attribute. */
    static std::map<std::size_t, Demand> Demands(const Conjunction& conjunction)
    {
        std::map<std::size_t, Demand> demands;
        for (const Literal& literal : conjunction) {
            if (literal.what == Literal::Kind::Undecided) {
                continue;
            }
            Demand& demand = demands[literal.subject];
            switch (literal.what) {
            case Literal::Kind::Equal:
                demand.equal.insert(literal.value);
                break;
            case Literal::Kind::Unequal:
                demand.unequal.insert(literal.value);
                break;
            case Literal::Kind::HasValue:
                demand.hasValue = true;
                break;
            default:
                demand.hasNone = true;
                break;
            }
        }
        return demands;
    }

    static Cover CoverOf(std::size_t subject, const Demand& demand)
    {
        Cover cover;
        cover.subject = subject;
        cover.asksForValue = demand.hasValue;
        if (demand.hasNone) {
            cover.withoutValue = true;
        } else if (!demand.equal.empty()) {
            cover.values = demand.equal;
        } else {
            cover.isAllBut = true;
            cover.values = demand.unequal;
            cover.withoutValue = !demand.hasValue;
        }
        return cover;
    }

    void JudgeRule(const Rule& rule)
    {
        Property& property = m_Properties[{rule.target, rule.property}];
        if (property.rules++ == 0) {
            property.firstRule = rule.published;
            property.isOutcomeTrue = !IsBoolenSetting(rule.outcome) || std::get<bool>(*rule.outcome);
        }
        if (!rule.isDecided) {
            return;
        }
        bool canHold = false;
        std::string contradiction;
        std::vector<Cover> covers;
        for (const Conjunction& conjunction : rule.alternatives) {
            const auto demands = Demands(conjunction);
            const auto broken = std::find_if(demands.begin(), demands.end(), [this](const auto& demand) {
                return !demand.second.CanHold(m_Subjects[demand.first]);
            });
            if (broken != demands.end()) {
                contradiction = m_Subjects[broken->first].name;
                continue;
            }
            canHold = true;
            const bool isAllDecided = std::all_of(conjunction.begin(), conjunction.end(), [](const Literal& literal) {
                return literal.what != Literal::Kind::Undecided;
            });
            if (isAllDecided && demands.size() == 1) {
                covers.push_back(CoverOf(demands.begin()->first, demands.begin()->second));
            }
        }
        const std::string decides = rule.property + " of " + m_Subjects[rule.target].name;
        if (!canHold) {
            Tell(Severity::Warning, FindingKind::NeverHolds, PlaceOfRule(rule.published),
                 "a rule for " + decides + " that needs values of " + contradiction + " that it cannot have" +
                     (rule.alternatives.size() > 1 ? ", or the like, in every alternative" : ""),
                 "it never fires");
            return;
        }
        const std::string always = HowAlways(covers);
        if (!always.empty()) {
            Tell(Severity::Warning, FindingKind::AlwaysHolds, PlaceOfRule(rule.published),
                 "a rule for " + decides + " that holds " + always, "it fires all the time");
            property.always = always;
            property.isTold = true;
        }
        std::move(covers.begin(), covers.end(), std::back_inserter(property.covers));
    }

    /** "whatever A is", or as much of it as is known; empty when some value of each attribute is left over. */
    std::string HowAlways(const std::vector<Cover>& covers) const
    {
        std::map<std::size_t, std::vector<const Cover*>> bySubject;
        for (const Cover& cover : covers) {
            bySubject[cover.subject].push_back(&cover);
        }
        for (const auto& [number, list] : bySubject) {
            const Subject& subject = m_Subjects[number];
            if (!CoversAllValues(subject, list)) {
                continue;
            }
            const bool withoutValue =
                std::any_of(list.begin(), list.end(), [](const Cover* cover) { return cover->withoutValue; });
            if (!withoutValue &&
                std::any_of(list.begin(), list.end(), [](const Cover* cover) { return cover->asksForValue; })) {
                continue; // whether there is a value is what the rules are about
            }
            return withoutValue ? "whatever " + subject.name + " is" : "whatever value " + subject.name + " has";
        }
        return "";
    }

    static bool CoversAllValues(const Subject& subject, const std::vector<const Cover*>& covers)
    {
        const Texts* left = nullptr; // of the covers that leave out few values, the first one's
        for (const Cover* cover : covers) {
            if (cover->isAllBut && left == nullptr) {
                left = &cover->values;
            }
        }
        if (left == nullptr && !subject.isClosed) {
            return false;
        }
        Texts open = left != nullptr ? *left : subject.values;
        for (const Cover* cover : covers) {
            if (!cover->isAllBut) {
                for (const std::string& value : cover->values) {
                    open.erase(value);
                }
                continue;
            }
            for (auto value = open.begin(); value != open.end();) {
                value = cover->values.count(*value) == 0 ? open.erase(value) : std::next(value);
            }
        }
        return std::none_of(open.begin(), open.end(), [&](const std::string& value) { return subject.CanBe(value); });
    }

    void JudgeProperties()
    {
        for (auto& [key, property] : m_Properties) {
            if (property.rules < 2 || property.isTold || FindFlag(key.second) == nullptr) {
                continue;
            }
            property.always = HowAlways(property.covers);
            if (!property.always.empty()) {
                Tell(Severity::Warning, FindingKind::AlwaysHolds, PlaceOfRule(property.firstRule),
                     std::to_string(property.rules) + " rules for " + key.second + " of " + m_Subjects[key.first].name +
                         ", the first of them here, of which one holds " + property.always,
                     "together they fire all the time");
            }
        }
    }

    void JudgeSubject(std::size_t number)
    {
        const Subject& subject = m_Subjects[number];
        TellUnchangeable(number);
        const SettingValue value = ValueOf(*subject.object, "DefaultValue");
        if (!value) {
            return;
        }
        if (subject.type == "integer" && IsNumSetting(value)) {
            CheckBounds(subject, std::get<std::int64_t>(*value), "LowerBound", "UpperBound",
                        "the default " + GetOptionalVarAsString(value));
        } else if (subject.type == "string" || subject.type == "password") {
            const std::size_t length = GetOptionalVarAsString(value).size();
            CheckBounds(subject, static_cast<std::int64_t>(length), "MinLength", "MaxLength",
                        subject.type == "password" ? "the default"
                                                   : "the default of " + std::to_string(length) + " bytes");
        }
    }

    void CheckBounds(const Subject& subject, std::int64_t measure, const char* lowerKey, const char* upperKey,
                     const std::string& what)
    {
        const auto lower = NumberOf(*subject.object, lowerKey);
        const auto upper = NumberOf(*subject.object, upperKey);
        const bool isContradictory = lower && upper && *lower > *upper; // which is told elsewhere
        if (isContradictory || ((!lower || *lower <= measure) && (!upper || measure <= *upper))) {
            return;
        }
        const bool isBelow = lower && measure < *lower;
        Tell(Severity::Warning, FindingKind::DefaultOutOfBounds, Member(subject.place, "DefaultValue"),
             what + " of " + subject.name + " is " + (isBelow ? "below " : "above ") + (isBelow ? lowerKey : upperKey) +
                 " " + std::to_string(isBelow ? *lower : *upper),
             "the setting cannot be set back to it");
    }

    void TellUnchangeable(std::size_t number)
    {
        const Subject& subject = m_Subjects[number];
        for (const char* flag : {"ReadOnly", "GrayOut", "Immutable", "Hidden"}) {
            const auto found = m_Properties.find({number, flag});
            const bool hasRules = found != m_Properties.end();
            const bool isTakenAway = hasRules && !found->second.isOutcomeTrue;
            if (hasRules && !isTakenAway && !found->second.always.empty()) {
                Tell(Severity::Warning, FindingKind::NeverChangeable, subject.place,
                     std::string("the rules for ") + flag + " of " + subject.name + " hold " + found->second.always,
                     "the setting can never be changed");
                return;
            }
            // what the registry itself hides is protected, and answers to who asks for such settings
            if (std::string_view(flag) != "Hidden" && IsTrue(*subject.object, flag) && !isTakenAway) {
                Tell(Severity::Note, FindingKind::NeverChangeable, subject.place,
                     subject.name + " is " + flag + " in itself, and no rule takes that away",
                     "the setting can never be changed");
                return;
            }
        }
    }

    void TellCycles()
    {
        std::set<std::vector<std::size_t>> told;
        for (RuleCycle& cycle : FindCycles(m_Subjects.size(), m_ValueEdges)) {
            TellCycle(cycle, m_ValueEdges, m_RuleOfValueEdge, true);
            told.insert(std::move(cycle.Tangled));
        }
        for (const RuleCycle& cycle : FindCycles(m_Subjects.size(), m_Edges)) {
            if (told.count(cycle.Tangled) == 0) {
                TellCycle(cycle, m_Edges, m_RuleOfEdge, false);
            }
        }
    }

    void TellCycle(const RuleCycle& cycle, const std::vector<RuleEdge>& edges, const std::vector<std::size_t>& rules,
                   bool isOfValues)
    {
        std::string way;
        for (const std::size_t edge : cycle.Edges) {
            const Rule& rule = m_Rules[rules[edge]];
            way += (way.empty() ? "" : ", ") + rule.property + " of " + m_Subjects[rule.target].name + " reads " +
                   m_Subjects[edges[edge].To].name;
        }
        if (cycle.Tangled.size() > cycle.Edges.size()) {
            way += " (of " + std::to_string(cycle.Tangled.size()) + " attributes that are entangled so)";
        }
        Tell(isOfValues ? Severity::Warning : Severity::Note,
             isOfValues ? FindingKind::ValueCycle : FindingKind::RuleCycle,
             PlaceOfRule(m_Rules[rules[cycle.Edges.front()]].published), way,
             isOfValues ? "what the controller makes of such values is not foreseen"
                        : "one change can lock or unlock another; rules are answered for the values as they are");
    }

    void Tell(Severity level, FindingKind kind, std::string place, std::string found, std::string done)
    {
        m_Findings.push_back({level, kind, Document::Registry, std::move(place), std::move(found), std::move(done)});
    }

    std::string m_Place;
    const Adaptation& m_Adaptation;
    std::vector<Finding>& m_Findings;
    json::value m_Document;
    std::vector<Subject> m_Subjects;
    std::unordered_map<std::string, std::size_t> m_ByName;
    std::vector<Rule> m_Rules;
    std::map<std::pair<std::size_t, std::string>, Property> m_Properties;
    std::set<std::tuple<std::size_t, std::size_t, bool>> m_Known; // edges
    std::vector<RuleEdge> m_Edges, m_ValueEdges;
    std::vector<std::size_t> m_RuleOfEdge, m_RuleOfValueEdge; // positions in m_Rules
};

} // namespace

std::vector<Finding> Analyse(const RegistryDocument& registry, const Adaptation& adaptation)
{
    std::vector<Finding> findings;
    if (!adaptation.RegistryText.empty()) {
        Analysis(registry, adaptation, findings).Run();
    }
    return findings;
}

} // namespace RedfishConfig::Client
