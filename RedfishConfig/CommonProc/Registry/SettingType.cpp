#include "SettingType.h"

#include "common/Ascii.h"
#include "common/SchemaNames.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace RedfishConfig {

namespace {

/** Row N is the type of the schema's row N. */
constexpr SettingType settingTypes[] = {SettingType::Boolean, SettingType::Enumeration, SettingType::Integer,
                                        SettingType::Password, SettingType::String};
static_assert(std::size(settingTypes) == std::size(Schema::types));

} // namespace

SettingType SettingTypeOf(const std::optional<std::string>& name)
{
    if (!name) {
        return SettingType::None;
    }
    const auto* const found =
        std::find_if(std::begin(Schema::types), std::end(Schema::types),
                     [&](std::string_view type) { return Ascii::EqualIgnoringCase(*name, type); });
    return found != std::end(Schema::types) ? settingTypes[found - std::begin(Schema::types)] : SettingType::None;
}

} // namespace RedfishConfig
