#include "FormulaWriter.h"

#include "../Limits.h"
#include "../intake/JsonPointer.h"
#include "../intake/KeyNames.h"
#include "../intake/Quote.h"
#include "../model/ValueConversion.h"
#include "Alternatives.h"
#include "FormulaHazards.h"
#include "FormulaTerms.h"
#include "JsonCopy.h"
#include "TestStates.h"
#include "common/Ascii.h"

#include <boost/json/serialize.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** Appends terms, joined by AND; what follows is joined to the last of them by @p joiner. */
void Append(Chain& chain, const FormulaTerms& terms, const char* joiner)
{
    for (const FormulaTerm& term : terms) {
        chain.push_back({term, "AND"});
    }
    chain.back().Joiner = joiner;
}

/** How much there is to go through in the alternatives. */
std::size_t SizeOf(const Alternatives& alternatives)
{
    std::size_t size = 0;
    for (const Alternative& alternative : alternatives.Any) {
        for (const Requirement& requirement : alternative) {
            size += 1 + requirement.States.ListedTexts().size() + requirement.States.Intervals().size();
        }
    }
    return size;
}

/** Whether the lists, joined by OR, can be the end of a chain: all but the last are one term. */
bool CanEndAChain(const TermLists& lists)
{
    return std::all_of(lists.Any.begin(), lists.Any.end() - 1,
                       [](const FormulaTerms& list) { return list.size() == 1; });
}

/** When a rule, alone or among others, gives the outcome that is written. */
struct Piece {
    std::size_t Rule = 0;
    Alternatives When;
    std::optional<Chain> AsItIs; ///< the rule's own terms, which are written in place of several alternatives
};

/** What is to be written for a flag of a setting. */
struct Plan {
    bool Flag = false;   ///< what the flag itself becomes
    bool Outcome = true; ///< of all pieces
    std::vector<Piece> Pieces;
};

/** A rule on its way. */
struct Draft {
    std::size_t Position = 0; ///< of the published rule
    std::size_t Target = noAttribute;
    Property Decides = Property::ReadOnly;
    json::value Outcome;
    json::array Terms;
};

/** Why a pair of a setting and a property cannot be written. */
struct Failure {
    Client::Defect Reason;
    std::size_t Rule = 0;
};

class FormulaWriter {
public:
    FormulaWriter(const Evaluation& evaluation, const SystemValues& values, Findings& findings)
        : m_Evaluation(evaluation),
          m_Values(values),
          m_Model(values.Of()),
          m_Findings(findings),
          m_Known(values),
          m_Hazards(m_Model.Attributes()),
          m_Terms(m_Known, m_Hazards),
          m_IsLeftOut(m_Model.Rules().size(), false),
          m_PublishedBytes(m_Model.Rules().size(), 0)
    {
        for (const JsonMember& rule : m_Model.Document().Entries.Member("Dependencies")) {
            m_Published.push_back(rule.Value);
        }
    }

    WrittenFormulas Run()
    {
        m_Written.Flags.resize(m_Model.Attributes().size());
        for (std::size_t attribute = 0; attribute < m_Model.Attributes().size(); ++attribute) {
            for (std::size_t number = 0; number < propertyCount; ++number) {
                const auto property = static_cast<Property>(number);
                if (IsFlag(property) && property != Property::ResetRequired) {
                    WriteFlag(attribute, property);
                } else {
                    WriteOther(attribute, property);
                }
            }
        }
        WriteDrafts();
        CountForms();
        return std::move(m_Written);
    }

private:
    void WriteFlag(std::size_t attribute, Property flag)
    {
        if (!m_Model.IsComplete(attribute, flag)) {
            SetFlag(attribute, flag, true);
            const std::string& name = m_Model.Attributes()[attribute].Name;
            m_Findings.About(name);
            m_Findings.Add(Severity::Error, FindingKind::TooLarge, m_Model.PointerToAttribute(attribute),
                           "the menus of " + name + " have more rules and flags than can be kept",
                           std::string(Name(flag)) + " of " + name + " is true in the adapted registry");
            ReportUndecided(attribute, flag, "Its menus have more rules and flags than can be kept.");
            return;
        }
        const IndexRange rules = m_Model.RulesFor(attribute, flag);
        if (rules.empty()) {
            SetFlag(attribute, flag, m_Model.FlagsOf(attribute).Has(flag));
            return;
        }
        const Plan plan = PlanFor(attribute, flag);
        std::vector<Draft> drafts;
        const std::optional<Failure> failure = Write(plan, attribute, flag, drafts);
        if (failure) {
            Lock(attribute, flag, *failure);
            return;
        }
        SetFlag(attribute, flag, plan.Flag && !m_IsAlways);
        if (m_IsAlways && plan.Outcome) {
            MakeTrue(attribute, flag, plan.Pieces[*m_IsAlways].Rule);
        } else if (!m_IsAlways) {
            Keep(std::move(drafts));
        }
    }

