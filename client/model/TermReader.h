#pragma once

#include "../intake/Findings.h"
#include "../intake/KeyNames.h"
#include "ChoiceNumbers.h"
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
    TermReader(const std::vector<Attribute>& attributes, const NameTable& names, ChoiceNumbersOfAll& choices,
               Findings& findings);

    /** What follows are the terms of the rule at this position of "Dependencies", to which @p list points. */
    void Begin(const std::string& list, std::size_t position);

    Condition Read(const KeyedObject<TermKey>& term);

private:
    Condition ReadTest(const KeyedObject<TermKey>& term, std::string_view name, Comparison comparison,
                       Property property);
    Condition ReadFlagTest(Test test, const Attribute& source);
    Condition ReadValueTest(Test test, const JsonValue& operand, const Attribute& source);
    bool IsNumber(const Test& test);
    void CheckOperand(const Test& test, const JsonValue& operand, const Attribute& source);
    Condition Refuse(FindingKind kind, std::string cause, std::string_view source = {});
    void ReportUnknownSource(std::string_view name);
    std::string Pointer() const;

    const std::vector<Attribute>& m_Attributes;
    const NameTable& m_Names;
    ChoiceNumbersOfAll& m_Choices;
    Findings& m_Findings;
    const std::string* m_List = nullptr;
    std::size_t m_Position = 0;
    std::vector<std::string> m_UnknownSources; // that the rule has terms on, and that are reported
};

} // namespace RedfishConfig::Client
