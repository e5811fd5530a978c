#include "RegistryReader.h"

#include "AttributeRecord.h"
#include "common/Limits.h"

#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/monotonic_resource.hpp>
#include <boost/json/parse.hpp>

#include <limits>
#include <stdexcept>
#include <utility>

namespace RedfishConfig {

namespace json = boost::json;

namespace {

constexpr char noAttributes[] = R"(The registry has no "Attributes" in an object "RegistryEntries".)";
constexpr char attributesAreNoList[] = R"(The "Attributes" of the registry are not an array.)";

/**
 * Follows the parser through a registry. A place says what the object or list that is open now stands for, and the
 * members of an object are met one after the other; so each value is known by its place and its key.
 */
class Reading {
public:
    // What the parser calls. None ever stops it.
    static constexpr std::size_t max_object_size = std::numeric_limits<std::size_t>::max();
    static constexpr std::size_t max_array_size = max_object_size;
    static constexpr std::size_t max_key_size = max_object_size;
    static constexpr std::size_t max_string_size = max_object_size;

    using Error = json::error_code;

    bool on_document_begin(Error& /*error*/) { return true; }
    bool on_document_end(Error& /*error*/) { return true; }
    bool on_object_begin(Error& /*error*/)
    {
        Open(Kind::Object);
        return true;
    }
    bool on_object_end(std::size_t /*count*/, Error& /*error*/)
    {
        Close();
        return true;
    }
    bool on_array_begin(Error& /*error*/)
    {
        Open(Kind::List);
        return true;
    }
    bool on_array_end(std::size_t /*count*/, Error& /*error*/)
    {
        Close();
        return true;
    }
    bool on_key_part(json::string_view part, std::size_t /*size*/, Error& /*error*/)
    {
        m_Parts.append(part.data(), part.size());
        return true;
    }
    bool on_key(json::string_view part, std::size_t /*size*/, Error& /*error*/)
    {
        FindMember(WithParts(part));
        m_Parts.clear();
        return true;
    }
    bool on_string_part(json::string_view part, std::size_t /*size*/, Error& /*error*/)
    {
        m_Parts.append(part.data(), part.size());
        return true;
    }
    bool on_string(json::string_view part, std::size_t /*size*/, Error& /*error*/)
    {
        Take(WithParts(part));
        m_Parts.clear();
        return true;
    }
    bool on_number_part(json::string_view /*part*/, Error& /*error*/) { return true; }
    bool on_int64(std::int64_t number, json::string_view /*text*/, Error& /*error*/)
    {
        Take(number);
        return true;
    }
    bool on_uint64(std::uint64_t number, json::string_view /*text*/, Error& /*error*/)
    {
        Take(number);
        return true;
    }
    bool on_double(double number, json::string_view /*text*/, Error& /*error*/)
    {
        Take(number);
        return true;
    }
    bool on_bool(bool flag, Error& /*error*/)
    {
        Take(flag);
        return true;
    }
    bool on_null(Error& /*error*/)
    {
        Take({});
        return true;
    }
    bool on_comment_part(json::string_view /*part*/, Error& /*error*/) { return true; }
    bool on_comment(json::string_view /*part*/, Error& /*error*/) { return true; }

    RegistryContent Finish()
    {
        if (!m_RootIsObject) {
            throw std::runtime_error("The registry is not a JSON object.");
        }
        CheckCount("attributes", m_AttributeCount, Limits::attributes);
        CheckCount("rules", m_RuleCount, Limits::rules);
        return std::move(m_Content);
    }

private:
    enum class Kind { Object, List, Scalar };
    enum class Place {
        Ignored,
        Document, ///< outside of the root
        Root,
        Entries,
        Attributes,
        Attribute,
        Choices,
        Choice,
        Rules,
        RuleEntry,
        Rule,
        Terms,
        Term,
    };
    /** The member that stands for more than a scalar, of the object that is open. */
    enum class Branch { None, Entries, Attributes, Rules, Choices, Rule, Terms };