    void SetFlag(std::size_t attribute, Property flag, bool isSet)
    {
        if (isSet) {
            m_Written.Flags[attribute].Set(flag);
        }
    }

    Plan PlanFor(std::size_t attribute, Property flag)
    {
        m_Effort = 0;
        const FlagOrigin origin = m_Evaluation.OriginOf(attribute, flag);
        const bool staysSet = origin == FlagOrigin::Marked || origin == FlagOrigin::Unexplained;
        if (staysSet && flag == Property::Hidden) {
            return PlanForHidden(attribute);
        }
        Plan plan{staysSet, !staysSet, {}};
        Alternatives noEarlier = Alternatives::Always(); // rule of the other outcome is true
        bool isOnlyOutcome = true;
        for (const std::size_t rule : m_Model.RulesFor(attribute, flag)) {
            const Condition& condition = m_Model.Rules()[rule].When;
            if (GivesTrue(m_Model.Rules()[rule]) == plan.Outcome) {
                AddPiece(plan, rule, Wanted::True, noEarlier);
            } else {
                isOnlyOutcome = false;
                noEarlier = Combine(Resolve(condition, Wanted::NotTrue, m_Known), noEarlier);
            }
        }
        if (origin == FlagOrigin::Explained) { // an unknown rule leaves the flag as it is
            plan.Pieces.resize(isOnlyOutcome ? 0 : plan.Pieces.size());
            for (const std::size_t rule : m_Model.RulesFor(attribute, flag)) {
                AddPiece(plan, rule, Wanted::NotFalse, noEarlier);
            }
        }
        return plan;
    }

    void AddPiece(Plan& plan, std::size_t rule, Wanted wanted, const Alternatives& also)
    {
        const Condition& condition = m_Model.Rules()[rule].When;
        Piece piece{rule, Combine(Resolve(condition, wanted, m_Known), also), {}};
        const bool isSeveral = piece.When.Reason || piece.When.Any.size() > 1;
        if (wanted == Wanted::True && also.IsAlways() && isSeveral) {
            piece.AsItIs = m_Terms.ReadChain(condition);
        }
        plan.Pieces.push_back(std::move(piece));
    }

    /** What a rule needs together with what the rules before it need, unless that has been too much to go through. */
    Alternatives Combine(Alternatives own, const Alternatives& earlier)
    {
        m_Effort += SizeOf(earlier);
        if (m_Effort > Limits::effortOfPair) {
            return {{}, {FindingKind::TooLarge, "is one of too many rules with different outcomes"}};
        }
        return Both(std::move(own), earlier);
    }

    /**
     * No rule of the core takes a Hidden flag away. Where rules of the registry do, the flag is not written, and one
     * rule says when it stays: read from the last rule, each true rule goes before what is behind it.
     */
    Plan PlanForHidden(std::size_t attribute)
    {
        const IndexRange rules = m_Model.RulesFor(attribute, Property::Hidden);
        const bool isTakenAway = std::any_of(rules.begin(), rules.end(),
                                             [this](std::size_t rule) { return !GivesTrue(m_Model.Rules()[rule]); });
        if (!isTakenAway) {
            return {true, true, {}};
        }
        Alternatives stays = Alternatives::Always();
        for (std::size_t place = rules.size(); place-- > 0;) {
            const Rule& rule = m_Model.Rules()[rules[place]];
            if (GivesTrue(rule)) {
                std::vector<Alternatives> either{Resolve(rule.When, Wanted::True, m_Known), std::move(stays)};
                stays = Either(std::move(either));
            } else {
                stays = Combine(Resolve(rule.When, Wanted::NotTrue, m_Known), stays);
            }
        }
        Plan plan{false, true, {}};
        plan.Pieces.push_back({rules[0], std::move(stays), {}});
        return plan;
    }

