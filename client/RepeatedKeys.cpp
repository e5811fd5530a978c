#include "RepeatedKeys.h"

#include "Limits.h"
#include "Place.h"

#include <boost/json/basic_parser_impl.hpp>

#include <cstdint>
#include <unordered_set>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** What the parser meets. Only keys and the way to them are of interest. */
class KeyHandler {
public:
    static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
    static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);

    const RepeatedKeys& Result() const { return m_Result; }

    static bool on_document_begin(json::error_code& /*error*/) { return true; }
    static bool on_document_end(json::error_code& /*error*/) { return true; }
    bool on_object_begin(json::error_code& /*error*/) { return Open(false); }
    bool on_object_end(std::size_t /*size*/, json::error_code& /*error*/) { return Close(); }
    bool on_array_begin(json::error_code& /*error*/) { return Open(true); }
    bool on_array_end(std::size_t /*size*/, json::error_code& /*error*/) { return Close(); }
    bool on_key_part(json::string_view part, std::size_t /*size*/, json::error_code& /*error*/)
    {
        m_Key.append(part.data(), part.size());
        return true;
    }
    bool on_key(json::string_view part, std::size_t /*size*/, json::error_code& /*error*/)
    {
        m_Key.append(part.data(), part.size());
        Level& level = m_Levels.back();
        level.key = std::exchange(m_Key, {});
        if (!level.keys.insert(level.key).second) {
            ++m_Result.Count;
            if (m_Result.Places.size() < Limits::toldRepeatedKeys) {
                m_Result.Places.push_back(PlaceOfKey());
            }
        }
        return true;
    }
    static bool on_string_part(json::string_view /*part*/, std::size_t /*size*/, json::error_code& /*error*/)
    {
        return true;
    }
    bool on_string(json::string_view /*part*/, std::size_t /*size*/, json::error_code& /*error*/) { return Count(); }
    static bool on_number_part(json::string_view /*part*/, json::error_code& /*error*/) { return true; }
    bool on_int64(std::int64_t /*number*/, json::string_view /*text*/, json::error_code& /*error*/) { return Count(); }
    bool on_uint64(std::uint64_t /*number*/, json::string_view /*text*/, json::error_code& /*error*/)
    {
        return Count();
    }
    bool on_double(double /*number*/, json::string_view /*text*/, json::error_code& /*error*/) { return Count(); }
    bool on_bool(bool /*truth*/, json::error_code& /*error*/) { return Count(); }
    bool on_null(json::error_code& /*error*/) { return Count(); }
    static bool on_comment_part(json::string_view /*part*/, json::error_code& /*error*/) { return true; }
    static bool on_comment(json::string_view /*part*/, json::error_code& /*error*/) { return true; }

private:
    /** An object or a list that the parser is in. */
    struct Level {
        bool isList = false;
        std::size_t elements = 0; ///< of a list, so far
        std::string key;          ///< of an object, the latest
        std::unordered_set<std::string> keys;
    };

    bool Count()
    {
        if (!m_Levels.empty()) {
            ++m_Levels.back().elements;
        }
        return true;
    }

    bool Open(bool isList)
    {
        Count();
        m_Levels.push_back({isList, 0, {}, {}});
        return true;
    }

    bool Close()
    {
        m_Levels.pop_back();
        return true;
    }

    /** Down to the key, or as deep as a place of bearable length reaches. */
    std::string PlaceOfKey() const
    {
        std::string place;
        for (const Level& level : m_Levels) {
            std::string next = level.isList ? Element(place, level.elements - 1) : Member(place, level.key);
            if (next.size() > Limits::placeBytes) {
                break;
            }
            place = std::move(next);
        }
        return place;
    }

    std::vector<Level> m_Levels;
    std::string m_Key;
    RepeatedKeys m_Result;
};

} // namespace

RepeatedKeys FindRepeatedKeys(std::string_view text)
{
    json::parse_options options;
    options.max_depth = Limits::documentDepth;
    json::basic_parser<KeyHandler> parser(options);
    json::error_code error;
    parser.write_some(false, text.data(), text.size(), error);
    return parser.handler().Result();
}

} // namespace RedfishConfig::Client
