#include "RuleReader.h"

#include "../Limits.h"
#include "../intake/JsonPointer.h"
#include "../intake/KeyNames.h"
#include "../intake/Quote.h"
#include "RuleForm.h"
#include "TermReader.h"
#include "ValueConversion.h"
#include "common/Ascii.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** The keys of rules and of what is in them. */
struct RuleKeyOrders {
    KeyOrder Rules, Dependencies, Terms, Choices;
};

/** A published rule, its members found. */
struct Published {
    KeyedObject<RuleKey> Outer;
    KeyedObject<DependencyKey> Inner;
    bool HasTerms;
    std::vector<ListedTerm> Terms;

    Published(const JsonValue& rule, RuleKeyOrders& orders)
        : Outer(rule, orders.Rules),
          Inner(Outer[RuleKey::Dependency], orders.Dependencies),
          HasTerms(Inner[DependencyKey::MapFrom].IsArray()),
          Terms(HasTerms ? ListTerms(Inner[DependencyKey::MapFrom], orders.Terms) : std::vector<ListedTerm>())
    {
    }
};

class RuleReader {
public:
    RuleReader(std::string pointer, const std::vector<Attribute>& attributes, const NameTable& names,
               ChoiceNumbersOfAll& choices, const std::vector<Menu>& menus, Findings& findings)
        : m_Pointer(std::move(pointer)),
          m_Attributes(attributes),
          m_Names(names),
          m_Menus(menus),
          m_Findings(findings),
          m_Terms(attributes, names, choices, findings)
    {
    }

    ReadRules Run(const JsonValue& list)
    {
        std::vector<std::pair<std::size_t, Published>> withTerms; // by position; the others are found again
        FormSurvey survey;
        std::size_t position = 0;
        for (const JsonMember& element : list) {
            Published rule(element.Value, m_Orders);
            survey.Add(rule.Terms);
            if (rule.HasTerms) {
                withTerms.emplace_back(position, std::move(rule));
            }
            ++position;
        }
        auto next = withTerms.cbegin();
        position = 0;
        for (const JsonMember& element : list) {
            if (next != withTerms.cend() && next->first == position) {
                ReadOne((next++)->second, position, survey);
            } else {
                ReadOne(Published(element.Value, m_Orders), position, survey);
            }
            ++position;
        }
        m_Findings.About("");
        for (const auto& [menus, properties] : m_LeftOut) {
            m_Read.LeftOutOnMenus.resize(m_Menus.size());
            for (const std::size_t menu : *menus) {
                m_Read.LeftOutOnMenus[menu] |= properties;
            }
        }
        return std::move(m_Read);
    }

private:
    void ReadOne(const Published& published, std::size_t position, const FormSurvey& survey)
    {
        Rule rule;
        rule.Position = position;
        rule.TargetName = published.Inner[DependencyKey::MapToAttribute].Text();
        rule.DependencyFor = published.Outer[RuleKey::DependencyFor].Text();
        m_Findings.About("", position);
        if (published.Outer.HasRenamedKeys() || published.Inner.HasRenamedKeys()) {
            published.Outer.ReportKeys(Pointer(rule), m_Findings);
            published.Inner.ReportKeys(Member(Pointer(rule), published.Outer.KeyOf(RuleKey::Dependency)), m_Findings);
        }
        const bool hasMeaning = ReadTarget(rule, published) && ReadProperty(rule, published) &&
                                ReadOutcome(rule, published.Inner[DependencyKey::MapToValue]);
        FormedRule formed;
        m_Terms.Begin(m_Pointer, position);
        if (published.HasTerms) {
            formed = JoinTerms(published.Terms, survey, m_ReadTerm);
        } else {
            formed.When.Cause = "a rule without a list of terms";
        }
        ReportForm(formed, published.HasTerms, rule);
        RuleCount& count = m_Read.Forms[formed.Form];
        ++count.Published;
        ++(hasMeaning ? count.Read : count.LeftOut);
        if (hasMeaning) {
            rule.Form = formed.Form;
            rule.When = std::move(formed.When);
            m_Read.Rules.push_back(std::move(rule));
        }
    }

    std::string Pointer(const Rule& rule) const { return Element(m_Pointer, rule.Position); }

