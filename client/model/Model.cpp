#include <RedfishConfig/Client/Model.h>

#include "../Limits.h"
#include "../intake/Findings.h"
#include "../intake/JsonPointer.h"
#include "../intake/KeyNames.h"
#include "../intake/Quote.h"
#include "AttributeReader.h"
#include "ChoiceNumbers.h"
#include "ConditionPrograms.h"
#include "MenuPaths.h"
#include "NameTable.h"
#include "RuleReader.h"

#include <algorithm>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** A member that is an array, or Missing; reports one that is something else. */
JsonValue ArrayMember(const RegistryDocument& document, const char* key, bool isRequired, Findings& findings)
{
    const JsonValue member = document.Entries.Member(key);
    if (member.IsArray()) {
        return member;
    }
    const bool isAbsent = !member.Exists() || member.IsNull();
    if (isRequired || !isAbsent) {
        findings.Add(Severity::Error, FindingKind::WrongKind, Member(document.Pointer, key),
                     std::string("\"") + key + "\" is " + (isAbsent ? "missing" : KindOf(member)),
                     isRequired ? "there are no settings" : "there are none");
    }
    return {};
}

/** The attributes that a condition reads the values of; one may come several times. */
void CollectSources(const Condition& condition, std::vector<std::size_t>& sources)
{
    if (condition.Asked.Source != noAttribute && condition.Asked.Of == Property::CurrentValue) {
        sources.push_back(condition.Asked.Source);
    }
    for (const Condition& part : condition.Parts) {
        CollectSources(part, sources);
    }
}

std::size_t SizeOf(const std::string& text)
{
    constexpr std::size_t bytesOfPart = 16;
    return 1 + text.size() / bytesOfPart;
}

/** How many parts a condition has; a long operand is several. */
std::size_t SizeOf(const Condition& condition)
{
    const auto* operand = std::get_if<std::string>(&condition.Asked.Operand);
    std::size_t size = operand != nullptr ? SizeOf(*operand) : 1;
    for (const Condition& part : condition.Parts) {
        size += SizeOf(part);
    }
    return size;
}

/** What it takes to look at a rule for one setting: the parts of its condition, and what it gives. */
std::size_t SizeOf(const Rule& rule)
{
    std::size_t size = SizeOf(rule.When);
    if (const auto* names = std::get_if<std::vector<std::string>>(&rule.Outcome)) {
        for (const std::string& name : *names) {
            size += SizeOf(name);
        }
    } else if (const auto* text = std::get_if<std::string>(&std::get<Value>(rule.Outcome))) {
        size += SizeOf(*text);
    }
    return size;
}

/** Brings numbers into order, each once. */
void KeepEachOnce(std::vector<std::size_t>& numbers)
{
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

/** Pairs of a key and an item, in the order in which they are added to a key. */
using Pairs = std::vector<std::pair<std::size_t, std::size_t>>;

} // namespace

Model::Model() = default;
Model::~Model() = default;

/** Fills a model. */
class ModelReader {
public:
    using PropertySet = Model::PropertySet;

    static std::shared_ptr<const Model> Read(const RegistryDocument& document)
    {
        const std::shared_ptr<Model> model(new Model);
        model->m_Document = {document.Json, document.Registry, document.Entries, document.Pointer, {}};
        Client::Findings findings(model->m_Findings);
        if (document.Usable()) {
            model->m_Id = document.Registry.Member("Id").Text();
            model->m_Language = document.Registry.Member("Language").Text();
            model->m_RegistryVersion = document.Registry.Member("RegistryVersion").Text();
            model->m_Attributes = ReadAttributes(ArrayMember(document, "Attributes", true, findings),
                                                 Member(document.Pointer, "Attributes"), findings);
            model->m_Menus =
                ReadMenus(ArrayMember(document, "Menus", false, findings), Member(document.Pointer, "Menus"), findings);
        }
        auto names = std::make_unique<NameTable>(model->m_Attributes);
        ChoiceNumbersOfAll choices(model->m_Attributes);
        std::vector<PropertySet> leftOutOnMenus;
        if (document.Usable()) {
            ReadRules rules = ReadDependencies(ArrayMember(document, "Dependencies", false, findings),
                                               Member(document.Pointer, "Dependencies"), model->m_Attributes, *names,
                                               choices, model->m_Menus, findings);
            model->m_Rules = std::move(rules.Rules);
            model->m_Forms = std::move(rules.Forms);
            leftOutOnMenus = std::move(rules.LeftOutOnMenus);
        }
        model->m_Names = std::move(names);
        model->BuildIndices(std::move(leftOutOnMenus), findings);
        for (const Rule& rule : model->m_Rules) {
            if (rule.Decides == Property::CurrentValue && rule.Target != noAttribute &&
                model->m_Attributes[rule.Target].Type == AttributeType::Enumeration) {
                choices.Of(rule.Target);
            }
        }
        model->m_Programs =
            std::make_unique<ConditionPrograms>(model->m_Attributes, model->m_Rules, std::move(choices));
        return model;
    }
};

