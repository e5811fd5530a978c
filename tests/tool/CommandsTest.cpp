#include "commands/Commands.h"

#include "FindingTexts.h"
#include "ToolTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace ToolTest;
using Complaints = std::vector<std::string>;

RegistryBuilder Small()
{
    RegistryBuilder registry;
    registry.Attribute(
        "BootMode", "Enumeration",
        {{"MenuPath", "./Boot"},
         {"CurrentValue", "Uefi"},
         {"DefaultValue", "Legacy"},
         {"Value", {RegistryBuilder::Choice("Uefi", "UEFI"), RegistryBuilder::Choice("Legacy", "Legacy")}}});
    registry.Attribute("Cores", "Integer", {{"CurrentValue", 16}, {"DefaultValue", 16}, {"MenuPath", "./Cpu/Cores"}});
    registry.Attribute("Ghost", "Boolean", {{"CurrentValue", true}, {"HelpText", "One\ntwo."}});
    registry.Rule("Ghost", "Hidden", true, {Term{"Cores", "EQU", 16}});
    registry.Attribute("Guarded", "String", {{"Hidden", true}, {"CurrentValue", "x"}});
    registry.Attribute("Key", "Password", {{"CurrentValue", "hunter2"}, {"DefaultValue", "letmein"}});
    return registry;
}

Outcome List(TestSystem& system, const ListOptions& options, const Presentation& presentation = {})
{
    return system.Do([&](System& s, Output& output) { return RunList(s, options, output); }, presentation);
}

template <class Run>
Outcome Ask(TestSystem& system, Run run, const Selection& selection, const Presentation& presentation = {})
{
    return system.Do([&](System& s, Output& output) { return run(s, selection, output); }, presentation);
}

TEST(List, LeavesOutHiddenAndProtectedSettings)
{
    TestSystem system(Small());
    const Outcome outcome = List(system, {});
    EXPECT_EQ(outcome.Code, ExitCode::Answered);
    EXPECT_EQ(outcome.Answers, "BootMode  Uefi      default Legacy\n"
                               "Cores     16\n"
                               "Key       ********\n");
    EXPECT_TRUE(outcome.Complaints.empty());
}

TEST(List, AllShowsThemWithTheirMarks)
{
    TestSystem system(Small());
    ListOptions options;
    options.All = true;
    EXPECT_EQ(List(system, options).Answers, "BootMode  Uefi      default Legacy\n"
                                             "Cores     16\n"
                                             "Ghost     -                         [hidden]\n"
                                             "Guarded   -                         [protected]\n"
                                             "Key       ********\n");
}

TEST(List, AProtectedSettingIsAnsweredWhenTheyAreIncluded)
{
    TestSystem system(Small(), {false, true});
    EXPECT_EQ(List(system, {}).Answers, "BootMode  Uefi      default Legacy\n"
                                        "Cores     16\n"
                                        "Guarded   x                         [protected]\n"
                                        "Key       ********\n");
}

TEST(List, FiltersAreJoined)
{
    TestSystem system(Small());
    ListOptions options;
    options.Type = "enumERATION";
    options.Menu = "OO";
    options.Changed = true;
    EXPECT_EQ(List(system, options).Answers, "BootMode  Uefi  default Legacy\n");
    options.Menu = "cpu";
    EXPECT_EQ(List(system, options).Answers, "");
    options.Type = "";
    options.Changed = false;
    EXPECT_EQ(List(system, options).Answers, "Cores  16\n");
}

TEST(List, ChangedComparesTextsOfWhatIsShown)
{
    RegistryBuilder registry;
    registry.Attribute("SameText", "Integer", {{"CurrentValue", "5"}, {"DefaultValue", 5}});
    registry.Attribute("NoDefault", "Integer", {{"CurrentValue", 5}});
    registry.Attribute("NoValue", "Integer", {{"DefaultValue", 5}});
    registry.Attribute("Case", "String", {{"CurrentValue", "a"}, {"DefaultValue", "A"}});
    registry.Attribute("Key", "Password", {{"CurrentValue", "a"}, {"DefaultValue", "b"}});
    TestSystem system(registry);
    ListOptions options;
    options.Changed = true;
    EXPECT_EQ(List(system, options).Answers, "Case  a  default A\n");
}

