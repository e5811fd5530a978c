#include "ClientTest.h"
#include "RealSystems.h"

#include <iostream>

// What is read of the registries that controllers published.

namespace {

using namespace ClientTest;

/** The kinds of findings for which a rule is left out. */
bool LeavesARuleOut(const Finding& finding)
{
    constexpr FindingKind kinds[] = {FindingKind::UnknownTarget, FindingKind::UnsupportedTargetProperty,
                                     FindingKind::MenuTarget, FindingKind::UnusableRule,
                                     FindingKind::OutcomeOfOtherType};
    return finding.Rule && finding.Consequence == "the rule is left out" &&
           std::find(std::begin(kinds), std::end(kinds), finding.Kind) != std::end(kinds);
}

void PrintFindings(const std::vector<Finding>& findings)
{
    std::map<std::string, std::size_t> kinds;
    for (const Finding& finding : findings) {
        ++kinds[std::string(Word(finding.Level)) + " " + std::string(Word(finding.Kind))];
    }
    for (const auto& [kind, count] : kinds) {
        std::cout << "    " << kind << ": " << count << "\n";
    }
}

void PrintVerdicts(const Evaluation& evaluation)
{
    std::size_t isTrue = 0;
    std::size_t uncertain = 0;
    std::size_t marked = 0;
    for (std::size_t attribute = 0; attribute < evaluation.Of().Attributes().size(); ++attribute) {
        for (std::size_t flag = 0; flag < flagCount; ++flag) {
            const Verdict verdict = evaluation.VerdictOn(attribute, static_cast<Property>(flag));
            isTrue += verdict.Value ? 1U : 0U;
            uncertain += verdict.Certain ? 0U : 1U;
            marked += verdict.Marked ? 1U : 0U;
        }
    }
    std::cout << "    verdicts: " << isTrue << " true, " << uncertain << " uncertain, " << marked << " marked\n";
}

TEST(RealRegistries, ReportWhatWasRead)
{
    SKIP_WITHOUT_REGISTRIES();
    for (const RealSystem& system : RealSystems()) {
        SCOPED_TRACE(system.Name);
        const RegistryDocument document = ReadRegistryDocument(system.Registry);
        ASSERT_TRUE(document.Usable());
        const auto model = Model::Read(document);
        const ValuesDocument values = system.Values();
        const SystemValues now(model, values);
        std::cout << system.Name << ": " << model->Attributes().size() << " attributes, " << model->Menus().size()
                  << " menus, " << model->Rules().size() << " rules\n";

        std::size_t published = 0;
        std::size_t leftOut = 0;
        for (const auto& [form, count] : model->Forms()) {
            std::cout << "    " << Word(form) << ": " << count.Published << " published, " << count.Read << " read, "
                      << count.LeftOut << " left out\n";
            EXPECT_EQ(count.Published, count.Read + count.LeftOut) << Word(form);
            published += count.Published;
            leftOut += count.LeftOut;
        }
        EXPECT_EQ(published, document.Entries.Member("Dependencies").Size());
        EXPECT_EQ(published - leftOut, model->Rules().size());

        std::set<std::size_t> found; // rules that are left out, by their findings
        for (const Finding& finding : model->Findings()) {
            if (LeavesARuleOut(finding)) {
                found.insert(*finding.Rule);
            }
        }
        EXPECT_EQ(found.size(), leftOut);
        for (const Rule& rule : model->Rules()) {
            EXPECT_EQ(found.count(rule.Position), 0U) << ToText(rule);
        }
        PrintFindings(model->Findings());
        PrintFindings(now.Findings(values));
        PrintVerdicts(Evaluation(now));
    }
}

} // namespace
