#pragma once

/**
 * @file
 * The one reader of JSON: a text parsed once into a tree that never changes. Whatever walks a published document walks
 * it through these views, so that another parser can take the place of today's without touching who reads.
 */

#include <RedfishConfig/Export.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

class JsonDocument;

/**
 * A value of a JsonDocument, which must outlive it; or no value, as of a member that an object does not have. Every
 * question has an answer for every kind of value: a text has no members, an object is no text. Cheap to copy.
 */
class REDFISHCONFIG_EXPORT JsonValue {
public:
    enum class Kind : std::uint8_t {
        Missing,
        Null,
        Boolean,
        Integer,  ///< fits 64 signed bits
        Unsigned, ///< fits 64 bits without a sign only
        Fraction, ///< any other number
        Text,
        Array,
        Object,
    };

    JsonValue() = default;

    Kind What() const;
    bool Exists() const { return m_Document != nullptr; }
    bool IsNull() const { return What() == Kind::Null; }
    bool IsText() const { return What() == Kind::Text; }
    bool IsArray() const { return What() == Kind::Array; }
    bool IsObject() const { return What() == Kind::Object; }
    bool IsNumber() const;

    /** The text in UTF-8 without escapes; empty for what is no text. */
    std::string_view Text() const;

    std::optional<bool> Boolean() const;

    /** A number that is whole and fits 64 signed bits, however it is written: 5, 5.0 and 5e0 are the same. */
    std::optional<std::int64_t> Integer() const;

    /** A whole number above those of 64 signed bits. */
    std::optional<std::uint64_t> Unsigned() const;

    /** A number that is written as a fraction, or is larger than 64 bits. */
    std::optional<double> Fraction() const;

    /** How many elements an array, or members an object has; of keys that repeat each counts once. */
    std::size_t Size() const;

    /** The member of that name; of several the last. Takes time in proportion to the members. */
    JsonValue Member(std::string_view key) const;

    /** The element at a position; none beyond the end. Takes time in proportion to the position. */
    JsonValue Element(std::size_t position) const;

    class Iterator;
    /** The elements of an array or the members of an object, in the order of the text; else nothing. */
    Iterator begin() const;
    Iterator end() const;

    friend bool operator==(const JsonValue& left, const JsonValue& right)
    {
        return left.m_Document == right.m_Document && left.m_Node == right.m_Node;
    }

private:
    friend class JsonDocument;
    JsonValue(const JsonDocument* document, std::uint32_t node) : m_Document(document), m_Node(node) {}

    const JsonDocument* m_Document = nullptr;
    std::uint32_t m_Node = 0;
};

/** Walks an array or an object: `for (const JsonMember& member : object)`; the key of an element is empty. */
struct JsonMember {
    std::string_view Key;
    JsonValue Value;
};

class REDFISHCONFIG_EXPORT JsonValue::Iterator {
public:
    JsonMember operator*() const;
    Iterator& operator++();
    bool operator!=(const Iterator& other) const { return m_Node != other.m_Node; }

private:
    friend class JsonValue;
    Iterator(const JsonDocument* document, std::uint32_t node, bool isObject);
    void SkipReplaced();

    const JsonDocument* m_Document;
    std::uint32_t m_Node;
    std::uint32_t m_End = 0;
    bool m_IsObject;
};

/** Why a text is not JSON. */
struct JsonDefect {
    std::string Reason;    ///< "syntax error"
    std::size_t Byte = 0;  ///< where that is
    bool IsSyntax = false; ///< else it is the text as a whole: it is empty, or too long
};

/** Keys that an object has more than once. */
struct RepeatedKeys {
    std::size_t Count = 0;
    std::vector<std::string> Pointers; ///< JSON Pointers to a hundred of them: inner objects go first
};

/** A parsed text. Immutable, and may be read by several threads. */
class REDFISHCONFIG_EXPORT JsonDocument {
public:
    /**
     * Parses a text of at most 256 MiB and 32 arrays and objects within each other. White space may follow the value.
     *
     * @return the document; null, with @p defect filled in, when the text is not JSON
     */
    static std::shared_ptr<const JsonDocument> Parse(std::string text, JsonDefect& defect);

    ~JsonDocument();
    JsonDocument(const JsonDocument&) = delete;
    JsonDocument& operator=(const JsonDocument&) = delete;

    JsonValue Root() const { return {this, 0}; }
    const RepeatedKeys& Repeated() const { return m_Repeated; }

private:
    friend class JsonValue;
    friend class JsonValue::Iterator;
    class Builder;
    struct Node;

    explicit JsonDocument(std::string text);
    std::string_view TextOf(const Node& node) const;

    std::string m_Text;
    std::string m_Unescaped; ///< texts that the document writes with escapes
    std::vector<Node> m_Nodes;
    RepeatedKeys m_Repeated;
};

/** The value as JSON without white space, cut behind @p mostBytes with "..." when it is longer; "" for no value. */
REDFISHCONFIG_EXPORT std::string ToText(const JsonValue& value, std::size_t mostBytes = static_cast<std::size_t>(-1));

} // namespace RedfishConfig::Client
