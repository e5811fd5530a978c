#include <RedfishConfig/Client/ValueSet.h>

#include "../Limits.h"
#include "../intake/Quote.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace RedfishConfig::Client {

namespace {

using Interval = ValueSet::Interval;
using Texts = std::set<std::string>;

constexpr std::int64_t minInteger = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t maxInteger = std::numeric_limits<std::int64_t>::max();

constexpr std::size_t namedItems = 8;

Texts Common(const Texts& left, const Texts& right)
{
    Texts common;
    std::set_intersection(left.begin(), left.end(), right.begin(), right.end(), std::inserter(common, common.end()));
    return common;
}

Texts Joined(const Texts& left, const Texts& right)
{
    Texts joined;
    std::set_union(left.begin(), left.end(), right.begin(), right.end(), std::inserter(joined, joined.end()));
    return joined;
}

Texts Without(const Texts& texts, const Texts& excluded)
{
    Texts left;
    std::set_difference(texts.begin(), texts.end(), excluded.begin(), excluded.end(), std::inserter(left, left.end()));
    return left;
}

/** Whether a text is in both, each being a list or the complement of one. Not every text of a long list is looked at.
 */
bool HaveTextInCommon(const Texts& left, bool isLeftComplement, const Texts& right, bool isRightComplement)
{
    if (isLeftComplement && isRightComplement) {
        return true; // there are more texts than any two lists have
    }
    if (isLeftComplement || (!isRightComplement && left.size() > right.size())) {
        return HaveTextInCommon(right, isRightComplement, left, isLeftComplement);
    }
    if (isRightComplement && left.size() > right.size()) {
        return true;
    }
    return std::any_of(left.begin(), left.end(),
                       [&](const std::string& text) { return (right.count(text) > 0) != isRightComplement; });
}

std::vector<Interval> Common(const std::vector<Interval>& left, const std::vector<Interval>& right)
{
    std::vector<Interval> common;
    auto one = left.begin();
    auto other = right.begin();
    while (one != left.end() && other != right.end()) {
        const std::int64_t first = std::max(one->first, other->first);
        const std::int64_t last = std::min(one->second, other->second);
        if (first <= last) {
            common.emplace_back(first, last);
        }
        if (one->second < other->second) {
            ++one;
        } else {
            ++other;
        }
    }
    return common;
}

/** The integers between and around the intervals. */
std::vector<Interval> Gaps(const std::vector<Interval>& intervals)
{
    std::vector<Interval> gaps;
    std::int64_t next = minInteger;
    for (const auto& [first, last] : intervals) {
        if (first > next) {
            gaps.emplace_back(next, first - 1);
        }
        if (last == maxInteger) {
            return gaps;
        }
        next = last + 1;
    }
    gaps.emplace_back(next, maxInteger);
    return gaps;
}

/** The integers that compare with the operand; nothing for == and !=, which are no orders. */
ValueSet Ordered(Comparison compare, std::int64_t operand)
{
    switch (compare) {
    case Comparison::Greater:
        return operand == maxInteger ? ValueSet::Nothing() : ValueSet::Integers(operand + 1, maxInteger);
    case Comparison::GreaterOrEqual:
        return ValueSet::Integers(operand, maxInteger);
    case Comparison::Less:
        return operand == minInteger ? ValueSet::Nothing() : ValueSet::Integers(minInteger, operand - 1);
    case Comparison::LessOrEqual:
        return ValueSet::Integers(minInteger, operand);
    default:
        return ValueSet::Nothing();
    }
}

ValueSet OfType(const Model& model, std::size_t index)
{
    const Attribute& attribute = model.Attributes()[index];
    switch (attribute.Type) {
    case AttributeType::Boolean:
        return ValueSet::Texts({"false", "true"});
    case AttributeType::Integer:
        return ValueSet::WithinBounds(model, index);
    case AttributeType::Enumeration: {
        Texts names;
        for (const Choice& choice : attribute.Choices) {
            names.insert(choice.Name);
        }
        return names.empty() ? ValueSet::AnyText() : ValueSet::Texts(std::move(names));
    }
    case AttributeType::String:
    case AttributeType::Password:
        return ValueSet::AnyText();
    case AttributeType::Unknown:
        break;
    }
    return ValueSet::Everything();
}

/** A text is quoted where its end, or what it is, would not be clear. */
std::string ItemText(const std::string& text)
{
    const bool isWord = !text.empty() && text.find_first_of(" \t\r\n\",") == std::string::npos;
    return Cut(isWord ? text : ToQuotedText(text), Limits::namedBytes);
}

std::string ItemText(const Interval& interval)
{
    const auto& [first, last] = interval;
    if (first == last) {
        return std::to_string(first);
    }
    if (first == minInteger) {
        return last == maxInteger ? "any integer" : std::to_string(last) + " or less";
    }
    return std::to_string(first) + (last == maxInteger ? " or more" : " to " + std::to_string(last));
}

/** "a", "a or b", "a, b or 10 to 20", "a, b or 12 more". */
std::string ListText(const Texts& texts, const std::vector<Interval>& intervals)
{
    const std::size_t count = texts.size() + intervals.size();
    std::vector<std::string> items;
    const auto add = [&items](const auto& list) {
        for (auto item = list.begin(); item != list.end() && items.size() < namedItems; ++item) {
            items.push_back(ItemText(*item));
        }
    };
    add(texts);
    add(intervals);
    if (count > items.size()) {
        items.push_back(std::to_string(count - items.size()) + " more");
    }
    std::string text;
    for (std::size_t item = 0; item < items.size(); ++item) {
        const bool isLast = item + 1 == items.size();
        text += (item == 0 ? "" : isLast ? " or " : ", ") + items[item];
    }
    return text;
}

std::string TextWithoutNone(const ValueSet& set)
{
    if (!set.IsComplementOfTexts()) {
        return ListText(set.ListedTexts(), set.Intervals());
    }
    const bool hasIntegers = !set.Intervals().empty();
    const std::string excluded = ListText(set.ListedTexts(), hasIntegers ? Gaps(set.Intervals()) : set.Intervals());
    return std::string(hasIntegers ? "anything" : "any text") + (excluded.empty() ? "" : " but " + excluded);
}

} // namespace

