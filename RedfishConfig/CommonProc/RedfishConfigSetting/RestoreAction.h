#pragma once

#include <RedfishConfig/RedfishConfigSetting.h>

namespace RedfishConfig {

/** The kind of work that restoring a saved value is. */
inline filterAction RestoreAction(bool admitSystemUnique)
{
    return admitSystemUnique ? FILTER_RESTORE_WITH_UNIQUE : FILTER_RESTORE;
}

} // namespace RedfishConfig
