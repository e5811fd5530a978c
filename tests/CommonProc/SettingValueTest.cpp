#include <RedfishConfig/SettingValue.h>

#include "support/GlobalLocale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <locale>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

using namespace RedfishConfig;

namespace {

constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

const std::string missing = "\\";

SettingValue Text(std::string text)
{
    return SettingAlternative(std::in_place_index<0>, std::move(text));
}
SettingValue Integer(std::int64_t number)
{
    return SettingAlternative(std::in_place_index<1>, number);
}
SettingValue Boolean(bool truth)
{
    return SettingAlternative(std::in_place_index<2>, truth);
}

/** The text of the runtime error that the action raises, or what happened instead. */
template <class Action>
std::string RuntimeErrorOf(Action action)
{
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    } catch (...) {
        return "(another exception)";
    }
    return "(no exception)";
}

/** Separates thousands and has its own words for the truth values, as the locale of a person may. */
class ForeignNumbers : public std::numpunct<char> {
protected:
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    std::string do_truename() const override { return "wahr"; }
    std::string do_falsename() const override { return "falsch"; }
};

/** Takes '#' for an upper-case 't'. */
class ForeignLetters : public std::ctype<char> {
protected:
    char do_tolower(char c) const override { return c == '#' ? 't' : std::ctype<char>::do_tolower(c); }
    const char* do_tolower(char* begin, const char* end) const override
    {
        std::transform(begin, begin + (end - begin), begin, [this](char c) { return do_tolower(c); });
        return end;
    }
};

/** Makes a locale with both of them the process's global one while it lives. */
class ForeignLocale {
public:
    ForeignLocale()
        : m_Previous(std::locale::global(
              std::locale(std::locale(std::locale::classic(), new ForeignNumbers), new ForeignLetters)))
    {
    }
    ~ForeignLocale() { std::locale::global(m_Previous); }
    ForeignLocale(const ForeignLocale&) = delete;
    ForeignLocale& operator=(const ForeignLocale&) = delete;

private:
    std::locale m_Previous;
};

/** A present value that holds none of the three kinds, if the standard library can come to have one. */
SettingValue TryToLoseAlternative()
{
    struct NoText {
        operator std::string() const { throw std::runtime_error("no text"); }
    };
    SettingValue value = Integer(5);
    try {
        value->emplace<std::string>(NoText{});
    } catch (const std::runtime_error&) {
    }
    return value;
}

} // namespace

TEST(SettingValue, HoldsTextIntegerOrBooleanInThisOrder)
{
    static_assert(std::is_same_v<SettingValue, std::optional<SettingAlternative>>);
    static_assert(std::variant_size_v<SettingAlternative> == 3);
    static_assert(std::is_same_v<std::variant_alternative_t<0, SettingAlternative>, std::string>);
    static_assert(std::is_same_v<std::variant_alternative_t<1, SettingAlternative>, std::int64_t>);
    static_assert(std::is_same_v<std::variant_alternative_t<2, SettingAlternative>, bool>);
    EXPECT_FALSE(SettingValue().has_value());
}

TEST(SettingValue, WithoutAnAlternativeIsUnsupported)
{
    SettingValue value = TryToLoseAlternative();
    if (!value->valueless_by_exception()) {
        GTEST_SKIP() << "this standard library never leaves a value without an alternative";
    }
    EXPECT_EQ(RuntimeErrorOf([&] { GetOptionalVarAsString(value); }), "Unsupported type for conversion to string.");
    std::string text = "untouched";
    EXPECT_FALSE(GetOptionalVarAsString(value, text));
    EXPECT_EQ(text, "untouched");
    EXPECT_EQ(GetOptionalVarAsStringToJSON(value), missing);
    EXPECT_FALSE(TransferStringToOptionalVar(value, "5"));
    EXPECT_TRUE(value->valueless_by_exception());
    EXPECT_FALSE(IsNumSetting(value));
    EXPECT_FALSE(IsBoolenSetting(value));
}