    static void CheckCount(const char* what, std::size_t count, std::size_t limit)
    {
        if (count > limit) {
            throw std::runtime_error("The registry has more than " + std::to_string(limit) + " " + what + ".");
        }
    }

    std::string_view WithParts(json::string_view last)
    {
        if (m_Parts.empty()) {
            return {last.data(), last.size()};
        }
        m_Parts.append(last.data(), last.size());
        return m_Parts;
    }

    /** Keeps in mind which member the next value belongs to. */
    void FindMember(std::string_view key)
    {
        m_Branch = Branch::None;
        m_AttributeMember = nullptr;
        m_ChoiceMember = nullptr;
        m_RuleMember = nullptr;
        m_TermMember = nullptr;
        switch (m_Place) {
        case Place::Root:
            m_Branch = key == Schema::registryEntries ? Branch::Entries : Branch::None;
            break;
        case Place::Entries:
            m_Branch = key == Schema::attributes     ? Branch::Attributes
                       : key == Schema::dependencies ? Branch::Rules
                                                     : Branch::None;
            break;
        case Place::Attribute:
            m_AttributeMember = FindAttributeMember(key);
            m_Branch = key == choicesKey ? Branch::Choices : Branch::None;
            break;
        case Place::Choice:
            m_ChoiceMember = FindChoiceMember(key);
            break;
        case Place::RuleEntry:
            m_Branch = key == Schema::Name(Schema::RuleKey::Dependency) ? Branch::Rule : Branch::None;
            break;
        case Place::Rule:
            m_RuleMember = FindRuleMember(key);
            m_Branch = key == Schema::Name(Schema::DependencyKey::MapFrom) ? Branch::Terms : Branch::None;
            break;
        case Place::Term:
            m_TermMember = FindTermMember(key);
            break;
        default:
            break;
        }
    }

    /** Meets a value, before what is in it, and says which place an object or list opens. */
    Place Meet(Kind kind, const JsonScalar& scalar)
    {
        switch (m_Place) {
        case Place::Document:
            m_RootIsObject = kind == Kind::Object;
            return m_RootIsObject ? Place::Root : Place::Ignored;
        case Place::Attributes:
            return MeetAttribute(kind);
        case Place::Choices:
            m_Choice = {};
            return kind == Kind::Object ? Place::Choice : Place::Ignored;
        case Place::Rules:
            return MeetRule(kind);
        case Place::Terms:
            m_Rule.MapFrom.emplace_back();
            return kind == Kind::Object ? Place::Term : Place::Ignored;
        case Place::Attribute:
            Fill(m_AttributeMember, m_Content.Attributes.back(), scalar);
            return MeetBranch(kind);
        case Place::Rule:
            Fill(m_RuleMember, m_Rule, scalar);
            return MeetBranch(kind);
        case Place::Root:
        case Place::Entries:
        case Place::RuleEntry:
            return MeetBranch(kind);
        case Place::Choice:
            Fill(m_ChoiceMember, m_Choice, scalar);
            break;
        case Place::Term:
            Fill(m_TermMember, m_Rule.MapFrom.back(), scalar);
            break;
        case Place::Ignored:
            break;
        }
        return Place::Ignored;
    }

    Place MeetBranch(Kind kind)
    {
        switch (m_Branch) {
        case Branch::Entries:
            m_Content = {};
            m_Content.AttributesDefect = noAttributes;
            m_AttributeCount = 0;
            m_RuleCount = 0;
            return kind == Kind::Object ? Place::Entries : Place::Ignored;
        case Branch::Attributes:
            m_Content.Attributes.clear();
            m_AttributeCount = 0;
            m_Content.AttributesDefect = kind == Kind::List ? "" : attributesAreNoList;
            return kind == Kind::List ? Place::Attributes : Place::Ignored;
        case Branch::Rules:
            m_Content.Rules.clear();
            m_RuleCount = 0;
            m_Content.Dependencies = kind == Kind::List ? DependencyList::Present : DependencyList::Unreadable;
            return kind == Kind::List ? Place::Rules : Place::Ignored;
        case Branch::Choices:
            m_Content.Attributes.back().Value.clear();
            return kind == Kind::List ? Place::Choices : Place::Ignored;
        case Branch::Rule:
            m_Rule = {};
            return kind == Kind::Object ? Place::Rule : Place::Ignored;
        case Branch::Terms:
            m_Rule.MapFrom.clear();
            return kind == Kind::List ? Place::Terms : Place::Ignored;
        case Branch::None:
            break;
        }
        return Place::Ignored;
    }

