#pragma once

/**
 * @file
 * Everything between a controller's documents and an answer about them. In reading order.
 */

#include <RedfishConfig/Client/Documents.h>

#include <RedfishConfig/Client/Json.h>

#include <RedfishConfig/Client/Finding.h>

#include <RedfishConfig/Client/Value.h>

#include <RedfishConfig/Client/Attribute.h>

#include <RedfishConfig/Client/Rule.h>

#include <RedfishConfig/Client/Model.h>

#include <RedfishConfig/Client/SystemValues.h>

#include <RedfishConfig/Client/Truth.h>

#include <RedfishConfig/Client/Evaluate.h>

#include <RedfishConfig/Client/Cascade.h>

#include <RedfishConfig/Client/ValueSet.h>

#include <RedfishConfig/Client/Lint.h>

#include <RedfishConfig/Client/Adapt.h>
