#pragma once

#include <RedfishConfig/RedfishConfigSetting.h>

#include <string>
#include <utility>

namespace RegistryTest {

/**
 * A setting of the type `Typed` whose protected operations a test can call, and whose state it can look into:
 *
 *     Probe<RedfishConfigTextSetting> setting(info);
 *     EXPECT_TRUE(setting.isReadOnly());
 */
template <class Typed>
class Probe : public Typed {
public:
    explicit Probe(const RedfishConfig::RedfishConfigSettingInfoStru& info,
                   const RedfishConfig::Config_Options& options = {})
        : Typed(info, options)
    {
    }

    using Typed::CheckValueValidScope;
    using Typed::GetOptionalAsHexStr;
    using Typed::GetValueScope;
    using Typed::isGrayOut;
    using Typed::isHidden;
    using Typed::isImmutable;
    using Typed::isProtected;
    using Typed::isReadOnly;
    using Typed::isSystemUnique;
    using Typed::isWriteOnly;
    using Typed::TransferOpIntegerToInteger;

    using Typed::m_ErrMsg;
    using Typed::m_Options;

    /** Changes the record as SetSettingProperties() does. */
    template <class Change>
    void ChangeRecord(Change change)
    {
        RedfishConfig::RedfishConfigSettingInfoStru record = this->GetSettingProperties();
        change(record);
        this->SetSettingProperties(record);
    }

    /** The base class's own check: the pattern alone. */
    RedfishConfig::RedfishConfigResult BaseCheck(std::string& newValue, std::string& errMsg)
    {
        return RedfishConfig::RedfishConfigSetting::CheckNewValueIsValid(newValue, errMsg);
    }
};

/** The check that the setting's type makes, called as the library calls it: through the base class. */
inline RedfishConfig::RedfishConfigResult Check(RedfishConfig::RedfishConfigSetting& setting, std::string& newValue,
                                                std::string& errMsg)
{
    struct Access : RedfishConfig::RedfishConfigSetting {
        using RedfishConfigSetting::CheckNewValueIsValid;
    };
    return (setting.*(&Access::CheckNewValueIsValid))(newValue, errMsg);
}

/** The text that a PATCH body carries for an accepted value. */
std::string PatchText(RedfishConfig::RedfishConfigSetting& setting, const std::string& value);

/** Whether the registry's own flags admit a change, and the reason when not; "untouched" when they do. */
std::pair<bool, std::string> CouldBePatched(RedfishConfig::RedfishConfigSetting& setting);

} // namespace RegistryTest
