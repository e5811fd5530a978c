#pragma once

/**
 * @file
 * Everything that stands between a controller's documents and the library. In reading order.
 */

#include <RedfishConfig/Client/Documents.h>

#include <RedfishConfig/Client/Adapt.h>

#include <RedfishConfig/Client/Analyse.h>

#include <RedfishConfig/Client/Finding.h>
