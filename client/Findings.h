#pragma once

#include <RedfishConfig/Client/Finding.h>

#include <string>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/** Collects what is found. */
class Findings {
public:
    explicit Findings(std::vector<Finding>& list) : m_List(list) {}

    void Add(Severity level, FindingKind kind, std::string place, std::string found, std::string done)
    {
        AddIn(Document::Registry, level, kind, std::move(place), std::move(found), std::move(done));
    }

    void AddIn(Document document, Severity level, FindingKind kind, std::string place, std::string found,
               std::string done)
    {
        m_List.push_back({level, kind, document, std::move(place), std::move(found), std::move(done)});
    }

private:
    std::vector<Finding>& m_List;
};

} // namespace RedfishConfig::Client
