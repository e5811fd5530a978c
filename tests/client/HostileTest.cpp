#include "ClientTest.h"

#include "support/Growth.h"
#include "support/RegistryBuilder.h"

#include <zlib.h>

#include <ctime>
#include <functional>
#include <random>

// Documents that nobody should publish.

namespace {

using namespace ClientTest;
using RegistryTest::Growth;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;
using testing::ElementsAre;
using testing::IsEmpty;

/** Asks everything that can be asked of a registry and values, whatever they are. */
void AskEverything(const std::string& registry, const std::string& values = "{}")
{
    const RegistryDocument document = ReadRegistryDocument(registry);
    EXPECT_TRUE(document.Usable() || !document.Findings.empty());
    const auto model = Model::Read(document);
    Lines(model->Findings());
    std::size_t published = 0;
    std::size_t read = 0;
    for (const auto& [form, count] : model->Forms()) {
        EXPECT_EQ(count.Published, count.Read + count.LeftOut);
        published += count.Published;
        read += count.Read;
    }
    const JsonValue dependencies = document.Entries.Member("Dependencies");
    EXPECT_EQ(published, dependencies.IsArray() ? dependencies.Size() : 0U);
    EXPECT_EQ(read, model->Rules().size());

    const ValuesDocument reported = ReadValuesDocument(values);
    const SystemValues system(model, reported);
    Lines(system.Findings(reported));
    const Evaluation evaluation(system);
    for (std::size_t rule = 0; rule < model->Rules().size(); ++rule) {
        EXPECT_FALSE(ToText(model->Rules()[rule]).empty());
        EXPECT_EQ(Explain(system, rule).Is, evaluation.TruthOf(rule)) << ToText(model->Rules()[rule]);
    }
    std::vector<std::pair<std::size_t, Value>> changes;
    for (std::size_t attribute = 0; attribute < model->Attributes().size(); ++attribute) {
        ReasonFor(evaluation, system, attribute, Property::Hidden);
        ChoicesOf(evaluation, system, attribute);
        AttributeInForce(evaluation, system, attribute);
        changes.emplace_back(attribute, Value(std::string("y")));
    }
    EXPECT_FALSE(Change(system, changes).IsCut);
}

constexpr char wholeRegistry[] =
    R"({"Id": "R", "RegistryEntries": {"Menus": [{"MenuName": "M", "MenuPath": "./M", "Hidden": true}],
    "Attributes": [{"AttributeName": "A", "Type": "Enumeration", "ReadOnly": true, "CurrentValue": "x", "DefaultValue": "y",
        "DisplayOrder": 1, "Value": [{"ValueName": "x", "ValueDisplayName": "X"}, {"ValueName": "y", "ValueDisplayName": "Y"}]},
    {"AttributeName": "B", "Type": "Integer", "LowerBound": 0, "UpperBound": 300, "ScalarIncrement": 1},
    {"AttributeName": "C", "Type": "String", "MinLength": 0, "MaxLength": 5, "ValueExpression": "a*", "MenuPath": "./M"}],
    "Dependencies": [{"Type": "Map", "DependencyFor": "C", "Dependency": {"MapFrom": [
        {"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": "x", "MapTerms": "OR"},
        {"Subexpressions": [{"MapFromAttribute": "B", "MapFromProperty": "CurrentValue", "MapFromCondition": "GTR", "MapFromValue": 5},
                            {"MapFromAttribute": "C", "MapFromProperty": "Hidden", "MapFromCondition": "NEQ", "MapFromValue": true}]}],
        "MapToAttribute": "C", "MapToProperty": "Hidden", "MapToValue": true}},
    {"Dependency": {"MapFrom": [{"MapFromAttribute": "B", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": 7}],
        "MapToAttribute": "A", "MapToProperty": "Value", "MapToValue": ["y"]}},
    {"Dependency": {"MapFrom": [{"MapFromAttribute": "C", "MapFromProperty": "CurrentValue", "MapFromCondition": "NEQ", "MapFromValue": null}],
        "MapToAttribute": "M", "MapToProperty": "GrayOut", "MapToValue": true}}]}})";

constexpr char wholeValues[] = R"({"AttributeRegistry": "R", "Attributes": {"A": "x", "B": 7, "C": "aa"}})";

TEST(HostileDocuments, MayBeCutAtEveryByte)
{
    const std::string text = wholeRegistry;
    for (std::size_t length = 0; length < text.size(); ++length) {
        AskEverything(text.substr(0, length));
    }
    AskEverything(text, wholeValues);
}

/** Visits every value of a document, the document itself first. */
void ForEach(json::value& value, const std::function<void(json::value&)>& visit)
{
    visit(value);
    if (json::object* object = value.if_object()) {
        for (auto& member : *object) {
            ForEach(member.value(), visit);
        }
    } else if (json::array* list = value.if_array()) {
        for (json::value& element : *list) {
            ForEach(element, visit);
        }
    }
}

TEST(HostileDocuments, MayHaveAnyValueOfAnyOtherKind)
{
    const json::value kinds[] = {nullptr,
                                 true,
                                 5,
                                 -1.5,
                                 1e300,
                                 18446744073709551615U,
                                 "",
                                 "text",
                                 "A",
                                 json::array{},
                                 json::array{nullptr},
                                 json::object{},
                                 json::object{{"Attributes", 5}}};
    json::value document = json::parse(wholeRegistry);
    std::size_t values = 0;
    ForEach(document, [&values](json::value&) { ++values; });
    EXPECT_GT(values, 80U);
    for (std::size_t place = 0; place < values; ++place) {
        for (const json::value& kind : kinds) {
            json::value changed = json::parse(wholeRegistry);
            std::size_t position = 0;
            json::value* found = nullptr;
            ForEach(changed, [&](json::value& value) { found = position++ == place ? &value : found; });
            *found = kind;
            AskEverything(json::serialize(changed), wholeValues);
        }
    }
}

TEST(HostileDocuments, MayHaveValuesOfAnyKind)
{
    for (const char* value :
         {"null", "true", "5", "-1.5", "1e99", "\"\"", "\"(x\"", "[]", "{}", "\"C.CurrentValue\"", "\"A exist\""}) {
        for (const char* name : {"A", "B", "C", "a", ""}) {
            AskEverything(wholeRegistry, std::string("{\"Attributes\": {\"") + name + "\": " + value + "}}");
        }
    }
}

