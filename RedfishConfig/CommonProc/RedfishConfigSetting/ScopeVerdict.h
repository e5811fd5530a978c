#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace RedfishConfig {

/** How a number stands to its bounds; what RedfishConfigSetting::CheckValueValidScope() answers. */
enum ScopeVerdict : int {
    InScope = 0,
    OutsideBoth = 1,
    BelowLower = 2, ///< of a lower bound alone
    AboveUpper = 3, ///< of an upper bound alone
    BoundsUnusable = 4,
};

/** A bound and the registry key that gives it. */
struct NamedBound {
    const char* key;
    const std::optional<std::int64_t>& value;
};

/** The reason of a refusal, for instance "The value need equal or great than 10."; empty for other verdicts. */
inline std::string DescribeScopeViolation(int verdict, const std::string& subject, const NamedBound& lower,
                                          const NamedBound& upper)
{
    const auto text = [](const NamedBound& bound) {
        return bound.value ? std::to_string(*bound.value) : std::string();
    };
    switch (verdict) {
    case OutsideBoth:
        return subject + " out of scope: " + lower.key + "=" + text(lower) + " " + upper.key + "=" + text(upper) + ".";
    case BelowLower:
        return subject + " need equal or great than " + text(lower) + ".";
    case AboveUpper:
        return subject + " need equal or less than " + text(upper) + ".";
    default:
        return {};
    }
}

} // namespace RedfishConfig
