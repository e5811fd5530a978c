#include "PatchBody.h"

#include "TypedValue.h"

#include <utility>

namespace RedfishConfigTool {

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

bool PatchBody::MayBeShown(Output& output) const
{
    const bool isSecret = m_HasPassword && output.Terminal();
    if (isSecret) {
        output.Complain("the body carries a password, which no screen shows: redirect the output");
    }
    return !isSecret;
}

} // namespace RedfishConfigTool
