#pragma once

#include "../Limits.h"

#include <RedfishConfig/Client/Finding.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/** Collects what is found in one document. */
class Findings {
public:
    explicit Findings(std::vector<Finding>& list, Document document = Document::Registry)
        : m_List(list), m_Document(document)
    {
    }

    void Add(Severity level, FindingKind kind, std::string pointer, std::string found, std::string consequence)
    {
        CutPointer(pointer);
        m_List.push_back({level, kind, m_Document, std::move(pointer), std::move(found), std::move(consequence),
                          m_Attribute, m_Rule});
    }

    /** What follows is about this attribute, and about this rule where there is one. */
    void About(std::string_view attribute, std::optional<std::size_t> rule = std::nullopt)
    {
        m_Attribute = attribute.size() <= Limits::pointerBytes ? attribute : std::string_view();
        m_Rule = rule;
    }

private:
    /** To what is around the value, as deep as a pointer of bearable length reaches: it stands in each finding. */
    static void CutPointer(std::string& pointer)
    {
        if (pointer.size() > Limits::pointerBytes) {
            pointer.resize(pointer.rfind('/', Limits::pointerBytes));
        }
    }

    std::vector<Finding>& m_List;
    Document m_Document;
    std::string m_Attribute;
    std::optional<std::size_t> m_Rule;
};

} // namespace RedfishConfig::Client
