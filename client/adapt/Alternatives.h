#pragma once

#include "TestStates.h"

#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Client/Rule.h>
#include <RedfishConfig/Client/ValueSet.h>

#include <cstddef>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

/** An attribute is in one of these states. */
struct Requirement {
    std::size_t Attribute = noAttribute;
    ValueSet States;
    Property Flag = Property::CurrentValue; ///< else a flag of the attribute, which is always as required

    friend bool operator==(const Requirement& left, const Requirement& right)
    {
        return left.Attribute == right.Attribute && left.Flag == right.Flag && left.States == right.States;
    }
};

/** All of these are met; each attribute has one at most. In the order of the condition. */
using Alternative = std::vector<Requirement>;

/** Why a formula cannot hold something. */
struct Defect {
    FindingKind Kind = FindingKind::Inexpressible;
    std::string Why; ///< a clause without its subject, a rule; empty when there is none

    explicit operator bool() const { return !Why.empty(); }
};

/** A condition as alternatives, any of which is met. None at all is never met, one without requirements always. */
struct Alternatives {
    std::vector<Alternative> Any;
    Client::Defect Reason; ///< why there are none in spite of the condition

    static Alternatives Never() { return {}; }
    static Alternatives Always() { return {{Alternative()}, {}}; }
    bool IsNever() const { return Any.empty() && !Reason; }
    bool IsAlways() const { return !Any.empty() && Any.front().empty(); }
};

/** What a condition is asked for. It is one of true, unknown and false. */
enum class Wanted { True, NotFalse, False, NotTrue };

Alternatives Both(Alternatives left, Alternatives right);
Alternatives Either(std::vector<Alternatives> parts);

/** The alternatives in which a condition is as asked. Tests of flags are constants. */
Alternatives Resolve(const Condition& condition, Wanted wanted, TestStates& known);

} // namespace RedfishConfig::Client