    /** What is no object gives a record with nothing in it. */
    Place MeetAttribute(Kind kind)
    {
        if (++m_AttributeCount > Limits::attributes) {
            return Place::Ignored;
        }
        m_Content.Attributes.emplace_back();
        return kind == Kind::Object ? Place::Attribute : Place::Ignored;
    }

    Place MeetRule(Kind kind)
    {
        m_Rule = {};
        ++m_RuleCount;
        return kind == Kind::Object && m_RuleCount <= Limits::rules ? Place::RuleEntry : Place::Ignored;
    }

    template <class Reader, class Record>
    static void Fill(const Reader* reader, Record& record, const JsonScalar& scalar)
    {
        if (reader != nullptr) {
            reader->Reset(record); // it may have been there before
            reader->Read(record, scalar);
        }
    }

    void Take(const JsonScalar& scalar) { Meet(Kind::Scalar, scalar); }

    void Open(Kind kind)
    {
        const Place opened = Meet(kind, {});
        m_Outer.push_back(m_Place);
        m_Place = opened;
    }

    void Close()
    {
        const Place closed = std::exchange(m_Place, m_Outer.back());
        m_Outer.pop_back();
        if (closed == Place::Choice) {
            AddChoice(m_Content.Attributes.back(), std::move(m_Choice));
        } else if (closed == Place::RuleEntry) {
            CompleteRule(m_Rule);
            if (!m_Rule.MapFrom.empty()) {
                m_Rule.Position = m_RuleCount - 1;
                m_Content.Rules.push_back(std::move(m_Rule));
            }
        }
    }

    RegistryContent m_Content{{}, noAttributes, DependencyList::Missing, {}};
    bool m_RootIsObject = false;
    std::size_t m_AttributeCount = 0;
    std::size_t m_RuleCount = 0;
    Place m_Place = Place::Document;
    std::vector<Place> m_Outer;
    std::string m_Parts; // of a key or text that the parser hands over in pieces
    DependencyRule m_Rule;
    RedfishConfigValueEntryStru m_Choice;

    // The member that the next value belongs to; at most one is set.
    Branch m_Branch = Branch::None;
    const MemberReader<RedfishConfigSettingInfoStru>* m_AttributeMember = nullptr;
    const MemberReader<RedfishConfigValueEntryStru>* m_ChoiceMember = nullptr;
    const MemberReader<DependencyRule>* m_RuleMember = nullptr;
    const MemberReader<MapFromTerm>* m_TermMember = nullptr;
};

} // namespace

RegistryContent ReadRegistryText(std::string_view text)
{
    if (text.size() > Limits::registryBytes) {
        throw std::runtime_error("The registry is longer than " + std::to_string(Limits::registryBytes) + " bytes.");
    }
    json::parse_options options;
    options.max_depth = Limits::registryDepth;
    json::basic_parser<Reading> parser(options);
    json::error_code error;
    const std::size_t parsed = parser.write_some(false, text.data(), text.size(), error);
    if (error || parsed < text.size()) {
        json::monotonic_resource storage;
        json::parse({text.data(), text.size()}, &storage, options); // throws, with the whole reason
        throw std::runtime_error("The registry is not JSON: " + error.message());
    }
    return parser.handler().Finish();
}

} // namespace RedfishConfig
