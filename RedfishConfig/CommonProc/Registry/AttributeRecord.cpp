#include "AttributeRecord.h"

#include <algorithm>
#include <iterator>

namespace RedfishConfig {

namespace json = boost::json;

namespace {

using Record = RedfishConfigSettingInfoStru;
using Choice = RedfishConfigValueEntryStru;
using Schema::AttributeKey;

template <auto Member>
constexpr MemberReader<Record> Reads(AttributeKey key)
{
    return ReaderOf<Member, Record>(Schema::Name(key));
}

/** In alphabetical order, so that a key is found by halving. */
constexpr MemberReader<Record> attributeMembers[] = {
    Reads<&Record::AttributeName>(AttributeKey::AttributeName),
    Reads<&Record::CurrentValue>(AttributeKey::CurrentValue),
    Reads<&Record::DefaultValue>(AttributeKey::DefaultValue),
    Reads<&Record::DisplayName>(AttributeKey::DisplayName),
    Reads<&Record::DisplayOrder>(AttributeKey::DisplayOrder),
    Reads<&Record::GrayOut>(AttributeKey::GrayOut),
    Reads<&Record::HelpText>(AttributeKey::HelpText),
    Reads<&Record::Hidden>(AttributeKey::Hidden),
    Reads<&Record::Immutable>(AttributeKey::Immutable),
    Reads<&Record::IsSystemUniqueProperty>(AttributeKey::IsSystemUniqueProperty),
    Reads<&Record::LowerBound>(AttributeKey::LowerBound),
    Reads<&Record::MaxLength>(AttributeKey::MaxLength),
    Reads<&Record::MenuPath>(AttributeKey::MenuPath),
    Reads<&Record::MinLength>(AttributeKey::MinLength),
    Reads<&Record::ReadOnly>(AttributeKey::ReadOnly),
    Reads<&Record::ResetRequired>(AttributeKey::ResetRequired),
    Reads<&Record::ScalarIncrement>(AttributeKey::ScalarIncrement),
    Reads<&Record::Type>(AttributeKey::Type),
    Reads<&Record::UpperBound>(AttributeKey::UpperBound),
    Reads<&Record::ValueExpression>(AttributeKey::ValueExpression),
    Reads<&Record::WarningText>(AttributeKey::WarningText),
    Reads<&Record::WriteOnly>(AttributeKey::WriteOnly),
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
    ReaderOf<&Choice::ValueName, Choice>(Schema::Name(Schema::ChoiceKey::ValueName)),
    ReaderOf<&Choice::ValueDisplayName, Choice>(Schema::Name(Schema::ChoiceKey::ValueDisplayName)),
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