TEST(GetOptionalVarAsString, WritesEachKindOfValue)
{
    const std::vector<std::pair<SettingValue, std::string>> table{
        {Text("Legacy"), "Legacy"},
        {Text(""), ""},
        {Text(" two  words "), " two  words "},
        {Text(missing), missing},
        {Text(std::string("a\0b", 3)), std::string("a\0b", 3)},
        {Integer(0), "0"},
        {Integer(7), "7"},
        {Integer(-42), "-42"},
        {Integer(largest), "9223372036854775807"},
        {Integer(smallest), "-9223372036854775808"},
        {Boolean(true), "true"},
        {Boolean(false), "false"},
    };
    for (const auto& [value, expected] : table) {
        EXPECT_EQ(GetOptionalVarAsString(value), expected);
        std::string text = "untouched";
        EXPECT_TRUE(GetOptionalVarAsString(value, text)) << expected;
        EXPECT_EQ(text, expected);
        EXPECT_EQ(GetOptionalVarAsStringToJSON(value), expected);
    }
}

TEST(GetOptionalVarAsString, WritesTheSameInEveryLocale)
{
    const ForeignLocale locale;
    EXPECT_EQ(GetOptionalVarAsString(Integer(1234567)), "1234567");
    EXPECT_EQ(GetOptionalVarAsString(Boolean(true)), "true");
    EXPECT_EQ(GetOptionalVarAsString(Boolean(false)), "false");
    EXPECT_EQ(GetOptionalVarAsStringToJSON(Integer(-1234567)), "-1234567");
}

TEST(GetOptionalVarAsString, ThrowsForAnAbsentValue)
{
    EXPECT_EQ(RuntimeErrorOf([] { GetOptionalVarAsString(SettingValue()); }), "The optional is nullopt.");
}

TEST(GetOptionalVarAsString, WithOutputLeavesItUntouchedForAnAbsentValue)
{
    std::string text = "untouched";
    EXPECT_FALSE(GetOptionalVarAsString(SettingValue(), text));
    EXPECT_EQ(text, "untouched");
}

TEST(GetOptionalVarAsStringToJSON, MarksAnAbsentValueWithABackslash)
{
    EXPECT_EQ(GetOptionalVarAsStringToJSON(SettingValue()), missing);
}

TEST(TransferStringToOptionalVar, KeepsTheTextOfAnAbsentValueAndSaysNothingWasConverted)
{
    for (const std::string text : {"5", "true", "", "Legacy"}) {
        SettingValue value;
        EXPECT_FALSE(TransferStringToOptionalVar(value, text)) << text;
        EXPECT_EQ(value, Text(text));
    }
}

TEST(TransferStringToOptionalVar, ReplacesATextByAnyText)
{
    for (const std::string text : {"Uefi", "", " 5 ", "true", "12"}) {
        SettingValue value = Text("Legacy");
        EXPECT_TRUE(TransferStringToOptionalVar(value, text)) << text;
        EXPECT_EQ(value, Text(text));
    }
}

TEST(TransferStringToOptionalVar, ReadsADecimalInteger)
{
    const std::vector<std::pair<std::string, std::int64_t>> table{
        {"12", 12},
        {"12abc", 12},
        {"-8", -8},
        {"+7", 7},
        {"  5", 5},
        {"\t\n\v\f\r5", 5},
        {"6 7", 6},
        {"007", 7},
        {"-0", 0},
        {"1.9", 1},
        {"1,000", 1},
        {"0x1f", 0},
        {"9223372036854775807", largest},
        {"-9223372036854775808", smallest},
    };
    for (const auto& [text, expected] : table) {
        SettingValue value = Integer(99);
        EXPECT_TRUE(TransferStringToOptionalVar(value, text)) << text;
        EXPECT_EQ(value, Integer(expected)) << text;
    }
}

TEST(TransferStringToOptionalVar, KeepsTheIntegerWhenTheTextIsNone)
{
    for (const std::string text : {"", " ", "abc", "-", "+", "+-5", "- 5", "x12", "true", "9223372036854775808",
                                   "-9223372036854775809", "99999999999999999999", "99999999999999999999abc"}) {
        SettingValue value = Integer(99);
        bool converted = true;
        EXPECT_NO_THROW(converted = TransferStringToOptionalVar(value, text)) << text;
        EXPECT_FALSE(converted) << text;
        EXPECT_EQ(value, Integer(99)) << text;
    }
}

