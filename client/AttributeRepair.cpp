#include "AttributeRepair.h"

#include "KeyNames.h"
#include "Place.h"
#include "Value.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** An attribute on its way. */
struct Draft {
    json::object object;
    std::size_t position = 0; ///< in the published list
    Attribute known;
    std::vector<std::pair<std::string, std::string>> choices; ///< value name, display name
    bool displayNamesAreValues = false;
};

enum class Names { Undecided, ValueNames, DisplayNames };

constexpr std::string_view flagKeys[] = {"GrayOut",  "Hidden",        "Immutable", "IsSystemUniqueProperty",
                                         "ReadOnly", "ResetRequired", "WriteOnly"};
constexpr std::string_view numberKeys[] = {"DisplayOrder", "LowerBound",      "MaxLength",
                                           "MinLength",    "ScalarIncrement", "UpperBound"};
constexpr std::string_view textKeys[] = {"DisplayName", "HelpText",        "MenuPath",
                                         "Type",        "ValueExpression", "WarningText"};
constexpr std::string_view settingTypes[] = {"boolean", "enumeration", "integer", "password", "string"};

template <class List>
bool Contains(const List& list, std::string_view wanted)
{
    return std::find(std::begin(list), std::end(list), wanted) != std::end(list);
}

std::string TextOf(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::string(*text) : std::string();
}

std::optional<std::int64_t> NumberOf(const json::object& object, std::string_view key)
{
    const json::value* member = object.if_contains(key);
    const SettingValue value = member != nullptr ? ReadValue(*member) : SettingValue();
    return IsNumSetting(value) ? std::optional(std::get<std::int64_t>(*value)) : std::nullopt;
}

void DropRepeatedChoices(Draft& draft, Findings& findings)
{
    std::unordered_set<std::string> names;
    auto& choices = draft.choices;
    const auto isRepeated = [&](const auto& choice) { return !names.insert(choice.first).second; };
    const auto kept = std::remove_if(choices.begin(), choices.end(), isRepeated);
    if (kept != choices.end()) {
        findings.Add(Severity::Warning, FindingKind::RepeatedChoice, Member(draft.known.Place, "Value"),
                     std::to_string(choices.end() - kept) + " choices repeat the name of an earlier one",
                     "they are left out");
        choices.erase(kept, choices.end());
    }
}

/** A setting of the library with nothing but a pattern. */
class PatternProbe : public RedfishConfigSetting {
public:
    using RedfishConfigSetting::CheckNewValueIsValid;
    using RedfishConfigSetting::RedfishConfigSetting;

    RedfishConfigResult GetSettingValidValues(std::string& /*validValues*/, const filterAction& /*action*/) override
    {
        return RESULT_SUCCEED;
    }

private:
    std::string GeneratePatchContext(const std::string& value) override { return value; }
};

/** Why the library, whose patterns these are, cannot use a pattern. Empty when it can. */
std::string DefectOfPattern(const std::string& pattern)
{
    const std::string noMatch = "\n"; // no reason of the library is a line feed
    RedfishConfigSettingInfoStru info;
    info.ValueExpression = pattern;
    info.WarningText = noMatch;
    std::string value = "0";
    std::string reason;
    const bool matches = PatternProbe(info, {}).CheckNewValueIsValid(value, reason) == RESULT_SUCCEED;
    return matches || reason == noMatch ? std::string() : reason;
}

/** Repairs one attribute, apart from its values. */
class AttributeRepairer {
public:
    AttributeRepairer(Draft& draft, Findings& findings)
        : m_Draft(draft), m_Object(draft.object), m_Place(draft.known.Place), m_Findings(findings)
    {
    }

