#pragma once

#include "Input.h"
#include "System.h"

#include <RedfishConfig/RedfishConfigSettingManager.h>

namespace RedfishConfig::App {

/**
 * A system whose documents are taken as published: the library's manager with every setting generated, so that every
 * rule counts, and what only the registry's document says, the menus and the order.
 */
class CoreSystem : public System {
public:
    /** @throws InputError when the library cannot read the registry. */
    CoreSystem(RegistryInput registry, RedfishConfig::SettingValueMap values, const SystemOptions& options,
               Secrets& secrets);

    const Setting* Find(const std::string& name) const override;
    Answer Ask(Question question, const std::string& name) override;
    std::vector<Answer> AskAll(Question question, Detail detail) override;
    Answer PreparePatch(const std::string& name, const std::string& value, RedfishConfig::filterAction action) override;
    Answer PrepareDefault(const std::string& name) override;
    std::map<std::string, std::string> SaveValues(RedfishConfig::filterAction action) override;
    Restored Restore(const std::map<std::string, std::string>& saved, bool withSystemUnique) override;
    bool AreSame(const Setting& setting, const std::string& left, const std::string& right) const override;
    SettingStatus StatusOf(const Setting& setting) override;
    std::vector<SettingStatus> AllStatus(Detail detail) override;
    std::map<std::string, std::vector<std::string>> Groups() override;
    boost::json::object Identity() const override { return m_Identity; }
    std::string PasswordRefusal(const std::string& name) const override;
    bool TellsRules() const override { return false; }

private:
    void TakeSettings(const RegistryInput& registry);
    void Complete(Question question, Answer& answer) const;
    Answer AnswerAbout(const std::string& name);
    void ConcealNewValue(Answer& answer, const std::string& value) const;
    SettingStatus Conceal(const RedfishConfig::SettingStatus& status) const;

    boost::json::object m_Identity;
    RedfishConfig::RedfishConfigSettingManager m_Manager;
    std::map<std::string, std::size_t, RedfishConfig::CaseInsensitiveComparator> m_Index; // name to place in Settings()
};

} // namespace RedfishConfig::App