TEST(TransferStringToOptionalVar, ReadsABoolean)
{
    const std::vector<std::pair<std::string, bool>> table{
        {"true", true}, {"TRUE", true},   {"True", true},   {"tRuE", true}, {"false", false},
        {"1", false},   {"yes", false},   {"on", false},    {"", false},    {"true ", false},
        {"t", false},   {" true", false}, {"truee", false}, {"0", false},   {std::string("true\0", 5), false},
    };
    for (const auto& [text, expected] : table) {
        for (const bool before : {false, true}) {
            SettingValue value = Boolean(before);
            EXPECT_TRUE(TransferStringToOptionalVar(value, text)) << text;
            EXPECT_EQ(value, Boolean(expected)) << text;
        }
    }
}

TEST(TransferStringToOptionalVar, LowersABooleanAsTheGlobalLocaleDoes)
{
    SettingValue value = Boolean(false);
    EXPECT_TRUE(TransferStringToOptionalVar(value, "#RUE"));
    EXPECT_EQ(value, Boolean(false));
    const ForeignLocale locale;
    EXPECT_TRUE(TransferStringToOptionalVar(value, "#RUE"));
    EXPECT_EQ(value, Boolean(true));
}

TEST(TransferStringToOptionalVar, ReadsBackWhatGetOptionalVarAsStringWrote)
{
    const std::vector<std::pair<SettingValue, SettingValue>> table{
        {Text("Legacy"), Text("")},      {Integer(smallest), Integer(0)}, {Integer(largest), Integer(0)},
        {Boolean(true), Boolean(false)}, {Boolean(false), Boolean(true)},
    };
    for (auto [written, read] : table) {
        EXPECT_TRUE(TransferStringToOptionalVar(read, GetOptionalVarAsString(written)));
        EXPECT_EQ(read, written);
    }
}

TEST(GetOptionalAsString, GivesATextUnchanged)
{
    for (const std::string& expected :
         {std::string("Boot Mode"), std::string(), std::string("  a\t\n"), std::string("a\0b", 3), missing}) {
        const std::optional<std::string> text = expected;
        EXPECT_EQ(GetOptionalAsString(text), expected);
        std::string out = "untouched";
        EXPECT_TRUE(GetOptionalAsString(text, out));
        EXPECT_EQ(out, expected);
    }
}

TEST(GetOptionalAsString, ThrowsForAnAbsentText)
{
    EXPECT_EQ(RuntimeErrorOf([] { GetOptionalAsString(std::optional<std::string>()); }), "The optional is nullopt.");
}

TEST(GetOptionalAsString, WithOutputLeavesItUntouchedForAnAbsentText)
{
    std::string out = "untouched";
    EXPECT_FALSE(GetOptionalAsString(std::optional<std::string>(), out));
    EXPECT_EQ(out, "untouched");
}

TEST(GetOptionalAsString, WritesAnIntegerInDecimal)
{
    const std::vector<std::pair<std::int64_t, std::string>> table{
        {0, "0"},
        {31, "31"},
        {-42, "-42"},
        {1234567, "1234567"},
        {largest, "9223372036854775807"},
        {smallest, "-9223372036854775808"},
    };
    for (const auto& [number, expected] : table) {
        EXPECT_EQ(GetOptionalAsString(std::optional<std::int64_t>(number)), expected);
    }
}

TEST(GetOptionalAsString, WritesAnIntegerAsTheGlobalLocaleHasIt)
{
    const ForeignLocale locale;
    EXPECT_EQ(GetOptionalAsString(std::optional<std::int64_t>(1234567)), "1.234.567");
}

TEST(GetOptionalAsString, ThrowsForAnAbsentInteger)
{
    EXPECT_EQ(RuntimeErrorOf([] { GetOptionalAsString(std::optional<std::int64_t>()); }), "The optional is nullopt.");
}

TEST(IsNumSetting, HoldsForAPresentIntegerAlone)
{
    EXPECT_TRUE(IsNumSetting(Integer(0)));
    EXPECT_TRUE(IsNumSetting(Integer(-1)));
    EXPECT_FALSE(IsNumSetting(Boolean(true)));
    EXPECT_FALSE(IsNumSetting(Text("5")));
    EXPECT_FALSE(IsNumSetting(SettingValue()));
}

