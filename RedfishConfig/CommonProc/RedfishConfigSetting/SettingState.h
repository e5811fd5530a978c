#pragma once

#include "../Rules/SettingFormulas.h"
#include "DynamicProperty.h"

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <memory>
#include <string>

namespace RedfishConfig {

/** What a setting is made of: what the registry tells, shared by the settings of all managers of that registry. */
struct RegistryEntry {
    std::shared_ptr<const RedfishConfigSettingInfoStru> Record;
    std::shared_ptr<const SettingFormulas> Formulas; ///< null: no rule decides anything
};

/** A formula of one setting of one manager. */
struct FormulaState {
    enum class Verdict : std::uint8_t { Unknown, Fails, Holds };

    const std::string* Property = nullptr;
    DynamicPropertyRow Row = DynamicPropertyRows;   ///< what Property names; DynamicPropertyRows: none of them
    const PropertyExpression* Expression = nullptr; ///< its Formula is not the current one
    std::string Formula;                            ///< with the values put in
    Verdict Known = Verdict::Unknown;               ///< what calculating Formula came to
};

} // namespace RedfishConfig
