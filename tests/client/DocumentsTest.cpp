#include "ClientTest.h"

#include <zlib.h>

// Reading the documents: what is one, and what each is taken for.

namespace {

using namespace ClientTest;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char registryText[] = R"({"Id": "R", "RegistryEntries": {"Attributes": [], "Dependencies": []}})";

std::string Gzip(const std::string& text)
{
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::vector<Bytef> in(text.begin(), text.end());
    std::vector<Bytef> out(deflateBound(&stream, in.size()) + 64);
    stream.next_in = in.data();
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = out.data();
    stream.avail_out = static_cast<uInt>(out.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return {out.begin(), out.end()};
}

std::string Nested(std::size_t depth)
{
    return R"({"RegistryEntries": {"Attributes": )" + std::string(depth - 2, '[') + std::string(depth - 2, ']') + "}}";
}

TEST(RegistryDocumentReading, TakesPlainMarkedAndCompressedText)
{
    const std::string marked = std::string("\xEF\xBB\xBF") + registryText;
    const std::string halves =
        Gzip(std::string(registryText).substr(0, 20)) + Gzip(std::string(registryText).substr(20));
    for (const std::string& bytes :
         {std::string(registryText), marked, Gzip(registryText), Gzip(marked), halves, Gzip(registryText) + "\n"}) {
        const RegistryDocument document = ReadRegistryDocument(bytes);
        EXPECT_EQ(document.Registry, json::parse(registryText));
        EXPECT_EQ(document.Place, "/RegistryEntries");
        EXPECT_THAT(document.Findings, IsEmpty());
    }
}

TEST(RegistryDocumentReading, FindsARegistryInsideAnotherDocument)
{
    const struct {
        std::string text;
        std::string place;
    } rows[] = {
        {std::string("[") + registryText + "]", "/0"},
        {std::string(R"({"a/b": {"Body": )") + registryText + "}}", "/a~1b/Body"},
    };
    for (const auto& row : rows) {
        const RegistryDocument document = ReadRegistryDocument(row.text);
        EXPECT_EQ(document.Registry, json::parse(registryText));
        EXPECT_EQ(document.Place, row.place + "/RegistryEntries");
        EXPECT_THAT(Lines(document.Findings), ElementsAre("note wrapped-document " + row.place));
    }
}

TEST(RegistryDocumentReading, PutsEntriesAroundBareLists)
{
    const RegistryDocument document = ReadRegistryDocument(R"({"Id": "R", "Attributes": [{}], "Dependencies": [1]})");
    EXPECT_EQ(document.Registry,
              json::parse(R"({"Id": "R", "RegistryEntries": {"Attributes": [{}], "Dependencies": [1]}})"));
    EXPECT_EQ(document.Place, "");
    EXPECT_THAT(Lines(document.Findings), ElementsAre("note wrapped-document "));
}

TEST(RegistryDocumentReading, RefusesWhatIsNoRegistry)
{
    const std::string compressed = Gzip(registryText);
    std::string damaged = compressed;
    damaged[damaged.size() - 5] = static_cast<char>(damaged[damaged.size() - 5] ^ 1);
    const struct {
        std::string bytes;
        const char* found;
    } rows[] = {
        {"", "the document is empty"},
        {" \n\t", "the document is empty"},
        {R"({"RegistryEntries": {)", "not JSON, at byte"},
        {std::string(registryText) + "x", "not JSON, at byte"},
        {"\xFF\xFE{", "not JSON, at byte"},
        {"{\"RegistryEntries\": {\"\x80\": 1}}", "not JSON, at byte"},
        {Nested(33), "not JSON, at byte"},
        {compressed.substr(0, compressed.size() - 9), "the gzip data is cut off"},
        {compressed.substr(0, 5), "the gzip data is cut off"},
        {damaged, "the gzip data is damaged"},
        {"\x1F\x8B no gzip", "the gzip data is damaged"},
        {"[]", "no attribute registry"},
        {R"({"Attributes": {"A": 1}})", "no attribute registry"},
        {R"({"RegistryEntries": []})", "no attribute registry"},
    };
    for (const auto& row : rows) {
        const RegistryDocument document = ReadRegistryDocument(row.bytes);
        EXPECT_FALSE(document.Usable()) << row.bytes;
        ASSERT_THAT(Lines(document.Findings), ElementsAre("error unreadable-document ")) << row.bytes;
        EXPECT_EQ(document.Findings[0].Found.rfind(row.found, 0), 0U) << document.Findings[0].Found;
        EXPECT_EQ(Adapt(document, {}).RegistryText, "");
    }
}

TEST(RegistryDocumentReading, GoesThirtyTwoObjectsAndListsDeep)
{
    EXPECT_TRUE(ReadRegistryDocument(Nested(32)).Usable());
    EXPECT_FALSE(ReadRegistryDocument(Nested(33)).Usable());
}

TEST(ValuesDocumentReading, TakesABiosResource)
{
    const ValuesDocument document = ReadValuesDocument(R"({
        "AttributeRegistry": "R.1",
        "@Redfish.Settings": {"SettingsObject": {"@odata.id": "/redfish/v1/Systems/1/Bios/Settings"}},
        "Attributes": {"@odata.type": "x", "A": "text", "B": 5, "C": true, "D": null, "E": 7.0}})");
    EXPECT_EQ(document.AttributeRegistry, "R.1");
    EXPECT_EQ(document.SettingsObject, "/redfish/v1/Systems/1/Bios/Settings");
    EXPECT_EQ(document.Place, "/Attributes");
    const SettingValueMap expected{
        {"A", std::string("text")}, {"B", std::int64_t{5}}, {"C", true}, {"D", std::nullopt}, {"E", std::int64_t{7}}};
    EXPECT_EQ(document.Values, expected);
    EXPECT_THAT(document.Findings, IsEmpty());
}

TEST(ValuesDocumentReading, TakesBareAndWrappedValues)
{
    const SettingValueMap expected{{"A", std::int64_t{1}}};
    EXPECT_EQ(ReadValuesDocument(R"({"A": 1})").Values, expected);
    EXPECT_EQ(ReadValuesDocument(Gzip(R"({"A": 1})")).Values, expected);
    const ValuesDocument wrapped = ReadValuesDocument(R"({"Body": {"Attributes": {"A": 1}}})");
    EXPECT_EQ(wrapped.Values, expected);
    EXPECT_EQ(wrapped.Place, "/Body/Attributes");
    EXPECT_THAT(Lines(wrapped.Findings), ElementsAre("note wrapped-document /Body"));
    EXPECT_TRUE(ReadValuesDocument("{}").Values.empty());
    EXPECT_THAT(ReadValuesDocument("{}").Findings, IsEmpty());
}

TEST(ValuesDocumentReading, TellsEveryValueThatNoSettingCanHold)
{
    const ValuesDocument document = ReadValuesDocument(
        R"({"Attributes": {"A": [1], "B": {}, "C": 1.5, "D": 9223372036854775808, "E": 1, "e": 2}})");
    EXPECT_THAT(Lines(document.Findings),
                ElementsAre("warning unusable-value /Attributes/A", "warning unusable-value /Attributes/B",
                            "warning unusable-value /Attributes/C", "warning unusable-value /Attributes/D",
                            "warning repeated-attribute /Attributes/e"));
    EXPECT_EQ(document.Values, (SettingValueMap{{"E", std::int64_t{1}}}));
}

TEST(ValuesDocumentReading, RefusesWhatHoldsNoValues)
{
    for (const char* text : {"", "[1]", "5", R"({"Attributes": []})", R"({"Attributes": null})", registryText, "{"}) {
        const ValuesDocument document = ReadValuesDocument(text);
        EXPECT_THAT(Lines(document.Findings), ElementsAre("error unreadable-document ")) << text;
        EXPECT_TRUE(document.Values.empty());
    }
}

TEST(Findings, HaveDistinctWords)
{
    std::set<std::string_view> words;
    for (int kind = 0; kind <= static_cast<int>(FindingKind::Inexpressible); ++kind) {
        const std::string_view word = Word(static_cast<FindingKind>(kind));
        EXPECT_NE(word, "unknown") << kind;
        EXPECT_TRUE(words.insert(word).second) << word;
    }
}

} // namespace
