#include <RedfishConfig/Client/Json.h>

#include "../Limits.h"
#include "JsonPointer.h"
#include "Quote.h"

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/string.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

/** A value, or a key before its value. What an array or object holds follows it, up to Next. */
struct JsonDocument::Node {
    JsonValue::Kind What = JsonValue::Kind::Null;
    bool IsReplaced = false;  ///< of a key: a later member has it too
    bool IsUnescaped = false; ///< of a text: it lies in m_Unescaped
    std::uint32_t Next = 0;   ///< the node behind the value and all that it holds
    union {
        std::int64_t Integer = 0;
        std::uint64_t Unsigned;
        double Fraction;
        bool Boolean;
        std::uint64_t Count; ///< elements or members, each key once
        struct {
            std::uint32_t Begin, Size;
        } Text;
    };
};

/** Takes what the parser meets, in the order of the text. */
class JsonDocument::Builder {
public:
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

    void BuildInto(JsonDocument& document)
    {
        constexpr std::size_t bytesOfNode = 24; // of text, in the registries that are known
        m_Document = &document;
        document.m_Nodes.reserve(document.m_Text.size() / bytesOfNode);
    }

    /** Lists the repeated keys in the order of the text; inner objects end before outer ones. */
    void Finish()
    {
        std::sort(m_Reported.begin(), m_Reported.end());
        for (auto& [key, pointer] : m_Reported) {
            m_Document->m_Repeated.Pointers.push_back(std::move(pointer));
        }
    }

    static bool on_document_begin(json::error_code& /*error*/) { return true; }
    static bool on_document_end(json::error_code& /*error*/) { return true; }
    bool on_object_begin(json::error_code& /*error*/) { return Open(JsonValue::Kind::Object); }
    bool on_array_begin(json::error_code& /*error*/) { return Open(JsonValue::Kind::Array); }
    bool on_array_end(std::size_t size, json::error_code& /*error*/) { return Close(size); }
    bool on_object_end(std::size_t size, json::error_code& /*error*/)
    {
        return Close(size - MarkReplaced(m_Open.back(), size));
    }
    bool on_key_part(json::string_view part, std::size_t /*size*/, json::error_code& /*error*/) { return Part(part); }
    bool on_key(json::string_view part, std::size_t /*size*/, json::error_code& /*error*/) { return Text(part); }
    bool on_string_part(json::string_view part, std::size_t /*size*/, json::error_code& /*error*/)
    {
        return Part(part);
    }
    bool on_string(json::string_view part, std::size_t /*size*/, json::error_code& /*error*/) { return Text(part); }
    static bool on_number_part(json::string_view /*part*/, json::error_code& /*error*/) { return true; }
    bool on_int64(std::int64_t number, json::string_view /*text*/, json::error_code& /*error*/)
    {
        Add(JsonValue::Kind::Integer).Integer = number;
        return true;
    }
    bool on_uint64(std::uint64_t number, json::string_view /*text*/, json::error_code& /*error*/)
    {
        Add(JsonValue::Kind::Unsigned).Unsigned = number;
        return true;
    }
    bool on_double(double number, json::string_view /*text*/, json::error_code& /*error*/)
    {
        Add(JsonValue::Kind::Fraction).Fraction = number;
        return true;
    }
    bool on_bool(bool truth, json::error_code& /*error*/)
    {
        Add(JsonValue::Kind::Boolean).Boolean = truth;
        return true;
    }
    bool on_null(json::error_code& /*error*/)
    {
        Add(JsonValue::Kind::Null);
        return true;
    }
    static bool on_comment_part(json::string_view /*part*/, json::error_code& /*error*/) { return true; }
    static bool on_comment(json::string_view /*part*/, json::error_code& /*error*/) { return true; }

private:
    JsonDocument::Node& Add(JsonValue::Kind what)
    {
        JsonDocument::Node& node = m_Document->m_Nodes.emplace_back();
        node.What = what;
        node.Next = static_cast<std::uint32_t>(m_Document->m_Nodes.size());
        return node;
    }

    bool Part(json::string_view part)
    {
        m_Document->m_Unescaped.append(part.data(), part.size());
        m_PartBytes += part.size();
        return true;
    }

