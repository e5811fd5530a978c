#include "JsonText.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>

#include <gtest/gtest.h>

#include <string>

namespace {

using RedfishConfigTool::JsonText;
namespace json = boost::json;

TEST(JsonText, Scalars)
{
    EXPECT_EQ(JsonText(nullptr), "null");
    EXPECT_EQ(JsonText(true), "true");
    EXPECT_EQ(JsonText(-5), "-5");
    EXPECT_EQ(JsonText("text"), "\"text\"");
}

TEST(JsonText, ShortListsStayOnOneLine)
{
    EXPECT_EQ(JsonText(json::array{}), "[]");
    EXPECT_EQ(JsonText(json::object{}), "{}");
    EXPECT_EQ(JsonText(json::array{1, 2}), "[1, 2]");
    EXPECT_EQ(JsonText(json::object{{"a", 1}, {"b", "x"}}), "{\"a\": 1, \"b\": \"x\"}");
}

TEST(JsonText, LongListsAndNestedOnesAreBroken)
{
    const std::string word(60, 'x');
    EXPECT_EQ(JsonText(json::array{json::string(word), json::string(word)}),
              "[\n  \"" + word + "\",\n  \"" + word + "\"\n]");
    EXPECT_EQ(JsonText(json::object{{"a", json::array{1}}, {"b", json::object{}}}), "{\n  \"a\": [1],\n  \"b\": {}\n}");
}

TEST(JsonText, WhatCouldSteerATerminalIsEscaped)
{
    EXPECT_EQ(JsonText("q\"b\\n\nt\t\x1b\x7f"), R"("q\"b\\n\nt\t\u001b\u007f")");
    EXPECT_EQ(JsonText("\xc2\x9b\xe2\x80\xae"), R"("\u009b\u202e")");
    EXPECT_EQ(JsonText("\xc3\xa9\xf0\x9f\x92\xbe"), "\"\xc3\xa9\xf0\x9f\x92\xbe\"");
    EXPECT_EQ(JsonText(json::object{{"\x1b", 1}}), R"({"\u001b": 1})");
}

TEST(JsonText, ABytesThatIsNoUtf8BecomesTheReplacementCharacter)
{
    EXPECT_EQ(JsonText("a\xff\xc3"), R"("a\ufffd\ufffd")");
}

TEST(JsonText, IsReadBackAsTheSame)
{
    const json::value value = json::parse(
        R"({"a": [[], {}, [1, [2, {"b": null}]]], "c": "x\u0000\u001f\"\\\/\u00e9\u2028", "d": [true, -9223372036854775808]})");
    EXPECT_EQ(json::parse(JsonText(value)), value);
}

} // namespace