TEST(List, MarksStandInOneOrder)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean",
                       {{"ReadOnly", true},
                        {"WriteOnly", true},
                        {"GrayOut", true},
                        {"Hidden", true},
                        {"Immutable", true},
                        {"IsSystemUniqueProperty", true}});
    TestSystem system(registry);
    ListOptions options;
    options.All = true;
    EXPECT_EQ(List(system, options).Answers, "A  -  [grayed out, read-only, write-only, protected]\n");
}

TEST(List, ColumnsAreCountedInCharactersAndALongValuePushesItsLineOnly)
{
    RegistryBuilder registry;
    registry.Attribute("\xc3\x84", "String", {{"CurrentValue", "\xc3\xa9\xc3\xa9"}, {"DefaultValue", ""}});
    registry.Attribute("Bb", "String", {{"CurrentValue", std::string(40, 'x')}, {"DefaultValue", "y"}});
    TestSystem system(registry);
    EXPECT_EQ(List(system, {}).Answers, "\xc3\x84   \xc3\xa9\xc3\xa9  default \"\"\n"
                                        "Bb  " +
                                            std::string(40, 'x') + "  default y\n");
}

TEST(List, ALongDefaultIsShownWhenItIsTheOnlyOne)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"CurrentValue", "x"}, {"DefaultValue", std::string(40, 'y')}});
    TestSystem system(registry);
    EXPECT_EQ(List(system, {}).Answers, "A  x  default " + std::string(40, 'y') + "\n");
}

TEST(List, ColoursOnlyWhenWanted)
{
    TestSystem system(Small());
    Presentation coloured;
    coloured.Colour = true;
    ListOptions options;
    options.Menu = "boot";
    EXPECT_EQ(List(system, options, coloured).Answers, "BootMode  \033[33mUefi\033[0m  default Legacy\n");
}

TEST(List, AMenuThatIsNotThereIsRefused)
{
    TestSystem system(Small());
    ListOptions options;
    options.Menu = "Boto";
    const Outcome outcome = List(system, options);
    EXPECT_EQ(outcome.Code, ExitCode::Refused);
    EXPECT_EQ(outcome.Complaints, Complaints{"Unable to find a menu with Boto in its name. Did you mean Boot?"});
}

TEST(List, JsonHasEveryFact)
{
    TestSystem system(Small());
    ListOptions options;
    options.All = true;
    const boost::json::value answer = List(system, options, AsJson()).Json();
    const boost::json::array& settings = answer.at("settings").as_array();
    ASSERT_EQ(settings.size(), 5U);
    EXPECT_EQ(settings[1].at("name"), "Cores");
    EXPECT_EQ(settings[1].at("type"), "Integer");
    EXPECT_EQ(settings[1].at("menu"), "./Cpu/Cores");
    EXPECT_EQ(settings[1].at("value"), 16);
    EXPECT_EQ(settings[1].at("default"), 16);
    EXPECT_EQ(settings[1].at("status").as_object().size(), 7U);
    EXPECT_EQ(settings[2].at("value"), nullptr) << "hidden";
    EXPECT_EQ(settings[2].at("menu"), nullptr);
    EXPECT_EQ(settings[2].at("status").at("hidden").at("value"), true);
    EXPECT_EQ(settings[2].at("status").at("hidden").at("reason"), "hidden because Cores is 16 (rule 0)");
    EXPECT_EQ(settings[2].at("status").at("hidden").at("rules"), boost::json::array{0});
    EXPECT_EQ(settings[4].at("value"), nullptr) << "a password";
    EXPECT_EQ(settings[4].at("default"), nullptr);
}

TEST(Get, WritesAssignmentsUnderTheRegistrysSpelling)
{
    TestSystem system(Small());
    const Outcome outcome = Ask(system, RunGet, {{"bootmode", "CORES"}, false});
    EXPECT_EQ(outcome.Code, ExitCode::Answered);
    EXPECT_EQ(outcome.Answers, "BootMode=Uefi\nCores=16\n");
}