    /** Once, although a rule on a menu is for several settings. */
    void LeaveOut(std::size_t rule)
    {
        if (!m_IsLeftOut[rule]) {
            m_IsLeftOut[rule] = true;
            m_Written.LeftOut.push_back(m_Model.Rules()[rule].Position);
        }
    }

    /** Rules for other properties stand alone; the core has no verdict for them. */
    void WriteOther(std::size_t attribute, Property property)
    {
        if (property == Property::ResetRequired) {
            SetFlag(attribute, property, m_Model.FlagsOf(attribute).Has(property));
        }
        for (const std::size_t rule : m_Model.RulesFor(attribute, property)) {
            if (property == Property::Choices) {
                LeaveOut(rule); // the core has no such rules
                continue;
            }
            Plan plan;
            AddPiece(plan, rule, Wanted::True, Alternatives::Always());
            std::vector<Draft> drafts;
            std::optional<Failure> failure = Write(plan, attribute, property, drafts);
            if (!failure && m_IsAlways) {
                if (const Defect defect = WriteAlways(attribute, property, rule)) {
                    failure = Failure{defect, rule};
                }
            }
            if (failure) {
                Report(attribute, *failure, "the rule is left out");
                LeaveOut(rule);
            } else if (!m_IsAlways) {
                Keep(std::move(drafts));
            }
        }
    }

    /** The drafts of a plan, and in m_IsAlways the piece that is always so, if one is. */
    std::optional<Failure> Write(const Plan& plan, std::size_t attribute, Property property, std::vector<Draft>& drafts)
    {
        m_IsAlways.reset();
        m_Pair = Pair();
        m_Sources.clear();
        for (const std::size_t rule : m_Model.RulesFor(attribute, property)) {
            m_Pair.BytesLeft += Limits::growthOfRules * PublishedBytes(rule);
        }
        for (std::size_t piece = 0; piece < plan.Pieces.size(); ++piece) {
            const std::size_t rule = plan.Pieces[piece].Rule;
            const Defect defect = WritePiece(plan.Pieces[piece]);
            if (defect) {
                return Failure{defect, rule};
            }
            if (m_Pair.IsAlways) {
                m_IsAlways = piece;
                drafts.clear();
                return std::nullopt;
            }
            for (json::array& terms : m_Pair.Chains) {
                drafts.push_back({m_Model.Rules()[rule].Position, attribute, property,
                                  OutcomeToJson(plan, rule, attribute, property), std::move(terms)});
            }
            m_Pair.Chains.clear();
        }
        if (m_Drafts.size() + drafts.size() > Limits::adaptedRules || m_Bytes + m_Pair.Bytes > Limits::ruleListBytes) {
            return Failure{{FindingKind::TooLarge, "is beyond what the core reads"}, plan.Pieces.front().Rule};
        }
        return std::nullopt;
    }

    json::value OutcomeToJson(const Plan& plan, std::size_t rule, std::size_t attribute, Property property) const
    {
        if (IsFlag(property) && property != Property::ResetRequired) {
            return plan.Outcome;
        }
        Value value = std::get<Value>(m_Model.Rules()[rule].Outcome);
        if (property == Property::CurrentValue || property == Property::DefaultValue) {
            value = m_Values.Translate(attribute, value);
        }
        const SettingValue revealed = Reveal(value);
        return revealed ? VariantToJson(*revealed) : json::value();
    }

    /** How large the published rule is. */
    std::size_t PublishedBytes(std::size_t rule)
    {
        std::size_t& bytes = m_PublishedBytes[rule];
        if (bytes == 0) {
            bytes = ToText(m_Published[m_Model.Rules()[rule].Position]).size();
        }
        return bytes;
    }

    Defect WritePiece(const Piece& piece)
    {
        if (piece.AsItIs) {
            return AddChain(*piece.AsItIs);
        }
        if (piece.When.Reason) {
            return piece.When.Reason;
        }
        for (const Alternative& alternative : piece.When.Any) {
            if (Defect defect = WriteAlternative(alternative)) {
                return defect;
            }
        }
        return {};
    }