    /** A text as a whole, or the last part of one: a view into the document where it has no escapes. */
    bool Text(json::string_view part)
    {
        const std::string& text = m_Document->m_Text;
        const bool isInText = m_PartBytes == 0 && std::less_equal<>()(text.data(), part.data()) &&
                              std::less_equal<>()(part.data() + part.size(), text.data() + text.size());
        JsonDocument::Node& node = Add(JsonValue::Kind::Text);
        if (isInText) {
            node.Text = {static_cast<std::uint32_t>(part.data() - text.data()),
                         static_cast<std::uint32_t>(part.size())};
            return true;
        }
        Part(part);
        const std::size_t size = std::exchange(m_PartBytes, 0);
        node.IsUnescaped = true;
        node.Text = {static_cast<std::uint32_t>(m_Document->m_Unescaped.size() - size),
                     static_cast<std::uint32_t>(size)};
        return true;
    }

    bool Open(JsonValue::Kind what)
    {
        m_Open.push_back(static_cast<std::uint32_t>(m_Document->m_Nodes.size()));
        Add(what);
        return true;
    }

    bool Close(std::size_t count)
    {
        JsonDocument::Node& node = m_Document->m_Nodes[m_Open.back()];
        node.Next = static_cast<std::uint32_t>(m_Document->m_Nodes.size());
        node.Count = count;
        m_Open.pop_back();
        return true;
    }

    /** Marks the members of an object whose keys come again. @return how many. */
    std::size_t MarkReplaced(std::uint32_t object, std::size_t members)
    {
        auto& nodes = m_Document->m_Nodes;
        m_Keys.clear();
        m_Marks.clear();
        for (std::uint32_t key = object + 1; key < nodes.size(); key = nodes[key + 1].Next) {
            m_Keys.push_back(key);
            m_Marks.push_back(MarkOf(m_Document->TextOf(nodes[key])));
        }
        if (members <= m_FewMembers && !AnyMarkRepeats()) {
            return 0;
        }
        const auto text = [&](std::uint32_t key) { return m_Document->TextOf(nodes[key]); };
        std::sort(m_Keys.begin(), m_Keys.end(), [&](std::uint32_t left, std::uint32_t right) {
            const int order = text(left).compare(text(right));
            return order != 0 ? order < 0 : left < right;
        });
        std::vector<std::uint32_t> again;
        for (std::size_t place = 1; place < m_Keys.size(); ++place) {
            if (text(m_Keys[place - 1]) == text(m_Keys[place])) {
                nodes[m_Keys[place - 1]].IsReplaced = true;
                again.push_back(m_Keys[place]);
            }
        }
        std::sort(again.begin(), again.end());
        std::for_each(again.begin(), again.end(), [this](std::uint32_t key) { Report(key); });
        return again.size();
    }

    /** The same for keys that are the same, and seldom for others. */
    static std::uint32_t MarkOf(std::string_view key)
    {
        auto mark = static_cast<std::uint32_t>(key.size());
        if (!key.empty()) {
            constexpr std::uint32_t factor = 31;
            for (const std::size_t place : {std::size_t{0}, key.size() / 4, key.size() / 2, key.size() - 1}) {
                mark = mark * factor + static_cast<unsigned char>(key[place]);
            }
        }
        return mark;
    }

    /** Without a way out of the inner loop, so that several marks are compared at once. */
    bool AnyMarkRepeats() const
    {
        for (std::size_t place = 1; place < m_Marks.size(); ++place) {
            bool isThere = false;
            for (std::size_t before = 0; before < place; ++before) {
                isThere |= m_Marks[before] == m_Marks[place];
            }
            if (isThere) {
                return true;
            }
        }
        return false;
    }

    void Report(std::uint32_t key)
    {
        ++m_Document->m_Repeated.Count;
        if (m_Reported.size() < Limits::reportedRepeatedKeys) {
            m_Reported.emplace_back(key, PointerTo(key));
        }
    }

    /** Down to the key, or as deep as a pointer of bearable length reaches. */
    std::string PointerTo(std::uint32_t key) const
    {
        const auto& nodes = m_Document->m_Nodes;
        std::string pointer;
        for (std::size_t level = 0; level < m_Open.size(); ++level) {
            const std::uint32_t inner = level + 1 < m_Open.size() ? m_Open[level + 1] : key;
            std::string next;
            if (nodes[m_Open[level]].What == JsonValue::Kind::Array) {
                std::size_t position = 0;
                for (std::uint32_t element = m_Open[level] + 1; element != inner; element = nodes[element].Next) {
                    ++position;
                }
                next = Element(pointer, position);
            } else { // the key lies before what is open
                const std::uint32_t name = inner == key ? key : inner - 1;
                next = Member(pointer, m_Document->TextOf(nodes[name]));
            }
            if (next.size() > Limits::pointerBytes) {
                break;
            }
            pointer = std::move(next);
        }
        return pointer;
    }

