#include "JsonPointer.h"

namespace RedfishConfig::Client {

std::string Member(const std::string& pointer, std::string_view key)
{
    std::string member = pointer + "/";
    for (const char character : key) {
        if (character == '~') {
            member += "~0";
        } else if (character == '/') {
            member += "~1";
        } else {
            member += character;
        }
    }
    return member;
}

std::string Element(const std::string& pointer, std::size_t position)
{
    return pointer + "/" + std::to_string(position);
}

} // namespace RedfishConfig::Client
