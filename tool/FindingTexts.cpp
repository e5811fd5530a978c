#include "FindingTexts.h"

#include "Text.h"

#include <cstddef>
#include <map>

namespace RedfishConfigTool {

namespace Client = RedfishConfig::Client;
using Client::Finding;
using Client::FindingKind;
using Client::Severity;

namespace {

using LevelCounts = std::map<Severity, std::size_t>;

std::string CountedLevels(const LevelCounts& levels)
{
    std::string counted;
    for (const Severity level : {Severity::Error, Severity::Warning, Severity::Note}) {
        if (const auto found = levels.find(level); found != levels.end()) {
            counted += (counted.empty() ? "" : ", ") + Counted(found->second, std::string(Client::Word(level)));
        }
    }
    return counted;
}

} // namespace

std::vector<std::string> RemarksOn(const Documents& documents)
{
    std::vector<std::string> remarks;
    for (const Finding& finding : documents.Published.Findings) {
        if (finding.Kind == FindingKind::UnusableValue && finding.CountsOthers) {
            remarks.push_back(documents.Files.Values + ": " + Counted(finding.Count, "more value") +
                              " cannot be used, and each counts as no value");
        } else if (finding.Kind == FindingKind::UnusableValue) {
            remarks.push_back(documents.Files.Values + ": the value of " + finding.Attribute + " is " + finding.Found +
                              " and counts as no value");
        }
    }
    return remarks;
}

std::string CountedFindings(const std::vector<Finding>& findings)
{
    LevelCounts levels;
    for (const Finding& finding : findings) {
        levels[finding.Level] += finding.Count;
    }
    return CountedLevels(levels);
}

std::string Summary(const DocumentFiles& files, const std::vector<Doubt>& doubts, const IsAbout& isAbout)
{
    std::string summary;
    for (const Client::Document document : {Client::Document::Registry, Client::Document::Values}) {
        LevelCounts levels;
        for (const Doubt& doubt : doubts) {
            if (doubt.In == document && (doubt.Setting.empty() || isAbout(doubt.Setting))) {
                levels[doubt.Level] += doubt.Count;
            }
        }
        if (!levels.empty()) {
            const std::string& file = document == Client::Document::Registry ? files.Registry : files.Values;
            summary += file + ": " + CountedLevels(levels) + "; ";
        }
    }
    return summary.empty() ? "" : summary + "redfishconfig lint tells them";
}

} // namespace RedfishConfigTool
