#pragma once

#include "../JsonMember.h"
#include "common/SchemaNames.h"

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <string_view>

namespace RedfishConfig {

/** The reader of the member that a key of an attribute object fills, or null. Not for "Value", the list of choices. */
const MemberReader<RedfishConfigSettingInfoStru>* FindAttributeMember(std::string_view key);

/** The same for an entry of the list of choices. */
const MemberReader<RedfishConfigValueEntryStru>* FindChoiceMember(std::string_view key);

/** The key of the list of choices. */
constexpr std::string_view choicesKey = Schema::Name(Schema::AttributeKey::Choices);

/** Adds a choice to an attribute. One without a name is skipped; of two with one name the first is kept. */
void AddChoice(RedfishConfigSettingInfoStru& record, RedfishConfigValueEntryStru&& choice);

} // namespace RedfishConfig
