#include "AttributeWriter.h"

#include "../intake/JsonPointer.h"
#include "../intake/KeyNames.h"
#include "../model/PatternDefect.h"
#include "../model/PropertyKeys.h"
#include "../model/ValueConversion.h"
#include "JsonCopy.h"
#include "common/Ascii.h"

#include <RedfishConfig/SettingValue.h>

#include <boost/json/object.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** A member that is written; nothing for one that is left out. */
using Written = std::optional<json::value>;

Written ToJson(const Value& value)
{
    const SettingValue revealed = Reveal(value);
    return revealed ? Written(VariantToJson(*revealed)) : std::nullopt;
}

Written ToJson(const std::optional<std::int64_t>& number)
{
    return number ? Written(*number) : std::nullopt;
}

Written ToJson(const std::optional<std::string>& text)
{
    return text ? Written(*text) : std::nullopt;
}

json::value ToJson(const std::vector<Choice>& choices)
{
    json::array list;
    list.reserve(choices.size());
    for (const Choice& choice : choices) {
        list.push_back(json::object{{"ValueName", choice.Name}, {"ValueDisplayName", choice.DisplayName}});
    }
    return list;
}

/** A member of an attribute that is no flag. */
Written MemberOf(const Attribute& attribute, AttributeKey key)
{
    switch (key) {
    case AttributeKey::AttributeName:
        return json::value(attribute.Name);
    case AttributeKey::Type:
        return attribute.Type != AttributeType::Unknown ? Written(json::value(Name(attribute.Type))) : std::nullopt;
    case AttributeKey::CurrentValue:
        return ToJson(attribute.CurrentValue);
    case AttributeKey::DefaultValue:
        return ToJson(attribute.DefaultValue);
    case AttributeKey::DisplayName:
        return ToJson(attribute.DisplayName);
    case AttributeKey::HelpText:
        return ToJson(attribute.HelpText);
    case AttributeKey::WarningText:
        return ToJson(attribute.WarningText);
    case AttributeKey::MenuPath:
        return ToJson(attribute.MenuPath);
    case AttributeKey::DisplayOrder:
        return ToJson(attribute.DisplayOrder);
    case AttributeKey::Choices:
        return ToJson(attribute.Choices);
    case AttributeKey::LowerBound:
        return ToJson(attribute.LowerBound);
    case AttributeKey::UpperBound:
        return ToJson(attribute.UpperBound);
    case AttributeKey::ScalarIncrement:
        return ToJson(attribute.ScalarIncrement);
    case AttributeKey::MinLength:
        return ToJson(attribute.MinLength);
    case AttributeKey::MaxLength:
        return ToJson(attribute.MaxLength);
    case AttributeKey::ValueExpression: // by one that cannot be used the core would refuse every value
        return attribute.Pattern && DefectOfPattern(*attribute.Pattern).empty() ? ToJson(attribute.Pattern)
                                                                                : std::nullopt;
    default:
        return std::nullopt;
    }
}

/** The attribute with its values under the names that they use. */
Attribute Translated(const SystemValues& values, std::size_t index)
{
    Attribute attribute = values.Of().Attributes()[index];
    attribute.Choices = values.ChoicesOf(index);
    attribute.CurrentValue = values.Translate(index, attribute.CurrentValue);
    attribute.DefaultValue = values.Translate(index, attribute.DefaultValue);
    return attribute;
}

/** Writes one attribute by what is published. */
class AttributeWriter {
public:
    AttributeWriter(const Model& model, const Attribute& attribute, FlagSet flags, std::string pointer,
                    Findings& findings)
        : m_Model(model), m_Attribute(attribute), m_Flags(flags), m_Pointer(std::move(pointer)), m_Findings(findings)
    {
    }

    json::object Run(const JsonValue& published, KeyOrder& order)
    {
        const KeyedObject<AttributeKey> known(published, order);
        json::object object;
        for (const JsonMember& member : published) {
            const std::optional<AttributeKey> key = FindAttributeKey(member.Key);
            if (!key || !(known[*key] == member.Value)) {
                CopyUnknown(member, object);
            } else if (Written written = Write(*key, member.Value)) {
                object[Name(*key)] = std::move(*written);
            }
        }
        for (std::size_t number = 0; number < flagCount; ++number) { // those of menus
            const auto flag = static_cast<Property>(number);
            if (m_Flags.Has(flag) && !object.contains(Name(flag))) {
                object[Name(flag)] = true;
            }
        }
        return object;
    }

private:
    Written Write(AttributeKey key, const JsonValue& published) const
    {
        if (const std::optional<Property> flag = FlagOf(key)) {
            return WriteFlag(*flag, published);
        }
        if (published.IsNull()) {
            return json::value(nullptr);
        }
        if (key == AttributeKey::Choices && !published.IsArray()) {
            return std::nullopt;
        }
        if (key == AttributeKey::Type && m_Attribute.Type == AttributeType::Unknown) {
            return published.IsText() ? Written(Copy(published)) : std::nullopt;
        }
        return MemberOf(m_Attribute, key);
    }