    void Run()
    {
        for (const std::string_view key : flagKeys) {
            RepairFlag(key);
        }
        for (const std::string_view key : numberKeys) {
            RepairNumber(key);
        }
        for (const std::string_view key : textKeys) {
            if (const json::value* member = Present(key); member != nullptr && !member->is_string()) {
                Drop(key, FindingKind::WrongKind, Severity::Warning, std::string("it is ") + KindOf(*member));
            }
        }
        TellType();
        RepairBounds("LowerBound", "UpperBound");
        RepairBounds("MinLength", "MaxLength");
        RepairChoices();
        RepairPattern();
        m_Draft.known.LowerBound = NumberOf(m_Object, "LowerBound");
        m_Draft.known.UpperBound = NumberOf(m_Object, "UpperBound");
        m_Draft.known.MinLength = NumberOf(m_Object, "MinLength").value_or(0);
    }

private:
    /** The member, unless it is missing or null. */
    const json::value* Present(std::string_view key) const
    {
        const json::value* member = m_Object.if_contains(key);
        return member != nullptr && !member->is_null() ? member : nullptr;
    }

    void Drop(std::string_view key, FindingKind kind, Severity level, std::string found)
    {
        m_Object.erase(key);
        m_Findings.Add(level, kind, Member(m_Place, key), std::move(found), "it is left out");
    }

