#include "Commands.h"

#include "../FindingTexts.h"
#include "../Text.h"

#include <CLI/App.hpp>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace RedfishConfigTool {

namespace json = boost::json;
namespace Client = RedfishConfig::Client;
using Client::Finding;
using Client::Severity;

namespace {

constexpr std::size_t narrowestText = 20;

void Append(std::vector<Finding> further, std::vector<Finding>& findings)
{
    std::move(further.begin(), further.end(), std::back_inserter(findings));
}

/** All findings: the gravest first, then by kind, then as they were found. */
std::vector<Finding> CollectFindings(const Documents& documents)
{
    std::vector<Finding> findings = FindingsOf(documents);
    Append(Client::LintRegistry(documents.Model()), findings);
    Append(Client::LintValues(documents.Evaluated, documents.Values), findings);
    std::stable_sort(findings.begin(), findings.end(), [](const Finding& left, const Finding& right) {
        return std::tie(right.Level, left.Kind) < std::tie(left.Level, right.Kind);
    });
    return findings;
}

bool IsOfOneGroup(const Finding& left, const Finding& right)
{
    return left.Level == right.Level && left.Kind == right.Kind;
}

void PrintFinding(const Finding& finding, Output& output)
{
    constexpr std::size_t indentation = 4;
    output.Answers() << "  " << Client::Word(finding.In) << ' ' << Escape(finding.Pointer) << '\n';
    const std::size_t width = std::max(output.Width(), indentation + narrowestText) - indentation;
    for (const std::string& line : Wrap(finding.Found + "; " + finding.Consequence, width)) {
        output.Answers() << std::string(indentation, ' ') << line << '\n';
    }
}

void Print(const std::vector<Finding>& findings, Output& output)
{
    for (auto begin = findings.begin(); begin != findings.end();) {
        const auto end = std::find_if_not(begin, findings.end(),
                                          [&](const Finding& finding) { return IsOfOneGroup(*begin, finding); });
        const std::string heading =
            std::string(Client::Word(begin->Level)) + " " + std::string(Client::Word(begin->Kind));
        const std::size_t count = std::accumulate(
            begin, end, std::size_t{0}, [](std::size_t sum, const Finding& finding) { return sum + finding.Count; });
        output.Answers() << output.Paint().Heading(heading) << ": " << count << '\n';
        for (; begin != end; ++begin) {
            PrintFinding(*begin, output);
        }
        output.Answers() << '\n';
    }
}

void PrintRules(const std::map<Client::RuleForm, Client::RuleCount>& rules, Output& output)
{
    for (const auto& [form, count] : rules) {
        output.Answers() << Counted(count.Published, "rule") << " of the form " << Client::Word(form) << ": "
                         << count.Read << " read, " << count.LeftOut << " left out\n";
    }
}

json::value TextOrNull(const std::string& text)
{
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::object ToJson(const std::vector<Finding>& findings, const std::map<Client::RuleForm, Client::RuleCount>& rules)
{
    json::object forms;
    for (const auto& [form, count] : rules) {
        forms[Client::Word(form)] =
            json::object{{"published", count.Published}, {"read", count.Read}, {"leftOut", count.LeftOut}};
    }
    json::object counts;
    for (const Severity level : {Severity::Error, Severity::Warning, Severity::Note}) {
        std::size_t count = 0;
        for (const Finding& finding : findings) {
            count += finding.Level == level ? finding.Count : 0;
        }
        counts[Client::Word(level)] = count;
    }
    json::array list;
    list.reserve(findings.size());
    for (const Finding& finding : findings) {
        list.push_back(json::object{{"severity", Client::Word(finding.Level)},
                                    {"kind", Client::Word(finding.Kind)},
                                    {"document", Client::Word(finding.In)},
                                    {"place", finding.Pointer},
                                    {"found", finding.Found},
                                    {"consequence", finding.Consequence},
                                    {"count", finding.Count},
                                    {"attribute", TextOrNull(finding.Attribute)},
                                    {"rule", finding.Rule ? json::value(*finding.Rule) : json::value(nullptr)}});
    }
    return {{"rules", std::move(forms)}, {"counts", std::move(counts)}, {"findings", std::move(list)}};
}

} // namespace

ExitCode RunLint(const Documents& documents, Output& output)
{
    const std::vector<Finding> findings = CollectFindings(documents);
    if (output.Json()) {
        output.Write(ToJson(findings, documents.Model().Forms()));
    } else {
        Print(findings, output);
        PrintRules(documents.Model().Forms(), output);
        const std::string counted = CountedFindings(findings);
        output.Answers() << (counted.empty() ? "nothing found" : counted) << '\n';
    }
    const bool anyError = !findings.empty() && findings.front().Level == Severity::Error;
    return anyError ? ExitCode::Refused : ExitCode::Answered;
}

DocumentsRunner AttachLint(CLI::App& /*command*/)
{
    return RunLint;
}

} // namespace RedfishConfigTool