    /** A flag that is not set stays null, and what is no flag is left out. */
    Written WriteFlag(Property flag, const JsonValue& published) const
    {
        const Value truth = ConvertToType(ReadValue(published), AttributeType::Boolean);
        if (m_Flags.Has(flag) || std::holds_alternative<bool>(truth)) {
            return json::value(m_Flags.Has(flag));
        }
        return published.IsNull() ? Written(nullptr) : std::nullopt;
    }

    void CopyUnknown(const JsonMember& member, json::object& object)
    {
        if (!IsTooDeep(member.Value, m_Model.Document())) {
            object[member.Key] = Copy(member.Value);
            return;
        }
        m_Findings.About(m_Attribute.Name);
        m_Findings.Add(Severity::Error, FindingKind::TooLarge, Member(m_Pointer, member.Key),
                       "a member of an attribute with more objects and lists in each other than the core reads",
                       "it is left out");
    }

    const Model& m_Model;
    const Attribute& m_Attribute;
    FlagSet m_Flags;
    std::string m_Pointer;
    Findings& m_Findings;
};

/** The flags of a menu that the schema knows; nothing for other members. */
std::optional<Property> MenuFlagOf(std::string_view key)
{
    for (const Property flag : {Property::ReadOnly, Property::GrayOut, Property::Hidden}) {
        if (Ascii::EqualIgnoringCase(key, Name(flag))) {
            return flag;
        }
    }
    return std::nullopt;
}

} // namespace

json::array WriteAttributes(const SystemValues& values, const std::vector<FlagSet>& flags, Findings& findings)
{
    const Model& model = values.Of();
    json::array list;
    list.reserve(model.Attributes().size());
    KeyOrder order;
    std::size_t next = 0; // in the model, which has them in the order of their positions
    std::size_t position = 0;
    for (const JsonMember& published : model.Document().Entries.Member("Attributes")) {
        if (next < model.Attributes().size() && model.Attributes()[next].Position == position) {
            const Attribute attribute = Translated(values, next);
            list.push_back(AttributeWriter(model, attribute, flags[next], model.PointerToAttribute(next), findings)
                               .Run(published.Value, order));
            ++next;
        }
        ++position;
    }
    return list;
}

json::array WriteMenus(const Model& model, Findings& findings)
{
    std::vector<FlagSet> flags;
    for (const Menu& menu : model.Menus()) {
        flags.resize(std::max(flags.size(), menu.Position + 1));
        flags[menu.Position] = menu.Flags;
    }
    json::array list;
    for (const JsonMember& published : model.Document().Entries.Member("Menus")) {
        const std::size_t position = list.size();
        const std::string pointer = Element(Member(model.Document().Pointer, "Menus"), position);
        if (!published.Value.IsObject()) {
            list.push_back(IsTooDeep(published.Value, model.Document()) ? json::value() : Copy(published.Value));
            continue;
        }
        json::object menu;
        for (const JsonMember& member : published.Value) {
            const std::optional<Property> flag = MenuFlagOf(member.Key);
            if (flag && position < flags.size() && flags[position].Has(*flag)) {
                menu[member.Key] = false;
            } else if (!IsTooDeep(member.Value, model.Document())) {
                menu[member.Key] = Copy(member.Value);
            } else {
                findings.About("");
                findings.Add(Severity::Error, FindingKind::TooLarge, Member(pointer, member.Key),
                             "a member of a menu with more objects and lists in each other than the core reads",
                             "it is left out");
            }
        }
        list.push_back(std::move(menu));
    }
    return list;
}

json::array WritePlainAttributes(const std::vector<Attribute>& attributes)
{
    json::array list;
    list.reserve(attributes.size());
    for (const Attribute& attribute : attributes) {
        json::object object;
        for (std::size_t number = 0; number < CountOf(AttributeKey()); ++number) {
            const auto key = static_cast<AttributeKey>(number);
            const bool isEmptyList = key == AttributeKey::Choices && attribute.Choices.empty();
            if (Written written = isEmptyList ? std::nullopt : MemberOf(attribute, key)) {
                object[Name(key)] = std::move(*written);
            }
        }
        list.push_back(std::move(object));
    }
    return list;
}

} // namespace RedfishConfig::Client