TEST(Get, AnswersTheRestWhenSomethingIsRefused)
{
    TestSystem system(Small());
    const Outcome outcome = Ask(system, RunGet, {{"Guarded", "Cores", "Key", "BootMod"}, false});
    EXPECT_EQ(outcome.Code, ExitCode::Refused);
    EXPECT_EQ(outcome.Answers, "Cores=16\n");
    EXPECT_EQ(outcome.Complaints,
              (Complaints{"Guarded is marked hidden by the controller.", "Key is a password, which is never shown.",
                          "Unable to find the setting BootMod. Did you mean BootMode?"}));
}

TEST(Get, OfAllComplainsOnceForEachReason)
{
    RegistryBuilder registry;
    registry.Attribute("A", "String", {{"WriteOnly", true}});
    registry.Attribute("B", "String");
    registry.Attribute("C", "String", {{"WriteOnly", true}});
    TestSystem system(registry);
    EXPECT_EQ(
        Ask(system, RunGet, {{}, true}).Complaints,
        (Complaints{"2 settings not answered (marked write-only by the controller): A, C", "B has no current value."}));
}

TEST(Get, JsonKeepsTheKindOfAValue)
{
    RegistryBuilder registry;
    registry.Attribute("Text", "String", {{"CurrentValue", "5"}});
    registry.Attribute("Number", "Integer", {{"CurrentValue", -5}});
    registry.Attribute("Truth", "Boolean", {{"CurrentValue", false}});
    TestSystem system(registry);
    const Selection all{{}, true};
    EXPECT_EQ(Ask(system, RunGet, all, AsJson()).Json(),
              boost::json::parse(R"({"values": {"Text": "5", "Number": -5, "Truth": false}, "refused": []})"));
    TestSystem hexadecimal(registry, {true, false});
    EXPECT_EQ(Ask(hexadecimal, RunGet, all, AsJson()).Json().at("values").at("Number"), "0xfffffffffffffffb");
}

TEST(Get, JsonTellsWhatIsRefused)
{
    TestSystem system(Small());
    EXPECT_EQ(Ask(system, RunGet, {{"Key", "Coress"}, false}, AsJson()).Json(), boost::json::parse(R"({"values": {},
        "refused": [
            {"name": "Key", "code": 19, "message": "Key is a password, which is never shown."},
            {"name": "Coress", "code": 20, "message": "Unable to find the setting Coress.", "suggestions": ["Cores"]}]})"));
}

TEST(Defaults, AreAnsweredOfHiddenSettingsToo)
{
    TestSystem system(Small());
    const Outcome outcome = Ask(system, RunDefaults, {{"BootMode", "Cores", "Key", "Ghost"}, false});
    EXPECT_EQ(outcome.Answers, "BootMode=Legacy\nCores=16\n");
    EXPECT_EQ(outcome.Complaints,
              (Complaints{"Key is a password, which is never shown.", "Ghost has no default value."}));
    EXPECT_EQ(Ask(system, RunDefaults, {{"Cores"}, false}, AsJson()).Json().at("defaults").at("Cores"), 16);
}

TEST(Choices, FurtherLinesAreIndented)
{
    TestSystem system(Small());
    EXPECT_EQ(Ask(system, RunChoices, {{"BootMode", "Ghost", "Cores"}, false}).Answers,
              "BootMode: <Legacy>=Uefi\n"
              "    [Uefi] : UEFI\n"
              "Ghost: true=false\n"
              "    Hidden because Cores is 16 (rule 0)\n"
              "Cores: Integer default=16\n");
    EXPECT_EQ(Ask(system, RunChoices, {{"BootMode"}, false}, AsJson()).Json().at("choices").at("BootMode"),
              "<Legacy>=Uefi\n\t[Uefi] : UEFI");
}

TEST(Choices, ALineFeedOfTheRegistryBeginsNoLine)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Enumeration",
                       {{"Value", boost::json::array{RegistryBuilder::Choice("x\n\ty", "X\n\tY")}}});
    registry.Attribute("B", "String", {{"ValueExpression", "a\n\tb"}});
    TestSystem system(registry);
    EXPECT_EQ(Ask(system, RunChoices, {{"A", "B"}, false}).Answers, "A: x\\n\\ty\n"
                                                                    "    [x\\n\\ty] : X\\n\\tY\n"
                                                                    "B: String Pattern=a\\n\\tb\n");
}

