#pragma once

/**
 * @file
 * The settings: what every setting can answer, and one class for each attribute type.
 *
 * Callers usually see settings only through RedfishConfigSettingManager, which owns them.
 */

#include <RedfishConfig/Export.h>
#include <RedfishConfig/RedfishConfigResult.h>
#include <RedfishConfig/RedfishConfigSettingInfo.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig {

/**
 * The kind of work that an operation belongs to. It decides which settings take part; the property tests are asked
 * in the order written here, and the first that excludes the setting gives the reason.
 *
 * "protected" means statically hidden by the registry; "protected*" means the same, unless
 * Config_Options::IgnoreProtected is set.
 */
enum filterAction : int {
    FILTER_QUERY_VALUE = 0,              ///< excludes write only, protected*, hidden
    FILTER_QUERY_GROUP_VALUES = 1,       ///< excludes write only, protected, hidden
    FILTER_QUERY_DEFAULT = 2,            ///< excludes protected*
    FILTER_QUERY_GROUP_DEFAULTS = 3,     ///< excludes protected
    FILTER_QUERY_DESCRIPTION = 4,        ///< excludes protected*
    FILTER_QUERY_GROUP_DESCRIPTIONS = 5, ///< excludes protected
    FILTER_QUERY_CHOICES = 6,        ///< excludes protected*; else the answer carries why it is hidden or grayed out
    FILTER_QUERY_GROUP_CHOICES = 7,  ///< excludes protected; else the same
    FILTER_PATCH = 8,                ///< excludes read only, protected*, hidden, grayed out, immutable
    FILTER_SAVE = 9,                 ///< excludes protected*, hidden, grayed out, immutable
    FILTER_SAVE_GROUP = 10,          ///< excludes protected, hidden, grayed out, immutable
    FILTER_SAVE_FULL = 11,           ///< excludes the same as FILTER_SAVE_GROUP
    FILTER_SAVE_PORTABLE = 12,       ///< excludes protected, hidden, grayed out, immutable, system unique
    FILTER_NONE_TAKES_PART = 13,     ///< excludes every setting, without a reason
    FILTER_PATCH_GROUP = 14,         ///< excludes read only, protected, hidden, grayed out, immutable
    FILTER_RESTORE_WITH_UNIQUE = 15, ///< excludes the same as FILTER_PATCH_GROUP
    FILTER_RESTORE = 16,             ///< excludes read only, protected, hidden, grayed out, immutable, system unique
    FILTER_PATCH_FROM_FILE = 17,     ///< excludes the same as FILTER_PATCH
    FILTER_LOAD_DEFAULT = 18,        ///< excludes the same as FILTER_PATCH
};

/** One dynamic property: its verdict, and the words that tell why (empty when there is nothing to tell). */
struct PropertyState {
    bool Value = false;
    std::string Reason;
};

/** The dynamic properties of a setting under the current values of all settings. */
struct SettingStatus {
    PropertyState ReadOnly;
    PropertyState WriteOnly;
    PropertyState Hidden; ///< by a rule; a setting that the registry itself hides is Protected
    PropertyState GrayOut;
    PropertyState Immutable;
    PropertyState SystemUnique;
    PropertyState Protected; ///< hidden by the registry's own flag
};

struct FormulaState;
struct ForManager {}; ///< marks the constructors that only RedfishConfigSettingManager can use
struct RegistryEntry;
struct SettingFormulas;
class SettingKeys;
class ValueApplication;

/**
 * A setting: the registry's record of one attribute with its current value and dependency formulas.
 *
 * Every operation that takes a filterAction asks filter() first. Queries answer into an argument, which stays
 * untouched on failure, and return a code; a message, where there is one, begins "The operation on setting NAME
 * fails since". A record without "AttributeName" answers 9, one with an empty name 8. No operation throws.
 *
 * One thread at a time may use a setting: even queries rewrite the reason that GetErrorMsg() returns.
 */
