#include "support/RegistryBuilder.h"

#include <RedfishConfig/RedfishConfig.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

using namespace RedfishConfig;
using namespace RegistryTest;

// The ends of 64 signed bits. A difference of two such numbers may need 65.

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

RedfishConfigSettingManager ManagerOf(const boost::json::object& members, bool hexadecimal = false)
{
    std::string text = RegistryBuilder().Attribute("N", "Integer", members).Text();
    Config_Options options;
    options.ShowHexValue = hexadecimal;
    return RedfishConfigSettingManager(text, false, options);
}

bool Accepts(RedfishConfigSettingManager manager, const std::string& value)
{
    std::string patch;
    const RedfishConfigResult result = manager.PreparePatchContext("N", value, patch, FILTER_PATCH);
    EXPECT_TRUE(result == RESULT_SUCCEED || result == RESULT_NEW_VALUE_INVALID) << static_cast<int>(result);
    EXPECT_EQ(patch, result == RESULT_SUCCEED ? value : "");
    return result == RESULT_SUCCEED;
}

struct Step {
    std::int64_t Base;
    std::int64_t Increment;
    std::int64_t Value;
    bool Fits;
};

TEST(Increments, CountStepsAcrossAll64Bits)
{
    // 2^64-1 is 3 * 5 * 17 * 257 * 641 * 65537 * 6700417
    const Step steps[] = {
        {smallest, 1, largest, true},
        {smallest, 2, largest, false},
        {smallest, 3, largest, true},
        {largest, 3, smallest, true},
        {smallest, -3, largest, true},
        {smallest, 6700417, largest, true},
        {smallest, 6700416, largest, false},
        {smallest, 7, largest, false},
        {largest, largest, smallest, false}, // a remainder of 1
        {largest, largest, 0, true},
        {largest, largest, -largest, true},
        {0, largest, smallest, false},
        {0, smallest, smallest, true},
        {smallest, smallest, 0, true},
        {smallest, smallest, largest, false},
        {smallest, smallest, smallest, true},
        {largest, smallest, -1, true},
        {largest, smallest, largest, true},
        {largest, smallest, 0, false},
        {-1, smallest, largest, true},
        {largest, -1, smallest, true},
        {smallest, -1, largest, true},
        {smallest, 0, largest, true},
        {5, 0, smallest, true},
    };
    for (const Step& step : steps) {
        for (const char* base : {"CurrentValue", "LowerBound"}) {
            if (std::string(base) == "LowerBound" && step.Value < step.Base) {
                continue; // below the bound
            }
            EXPECT_EQ(Accepts(ManagerOf({{base, step.Base}, {"ScalarIncrement", step.Increment}}),
                              std::to_string(step.Value)),
                      step.Fits)
                << base << ' ' << step.Base << " step " << step.Increment << " to " << step.Value;
        }
    }
}

TEST(Increments, WithoutABaseAdmitEveryNumber)
{
    for (const std::int64_t increment : {smallest, std::int64_t{-1}, std::int64_t{0}, std::int64_t{7}, largest}) {
        for (const std::int64_t value : {smallest, std::int64_t{-1}, std::int64_t{0}, std::int64_t{1}, largest}) {
            EXPECT_TRUE(Accepts(ManagerOf({{"ScalarIncrement", increment}}), std::to_string(value)));
        }
    }
}

TEST(Increments, TellTheSmallestOneInTheReason)
{
    auto manager = ManagerOf({{"CurrentValue", 0}, {"ScalarIncrement", smallest}});
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("N", "1", patch, FILTER_PATCH).ErrorMsg(),
              "New value 1 is invalid: scalar increment mismatch. The scalar increment should be: "
              "-9223372036854775808");
}

TEST(Numbers, AreReadUpToTheirEndsAndNoFurther)
{
    const auto manager = ManagerOf({});
    for (const char* value : {"9223372036854775807", "+9223372036854775807", "-9223372036854775808", "-0", "+0",
                              "0000000000000000000000000000000001"}) {
        EXPECT_TRUE(Accepts(manager, value)) << value;
    }
    for (const char* value : {"9223372036854775808",
                              "-9223372036854775809",
                              "18446744073709551615",
                              "18446744073709551616",
                              "99999999999999999999999999999999999999999999",
                              "-",
                              "+",
                              "",
                              "--1",
                              "+-1",
                              "1e3",
                              "1.0",
                              "0x1",
                              " 1",
                              "1 ",
                              "1,000",
                              "NaN",
                              "nan",
                              "inf",
                              "-inf",
                              "\xd9\xa1"}) {
        EXPECT_FALSE(Accepts(manager, value)) << value;
    }
    EXPECT_FALSE(Accepts(manager, std::string(1000000, '9')));
    EXPECT_TRUE(Accepts(manager, std::string(1000000, '0') + '1'));
}