TEST(IsBoolenSetting, HoldsForAPresentBooleanAlone)
{
    EXPECT_TRUE(IsBoolenSetting(Boolean(true)));
    EXPECT_TRUE(IsBoolenSetting(Boolean(false)));
    EXPECT_FALSE(IsBoolenSetting(Integer(1)));
    EXPECT_FALSE(IsBoolenSetting(Text("true")));
    EXPECT_FALSE(IsBoolenSetting(SettingValue()));
}

TEST(IsHexString, NeedsThePrefixAndNothingButDigitsAfterIt)
{
    const std::vector<std::pair<std::string, bool>> table{
        {"0xABC", true},
        {"0X1f", true},
        {"0x0", true},
        {"0x0123456789abcdefABCDEF", true},
        {"", false},
        {"0", false},
        {"x", false},
        {"0x", false},
        {"0X", false},
        {"1F", false},
        {"1F3", false},
        {"123", false},
        {"0x1G", false},
        {"0xg", false},
        {"0xG1", false},
        {"x1F", false},
        {"00x1", false},
        {"1x1", false},
        {"0y1", false},
        {" 0x1", false},
        {"0x1 ", false},
        {"0x 1", false},
        {"-0x1", false},
        {"0x-1", false},
        {"0x+1", false},
        {"0x0x1", false},
        {"0x1.0", false},
        {"0x1\xC3\xA9", false},
        {std::string("0x1\0", 4), false},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(isHexString(text), expected) << '"' << text << '"';
    }
}

TEST(HexToDec, ReadsWithAndWithoutPrefix)
{
    const std::vector<std::pair<std::string, std::string>> table{
        {"0x1F", "31"},
        {"0X1f", "31"},
        {"1f", "31"},
        {"1F", "31"},
        {"0", "0"},
        {"a", "10"},
        {"0x0", "0"},
        {"10", "16"},
        {"000ff", "255"},
        {"0x7fffffff", "2147483647"},
        {"7FFFFFFF", "2147483647"},
        {"-1", "-1"},
        {"0x-1f", "-31"},
        {"-80000000", "-2147483648"},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(HexToDec(text), expected) << text;
    }
}

TEST(HexToDec, AndDecToHexKnowNoGroupsOfDigits)
{
    const RegistryTest::GlobalLocale grouping(RegistryTest::GroupingLocale());
    EXPECT_EQ(HexToDec("0x10,000"), "16");
    EXPECT_EQ(HexToDec("10000"), "65536");
    EXPECT_EQ(DecToHex("1000000"), "0xf4240");
}

TEST(HexToDec, GivesZeroForATextWithoutANumber)
{
    for (const std::string text : {"", "0x", "0X", "zz", "0xzz", "x1f", "-", " "}) {
        EXPECT_EQ(HexToDec(text), "0") << '"' << text << '"';
    }
}

TEST(HexToDec, ReadsAsAStreamDoes)
{
    const std::vector<std::pair<std::string, std::string>> table{
        {" 1f", "31"}, {"0x 1f", "31"}, {"1fzz", "31"}, {"1f 2", "31"}, {"1.5", "1"}, {"0x0x1f", "31"},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(HexToDec(text), expected) << text;
    }
}

TEST(HexToDec, GivesTheNearest32BitNumberWhenItDoesNotFit)
{
    const std::vector<std::pair<std::string, std::string>> table{
        {"0x80000000", "2147483647"},         {"ffffffff", "2147483647"},
        {"0x123456789abcdef0", "2147483647"}, {"0xffffffffffffffffffff", "2147483647"},
        {"-80000001", "-2147483648"},         {"-ffffffffffffffffffff", "-2147483648"},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(HexToDec(text), expected) << text;
    }
}

