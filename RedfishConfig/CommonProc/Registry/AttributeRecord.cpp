#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include "JsonMember.h"

#include <string_view>

namespace RedfishConfig {

namespace json = boost::json;

namespace {

using Record = RedfishConfigSettingInfoStru;

/** Reads the choices of a "Value" list. A choice without a name is skipped; of two with one name the first is kept. */
void ReadChoices(Record& record, const json::value& json)
{
    const json::array* list = json.if_array();
    if (list == nullptr) {
        return;
    }
    for (const json::value& element : *list) {
        auto entry = json::value_to<RedfishConfigValueEntryStru>(element);
        if (entry.ValueName) {
            record.Value.emplace(std::move(*entry.ValueName), entry.ValueDisplayName.value_or(""));
        }
    }
}

template <auto Member>
void Read(Record& record, const json::value& json)
{
    AssignFromJson(record.*Member, json);
}

struct PropertyReader {
    std::string_view key;
    void (*read)(Record& record, const json::value& json);
};

/** The keys of an attribute object, in alphabetical order, and the member that each fills. */
constexpr PropertyReader propertyReaders[] = {
    {"AttributeName", Read<&Record::AttributeName>},
    {"CurrentValue", Read<&Record::CurrentValue>},
    {"DefaultValue", Read<&Record::DefaultValue>},
    {"DisplayName", Read<&Record::DisplayName>},
    {"DisplayOrder", Read<&Record::DisplayOrder>},
    {"GrayOut", Read<&Record::GrayOut>},
    {"HelpText", Read<&Record::HelpText>},
    {"Hidden", Read<&Record::Hidden>},
    {"Immutable", Read<&Record::Immutable>},
    {"IsSystemUniqueProperty", Read<&Record::IsSystemUniqueProperty>},
    {"LowerBound", Read<&Record::LowerBound>},
    {"MaxLength", Read<&Record::MaxLength>},
    {"MenuPath", Read<&Record::MenuPath>},
    {"MinLength", Read<&Record::MinLength>},
    {"ReadOnly", Read<&Record::ReadOnly>},
    {"ResetRequired", Read<&Record::ResetRequired>},
    {"ScalarIncrement", Read<&Record::ScalarIncrement>},
    {"Type", Read<&Record::Type>},
    {"UpperBound", Read<&Record::UpperBound>},
    {"Value", ReadChoices},
    {"ValueExpression", Read<&Record::ValueExpression>},
    {"WarningText", Read<&Record::WarningText>},
    {"WriteOnly", Read<&Record::WriteOnly>},
};

} // namespace

RedfishConfigSettingInfoStru tag_invoke(json::value_to_tag<RedfishConfigSettingInfoStru>, const json::value& attribute)
{
    RedfishConfigSettingInfoStru record;
    for (const PropertyReader& property : propertyReaders) {
        if (const json::value* found = FindMember(attribute, {property.key.data(), property.key.size()})) {
            property.read(record, *found);
        }
    }
    return record;
}

RedfishConfigValueEntryStru tag_invoke(json::value_to_tag<RedfishConfigValueEntryStru>, const json::value& entry)
{
    RedfishConfigValueEntryStru record;
    ReadMember(record.ValueName, entry, "ValueName");
    ReadMember(record.ValueDisplayName, entry, "ValueDisplayName");
    return record;
}

} // namespace RedfishConfig