    Defect WriteAlternative(const Alternative& alternative)
    {
        std::vector<TermLists> parts;
        for (const Requirement& requirement : alternative) {
            TermLists lists = m_Terms.Write(requirement);
            if (lists.Reason) {
                return lists.Reason;
            }
            if (!lists.IsAlways && lists.Any.empty()) {
                return {}; // never
            }
            if (!lists.IsAlways) {
                parts.push_back(std::move(lists));
            }
        }
        if (parts.empty()) {
            m_Pair.IsAlways = true;
            return {};
        }
        std::size_t last = parts.size(); // the part with the most lists that one rule can have at its end
        for (std::size_t part = 0; part < parts.size(); ++part) {
            if (CanEndAChain(parts[part]) &&
                (last == parts.size() || parts[part].Any.size() >= parts[last].Any.size())) {
                last = part;
            }
        }
        if (last < parts.size()) {
            std::rotate(parts.begin() + static_cast<std::ptrdiff_t>(last),
                        parts.begin() + static_cast<std::ptrdiff_t>(last) + 1, parts.end());
        }
        Chain chain;
        return WriteChains(parts, 0, last < parts.size(), chain);
    }

    /** A chain for each choice of lists, one of each part; the lists of the last part are one end if they can be. */
    Defect WriteChains(const std::vector<TermLists>& parts, std::size_t part, bool joinsLast, Chain& chain)
    {
        if (part == parts.size()) {
            return AddChain(chain);
        }
        const std::size_t size = chain.size();
        const bool isEnd = joinsLast && part + 1 == parts.size();
        for (const FormulaTerms& list : parts[part].Any) {
            Append(chain, list, isEnd ? "OR" : "AND");
            if (!isEnd) {
                if (Defect defect = WriteChains(parts, part + 1, joinsLast, chain)) {
                    return defect;
                }
                chain.erase(chain.begin() + static_cast<std::ptrdiff_t>(size), chain.end());
            }
        }
        if (isEnd) {
            Defect defect = WriteChains(parts, part + 1, joinsLast, chain);
            chain.erase(chain.begin() + static_cast<std::ptrdiff_t>(size), chain.end());
            return defect;
        }
        return {};
    }

    /** One rule, unless there is the same already. */
    Defect AddChain(const Chain& chain)
    {
        json::array terms;
        std::size_t formula = 0;
        for (const JoinedTerm& joined : chain) {
            json::object term = m_Terms.ToJson(joined.Term);
            if (&joined != &chain.back()) {
                term["MapTerms"] = joined.Joiner;
            }
            terms.push_back(std::move(term));
            formula += m_Terms.FormulaBytes(joined.Term);
            m_Sources.insert(joined.Term.Source);
        }
        const std::string text = json::serialize(terms);
        if (!m_Pair.Known.insert(text).second) {
            return {};
        }
        constexpr std::size_t rest = 200; // of a rule as JSON
        m_Pair.Bytes += text.size() + rest;
        m_Pair.Formula += formula;
        if (m_Pair.Formula > Limits::formulaBytes) {
            return {FindingKind::TooLarge, "is one of those that take more than a formula of the core can hold"};
        }
        if (chain.size() > Limits::termsOfRule || m_Pair.Bytes > m_Pair.BytesLeft) {
            return {FindingKind::TooLarge, "takes many times more terms than it is published with"};
        }
        m_Pair.Chains.push_back(std::move(terms));
        return {};
    }

    void Keep(std::vector<Draft> drafts)
    {
        m_Bytes += m_Pair.Bytes;
        for (Draft& draft : drafts) {
            m_Drafts.push_back(std::move(draft));
        }
        for (const std::size_t source : m_Sources) {
            ReportChoices(source);
        }
    }

    /** By a rule that holds whatever the values are, or else by the flag itself. */
    void MakeTrue(std::size_t attribute, Property flag, std::size_t rule)
    {
        if (WriteAlways(attribute, flag, rule)) {
            SetFlag(attribute, flag, true);
        }
    }