class REDFISHCONFIG_EXPORT RedfishConfigSetting {
public:
    RedfishConfigSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options);
    RedfishConfigSetting(const RegistryEntry& entry, const Config_Options& options, ForManager);
    RedfishConfigSetting(const RedfishConfigSetting& other);
    RedfishConfigSetting& operator=(const RedfishConfigSetting& other);
    virtual ~RedfishConfigSetting();

    /**
     * The values that the setting accepts, as text: "<DEFAULT>=OTHER=..." and the display names of the choices for
     * an Enumeration or Boolean, the bounds or lengths, the increment, the default or the pattern for the others.
     * When the setting is hidden or grayed out, or may become so, a line with the reason follows.
     *
     * @return 0; 19 when it takes no part; 8 when its bounds contradict each other; 9 when a property is missing.
     */
    virtual RedfishConfigResult GetSettingValidValues(std::string& validValues, const filterAction& action) = 0;

    /** The current value as text. @return 0; 19 when it takes no part; 9 when it has no current value. */
    RedfishConfigResult GetSettingValue(std::string& value, const filterAction& action);

    /** The default value as text. @return 0; 19 when it takes no part; 9 when it has no default value. */
    RedfishConfigResult GetSettingDefaultValue(std::string& value, const filterAction& action);

    /** The display name, a heading and the help text. @return 0; 19 when it takes no part; 9 when it has no help text.
     */
    RedfishConfigResult GetSettingDescription(std::string& description, const filterAction& action);

    /**
     * Prepares the value that a PATCH body carries for a new value: a bare literal for an Integer or Boolean, the text
     * between double quotes, with nothing inside escaped, for the other types.
     *
     * @param newValue the proposed value as text; a choice may be named in any letter case or by its display name
     * @param patchContext receives the value text
     * @return 0; 18 when the setting takes no part, for instance because it is read only; 10, 8 or 9 "New value VALUE
     *         is invalid: REASON" when its type refuses the value.
     */
    RedfishConfigResult PreparePatchContext(const std::string& newValue, std::string& patchContext,
                                            const filterAction& action);

    /** The same into a map from names to value texts. An entry that the map already has is kept. */
    RedfishConfigResult PreparePatchContext(const std::string& newValue,
                                            std::map<std::string, std::string>& patchContexts,
                                            const filterAction& action);

    /**
     * The current value as text that is worth saving; never in hexadecimal, so that saved values do not depend on how
     * they were shown.
     *
     * @return 0; 19 when the setting takes no part; 8 without a message when it has no current value.
     */
    RedfishConfigResult FetchSaveSettingValues(std::string& value, const filterAction& action);

    /**
     * Checks a saved value before it is restored.
     *
     * @param key under which @p errors receives the reason of a failure
     * @param admitSystemUnique whether a value that belongs to one system, such as an asset tag, may be restored
     * @return 0; 34 when the setting takes no part; 10, 8 or 9 "New value VALUE is invalid: REASON" when its type
     *         refuses the value.
     */
    RedfishConfigResult FetchRestoreSettingValues(const std::string& key, const std::string& value,
                                                  std::map<std::string, std::string>& errors, bool admitSystemUnique);

    /** Whether the setting takes part in the work @p action. When not, GetErrorMsg() has the reason. */
    bool filter(const filterAction& action);

    /** The seven dynamic properties, each with its reason. Never throws, and leaves GetErrorMsg() as it was. */
    SettingStatus GetStatus();

    /**
     * What the formulas of other settings may ask about this one: "NAME.PROPERTY" to "true" or "false" for the six
     * static flags, "NAME.CurrentValue" to the current value where there is one, and "NAME exist" and
     * "NAME not exist" to a comparison that holds or does not.
     *
     * @throws std::bad_alloc when memory runs out; on any other failure the map holds what came before it.
     */
    std::map<std::string, std::string> GetProperyMap();

    void setCurrentValue(const SettingValue& value);
    void SetSettingProperties(const RedfishConfigSettingInfoStru& info);
    const RedfishConfigSettingInfoStru& GetSettingProperties() const;
    void SetSettingDependencyList(const std::vector<std::string>& settings);

    /** The reason of the last refusal or verdict; filter() empties it. */
    std::string GetErrorMsg() const;