    void RepairFlag(std::string_view key)
    {
        const json::value* member = Present(key);
        if (member == nullptr || member->is_bool()) {
            return;
        }
        const SettingValue truth = ConvertToType(ReadValue(*member), "boolean");
        if (IsBoolenSetting(truth)) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, Member(m_Place, key),
                           std::string("a flag that is ") + KindOf(*member), "it is read as a boolean");
            m_Object[key] = std::get<bool>(*truth);
        } else {
            Drop(key, FindingKind::WrongKind, Severity::Warning, std::string("a flag that is ") + KindOf(*member));
        }
    }

    void RepairNumber(std::string_view key)
    {
        const json::value* member = Present(key);
        if (member == nullptr || IsNumSetting(ReadValue(*member))) {
            return;
        }
        if (member->is_number()) {
            const bool noBound = key == "UpperBound" || key == "MaxLength"; // none that a number could exceed
            Drop(key, FindingKind::NumberBeyondRange, noBound ? Severity::Note : Severity::Warning,
                 "the number " + Quote(*member) + " is not whole or beyond 64 signed bits");
            return;
        }
        const json::string* text = member->if_string();
        const auto number = text != nullptr ? ReadInteger(*text) : std::nullopt;
        if (number) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, Member(m_Place, key), "a number that is a text",
                           "it is read as a number");
            m_Object[key] = *number;
        } else {
            Drop(key, FindingKind::WrongKind, Severity::Warning, std::string("a number that is ") + KindOf(*member));
        }
    }

    void TellType()
    {
        m_Draft.known.Type = LowerCase(TextOf(m_Object, "Type"));
        m_Draft.known.IsSetting = Contains(settingTypes, m_Draft.known.Type);
        if (!m_Draft.known.IsSetting) {
            m_Findings.Add(Severity::Warning, FindingKind::UnknownType, m_Place,
                           "the type of " + m_Draft.known.Name + " is " + Quote(TextOf(m_Object, "Type")),
                           "the library makes no setting of it");
        }
    }

    void RepairBounds(std::string_view lowerKey, std::string_view upperKey)
    {
        const auto lower = NumberOf(m_Object, lowerKey);
        const auto upper = NumberOf(m_Object, upperKey);
        if (!lower || !upper || *lower <= *upper) {
            return;
        }
        const std::string found = std::string(upperKey) + " " + std::to_string(*upper) + " under " +
                                  std::string(lowerKey) + " " + std::to_string(*lower);
        if (*upper == -1) {
            Drop(upperKey, FindingKind::NoBound, Severity::Note, found + ", which means no bound");
        } else {
            m_Findings.Add(Severity::Warning, FindingKind::ContradictoryBounds, m_Place, found,
                           "both stay, and the library refuses every new value");
        }
    }

    void RepairChoices()
    {
        const json::value* member = Present("Value");
        if (member != nullptr && !member->is_array()) {
            Drop("Value", FindingKind::WrongKind, Severity::Warning, std::string("the choices are ") + KindOf(*member));
            member = nullptr;
        }
        const std::string place = Member(m_Place, "Value");
        if (member != nullptr) {
            const json::array published = member->get_array();
            std::size_t withoutDisplayName = 0;
            for (std::size_t position = 0; position < published.size(); ++position) {
                if (ReadChoice(published[position], Element(place, position))) {
                    ++withoutDisplayName;
                }
            }
            if (withoutDisplayName > 0) {
                m_Findings.Add(Severity::Note, FindingKind::ChoiceWithoutDisplayName, place,
                               std::to_string(withoutDisplayName) + " choices have no display name",
                               "the value name is taken");
            }
        }
        DropRepeatedChoices(m_Draft, m_Findings);
        if (m_Draft.choices.empty() && m_Draft.known.Type == "enumeration") {
            m_Findings.Add(Severity::Warning, FindingKind::NoChoices, m_Place, "an enumeration without choices",
                           "the library refuses every new value");
        }
    }

    /** @return whether the choice had no display name. */
    bool ReadChoice(const json::value& element, const std::string& place)
    {
        json::object choice;
        if (const json::object* object = element.if_object()) {
            choice = *object;
            RepairKeys(choice, KeyedObject::Choice, place, m_Findings);
        } else {
            choice["ValueName"] = element;
        }
        const auto text = [&choice](std::string_view key) {
            const json::value* member = choice.if_contains(key);
            return member != nullptr ? ConvertToType(ReadValue(*member), "string") : SettingValue();
        };
        SettingValue name = text("ValueName");
        const SettingValue displayName = text("ValueDisplayName");
        const bool hasDisplayName = displayName && !std::get<std::string>(*displayName).empty();
        if (!name) {
            m_Findings.Add(Severity::Warning, FindingKind::WrongKind, place,
                           "a choice without a value name: " + Quote(element),
                           hasDisplayName ? "its display name is taken" : "it is left out");
            if (!hasDisplayName) {
                return false;
            }
            name = displayName;
        } else if (!element.is_object() || !choice.at("ValueName").is_string()) {
            m_Findings.Add(Severity::Note, FindingKind::WrongKind, place, "a choice in another form: " + Quote(element),
                           "it is read as a value name");
        }
        m_Draft.choices.emplace_back(std::get<std::string>(*name),
                                     std::get<std::string>(hasDisplayName ? *displayName : *name));
        return !hasDisplayName;
    }

    void RepairPattern()
    {
        const json::value* pattern = Present("ValueExpression");
        if (pattern == nullptr) {
            return;
        }
        const std::string reason = DefectOfPattern(std::string(pattern->get_string()));
        if (!reason.empty()) {
            Drop("ValueExpression", FindingKind::UnusablePattern, Severity::Warning,
                 "a pattern that cannot be used: " + reason);
        }
    }

    Draft& m_Draft;
    json::object& m_Object;
    const std::string& m_Place;
    Findings& m_Findings;
};

/** Reads the attributes that have a name of their own. */
std::vector<Draft> ReadDrafts(const json::array& list, const std::string& place, Findings& findings)
{
    std::vector<Draft> drafts;
    std::unordered_set<std::string> names;
    for (std::size_t position = 0; position < list.size(); ++position) {
        const std::string here = Element(place, position);
        const json::object* published = list[position].if_object();
        if (published == nullptr) {
            findings.Add(Severity::Error, FindingKind::WrongKind, here,
                         std::string("an attribute that is ") + KindOf(list[position]), "it is left out");
            continue;
        }
        Draft draft;
        draft.object = *published;
        draft.position = position;
        RepairKeys(draft.object, KeyedObject::Attribute, here, findings);
        draft.known.Place = here;
        draft.known.Name = TextOf(draft.object, "AttributeName");
        if (draft.known.Name.empty()) {
            findings.Add(Severity::Error, FindingKind::UnnamedAttribute, here, "an attribute without a name",
                         "it is left out");
        } else if (!names.insert(LowerCase(draft.known.Name)).second) {
            findings.Add(Severity::Warning, FindingKind::RepeatedAttribute, here,
                         "an earlier attribute has the name " + Quote(draft.known.Name) + ", letter case apart",
                         "it is left out");
        } else {
            AttributeRepairer(draft, findings).Run();
            drafts.push_back(std::move(draft));
        }
    }
    return drafts;
}

