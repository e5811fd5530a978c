#pragma once

#include <RedfishConfig/Client/Rule.h>
#include <RedfishConfig/Client/SystemValues.h>
#include <RedfishConfig/Client/ValueSet.h>

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>

namespace RedfishConfig::Client {

/** The states of an attribute in which a test of its value is true, and in which it is false. Else it is unknown. */
struct StatesOfTest {
    ValueSet True, False;
    std::string Defect; ///< why they cannot be given: a clause; empty when they are
};

/** The states of attributes, as the values of one system use them. */
class TestStates {
public:
    explicit TestStates(const SystemValues& values) : m_Values(values) {}

    StatesOfTest Of(const Test& test);

    /** What values of its type an attribute has, its present value too, or none: what a formula must answer for. */
    const ValueSet& PossibleOf(std::size_t attribute);

    /** Whether the attribute's value is another name of several of its choices. */
    bool HoldsSeveralChoices(std::size_t attribute);

    const SystemValues& Values() const { return m_Values; }

private:
    /** The choices of an enumeration, as its values use them. */
    struct ChoiceTexts {
        std::set<std::string> Values;
        std::map<std::string, std::set<std::string>> ByOtherName; // no hash, for which names can be chosen to collide
    };
    const ChoiceTexts& ChoicesOf(std::size_t attribute);
    bool NamesTooMany(const Test& test);
    ValueSet EqualTo(const Test& test);
    StatesOfTest OrderOf(const Test& test);

    const SystemValues& m_Values;
    std::unordered_map<std::size_t, ChoiceTexts> m_Choices;
    std::unordered_map<std::size_t, ValueSet> m_Possible;
};

/** The only value in the set; nothing when there are none or several, or having none is in it. */
std::optional<Value> OnlyValueOf(const ValueSet& states);

} // namespace RedfishConfig::Client