TEST(Lint, CountsWhatItDoesNotList)
{
    RegistryBuilder registry;
    RedfishConfig::SettingValueMap values;
    for (int number = 0; number < 1'007; ++number) {
        registry.Attribute("A" + std::to_string(number), "String", {{"ReadOnly", "yes"}});
        values["A" + std::to_string(number)] = 1;
    }
    const Documents documents = DocumentsFrom(registry.Json(), values);
    const auto lint = [&](bool isJson) {
        std::ostringstream answers;
        Presentation presentation;
        presentation.Json = isJson;
        Output output(answers, presentation);
        EXPECT_EQ(RunLint(documents, output), ExitCode::Answered);
        return answers.str();
    };
    const std::string text = lint(false);
    EXPECT_NE(text.find("warning wrong-kind: 1007\n"), std::string::npos);
    EXPECT_NE(text.find("\n    7 more of this kind; only their number is reported\n"), std::string::npos);
    EXPECT_NE(text.find("\n1007 warnings, 1007 notes\n"), std::string::npos) << text.substr(text.size() - 100);
    const boost::json::value json = boost::json::parse(lint(true));
    EXPECT_EQ(json.at("counts").at("warning").to_number<int>(), 1'007);
    EXPECT_EQ(json.at("findings").as_array().size(), 2'002U);
    EXPECT_EQ(Summary({"r.json", "v.json", ""}, DoubtsAbout(documents), [](const std::string&) { return true; }),
              "r.json: 1007 warnings; redfishconfig lint tells them");
}

TEST(Remarks, CountTheValuesThatAreNotListed)
{
    std::string values;
    for (int number = 0; number < 1'002; ++number) {
        values += (number > 0 ? "," : "") + ("\"A" + std::to_string(number)) + "\": []";
    }
    Documents documents = DocumentsFrom(RegistryBuilder().Json(), {});
    documents.Files.Values = "v.json";
    documents.Published = RedfishConfig::Client::ReadValuesDocument("{" + values + "}");
    const std::vector<std::string> remarks = RemarksOn(documents);
    ASSERT_EQ(remarks.size(), 1'001U);
    EXPECT_EQ(remarks.front(), "v.json: the value of A0 is a list and counts as no value");
    EXPECT_EQ(remarks.back(), "v.json: 2 more values cannot be used, and each counts as no value");
}

TEST(Describe, WrapsAndIndents)
{
    TestSystem system(Small());
    EXPECT_EQ(Ask(system, RunDescribe, {{"Ghost"}, false}).Answers, "Ghost:\n"
                                                                    "    Ghost\n"
                                                                    "\n"
                                                                    "    Help for Ghost\n"
                                                                    "    --------------------------\n"
                                                                    "    One\n"
                                                                    "    two.\n");
    EXPECT_EQ(Ask(system, RunDescribe, {{"Ghost"}, false}, AsJson()).Json().at("descriptions").at("Ghost"),
              "Ghost\n\nHelp for Ghost\n--------------------------\nOne\ntwo.");
}

TEST(Describe, KeepsToTheWidthOfTheTerminal)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"HelpText", "one two three four five"}});
    TestSystem system(registry);
    Presentation narrow;
    narrow.Width = 17;
    const std::string answer = Ask(system, RunDescribe, {{"A"}, false}, narrow).Answers;
    EXPECT_NE(answer.find("    one two three\n    four five\n"), std::string::npos) << answer;
    narrow.Width = 1; // too narrow for anything: a word a line
    EXPECT_NE(Ask(system, RunDescribe, {{"A"}, false}, narrow).Answers.find("    one\n    two\n"), std::string::npos);
}

TEST(Get, TheFirstTwentyUnknownNamesGetSuggestions)
{
    TestSystem system(Small());
    Selection selection;
    for (char letter = 'a'; letter < 'a' + 25; ++letter) {
        selection.Names.push_back(std::string("BootMode") + letter);
    }
    const Outcome outcome = Ask(system, RunGet, selection, AsJson());
    const auto hasSuggestion = [](const std::string& line) {
        return line.find("Did you mean BootMode?") != std::string::npos;
    };
    ASSERT_EQ(outcome.Complaints.size(), 25U);
    EXPECT_TRUE(std::all_of(outcome.Complaints.begin(), outcome.Complaints.begin() + 20, hasSuggestion));
    EXPECT_TRUE(std::none_of(outcome.Complaints.begin() + 20, outcome.Complaints.end(), hasSuggestion));
    const boost::json::value json = outcome.Json();
    const boost::json::array& refused = json.at("refused").as_array();
    ASSERT_EQ(refused.size(), 25U);
    for (std::size_t place = 0; place < refused.size(); ++place) {
        EXPECT_EQ(refused[place].at("suggestions").as_array().empty(), place >= 20) << place;
    }
}