    static constexpr std::size_t m_FewMembers = 24; // comparing each with each is faster than bringing them into order

    JsonDocument* m_Document = nullptr;
    std::vector<std::uint32_t> m_Open;                             // arrays and objects that the parser is in
    std::vector<std::uint32_t> m_Keys, m_Marks;                    // of the object that ends
    std::size_t m_PartBytes = 0;                                   // of a text whose end has not come
    std::vector<std::pair<std::uint32_t, std::string>> m_Reported; // repeated keys, and pointers to them
};

JsonDocument::JsonDocument(std::string text) : m_Text(std::move(text)) {}

JsonDocument::~JsonDocument() = default;

std::string_view JsonDocument::TextOf(const Node& node) const
{
    return std::string_view(node.IsUnescaped ? m_Unescaped : m_Text).substr(node.Text.Begin, node.Text.Size);
}

std::shared_ptr<const JsonDocument> JsonDocument::Parse(std::string text, JsonDefect& defect)
{
    constexpr std::string_view blanks = " \t\r\n";
    if (text.size() > Limits::documentBytes) {
        defect = {"the text is longer than " + std::to_string(Limits::documentBytes) + " bytes"};
        return nullptr;
    }
    if (text.find_first_not_of(blanks) == std::string::npos) {
        defect = {"the document is empty"};
        return nullptr;
    }
    const std::shared_ptr<JsonDocument> document(new JsonDocument(std::move(text)));
    json::parse_options options;
    options.max_depth = Limits::documentDepth;
    json::basic_parser<Builder> parser(options);
    parser.handler().BuildInto(*document);
    json::error_code error;
    const std::string& kept = document->m_Text;
    const std::size_t read = parser.write_some(false, kept.data(), kept.size(), error);
    if (!error && kept.find_first_not_of(blanks, read) != std::string::npos) {
        error = json::error::extra_data;
    }
    if (error) {
        defect = {error.message(), read, true};
        return nullptr;
    }
    parser.handler().Finish();
    return document;
}

JsonValue::Kind JsonValue::What() const
{
    return m_Document != nullptr ? m_Document->m_Nodes[m_Node].What : Kind::Missing;
}

bool JsonValue::IsNumber() const
{
    const Kind what = What();
    return what == Kind::Integer || what == Kind::Unsigned || what == Kind::Fraction;
}

std::string_view JsonValue::Text() const
{
    return IsText() ? m_Document->TextOf(m_Document->m_Nodes[m_Node]) : std::string_view();
}

std::optional<bool> JsonValue::Boolean() const
{
    return What() == Kind::Boolean ? std::optional(m_Document->m_Nodes[m_Node].Boolean) : std::nullopt;
}

std::optional<std::int64_t> JsonValue::Integer() const
{
    const Kind what = What();
    if (what == Kind::Integer) {
        return m_Document->m_Nodes[m_Node].Integer;
    }
    // 2 to the power of 63; whole numbers below the least of 64 bits are rounded to its negative, which so is refused
    constexpr double beyond = 9223372036854775808.0;
    const double fraction = what == Kind::Fraction ? m_Document->m_Nodes[m_Node].Fraction : beyond;
    if (fraction > -beyond && fraction < beyond &&
        static_cast<double>(static_cast<std::int64_t>(fraction)) == fraction) {
        return static_cast<std::int64_t>(fraction);
    }
    return std::nullopt;
}

std::optional<std::uint64_t> JsonValue::Unsigned() const
{
    return What() == Kind::Unsigned ? std::optional(m_Document->m_Nodes[m_Node].Unsigned) : std::nullopt;
}

std::optional<double> JsonValue::Fraction() const
{
    return What() == Kind::Fraction ? std::optional(m_Document->m_Nodes[m_Node].Fraction) : std::nullopt;
}

std::size_t JsonValue::Size() const
{
    return IsArray() || IsObject() ? static_cast<std::size_t>(m_Document->m_Nodes[m_Node].Count) : 0;
}