std::shared_ptr<const Model> Model::Read(const RegistryDocument& document)
{
    return ModelReader::Read(document);
}

/** What may still be kept of rules on menus. */
struct Model::MenuRuleRoom {
    std::size_t Targets = Limits::menuRuleTargets;
    std::size_t Parts = Limits::menuRuleParts;
};

/** @param leftOutOnMenus by menu the properties that rules on it would decide which are not kept; empty for none */
void Model::BuildIndices(std::vector<PropertySet> leftOutOnMenus, Client::Findings& findings)
{
    std::size_t position = 0;
    for (const JsonMember& element : m_Document.Entries.Member("Attributes")) {
        const std::size_t next = m_Published.size();
        if (next < m_Attributes.size() && m_Attributes[next].Position == position++) {
            m_Published.push_back(element.Value);
        }
    }
    std::vector<std::vector<std::size_t>> below(m_Menus.size());
    FindMenus(below, DecidedByMenus(leftOutOnMenus), findings);
    MenuRuleRoom room;
    Pairs deciding, reading;
    std::vector<std::size_t> sources;
    for (std::size_t rule = 0; rule < m_Rules.size(); ++rule) {
        const auto decided = static_cast<std::size_t>(m_Rules[rule].Decides);
        const auto targets = TargetsOf(rule, below, room, findings);
        for (const std::size_t target : targets.value_or(std::vector<std::size_t>())) {
            deciding.emplace_back(target * propertyCount + decided, rule);
        }
        for (const std::size_t menu : targets ? std::vector<std::size_t>() : m_Rules[rule].TargetMenus) {
            leftOutOnMenus.resize(m_Menus.size());
            leftOutOnMenus[menu].set(decided);
        }
        sources.clear();
        CollectSources(m_Rules[rule].When, sources);
        KeepEachOnce(sources);
        for (const std::size_t source : sources) {
            reading.emplace_back(source, rule);
        }
    }
    m_RulesFor = Lists(m_Attributes.size() * propertyCount, deciding);
    m_RulesReading = Lists(m_Attributes.size(), reading);
    for (std::size_t attribute = 0; attribute < m_Attributes.size() && !leftOutOnMenus.empty(); ++attribute) {
        for (const std::size_t menu : MenusOf(attribute)) {
            MarkIncomplete(attribute, leftOutOnMenus[menu]);
        }
    }
}

/** What rules on menus and flags of menus decide, of any menu. */
Model::PropertySet Model::DecidedByMenus(const std::vector<PropertySet>& leftOutOnMenus) const
{
    PropertySet decided;
    for (const Rule& rule : m_Rules) {
        if (!rule.TargetMenus.empty()) {
            decided.set(static_cast<std::size_t>(rule.Decides));
        }
    }
    for (const PropertySet& leftOut : leftOutOnMenus) {
        decided |= leftOut;
    }
    for (const Menu& menu : m_Menus) {
        for (std::size_t flag = 0; flag < flagCount; ++flag) {
            decided.set(flag, decided[flag] || menu.Flags.Has(static_cast<Property>(flag)));
        }
    }
    return decided;
}

void Model::MarkIncomplete(std::size_t attribute, PropertySet properties)
{
    if (properties.any()) {
        m_Incomplete.resize(m_Attributes.size());
        m_Incomplete[attribute] |= properties;
    }
}

bool Model::IsComplete(std::size_t attribute, Property property) const
{
    return m_Incomplete.empty() || !m_Incomplete[attribute][static_cast<std::size_t>(property)];
}

/**
 * @param below receives the attributes in each menu, ascending
 * @param decidedByMenus what is not known of an attribute whose menus are not kept
 */