protected:
    /** @name The dynamic properties
     * Each answers from its formula where there is one and from the registry's flag otherwise, and leaves the
     * reason in m_ErrMsg. A rule that cannot be understood or calculated makes the property true, as a safeguard.
     * isHidden() alone does not answer the registry's flag: that is isProtected().
     * @throws std::bad_optional_access for a formula without MapToValue.
     * @{ */
    bool isReadOnly();
    bool isWriteOnly();
    bool isHidden();
    bool isGrayOut();
    bool isImmutable();
    bool isSystemUnique();
    bool isProtected();
    /** @} */

    /** The value as text; a number in hexadecimal when Config_Options::ShowHexValue is set. @throws as
     * GetOptionalVarAsString(). */
    std::string GetOptionalAsHexStr(const SettingValue& value) const;

    /**
     * Describes the bounds as "LowerBound=L UpperBound=U " (Integer) or "MinLength=L MaxLength=U " (all other
     * types), each item only where its bound is present.
     *
     * @return 0; 8 without a type, or with a lower bound above the upper one (@p scope is written all the same).
     */
    RedfishConfigResult GetValueScope(const std::optional<std::int64_t>& lower,
                                      const std::optional<std::int64_t>& upper, std::string& scope);

    /**
     * Compares a number with a closed range.
     *
     * @param nonNegative whether a bound below 0 is unusable
     * @return 0 in range or no bound; 1 outside of two bounds; 2 below the only bound, a lower one; 3 above the
     *         only bound, an upper one; 4 the bounds are unusable.
     */
    int CheckValueValidScope(std::int64_t value, const std::optional<std::int64_t>& lower,
                             const std::optional<std::int64_t>& upper, bool nonNegative);

    /** Copies a present number to @p out and returns 0; else 9, with @p out untouched. */
    RedfishConfigResult TransferOpIntegerToInteger(const std::optional<std::int64_t>& in, std::int64_t& out);

    /**
     * Whether the setting accepts a new value. The typed settings check their type and bounds; this one, which they
     * call, matches the whole value against "ValueExpression" where the registry gives one.
     *
     * @param newValue the proposed value; may be rewritten to its canonical spelling
     * @param errMsg receives the reason of a refusal
     * @return 0; 10 or another code when it is refused.
     */
    virtual RedfishConfigResult CheckNewValueIsValid(std::string& newValue, std::string& errMsg);

    /** Whether a new value is the text of the default value, which most types accept unchecked. */
    bool IsDefault(const std::string& newValue) const;

    /** The opening words of a refusal, from the setting's name. */
    using RefusalWords = std::string (*)(const std::string& name);

    /** "The operation on setting NAME fails since ". */
    static std::string OperationFailsSince(const std::string& name);

    /**
     * How every typed GetSettingValidValues() goes: filter, name, the type's own part, the reason that the filter
     * left, and what happens when something is raised.
     *
     * @param className the typed class, named in the log when something is raised
     * @param writeBody appends the type's own part to the answer; its failure is returned as it is
     */
    RedfishConfigResult AnswerValidValues(std::string& validValues, const filterAction& action, const char* className,
                                          const std::function<RedfishConfigResult(std::string& answer)>& writeBody,
                                          RefusalWords refusalWords = OperationFailsSince);

    /** Appends a String's or Password's own part of the valid values: @p typeWord, the length limits and the pattern.
     */
    RedfishConfigResult DescribeTextLimits(const char* typeWord, std::string& answer);

    /** Checks a text's length in bytes. @return 0; 10 with a reason; 8 without one when the limits are unusable. */
    RedfishConfigResult CheckLength(const std::string& newValue, std::string& errMsg);

    /** The registry's record. For the current value ask m_CurrentValue, for formulas GetSettingProperties(). */
    const RedfishConfigSettingInfoStru& Info() const { return *m_Info; }

    std::string m_ErrMsg; ///< the reason of the last refusal or verdict
    Config_Options m_Options;
    SettingValue m_CurrentValue;

