#pragma once

#include "../intake/Findings.h"
#include "../intake/KeyNames.h"
#include "NameTable.h"

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Rule.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/** Reads single terms of rules. What has no meaning becomes an Unknown condition, with a finding. */
class TermReader {
public:
    TermReader(const std::vector<Attribute>& attributes, const NameTable& names, Findings& findings);

    /** What follows are the terms of the rule at this position of "Dependencies", to which @p list points. */
    void Begin(const std::string& list, std::size_t position);

    Condition Read(const KeyedObject<TermKey>& term);

private:
    Condition ReadTest(const KeyedObject<TermKey>& term, std::string name, Comparison comparison, Property property);
    Condition ReadFlagTest(Test test, const Attribute& source);
    Condition ReadValueTest(Test test, const JsonValue& operand, const Attribute& source);
    void CheckOperand(const Test& test, const JsonValue& operand, const Attribute& source);
    bool IsAChoice(std::size_t attribute, const std::string& text);
    Condition Refuse(FindingKind kind, std::string cause, const std::string& source = {});
    void ReportUnknownSource(const std::string& name);

    const std::vector<Attribute>& m_Attributes;
    const NameTable& m_Names;
    Findings& m_Findings;
    std::string Pointer() const;

    const std::string* m_List = nullptr;
    std::size_t m_Position = 0;
    std::vector<std::string> m_UnknownSources;                // that the rule has terms on, and that are reported
    std::vector<std::vector<std::string_view>> m_ChoiceNames; // by attribute, in order; filled when asked for
};

} // namespace RedfishConfig::Client
