#pragma once

#include "app/CoreSystem.h"
#include "app/ModelSystem.h"

#include "AppNames.h"
#include "ExitCode.h"
#include "Output.h"
#include "support/RegistryBuilder.h"

#include <boost/json/parse.hpp>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace RedfishConfigTool {

inline void PrintTo(ExitCode code, std::ostream* out)
{
    *out << "exit " << static_cast<int>(code);
}

} // namespace RedfishConfigTool

/** What the tests of commands share: a system from a registry in the test, and what a command made of it. */
namespace ToolTest {

using namespace RedfishConfigTool;
using RegistryTest::RegistryBuilder;
using RegistryTest::Term;

/** What a command left behind. */
struct Outcome {
    ExitCode Code = ExitCode::Answered;
    std::string Answers;
    std::vector<std::string> Complaints;

    boost::json::value Json() const { return boost::json::parse(Answers); }
};

/** Runs a command: @p run is called with the system and the output. */
template <class Run>
Outcome RunOn(System& system, Run run, const Presentation& presentation)
{
    std::ostringstream answers;
    Output output(answers, presentation);
    const ExitCode code = run(system, output);
    return {code, answers.str(), output.Complaints()};
}

inline Documents DocumentsFrom(const boost::json::value& registry, const RedfishConfig::SettingValueMap& values)
{
    namespace Client = RedfishConfig::Client;
    Client::ValuesDocument published;
    published.Values = values;
    return Understand({"registry.json", "", ""}, Client::ReadRegistryDocument(boost::json::serialize(registry)),
                      std::move(published), nullptr);
}

/** A system from a registry, with what it needs kept alive. */
class TestSystem {
public:
    explicit TestSystem(const boost::json::value& registry, const SystemOptions& options = {},
                        const RedfishConfig::SettingValueMap& values = {})
        : m_Documents(DocumentsFrom(registry, values)), m_System(m_Documents, options, m_Secrets)
    {
    }
    explicit TestSystem(const RegistryBuilder& registry, const SystemOptions& options = {},
                        const RedfishConfig::SettingValueMap& values = {})
        : TestSystem(registry.Json(), options, values)
    {
    }

    ModelSystem& operator*() { return m_System; }
    ModelSystem* operator->() { return &m_System; }

    template <class Run>
    Outcome Do(Run run, const Presentation& presentation = {})
    {
        return RunOn(m_System, run, presentation);
    }

private:
    Documents m_Documents;
    Secrets m_Secrets;
    ModelSystem m_System;
};

/** The same with the documents as published. */
class PublishedTestSystem {
public:
    explicit PublishedTestSystem(const boost::json::value& registry, const SystemOptions& options = {},
                                 const RedfishConfig::SettingValueMap& values = {})
        : m_Secrets(registry, values),
          m_System({"registry.json", boost::json::serialize(registry), registry}, values, options, m_Secrets)
    {
    }
    explicit PublishedTestSystem(const RegistryBuilder& registry, const SystemOptions& options = {},
                                 const RedfishConfig::SettingValueMap& values = {})
        : PublishedTestSystem(registry.Json(), options, values)
    {
    }

    CoreSystem& operator*() { return m_System; }
    CoreSystem* operator->() { return &m_System; }

    template <class Run>
    Outcome Do(Run run, const Presentation& presentation = {})
    {
        return RunOn(m_System, run, presentation);
    }

private:
    Secrets m_Secrets;
    CoreSystem m_System;
};

inline Presentation AsJson()
{
    Presentation presentation;
    presentation.Json = true;
    return presentation;
}

} // namespace ToolTest