private:
    /** The text that a PATCH body carries for an accepted value. */
    virtual std::string GeneratePatchContext(const std::string& value) = 0;

    // Whether the registry's own flags admit a change. Kept for callers that link against it; the library decides by
    // filter().
    bool CheckSettingCouldBePatched(std::string& errMsg) const;

    bool AnswerDynamicProperty(std::size_t row); // a DynamicPropertyRow
    RedfishConfigResult Refuse(int code, RefusalWords refusalWords);
    // Whether the setting takes part and its type accepts the value, which may be rewritten. Else a result of
    // refusalCode or of the type's own code, and the reason alone.
    RedfishConfigResult AdmitNewValue(std::string& value, const filterAction& action, int refusalCode,
                                      std::string& reason);
    // Both forms of PreparePatchContext(), which differ in who takes the text.
    RedfishConfigResult PreparePatch(const std::string& newValue, const filterAction& action,
                                     const std::function<void(std::string&& text)>& take);
    RedfishConfigResult RefuseAsMissing(const char* what);
    RedfishConfigResult OpenQuery(const filterAction& action, RefusalWords refusalWords);

    void Adopt(const RegistryEntry& entry);
    RedfishConfigSettingInfoStru WholeRecord() const;
    void RenewWholeRecord();
    void SetFormula(FormulaState& state, std::string&& formula);
    static bool Calculate(FormulaState& formula);

    friend class RedfishConfigSettingManager;
    friend class SettingKeys;      // reads the values of all settings of a manager
    friend class ValueApplication; // and puts them into their formulas

    std::shared_ptr<const RedfishConfigSettingInfoStru> m_Info; // shared with the settings of other managers
    std::shared_ptr<const SettingFormulas> m_Formulas;          // the same; null when there are none
    std::vector<FormulaState> m_FormulaStates;
    mutable std::unique_ptr<RedfishConfigSettingInfoStru> m_Whole; // made when a caller asks for the whole record
};

/** A setting of type "Boolean". */
class REDFISHCONFIG_EXPORT RedfishConfigBooleanSetting : public RedfishConfigSetting {
public:
    RedfishConfigBooleanSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options);
    RedfishConfigBooleanSetting(const RegistryEntry& entry, const Config_Options& options, ForManager);
    RedfishConfigBooleanSetting(const RedfishConfigBooleanSetting& other);
    ~RedfishConfigBooleanSetting() override;

    /** "<true>=false", "<false>=true", or "true=false" without a default; the marked value is the default. */
    RedfishConfigResult GetSettingValidValues(std::string& validValues, const filterAction& action) override;

private:
    // Accepts true and false in any letter case and rewrites them to lower case; the default's own text as it is.
    RedfishConfigResult CheckNewValueIsValid(std::string& newValue, std::string& errMsg) override;
    // A bare JSON literal.
    std::string GeneratePatchContext(const std::string& value) override;
};

/** A setting of type "Enumeration". */
class REDFISHCONFIG_EXPORT RedfishConfigEnumerateSetting : public RedfishConfigSetting {
public:
    RedfishConfigEnumerateSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options);
    RedfishConfigEnumerateSetting(const RegistryEntry& entry, const Config_Options& options, ForManager);
    RedfishConfigEnumerateSetting(const RedfishConfigEnumerateSetting& other);
    ~RedfishConfigEnumerateSetting() override;

    /** "<DEFAULT>=CHOICE=..." in byte-wise order, then a line "[CHOICE] : DISPLAY NAME" for each choice shown by
     * another name. */
    RedfishConfigResult GetSettingValidValues(std::string& validValues, const filterAction& action) override;