ValueSet ValueSet::Everything()
{
    return Nothing().Complement();
}

ValueSet ValueSet::NoValue()
{
    ValueSet set;
    set.m_NoValue = true;
    return set;
}

ValueSet ValueSet::Of(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&value)) {
        return Texts({*text});
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return Integers(*number, *number);
    }
    if (std::holds_alternative<bool>(value)) {
        return Texts({Client::ToText(value)});
    }
    return HasValue(value) ? Nothing() : NoValue();
}

ValueSet ValueSet::Integers(std::int64_t first, std::int64_t last)
{
    ValueSet set;
    if (first <= last) {
        set.m_Intervals.emplace_back(first, last);
    }
    return set;
}

ValueSet ValueSet::AnyInteger()
{
    return Integers(minInteger, maxInteger);
}

ValueSet ValueSet::AnyText()
{
    return (AnyInteger() | NoValue()).Complement();
}

ValueSet ValueSet::Texts(std::set<std::string> texts)
{
    ValueSet set;
    set.m_Texts = std::move(texts);
    return set;
}

ValueSet ValueSet::PossibleOf(const Model& model, std::size_t attribute)
{
    const Attribute& published = model.Attributes()[attribute];
    return OfType(model, attribute) | Of(published.CurrentValue) | Of(published.DefaultValue) | NoValue();
}

