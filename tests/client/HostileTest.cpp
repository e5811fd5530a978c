#include "ClientTest.h"

#include "support/RegistryBuilder.h"

#include <zlib.h>

#include <chrono>
#include <functional>

// Documents that nobody should publish.

namespace {

using namespace ClientTest;

/** Whatever comes of it is a registry text or none, and stays as it is when it is adapted once more. */
void ReadAndAdapt(const std::string& registry, const std::string& values = "{}")
{
    const Adaptation adapted = Adapt(ReadRegistryDocument(registry), ReadValuesDocument(values));
    if (!adapted.RegistryText.empty()) {
        ExpectStable(adapted);
        StatusOfAll(adapted);
    } else {
        EXPECT_FALSE(adapted.Findings.empty());
    }
}

constexpr char wholeRegistry[] = R"({"Id": "R", "RegistryEntries": {"Menus": [{"MenuName": "M"}], "Attributes": [
    {"AttributeName": "A", "Type": "Enumeration", "ReadOnly": true, "CurrentValue": "x", "DefaultValue": "y", "DisplayOrder": 1,
     "Value": [{"ValueName": "x", "ValueDisplayName": "X"}, {"ValueName": "y", "ValueDisplayName": "Y"}]},
    {"AttributeName": "B", "Type": "Integer", "LowerBound": 0, "UpperBound": 300, "ScalarIncrement": 1},
    {"AttributeName": "C", "Type": "String", "MinLength": 0, "MaxLength": 5, "ValueExpression": "a*", "MenuPath": "./M"}],
    "Dependencies": [{"Type": "Map", "DependencyFor": "C", "Dependency": {"MapFrom": [
        {"MapFromAttribute": "A", "MapFromProperty": "CurrentValue", "MapFromCondition": "EQU", "MapFromValue": "x", "MapTerms": "OR"},
        {"Subexpressions": [{"MapFromAttribute": "B", "MapFromProperty": "CurrentValue", "MapFromCondition": "GTR", "MapFromValue": 5},
                            {"MapFromAttribute": "C", "MapFromProperty": "Hidden", "MapFromCondition": "NEQ", "MapFromValue": true}]}],
        "MapToAttribute": "C", "MapToProperty": "Hidden", "MapToValue": true}}]}})";

TEST(HostileDocuments, CutAtEveryByte)
{
    const std::string text = wholeRegistry;
    for (std::size_t length = 0; length < text.size(); ++length) {
        ReadAndAdapt(text.substr(0, length));
    }
    ReadAndAdapt(text);
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

TEST(HostileDocuments, WithEveryValueOfEveryOtherKind)
{
    const json::value kinds[] = {nullptr,
                                 true,
                                 5,
                                 -1.5,
                                 18446744073709551615U,
                                 "",
                                 "text",
                                 json::array{},
                                 json::array{nullptr},
                                 json::object{},
                                 json::object{{"Attributes", 5}}};
    json::value document = json::parse(wholeRegistry);
    std::vector<json::value*> places;
    ForEach(document, [&places](json::value& value) { places.push_back(&value); });
    EXPECT_GT(places.size(), 60U);
    for (std::size_t place = 0; place < places.size(); ++place) {
        for (const json::value& kind : kinds) {
            json::value changed = json::parse(wholeRegistry);
            std::size_t position = 0;
            json::value* found = nullptr;
            ForEach(changed, [&](json::value& value) { found = position++ == place ? &value : found; });
            *found = kind;
            ReadAndAdapt(json::serialize(changed));
        }
    }
}

TEST(HostileDocuments, ValuesOfEveryKind)
{
    for (const char* value :
         {"null", "true", "5", "-1.5", "1e99", "\"\"", "\"(x\"", "[]", "{}", "\"C.CurrentValue\"", "\"A exist\""}) {
        for (const char* name : {"A", "B", "C", "a", ""}) {
            ReadAndAdapt(wholeRegistry, std::string("{\"Attributes\": {\"") + name + "\": " + value + "}}");
        }
    }
}

TEST(HostileDocuments, AGzipBombIsRefused)
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

TEST(HostileDocuments, NamesMayBeEndingsOfEachOther)
{
    RegistryTest::RegistryBuilder registry;
    for (std::size_t length = 1; length <= 1'000; ++length) {
        const std::string name(length, 'a');
        registry.Attribute(name, "String");
        registry.Rule(name, "Hidden", true, {RegistryTest::Term{name, "EQU", json::string(name + ".CurrentValue")}});
    }
    const Adaptation adapted = AdaptRegistry(registry.Json());
    EXPECT_TRUE(AdaptedRules(adapted).empty());
    EXPECT_EQ(adapted.Findings.size(), 1'000U);
}

/** The seconds that it takes to adapt so many rules, each as large as is admitted. */
double SecondsForRules(std::size_t count)
{
    std::vector<RegistryTest::Term> terms;
    for (std::size_t position = 0; position < 1'000; ++position) {
        const char* joiner = position % 4 == 0 ? "AND" : "OR";
        terms.push_back({"A", "EQU", json::string(std::to_string(position)), position > 0 ? joiner : ""});
    }
    RegistryTest::RegistryBuilder registry;
    registry.Attribute("A", "String");
    for (std::size_t rule = 0; rule < count; ++rule) {
        registry.Rule("A", "Hidden", true, terms);
    }
    const RegistryDocument document = ReadRegistryDocument(registry.Text());
    const auto begin = std::chrono::steady_clock::now();
    Adapt(document, {});
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

TEST(HostileDocuments, TakeTimeInProportion)
{
    const double few = SecondsForRules(5);
    const double many = SecondsForRules(50);
    EXPECT_LT(many, 40 * few + 0.5) << few << " s and " << many << " s";
}

} // namespace