/** Which names of its choices a text speaks for. */
Names NamesUsedBy(const Draft& draft, const SettingValue& value)
{
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    if (text == nullptr) {
        return Names::Undecided;
    }
    bool isName = false;
    bool isDisplayName = false;
    for (const auto& [name, displayName] : draft.choices) {
        isName |= name == *text;
        isDisplayName |= displayName == *text;
    }
    if (isName == isDisplayName) {
        return Names::Undecided;
    }
    return isName ? Names::ValueNames : Names::DisplayNames;
}

SettingValue PublishedValue(const Draft& draft, std::string_view key)
{
    const json::value* member = draft.object.if_contains(key);
    return member != nullptr ? ReadValue(*member) : SettingValue();
}

/** Which names the controller uses for the values of the attribute. Its current value tells first. */
Names NamesUsed(const Draft& draft, const SettingValueMap& values)
{
    const auto held = values.find(draft.known.Name);
    for (const SettingValue& value : {held != values.end() ? held->second : SettingValue(),
                                      PublishedValue(draft, "CurrentValue"), PublishedValue(draft, "DefaultValue")}) {
        const Names used = NamesUsedBy(draft, value);
        if (used != Names::Undecided) {
            return used;
        }
    }
    return Names::Undecided;
}

bool HasOtherDisplayNames(const Draft& draft)
{
    return std::any_of(draft.choices.begin(), draft.choices.end(),
                       [](const auto& choice) { return choice.first != choice.second; });
}

/** Decides for each enumeration; where nothing tells, as most others of the registry have it. */
void DecideNames(std::vector<Draft>& drafts, const SettingValueMap& values)
{
    std::vector<Draft*> undecided;
    std::ptrdiff_t balance = 0; // of those with display names
    for (Draft& draft : drafts) {
        if (draft.known.Type != "enumeration" || !HasOtherDisplayNames(draft)) {
            continue;
        }
        const Names used = NamesUsed(draft, values);
        if (used == Names::Undecided) {
            undecided.push_back(&draft);
        } else {
            draft.displayNamesAreValues = used == Names::DisplayNames;
            balance += draft.displayNamesAreValues ? 1 : -1;
        }
    }
    for (Draft* draft : undecided) {
        draft->displayNamesAreValues = balance > 0;
    }
}

/** Settles the value names of the choices, and what other texts stand for them. */
void SettleChoices(Draft& draft, Findings& findings)
{
    auto& texts = draft.known.Choices;
    std::unordered_map<std::string, std::string> otherNames;
    std::unordered_set<std::string> ambiguous;
    const auto addOther = [&](const std::string& other, const std::string& name) {
        const auto [entry, isNew] = otherNames.emplace(other, name);
        if (!isNew && entry->second != name) {
            ambiguous.insert(other);
        }
    };
    for (auto& [name, displayName] : draft.choices) {
        if (draft.displayNamesAreValues) {
            addOther(name, displayName);
            name = displayName;
        } else {
            addOther(displayName, name);
        }
    }
    if (draft.displayNamesAreValues) {
        findings.Add(Severity::Note, FindingKind::DisplayNamesAreValues, Member(draft.known.Place, "Value"),
                     "the values of " + draft.known.Name + " are display names of its choices",
                     "the display names become the value names");
        DropRepeatedChoices(draft, findings);
    }
    for (const auto& [name, displayName] : draft.choices) {
        texts.emplace(name, name);
        draft.known.ChoiceNames.push_back(name);
    }
    for (const auto& [other, name] : otherNames) {
        if (ambiguous.count(other) == 0) {
            texts.emplace(other, name); // a value name that is there already goes first
        }
    }
}