TEST(Groups, ATreeWithTheNumberOfSettings)
{
    TestSystem system(Small());
    const Outcome outcome = system.Do([](System& s, Output& output) { return RunGroups(s, output); });
    EXPECT_EQ(outcome.Answers, "Boot       1 setting\n"
                               "Cpu        0 settings, 1 with sub-menus\n"
                               "  Cores    1 setting\n"
                               "(no menu)  3 settings\n");
}

TEST(Groups, JsonHasTheTreeAndTheLibrarysGroups)
{
    TestSystem system(Small());
    const auto run = [](System& s, Output& output) { return RunGroups(s, output); };
    EXPECT_EQ(system.Do(run, AsJson()).Json(), boost::json::parse(R"({
        "menus": [
            {"name": "Boot", "displayName": "", "path": "./Boot", "settings": 1, "allSettings": 1, "menus": []},
            {"name": "Cpu", "displayName": "", "path": "./Cpu", "settings": 0, "allSettings": 1, "menus": [
                {"name": "Cores", "displayName": "", "path": "./Cpu/Cores", "settings": 1, "allSettings": 1, "menus": []}]}],
        "withoutMenu": 3,
        "groups": {"Cpu": []}})"));
}

TEST(Groups, AnEmptyRegistryIsAnEmptyTree)
{
    TestSystem system{RegistryBuilder()};
    const Outcome outcome = system.Do([](System& s, Output& output) { return RunGroups(s, output); });
    EXPECT_EQ(outcome.Answers, "");
    EXPECT_EQ(outcome.Code, ExitCode::Answered);
    EXPECT_EQ(List(system, {}).Answers, "");
    EXPECT_EQ(Ask(system, RunGet, {{}, true}).Code, ExitCode::Answered);
}

/** So many settings whose rules read a setting that the library's form cannot tell from another. */
Documents Undecidable(int count)
{
    RegistryBuilder registry;
    registry.Attribute("BootMode", "String", {{"CurrentValue", "Uefi"}});
    registry.Attribute("OneTimeBootMode", "String", {{"CurrentValue", "Off"}});
    for (int number = 1; number <= count; ++number) {
        const std::string name = "S" + std::to_string(number);
        registry.Attribute(name, "Boolean");
        registry.Rule(name, "ReadOnly", true, {Term{"OneTimeBootMode", "EQU", "Off"}});
    }
    return DocumentsFrom(registry.Json(), {});
}

TEST(Adapt, NamesTheFirstFlagsThatItCannotDecide)
{
    const std::pair<int, Complaints> cases[] = {
        {0, {}},
        {1, {"registry.json: 1 flag cannot be decided in the library's form and is true in it: S1.ReadOnly"}},
        {8,
         {"registry.json: 8 flags cannot be decided in the library's form and are true in it: S1.ReadOnly, "
          "S2.ReadOnly, "
          "S3.ReadOnly, S4.ReadOnly, S5.ReadOnly, S6.ReadOnly, S7.ReadOnly, S8.ReadOnly"}},
        {9,
         {"registry.json: 9 flags cannot be decided in the library's form and are true in it: S1.ReadOnly, "
          "S2.ReadOnly, "
          "S3.ReadOnly, S4.ReadOnly, S5.ReadOnly, S6.ReadOnly, S7.ReadOnly, S8.ReadOnly and 1 more"}},
    };
    for (const auto& [count, complaints] : cases) {
        std::ostringstream answers;
        Output output(answers, {});
        EXPECT_EQ(RunAdapt(Undecidable(count), {}, output), ExitCode::Answered);
        Complaints first = output.Complaints();
        first.resize(std::min<std::size_t>(first.size(), 1)); // the findings follow
        EXPECT_EQ(first, complaints);
    }
}

