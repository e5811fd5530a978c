#include "AttributeRecord.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig {

namespace json = boost::json;

namespace {

using Record = RedfishConfigSettingInfoStru;
using Choice = RedfishConfigValueEntryStru;

template <auto Member>
constexpr MemberReader<Record> Reads(std::string_view key)
{
    return ReaderOf<Member, Record>(key);
}

/** In alphabetical order, so that a key is found by halving. */
constexpr MemberReader<Record> attributeMembers[] = {
    Reads<&Record::AttributeName>("AttributeName"),
    Reads<&Record::CurrentValue>("CurrentValue"),
    Reads<&Record::DefaultValue>("DefaultValue"),
    Reads<&Record::DisplayName>("DisplayName"),
    Reads<&Record::DisplayOrder>("DisplayOrder"),
    Reads<&Record::GrayOut>("GrayOut"),
    Reads<&Record::HelpText>("HelpText"),
    Reads<&Record::Hidden>("Hidden"),
    Reads<&Record::Immutable>("Immutable"),
    Reads<&Record::IsSystemUniqueProperty>("IsSystemUniqueProperty"),
    Reads<&Record::LowerBound>("LowerBound"),
    Reads<&Record::MaxLength>("MaxLength"),
    Reads<&Record::MenuPath>("MenuPath"),
    Reads<&Record::MinLength>("MinLength"),
    Reads<&Record::ReadOnly>("ReadOnly"),
    Reads<&Record::ResetRequired>("ResetRequired"),
    Reads<&Record::ScalarIncrement>("ScalarIncrement"),
    Reads<&Record::Type>("Type"),
    Reads<&Record::UpperBound>("UpperBound"),
    Reads<&Record::ValueExpression>("ValueExpression"),
    Reads<&Record::WarningText>("WarningText"),
    Reads<&Record::WriteOnly>("WriteOnly"),
};

constexpr bool AreInOrder()
{
    for (std::size_t row = 1; row < std::size(attributeMembers); ++row) {
        if (attributeMembers[row - 1].Key >= attributeMembers[row].Key) {
            return false;
        }
    }
    return true;
}
static_assert(AreInOrder());

constexpr MemberReader<Choice> choiceMembers[] = {
    ReaderOf<&Choice::ValueName, Choice>("ValueName"),
    ReaderOf<&Choice::ValueDisplayName, Choice>("ValueDisplayName"),
};

void ReadChoices(Record& record, const json::value& json)
{
    if (const json::array* list = json.if_array()) {
        for (const json::value& element : *list) {
            AddChoice(record, json::value_to<Choice>(element));
        }
    }
}

std::string_view KeyOf(const json::key_value_pair& member)
{
    return {member.key().data(), member.key().size()};
}

} // namespace

const MemberReader<RedfishConfigSettingInfoStru>* FindAttributeMember(std::string_view key)
{
    const auto* const found =
        std::lower_bound(std::begin(attributeMembers), std::end(attributeMembers), key,
                         [](const MemberReader<Record>& row, std::string_view wanted) { return row.Key < wanted; });
    return found != std::end(attributeMembers) && found->Key == key ? found : nullptr;
}

const MemberReader<RedfishConfigValueEntryStru>* FindChoiceMember(std::string_view key)
{
    const auto* const found = std::find_if(std::begin(choiceMembers), std::end(choiceMembers),
                                           [&](const MemberReader<Choice>& row) { return row.Key == key; });
    return found != std::end(choiceMembers) ? found : nullptr;
}

void AddChoice(RedfishConfigSettingInfoStru& record, RedfishConfigValueEntryStru&& choice)
{
    if (choice.ValueName) {
        record.Value.emplace(std::move(*choice.ValueName), std::move(choice.ValueDisplayName).value_or(""));
    }
}

RedfishConfigSettingInfoStru tag_invoke(json::value_to_tag<RedfishConfigSettingInfoStru>, const json::value& attribute)
{
    RedfishConfigSettingInfoStru record;
    if (const json::object* members = attribute.if_object()) {
        for (const json::key_value_pair& member : *members) {
            if (const auto* reader = FindAttributeMember(KeyOf(member))) {
                reader->Read(record, ScalarOf(member.value()));
            } else if (KeyOf(member) == choicesKey) {
                ReadChoices(record, member.value());
            }
        }
    }
    return record;
}

RedfishConfigValueEntryStru tag_invoke(json::value_to_tag<RedfishConfigValueEntryStru>, const json::value& entry)
{
    RedfishConfigValueEntryStru record;
    if (const json::object* members = entry.if_object()) {
        for (const json::key_value_pair& member : *members) {
            if (const auto* reader = FindChoiceMember(KeyOf(member))) {
                reader->Read(record, ScalarOf(member.value()));
            }
        }
    }
    return record;
}

} // namespace RedfishConfig
