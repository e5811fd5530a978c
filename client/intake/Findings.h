#pragma once

#include "../Limits.h"

#include <RedfishConfig/Client/Finding.h>

#include <cstddef>
#include <map>
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

    /** Of one severity and kind the first are kept, and the others counted. */
    void Add(Severity level, FindingKind kind, std::string pointer, std::string found, std::string consequence)
    {
        if (m_Kinds[{level, kind}].Listed == Limits::findingsOfKind) {
            AddUnlisted(level, kind, 1);
            return;
        }
        ++m_Kinds[{level, kind}].Listed;
        CutPointer(pointer);
        m_List.push_back({level, kind, m_Document, std::move(pointer), std::move(found), std::move(consequence),
                          m_Attribute, m_Rule, 1, false});
    }

    /** Counts findings that are not listed, in one finding of their severity and kind. */
    void AddUnlisted(Severity level, FindingKind kind, std::size_t count)
    {
        OfKind& known = m_Kinds[{level, kind}];
        if (!known.Counting) {
            known.Counting = m_List.size();
            m_List.push_back(
                {level, kind, m_Document, "", "", "only their number is reported", "", std::nullopt, 0, true});
        }
        Finding& counting = m_List[*known.Counting];
        counting.Count += count;
        counting.Found = std::to_string(counting.Count) + " more of this kind";
    }

    /** What follows is about this attribute, and about this rule where there is one. */
    void About(std::string_view attribute, std::optional<std::size_t> rule = std::nullopt)
    {
        m_Attribute = attribute.size() <= Limits::pointerBytes ? attribute : std::string_view();
        m_Rule = rule;
    }

private:
    struct OfKind {
        std::size_t Listed = 0;
        std::optional<std::size_t> Counting; ///< the place in the list of the finding that counts the others
    };

    /** To what is around the value, as deep as a pointer of bearable length reaches: it stands in each finding. */
    static void CutPointer(std::string& pointer)
    {
        if (pointer.size() > Limits::pointerBytes) {
            pointer.resize(pointer.rfind('/', Limits::pointerBytes));
            pointer.shrink_to_fit(); // a key may be as long as the document
        }
    }

    std::vector<Finding>& m_List; // grows at its end alone
    std::map<std::pair<Severity, FindingKind>, OfKind> m_Kinds;
    Document m_Document;
    std::string m_Attribute;
    std::optional<std::size_t> m_Rule;
};

} // namespace RedfishConfig::Client