void Model::FindMenus(std::vector<std::vector<std::size_t>>& below, PropertySet decidedByMenus,
                      Client::Findings& findings)
{
    const MenuPaths paths(m_Menus);
    Pairs menus;
    bool isFull = false;                  // then no menus are looked for
    std::optional<std::string_view> path; // of the attribute before, as many share one
    std::vector<std::size_t> along;
    for (std::size_t attribute = 0; attribute < m_Attributes.size() && !m_Menus.empty(); ++attribute) {
        const std::optional<std::string>& own = m_Attributes[attribute].MenuPath;
        if (!own) {
            continue;
        }
        if (!isFull && path != *own) {
            path = *own;
            along = paths.Along(*own);
        }
        isFull = isFull || menus.size() + along.size() > Limits::menuRuleTargets;
        if (isFull) {
            MarkIncomplete(attribute, decidedByMenus);
            findings.About(m_Attributes[attribute].Name);
            findings.Add(Severity::Error, FindingKind::TooLarge, PointerToAttribute(attribute),
                         "settings are in more menus than can be kept", "what they decide of this one is not known");
            continue;
        }
        for (const std::size_t menu : along) {
            menus.emplace_back(attribute, menu);
            below[menu].push_back(attribute);
        }
    }
    m_MenusOf = Lists(m_Attributes.size(), menus);
}

/** The attributes that a rule is for; nothing, with a finding, when a rule on a menu takes more than the room. */
std::optional<std::vector<std::size_t>> Model::TargetsOf(std::size_t index,
                                                         const std::vector<std::vector<std::size_t>>& below,
                                                         MenuRuleRoom& room, Client::Findings& findings) const
{
    const Rule& rule = m_Rules[index];
    if (rule.Target != noAttribute) {
        return std::vector<std::size_t>{rule.Target};
    }
    std::size_t count = 0;
    for (const std::size_t menu : rule.TargetMenus) {
        count += below[menu].size();
    }
    const std::size_t size = SizeOf(rule);
    if (count > room.Targets || count > room.Parts / size) {
        findings.About("", rule.Position);
        findings.Add(Severity::Error, FindingKind::TooLarge, PointerToRule(index),
                     "rules on menus, once for each setting below, are more than can be kept",
                     "what the rule decides of them is not known");
        return std::nullopt;
    }
    room.Targets -= count;
    room.Parts -= count * size;
    std::vector<std::size_t> targets;
    for (const std::size_t menu : rule.TargetMenus) {
        targets.insert(targets.end(), below[menu].begin(), below[menu].end());
    }
    KeepEachOnce(targets); // a setting may be in two menus of one name
    return targets;
}

Model::Lists::Lists(std::size_t keys, const Pairs& pairs) : Begin(keys + 1, 0), Items(pairs.size())
{
    for (const auto& [key, item] : pairs) {
        ++Begin[key + 1];
    }
    for (std::size_t key = 0; key < keys; ++key) {
        Begin[key + 1] += Begin[key];
    }
    std::vector<std::size_t> next(Begin.begin(), Begin.end() - 1);
    for (const auto& [key, item] : pairs) {
        Items[next[key]++] = item;
    }
}

IndexRange Model::Lists::Of(std::size_t key) const
{
    return {Items.data() + Begin[key], Items.data() + Begin[key + 1]};
}

std::optional<std::size_t> Model::Find(std::string_view name) const
{
    return m_Names->Find(name);
}

IndexRange Model::RulesFor(std::size_t attribute, Property property) const
{
    return m_RulesFor.Of(attribute * propertyCount + static_cast<std::size_t>(property));
}

IndexRange Model::RulesReading(std::size_t attribute) const
{
    return m_RulesReading.Of(attribute);
}

IndexRange Model::MenusOf(std::size_t attribute) const
{
    return m_MenusOf.Of(attribute);
}

FlagSet Model::FlagsOf(std::size_t attribute) const
{
    FlagSet flags = m_Attributes[attribute].Flags;
    for (const std::size_t menu : MenusOf(attribute)) {
        flags = flags | m_Menus[menu].Flags;
    }
    return flags;
}

std::string Model::PointerToAttribute(std::size_t attribute) const
{
    return Element(Member(m_Document.Pointer, "Attributes"), m_Attributes[attribute].Position);
}

std::string Model::PointerToMember(std::size_t attribute, Property property) const
{
    KeyOrder order;
    const KeyedObject<AttributeKey> members(m_Published[attribute], order);
    const std::optional<AttributeKey> key = FindAttributeKey(Name(property));
    return Member(PointerToAttribute(attribute), key ? members.KeyOf(*key) : Name(property));
}

std::string Model::PointerToRule(std::size_t rule) const
{
    return Element(Member(m_Document.Pointer, "Dependencies"), m_Rules[rule].Position);
}

} // namespace RedfishConfig::Client
