#pragma once

#include "Menus.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace RedfishConfig::App {

class Setting;

/** Everything that is known of a setting, its current value applied. The values of a password are not in it. */
using SettingRecord = RedfishConfig::RedfishConfigSettingInfoStru;

/** Makes the records of settings when they are asked for. */
class RecordSource {
public:
    virtual ~RecordSource() = default;
    virtual SettingRecord RecordOf(const Setting& setting) const = 0;
};

/** A setting of a system. */
class Setting {
public:
    /** A setting whose record is known, of a password without its values. */
    explicit Setting(SettingRecord record);

    /** A setting of an attribute; @p attribute and @p source must outlive it. @param index what the source knows it by
     */
    Setting(const RedfishConfig::Client::Attribute& attribute, std::size_t index, const RecordSource& source);

    const std::string& Name() const { return *m_Name; }
    std::string_view Type() const { return m_Type; }
    const std::optional<std::string>& MenuPath() const { return *m_MenuPath; }
    std::optional<std::int64_t> DisplayOrder() const { return m_DisplayOrder; }
    bool IsPassword() const;

    /** Made at the first call. */
    const SettingRecord& Record() const;

    std::size_t Index = 0;        ///< what its system knows it by
    const Menu* InMenu = nullptr; ///< the root when the registry names no menu
    std::size_t Position = 0;     ///< in the registry

private:
    const RecordSource* m_Source = nullptr;
    mutable std::unique_ptr<const SettingRecord> m_Record;
    const std::string* m_Name;
    std::string_view m_Type;
    const std::optional<std::string>* m_MenuPath;
    std::optional<std::int64_t> m_DisplayOrder;
};

} // namespace RedfishConfig::App
