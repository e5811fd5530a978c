#include "app/AccessFilter.h"

#include "ToolTest.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace ToolTest;
using RedfishConfig::filterAction;

/** What makes a setting have one of the properties. */
struct Cause {
    StatusRow Row;
    const char* Flag; ///< null for a rule that hides it
};

constexpr Cause causes[] = {
    {StatusRow::ReadOnly, "ReadOnly"},
    {StatusRow::WriteOnly, "WriteOnly"},
    {StatusRow::Protected, "Hidden"},
    {StatusRow::Hidden, nullptr},
    {StatusRow::GrayOut, "GrayOut"},
    {StatusRow::Immutable, "Immutable"},
    {StatusRow::SystemUnique, "IsSystemUniqueProperty"},
};

/** Whether the library lets a setting take part that has one property alone. */
bool LibraryAdmits(const Cause& cause, filterAction action, bool includeProtected)
{
    RedfishConfig::RedfishConfigSettingInfoStru info;
    info.AttributeName = "A";
    info.Type = "String";
    const std::pair<const char*, bool RedfishConfig::RedfishConfigSettingInfoStru::*> flags[] = {
        {"ReadOnly", &RedfishConfig::RedfishConfigSettingInfoStru::ReadOnly},
        {"WriteOnly", &RedfishConfig::RedfishConfigSettingInfoStru::WriteOnly},
        {"Hidden", &RedfishConfig::RedfishConfigSettingInfoStru::Hidden},
        {"GrayOut", &RedfishConfig::RedfishConfigSettingInfoStru::GrayOut},
        {"Immutable", &RedfishConfig::RedfishConfigSettingInfoStru::Immutable},
        {"IsSystemUniqueProperty", &RedfishConfig::RedfishConfigSettingInfoStru::IsSystemUniqueProperty}};
    for (const auto& [name, flag] : flags) {
        info.*flag = cause.Flag != nullptr && std::string(name) == cause.Flag;
    }
    if (cause.Flag == nullptr) {
        info.expressionMaps["Hidden"] = {true, "(1==1)", "(1==1)", true, {0}};
    }
    RedfishConfig::Config_Options options;
    options.IgnoreProtected = includeProtected;
    return RedfishConfig::RedfishConfigTextSetting(info, options).filter(action);
}

bool ToolAdmits(StatusRow row, filterAction action, bool includeProtected)
{
    const AccessFilter& filter = FilterOf(action);
    return !filter.ExcludesAll && std::none_of(filter.begin(), filter.end(), [&](const Exclusion& exclusion) {
        return exclusion.Row == row && !(exclusion.UnlessIncluded && includeProtected);
    });
}

TEST(AccessFilter, IsTheLibrarysForEachActionAndProperty)
{
    for (int action = RedfishConfig::FILTER_QUERY_VALUE; action <= RedfishConfig::FILTER_LOAD_DEFAULT; ++action) {
        for (const Cause& cause : causes) {
            for (const bool includeProtected : {false, true}) {
                EXPECT_EQ(ToolAdmits(cause.Row, static_cast<filterAction>(action), includeProtected),
                          LibraryAdmits(cause, static_cast<filterAction>(action), includeProtected))
                    << "action " << action << ", " << Shown(cause.Row).Label << ", included " << includeProtected;
            }
        }
    }
}

} // namespace