    void ReportForm(const FormedRule& formed, bool hasTerms, const Rule& rule)
    {
        if (formed.Form == RuleForm::None) {
            const FindingKind kind = !hasTerms         ? FindingKind::UnusableRule
                                     : formed.UsesBits ? FindingKind::UnsupportedCondition
                                                       : FindingKind::NoForm;
            m_Findings.Add(Severity::Error, kind, Pointer(rule), formed.When.Cause,
                           "whether the rule holds is never known");
        } else if (formed.AgainstSurvey) {
            m_Findings.Add(Severity::Warning, FindingKind::MixedForms, Pointer(rule),
                           "joiners are on other terms than in most rules of the registry",
                           "the rule is read as its own joiners have it");
        } else if (!Counts(formed.When)) {
            m_Findings.Add(Severity::Note, FindingKind::ControllerTerm, Pointer(rule),
                           "a rule on the controller itself alone", "the rule does not count");
        }
    }

    bool LeaveOut(Severity level, FindingKind kind, const Rule& rule, std::string found)
    {
        m_Findings.Add(level, kind, Pointer(rule), std::move(found), "the rule is left out");
        return false;
    }

    bool ReadTarget(Rule& rule, const Published& published)
    {
        if (rule.TargetName.empty()) {
            return LeaveOut(Severity::Error, FindingKind::UnusableRule, rule, "a rule without \"MapToAttribute\"");
        }
        if (const std::optional<std::size_t> target = m_Names.Find(rule.TargetName)) {
            const std::string& name = m_Attributes[*target].Name;
            m_Findings.About(name, rule.Position);
            if (name != rule.TargetName) {
                m_Findings.Add(Severity::Note, FindingKind::NameInOtherCase, Pointer(rule),
                               "the target " + Quote(rule.TargetName), "it is read as " + Quote(name));
                rule.TargetName = name;
            }
            rule.Target = *target;
            return true;
        }
        const std::vector<std::size_t>& menus = MenusNamed(rule.TargetName);
        if (menus.empty()) {
            return LeaveOut(Severity::Warning, FindingKind::UnknownTarget, rule,
                            "the target " + Quote(rule.TargetName) + " is neither an attribute nor a menu");
        }
        if (menus.size() > Limits::menuRuleTargets - m_MenuTargets) {
            if (const auto property = FindProperty(published.Inner[DependencyKey::MapToProperty].Text())) {
                m_LeftOut[&menus].set(static_cast<std::size_t>(*property));
            }
            return LeaveOut(Severity::Error, FindingKind::TooLarge, rule,
                            "more menus are targets of rules than can be kept");
        }
        m_MenuTargets += menus.size();
        rule.TargetMenus = menus;
        return true;
    }

    /** The menus of that name; else those whose names differ in the case of letters alone. */
    const std::vector<std::size_t>& MenusNamed(const std::string& name)
    {
        static const std::vector<std::size_t> none;
        if (m_MenusByName.empty()) { // most registries have no rules on menus
            for (std::size_t menu = 0; menu < m_Menus.size(); ++menu) {
                m_MenusByName[m_Menus[menu].Name].push_back(menu);
                m_MenusByFolded[Ascii::ToLower(m_Menus[menu].Name)].push_back(menu);
            }
        }
        if (const auto found = m_MenusByName.find(name); found != m_MenusByName.end()) {
            return found->second;
        }
        const auto found = m_MenusByFolded.find(Ascii::ToLower(name));
        return found != m_MenusByFolded.end() ? found->second : none;
    }

    bool ReadProperty(Rule& rule, const Published& published)
    {
        const JsonValue member = published.Inner[DependencyKey::MapToProperty];
        if (member.Text().empty()) {
            return LeaveOut(Severity::Error, FindingKind::UnusableRule, rule, "a rule without \"MapToProperty\"");
        }
        const std::optional<Property> property = FindProperty(member.Text());
        if (!property) {
            return LeaveOut(Severity::Warning, FindingKind::UnsupportedTargetProperty, rule,
                            "the property " + Quote(member.Text()) + ", which attributes do not have");
        }
        const bool isOfOneSetting = *property == Property::CurrentValue || *property == Property::DefaultValue;
        if (!rule.TargetMenus.empty() && isOfOneSetting) {
            return LeaveOut(Severity::Warning, FindingKind::MenuTarget, rule,
                            "the target " + Quote(rule.TargetName) + " is a menu, which has no property " +
                                Quote(member.Text()));
        }
        rule.Decides = *property;
        if (member.Text() != Name(*property)) {
            m_Findings.Add(Severity::Note, FindingKind::KeyName, Pointer(rule), "the property " + Quote(member.Text()),
                           "it is read as " + Quote(Name(*property)));
        }
        return true;
    }