TEST(HostileDocuments, MayHaveBytesChanged)
{
    std::mt19937 random(1);
    constexpr std::string_view bytes = "\"\\{}[],:0123456789-+.eE aABCMxytrufalsn\x80\xC3";
    const auto mutate = [&](std::string text) {
        for (std::size_t changes = 1 + random() % 3; changes > 0; --changes) {
            const std::size_t place = random() % text.size();
            switch (random() % 4) {
            case 0:
                text[place] = static_cast<char>(random() % 256);
                break;
            case 1:
                text[place] = bytes[random() % bytes.size()];
                break;
            case 2:
                text.erase(place, 1 + random() % 8);
                break;
            default:
                text.insert(place, text.substr(random() % text.size(), random() % 40));
            }
            text += text.empty() ? "{" : "";
        }
        return text;
    };
    std::size_t readable = 0;
    for (int round = 0; round < 5'000 && !HasFailure(); ++round) {
        const std::string registry = mutate(wholeRegistry);
        const std::string values = mutate(wholeValues);
        SCOPED_TRACE(registry + "\n" + values);
        AskEverything(registry, values);
        readable += ReadRegistryDocument(registry).Usable() ? 1U : 0U;
    }
    EXPECT_GT(readable, 500U);
}

TEST(HostileDocuments, AreTheSameAfterBeingWrittenAgain)
{
    std::mt19937 random(2);
    for (int round = 0; round < 2'000 && !HasFailure(); ++round) {
        std::string text = wholeRegistry;
        text[random() % text.size()] = static_cast<char>(' ' + random() % 95);
        const RegistryDocument document = ReadRegistryDocument(text);
        if (document.Usable() && document.Json->Repeated().Count == 0) {
            const auto model = Model::Read(document);
            const auto again = Model::Read(ReadRegistryDocument(ToText(document.Json->Root())));
            EXPECT_EQ(RuleLines(*model), RuleLines(*again)) << text;
            EXPECT_EQ(Lines(model->Findings()), Lines(again->Findings())) << text;
        }
    }
}

TEST(HostileDocuments, MayHaveZeroBytesInTexts)
{
    const std::string name("A\0B", 3);
    RegistryBuilder registry;
    registry.Attribute(name, "String").Attribute("A", "String").Attribute(std::string("\0", 1), "String");
    registry.Rule(name, "Hidden", true, {Term{name, "EQU", json::string("\0x", 2)}});
    AskEverything(registry.Text());
    const auto model = ModelOf(registry.Json());
    EXPECT_EQ(model->Attributes().size(), 3U);
    EXPECT_EQ(model->Find(name), 0U);
    EXPECT_EQ(model->Find("A"), 1U);
    EXPECT_EQ(model->Rules().at(0).Target, 0U);
    EXPECT_THAT(model->Findings(), IsEmpty());
    const auto truthOf = [&](std::string value) {
        return Evaluation(SystemValues(model, ValuesFrom({{name, std::move(value)}}))).TruthOf(0);
    };
    EXPECT_EQ(truthOf(std::string("\0x", 2)), Truth::True);
    EXPECT_EQ(truthOf(std::string("\0", 1)), Truth::False);

    std::string raw = registry.Text(); // a zero byte itself is no JSON
    raw[raw.find("String")] = '\0';
    EXPECT_FALSE(ReadRegistryDocument(raw).Usable());
}

