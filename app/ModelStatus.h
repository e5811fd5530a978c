#pragma once

#include "System.h"

#include <RedfishConfig/Client/Evaluate.h>
#include <RedfishConfig/Client/SystemValues.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig::App {

/** Why a setting takes no part in some work. */
struct Excluded {
    std::string Message; ///< "BootMode is read-only because SecureBoot is Enabled (rule 3)."
    std::string Reason;  ///< "read-only because SecureBoot is Enabled (rule 3)"
};

/** Whether a setting takes part in some work. */
struct Access {
    std::optional<Excluded> Refusal;
    std::vector<std::pair<StatusRow, std::string>> Doubts; ///< what would exclude it, but is not true as far as known
};

/** The dynamic properties of settings as the rules of their registry give them. */
class ModelStatus {
public:
    /** Both must outlive the object. */
    ModelStatus(const RedfishConfig::Client::Evaluation& evaluation, const RedfishConfig::Client::SystemValues& values)
        : m_Evaluation(evaluation), m_Values(values)
    {
    }

    SettingStatus Of(std::size_t attribute, Detail detail) const;

    /** Whether a setting takes part in an action. @param detail Verdicts leaves all texts empty */
    Access AccessFor(std::size_t attribute, RedfishConfig::filterAction action, bool includeProtected,
                     Detail detail) const;

    /** Why the property is as it is; empty for one that is certainly false. */
    std::string ReasonOf(std::size_t attribute, StatusRow row) const;
    std::string DoubtAbout(std::size_t attribute, StatusRow row) const;

private:
    RedfishConfig::Client::Verdict VerdictOf(std::size_t attribute, StatusRow row) const;
    std::vector<std::size_t> RulesOf(std::size_t attribute, StatusRow row) const;
    Excluded Explain(std::size_t attribute, StatusRow row, bool isCertain) const;

    const RedfishConfig::Client::Evaluation& m_Evaluation;
    const RedfishConfig::Client::SystemValues& m_Values;
};

} // namespace RedfishConfig::App
