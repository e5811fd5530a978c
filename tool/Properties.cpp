#include "Properties.h"

namespace RedfishConfigTool {

boost::json::object StatusToJson(const RedfishConfig::SettingStatus& status)
{
    boost::json::object properties;
    for (const ShownProperty& property : shownProperties) {
        const RedfishConfig::PropertyState& state = status.*property.State;
        properties[property.JsonKey] = boost::json::object{{"value", state.Value}, {"reason", state.Reason}};
    }
    return properties;
}

} // namespace RedfishConfigTool