private:
    // Accepts a choice by its name or display name, in any letter case, "enable" for "enabled" and "disable" for
    // "disabled"; rewrites the value to the choice's name, then matches the pattern.
    RedfishConfigResult CheckNewValueIsValid(std::string& newValue, std::string& errMsg) override;
    // The value between double quotes; nothing inside is escaped, on purpose.
    std::string GeneratePatchContext(const std::string& value) override;
    std::string ConvertValueToCommonValue(const std::string& value);
};

/** A setting of type "Integer". */
class REDFISHCONFIG_EXPORT RedfishConfigNumericSetting : public RedfishConfigSetting {
public:
    RedfishConfigNumericSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options);
    RedfishConfigNumericSetting(const RegistryEntry& entry, const Config_Options& options, ForManager);
    RedfishConfigNumericSetting(const RedfishConfigNumericSetting& other);
    ~RedfishConfigNumericSetting() override;

    /** "Integer LowerBound=L UpperBound=U ScalarIncrement=S default=D ", each item only where it is present. */
    RedfishConfigResult GetSettingValidValues(std::string& validValues, const filterAction& action) override;

private:
    // Accepts the default's own text; else decimal digits with an optional sign, in 64 signed bits, within the
    // bounds and a whole number of increments away from the current value. Never rewrites the value.
    RedfishConfigResult CheckNewValueIsValid(std::string& newValue, std::string& errMsg) override;
    // A bare JSON number.
    std::string GeneratePatchContext(const std::string& value) override;
    RedfishConfigResult CheckScalarIncrement(const std::int64_t& value, std::string& errMsg);
};

/** A setting of type "Password". */
class REDFISHCONFIG_EXPORT RedfishConfigPasswordSetting : public RedfishConfigSetting {
public:
    RedfishConfigPasswordSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options);
    RedfishConfigPasswordSetting(const RegistryEntry& entry, const Config_Options& options, ForManager);
    RedfishConfigPasswordSetting(const RedfishConfigPasswordSetting& other);
    ~RedfishConfigPasswordSetting() override;

    /** "Password MinLength=L MaxLength=U Pattern=P ", each item only where it is present; lengths in bytes. */
    RedfishConfigResult GetSettingValidValues(std::string& validValues, const filterAction& action) override;

private:
    // Checks the length in bytes; the pattern is matched but never refuses a password.
    RedfishConfigResult CheckNewValueIsValid(std::string& newValue, std::string& errMsg) override;
    // The value between double quotes; nothing inside is escaped, on purpose.
    std::string GeneratePatchContext(const std::string& value) override;
};

/** A setting of type "String". */
class REDFISHCONFIG_EXPORT RedfishConfigTextSetting : public RedfishConfigSetting {
public:
    RedfishConfigTextSetting(const RedfishConfigSettingInfoStru& info, const Config_Options& options);
    RedfishConfigTextSetting(const RegistryEntry& entry, const Config_Options& options, ForManager);
    RedfishConfigTextSetting(const RedfishConfigTextSetting& other);
    ~RedfishConfigTextSetting() override;

    /** "String MinLength=L MaxLength=U Pattern=P ", each item only where it is present; lengths in bytes. */
    RedfishConfigResult GetSettingValidValues(std::string& validValues, const filterAction& action) override;

private:
    // Accepts the default's own text; else checks the length in bytes, then the pattern.
    RedfishConfigResult CheckNewValueIsValid(std::string& newValue, std::string& errMsg) override;
    // The value between double quotes; nothing inside is escaped, on purpose.
    std::string GeneratePatchContext(const std::string& value) override;
};

} // namespace RedfishConfig