    /** A rule that holds whatever the values are, unless there is a defect. Of the flags all but ResetRequired become
     * true. */
    Defect WriteAlways(std::size_t attribute, Property property, std::size_t rule)
    {
        const std::optional<std::size_t> source = AskedAlways(attribute);
        if (!source) {
            return {FindingKind::Inexpressible,
                    "always holds, and there is no setting that a formula could ask for that"};
        }
        if (m_Drafts.size() == Limits::adaptedRules) {
            return {FindingKind::TooLarge, "is beyond what the core reads"};
        }
        json::object missing = m_Terms.ToJson({*source, Property::CurrentValue, Comparison::Equal, {}});
        missing["MapTerms"] = "OR";
        json::array terms{std::move(missing)};
        terms.push_back(m_Terms.ToJson({*source, Property::CurrentValue, Comparison::NotEqual, {}}));
        m_Drafts.push_back({m_Model.Rules()[rule].Position, attribute, property,
                            OutcomeToJson(Plan(), rule, attribute, property), std::move(terms)});
        return {};
    }

    /** The setting that can be asked whether it has a value: the target, or any other. */
    std::optional<std::size_t> AskedAlways(std::size_t target)
    {
        if (m_Terms.CanBeAsked(target)) {
            return target;
        }
        while (m_AnyAsked < m_Model.Attributes().size() && !m_Terms.CanBeAsked(m_AnyAsked)) {
            ++m_AnyAsked;
        }
        return m_AnyAsked < m_Model.Attributes().size() ? std::optional(m_AnyAsked) : std::nullopt;
    }

    /** What cannot be decided is true: nothing becomes changeable because it is not understood. */
    void Lock(std::size_t attribute, Property flag, const Failure& failure)
    {
        MakeTrue(attribute, flag, failure.Rule);
        const std::string what = std::string(Name(flag)) + " of " + m_Model.Attributes()[attribute].Name;
        Report(attribute, failure, what + " is true in the adapted registry, whatever the values are");
        ReportUndecided(attribute, flag,
                        "Rule " + std::to_string(m_Model.Rules()[failure.Rule].Position) + " " + failure.Reason.Why +
                            ".");
    }

    void ReportUndecided(std::size_t attribute, Property flag, std::string why)
    {
        UndecidedFlag undecided{m_Model.Attributes()[attribute].Name, flag, std::move(why), {}};
        for (const std::size_t rule : m_Model.RulesFor(attribute, flag)) {
            undecided.Rules.push_back(m_Model.Rules()[rule].Position);
            m_IsLeftOut[rule] = true;
        }
        m_Written.Undecided.push_back(std::move(undecided));
    }

    void Report(std::size_t attribute, const Failure& failure, std::string consequence)
    {
        const std::size_t position = m_Model.Rules()[failure.Rule].Position;
        m_Findings.About(m_Model.Attributes()[attribute].Name, position);
        m_Findings.Add(Severity::Error, failure.Reason.Kind, m_Model.PointerToRule(failure.Rule),
                       "rule " + std::to_string(position) + " " + failure.Reason.Why, std::move(consequence));
    }

    /** Once for an attribute: choices that break the formulas which read it. */
    void ReportChoices(std::size_t attribute)
    {
        if (!m_Reported.insert(attribute).second) {
            return;
        }
        const std::string& name = m_Model.Attributes()[attribute].Name;
        m_Findings.About(name);
        std::string pointer; // looked up once
        for (const Choice& choice : m_Values.ChoicesOf(attribute)) {
            if (!m_Hazards.IsSafe(choice.Name)) {
                pointer = pointer.empty() ? m_Model.PointerToMember(attribute, Property::Choices) : pointer;
                m_Findings.Add(Severity::Warning, FindingKind::ValueWithOperators, pointer,
                               "the choice " + Quote(choice.Name) + " of " + name +
                                   " has operators or the name of a setting in it",
                               "adapt again when the setting has this value");
            }
        }
    }

