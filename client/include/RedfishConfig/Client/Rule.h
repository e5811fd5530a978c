#pragma once

/**
 * @file
 * A published rule: when some attributes have some values, a property of another attribute takes one.
 */

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Value.h>
#include <RedfishConfig/Export.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace RedfishConfig::Client {

/** No attribute: a name that the registry does not define. */
inline constexpr std::size_t noAttribute = std::numeric_limits<std::size_t>::max();

/** "MapFromCondition". */
enum class Comparison : std::uint8_t { Equal, NotEqual, Greater, GreaterOrEqual, Less, LessOrEqual };

/** As the schema writes it: "EQU". */
REDFISHCONFIG_EXPORT std::string_view Name(Comparison comparison);

/** As a person reads it: "==". */
REDFISHCONFIG_EXPORT std::string_view Sign(Comparison comparison);

/** A question about one attribute: its value, or one of its flags, compared with an operand. */
struct Test {
    std::size_t Source = noAttribute; ///< index in Model::Attributes()
    std::string Name;                 ///< of the source; as the rule writes it where no attribute has that name
    Property Of = Property::CurrentValue;
    Comparison Compare = Comparison::Equal;
    Value Operand; ///< of the source's type where it can be; none asks whether there is a value
};

/** Whether a comparison asks whether values are the same; else it is an order. */
constexpr bool IsEquality(Comparison comparison)
{
    return comparison == Comparison::Equal || comparison == Comparison::NotEqual;
}

/** When a rule holds. */
struct Condition {
    enum class Kind : std::uint8_t {
        All,     ///< every part that is not Ignored holds
        Any,     ///< some part holds
        Not,     ///< the only part does not hold
        Test,    ///< a question about an attribute
        Ignored, ///< a question about the controller itself, which does not count
        Unknown, ///< something without a meaning; whether it holds is never known
    };

    Kind What = Kind::Unknown;
    std::vector<Condition> Parts; ///< of All, Any and Not; of an Unknown what it reads, where it cannot be joined
    Client::Test Asked; ///< of a Test; of an Unknown its Source and Name tell what is read, where that is known
    std::string Cause;  ///< of an Unknown: why
};

/** Whether any part of a condition counts; else it is about the controller alone, and never holds. */
REDFISHCONFIG_EXPORT bool Counts(const Condition& condition);

/** The condition as a person reads it: "SysProfile != Custom and (A == 1 or not B > 2)". Passwords are covered. */
REDFISHCONFIG_EXPORT std::string ToText(const Condition& condition);

/** How the terms of a rule are joined. Recognised by structure, and by the other rules of its registry. */
enum class RuleForm : std::uint8_t {
    SingleTerm,      ///< one term, nothing to join
    JoinerOnEarlier, ///< a joiner joins its term to the following one; grouped to the right
    JoinerOnLater,   ///< a joiner joins its term to what is before it; left to right, without precedence
    StackOrder,      ///< a term is pushed, then its joiners (perhaps none, or several) are applied to the stack
    NoJoiner,        ///< any of the terms; only where no rule of the registry has a joiner
    Nested,          ///< has "Subexpressions" or "NOT"; each list of terms is joined in one of the ways above
    None,            ///< none of these; whether such a rule holds is never known
};

/** A word that stays the same from version to version, for instance "stack-order". */
REDFISHCONFIG_EXPORT std::string_view Word(RuleForm form);

/** What a property becomes: a value, or for Property::Choices a list of choices by either of their names. */
using Outcome = std::variant<Value, std::vector<std::string>>;

/** A rule whose target and property exist. */
struct Rule {
    std::size_t Position = 0;             ///< in the published "Dependencies"
    std::size_t Target = noAttribute;     ///< index in Model::Attributes(), unless the target is a menu
    std::vector<std::size_t> TargetMenus; ///< indices in Model::Menus(): the rule counts for every setting below them
    std::string TargetName;
    Property Decides = Property::ReadOnly;
    Client::Outcome Outcome;
    RuleForm Form = RuleForm::None;
    Condition When;
    std::string DependencyFor; ///< as published; may name what triggers a rule for CurrentValue
};

/** Whether a rule makes a flag true. */
REDFISHCONFIG_EXPORT bool GivesTrue(const Rule& rule);

/** The rule in a line: "3: BootMode.ReadOnly = true when SecureBoot == Enabled". Passwords are covered. */
REDFISHCONFIG_EXPORT std::string ToText(const Rule& rule);

} // namespace RedfishConfig::Client
