#include "PatchBody.h"

#include "TypedValue.h"

#include <utility>

namespace RedfishConfig::App {

namespace {

/** The value itself: the library puts texts between quotes and escapes nothing. */
std::string WithoutQuotes(const std::string& patchText)
{
    const bool isQuoted = patchText.size() >= 2 && patchText.front() == '"' && patchText.back() == '"';
    return isQuoted ? patchText.substr(1, patchText.size() - 2) : patchText;
}

} // namespace

std::string PatchBody::Add(const Setting& setting, const std::string& patchText)
{
    std::optional<boost::json::value> value = TypedValue(setting, WithoutQuotes(patchText));
    if (!value) {
        return "the value cannot be written as JSON of type " + std::string(setting.Type());
    }
    m_HasPassword = m_HasPassword || setting.IsPassword();
    m_Attributes[setting.Name()] = std::move(*value);
    return "";
}

} // namespace RedfishConfig::App
