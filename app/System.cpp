#include "System.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <utility>

namespace RedfishConfig::App {

using RedfishConfig::RedfishConfigResult;

void System::Arrange(std::vector<Setting> settings)
{
    m_Settings = std::move(settings);
    for (Setting& setting : m_Settings) { // menus that the registry does not describe are in the order of the settings
        Menu& menu = m_Menus.Place(setting.MenuPath().value_or(""));
        ++menu.Settings;
        setting.InMenu = &menu;
    }
    if (!m_Menus.GivesOrder()) {
        return;
    }
    m_Menus.Sort();
    const auto place = [this](const Setting& setting) {
        const bool isInMenu = setting.InMenu != &m_Menus.Root();
        return std::make_tuple(isInMenu ? setting.InMenu->Rank : std::numeric_limits<std::size_t>::max(),
                               setting.DisplayOrder().value_or(std::numeric_limits<std::int64_t>::max()));
    };
    std::stable_sort(m_Settings.begin(), m_Settings.end(),
                     [&](const Setting& left, const Setting& right) { return place(left) < place(right); });
}

Answer Refusal(const std::string& name, const Setting* subject, int code, std::string message, std::string reason)
{
    Answer answer;
    answer.Name = name;
    answer.Subject = subject;
    answer.Result = {code, std::move(message)};
    answer.Reason = std::move(reason);
    return answer;
}

RedfishConfigResult WithMessage(RedfishConfigResult result)
{
    if (result != RedfishConfig::RESULT_SUCCEED && result.ErrorMsg().empty()) {
        const auto standard = RedfishConfig::ResultMessages().find(result);
        result.SetErrorMsg(standard != RedfishConfig::ResultMessages().end() ? standard->second : "No answer.");
    }
    return result;
}

} // namespace RedfishConfig::App
