#include "ClientTest.h"

#include <zlib.h>

// Reading the documents: what is one, and what each is taken for.

namespace {

using namespace ClientTest;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

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

/** A registry that is so many objects and arrays deep. */
std::string Deep(std::size_t depth)
{
    return R"({"RegistryEntries": {"Attributes": )" + std::string(depth - 2, '[') + std::string(depth - 2, ']') + "}}";
}

/** The registry within so many arrays. */
std::string Wrapped(std::size_t times)
{
    return std::string(times, '[') + registryText + std::string(times, ']');
}

TEST(RegistryDocumentReading, TakesPlainMarkedAndCompressedText)
{
    const std::string marked = std::string("\xEF\xBB\xBF") + registryText;
    const std::string halves =
        Gzip(std::string(registryText).substr(0, 20)) + Gzip(std::string(registryText).substr(20));
    for (const std::string& bytes :
         {std::string(registryText), marked, Gzip(registryText), Gzip(marked), halves, Gzip(registryText) + "\n"}) {
        const RegistryDocument document = ReadRegistryDocument(bytes);
        ASSERT_TRUE(document.Usable());
        EXPECT_EQ(json::parse(ToText(document.Registry)), json::parse(registryText));
        EXPECT_EQ(document.Entries, document.Registry.Member("RegistryEntries"));
        EXPECT_EQ(document.Pointer, "/RegistryEntries");
        EXPECT_THAT(document.Findings, IsEmpty());
    }
}

TEST(RegistryDocumentReading, FindsARegistryInsideAnotherDocument)
{
    const struct {
        std::string Text;
        std::string Pointer;
    } rows[] = {
        {Wrapped(1), "/0"},
        {Wrapped(4), "/0/0/0/0"},
        {std::string(R"({"a/b": {"Body": )") + registryText + "}}", "/a~1b/Body"},
        {std::string(R"([1, "x", {"Deeper": {"Attributes": 5}}, )") + registryText + "]", "/3"},
    };
    for (const auto& row : rows) {
        const RegistryDocument document = ReadRegistryDocument(row.Text);
        EXPECT_EQ(json::parse(ToText(document.Registry)), json::parse(registryText));
        EXPECT_EQ(document.Pointer, row.Pointer + "/RegistryEntries");
        EXPECT_THAT(Lines(document.Findings), ElementsAre("note wrapped-document " + row.Pointer));
    }
}

TEST(RegistryDocumentReading, TakesTheOutermostOfSeveralRegistries)
{
    const std::string inner = R"({"Id": "Inner", "RegistryEntries": {"Attributes": []}})";
    const std::string outer = R"({"Body": )" + inner + R"(, "Id": "Outer", "RegistryEntries": {"Attributes": []}})";
    EXPECT_EQ(ReadRegistryDocument(outer).Registry.Member("Id").Text(), "Outer");
    EXPECT_EQ(ReadRegistryDocument("[[" + inner + "], " + outer + "]").Registry.Member("Id").Text(), "Outer");
}

TEST(RegistryDocumentReading, LooksFourLevelsDeepAndAtAThousandMembers)
{
    EXPECT_TRUE(ReadRegistryDocument(Wrapped(4)).Usable());
    EXPECT_FALSE(ReadRegistryDocument(Wrapped(5)).Usable());
    const auto behind = [](std::size_t members) {
        std::string text = "[";
        for (std::size_t member = 0; member < members; ++member) {
            text += "{},";
        }
        return text + registryText + "]";
    };
    EXPECT_TRUE(ReadRegistryDocument(behind(999)).Usable());
    EXPECT_FALSE(ReadRegistryDocument(behind(1'000)).Usable());
}

TEST(RegistryDocumentReading, LooksBehindKeysOfFourThousandBytes)
{
    const auto below = [](std::size_t keyBytes) {
        return ReadRegistryDocument("{\"" + std::string(keyBytes, 'k') + "\": " + registryText + "}");
    };
    EXPECT_EQ(below(4'096).Pointer, "/" + std::string(4'096, 'k') + "/RegistryEntries");
    EXPECT_FALSE(below(4'097).Usable());
    const std::string values = R"(": {"Attributes": {"A": 1}}})";
    EXPECT_EQ(ReadValuesDocument("{\"" + std::string(4'096, 'k') + values).Values.count("A"), 1U);
    EXPECT_EQ(ReadValuesDocument("{\"" + std::string(4'097, 'k') + values).Values.count("A"), 0U);
    const std::string half(2'048, 'k'); // two of them and the slash before one are too many
    EXPECT_TRUE(ReadRegistryDocument("{\"" + half + "\": " + registryText + "}").Usable());
    EXPECT_FALSE(ReadRegistryDocument("{\"" + half + R"(": {")" + half + "\": " + registryText + "}}").Usable());
}

TEST(RegistryDocumentReading, TakesBareArraysAsEntries)
{
    const RegistryDocument document = ReadRegistryDocument(R"({"Id": "R", "Attributes": [{}], "Dependencies": [1]})");
    EXPECT_EQ(document.Entries, document.Registry);
    EXPECT_EQ(ToText(document.Entries.Member("Attributes")), "[{}]");
    EXPECT_EQ(document.Registry.Member("Id").Text(), "R");
    EXPECT_EQ(document.Pointer, "");
    EXPECT_THAT(Lines(document.Findings), ElementsAre("note wrapped-document "));

    const RegistryDocument wrapped = ReadRegistryDocument(R"({"Body": {"Attributes": []}})");
    EXPECT_EQ(wrapped.Pointer, "/Body");
    EXPECT_THAT(Lines(wrapped.Findings), ElementsAre("note wrapped-document /Body"));
}

TEST(RegistryDocumentReading, PrefersARegistryToBareArrays)
{
    const RegistryDocument document =
        ReadRegistryDocument(std::string(R"({"Attributes": [], "Body": )") + registryText + "}");
    EXPECT_EQ(document.Pointer, "/Body/RegistryEntries");
}

TEST(RegistryDocumentReading, RefusesWhatIsNoRegistry)
{
    const std::string compressed = Gzip(registryText);
    std::string damaged = compressed;
    damaged[damaged.size() - 5] = static_cast<char>(damaged[damaged.size() - 5] ^ 1);
    const struct {
        std::string Bytes;
        const char* Found;
    } rows[] = {
        {"", "the document is empty"},
        {" \n\t", "the document is empty"},
        {"\xEF\xBB\xBF", "the document is empty"},
        {Gzip(""), "the document is empty"},
        {R"({"RegistryEntries": {)", "not JSON, at byte 21: incomplete JSON"},
        {std::string(registryText) + "x", "not JSON, at byte 70: extra data"},
        {std::string(registryText) + '\0', "not JSON, at byte 70: extra data"},
        {"\xFF\xFE{", "not JSON, at byte 0: syntax error"},
        {"{\"RegistryEntries\": {\"\x80\": 1}}", "not JSON, at byte"},
        {Deep(33), "not JSON, at byte"},
        {compressed.substr(0, compressed.size() - 9), "the gzip data is cut off"},
        {compressed.substr(0, 5), "the gzip data is cut off"},
        {damaged, "the gzip data is damaged"},
        {"\x1F\x8B no gzip", "the gzip data is damaged"},
        {"[]", "no attribute registry: there is no object \"RegistryEntries\""},
        {R"({"Attributes": {"A": 1}})", "no attribute registry"},
        {R"({"RegistryEntries": []})", "no attribute registry"},
    };
    for (const auto& row : rows) {
        const RegistryDocument document = ReadRegistryDocument(row.Bytes);
        EXPECT_FALSE(document.Usable()) << row.Bytes;
        EXPECT_EQ(document.Json, nullptr) << row.Bytes;
        ASSERT_THAT(Lines(document.Findings), ElementsAre("error unreadable-document ")) << row.Bytes;
        EXPECT_THAT(document.Findings[0].Found, StartsWith(row.Found)) << row.Bytes;
    }
}

TEST(RegistryDocumentReading, GoesThirtyTwoObjectsAndArraysDeep)
{
    EXPECT_TRUE(ReadRegistryDocument(Deep(32)).Usable());
    EXPECT_FALSE(ReadRegistryDocument(Deep(33)).Usable());
}

TEST(RegistryDocumentReading, ReportsRepeatedKeysAHundredOneByOne)
{
    const RegistryDocument document = ReadRegistryDocument(R"({"Id": "Old", "RegistryEntries": {"Attributes": [
        {"AttributeName": "A", "Type": "String", "Type": "Integer"}], "Attributes": []}, "Id": "R"})");
    EXPECT_EQ(document.Registry.Member("Id").Text(), "R");
    EXPECT_EQ(document.Entries.Member("Attributes").Size(), 0U);
    EXPECT_THAT(Lines(document.Findings),
                ElementsAre("warning repeated-key /RegistryEntries/Attributes/0/Type",
                            "warning repeated-key /RegistryEntries/Attributes", "warning repeated-key /Id"));

    std::string text = R"({"RegistryEntries": {"Attributes": []})";
    for (int count = 0; count <= 103; ++count) {
        text += R"(, "x": 1)";
    }
    const std::vector<Finding> findings = ReadRegistryDocument(text + "}").Findings;
    ASSERT_EQ(findings.size(), 101U);
    EXPECT_EQ(findings[99].Pointer, "/x");
    EXPECT_EQ(findings[100].Pointer, "");
    EXPECT_EQ(findings[100].Found, "3 more of this kind");
    EXPECT_EQ(findings[100].Count, 3U);
    EXPECT_TRUE(findings[100].CountsOthers);
}

TEST(UnusableRegistryDocument, HasAnEmptyModel)
{
    const auto model = Model::Read(ReadRegistryDocument("5"));
    EXPECT_THAT(model->Attributes(), IsEmpty());
    EXPECT_THAT(model->Menus(), IsEmpty());
    EXPECT_THAT(model->Rules(), IsEmpty());
    EXPECT_THAT(model->Forms(), IsEmpty());
    EXPECT_THAT(model->Findings(), IsEmpty()); // the document's own finding has been reported already
    EXPECT_EQ(model->Find("A"), std::nullopt);
    EXPECT_TRUE(Evaluation(SystemValues(model)).Of().Rules().empty());
}

TEST(ValuesDocumentReading, TakesABiosResource)
{
    const ValuesDocument document = ReadValuesDocument(R"({
        "AttributeRegistry": "R.1",
        "@Redfish.Settings": {"SettingsObject": {"@odata.id": "/redfish/v1/Systems/1/Bios/Settings"}},
        "Attributes": {"@odata.type": "x", "A": "text", "B": 5, "C": true, "D": null, "E": 7.0, "": 8}})");
    EXPECT_EQ(document.AttributeRegistry, "R.1");
    EXPECT_EQ(document.SettingsObject, "/redfish/v1/Systems/1/Bios/Settings");
    EXPECT_EQ(document.Pointer, "/Attributes");
    const SettingValueMap expected{
        {"A", std::string("text")}, {"B", std::int64_t{5}}, {"C", true}, {"D", std::nullopt}, {"E", std::int64_t{7}}};
    EXPECT_EQ(document.Values, expected);
    EXPECT_THAT(document.Findings, IsEmpty());
}

TEST(ValuesDocumentReading, TakesBareAndWrappedValues)
{
    const SettingValueMap expected{{"A", std::int64_t{1}}};
    EXPECT_EQ(ReadValuesDocument(R"({"A": 1})").Values, expected);
    EXPECT_EQ(ReadValuesDocument(R"({"A": 1})").Pointer, "");
    EXPECT_EQ(ReadValuesDocument(Gzip(R"({"A": 1})")).Values, expected);
    const ValuesDocument wrapped = ReadValuesDocument(R"({"Body": {"Attributes": {"A": 1}}})");
    EXPECT_EQ(wrapped.Values, expected);
    EXPECT_EQ(wrapped.Pointer, "/Body/Attributes");
    EXPECT_THAT(Lines(wrapped.Findings), ElementsAre("note wrapped-document /Body"));
    EXPECT_TRUE(ReadValuesDocument("{}").Values.empty());
    EXPECT_THAT(ReadValuesDocument("{}").Findings, IsEmpty());
}

TEST(ValuesDocumentReading, TakesWhatNoSettingCanHaveForNoValue)
{
    const struct {
        const char* Value;
        const char* Found;
    } rows[] = {
        {"[1]", "a list"},
        {"{}", "an object"},
        {"1.5", "not a whole number of 64 signed bits"},
        {"1e300", "not a whole number of 64 signed bits"},
        {"9223372036854775808", "a number that does not fit 64 signed bits"},
    };
    for (const auto& row : rows) {
        const ValuesDocument document =
            ReadValuesDocument(std::string(R"({"Attributes": {"A": )") + row.Value + R"(, "B": 1}})");
        ASSERT_THAT(Lines(document.Findings), ElementsAre("warning unusable-value /Attributes/A")) << row.Value;
        EXPECT_EQ(document.Findings[0].Found, row.Found);
        EXPECT_EQ(document.Findings[0].Attribute, "A");
        EXPECT_EQ(document.Findings[0].In, Document::Values);
        EXPECT_EQ(document.Values, (SettingValueMap{{"A", std::nullopt}, {"B", std::int64_t{1}}})) << row.Value;
    }
}

TEST(ValuesDocumentReading, TakesTheFirstOfNamesThatDifferInCaseAndTheLastOfRepeatedKeys)
{
    const ValuesDocument document = ReadValuesDocument(R"({"Attributes": {"E": 1, "e": 2, "F": 3, "F": 4}})");
    EXPECT_EQ(document.Values, (SettingValueMap{{"E", std::int64_t{1}}, {"F", std::int64_t{4}}}));
    EXPECT_THAT(Lines(document.Findings),
                ElementsAre("warning repeated-key /Attributes/F", "warning repeated-attribute /Attributes/e"));
}

TEST(ValuesDocumentReading, RefusesWhatHoldsNoValues)
{
    for (const char* text : {"", "[1]", "5", R"({"Attributes": []})", R"({"Attributes": null})", registryText, "{"}) {
        const ValuesDocument document = ReadValuesDocument(text);
        EXPECT_THAT(Lines(document.Findings), ElementsAre("error unreadable-document ")) << text;
        EXPECT_TRUE(document.Values.empty());
    }
}

TEST(FindingKindList, HasEveryKindOnceInTheOrderOfTheEnumeration)
{
    const std::vector<FindingKind>& kinds = FindingKinds();
    ASSERT_EQ(kinds.size(), static_cast<std::size_t>(FindingKind::Inexpressible) + 1);
    for (std::size_t number = 0; number < kinds.size(); ++number) {
        EXPECT_EQ(kinds[number], static_cast<FindingKind>(number));
    }
}

TEST(FindingKindList, HasDistinctWordsOfLowerCaseLettersAndHyphens)
{
    std::set<std::string_view> words;
    for (const FindingKind kind : FindingKinds()) {
        const std::string_view word = Word(kind);
        EXPECT_THAT(std::string(word), testing::MatchesRegex("[a-z]+(-[a-z]+)*"));
        EXPECT_TRUE(words.insert(word).second) << word;
    }
}

TEST(FindingWords, NameSeverityAndDocument)
{
    EXPECT_EQ(Word(Severity::Note), "note");
    EXPECT_EQ(Word(Severity::Warning), "warning");
    EXPECT_EQ(Word(Severity::Error), "error");
    EXPECT_EQ(Word(Document::Registry), "registry");
    EXPECT_EQ(Word(Document::Values), "values");
}

} // namespace