ValueSet ValueSet::WithinBounds(const Model& model, std::size_t attribute)
{
    const Attribute& published = model.Attributes()[attribute];
    const auto boundOr = [&](Property property, const std::optional<std::int64_t>& bound, std::int64_t none) {
        const bool isFixed = model.RulesFor(attribute, property).empty() && model.IsComplete(attribute, property);
        return bound && isFixed ? *bound : none;
    };
    const std::int64_t lower = boundOr(Property::LowerBound, published.LowerBound, minInteger);
    const std::int64_t upper = boundOr(Property::UpperBound, published.UpperBound, maxInteger);
    return lower <= upper ? Integers(lower, upper) : AnyInteger();
}

std::optional<ValueSet> ValueSet::Fulfilling(const Test& test)
{
    if (test.Of != Property::CurrentValue || std::holds_alternative<Secret>(test.Operand)) {
        return std::nullopt;
    }
    if (test.Compare == Comparison::Equal) {
        return Of(test.Operand);
    }
    if (test.Compare == Comparison::NotEqual) {
        return (Of(test.Operand) | NoValue()).Complement();
    }
    const auto* number = std::get_if<std::int64_t>(&test.Operand);
    return number != nullptr ? std::optional(Ordered(test.Compare, *number)) : std::nullopt;
}

ValueSet ValueSet::operator&(const ValueSet& other) const
{
    ValueSet common;
    common.m_IsComplement = m_IsComplement && other.m_IsComplement;
    if (common.m_IsComplement) {
        common.m_Texts = Joined(m_Texts, other.m_Texts);
    } else if (m_IsComplement) {
        common.m_Texts = Without(other.m_Texts, m_Texts);
    } else {
        common.m_Texts = other.m_IsComplement ? Without(m_Texts, other.m_Texts) : Common(m_Texts, other.m_Texts);
    }
    common.m_Intervals = Common(m_Intervals, other.m_Intervals);
    common.m_NoValue = m_NoValue && other.m_NoValue;
    return common;
}

ValueSet ValueSet::operator|(const ValueSet& other) const
{
    ValueSet joined;
    joined.m_IsComplement = m_IsComplement || other.m_IsComplement;
    if (!joined.m_IsComplement) {
        joined.m_Texts = Joined(m_Texts, other.m_Texts);
    } else if (!m_IsComplement) {
        joined.m_Texts = Without(other.m_Texts, m_Texts);
    } else {
        joined.m_Texts = other.m_IsComplement ? Common(m_Texts, other.m_Texts) : Without(m_Texts, other.m_Texts);
    }
    joined.m_Intervals = Gaps(Common(Gaps(m_Intervals), Gaps(other.m_Intervals)));
    joined.m_NoValue = m_NoValue || other.m_NoValue;
    return joined;
}

ValueSet ValueSet::Complement() const
{
    ValueSet complement;
    complement.m_Texts = m_Texts;
    complement.m_IsComplement = !m_IsComplement;
    complement.m_Intervals = Gaps(m_Intervals);
    complement.m_NoValue = !m_NoValue;
    return complement;
}

bool ValueSet::IsEmpty() const
{
    return !m_IsComplement && m_Texts.empty() && m_Intervals.empty() && !m_NoValue;
}

bool ValueSet::Contains(const Value& value) const
{
    return !std::holds_alternative<Secret>(value) && Meets(Of(value));
}

bool ValueSet::Meets(const ValueSet& other) const
{
    return (m_NoValue && other.m_NoValue) || !Common(m_Intervals, other.m_Intervals).empty() ||
           HaveTextInCommon(m_Texts, m_IsComplement, other.m_Texts, other.m_IsComplement);
}

bool ValueSet::IsSubsetOf(const ValueSet& other) const
{
    return (!m_NoValue || other.m_NoValue) && Common(m_Intervals, Gaps(other.m_Intervals)).empty() &&
           !HaveTextInCommon(m_Texts, m_IsComplement, other.m_Texts, !other.m_IsComplement);
}

std::string ToText(const ValueSet& set)
{
    std::string text = TextWithoutNone(set);
    if (set.HasNoValue()) {
        text += text.empty() ? "no value" : ", or no value";
    }
    return text.empty() ? "nothing" : text;
}

} // namespace RedfishConfig::Client