TEST(DecToHex, WritesLowerCaseDigitsAfterThePrefix)
{
    const std::vector<std::pair<std::string, std::string>> table{
        {"31", "0x1f"},
        {"255", "0xff"},
        {"0", "0x0"},
        {"10", "0xa"},
        {"-1", "0xffffffffffffffff"},
        {"-255", "0xffffffffffffff01"},
        {"2147483648", "0x80000000"},
        {"4294967296", "0x100000000"},
        {"9223372036854775807", "0x7fffffffffffffff"},
        {"-9223372036854775808", "0x8000000000000000"},
        {"007", "0x7"},
        {"+16", "0x10"},
        {" 12abc", "0xc"},
        {"0x1f", "0x0"},
    };
    for (const auto& [text, expected] : table) {
        EXPECT_EQ(DecToHex(text), expected) << text;
    }
}

TEST(DecToHex, ThrowsForATextWithoutDigits)
{
    for (const std::string text : {"", " ", "abc", "-", "x1", "ff"}) {
        EXPECT_THROW(DecToHex(text), std::invalid_argument) << '"' << text << '"';
    }
}

TEST(DecToHex, ThrowsForANumberBeyond64Bits)
{
    for (const std::string text :
         {"9223372036854775808", "-9223372036854775809", "18446744073709551615", "99999999999999999999"}) {
        EXPECT_THROW(DecToHex(text), std::out_of_range) << text;
    }
}

TEST(DecToHex, IsReadBackByHexToDecWithin31Bits)
{
    for (std::int64_t number = 0; number <= std::numeric_limits<std::int32_t>::max(); number = number * 3 + 1) {
        const std::string decimal = std::to_string(number);
        EXPECT_TRUE(isHexString(DecToHex(decimal))) << decimal;
        EXPECT_EQ(HexToDec(DecToHex(decimal)), decimal);
    }
    EXPECT_EQ(HexToDec(DecToHex("2147483647")), "2147483647");
    EXPECT_EQ(HexToDec(DecToHex("2147483648")), "2147483647");
}

TEST(CheckAndWriteInfoToJSON, WritesAMemberAsText)
{
    boost::json::object object{{"Other", 1}};
    CheckAndWriteInfoToJSON(object, "HelpText", "Selects the boot mode.");
    CheckAndWriteInfoToJSON(object, "Number", "5");
    const boost::json::object expected{{"Other", 1}, {"HelpText", "Selects the boot mode."}, {"Number", "5"}};
    EXPECT_EQ(object, expected);
}

TEST(CheckAndWriteInfoToJSON, ReplacesAMemberOfTheSameKey)
{
    boost::json::object object{{"HelpText", 5}, {"helptext", "other"}};
    CheckAndWriteInfoToJSON(object, "HelpText", "new");
    const boost::json::object expected{{"HelpText", "new"}, {"helptext", "other"}};
    EXPECT_EQ(object, expected);
}

TEST(CheckAndWriteInfoToJSON, WritesAnEmptyTextAndWhatOnlyLooksLikeTheMarker)
{
    for (const std::string value : {"", "\\\\", " \\", "\\n", "/"}) {
        boost::json::object object;
        CheckAndWriteInfoToJSON(object, "Key", value);
        EXPECT_EQ(object, (boost::json::object{{"Key", value}})) << value;
    }
}

TEST(CheckAndWriteInfoToJSON, WritesNothingForTheMarkerOrAnEmptyKey)
{
    const boost::json::object before{{"Key", "old"}, {"", "unnamed"}};
    boost::json::object object = before;
    CheckAndWriteInfoToJSON(object, "Key", missing);
    CheckAndWriteInfoToJSON(object, "New", missing);
    CheckAndWriteInfoToJSON(object, "Key", GetOptionalVarAsStringToJSON(SettingValue()));
    CheckAndWriteInfoToJSON(object, "", "value");
    CheckAndWriteInfoToJSON(object, "", missing);
    EXPECT_EQ(object, before);
}

TEST(VariantToJson, KeepsTheKind)
{
    for (const std::string expected : {"5", "", "true", "a\"\\b"}) {
        const boost::json::value json = VariantToJson(expected);
        ASSERT_TRUE(json.is_string());
        EXPECT_EQ(json.get_string(), expected);
    }
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{5}, std::int64_t{-5}, smallest, largest}) {
        const boost::json::value json = VariantToJson(number);
        ASSERT_TRUE(json.is_int64());
        EXPECT_EQ(json.get_int64(), number);
    }
    for (const bool truth : {false, true}) {
        const boost::json::value json = VariantToJson(truth);
        ASSERT_TRUE(json.is_bool());
        EXPECT_EQ(json.get_bool(), truth);
    }
}

