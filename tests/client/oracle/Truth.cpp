#include "Forms.h"
#include "Oracle.h"

// Whether the condition of a rule holds. A term that does not count has no truth; what it is joined with stays.

namespace Oracle {

namespace {

std::optional<Truth> Join(std::optional<Truth> left, const std::string& word, std::optional<Truth> right)
{
    if (!left || !right) {
        return left ? left : right;
    }
    return word == "and" ? And(*left, *right) : Or(*left, *right);
}

std::string ConditionOf(const json::value& term)
{
    const std::string condition = Folded(TextMember(term, "MapFromCondition"));
    return condition == "eq" ? "equ" : condition;
}

bool IsNull(const json::value* operand)
{
    return operand == nullptr || operand->is_null();
}

} // namespace

Truth Registry::OfRule(std::size_t position, const SettingValueMap& now) const
{
    const json::value* map = Member(*m_Rules.at(position).Published, "Dependency");
    if (map == nullptr || !HasForm(ListMember(*map, "MapFrom"))) {
        return Truth::Unknown;
    }
    // with no term that counts the rule asks nothing, and never fires
    return OfList(ListMember(*map, "MapFrom"), now).value_or(Truth::False);
}

/** Whether this list and those inside of it have a form. */
bool Registry::HasForm(const json::array& terms) const
{
    return FormOf(terms, !m_HasJoiners) != Form::None &&
           std::all_of(terms.begin(), terms.end(), [this](const json::value& term) {
               return Member(term, "Subexpressions") == nullptr || HasForm(ListMember(term, "Subexpressions"));
           });
}

std::optional<Truth> Registry::OfList(const json::array& terms, const SettingValueMap& now) const
{
    const Form form = FormOf(terms, !m_HasJoiners);
    std::vector<std::optional<Truth>> stack;
    for (const json::value& term : terms) {
        stack.push_back(OfTermWithNot(term, now));
        for (const std::string& word : form == Form::StackOrder ? JoinersOf(term).Words : std::vector<std::string>()) {
            const std::optional<Truth> right = stack.back();
            stack.pop_back();
            stack.back() = Join(stack.back(), word, right);
        }
    }
    // what is still there is joined from the right: by the joiners of the earlier terms, or, without any, by "or"
    while (stack.size() > 1) {
        const std::optional<Truth> right = stack.back();
        stack.pop_back();
        const std::string word = form == Form::Any ? "or" : JoinersOf(terms[stack.size() - 1]).Words.at(0);
        stack.back() = Join(stack.back(), word, right);
    }
    return stack.back();
}

std::optional<Truth> Registry::OfTermWithNot(const json::value& term, const SettingValueMap& now) const
{
    std::optional<Truth> truth;
    if (Member(term, "Subexpressions") != nullptr) {
        truth = OfList(ListMember(term, "Subexpressions"), now);
    } else if (TextMember(term, "MapFromAttribute") != "SYSACS") {
        truth = OfTerm(term, now);
    }
    return truth && JoinersOf(term).IsNegated ? Not(*truth) : truth;
}

Truth Registry::OfTerm(const json::value& term, const SettingValueMap& now) const
{
    const Attribute* attribute = Find(TextMember(term, "MapFromAttribute"));
    if (attribute == nullptr) {
        return Truth::Unknown;
    }
    const std::string property = Folded(TextMember(term, "MapFromProperty"));
    if (std::any_of(Flags().begin(), Flags().end(),
                    [&property](const std::string& flag) { return Folded(flag) == property; })) {
        return OfFlagTerm(*attribute, term);
    }
    const bool isReadable = property == "currentvalue" && attribute->Type != Kind::Password;
    return isReadable ? OfValueTerm(*attribute, term, now) : Truth::Unknown;
}

/** A flag that is missing is false. What is compared with no boolean is unknown. */
Truth Registry::OfFlagTerm(const Attribute& attribute, const json::value& term)
{
    const json::value* published = Member(*attribute.Published, TextMember(term, "MapFromProperty"));
    const bool flag = published != nullptr && FlagOf(ValueOf(*published)).value_or(false);
    const json::value* operand = Member(term, "MapFromValue");
    const std::optional<bool> wanted = IsNull(operand) ? std::nullopt : FlagOf(ValueOf(*operand));
    const std::string condition = ConditionOf(term);
    if (!wanted || (condition != "equ" && condition != "neq")) {
        return Truth::Unknown;
    }
    return Of((flag == *wanted) == (condition == "equ"));
}

Truth Registry::OfValueTerm(const Attribute& attribute, const json::value& term, const SettingValueMap& now) const
{
    const std::string condition = ConditionOf(term);
    const bool isEquality = condition == "equ" || condition == "neq";
    const json::value* operand = Member(term, "MapFromValue");
    const SettingValue held = Held(attribute, now);
    if (IsNull(operand)) {
        return isEquality ? Of(!held.has_value() == (condition == "equ")) : Truth::Unknown;
    }
    if (!held || operand->is_array() || operand->is_object()) {
        return Truth::Unknown;
    }
    if (isEquality) {
        return Of(AreEqual(attribute, held, ValueOf(*operand)) == (condition == "equ"));
    }
    return OfOrder(attribute, condition, held, ValueOf(*operand));
}

/**
 * The value that a text means, of an enumeration: what is no value but the other name of one choice, in all its entries
 * alone, is the value of that choice.
 */
SettingValue Registry::Meant(const Attribute& attribute, const SettingValue& value)
{
    if (attribute.Type != Kind::Enumeration || !value) {
        return value;
    }
    const std::string text = TextOf(value);
    std::multimap<std::string, std::string> othersOf; // by the name that values use
    for (const Choice& choice : attribute.Choices) {
        othersOf.emplace(attribute.UsesDisplayNames ? choice.ShownName() : choice.OwnName(),
                         attribute.UsesDisplayNames ? choice.OwnName() : choice.ShownName());
    }
    std::set<std::string> meant;
    for (const auto& [own, other] : othersOf) {
        if (other == text) {
            meant.insert(own);
        }
    }
    if (othersOf.count(text) > 0 || meant.size() != 1) {
        return value;
    }
    const auto [first, last] = othersOf.equal_range(*meant.begin());
    const bool isClear = std::all_of(first, last, [&text](const auto& entry) { return entry.second == text; });
    return isClear ? SettingValue(*meant.begin()) : value;
}

/** Only whole numbers have an order, also those that are written as texts. */
Truth Registry::OfOrder(const Attribute& attribute, const std::string& condition, const SettingValue& held,
                        const SettingValue& wanted)
{
    const std::optional<std::int64_t> left = NumberOf(Meant(attribute, held));
    const std::optional<std::int64_t> right = NumberOf(Meant(attribute, wanted));
    if (attribute.Type == Kind::Boolean || !left || !right) {
        return Truth::Unknown;
    }
    if (condition == "gtr") {
        return Of(*left > *right);
    }
    if (condition == "geq") {
        return Of(*left >= *right);
    }
    if (condition == "lss") {
        return Of(*left < *right);
    }
    return condition == "leq" ? Of(*left <= *right) : Truth::Unknown;
}

SettingValue Registry::Held(const std::string& setting, const SettingValueMap& now) const
{
    return Held(At(setting), now);
}

SettingValue Registry::Held(const Attribute& attribute, const SettingValueMap& now) const
{
    const auto found = now.find(attribute.Name);
    if (found != now.end()) {
        return found->second;
    }
    const json::value* own = Member(*attribute.Published, "CurrentValue");
    return own != nullptr ? ValueOf(*own) : std::nullopt;
}

bool Registry::SameValue(const std::string& setting, const SettingValue& left, const SettingValue& right) const
{
    return AreEqual(At(setting), left, right);
}

bool Registry::AreEqual(const Attribute& attribute, const SettingValue& left, const SettingValue& right)
{
    if (!left || !right) {
        return left.has_value() == right.has_value();
    }
    if (attribute.Type == Kind::Integer && NumberOf(left) && NumberOf(right)) {
        return NumberOf(left) == NumberOf(right);
    }
    if (attribute.Type == Kind::Boolean && FlagOf(left) && FlagOf(right)) {
        return FlagOf(left) == FlagOf(right);
    }
    if (TextOf(left) == TextOf(right)) {
        return true;
    }
    const std::set<std::size_t> ofRight = Named(attribute, TextOf(right));
    const std::set<std::size_t> ofLeft = Named(attribute, TextOf(left));
    return std::any_of(ofLeft.begin(), ofLeft.end(),
                       [&ofRight](std::size_t position) { return ofRight.count(position) > 0; });
}

/**
 * The choices that a text names, by either name. A text that is the name of one choice and the display name of another
 * means what the values of the attribute mean by it: the display name where they are display names, else the name.
 */
std::set<std::size_t> Registry::Named(const Attribute& attribute, const std::string& text)
{
    std::set<std::size_t> byName;
    std::set<std::size_t> byDisplayName;
    for (std::size_t position = 0; position < attribute.Choices.size(); ++position) {
        if (attribute.Choices[position].Name == text) {
            byName.insert(position);
        }
        if (attribute.Choices[position].DisplayName == text) {
            byDisplayName.insert(position);
        }
    }
    std::set<std::size_t> either = byName;
    either.insert(byDisplayName.begin(), byDisplayName.end());
    const bool isOfTwo = !byName.empty() && !byDisplayName.empty() && either.size() > 1;
    return !isOfTwo ? either : attribute.UsesDisplayNames ? byDisplayName : byName;
}

} // namespace Oracle
