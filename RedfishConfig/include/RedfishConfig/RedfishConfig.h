#pragma once

/**
 * @file
 * Everything a caller of the library needs. In reading order.
 */

#include <RedfishConfig/RedfishConfigSettingManager.h>

#include <RedfishConfig/RedfishConfigSetting.h>

#include <RedfishConfig/RedfishConfigResult.h>
#include <RedfishConfig/SettingValue.h>

#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <RedfishConfig/RedfishConfigExpression.h>

#include <RedfishConfig/Log.h>

#include <RedfishConfig/Export.h>