TEST(HostileDocuments, WithInvalidUtf8AreRefused)
{
    for (const char* bytes :
         {"\x80", "\xC0\xAF", "\xE0\x80\x80", "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "\xFF", "\xC3"}) {
        const std::string registry =
            std::string(R"({"RegistryEntries": {"Attributes": [{"AttributeName": ")") + bytes + R"("}]}})";
        const RegistryDocument document = ReadRegistryDocument(registry);
        EXPECT_FALSE(document.Usable());
        EXPECT_THAT(Lines(document.Findings), ElementsAre("error unreadable-document "));
        EXPECT_TRUE(ReadValuesDocument(std::string("{\"") + bytes + "\": 1}").Values.empty());
    }
}

TEST(HostileDocuments, MayHaveHugeNumbersAnywhere)
{
    for (const char* number :
         {"9223372036854775807", "9223372036854775808", "-9223372036854775808", "-9223372036854775809", "1e308",
          "-1e308", "1e400", "-1e400", "0.1e-400", "123456789012345678901234567890", "1.7976931348623159e308"}) {
        for (const char* key : {"LowerBound", "UpperBound", "ScalarIncrement", "MinLength", "MaxLength", "DisplayOrder",
                                "CurrentValue", "DefaultValue", "ReadOnly", "Value", "AttributeName", "Type"}) {
            const std::string registry = R"({"RegistryEntries": {"Attributes": [
                {"AttributeName": "B", "Type": "Integer", ")" +
                                         std::string(key) + "\": " + number + R"(},
                {"AttributeName": "A", "Type": "Integer"}], "Dependencies": [{"Dependency": {"MapFrom": [
                    {"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "LSS",
                     "MapFromValue": )" + number +
                                         R"(}],
                    "MapToAttribute": "A", "MapToProperty": "LowerBound", "MapToValue": )" +
                                         number + "}}]}}";
            EXPECT_TRUE(ReadRegistryDocument(registry).Usable()) << registry;
            AskEverything(registry, std::string(R"({"A": )") + number + "}");
        }
    }
}

TEST(HostileDocuments, ThatAreGzipBombsAreRefused)
{
    z_stream stream{};
    ASSERT_EQ(deflateInit2(&stream, 1, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::vector<Bytef> blanks(1U << 20U, ' ');
    std::vector<Bytef> out(4U << 20U);
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    for (int block = 0; block <= 256; ++block) { // one MiB too many
        stream.next_in = blanks.data();
        stream.avail_in = static_cast<uInt>(blanks.size());
        ASSERT_EQ(deflate(&stream, block == 256 ? Z_FINISH : Z_NO_FLUSH), block == 256 ? Z_STREAM_END : Z_OK);
    }
    const std::string bomb(out.begin(), out.begin() + static_cast<std::ptrdiff_t>(stream.total_out));
    deflateEnd(&stream);
    const RegistryDocument document = ReadRegistryDocument(bomb);
    ASSERT_EQ(document.Findings.size(), 1U);
    EXPECT_EQ(document.Findings[0].Found, "the decompressed text is longer than 268435456 bytes");
}

/** A rule for T.Hidden with so many terms "A EQU n", whose joiners alternate. */
std::string AlternatingRule(std::size_t terms, bool isOnEarlier)
{
    std::string text =
        R"({"Dependency": {"MapToAttribute": "T", "MapToProperty": "Hidden", "MapToValue": true, "MapFrom": [)";
    for (std::size_t term = 0; term < terms; ++term) {
        const bool isJoined = isOnEarlier ? term + 1 < terms : term > 0;
        text +=
            R"({"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": )" +
            std::to_string(term) + R"(, "MapTerms": ")" +
            (!isJoined       ? ""
             : term % 2 == 0 ? "AND"
                             : "OR") +
            "\"}";
        text += term + 1 < terms ? "," : "]}}";
    }
    return text;
}

/** A registry with an integer A, a text T, and these rules. */
std::string WithRules(const std::string& rules)
{
    return R"({"RegistryEntries": {"Attributes": [{"AttributeName": "A", "Type": "Integer"},
        {"AttributeName": "T", "Type": "String"}], "Dependencies": [)" +
           rules + "]}}";
}

TEST(HostileRules, OfAThousandTermsMayGroupAThousandDeep)
{
    for (const bool isOnEarlier : {false, true}) {
        const auto model = Model::Read(ReadRegistryDocument(WithRules(AlternatingRule(1'000, isOnEarlier))));
        EXPECT_THAT(model->Findings(), IsEmpty());
        const std::string text = ToText(model->Rules().at(0));
        EXPECT_EQ(std::count(text.begin(), text.end(), '('), 998);
        const auto truthOf = [&](std::int64_t value) {
            return Evaluation(SystemValues(model, ValuesFrom({{"A", value}}))).TruthOf(0);
        };
        // to the left: term 999 joins the rest by "or", term 998 the rest of that by "and"
        // to the right: term 0 joins the rest by "and"
        EXPECT_EQ(truthOf(999), isOnEarlier ? Truth::False : Truth::True);
        EXPECT_EQ(truthOf(998), Truth::False);
        EXPECT_EQ(truthOf(5'000), Truth::False);
        EXPECT_EQ(Evaluation(SystemValues(model)).TruthOf(0), Truth::Unknown);
    }
}

TEST(HostileRules, OfMoreThanAThousandTermsAreUnknown)
{
    const auto model = Model::Read(ReadRegistryDocument(WithRules(AlternatingRule(1'001, false))));
    EXPECT_THAT(Lines(model->Findings()), ElementsAre("error no-form /RegistryEntries/Dependencies/0"));
    EXPECT_EQ(model->Forms().at(RuleForm::None).Read, 1U);
    EXPECT_EQ(Evaluation(SystemValues(model, ValuesFrom({{"A", std::int64_t{1}}}))).TruthOf(0), Truth::Unknown);
}

TEST(HostileRules, NestAsDeepAsTheDocumentMay)
{
    const auto nested = [](std::size_t depth) {
        std::string text =
            R"({"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": 1})";
        for (std::size_t level = 0; level < depth; ++level) {
            text = R"({"MapTerms": "NOT", "Subexpressions": [)" + text + "]}";
        }
        return WithRules(
            R"({"Dependency": {"MapToAttribute": "T", "MapToProperty": "Hidden", "MapToValue": true, "MapFrom": [)" +
            text + "]}}");
    };
    for (std::size_t depth = 0; depth <= 12; ++depth) { // 7 objects and arrays lie around, and 2 are a level
        const auto model = Model::Read(ReadRegistryDocument(nested(depth)));
        EXPECT_THAT(model->Findings(), IsEmpty()) << depth;
        EXPECT_EQ(Evaluation(SystemValues(model, ValuesFrom({{"A", std::int64_t{1}}}))).TruthOf(0),
                  depth % 2 == 0 ? Truth::True : Truth::False)
            << depth;
    }
    EXPECT_FALSE(ReadRegistryDocument(nested(13)).Usable());
}

TEST(HostileRules, MayHaveLongListsOfJoiners)
{
    std::string joiners = "AND";
    for (int count = 0; count < 100'000; ++count) {
        joiners += ",AND";
    }
    RegistryBuilder registry;
    registry.Attribute("A", "String");
    registry.Rule("A", "Hidden", true, {Term{"A", "EQU", "x"}, Term{"A", "EQU", "y", joiners}});
    EXPECT_THAT(Lines(ModelOf(registry.Json())->Findings()),
                ElementsAre("error no-form /RegistryEntries/Dependencies/0"));
}

TEST(HostileRules, OnMenusDecideAMillionSettingsAtMost)
{
    RegistryBuilder registry;
    for (int attribute = 0; attribute < 1'000; ++attribute) {
        registry.Attribute("A" + std::to_string(attribute), "String", {{"MenuPath", "./M"}});
    }
    registry.Attribute("B", "String", {{"MenuPath", "./N"}});
    for (int rule = 0; rule < 1'000; ++rule) {
        registry.Rule("M", "Hidden", true, {Term{"A0", "EQU", "x"}});
    }
    const auto modelOf = [&registry] {
        json::value document = registry.Json();
        document.at("RegistryEntries").as_object()["Menus"] =
            json::parse(R"([{"MenuName": "M", "MenuPath": "./M"}, {"MenuName": "N", "MenuPath": "./N"}])");
        return ModelOf(document);
    };
    EXPECT_THAT(modelOf()->Findings(), IsEmpty());
    registry.Rule("N", "Hidden", true, {Term{"A0", "EQU", "x"}});
    registry.Rule("B", "Hidden", true, {Term{"A0", "EQU", "x"}}); // whose target is no menu
    const auto model = modelOf();
    ASSERT_THAT(Lines(model->Findings()), ElementsAre("error too-large /RegistryEntries/Dependencies/1000"));
    EXPECT_EQ(model->Findings()[0].Rule, 1'000U);
    EXPECT_EQ(model->RulesFor(999, Property::Hidden).size(), 1'000U);
    EXPECT_THAT(Listed(model->RulesFor(1'000, Property::Hidden)), ElementsAre(1'001));
}

/** A task that reads a registry and evaluates it, of which the text has been parsed already. */
std::function<void()> ReadingOf(const std::string& registry)
{
    auto document = std::make_shared<RegistryDocument>(ReadRegistryDocument(registry));
    EXPECT_TRUE(document->Usable());
    return [document] {
        const auto model = Model::Read(*document);
        const Evaluation evaluation{SystemValues(model)};
        EXPECT_EQ(evaluation.Of().Rules().size(), model->Rules().size());
    };
}

/** A registry of texts with these names, and for each a rule that reads it. */
std::string WithNames(std::size_t count, const std::function<std::string(std::size_t number)>& name)
{
    std::string attributes;
    std::string rules;
    for (std::size_t number = 0; number < count; ++number) {
        const std::string comma = number > 0 ? "," : "";
        attributes += comma + R"({"AttributeName": ")" + name(number) + R"(", "Type": "String"})";
        rules += comma + R"({"Dependency": {"MapFrom": [{"MapFromAttribute": ")" + name(number) +
                 R"(", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": "x"}],
                 "MapToAttribute": ")" +
                 name(count - 1 - number) + R"(", "MapToProperty": "Hidden", "MapToValue": true}})";
    }
    return R"({"RegistryEntries": {"Attributes": [)" + attributes + R"(], "Dependencies": [)" + rules + "]}}";
}

/** Names that are all the same but for the case of letters. */
std::string NameInCases(std::size_t number)
{
    std::string name(20, 'a');
    for (std::size_t place = 0; place < name.size(); ++place) {
        name[place] = (number >> place & 1U) != 0 ? 'A' : 'a';
    }
    return name;
}

/** Names that differ at the end alone. */
std::string NameWithPrefix(std::size_t number)
{
    const std::string digits = std::to_string(number);
    return std::string(300 - digits.size(), 'p') + digits;
}

TEST(HostileNames, OfAHundredThousandAttributesMayDifferInCaseAlone)
{
    const auto model = Model::Read(ReadRegistryDocument(WithNames(100'000, NameInCases)));
    ASSERT_EQ(model->Attributes().size(), 1U);
    EXPECT_EQ(model->Attributes()[0].Name, std::string(20, 'a'));
    EXPECT_EQ(model->Find(std::string(20, 'A')), 0U);
    EXPECT_EQ(model->RulesReading(0).size(), 100'000U);
    EXPECT_EQ(model->RulesFor(0, Property::Hidden).size(), 100'000U);
}

TEST(HostileNames, OfAHundredThousandAttributesMayShareALongPrefix)
{
    const auto model = Model::Read(ReadRegistryDocument(WithNames(100'000, NameWithPrefix)));
    ASSERT_EQ(model->Attributes().size(), 100'000U);
    EXPECT_THAT(model->Findings(), IsEmpty());
    EXPECT_EQ(model->Find(NameWithPrefix(77'777)), 77'777U);
    EXPECT_THAT(Listed(model->RulesReading(5)), ElementsAre(5));
    EXPECT_THAT(Listed(model->RulesFor(5, Property::Hidden)), ElementsAre(99'994));
}

TEST(HostileNames, TakeTimeInProportion)
{
    EXPECT_LT(Growth([](std::size_t size) { return ReadingOf(WithNames(size, NameInCases)); }, 10'000), 3.0);
    EXPECT_LT(Growth([](std::size_t size) { return ReadingOf(WithNames(size, NameWithPrefix)); }, 10'000), 3.0);
    const auto withUnknownSources = [](std::size_t size) {
        std::string rules;
        for (std::size_t number = 0; number < size; ++number) {
            rules += std::string(number > 0 ? "," : "") + R"({"Dependency": {"MapFrom": [{"MapFromAttribute": ")" +
                     NameWithPrefix(number) + R"(", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU",
                     "MapFromValue": 1}], "MapToAttribute": "T", "MapToProperty": "Hidden", "MapToValue": true}})";
        }
        return ReadingOf(WithRules(rules));
    };
    EXPECT_LT(Growth(withUnknownSources, 10'000), 3.0);
}

TEST(HostileNames, MayBeEndingsOfEachOther)
{
    RegistryBuilder registry;
    for (std::size_t length = 1; length <= 1'000; ++length) {
        const std::string name(length, 'a');
        registry.Attribute(name, "String");
        registry.Rule(name, "Hidden", true, {Term{name, "EQU", json::string(name + ".CurrentValue")}});
    }
    const auto model = ModelOf(registry.Json());
    EXPECT_THAT(model->Findings(), IsEmpty());
    EXPECT_THAT(Listed(model->RulesReading(7)), ElementsAre(7));
}

TEST(HostileNames, AreNotInEachFindingWhereTheyAreLong)
{
    const std::string name(100'000, 'a');
    const std::string unnamed = R"({"RegistryEntries": {"Attributes": [{}, {}]}})";
    const std::string key(4'091, 'a');
    const auto wrapped = Model::Read(ReadRegistryDocument(R"({"a/b": {")" + key + "\": " + unnamed + "}}"));
    ASSERT_EQ(wrapped->Findings().size(), 2U);
    EXPECT_EQ(wrapped->Findings()[0].Pointer, "/a~1b");

    RegistryBuilder registry;
    registry.Attribute(name, "Enumeration", {{"Value", {1, 2}}});
    const auto model = ModelOf(registry.Json());
    ASSERT_FALSE(model->Findings().empty());
    for (const Finding& finding : model->Findings()) {
        EXPECT_EQ(finding.Attribute, "");
        EXPECT_LT(finding.Pointer.size() + finding.Found.size(), 5'000U);
    }
}

/** A registry whose "Attributes" and "Dependencies" have an element so many times. */
std::string WithElements(const std::string& element, std::size_t times)
{
    std::string list;
    for (std::size_t number = 0; number < times; ++number) {
        list += (number > 0 ? "," : "") + element;
    }
    return R"({"RegistryEntries": {"Attributes": [)" + list + R"(], "Dependencies": [)" + list + "]}}";
}

TEST(HostileElements, AreReportedAThousandOneByOne)
{
    const auto exact = Model::Read(ReadRegistryDocument(WithElements("{}", 1'000)));
    EXPECT_EQ(exact->Findings().size(), 2'001U); // a rule has two: it has no target, and no terms
    const auto model = Model::Read(ReadRegistryDocument(WithElements("{}", 100'000)));
    const std::vector<Finding>& findings = model->Findings();
    ASSERT_EQ(findings.size(), 2'002U);
    EXPECT_EQ(findings[999].Pointer, "/RegistryEntries/Attributes/999");
    EXPECT_FALSE(findings[999].CountsOthers);
    const auto check = [](const Finding& counting, FindingKind kind, std::size_t count) {
        EXPECT_EQ(counting.Level, Severity::Error);
        EXPECT_EQ(counting.Kind, kind);
        EXPECT_EQ(counting.Found, std::to_string(count) + " more of this kind");
        EXPECT_EQ(counting.Count, count);
        EXPECT_TRUE(counting.CountsOthers);
        EXPECT_EQ(counting.Pointer + counting.Attribute, "");
        EXPECT_EQ(counting.Rule, std::nullopt);
    };
    check(findings[1'000], FindingKind::UnnamedAttribute, 99'000);
    check(findings[2'001], FindingKind::UnusableRule, 199'000);
}

TEST(HostileElements, OfOneKindAreCountedBySeverity)
{
    std::string flags; // 1,500 that are left out, as many that are repaired
    for (int number = 0; number < 1'500; ++number) {
        const std::string name = std::to_string(number);
        flags += (number > 0 ? "," : "") + (R"({"Type": "String", "AttributeName": "A)" + name) +
                 R"(", "ReadOnly": "yes", "Hidden": "true"})";
    }
    const auto model = Model::Read(ReadRegistryDocument(R"({"RegistryEntries": {"Attributes": [)" + flags + "]}}"));
    std::map<Severity, std::size_t> listed, unlisted;
    for (const Finding& finding : model->Findings()) {
        EXPECT_EQ(finding.Kind, FindingKind::WrongKind);
        ++listed[finding.Level];
        unlisted[finding.Level] += finding.CountsOthers ? finding.Count : 0;
    }
    EXPECT_THAT(listed, ElementsAre(std::pair(Severity::Note, 1'001U), std::pair(Severity::Warning, 1'001U)));
    EXPECT_THAT(unlisted, ElementsAre(std::pair(Severity::Note, 500U), std::pair(Severity::Warning, 500U)));
}

TEST(HostileElements, ThatAreLeftOutTakeNoRoom)
{
    for (const char* element : {"0", "{}", "null"}) {
        const auto model = Model::Read(ReadRegistryDocument(WithElements(element, 100'000)));
        EXPECT_EQ(model->Attributes().capacity(), 0U) << element;
        EXPECT_EQ(model->Rules().capacity(), 0U) << element;
        std::size_t bytes = 0;
        for (const Finding& finding : model->Findings()) {
            bytes += sizeof(finding) + finding.Pointer.capacity() + finding.Found.capacity();
        }
        EXPECT_LT(bytes, 2U << 20U) << element;
    }
}

TEST(HostileNames, AreNotHeldByShortPointers)
{
    const std::string name(1'000'000, 'a');
    const ValuesDocument values = ReadValuesDocument("{\"" + name + "\": []}");
    ASSERT_EQ(values.Findings.size(), 1U);
    EXPECT_EQ(values.Findings[0].Pointer, "");
    EXPECT_LT(values.Findings[0].Pointer.capacity(), 5'000U);
}

TEST(HostileChoices, AreFoundOnceAmongManyMembers)
{
    const auto reading = [](std::size_t members) {
        std::string attribute = R"({"AttributeName": "A", "Type": "Enumeration")";
        std::string choices;
        for (std::size_t member = 0; member < members; ++member) {
            attribute += ", \"x" + std::to_string(member) + "\": 0";
            choices += member == 0 ? "1" : ",1";
        }
        return ReadingOf(R"({"RegistryEntries": {"Attributes": [)" + attribute + ", \"Values\": [" + choices + "]}]}}");
    };
    EXPECT_LT(Growth(reading, 1'000), 3.0);
}

TEST(HostileRules, AreExplainedInTimeInProportion)
{
    const auto explaining = [](std::size_t count) {
        RegistryBuilder registry;
        for (std::size_t number = 0; number < count; ++number) {
            const std::string name = "S" + std::to_string(number);
            registry.Attribute(name, "Integer", {{"CurrentValue", 1}});
            registry.Rule(name, "Hidden", true, {Term{name, "EQU", 1}});
        }
        return std::function<void()>([system = SystemValues(ModelOf(registry.Json())), count] {
            for (std::size_t rule = 0; rule < count; ++rule) {
                EXPECT_EQ(Explain(system, rule).Is, Truth::True);
            }
        });
    };
    EXPECT_LT(Growth(explaining, 2'000), 3.0);
}

TEST(HostileValues, AreCutInExplanations)
{
    RegistryBuilder registry;
    registry.Attribute("S", "String", {{"CurrentValue", json::string(std::string(100'000, 'x'))}});
    registry.Rule("S", "Hidden", true, {Term{"S", "EQU", "y"}});
    const Explanation explanation = Explain(SystemValues(ModelOf(registry.Json())), 0);
    EXPECT_EQ(explanation.Is, Truth::False);
    EXPECT_LT(ToText(explanation.Current).size(), 1'000U);
}

/** An enumeration with so many choices, and rules of 1,000 terms that compare with each of them. */
std::string WithChoices(std::size_t count)
{
    std::string choices;
    std::string rules;
    for (std::size_t number = 0; number < count; ++number) {
        const std::string text = std::to_string(number);
        choices += std::string(number > 0 ? "," : "") + R"({"ValueName": "name)" + text +
                   R"(", "ValueDisplayName": "display)" + text + "\"}";
        const bool isFirst = number % 1'000 == 0;
        rules +=
            isFirst
                ? std::string(number > 0 ? "]}}," : "") +
                      R"({"Dependency": {"MapToAttribute": "T", "MapToProperty": "Hidden", "MapToValue": true, "MapFrom": [)"
                : ",";
        rules +=
            R"({"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": ")" +
            std::string(number % 2 == 0 ? "name" : "display") + text + R"(", "MapTerms": ")" + (isFirst ? "" : "OR") +
            "\"}";
    }
    return R"({"RegistryEntries": {"Attributes": [{"AttributeName": "T", "Type": "String"},
        {"AttributeName": "A", "Type": "Enumeration", "CurrentValue": "name0", "Value": [)" +
           choices + R"(]}], "Dependencies": [)" + rules + "]}}]}}";
}

TEST(HostileChoices, OfAHundredThousandMayAllBeComparedWith)
{
    const auto model = Model::Read(ReadRegistryDocument(WithChoices(100'000)));
    EXPECT_THAT(model->Findings(), IsEmpty());
    ASSERT_EQ(model->Rules().size(), 100U);
    const Evaluation evaluation{SystemValues(model, ValuesFrom({{"A", std::string("name77777")}}))};
    for (std::size_t rule = 0; rule < 100; ++rule) {
        EXPECT_EQ(evaluation.TruthOf(rule), rule == 77 ? Truth::True : Truth::False) << rule;
    }
}

TEST(HostileChoices, TakeTimeInProportion)
{
    EXPECT_LT(Growth([](std::size_t size) { return ReadingOf(WithChoices(size)); }, 10'000), 3.0);
}

TEST(HostileRules, TakeTimeInProportion)
{
    for (const bool isOnEarlier : {false, true}) {
        const auto reading = [&](std::size_t rules) {
            std::string text = AlternatingRule(1'000, isOnEarlier);
            for (std::size_t rule = 1; rule < rules; ++rule) {
                text += "," + AlternatingRule(1'000, isOnEarlier);
            }
            return ReadingOf(WithRules(text));
        };
        EXPECT_LT(Growth(reading, 10), 3.0);
    }
}

/** So many attributes in one menu, so many menus with that path, and so many rules on menus of its name. */
std::string WithMenus(std::size_t attributes, std::size_t menus, std::size_t rules)
{
    json::array attributeList, menuList, ruleList;
    for (std::size_t attribute = 0; attribute < attributes; ++attribute) {
        attributeList.push_back(
            {{"AttributeName", "A" + std::to_string(attribute)}, {"Type", "String"}, {"MenuPath", "./M"}});
    }
    for (std::size_t menu = 0; menu < menus; ++menu) {
        menuList.push_back({{"MenuName", "M"}, {"MenuPath", "./M"}});
    }
    for (std::size_t rule = 0; rule < rules; ++rule) {
        const json::object term{{"MapFromAttribute", "A0"},
                                {"MapFromProperty", "CurrentValue"},
                                {"MapFromCondition", "EQU"},
                                {"MapFromValue", "x"}};
        ruleList.push_back(json::object{{"Dependency",
                                         {{"MapFrom", json::array{term}},
                                          {"MapToAttribute", "M"},
                                          {"MapToProperty", "Hidden"},
                                          {"MapToValue", true}}}});
    }
    return json::serialize(json::object{
        {"RegistryEntries", {{"Attributes", attributeList}, {"Menus", menuList}, {"Dependencies", ruleList}}}});
}

TEST(HostileMenus, TakeTimeInProportionToAttributesAndRules)
{
    // of each size the pairs of a rule and a setting are more than are kept
    EXPECT_LT(Growth([](std::size_t size) { return ReadingOf(WithMenus(size, 1, size)); }, 4'000), 3.0);
}

TEST(HostileMenus, TakeTimeInProportionToAttributesAndMenusOfOnePath)
{
    EXPECT_LT(Growth([](std::size_t size) { return ReadingOf(WithMenus(size, size, 0)); }, 2'000), 3.0);
}

TEST(HostileMenus, TakeTimeInProportionToRulesAndMenusOfOneName)
{
    EXPECT_LT(Growth([](std::size_t size) { return ReadingOf(WithMenus(1, size, size)); }, 2'000), 3.0);
}

/** Of how many settings it is certain that they are not hidden, and of how many it is unknown. */
std::pair<std::size_t, std::size_t> CertainAndUnknown(const std::string& registry)
{
    const auto model = Model::Read(ReadRegistryDocument(registry));
    const SystemValues system(model, ValuesFrom({{"A0", std::string("y")}}));
    const Evaluation evaluation(system);
    std::pair<std::size_t, std::size_t> counts;
    for (std::size_t attribute = 0; attribute < model->Attributes().size(); ++attribute) {
        const Verdict verdict = evaluation.VerdictOn(attribute, Property::Hidden);
        EXPECT_FALSE(verdict.Value || verdict.Marked);
        EXPECT_EQ(verdict.Certain, model->IsComplete(attribute, Property::Hidden));
        EXPECT_TRUE(evaluation.VerdictOn(attribute, Property::ReadOnly).Certain);
        EXPECT_EQ(ReasonFor(evaluation, system, attribute, Property::Hidden),
                  verdict.Certain ? ""
                                  : "unknown whether hidden: its menus have more rules and flags than can be kept; "
                                    "the controller's own flag says no");
        ++(verdict.Certain ? counts.first : counts.second);
    }
    const auto tooLarge = std::count_if(model->Findings().begin(), model->Findings().end(),
                                        [](const Finding& finding) { return finding.Kind == FindingKind::TooLarge; });
    EXPECT_TRUE(tooLarge > 0 || counts.second == 0);
    return counts;
}

TEST(HostileMenus, ThatAreBeyondTheLimitLeaveDoubt)
{
    using Counts = std::pair<std::size_t, std::size_t>;
    // settings in menus: a million are kept
    EXPECT_EQ(CertainAndUnknown(WithMenus(1'000, 1'000, 1)), Counts(1'000, 0));
    EXPECT_EQ(CertainAndUnknown(WithMenus(1'005, 1'000, 1)), Counts(1'000, 5));
    EXPECT_EQ(CertainAndUnknown(WithMenus(1'005, 1'000, 0)), Counts(1'005, 0)); // they would decide nothing
    // settings that rules on menus decide
    EXPECT_EQ(CertainAndUnknown(WithMenus(1'000, 1, 1'000)), Counts(1'000, 0));
    EXPECT_EQ(CertainAndUnknown(WithMenus(1'000, 1, 1'001)), Counts(0, 1'000));
    // menus as targets of rules
    EXPECT_EQ(CertainAndUnknown(WithMenus(1, 1'000, 1'000)), Counts(1, 0));
    EXPECT_EQ(CertainAndUnknown(WithMenus(1, 1'000, 1'001)), Counts(0, 1));
}

/** A thousand settings in a menu, and so many rules of 100 terms on it. */
json::value WithLargeRules(std::size_t rules)
{
    json::value registry = json::parse(WithMenus(1'000, 1, rules));
    for (json::value& rule : registry.at("RegistryEntries").as_object()["Dependencies"].as_array()) {
        json::array& terms = rule.as_object()["Dependency"].as_object()["MapFrom"].as_array();
        json::object term = terms[0].as_object();
        term["MapTerms"] = "OR";
        terms.insert(terms.begin(), 99, term);
    }
    return registry;
}

TEST(HostileMenus, WithLargeRulesForManySettingsLeaveDoubt)
{
    using Counts = std::pair<std::size_t, std::size_t>;
    // 101 parts of a condition and a flag for each of 1,000 settings: 39 rules are below four million
    EXPECT_EQ(CertainAndUnknown(json::serialize(WithLargeRules(39))), Counts(1'000, 0));
    EXPECT_EQ(CertainAndUnknown(json::serialize(WithLargeRules(40))), Counts(0, 1'000));

    json::value texts = json::parse(WithMenus(1'000, 1, 1));
    json::object& dependency =
        texts.at("RegistryEntries").at("Dependencies").as_array()[0].at("Dependency").as_object();
    dependency["MapToProperty"] = "HelpText";
    dependency["MapToValue"] = std::string(60'000, 'x'); // of which 16 bytes count as one part
    EXPECT_TRUE(ModelOf(texts)->IsComplete(0, Property::HelpText));
    dependency["MapToValue"] = std::string(64'000, 'x');
    EXPECT_FALSE(ModelOf(texts)->IsComplete(0, Property::HelpText));
}

/** A registry whose first rule, on the menu of all settings, is too large for them; with A1 as given, and more rules.
 */
json::value WithRuleTooLarge(const char* property, json::value outcome, const json::object& members,
                             const std::vector<json::value>& rules)
{
    json::value registry = json::parse(WithMenus(5'000, 1, 1));
    json::object& entries = registry.at("RegistryEntries").as_object();
    json::object& dependency = entries["Dependencies"].as_array()[0].at("Dependency").as_object();
    json::object term = dependency["MapFrom"].as_array()[0].as_object();
    term["MapTerms"] = "OR";
    json::array& terms = dependency["MapFrom"].as_array();
    terms.insert(terms.begin(), 899, term); // with 901 parts, 4,505,000 for 5,000 settings
    dependency["MapToProperty"] = property;
    dependency["MapToValue"] = std::move(outcome);
    for (const auto& [key, value] : members) {
        entries["Attributes"].as_array()[1].as_object()[key] = value;
    }
    for (const json::value& rule : rules) {
        entries["Dependencies"].as_array().push_back(rule);
    }
    return registry;
}

json::value RuleOn(const char* target, const char* property, json::value outcome, const char* source,
                   const char* sourceProperty, const char* condition, json::value operand)
{
    const json::object term{{"MapFromAttribute", source},
                            {"MapFromProperty", sourceProperty},
                            {"MapFromCondition", condition},
                            {"MapFromValue", std::move(operand)}};
    return json::object{{"Dependency",
                         {{"MapFrom", json::array{term}},
                          {"MapToAttribute", target},
                          {"MapToProperty", property},
                          {"MapToValue", std::move(outcome)}}}};
}

TEST(HostileMenus, ThatAreBeyondTheLimitContradictNothing)
{
    const json::object number{{"Type", "Integer"}, {"LowerBound", 0}, {"UpperBound", 100}};
    json::object withDefault = number;
    withDefault["DefaultValue"] = 150;
    const struct {
        const char* property; ///< that the rule which is left out decides
        const char* other;    ///< that it decides instead, so that there is the finding
        json::value outcome;
        json::object members;
        std::vector<json::value> rules;
        const char* finding;
    } rows[] = {
        {"UpperBound",
         "MaxLength",
         200,
         number,
         {RuleOn("A2", "HelpText", "x", "A1", "CurrentValue", "GTR", 150)},
         "never-holds"},
        {"UpperBound", "MaxLength", 200, withDefault, {}, "default-out-of-bounds"},
        {"Immutable", "Hidden", false, {{"Immutable", true}}, {}, "never-changeable"},
        {"ReadOnly",
         "Hidden",
         false,
         {},
         {RuleOn("A1", "ReadOnly", true, "A2", "CurrentValue", "EQU", "x"),
          RuleOn("A1", "ReadOnly", true, "A2", "CurrentValue", "NEQ", "x")},
         "never-changeable"},
    };
    for (const auto& row : rows) {
        const auto has = [&](const char* property) {
            const std::vector<Finding> findings =
                LintRegistry(*ModelOf(WithRuleTooLarge(property, row.outcome, row.members, row.rules)));
            return std::any_of(findings.begin(), findings.end(), [&](const Finding& finding) {
                return Word(finding.Kind) == row.finding && finding.Attribute != "A0";
            });
        };
        EXPECT_FALSE(has(row.property)) << row.property << " " << row.finding;
        EXPECT_TRUE(has(row.other)) << row.property << " " << row.finding;
    }
}

TEST(HostileMenus, ThatAreBeyondTheLimitMakeFlagsThatNoFormulaAsksFor)
{
    json::value registry =
        WithRuleTooLarge("ReadOnly", false, {}, {RuleOn("T", "Hidden", true, "A1", "ReadOnly", "EQU", false)});
    registry.at("RegistryEntries").at("Attributes").as_array().push_back({{"AttributeName", "T"}, {"Type", "String"}});
    const Adaptation adapted = AdaptRegistry(registry);
    EXPECT_EQ(AdaptedAttribute(adapted, 1).at("ReadOnly").as_bool(), true); // which it is not as published
    EXPECT_TRUE(StatusOfAll(adapted).at("T").Hidden.Value);
}

TEST(HostileMenus, AreNotTheTargetsOfUnknownNames)
{
    json::value registry = json::parse(WithMenus(1, 1'000, 1'001)); // more menus as targets than are kept
    registry.at("RegistryEntries")
        .at("Dependencies")
        .as_array()
        .push_back(RuleOn("Gone", "Hidden", true, "A0", "CurrentValue", "EQU", "x"));
    const auto model = ModelOf(registry);
    EXPECT_EQ(model->Findings().back().Kind, FindingKind::UnknownTarget);
}

TEST(HostileMenus, WithLongOperandsForManySettingsLeaveDoubt)
{
    json::value registry = json::parse(WithMenus(1'000, 1, 1));
    json::object& term = registry.at("RegistryEntries")
                             .at("Dependencies")
                             .as_array()[0]
                             .at("Dependency")
                             .at("MapFrom")
                             .as_array()[0]
                             .as_object();
    term["MapFromValue"] = std::string(60'000, 'x'); // of which 16 bytes count as one part
    EXPECT_TRUE(ModelOf(registry)->IsComplete(0, Property::Hidden));
    term["MapFromValue"] = std::string(64'000, 'x');
    EXPECT_FALSE(ModelOf(registry)->IsComplete(0, Property::Hidden));
}

TEST(HostileMenus, AsTargetsWithRoomAreKeptBehindThoseWithout)
{
    json::value registry = json::parse(WithMenus(1, 1'000, 1'001));
    registry.at("RegistryEntries").at("Menus").as_array().push_back({{"MenuName", "N"}, {"MenuPath", "./N"}});
    registry.at("RegistryEntries")
        .at("Dependencies")
        .as_array()
        .erase(registry.at("RegistryEntries").at("Dependencies").as_array().begin()); // a thousand menus: all that
                                                                                      // there is room for
    registry.at("RegistryEntries").at("Dependencies").as_array()[0].at("Dependency").as_object()["MapToAttribute"] =
        "N";
    registry.at("RegistryEntries")
        .at("Dependencies")
        .as_array()
        .push_back(RuleOn("M", "Hidden", true, "A0", "CurrentValue", "EQU", "x")); // 1,000 * 1,000 and one are too many
    registry.at("RegistryEntries")
        .at("Dependencies")
        .as_array()
        .push_back(RuleOn("N", "Hidden", true, "A0", "CurrentValue", "EQU", "x"));
    EXPECT_EQ(ModelOf(registry)->Rules().back().TargetName, "N");
}

TEST(HostileMenus, HaveThePatternsOfTheirRulesReportedOnce)
{
    json::value registry = json::parse(WithMenus(1'000, 1, 1));
    json::object& dependency =
        registry.at("RegistryEntries").at("Dependencies").as_array()[0].at("Dependency").as_object();
    dependency["MapToProperty"] = "ValueExpression";
    dependency["MapToValue"] = "[";
    const std::vector<Finding> findings = LintRegistry(*ModelOf(registry));
    EXPECT_THAT(Lines(findings), ElementsAre("warning unusable-pattern /RegistryEntries/Dependencies/0"));
    EXPECT_EQ(findings.at(0).Attribute, "");
    EXPECT_EQ(findings.at(0).Rule, 0U);
}

TEST(HostileMenus, ThatAreBeyondTheLimitMakeATrueRuleUncertain)
{
    json::value registry = json::parse(WithMenus(1'000, 1, 1'001));
    json::object& rule = registry.at("RegistryEntries").as_object()["Dependencies"].as_array()[1'000].as_object();
    rule["Dependency"].as_object()["MapToProperty"] = "ReadOnly"; // no rule is left out for the others, which are 1,000
    json::object limit = rule;
    for (const char* property : {"Value", "GrayOut"}) {
        limit["Dependency"].as_object()["MapToProperty"] = property;
        registry.at("RegistryEntries").as_object()["Dependencies"].as_array().push_back(limit);
    }
    limit["Dependency"].as_object()["MapToAttribute"] = "A1"; // a rule that is kept, and true
    registry.at("RegistryEntries").as_object()["Dependencies"].as_array().push_back(limit);
    const auto model = ModelOf(registry);
    const SystemValues system(model, ValuesFrom({{"A0", std::string("x")}, {"A1", std::string("x")}}));
    const Evaluation evaluation(system);
    const Verdict hidden = evaluation.VerdictOn(1, Property::Hidden);
    EXPECT_TRUE(hidden.Value && hidden.Certain && !hidden.Marked);
    const Verdict readOnly = evaluation.VerdictOn(1, Property::ReadOnly);
    EXPECT_TRUE(!readOnly.Value && !readOnly.Certain && !readOnly.Marked);
    const Verdict grayOut = evaluation.VerdictOn(1, Property::GrayOut);
    EXPECT_TRUE(grayOut.Value && !grayOut.Certain && !grayOut.Marked);
    EXPECT_EQ(DoubtAbout(evaluation, system, 1, Property::GrayOut),
              "its menus have more rules and flags than can be kept");
    EXPECT_FALSE(ChoicesOf(evaluation, system, 1).Certain);
    EXPECT_EQ(DoubtAboutValues(evaluation, system, 1), "its menus have more rules and flags than can be kept");
    const Adaptation adapted = Adapt(system);
    EXPECT_EQ(AdaptedAttribute(adapted, 1).at("ReadOnly").as_bool(), true); // as what cannot be decided
    const auto undecided =
        std::find_if(adapted.Undecided.begin(), adapted.Undecided.end(),
                     [](const UndecidedFlag& flag) { return flag.Setting == "A1" && flag.Flag == Property::ReadOnly; });
    ASSERT_NE(undecided, adapted.Undecided.end());
    EXPECT_EQ(undecided->Why, "Its menus have more rules and flags than can be kept.");
}

TEST(HostileMenus, MayHaveDeepAndOddPaths)
{
    std::string deep = ".";
    for (int level = 0; level < 10'000; ++level) {
        deep += "/d";
    }
    for (const std::string& path : {deep, std::string("////"), std::string("."), std::string("./"), std::string()}) {
        RegistryBuilder registry;
        registry.Attribute("A", "String", {{"MenuPath", json::string(path)}});
        registry.Rule("M", "Hidden", true, {Term{"A", "EQU", "x"}});
        json::value document = registry.Json();
        const json::object menu{
            {"MenuName", "M"}, {"MenuPath", json::string(path)}, {"DisplayName", json::string(path)}};
        document.at("RegistryEntries").as_object()["Menus"] = json::array{menu, menu};
        AskEverything(json::serialize(document), R"({"A": "x"})");
    }
}

} // namespace
