#include "app/Status.h"

#include <boost/json/parse.hpp>
#include <boost/json/value.hpp>

#include <gtest/gtest.h>

namespace {

using namespace RedfishConfig::App;

SettingStatus AllTrue()
{
    SettingStatus status;
    for (const ShownProperty& property : shownProperties) {
        status[property.Row].Value = true;
    }
    return status;
}

TEST(SettingStatus, HasEachOfTheSevenOnItsOwn)
{
    for (const ShownProperty& property : shownProperties) {
        SettingStatus status;
        status[property.Row].Value = true;
        for (const ShownProperty& other : shownProperties) {
            EXPECT_EQ(status.Is(other.Row), other.Row == property.Row) << other.Label;
        }
    }
}

TEST(SettingStatus, WhatTheRegistrysOwnFlagHidesIsNotHiddenByARule)
{
    SettingStatus status;
    EXPECT_FALSE(status.IsHiddenByRule());
    status[StatusRow::Hidden].Value = true;
    EXPECT_TRUE(status.IsHiddenByRule());
    status[StatusRow::Hidden].Marked = true;
    EXPECT_FALSE(status.IsHiddenByRule());
}

TEST(Marks, AreInOneOrder)
{
    EXPECT_EQ(Marks({}), "");
    EXPECT_EQ(Marks(AllTrue()), "[hidden, grayed out, read-only, write-only, protected]");
}

TEST(Marks, AProtectedSettingIsNotCalledHiddenToo)
{
    SettingStatus status;
    status[StatusRow::Hidden].Value = true;
    status[StatusRow::Hidden].Marked = true;
    status[StatusRow::Protected] = status[StatusRow::Hidden];
    EXPECT_EQ(Marks(status), "[protected]");
}

TEST(Marks, WhatIsNotCertainHasAQuestionMarkWhicheverWayItLeans)
{
    SettingStatus status;
    status[StatusRow::ReadOnly].Value = true;
    status[StatusRow::ReadOnly].Certain = false;
    status[StatusRow::GrayOut].Certain = false;
    status[StatusRow::Immutable].Certain = false;
    EXPECT_EQ(Marks(status), "[grayed out?, read-only?]");
}

TEST(StatusToJson, TellsRulesOnlyWhereThereAreAny)
{
    SettingStatus status;
    PropertyStatus& row = status[StatusRow::SystemUnique];
    row = {true, false, false, "because", {3, 5}};
    EXPECT_EQ(ToJson(status, false).at("systemUnique"), boost::json::parse(R"({"value": true, "reason": "because"})"));
    EXPECT_EQ(ToJson(status, true).at("systemUnique"),
              boost::json::parse(
                  R"({"value": true, "certain": false, "reason": "because", "rules": [3, 5], "marked": false})"));
    EXPECT_EQ(ToJson(status, true).at("hidden"),
              boost::json::parse(R"({"value": false, "certain": true, "reason": "", "rules": [], "marked": false})"));
    EXPECT_EQ(ToJson(status, true).size(), 7U);
}

} // namespace
