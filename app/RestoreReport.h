#pragma once

#include "PatchBody.h"
#include "SavedSystem.h"
#include "System.h"

#include <cstddef>
#include <string>
#include <vector>

namespace RedfishConfig::App {

/** A setting and what keeps it from being restored. */
struct NotRestored {
    std::string Name;
    std::string Reason; ///< empty for a name that is no setting
};

/** What becomes of saved values on a system. */
struct RestoreReport {
    PatchBody Body;
    std::size_t Restored = 0;
    std::size_t AlreadySo = 0;
    std::vector<NotRestored> Skipped; ///< settings that take no part
    std::vector<NotRestored> Unknown; ///< names that are no setting here
    std::vector<NotRestored> Invalid; ///< values that are refused
    std::vector<Answer> Doubtful;     ///< those in the body that have Doubts

    bool IsComplete() const { return Skipped.empty() && Unknown.empty() && Invalid.empty(); }
};

/** What is restored beside what is portable and differs. */
struct RestoreScope {
    bool WithUnique = false; ///< what belongs to one system too
    bool Full = false;       ///< what is already so too
};

/** The PATCH body that gives a system the values, and what is not in it. A password is never restored. */
RestoreReport ReportRestore(const std::vector<Assignment>& values, System& system, const RestoreScope& scope);

} // namespace RedfishConfig::App
