#pragma once

#include "System.h"

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

inline RegistryInput InputFrom(const boost::json::value& registry)
{
    return {"registry.json", boost::json::serialize(registry), registry};
}

/** A system from a registry, with what it needs kept alive. */
class TestSystem {
public:
    explicit TestSystem(const boost::json::value& registry, const SystemOptions& options = {},
                        const RedfishConfig::SettingValueMap& values = {})
        : m_Secrets(registry, values), m_System(InputFrom(registry), values, options, m_Secrets)
    {
    }
    explicit TestSystem(const RegistryBuilder& registry, const SystemOptions& options = {},
                        const RedfishConfig::SettingValueMap& values = {})
        : TestSystem(registry.Json(), options, values)
    {
    }

    System& operator*() { return m_System; }
    System* operator->() { return &m_System; }

    /** Runs a command: @p run is called with the system and the output. */
    template <class Run>
    Outcome Do(Run run, const Presentation& presentation = {})
    {
        std::ostringstream answers;
        Output output(answers, presentation);
        const ExitCode code = run(m_System, output);
        return {code, answers.str(), output.Complaints()};
    }

private:
    Secrets m_Secrets;
    System m_System;
};

inline Presentation AsJson()
{
    Presentation presentation;
    presentation.Json = true;
    return presentation;
}

} // namespace ToolTest
