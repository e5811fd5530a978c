#include "Count.h"

#include "reference/Numbers.h"

#include <RedfishConfig/RedfishConfigSetting.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace {

using namespace RedfishConfig;
using Reference::Number;

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

const std::vector<Number> interesting{std::nullopt, smallest,   smallest + 1, -4294967296, -5, -1, 0, 1, 2, 3, 5, 7,
                                      2147483648,   4294967296, largest - 1,  largest};

/** The code and reason that an Integer without default or pattern answers a number with. */
std::string Expected(std::int64_t value, const Number& lower, const Number& upper, const Number& increment,
                     const Number& current)
{
    const int verdict = Reference::CheckScope(value, lower, upper, false);
    if (verdict == 4) {
        return "8 New value " + std::to_string(value) + " is invalid: ";
    }
    std::string reason = Reference::ScopeReason(verdict, "The value", "LowerBound", lower, "UpperBound", upper);
    const Number base = current ? current : lower;
    if (verdict == 0 && increment && base && !Reference::FitsIncrement(value, *base, *increment)) {
        reason = "scalar increment mismatch. The scalar increment should be: " + std::to_string(*increment);
    }
    return reason.empty() ? "0 " : "10 New value " + std::to_string(value) + " is invalid: " + reason;
}

TEST(NumberWorld, OfInterestingBoundsIncrementsAndValuesIsAsTheReferenceSays)
{
    std::size_t count = 0;
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "A";
    record.Type = "Integer";
    RedfishConfigNumericSetting setting(record, {});
    for (const Number& lower : interesting) {
        for (const Number& upper : interesting) {
            for (const Number& increment : interesting) {
                for (const Number& current : interesting) {
                    record.LowerBound = lower;
                    record.UpperBound = upper;
                    record.ScalarIncrement = increment;
                    record.CurrentValue = current ? SettingValue(*current) : std::nullopt;
                    setting.SetSettingProperties(record);
                    for (const Number& value : interesting) {
                        if (!value) {
                            continue;
                        }
                        ++count;
                        std::string patch;
                        const std::string text = std::to_string(*value);
                        const RedfishConfigResult result = setting.PreparePatchContext(text, patch, FILTER_PATCH);
                        ASSERT_EQ(std::to_string(static_cast<int>(result)) + " " + result.ErrorMsg(),
                                  Expected(*value, lower, upper, increment, current))
                            << *value << " in [" << Reference::Text(lower) << ", " << Reference::Text(upper) << "] by "
                            << Reference::Text(increment) << " from " << Reference::Text(current);
                        ASSERT_EQ(patch, result == RESULT_SUCCEED ? text : "");
                    }
                }
            }
        }
    }
    Exact::Report("numbers against bounds and increments", count, 983040);
}

TEST(NumberWorld, OfLengthsIsAsTheReferenceSays)
{
    std::size_t count = 0;
    const std::vector<Number> limits{std::nullopt, smallest, -1, 0, 1, 2, 3, 5, largest};
    for (const Number& lower : limits) {
        for (const Number& upper : limits) {
            for (std::size_t length = 0; length < 8; ++length) {
                RedfishConfigSettingInfoStru record;
                record.AttributeName = "A";
                record.MinLength = lower;
                record.MaxLength = upper;
                RedfishConfigTextSetting setting(record, {});
                std::string patch;
                const std::string value(length, 'v');
                const RedfishConfigResult result = setting.PreparePatchContext(value, patch, FILTER_PATCH);
                const int verdict = Reference::CheckScope(static_cast<std::int64_t>(length), lower, upper, true);
                const std::string reason =
                    verdict == 4
                        ? "BMC data error."
                        : Reference::ScopeReason(verdict, "The value length", "MinLength", lower, "MaxLength", upper);
                ASSERT_EQ(static_cast<int>(result), verdict == 0 ? 0 : verdict == 4 ? 8 : 10);
                ASSERT_EQ(result.ErrorMsg(), verdict == 0 ? "" : "New value " + value + " is invalid: " + reason);
                ++count;
            }
        }
    }
    Exact::Report("lengths against limits", count, 648);
}

TEST(NumberWorld, OfDigitsAndSignsIsReadAsTheReferenceSays)
{
    std::vector<std::string> texts{""};
    std::size_t begin = 0;
    for (std::size_t length = 1; length <= (Exact::IsLong() ? 6u : 4u); ++length) {
        const std::size_t end = texts.size();
        for (; begin < end; ++begin) {
            for (const char character : std::string("019+-x. ")) {
                texts.push_back(texts[begin] + character);
            }
        }
    }
    for (const char* edge : {"9223372036854775807", "9223372036854775808", "-9223372036854775808",
                             "-9223372036854775809", "+9223372036854775807", "00000000000000000000000000000000001",
                             "99999999999999999999999999999999999999999999", "18446744073709551616"}) {
        texts.emplace_back(edge);
    }
    RedfishConfigSettingInfoStru record;
    record.AttributeName = "A";
    RedfishConfigNumericSetting setting(record, {});
    for (const std::string& text : texts) {
        std::string patch;
        const bool accepted = setting.PreparePatchContext(text, patch, FILTER_PATCH) == RESULT_SUCCEED;
        ASSERT_EQ(accepted, Reference::ReadInteger(text).has_value()) << '"' << text << '"';
    }
    Exact::Report("texts read as integers", texts.size(), 4689);
}

} // namespace
