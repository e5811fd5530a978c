#pragma once

#include "Documents.h"
#include "ModelStatus.h"
#include "System.h"
#include "ValueChecker.h"

#include <functional>

namespace RedfishConfig::App {

/** A system whose rules are those of the model: what is not known is never promised. */
class ModelSystem : public System, private RecordSource {
public:
    /** @p documents must outlive the system. */
    ModelSystem(const Documents& documents, const SystemOptions& options, Secrets& secrets);

    const Setting* Find(const std::string& name) const override;
    Answer Ask(Question question, const std::string& name) override;
    std::vector<Answer> AskAll(Question question, Detail detail) override;
    Answer PreparePatch(const std::string& name, const std::string& value, RedfishConfig::filterAction action) override;
    Answer PrepareDefault(const std::string& name) override;
    std::map<std::string, std::string> SaveValues(RedfishConfig::filterAction action) override;
    Restored Restore(const std::map<std::string, std::string>& saved, bool withSystemUnique) override;
    bool AreSame(const Setting& setting, const std::string& left, const std::string& right) const override;
    SettingStatus StatusOf(const Setting& setting) override;
    std::string DoubtAboutReset(const Setting& setting) const override;
    std::vector<SettingStatus> AllStatus(Detail detail) override;
    std::map<std::string, std::vector<std::string>> Groups() override;
    boost::json::object Identity() const override;
    std::string PasswordRefusal(const std::string& name) const override;
    bool TellsRules() const override { return true; }

private:
    SettingRecord RecordOf(const Setting& setting) const override;
    Answer NotFound(const std::string& name) const;
    Answer AnswerAbout(Question question, const Setting& setting, Detail detail);
    void AnswerValue(const RedfishConfig::Client::Value& value, const char* what, Answer& answer) const;
    void AnswerChoices(std::size_t attribute, Answer& answer) const;
    void AnswerDescription(std::size_t attribute, Answer& answer) const;
    std::string DoubtAboutDefault(std::size_t attribute) const;
    ValueChecker CheckerOf(const Setting& setting);
    Answer Prepare(const Setting& setting, RedfishConfig::filterAction action, int refusalCode,
                   const std::function<CheckedValue(ValueChecker&)>& check);

    const RedfishConfig::Client::Model& m_Model;
    const RedfishConfig::Client::SystemValues& m_Values;
    const RedfishConfig::Client::Evaluation& m_Evaluation;
    ModelStatus m_Status;
    std::vector<std::size_t> m_Places; // by attribute: where it is in Settings(), and beyond the end for no setting
};

} // namespace RedfishConfig::App
