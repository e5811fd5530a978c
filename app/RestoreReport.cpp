#include "RestoreReport.h"

#include "TypedValue.h"

#include <map>

namespace RedfishConfig::App {

namespace {

bool IsAlreadySo(const Setting& setting, const std::string& value, const System& system)
{
    const auto& current = setting.Record().CurrentValue;
    return current && system.AreSame(setting, PlainText(*current), value);
}

/** The values that the library is to look at; what it need not see goes into the report. */
std::map<std::string, std::string> Sort(const std::vector<Assignment>& values, const System& system, bool full,
                                        RestoreReport& report)
{
    std::map<std::string, std::string> candidates;
    for (const Assignment& saved : values) {
        const Setting* setting = system.Find(saved.Name);
        if (setting == nullptr) {
            report.Unknown.push_back({saved.Name, ""});
        } else if (setting->IsPassword()) {
            report.Skipped.push_back({saved.Name, "a password is never restored from a file"});
        } else if (saved.IsNull && setting->Record().CurrentValue) {
            report.Skipped.push_back({saved.Name, "the file has no value for it"});
        } else if (!saved.IsNull && !saved.Value) {
            report.Invalid.push_back({saved.Name, saved.Defect});
        } else if (saved.IsNull || (!full && IsAlreadySo(*setting, *saved.Value, system))) {
            ++report.AlreadySo;
        } else {
            candidates.emplace(saved.Name, *saved.Value);
        }
    }
    return candidates;
}

void TakeAccepted(const Restored& restored, const System& system, bool full, RestoreReport& report)
{
    for (const auto& [name, patchText] : restored.PatchTexts) {
        const Setting& setting = *system.Find(name);
        const std::string defect = report.Body.Add(setting, patchText);
        if (!defect.empty()) {
            report.Invalid.push_back({name, defect});
            continue;
        }
        const auto& current = setting.Record().CurrentValue;
        // the library may have found another spelling of the value that is there
        const bool same = current && TypedValue(setting, PlainText(*current)) == *report.Body.Find(setting);
        ++(same ? report.AlreadySo : report.Restored);
        if (same && !full) {
            report.Body.Remove(setting);
        }
    }
}

void TakeRefused(const Restored& restored, const std::map<std::string, std::string>& candidates, const System& system,
                 RestoreReport& report)
{
    for (const auto& [name, value] : candidates) {
        const auto refusal = restored.Refused.find(name);
        const Setting& setting = *system.Find(name);
        if (refusal == restored.Refused.end()) {
            if (report.Body.Find(setting) == nullptr && restored.PatchTexts.count(setting.Name()) == 0) {
                report.Invalid.push_back({name, "the library gives no reason"});
            }
            continue;
        }
        if (IsAlreadySo(setting, value, system)) {
            ++report.AlreadySo; // asked for with --full alone
            continue;
        }
        (refusal->second.IsFiltered ? report.Skipped : report.Invalid).push_back({name, refusal->second.Reason});
    }
}

} // namespace

RestoreReport ReportRestore(const std::vector<Assignment>& values, System& system, const RestoreScope& scope)
{
    RestoreReport report;
    const std::map<std::string, std::string> candidates = Sort(values, system, scope.Full, report);
    Restored restored = system.Restore(candidates, scope.WithUnique);
    TakeAccepted(restored, system, scope.Full, report);
    TakeRefused(restored, candidates, system, report);
    report.Doubtful = std::move(restored.Doubtful);
    return report;
}

} // namespace RedfishConfig::App