TEST(CaseInsensitiveComparator, TakesNamesThatDifferOnlyInLetterCaseForOne)
{
    const CaseInsensitiveComparator less;
    const std::vector<std::pair<std::string, std::string>> same{
        {"", ""}, {"BootMode", "bootmode"}, {"BOOTMODE", "bOOTmODE"}, {"A_1", "a_1"}, {"Z", "z"},
    };
    for (const auto& [left, right] : same) {
        EXPECT_FALSE(less(left, right)) << left;
        EXPECT_FALSE(less(right, left)) << left;
    }
}

TEST(CaseInsensitiveComparator, OrdersCharacterByCharacterWithAShorterPrefixFirst)
{
    const CaseInsensitiveComparator less;
    const std::vector<std::pair<std::string, std::string>> ordered{
        {"", "a"},
        {"Boot", "bootmode"},
        {"boot", "BootMode"},
        {"a", "B"},
        {"A", "b"},
        {"aZ", "Ba"},
        {"BootA", "bootb"},
        {"Ab2", "aB3"},
        {"A10", "a9"},
        {std::string("a\0b", 3), std::string("A\0C", 3)},
    };
    for (const auto& [left, right] : ordered) {
        EXPECT_TRUE(less(left, right)) << left << " " << right;
        EXPECT_FALSE(less(right, left)) << left << " " << right;
    }
}

TEST(CaseInsensitiveComparator, FoldsAsciiLettersOnly)
{
    const CaseInsensitiveComparator less;
    const std::vector<std::pair<std::string, std::string>> different{
        {"\xC3\x84", "\xC3\xA4"}, {"\xC4", "\xE4"}, {"@", "`"}, {"[", "{"}, {"K", "\xE2\x84\xAA"},
    };
    for (const auto& [left, right] : different) {
        EXPECT_NE(less(left, right), less(right, left)) << left << " " << right;
    }
}

TEST(CaseInsensitiveComparator, FoldsTheSameInEveryLocale)
{
    const ForeignLocale locale;
    const CaseInsensitiveComparator less;
    EXPECT_NE(less("#", "t"), less("t", "#"));
    EXPECT_FALSE(less("T", "t") || less("t", "T"));
}

TEST(CaseInsensitiveComparator, IsAStrictWeakOrdering)
{
    const std::string alphabet("aAbZ_\xE4", 6);
    std::vector<std::string> names{""};
    for (std::size_t done = 0; names[done].size() < 2; ++done) {
        for (const char next : alphabet) {
            names.push_back(names[done] + next);
        }
    }
    ASSERT_EQ(names.size(), 1u + 6u + 36u);

    const CaseInsensitiveComparator less;
    static_assert(std::is_nothrow_invocable_v<CaseInsensitiveComparator, const std::string&, const std::string&>);
    const auto same = [&](const std::string& left, const std::string& right) {
        return !less(left, right) && !less(right, left);
    };
    for (const std::string& a : names) {
        ASSERT_FALSE(less(a, a)) << a;
        for (const std::string& b : names) {
            ASSERT_FALSE(less(a, b) && less(b, a)) << a << " " << b;
            for (const std::string& c : names) {
                ASSERT_TRUE(!(less(a, b) && less(b, c)) || less(a, c)) << a << " " << b << " " << c;
                ASSERT_TRUE(!(same(a, b) && same(b, c)) || same(a, c)) << a << " " << b << " " << c;
            }
        }
    }
}

TEST(SettingValueMap, FindsANameInAnyLetterCase)
{
    static_assert(std::is_same_v<SettingValueMap, std::map<std::string, SettingValue, CaseInsensitiveComparator>>);
    SettingValueMap values{{"bootmode", Text("Legacy")}, {"Retries", Integer(3)}};
    ASSERT_EQ(values.count("BootMode"), 1u);
    EXPECT_EQ(values.at("BOOTMODE"), Text("Legacy"));
    EXPECT_FALSE(values.emplace("RETRIES", Integer(4)).second);
    EXPECT_EQ(values.size(), 2u);
    EXPECT_EQ(values.count("BootMode2"), 0u);
}
