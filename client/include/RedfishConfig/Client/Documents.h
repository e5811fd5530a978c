#pragma once

/**
 * @file
 * Reads what a controller hands out: its attribute registry, and the current values of its attributes.
 */

#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Client/Json.h>
#include <RedfishConfig/Export.h>
#include <RedfishConfig/SettingValue.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** An attribute registry as published. Nothing in it is repaired yet. */
struct RegistryDocument {
    std::shared_ptr<const JsonDocument> Json; ///< null when the document cannot be used
    JsonValue Registry;                       ///< the object with "Id", "Language" and the like
    JsonValue Entries;                        ///< the object with "Attributes", "Dependencies" and "Menus"
    std::string Pointer;                      ///< JSON Pointer to Entries in the document as it was given
    std::vector<Finding> Findings;

    bool Usable() const { return Entries.Exists(); }
};

/** The values of a system as published: texts, whole numbers, booleans, and nulls for attributes without a value. */
struct ValuesDocument {
    SettingValueMap Values;
    std::string Pointer;           ///< JSON Pointer to the object of values in the document as it was given
    std::string AttributeRegistry; ///< the "Id" of the registry that the values belong to; empty when not said
    std::string SettingsObject;    ///< where changes are to be sent ("@Redfish.Settings"); empty when not said
    std::vector<Finding> Findings;
};

/**
 * Reads an attribute registry. The bytes are JSON in UTF-8, with or without a byte-order mark, or that in gzip form, up
 * to 256 MiB of text and 32 objects and lists in each other. The registry may lie inside other objects and lists, whose
 * keys have 4,096 bytes at most, and may lack the object "RegistryEntries" around its lists.
 *
 * Never throws for what is in the bytes: a document that cannot be used is empty, with a finding of severity error.
 */
REDFISHCONFIG_EXPORT RegistryDocument ReadRegistryDocument(std::string_view bytes);

/**
 * Reads a Bios resource, or a bare object of names and values; as ReadRegistryDocument() does. A value that no setting
 * can hold (a list, an object, a fraction, a number beyond 64 signed bits) counts as null, with a finding. Annotations,
 * the members whose names begin with "@", are left out.
 */
REDFISHCONFIG_EXPORT ValuesDocument ReadValuesDocument(std::string_view bytes);

} // namespace RedfishConfig::Client