TEST(Bounds, AtTheEndsAdmitTheEnds)
{
    const auto all = ManagerOf({{"LowerBound", smallest}, {"UpperBound", largest}});
    EXPECT_TRUE(Accepts(all, std::to_string(smallest)));
    EXPECT_TRUE(Accepts(all, std::to_string(largest)));
    const auto none = ManagerOf({{"LowerBound", largest}});
    EXPECT_FALSE(Accepts(none, std::to_string(largest - 1)));
    EXPECT_TRUE(Accepts(none, std::to_string(largest)));
    const auto only = ManagerOf({{"UpperBound", smallest}});
    EXPECT_TRUE(Accepts(only, std::to_string(smallest)));
    EXPECT_FALSE(Accepts(only, std::to_string(smallest + 1)));
}

TEST(Bounds, InTheWrongOrderAreADefectOfTheRegistry)
{
    auto manager = ManagerOf({{"LowerBound", largest}, {"UpperBound", smallest}});
    std::string patch;
    EXPECT_EQ(manager.PreparePatchContext("N", "0", patch, FILTER_PATCH), RESULT_PROPERTY_INVALID);
    std::string values = "untouched";
    EXPECT_EQ(manager.QuerySettingValidValues("N", values), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(values, "untouched");
}

TEST(HexadecimalForms, ReachTheEnds)
{
    EXPECT_EQ(DecToHex(std::to_string(largest)), "0x7fffffffffffffff");
    EXPECT_EQ(DecToHex(std::to_string(smallest)), "0x8000000000000000");
    EXPECT_EQ(DecToHex("-1"), "0xffffffffffffffff");
    EXPECT_THROW(DecToHex("9223372036854775808"), std::out_of_range);
    EXPECT_THROW(DecToHex("-9223372036854775809"), std::out_of_range);
    EXPECT_THROW(DecToHex(""), std::invalid_argument);
    EXPECT_EQ(HexToDec("0x7fffffff"), "2147483647");
    EXPECT_EQ(HexToDec("-0x80000000"), "-2147483648");
    for (const char* wide : {"0x80000000", "0xffffffff", "0xffffffffffffffff", "0xfffffffffffffffffffffffff"}) {
        EXPECT_EQ(HexToDec(wide), "2147483647") << "the nearest of 32 signed bits";
    }
}

TEST(HexadecimalForms, OfBoundsIncrementAndDefaultReachTheEnds)
{
    auto manager = ManagerOf({{"LowerBound", smallest},
                              {"UpperBound", largest},
                              {"ScalarIncrement", -1},
                              {"DefaultValue", smallest},
                              {"CurrentValue", largest}},
                             true);
    std::string text;
    EXPECT_EQ(manager.QuerySettingValidValues("N", text), RESULT_SUCCEED);
    EXPECT_EQ(text, "Integer LowerBound=0x8000000000000000 UpperBound=0x7fffffffffffffff "
                    "ScalarIncrement=0xffffffffffffffff default=0x8000000000000000 ");
    EXPECT_EQ(manager.QuerySettingValue("N", text), RESULT_SUCCEED);
    EXPECT_EQ(text, "0x7fffffffffffffff");
    std::string patch;
    EXPECT_EQ(manager.PrepareLoadDefaultValue("N", text, patch), RESULT_SUCCEED);
    EXPECT_EQ(text, "0x8000000000000000");
    EXPECT_EQ(patch, "-9223372036854775808");
}

TEST(Lengths, ComparedWithTheEndsOverflowNowhere)
{
    const auto accepts = [](const boost::json::object& members, const std::string& value) {
        std::string text = RegistryBuilder().Attribute("S", "String", members).Text();
        RedfishConfigSettingManager manager(text, false, {});
        std::string patch;
        return static_cast<int>(manager.PreparePatchContext("S", value, patch, FILTER_PATCH));
    };
    EXPECT_EQ(accepts({{"MaxLength", largest}}, "x"), RESULT_SUCCEED);
    EXPECT_EQ(accepts({{"MinLength", largest}}, "x"), RESULT_NEW_VALUE_INVALID);
    EXPECT_EQ(accepts({{"MinLength", smallest}}, "x"), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(accepts({{"MaxLength", -1}}, ""), RESULT_PROPERTY_INVALID);
    EXPECT_EQ(accepts({{"MaxLength", 0}}, ""), RESULT_SUCCEED);
    EXPECT_EQ(accepts({{"MaxLength", 0}}, "x"), RESULT_NEW_VALUE_INVALID);
}

} // namespace
