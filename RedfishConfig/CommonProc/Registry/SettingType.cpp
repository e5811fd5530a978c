#include "SettingType.h"

#include "../LetterCase.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace RedfishConfig {

namespace {

struct TypeName {
    std::string_view lowerCase;
    SettingType type;
};

constexpr TypeName typeNames[] = {
    {"string", SettingType::String},   {"integer", SettingType::Integer},   {"enumeration", SettingType::Enumeration},
    {"boolean", SettingType::Boolean}, {"password", SettingType::Password},
};

} // namespace

SettingType SettingTypeOf(const std::optional<std::string>& name)
{
    if (!name) {
        return SettingType::None;
    }
    const auto* const found = std::find_if(std::begin(typeNames), std::end(typeNames), [&](const TypeName& row) {
        return std::equal(name->begin(), name->end(), row.lowerCase.begin(), row.lowerCase.end(),
                          [](char a, char b) { return LowerAscii(a) == b; });
    });
    return found != std::end(typeNames) ? found->type : SettingType::None;
}

} // namespace RedfishConfig
