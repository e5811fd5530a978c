#include "ProbeSetting.h"

namespace RegistryTest {

using RedfishConfig::RedfishConfigSetting;

namespace {

/** Where an explicit instantiation leaves a pointer to a private member: the one place where access is not checked. */
template <class Tag>
struct PrivateMember {
    static inline typename Tag::Type pointer{};
};

template <class Tag, typename Tag::Type Member>
struct ExposePrivateMember {
    struct Fill {
        Fill() { PrivateMember<Tag>::pointer = Member; }
    };
    static inline Fill fill;
};

struct GeneratePatchContextTag {
    using Type = std::string (RedfishConfigSetting::*)(const std::string&);
};
template struct ExposePrivateMember<GeneratePatchContextTag, &RedfishConfigSetting::GeneratePatchContext>;

struct CouldBePatchedTag {
    using Type = bool (RedfishConfigSetting::*)(std::string&) const;
};
template struct ExposePrivateMember<CouldBePatchedTag, &RedfishConfigSetting::CheckSettingCouldBePatched>;

} // namespace

std::string PatchText(RedfishConfigSetting& setting, const std::string& value)
{
    return (setting.*PrivateMember<GeneratePatchContextTag>::pointer)(value);
}

std::pair<bool, std::string> CouldBePatched(RedfishConfigSetting& setting)
{
    std::string reason = "untouched";
    const bool answer = (setting.*PrivateMember<CouldBePatchedTag>::pointer)(reason);
    return {answer, reason};
}

} // namespace RegistryTest