void WriteChoices(Draft& draft)
{
    if (!draft.object.contains("Value") || draft.object.at("Value").is_null()) {
        return;
    }
    json::array list;
    list.reserve(draft.choices.size());
    for (const auto& [name, displayName] : draft.choices) {
        list.push_back(json::object{{"ValueName", name}, {"ValueDisplayName", displayName}});
    }
    draft.object["Value"] = std::move(list);
}

/** Translates a value that stands in the attribute itself. */
SettingValue RepairOwnValue(Draft& draft, std::string_view key, const std::string& what, Findings& findings)
{
    json::value* member = draft.object.if_contains(key);
    if (member == nullptr || member->is_null()) {
        return std::nullopt;
    }
    const std::string place = Member(draft.known.Place, key);
    const SettingValue value = ReadValue(*member);
    if (!value) {
        findings.Add(Severity::Warning, FindingKind::UnusableValue, place,
                     what + " of " + draft.known.Name + " is " + KindOf(*member) + " that no setting can have",
                     "it is left out");
        draft.object.erase(key);
        return std::nullopt;
    }
    SettingValue translated = TranslateValue(draft.known, value, Document::Registry, place, what, findings);
    *member = ToJson(translated);
    return translated;
}

/** Sums up which texts the attribute can have. */
void MeasureValues(Attribute& attribute)
{
    const bool isText = attribute.Type == "string" || attribute.Type == "password";
    attribute.MayBeEmpty = isText && attribute.MinLength < 1;
    const auto measure = [&attribute](const std::string& text) {
        attribute.MayBeEmpty |= text.empty();
        attribute.LongestValue = std::max(attribute.LongestValue, text.size());
    };
    std::for_each(attribute.ChoiceNames.begin(), attribute.ChoiceNames.end(), measure);
    if (attribute.Held) {
        measure(GetOptionalVarAsString(attribute.Held));
    }
}

} // namespace

RepairedAttributes RepairAttributes(const json::array& list, const std::string& place, const ValuesDocument& values,
                                    Findings& findings)
{
    std::vector<Draft> drafts = ReadDrafts(list, place, findings);
    DecideNames(drafts, values.Values);
    std::map<std::string, Attribute*, CaseInsensitiveComparator> byName;
    json::array adapted;
    adapted.reserve(drafts.size());
    std::vector<std::size_t> positions;
    positions.reserve(drafts.size());
    for (Draft& draft : drafts) {
        SettleChoices(draft, findings);
        WriteChoices(draft);
        RepairOwnValue(draft, "DefaultValue", "the default", findings);
        draft.known.Held = RepairOwnValue(draft, "CurrentValue", "the current value", findings);
        adapted.push_back(std::move(draft.object));
        positions.push_back(draft.position);
        byName[draft.known.Name] = &draft.known;
    }
    SettingValueMap translated;
    for (const auto& [name, value] : values.Values) {
        const std::string here = Member(values.Place, name);
        const auto found = byName.find(name);
        if (found == byName.end()) {
            findings.AddIn(Document::Values, Severity::Note, FindingKind::UnknownName, here,
                           "a value of " + Quote(name) + ", which the registry does not have", "it stays as it is");
            translated[name] = value;
            continue;
        }
        Attribute& attribute = *found->second;
        attribute.Held = TranslateValue(attribute, value, Document::Values, here, "the current value", findings);
        translated[name] = attribute.Held;
    }
    std::vector<Attribute> known;
    known.reserve(drafts.size());
    for (Draft& draft : drafts) {
        MeasureValues(draft.known);
        known.push_back(std::move(draft.known));
    }
    return {std::move(adapted), std::move(positions), Attributes(std::move(known)), std::move(translated)};
}

} // namespace RedfishConfig::Client