TEST(Adapt, TellsTheFirstFindingsOfEachKind)
{
    const auto why = [](int number) {
        return "registry.json: error inexpressible: rule " + std::to_string(number - 1) +
               " asks for OneTimeBootMode, whose name has operators or that of another setting in it; ReadOnly of S" +
               std::to_string(number) + " is true in the adapted registry, whatever the values are";
    };
    const std::pair<int, std::string> cases[] = {
        {8, ""},
        {9, "registry.json: 1 more error of the kind inexpressible"},
        {10, "registry.json: 2 more errors of the kind inexpressible"},
        {1'500, "registry.json: 1492 more errors of the kind inexpressible"}, // a thousand are listed
    };
    for (const auto& [count, last] : cases) {
        std::ostringstream answers;
        Output output(answers, {});
        EXPECT_EQ(RunAdapt(Undecidable(count), {}, output), ExitCode::Answered);
        Complaints told;
        for (int number = 1; number <= 8; ++number) {
            told.push_back(why(number));
        }
        if (!last.empty()) {
            told.push_back(last);
        }
        EXPECT_EQ(Complaints(output.Complaints().begin() + 1, output.Complaints().end()), told);
    }
}

TEST(Adapt, TellsNothingThatLintTells)
{
    RegistryBuilder registry;
    registry.Attribute("A", "Boolean", {{"CurrentValue", true}});
    registry.Rule("A", "ReadOnly", true, {Term{"NoSuch", "EQU", 1}});
    std::ostringstream answers;
    Output output(answers, {});
    EXPECT_EQ(RunAdapt(DocumentsFrom(registry.Json(), {}), {}, output), ExitCode::Answered);
    EXPECT_EQ(output.Complaints(), Complaints{"registry.json: 1 warning; redfishconfig lint tells them"});
}

TEST(Adapt, ARegistryWithAPasswordInItIsNotWrittenToATerminal)
{
    struct Case {
        const char* What;
        RegistryBuilder Registry;
        RedfishConfig::SettingValueMap Values;
        ExitCode Code;
    };
    RegistryBuilder key;
    key.Attribute("Key", "Password").Attribute("A", "Boolean", {{"CurrentValue", true}});
    RegistryBuilder nulls;
    nulls.Attribute("Key", "Password", {{"CurrentValue", nullptr}, {"DefaultValue", nullptr}});
    RegistryBuilder compared = key;
    compared.Rule("A", "ReadOnly", true, {Term{"Key", "EQU", "hunter2"}});
    RegistryBuilder given = key;
    given.Rule("Key", "DefaultValue", "hunter2", {Term{"A", "EQU", true}});
    RegistryBuilder asked = key;
    asked.Rule("Key", "MinLength", 8, {Term{"A", "EQU", true}});
    RegistryBuilder otherCase;
    otherCase.Attribute("Key", "Password", {{"CurrentValue", nullptr}, {"currentvalue", "hunter2"}});
    const std::vector<Case> cases{
        {"a value",
         RegistryBuilder().Attribute("Key", "Password", {{"CurrentValue", "hunter2"}}),
         {},
         ExitCode::Refused},
        {"a default",
         RegistryBuilder().Attribute("Key", "Password", {{"DefaultValue", "hunter2"}}),
         {},
         ExitCode::Refused},
        {"what a rule gives", given, {}, ExitCode::Refused},
        {"a value under another key, which is copied", otherCase, {}, ExitCode::Refused},
        {"none", key, {}, ExitCode::Answered},
        {"none, in nulls", nulls, {}, ExitCode::Answered},
        {"a length", asked, {}, ExitCode::Answered},
        {"one that stands in the values alone", key, {{"Key", std::string("hunter2")}}, ExitCode::Answered},
        {"what a rule compares, which is not written", compared, {}, ExitCode::Answered},
    };
    Presentation terminal;
    terminal.Terminal = true;
    for (const auto& [what, registry, values, code] : cases) {
        std::ostringstream answers;
        Output output(answers, terminal);
        EXPECT_EQ(RunAdapt(DocumentsFrom(registry.Json(), values), {}, output), code) << what;
        EXPECT_EQ(answers.str().empty(), code == ExitCode::Refused) << what;
        EXPECT_EQ(answers.str().find("hunter2"), std::string::npos) << what;
    }
}

} // namespace