JsonValue JsonValue::Member(std::string_view key) const
{
    if (IsObject()) {
        for (const JsonMember& member : *this) {
            if (member.Key == key) {
                return member.Value;
            }
        }
    }
    return {};
}

JsonValue JsonValue::Element(std::size_t position) const
{
    if (IsArray() && position < Size()) {
        Iterator element = begin();
        for (; position > 0; --position) {
            ++element;
        }
        return (*element).Value;
    }
    return {};
}

JsonValue::Iterator JsonValue::begin() const
{
    if (IsArray() || IsObject()) {
        return {m_Document, m_Node, IsObject()};
    }
    return end();
}

JsonValue::Iterator JsonValue::end() const
{
    Iterator iterator(m_Document, m_Node, false);
    iterator.m_Node = IsArray() || IsObject() ? m_Document->m_Nodes[m_Node].Next : 0;
    return iterator;
}

JsonValue::Iterator::Iterator(const JsonDocument* document, std::uint32_t node, bool isObject)
    : m_Document(document), m_Node(node + 1), m_IsObject(isObject)
{
    if (isObject) {
        m_End = document->m_Nodes[node].Next;
        SkipReplaced();
    }
}

void JsonValue::Iterator::SkipReplaced()
{
    const auto& nodes = m_Document->m_Nodes;
    while (m_Node != m_End && nodes[m_Node].IsReplaced) {
        m_Node = nodes[m_Node + 1].Next;
    }
}

JsonMember JsonValue::Iterator::operator*() const
{
    if (m_IsObject) {
        return {m_Document->TextOf(m_Document->m_Nodes[m_Node]), JsonValue(m_Document, m_Node + 1)};
    }
    return {{}, JsonValue(m_Document, m_Node)};
}

JsonValue::Iterator& JsonValue::Iterator::operator++()
{
    m_Node = m_Document->m_Nodes[m_IsObject ? m_Node + 1 : m_Node].Next;
    if (m_IsObject) {
        SkipReplaced();
    }
    return *this;
}

namespace {

/** Writes values as JSON until there is enough. */
class Writer {
public:
    explicit Writer(std::size_t mostBytes) : m_MostBytes(mostBytes) {}

    void Write(const JsonValue& value)
    {
        switch (value.What()) {
        case JsonValue::Kind::Missing:
            return;
        case JsonValue::Kind::Array:
        case JsonValue::Kind::Object:
            WriteStructure(value);
            return;
        case JsonValue::Kind::Text:
            m_Text += json::serialize(json::string_view(value.Text().data(), value.Text().size()));
            return;
        case JsonValue::Kind::Null:
            m_Text += "null";
            return;
        case JsonValue::Kind::Boolean:
            m_Text += *value.Boolean() ? "true" : "false";
            return;
        default:
            WriteNumber(value);
        }
    }

    std::string Take() { return std::move(m_Text); }

private:
    void WriteStructure(const JsonValue& value)
    {
        const bool isObject = value.IsObject();
        m_Text += isObject ? '{' : '[';
        bool isFirst = true;
        for (const JsonMember& member : value) {
            if (m_Text.size() > m_MostBytes) {
                return;
            }
            m_Text += isFirst ? "" : ",";
            isFirst = false;
            if (isObject) {
                m_Text += json::serialize(json::string_view(member.Key.data(), member.Key.size())) + ":";
            }
            Write(member.Value);
        }
        m_Text += isObject ? '}' : ']';
    }

    void WriteNumber(const JsonValue& value)
    {
        if (value.What() == JsonValue::Kind::Fraction && std::isinf(*value.Fraction())) {
            m_Text += *value.Fraction() > 0 ? "1e999" : "-1e999"; // JSON has no word for what is beyond all numbers
        } else if (value.What() == JsonValue::Kind::Fraction) {
            m_Text += json::serialize(json::value(*value.Fraction()));
        } else if (const auto number = value.Integer()) {
            m_Text += std::to_string(*number);
        } else {
            m_Text += std::to_string(*value.Unsigned());
        }
    }

    std::size_t m_MostBytes;
    std::string m_Text;
};

} // namespace

std::string ToText(const JsonValue& value, std::size_t mostBytes)
{
    Writer writer(mostBytes);
    writer.Write(value);
    return Cut(writer.Take(), mostBytes);
}

} // namespace RedfishConfig::Client
