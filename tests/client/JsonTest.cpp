#include "ClientTest.h"

#include <cstdint>
#include <limits>
#include <random>

// The reader of JSON: what each text is, and what is no JSON.

namespace {

using namespace ClientTest;
using Kind = JsonValue::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

/** A text that is JSON, with its root. */
class Parsed {
public:
    explicit Parsed(std::string text)
    {
        JsonDefect defect;
        m_Document = JsonDocument::Parse(std::move(text), defect);
        if (m_Document == nullptr) {
            ADD_FAILURE() << defect.Reason << " at byte " << defect.Byte;
            m_Document = JsonDocument::Parse("null", defect);
        }
    }

    JsonValue Root() const { return m_Document->Root(); }
    const RepeatedKeys& Repeated() const { return m_Document->Repeated(); }

private:
    std::shared_ptr<const JsonDocument> m_Document;
};

/** Why a text is no JSON: "syntax error at 3"; without a place when it is the text as a whole. */
std::string DefectOf(std::string text)
{
    JsonDefect defect;
    if (JsonDocument::Parse(std::move(text), defect) != nullptr) {
        return "none";
    }
    return defect.Reason + (defect.IsSyntax ? " at " + std::to_string(defect.Byte) : "");
}

std::vector<std::string> KeysOf(const JsonValue& object)
{
    std::vector<std::string> keys;
    for (const JsonMember& member : object) {
        keys.emplace_back(member.Key);
    }
    return keys;
}

std::string Repeat(const std::string& text, std::size_t times)
{
    std::string all;
    for (std::size_t time = 0; time < times; ++time) {
        all += text;
    }
    return all;
}

TEST(JsonKinds, HaveAnAnswerToEveryQuestion)
{
    const struct {
        const char* Text;
        Kind What;
        std::string_view AsText;
        std::optional<bool> Boolean;
        std::optional<std::int64_t> Integer;
        std::optional<std::uint64_t> Unsigned;
        std::optional<double> Fraction;
        std::size_t Size;
        bool HasMember;  ///< "a"
        bool HasElement; ///< the first
    } rows[] = {
        {"null", Kind::Null, "", {}, {}, {}, {}, 0, false, false},
        {"true", Kind::Boolean, "", true, {}, {}, {}, 0, false, false},
        {"false", Kind::Boolean, "", false, {}, {}, {}, 0, false, false},
        {"-7", Kind::Integer, "", {}, -7, {}, {}, 0, false, false},
        {"9223372036854775808", Kind::Unsigned, "", {}, {}, 9223372036854775808U, {}, 0, false, false},
        {"1.5", Kind::Fraction, "", {}, {}, {}, 1.5, 0, false, false},
        {R"("a")", Kind::Text, "a", {}, {}, {}, {}, 0, false, false},
        {R"("")", Kind::Text, "", {}, {}, {}, {}, 0, false, false},
        {R"(["a"])", Kind::Array, "", {}, {}, {}, {}, 1, false, true},
        {R"([])", Kind::Array, "", {}, {}, {}, {}, 0, false, false},
        {R"({"a": 1, "b": 2})", Kind::Object, "", {}, {}, {}, {}, 2, true, false},
        {R"({})", Kind::Object, "", {}, {}, {}, {}, 0, false, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Text);
        const Parsed parsed(std::string(" ") + row.Text + "\r\n\t ");
        const JsonValue root = parsed.Root();
        EXPECT_TRUE(root.Exists());
        EXPECT_EQ(root.What(), row.What);
        EXPECT_EQ(root.IsNull(), row.What == Kind::Null);
        EXPECT_EQ(root.IsText(), row.What == Kind::Text);
        EXPECT_EQ(root.IsArray(), row.What == Kind::Array);
        EXPECT_EQ(root.IsObject(), row.What == Kind::Object);
        EXPECT_EQ(root.IsNumber(),
                  row.What == Kind::Integer || row.What == Kind::Unsigned || row.What == Kind::Fraction);
        EXPECT_EQ(root.Text(), row.AsText);
        EXPECT_EQ(root.Boolean(), row.Boolean);
        EXPECT_EQ(root.Integer(), row.Integer);
        EXPECT_EQ(root.Unsigned(), row.Unsigned);
        EXPECT_EQ(root.Fraction(), row.Fraction);
        EXPECT_EQ(root.Size(), row.Size);
        EXPECT_EQ(root.Member("a").Exists(), row.HasMember);
        EXPECT_EQ(root.Element(0).Exists(), row.HasElement);
        EXPECT_FALSE(root.Member("").Exists());
        EXPECT_FALSE(root.Element(row.Size).Exists());
        EXPECT_EQ(KeysOf(root).size(), row.Size);
        EXPECT_TRUE(root == parsed.Root());
        EXPECT_FALSE(root == JsonValue());
    }
}

TEST(JsonKinds, OfNoValueIsMissing)
{
    const JsonValue none;
    EXPECT_FALSE(none.Exists());
    EXPECT_EQ(none.What(), Kind::Missing);
    EXPECT_FALSE(none.IsNull() || none.IsText() || none.IsNumber() || none.IsArray() || none.IsObject());
    EXPECT_EQ(none.Text(), "");
    EXPECT_EQ(none.Boolean(), std::nullopt);
    EXPECT_EQ(none.Integer(), std::nullopt);
    EXPECT_EQ(none.Unsigned(), std::nullopt);
    EXPECT_EQ(none.Fraction(), std::nullopt);
    EXPECT_EQ(none.Size(), 0U);
    EXPECT_FALSE(none.Member("a").Exists());
    EXPECT_FALSE(none.Element(0).Exists());
    EXPECT_THAT(KeysOf(none), IsEmpty());
    EXPECT_EQ(ToText(none), "");
    EXPECT_TRUE(none == JsonValue());
}

TEST(JsonNumbers, AreWholeHoweverTheyAreWritten)
{
    const struct {
        const char* Text;
        Kind What;
        std::optional<std::int64_t> Integer;
        std::optional<std::uint64_t> Unsigned;
    } rows[] = {
        {"5", Kind::Integer, 5, {}},
        {"5.0", Kind::Fraction, 5, {}},
        {"5e0", Kind::Fraction, 5, {}},
        {"0.5E+1", Kind::Fraction, 5, {}},
        {"-0", Kind::Integer, 0, {}},
        {"-0.0", Kind::Fraction, 0, {}},
        {"-9223372036854775808.0", Kind::Fraction, {}, {}},
        {"9223372036854775808.0", Kind::Fraction, {}, {}},
        {"5.5", Kind::Fraction, {}, {}},
        {"1e-1", Kind::Fraction, {}, {}},
        {"1e18", Kind::Fraction, 1'000'000'000'000'000'000, {}},
        {"1e19", Kind::Fraction, {}, {}},
        {"-1e19", Kind::Fraction, {}, {}},
        {"9223372036854775807", Kind::Integer, std::numeric_limits<std::int64_t>::max(), {}},
        {"9223372036854775808", Kind::Unsigned, {}, 9'223'372'036'854'775'808U},
        {"18446744073709551615", Kind::Unsigned, {}, std::numeric_limits<std::uint64_t>::max()},
        {"18446744073709551616", Kind::Fraction, {}, {}},
        {"-9223372036854775808", Kind::Integer, std::numeric_limits<std::int64_t>::min(), {}},
        {"-9223372036854775809", Kind::Fraction, {}, {}},
        {"-18446744073709551616", Kind::Fraction, {}, {}},
        {"1e308", Kind::Fraction, {}, {}},
        {"1e400", Kind::Fraction, {}, {}},
        {"-1e400", Kind::Fraction, {}, {}},
    };
    for (const auto& row : rows) {
        const Parsed parsed(row.Text);
        EXPECT_EQ(parsed.Root().What(), row.What) << row.Text;
        EXPECT_TRUE(parsed.Root().IsNumber()) << row.Text;
        EXPECT_EQ(parsed.Root().Integer(), row.Integer) << row.Text;
        EXPECT_EQ(parsed.Root().Unsigned(), row.Unsigned) << row.Text;
        EXPECT_EQ(parsed.Root().Fraction().has_value(), row.What == Kind::Fraction) << row.Text;
    }
}

TEST(JsonTexts, AreReadWithoutEscapes)
{
    const struct {
        const char* Written;
        std::string Text;
    } rows[] = {
        {"plain", "plain"},
        {"caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80", "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80"},
        {R"(\"\\\/\b\f\n\r\t)", "\"\\/\b\f\n\r\t"},
        {R"(\u0041\u00e9\u20AC\ud83D\ude00)", "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
        {R"(a\u0000b)", std::string("a\0b", 3)},
        {R"(before\nafter)", "before\nafter"},
        {R"(\n)", "\n"},
        {"\x7F", "\x7F"},
        {"", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.Written);
        const std::string quoted = std::string("\"") + row.Written + "\"";
        const std::string object = "{" + quoted + ": " + quoted + ", \"\": [" + quoted + ", " + quoted + "]}";
        const Parsed parsed(row.Text.empty() ? "{\"\": [\"\", \"\"]}" : object);
        EXPECT_EQ(Parsed(quoted).Root().Text(), row.Text);
        EXPECT_EQ(KeysOf(parsed.Root()).front(), row.Text);
        EXPECT_EQ(parsed.Root().Member("").Element(0).Text(), row.Text);
        EXPECT_EQ(parsed.Root().Member("").Element(1).Text(), row.Text);
        if (!row.Text.empty()) {
            EXPECT_EQ(parsed.Root().Member(row.Text).Text(), row.Text);
        }
    }
}

TEST(JsonTexts, MayBeLongAndHaveAnEscapeAnywhere)
{
    std::mt19937 random(1);
    for (const std::size_t size : {1U, 63U, 4'090U, 4'096U, 4'102U, 8'192U, 100'000U}) {
        for (int round = 0; round < 8; ++round) {
            std::string text(size, 'x');
            std::string written = text;
            const std::size_t place = round == 0 ? 0 : round == 1 ? size - 1 : random() % size;
            text[place] = '\n';
            written.replace(place, 1, round % 2 == 0 ? "\\n" : "\\u000a");
            const Parsed parsed(R"({"before": ")" + text.substr(place + 1) + R"(", ")" + written + R"(": ")" + written +
                                R"(", "after": "y"})");
            EXPECT_TRUE(parsed.Root().Member(text).Text() == text) << size << " " << place;
            EXPECT_EQ(parsed.Root().Member("before").Text().size(), size - place - 1);
            EXPECT_EQ(parsed.Root().Member("after").Text(), "y");
        }
    }
}

TEST(JsonTexts, OutliveTheTextThatWasGiven)
{
    std::string text = R"(["short", "a text that is longer than what a string keeps within itself"])";
    const Parsed parsed(text);
    text.assign(text.size(), '?');
    EXPECT_EQ(ToText(parsed.Root()), R"(["short","a text that is longer than what a string keeps within itself"])");
}

TEST(JsonNesting, IsThirtyTwoDeepAtMost)
{
    const auto arrays = [](std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    const auto objects = [](std::size_t depth) { return Repeat("{\"a\":", depth) + "1" + std::string(depth, '}'); };
    const auto both = [](std::size_t depth) { return Repeat("[{\"a\":", depth / 2) + "1" + Repeat("}]", depth / 2); };
    EXPECT_EQ(DefectOf(arrays(32)), "none");
    EXPECT_EQ(DefectOf(objects(32)), "none");
    EXPECT_EQ(DefectOf(both(32)), "none");
    EXPECT_EQ(DefectOf("[" + arrays(31) + "," + arrays(31) + "]"), "none");
    EXPECT_NE(DefectOf(arrays(33)), "none");
    EXPECT_NE(DefectOf(objects(33)), "none");
    EXPECT_NE(DefectOf(both(34)), "none");
    EXPECT_NE(DefectOf(arrays(1'000'000)), "none");
    EXPECT_NE(DefectOf(std::string(1'000'000, '[')), "none");

    const Parsed parsed(objects(32));
    JsonValue inner = parsed.Root();
    for (int level = 0; level < 32; ++level) {
        inner = inner.Member("a");
    }
    EXPECT_EQ(inner.Integer(), 1);
}

TEST(RepeatedJsonKeys, CountOnceAndTheLastOfThemCounts)
{
    const Parsed parsed(R"({"a": 1, "b": 2, "a": [3], "c": 4, "a": 5, "\u0062": 6})");
    const JsonValue root = parsed.Root();
    EXPECT_EQ(root.Size(), 3U);
    EXPECT_EQ(root.Member("a").Integer(), 5);
    EXPECT_EQ(root.Member("b").Integer(), 6);
    EXPECT_THAT(KeysOf(root), ElementsAre("c", "a", "b")); // where the last of each is
    EXPECT_EQ(ToText(root), R"({"c":4,"a":5,"b":6})");
    EXPECT_EQ(parsed.Repeated().Count, 3U);
    EXPECT_THAT(parsed.Repeated().Pointers, ElementsAre("/a", "/a", "/b"));
}

TEST(RepeatedJsonKeys, AreKnownByTheirPointers)
{
    const struct {
        const char* Text;
        std::vector<std::string> Pointers;
    } rows[] = {
        {"{}", {}},
        {R"({"a": {"a": 1}, "A": [{"a": 1}, {"a": 2}]})", {}},
        {R"({"": 1, "": 2})", {"/"}},
        {R"({"a/b~c": 1, "a/b~c": 2})", {"/a~1b~0c"}},
        {R"([0, {"x": [[], [{"k": 1, "k": 2}]]}])", {"/1/x/1/0/k"}},
        {R"({"a": {"k": 1, "k": 2}, "a": 3})", {"/a/k", "/a"}}, // the inner one is met first
        {R"({"caf\u00e9": 1, "café": 2})", {"/café"}},
    };
    for (const auto& row : rows) {
        const Parsed parsed(row.Text);
        EXPECT_EQ(parsed.Repeated().Pointers, row.Pointers) << row.Text;
        EXPECT_EQ(parsed.Repeated().Count, row.Pointers.size()) << row.Text;
    }
}

TEST(RepeatedJsonKeys, AreFoundInObjectsOfAnySize)
{
    for (std::size_t members = 2; members < 60; ++members) {
        std::string text = "{";
        for (std::size_t member = 0; member < members; ++member) {
            text += (member > 0 ? ", \"k" : "\"k") + std::to_string(member) + "\": " + std::to_string(member);
        }
        const std::size_t again = members / 3;
        text += ", \"k" + std::to_string(again) + "\": {\"x\": -1}}";
        const Parsed parsed(text);
        EXPECT_EQ(parsed.Root().Size(), members);
        EXPECT_EQ(KeysOf(parsed.Root()).size(), members);
        EXPECT_EQ(KeysOf(parsed.Root()).back(), "k" + std::to_string(again));
        EXPECT_EQ(parsed.Root().Member("k" + std::to_string(again)).Member("x").Integer(), -1);
        EXPECT_EQ(parsed.Repeated().Pointers, (std::vector<std::string>{"/k" + std::to_string(again)}));
    }
}

TEST(RepeatedJsonKeys, HaveAHundredPointersAtMost)
{
    for (const std::size_t times : {100U, 101U, 5'000U}) {
        const Parsed parsed("{" + Repeat("\"k\": 0, ", times) + "\"k\": 1}");
        EXPECT_EQ(parsed.Root().Size(), 1U);
        EXPECT_EQ(parsed.Root().Member("k").Integer(), 1);
        EXPECT_EQ(parsed.Repeated().Count, times);
        EXPECT_EQ(parsed.Repeated().Pointers.size(), 100U);
    }
}

TEST(RepeatedJsonKeys, HavePointersOfFourThousandBytesAtMost)
{
    const std::string within(2'000, 'w'); // with the slashes before it and the key: 4,096 bytes
    const auto pointer = [&](std::size_t size) {
        const std::string key(size, 'k');
        return Parsed("{\"" + within + "\": {\"" + key + "\": 1, \"" + key + "\": 2}}").Repeated().Pointers.at(0);
    };
    EXPECT_EQ(pointer(2'094).size(), 4'096U);
    EXPECT_EQ(pointer(2'095), "/" + within); // the object instead of its key
}

TEST(JsonDefects, SayWhatIsWrongAndWhere)
{
    const struct {
        std::string Text;
        const char* Defect;
    } rows[] = {
        {"", "the document is empty"},
        {" \t\r\n", "the document is empty"},
        {"nul", "incomplete JSON at 3"},
        {"[1, 2", "incomplete JSON at 5"},
        {R"({"a")", "incomplete JSON at 4"},
        {R"("a)", "incomplete JSON at 2"},
        {"{} x", "extra data at 3"},
        {"{} {}", "extra data at 3"},
        {"{}}", "extra data at 2"},
        {std::string("{}\0", 3), "extra data at 2"},
        {std::string("\0", 1), "syntax error at 0"},
        {"[1,]", "syntax error at 3"},
        {"{a: 1}", "syntax error at 1"},
        {"{'a': 1}", "syntax error at 1"},
        {"// no comment\n1", "syntax error at 0"},
        {"\xEF\xBB\xBF{}", "syntax error at 0"},
        {"+1", "syntax error at 0"},
        {"01", "extra data at 1"},
        {"NaN", "syntax error at 0"},
        {"\"a\nb\"", "syntax error at 2"},
        {"\"\xFF\"", "syntax error at 1"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(DefectOf(row.Text), row.Defect) << row.Text;
    }
    for (const char* text : {"\"\xC3\"",
                             "\"\xC0\x80\"",
                             "\"\xED\xA0\x80\"",
                             "\"\xF4\x90\x80\x80\"",
                             "\"\x80\"",
                             R"("\ud800")",
                             R"("\udc00\ud800")",
                             R"("\x41")",
                             R"("\u00g0")",
                             "[1 2]",
                             "{\"a\" 1}",
                             "{\"a\":}",
                             "{1: 2}",
                             "[,1]",
                             "1e",
                             "1.",
                             "-",
                             ".5",
                             "tru",
                             "TRUE",
                             "[}"}) {
        EXPECT_NE(DefectOf(text), "none") << text;
    }
}

TEST(JsonDefects, AreTextsOfMoreThan256MiB)
{
    std::string text(256U << 20U, ' ');
    text.front() = '5';
    EXPECT_EQ(DefectOf(text), "none");
    text.push_back(' ');
    EXPECT_EQ(DefectOf(std::move(text)), "the text is longer than 268435456 bytes");
}

TEST(JsonDefects, AreAllTextsThatAreCut)
{
    const std::string text = R"({"a": [1, -2.5e3, true, null, "x\ud83d\ude00y"], "b": {"c": "é", "c": {}}})";
    ASSERT_EQ(DefectOf(text), "none");
    for (std::size_t size = 1; size < text.size(); ++size) {
        EXPECT_NE(DefectOf(text.substr(0, size)), "none") << size;
    }
}

TEST(JsonText, IsCutBehindSoManyBytesButNotWithinACharacter)
{
    const struct {
        const char* Text;
        std::size_t MostBytes;
        const char* Written;
    } rows[] = {
        {R"({ "a" : [ 1 , 2.5 , true , null , "x" ] })", 1'000, R"({"a":[1,2.5E0,true,null,"x"]})"},
        {R"([1,2,3])", 7, "[1,2,3]"},
        {R"([1,2,3])", 6, "[1,2,3..."},
        {R"([1,2,3])", 0, "..."},
        {R"({"a":[[[1]]]})", 6, R"({"a":[...)"},
        {R"("aéz")", 2, "\"a..."},
        {R"("aéz")", 3, "\"a..."},
        {R"("aéz")", 4, "\"aé..."},
        {R"("\u0001\n\"\\\/")", 1'000, R"("\u0001\n\"\\/")"},
        {R"({"\"":1})", 1'000, R"({"\"":1})"},
        {"18446744073709551615", 1'000, "18446744073709551615"},
        {"-9223372036854775808", 1'000, "-9223372036854775808"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToText(Parsed(row.Text).Root(), row.MostBytes), row.Written) << row.Text;
    }
}

TEST(JsonText, OfANumberBeyondAllFractionsIsJson)
{
    EXPECT_EQ(DefectOf(ToText(Parsed("[1e400, -1e400]").Root())), "none");
}

/** Writes random JSON: with blanks, escapes, and numbers in odd spellings; keys repeat if that is wanted. */
class RandomText {
public:
    RandomText(unsigned seed, bool repeatsKeys) : m_Random(seed), m_RepeatsKeys(repeatsKeys) {}

    std::string Next(int depth = 6)
    {
        switch (Below(depth > 0 ? 10 : 6)) {
        case 0:
            return OneOf({"null", "true", "false"});
        case 1:
            return OneOf({"0", "-0", "5.0", "5e0", "-1.25E+2", "1e-7", "9007199254740992.0", "123456789.125"});
        case 2:
            return OneOf({"9223372036854775807", "9223372036854775808", "18446744073709551615", "18446744073709551616",
                          "-9223372036854775808", "1e300", "12345678901234567890123"});
        case 3:
            return std::to_string(static_cast<std::int64_t>(m_Random()) - static_cast<std::int64_t>(m_Random()));
        case 4:
        case 5:
            return Text();
        case 6:
        case 7:
            return Array(depth);
        default:
            return Object(depth);
        }
    }

private:
    std::size_t Below(std::size_t bound) { return m_Random() % bound; }

    std::string OneOf(const std::vector<std::string>& texts) { return texts[Below(texts.size())]; }

    std::string Blanks() { return OneOf({"", "", "", " ", "\n\t", "\r\n  "}); }

    std::string Text()
    {
        std::string text = "\"";
        for (std::size_t size = Below(8); size > 0; --size) {
            text += OneOf({"a",
                           "b",
                           "Z",
                           " ",
                           "/",
                           "\\/",
                           "\\n",
                           "\\\"",
                           "\\\\",
                           "\\u0000",
                           "\\u00e9",
                           "\\ud83d\\ude00",
                           "\xC3\xA9",
                           "\xE2\x82\xAC",
                           "\xF0\x9F\x98\x80",
                           "\x7F",
                           "{",
                           "]",
                           ",",
                           ":"});
        }
        return text + (Below(50) == 0 ? std::string(5'000, 'x') : "") + "\"";
    }

    std::string Array(int depth)
    {
        std::string text = "[" + Blanks();
        for (std::size_t size = Below(5); size > 0; --size) {
            text += Next(depth - 1) + Blanks() + (size > 1 ? "," : "") + Blanks();
        }
        return text + "]";
    }

    std::string Object(int depth)
    {
        std::string text = "{" + Blanks();
        const std::size_t members = Below(20) == 0 ? 40 : Below(6);
        for (std::size_t size = members; size > 0; --size) {
            const std::string own = "\"" + std::to_string(size) + Text().substr(1); // as no other member has it
            const std::string key = m_RepeatsKeys ? OneOf({"\"a\"", "\"\\u0061\"", "\"b\"", "\"\"", own}) : own;
            text += key + Blanks() + ":" + Blanks() + Next(members == 40 ? 0 : depth - 1) + Blanks() +
                    (size > 1 ? "," : "") + Blanks();
        }
        return text + "}";
    }

    std::mt19937 m_Random;
    bool m_RepeatsKeys;
};

/** Whether a value is the same in every way of asking, the order of members included. */
bool IsSame(const JsonValue& value, const json::value& other)
{
    if (const auto* array = other.if_array()) {
        bool same = value.IsArray() && value.Size() == array->size();
        std::size_t position = 0;
        for (const JsonMember& element : value) {
            same = same && element.Key.empty() && element.Value == value.Element(position) &&
                   IsSame(element.Value, (*array)[position]);
            ++position;
        }
        return same && position == array->size();
    }
    if (const auto* object = other.if_object()) {
        bool same = value.IsObject() && value.Size() == object->size();
        auto expected = object->begin();
        for (const JsonMember& member : value) {
            same = same && expected != object->end() && member.Key == std::string_view(expected->key()) &&
                   member.Value == value.Member(member.Key) && IsSame(member.Value, expected->value());
            ++expected;
        }
        return same && expected == object->end();
    }
    switch (other.kind()) {
    case json::kind::null:
        return value.IsNull();
    case json::kind::bool_:
        return value.Boolean() == other.get_bool();
    case json::kind::int64:
        return value.What() == Kind::Integer && value.Integer() == other.get_int64();
    case json::kind::uint64:
        return value.Unsigned() == other.get_uint64();
    case json::kind::double_:
        return value.Fraction() == other.get_double();
    default:
        return value.Text() == std::string_view(other.as_string());
    }
}

TEST(RandomJson, IsReadAsAnotherParserReadsIt)
{
    RandomText random(1, false);
    for (int round = 0; round < 3'000 && !HasFailure(); ++round) {
        const std::string text = random.Next();
        const Parsed parsed(text);
        const json::value other = json::parse(text);
        EXPECT_TRUE(IsSame(parsed.Root(), other)) << text;
        EXPECT_EQ(parsed.Repeated().Count, 0U) << text;
        EXPECT_TRUE(IsSame(Parsed(ToText(parsed.Root())).Root(), other)) << text;
    }
}

TEST(RandomJson, WithRepeatedKeysHasTheLastOfEach)
{
    RandomText random(2, true);
    std::size_t repeated = 0;
    for (int round = 0; round < 3'000 && !HasFailure(); ++round) {
        const std::string text = random.Next();
        const Parsed parsed(text);
        EXPECT_EQ(json::parse(ToText(parsed.Root())), json::parse(text)) << text;
        repeated += parsed.Repeated().Count;
    }
    EXPECT_GT(repeated, 1'000U);
}

TEST(RandomJson, WithAChangedByteIsJsonWhereAnotherParserReadsIt)
{
    RandomText texts(3, false);
    std::mt19937 random(3);
    std::size_t readable = 0;
    std::size_t unreadable = 0;
    for (int round = 0; round < 30'000 && !HasFailure(); ++round) {
        std::string text = texts.Next(3);
        constexpr std::string_view bytes = "\"\\{}[],:01-+.eE \n\x80\xC3\xFFut";
        text[random() % text.size()] =
            random() % 2 == 0 ? bytes[random() % bytes.size()] : static_cast<char>(random() % 256);
        boost::system::error_code error;
        const json::value other = json::parse(text, error);
        JsonDefect defect;
        const auto document = JsonDocument::Parse(text, defect);
        EXPECT_EQ(document != nullptr, !error) << text;
        if (document != nullptr && !error) {
            const bool repeats = document->Repeated().Count > 0; // then the order of members may differ
            EXPECT_TRUE(repeats || IsSame(document->Root(), other)) << text;
            EXPECT_EQ(DefectOf(ToText(document->Root())), "none") << text;
        }
        ++(document != nullptr ? readable : unreadable);
    }
    EXPECT_GT(readable, 1'000U);
    EXPECT_GT(unreadable, 1'000U);
}

} // namespace
