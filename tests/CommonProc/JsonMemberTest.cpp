#include "CommonProc/JsonMember.h"

#include <boost/json.hpp>
#include <gtest/gtest.h>

#include <limits>

namespace json = boost::json;
using namespace RedfishConfig;

namespace {

std::optional<std::int64_t> ReadInteger(const char* text)
{
    std::optional<std::int64_t> number;
    AssignScalar(number, ScalarOf(json::parse(text)));
    return number;
}

TEST(JsonMember, StaysAsItIsWhenTheKindDoesNotFit)
{
    const JsonScalar object = ScalarOf(json::parse(R"({"nested": 1})"));
    bool flag = true;
    std::optional<std::int64_t> number = 7;
    std::optional<std::string> optionalText = "kept";
    std::string text = "kept";
    SettingValue value = std::string("kept");
    AssignScalar(flag, object);
    AssignScalar(number, object);
    AssignScalar(optionalText, object);
    AssignScalar(text, object);
    AssignScalar(value, object);
    EXPECT_TRUE(flag);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(optionalText, "kept");
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(value, SettingValue("kept"));
}

TEST(JsonMember, ReadsAWholeNumberHoweverItIsWritten)
{
    EXPECT_EQ(ReadInteger("5"), 5);
    EXPECT_EQ(ReadInteger("-5"), -5);
    EXPECT_EQ(ReadInteger("5.0"), 5);
    EXPECT_EQ(ReadInteger("5e2"), 500);
    EXPECT_EQ(ReadInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(ReadInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(JsonMember, ReadsNoNumberThatIsAFractionOrDoesNotFit)
{
    for (const char* text : {"5.5", "9223372036854775808", "18446744073709551615", "9.3e18", "-9.3e18", "1e300",
                             "9223372036854775808.0", "\"5\"", "true", "null"}) {
        EXPECT_EQ(ReadInteger(text), std::nullopt) << text;
    }
}

TEST(JsonMember, ReadsASettingValueAsTextIntegerOrBoolean)
{
    const auto read = [](const char* text) {
        SettingValue value;
        AssignScalar(value, ScalarOf(json::parse(text)));
        return value;
    };
    EXPECT_EQ(read("\"5\""), SettingValue(std::string("5")));
    EXPECT_EQ(read("5"), SettingValue(std::int64_t{5}));
    EXPECT_EQ(read("true"), SettingValue(true));
    for (const char* text : {"null", "5.5", "[]", "{}", "18446744073709551615"}) {
        EXPECT_EQ(read(text), std::nullopt) << text;
    }
}

TEST(JsonMember, KeepsZeroBytesInsideATextApart)
{
    std::string text;
    AssignScalar(text, ScalarOf(json::parse(R"("a\u0000b")")));
    EXPECT_EQ(text, std::string("a\0b", 3));
}

} // namespace
