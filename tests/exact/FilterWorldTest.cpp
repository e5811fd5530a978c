#include "Count.h"

#include "reference/Setting.h"
#include "support/LogCapture.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

namespace json = boost::json;
using namespace RedfishConfig;

const char* const keys[] = {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"};

/** What a rule for a property may be: none, or a formula and the value that the property takes while it holds. */
struct RuleKind {
    const char* formula;
    SettingValue mapTo;
};

const std::vector<RuleKind> ruleKinds{{nullptr, std::nullopt},
                                      {"(true==true)", true},
                                      {"(true==true)", false},
                                      {"(true==false)", true},
                                      {"(true==false)", false},
                                      {"(true==", true},
                                      {"(true==true)", std::string("true")}};

/** A setting with these flags and rules, in the library and in the reference. */
class Pair {
public:
    Pair(unsigned flags, bool ignoreProtected, const std::vector<std::size_t>& kinds)
        : m_Reference(Attribute(flags), {false, ignoreProtected}, m_Lines),
          m_Setting(Record(flags, kinds), LibraryOptions(ignoreProtected))
    {
        for (std::size_t property = 0; property < kinds.size(); ++property) {
            const RuleKind& kind = ruleKinds[kinds[property]];
            if (kind.formula != nullptr) {
                m_Reference.Expressions[keys[property]] = {kind.mapTo, kind.formula, "(A.CurrentValue==x)", {}};
            }
        }
    }

    void Compare(int action)
    {
        m_Lines.clear();
        const RegistryTest::LogCapture log(4);
        const bool takesPart = m_Setting.filter(static_cast<filterAction>(action));
        ASSERT_EQ(takesPart, m_Reference.Filter(action)) << action;
        ASSERT_EQ(m_Setting.GetErrorMsg(), m_Reference.ErrMsg()) << action;
        ASSERT_EQ(log.Lines(), m_Lines) << action;
    }

    void CompareStatus()
    {
        const SettingStatus status = m_Setting.GetStatus();
        const std::vector<Reference::State> states = m_Reference.Status();
        const PropertyState* const found[] = {&status.ReadOnly, &status.WriteOnly, &status.Hidden,
                                              &status.GrayOut,  &status.Immutable, &status.SystemUnique,
                                              &status.Protected};
        for (std::size_t place = 0; place < states.size(); ++place) {
            ASSERT_EQ(found[place]->Value, states[place].Value) << place;
            ASSERT_EQ(found[place]->Reason, states[place].Reason) << place;
        }
    }

private:
    static Config_Options LibraryOptions(bool ignoreProtected)
    {
        Config_Options options;
        options.IgnoreProtected = ignoreProtected;
        return options;
    }

    static json::value Attribute(unsigned flags)
    {
        json::object attribute{{"AttributeName", "T"}, {"Type", "String"}};
        for (std::size_t property = 0; property < std::size(keys); ++property) {
            attribute[keys[property]] = (flags >> property & 1U) != 0;
        }
        return attribute;
    }

    static RedfishConfigSettingInfoStru Record(unsigned flags, const std::vector<std::size_t>& kinds)
    {
        auto record = json::value_to<RedfishConfigSettingInfoStru>(Attribute(flags));
        for (std::size_t property = 0; property < kinds.size(); ++property) {
            const RuleKind& kind = ruleKinds[kinds[property]];
            if (kind.formula != nullptr) {
                record.expressionMaps[keys[property]] = {kind.mapTo, kind.formula, "(A.CurrentValue==x)", true, {}};
            }
        }
        return record;
    }

    Reference::Lines m_Lines;
    Reference::Setting m_Reference;
    RedfishConfigTextSetting m_Setting;
};

/** All actions, and some numbers that are none. */
std::size_t CompareActions(unsigned flags, bool ignoreProtected, const std::vector<std::size_t>& kinds)
{
    Pair pair(flags, ignoreProtected, kinds);
    for (int action = -1; action <= 20; ++action) {
        pair.Compare(action);
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "flags " << flags << " ignoring " << ignoreProtected;
            return 0;
        }
    }
    pair.CompareStatus();
    return 22;
}

TEST(FilterWorld, OfAllFlagsAndOneRuleForAPropertyIsAsTheReferenceSays)
{
    std::size_t count = 0;
    for (unsigned flags = 0; flags < 64; ++flags) {
        for (const bool ignoreProtected : {false, true}) {
            for (std::size_t property = 0; property < std::size(keys); ++property) {
                for (std::size_t kind = 0; kind < ruleKinds.size(); ++kind) {
                    std::vector<std::size_t> kinds(std::size(keys), 0);
                    kinds[property] = kind;
                    count += CompareActions(flags, ignoreProtected, kinds);
                    ASSERT_FALSE(HasFailure());
                }
            }
        }
    }
    Exact::Report("actions over flags and one rule", count, 118272);
}

TEST(FilterWorld, OfOneRuleForEachPropertyIsAsTheReferenceSays)
{
    const std::size_t step = Exact::IsLong() ? 1 : 97;
    std::size_t worlds = 1;
    for (std::size_t property = 0; property < std::size(keys); ++property) {
        worlds *= ruleKinds.size();
    }
    std::size_t count = 0;
    for (std::size_t world = 0; world < worlds; world += step) {
        std::vector<std::size_t> kinds;
        for (std::size_t rest = world; kinds.size() < std::size(keys); rest /= ruleKinds.size()) {
            kinds.push_back(rest % ruleKinds.size());
        }
        const auto flags = static_cast<unsigned>(world * 37 % 64);
        count += CompareActions(flags, world % 2 == 0, kinds);
        ASSERT_FALSE(HasFailure());
    }
    Exact::Report("actions over a rule for each property", count, 26000);
}

} // namespace