    bool ReadOutcome(Rule& rule, const JsonValue& member)
    {
        if (!member.Exists() || member.IsNull()) {
            return LeaveOut(Severity::Error, FindingKind::UnusableRule, rule, "a rule without \"MapToValue\"");
        }
        if (rule.Decides == Property::Choices) {
            return ReadChoiceList(rule, member);
        }
        const Value published = ReadValue(member);
        const AttributeType type = OutcomeType(rule);
        Value value = ConvertToType(published, type);
        const bool isOfPassword = rule.Target != noAttribute && m_Attributes[rule.Target].IsPassword();
        const AttributeType shownType = isOfPassword ? AttributeType::Password : type;
        const std::string what = std::string(Name(rule.Decides)) + " is to become " +
                                 (HasValue(published) ? QuoteValue(value, shownType) : std::string(KindOf(member)));
        if (!HasValue(value) || (rule.Decides != Property::CurrentValue && rule.Decides != Property::DefaultValue &&
                                 !IsOfType(value, type))) {
            return LeaveOut(Severity::Error, FindingKind::OutcomeOfOtherType, rule, what);
        }
        if (value != published && !isOfPassword) {
            m_Findings.Add(Severity::Note, FindingKind::OutcomeOfOtherType, Pointer(rule),
                           std::string(Name(rule.Decides)) + " is to become " + ToQuotedText(published),
                           "it is read as " + ToQuotedText(value));
        }
        rule.Outcome = std::move(value);
        return true;
    }

    /** Of which type the values of the property are. */
    AttributeType OutcomeType(const Rule& rule) const
    {
        switch (rule.Decides) {
        case Property::CurrentValue:
        case Property::DefaultValue:
            return m_Attributes[rule.Target].Type;
        case Property::LowerBound:
        case Property::UpperBound:
        case Property::ScalarIncrement:
        case Property::MinLength:
        case Property::MaxLength:
        case Property::DisplayOrder:
            return AttributeType::Integer;
        default:
            return IsFlag(rule.Decides) ? AttributeType::Boolean : AttributeType::String;
        }
    }

    bool ReadChoiceList(Rule& rule, const JsonValue& member)
    {
        if (rule.Target != noAttribute && m_Attributes[rule.Target].IsPassword()) {
            return LeaveOut(Severity::Error, FindingKind::OutcomeOfOtherType, rule, "choices for a password");
        }
        std::vector<std::string> names;
        const auto add = [&](const JsonValue& element) {
            const KeyedObject<ChoiceKey> choice(element, m_Orders.Choices);
            const Value name = ConvertToType(ReadValue(element.IsObject() ? choice[ChoiceKey::ValueName] : element),
                                             AttributeType::String);
            if (const auto* text = std::get_if<std::string>(&name)) {
                names.push_back(*text);
            }
            return HasValue(name);
        };
        bool isList = true;
        if (member.IsArray()) {
            for (const JsonMember& element : member) {
                isList = add(element.Value) && isList;
            }
        } else {
            isList = add(member);
        }
        if (!isList) {
            return LeaveOut(Severity::Error, FindingKind::OutcomeOfOtherType, rule,
                            "the choices are to become what is no list of names");
        }
        rule.Outcome = std::move(names);
        return true;
    }

    std::string m_Pointer;
    RuleKeyOrders m_Orders;
    const std::vector<Attribute>& m_Attributes;
    const NameTable& m_Names;
    const std::vector<Menu>& m_Menus;
    std::map<std::string, std::vector<std::size_t>, std::less<>> m_MenusByName;      // filled when asked for
    std::map<std::string, std::vector<std::size_t>, std::less<>> m_MenusByFolded;    // by name in lower case
    std::size_t m_MenuTargets = 0;                                                   // of all rules
    std::map<const std::vector<std::size_t>*, std::bitset<propertyCount>> m_LeftOut; // by the menus of a name
    Findings& m_Findings;
    TermReader m_Terms;
    const TermReading m_ReadTerm = [this](const KeyedObject<TermKey>& term) { return m_Terms.Read(term); };
    ReadRules m_Read;
};

} // namespace

ReadRules ReadDependencies(const JsonValue& list, const std::string& pointer, const std::vector<Attribute>& attributes,
                           const NameTable& names, ChoiceNumbersOfAll& choices, const std::vector<Menu>& menus,
                           Findings& findings)
{
    return RuleReader(pointer, attributes, names, choices, menus, findings).Run(list);
}

} // namespace RedfishConfig::Client