    /** In the order of the published rules. */
    void WriteDrafts()
    {
        std::stable_sort(m_Drafts.begin(), m_Drafts.end(),
                         [](const Draft& left, const Draft& right) { return left.Position < right.Position; });
        for (std::size_t number = 0; number < m_Drafts.size(); ++number) {
            Draft& draft = m_Drafts[number];
            const bool isFirst = number == 0 || m_Drafts[number - 1].Position != draft.Position;
            json::object rule = MembersOf(draft, isFirst);
            rule["Dependency"] = json::object{{"MapFrom", std::move(draft.Terms)},
                                              {"MapToAttribute", m_Model.Attributes()[draft.Target].Name},
                                              {"MapToProperty", Name(draft.Decides)},
                                              {"MapToValue", std::move(draft.Outcome)}};
            m_Written.Dependencies.push_back(std::move(rule));
            m_Written.PublishedRule.push_back(draft.Position);
        }
    }

    /** What a rule has beside its "Dependency". Members that the schema does not know are kept in the first rule. */
    json::object MembersOf(const Draft& draft, bool isFirst)
    {
        const JsonValue published = m_Published[draft.Position];
        const KeyedObject<RuleKey> known(published, m_KeyOrder);
        json::object members;
        for (const auto& [key, name] : {std::pair(RuleKey::Type, "Type"), {RuleKey::DependencyFor, "DependencyFor"}}) {
            if (known[key].IsText()) {
                members[name] = Copy(known[key]);
            }
        }
        for (const JsonMember& member : published) {
            const bool isKnown = Ascii::EqualIgnoringCase(member.Key, "Type") ||
                                 Ascii::EqualIgnoringCase(member.Key, "Dependency") ||
                                 Ascii::EqualIgnoringCase(member.Key, "DependencyFor");
            if (!isFirst || isKnown) {
                continue;
            }
            if (!IsTooDeep(member.Value, m_Model.Document())) {
                members[member.Key] = Copy(member.Value);
                continue;
            }
            m_Findings.About(m_Model.Attributes()[draft.Target].Name, draft.Position);
            m_Findings.Add(
                Severity::Error, FindingKind::TooLarge,
                Member(Element(Member(m_Model.Document().Pointer, "Dependencies"), draft.Position), member.Key),
                "a member of a rule with more objects and lists in each other than the core reads", "it is left out");
        }
        return members;
    }

    void CountForms()
    {
        std::sort(m_Written.LeftOut.begin(), m_Written.LeftOut.end());
        for (const auto& [form, count] : m_Model.Forms()) {
            m_Written.Counts[form] = {count.Published, count.Read, count.LeftOut};
        }
        for (std::size_t rule = 0; rule < m_IsLeftOut.size(); ++rule) {
            if (m_IsLeftOut[rule]) {
                AdaptedCount& count = m_Written.Counts[m_Model.Rules()[rule].Form];
                --count.Adapted;
                ++count.LeftOut;
            }
        }
    }

    /** What is written for a setting and a property. */
    struct Pair {
        std::vector<json::array> Chains; ///< of the piece at hand
        std::set<std::string> Known;     ///< their texts, and those of earlier pieces
        std::size_t Formula = 0;         ///< in bytes
        std::size_t Bytes = 0;
        std::size_t BytesLeft = Limits::bytesOfPair;
        bool IsAlways = false;
    };

    const Evaluation& m_Evaluation;
    const SystemValues& m_Values;
    const Model& m_Model;
    Findings& m_Findings;
    TestStates m_Known;
    FormulaHazards m_Hazards;
    FormulaTermWriter m_Terms;
    WrittenFormulas m_Written;
    std::vector<Draft> m_Drafts;
    KeyOrder m_KeyOrder;
    std::vector<JsonValue> m_Published; // the rules, by position
    std::vector<bool> m_IsLeftOut;      // by rule
    std::vector<std::size_t> m_PublishedBytes;
    std::size_t m_Bytes = 0;  // of all drafts
    std::size_t m_Effort = 0; // for rules of different outcomes of the pair at hand
    Pair m_Pair;
    std::optional<std::size_t> m_IsAlways;
    std::set<std::size_t> m_Sources; // that the pair at hand reads
    std::set<std::size_t> m_Reported;
    std::size_t m_AnyAsked = 0;
};

} // namespace

WrittenFormulas WriteFormulas(const Evaluation& evaluation, const SystemValues& values, Findings& findings)
{
    return FormulaWriter(evaluation, values, findings).Run();
}

} // namespace RedfishConfig::Client
