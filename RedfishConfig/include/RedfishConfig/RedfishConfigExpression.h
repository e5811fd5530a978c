#pragma once

/**
 * @file
 * Dependency formulas: how the registry's rules become formulas, and how a formula is evaluated.
 */

#include <RedfishConfig/Export.h>
#include <RedfishConfig/RedfishConfigResult.h>
#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace RedfishConfig {

class Registry;
struct DependencyRule;

/**
 * Evaluates formulas, and builds them from a registry's "Dependencies".
 *
 * The dependency list is read from the first registry text that can be read and kept for the object's life:
 * texts handed in later are not looked at.
 */
class REDFISHCONFIG_EXPORT RedfishConfigExpression {
public:
    RedfishConfigExpression();
    RedfishConfigExpression(const RedfishConfigExpression& other);
    RedfishConfigExpression& operator=(const RedfishConfigExpression& other);
    ~RedfishConfigExpression();

    /**
     * Evaluates a formula of literal texts, the operators == != > >= < <= && || and parentheses.
     *
     * Operands are texts and compared byte by byte, so "10" orders before "9". White space is part of an operand.
     * && and || have the same precedence and group to the right: A&&B||C means A&&(B||C). A comparison binds
     * tighter. The result, and each operand of && and ||, must be TRUE or FALSE in any letter case.
     *
     * @throws std::string the message, when the formula cannot be calculated: "Invalid Formular.",
     *         "Invalid operator: ...", "Invalid param for operator: ...", "Final result error: ...".
     */
    bool Calculate(const std::string& formula);

    /**
     * Builds the formulas of every rule of the registry into @p maps. A rule that is unusable, or has the
     * opposite outcome of an earlier one for the same property, is logged and left out. A rule that @p maps holds
     * already is not added again.
     *
     * @param registry text of an attribute registry (DMTF Redfish AttributeRegistry)
     * @param related not changed
     * @param maps added to, not cleared
     * @return 0, also without any rules; 27 when "Dependencies" is not an array.
     * @throws std::exception when the text is not JSON or not an object.
     */
    RedfishConfigResult ParseAllSettingsDependency(const std::string& registry, std::vector<std::string>& related,
                                                   ExpressionMaps& maps);

    /**
     * The same for the rules whose target is @p setting, in any letter case.
     *
     * @param related receives the names of the settings that these rules read, each once
     */
    RedfishConfigResult ParseSingleSettingDependency(const std::string& registry, const std::string& setting,
                                                     std::vector<std::string>& related, ExpressionMaps& maps);

private:
    friend class RedfishConfigSettingManager;

    using RegistryReading = std::function<std::shared_ptr<const Registry>()>; // called on first use, until it succeeds

    RedfishConfigResult ReadDependencyList(const RegistryReading& read);
    // Like the operations above. Without maps only the dependency list is read, and related names are found.
    RedfishConfigResult ParseAll(const RegistryReading& read, ExpressionMaps* maps);
    RedfishConfigResult ParseSingle(const RegistryReading& read, const std::string& setting,
                                    std::vector<std::string>& related, ExpressionMaps* maps);
    static RedfishConfigResult BuildExpression(const DependencyRule& rule, ExpressionMaps& maps);

    std::shared_ptr<const Registry> m_Registry;
    bool m_DependenciesRead = false;
    bool m_CFCFlag = false; // handed in by the manager; no rule consults it
};

} // namespace RedfishConfig
