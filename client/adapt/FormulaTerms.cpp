#include "FormulaTerms.h"

#include "../Limits.h"
#include "../model/ValueConversion.h"

#include <RedfishConfig/SettingValue.h>

#include <boost/json/value.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/**
 * Behind both sides of a comparison where one of them may be empty: an empty operand would be none. The blanks change
 * nothing about what equals what, nor about the order of numbers.
 */
constexpr std::string_view guard = " ";

/** As the core puts a value into a formula. */
std::string TextOf(const Value& value)
{
    return GetOptionalVarAsString(Reveal(value));
}

/** A text is one of the attribute's type again: "true" of a Boolean is a boolean. */
Value TypedText(const std::string& text, AttributeType type)
{
    return type == AttributeType::Boolean ? ConvertToType(text, type) : Value(text);
}

/** The values in the set, unless they are too many. */
std::optional<std::vector<Value>> Enumerate(const ValueSet& values, AttributeType type)
{
    if (values.IsComplementOfTexts()) {
        return std::nullopt;
    }
    std::vector<Value> list;
    for (const std::string& text : values.ListedTexts()) {
        list.push_back(TypedText(text, type));
    }
    for (const auto& [first, last] : values.Intervals()) {
        const auto more = static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first);
        if (more >= Limits::enumeratedNumbers || list.size() + more >= Limits::enumeratedNumbers) {
            return std::nullopt;
        }
        for (std::int64_t number = first; number < last; ++number) {
            list.emplace_back(number);
        }
        list.emplace_back(last);
    }
    return list;
}

FormulaTerm Exists(std::size_t attribute)
{
    return {attribute, Property::CurrentValue, Comparison::NotEqual, {}};
}

FormulaTerm Missing(std::size_t attribute)
{
    return {attribute, Property::CurrentValue, Comparison::Equal, {}};
}

FormulaTerm Compared(std::size_t attribute, Comparison compare, Value operand)
{
    return {attribute, Property::CurrentValue, compare, std::move(operand)};
}

/** A list for each value; that of having none comes first. */
TermLists EqualToAny(std::size_t attribute, const std::vector<Value>& values, bool orNone)
{
    TermLists lists;
    if (orNone) {
        lists.Any.push_back({Missing(attribute)});
    }
    for (const Value& value : values) {
        lists.Any.push_back({Compared(attribute, Comparison::Equal, value)});
    }
    return lists;
}

TermLists UnequalToAll(std::size_t attribute, const std::vector<Value>& values, bool orNone)
{
    TermLists lists;
    if (orNone) {
        lists.Any.push_back({Missing(attribute)});
    }
    FormulaTerms& terms = lists.Any.emplace_back();
    terms.push_back(Exists(attribute));
    for (const Value& value : values) {
        terms.push_back(Compared(attribute, Comparison::NotEqual, value));
    }
    return lists;
}

std::size_t DigitsOf(std::int64_t number)
{
    return std::to_string(number).size();
}

/** Whether all integers of the set, which has no other values, order as their texts do. */
bool OrdersAsText(const ValueSet& values)
{
    const auto& intervals = values.Intervals();
    return !values.IsComplementOfTexts() && values.ListedTexts().empty() && !intervals.empty() &&
           intervals.front().first >= 0 && DigitsOf(intervals.front().first) == DigitsOf(intervals.back().second);
}

/** The terms for the integers from the first to the last, of an attribute that has none beyond the bounds. */
FormulaTerms Between(std::size_t attribute, const ValueSet::Interval& wanted, const ValueSet::Interval& bounds)
{
    FormulaTerms terms{Exists(attribute)};
    if (wanted.first > bounds.first) {
        terms.push_back(Compared(attribute, Comparison::GreaterOrEqual, wanted.first));
    }
    if (wanted.second < bounds.second) {
        terms.push_back(Compared(attribute, Comparison::LessOrEqual, wanted.second));
    }
    return terms;
}

/** Numbers piece by piece: few as themselves, many by their order. */
TermLists InPieces(std::size_t attribute, const ValueSet& values, const ValueSet& possible, bool orNone)
{
    const ValueSet::Interval bounds{possible.Intervals().front().first, possible.Intervals().back().second};
    TermLists lists = EqualToAny(attribute, {}, orNone);
    std::vector<FormulaTerms> ordered;
    for (const ValueSet::Interval& interval : values.Intervals()) {
        FormulaTerms between = Between(attribute, interval, bounds);
        const auto more = static_cast<std::uint64_t>(interval.second - interval.first);
        if (more < between.size()) {
            for (std::int64_t next = 0; next <= static_cast<std::int64_t>(more); ++next) {
                lists.Any.push_back({Compared(attribute, Comparison::Equal, interval.first + next)});
            }
        } else {
            ordered.push_back(std::move(between));
        }
    }
    lists.Any.insert(lists.Any.end(), ordered.begin(), ordered.end());
    return lists;
}

std::size_t TermsIn(const TermLists& lists)
{
    std::size_t terms = 0;
    for (const FormulaTerms& list : lists.Any) {
        terms += list.size();
    }
    return terms;
}

} // namespace

TermLists FormulaTermWriter::Write(const Requirement& requirement)
{
    if (requirement.Flag != Property::CurrentValue) {
        return WriteFlag(requirement);
    }
    const std::size_t attribute = requirement.Attribute;
    const bool orNone = requirement.States.HasNoValue();
    const ValueSet values = requirement.States & ValueSet::NoValue().Complement();
    TermLists lists = Checked(WriteValues(attribute, values, orNone));
    if (lists.Reason && At(attribute).Type == AttributeType::Enumeration && !At(attribute).Choices.empty()) {
        TermLists ofChoices = Checked(WriteOfChoices(attribute, values, orNone));
        if (!ofChoices.Reason) {
            return ofChoices;
        }
    }
    return lists;
}

TermLists FormulaTermWriter::WriteFlag(const Requirement& requirement)
{
    FormulaTerm term{requirement.Attribute, requirement.Flag, Comparison::Equal, {}};
    term.Operand = requirement.States.Contains(Value(true));
    TermLists lists;
    lists.Any.push_back({std::move(term)});
    lists.Reason = DefectOf(lists.Any.front().front());
    return lists;
}

/** A single value is written as it is, whatever the attribute can have; sets by what it can. */
TermLists FormulaTermWriter::WriteValues(std::size_t attribute, const ValueSet& values, bool orNone)
{
    const AttributeType type = At(attribute).Type;
    const ValueSet some = ValueSet::NoValue().Complement();
    if (const std::optional<Value> only = OnlyValueOf(values)) {
        return EqualToAny(attribute, *Enumerate(values, type), orNone);
    }
    if (const ValueSet others = some & values.Complement(); OnlyValueOf(others)) {
        return UnequalToAll(attribute, *Enumerate(others, type), orNone);
    }
    const ValueSet possible = m_Known.PossibleOf(attribute) & some;
    const ValueSet wanted = values & possible;
    const ValueSet unwanted = possible & values.Complement();
    if (unwanted.IsEmpty()) {
        TermLists lists = UnequalToAll(attribute, {}, false);
        lists.IsAlways = orNone;
        return lists;
    }
    const auto equal = Enumerate(wanted, type);
    const auto unequal = Enumerate(unwanted, type);
    std::optional<TermLists> shortest;
    if (OrdersAsText(possible)) {
        shortest = InPieces(attribute, wanted, possible, orNone);
    } else if (equal) {
        shortest = EqualToAny(attribute, *equal, orNone);
    }
    if (unequal) {
        TermLists lists = UnequalToAll(attribute, *unequal, orNone);
        if (!shortest || TermsIn(lists) < TermsIn(*shortest)) {
            shortest = std::move(lists);
        }
    }
    if (!shortest) {
        shortest.emplace();
        shortest->Reason.Why = "asks for too many values of " + At(attribute).Name;
    }
    return *shortest;
}

/** As the other choices or as all but them, which may be texts that a formula can hold. */
TermLists FormulaTermWriter::WriteOfChoices(std::size_t attribute, const ValueSet& values, bool orNone)
{
    std::set<std::string> texts;
    if (const auto* held = std::get_if<std::string>(&m_Known.Values().ValueOf(attribute))) {
        texts.insert(*held);
    }
    for (Choice& choice : m_Known.Values().ChoicesOf(attribute)) {
        texts.insert(std::move(choice.Name));
    }
    std::vector<Value> equal, unequal;
    for (const std::string& text : texts) {
        (values.Contains(Value(text)) ? equal : unequal).emplace_back(text);
    }
    TermLists lists = Checked(EqualToAny(attribute, equal, orNone));
    return lists.Reason ? UnequalToAll(attribute, unequal, orNone) : lists;
}

std::optional<Chain> FormulaTermWriter::ReadChain(const Condition& condition)
{
    Chain chain;
    return AddToChain(condition, nullptr, chain) ? std::optional(std::move(chain)) : std::nullopt;
}

bool FormulaTermWriter::AddToChain(const Condition& condition, const char* joiner, Chain& chain)
{
    if (condition.What == Condition::Kind::Test) {
        const std::optional<FormulaTerm> term = TermOf(condition.Asked);
        if (term) {
            chain.push_back({*term, joiner});
        }
        return term.has_value();
    }
    if (condition.What != Condition::Kind::All && condition.What != Condition::Kind::Any) {
        return false;
    }
    const char* const between = condition.What == Condition::Kind::All ? "AND" : "OR";
    for (const Condition& part : condition.Parts) {
        const bool isLast = &part == &condition.Parts.back();
        if (!isLast && part.What != Condition::Kind::Test) {
            return false;
        }
        if (!AddToChain(part, isLast ? joiner : between, chain)) {
            return false;
        }
    }
    return true;
}

/** A test for one value, or for whether there is one, as a term. */
std::optional<FormulaTerm> FormulaTermWriter::TermOf(const Test& test)
{
    if (test.Of != Property::CurrentValue || test.Source == noAttribute || At(test.Source).IsPassword()) {
        return std::nullopt;
    }
    FormulaTerm term{test.Source, test.Of, test.Compare, {}};
    if (HasValue(test.Operand)) {
        const ValueSet equal = test.Compare == Comparison::Equal ? m_Known.Of(test).True : ValueSet::Nothing();
        if (!OnlyValueOf(equal)) {
            return std::nullopt;
        }
        term.Operand = Enumerate(equal, At(test.Source).Type)->front();
    }
    return DefectOf(term) ? std::nullopt : std::optional(std::move(term));
}

TermLists FormulaTermWriter::Checked(TermLists lists)
{
    for (auto list = lists.Any.begin(); list != lists.Any.end() && !lists.Reason && !lists.IsAlways; ++list) {
        for (auto term = list->begin(); term != list->end() && !lists.Reason; ++term) {
            lists.Reason = DefectOf(*term);
        }
    }
    return lists;
}

Defect FormulaTermWriter::DefectOf(const FormulaTerm& term)
{
    const Source& source = SourceOf(term.Source);
    if (source.OfName || term.Of != Property::CurrentValue || !HasValue(term.Operand)) {
        return source.OfName;
    }
    return source.OfValue ? source.OfValue : DefectOfOperand(term);
}

Defect FormulaTermWriter::DefectOfOperand(const FormulaTerm& term)
{
    const Attribute& source = At(term.Source);
    const Value& held = m_Known.Values().ValueOf(term.Source);
    const std::string operand = TextOf(term.Operand);
    const std::string compares = "compares " + source.Name + " with ";
    if (!m_Hazards.IsSafe(operand)) {
        return {FindingKind::Inexpressible,
                compares + ToQuotedText(term.Operand) + ", which has operators or the name of a setting in it"};
    }
    if (HasValue(held) && !IsOfType(held, source.Type) && held != term.Operand && TextOf(held) == operand) {
        return {FindingKind::Inexpressible, compares + "a text that its value, which is of another type, would equal"};
    }
    for (const std::string_view within : SourceOf(term.Source).NamesWithin) {
        const std::string_view rest = std::string_view(source.Name).substr(0, source.Name.size() - within.size());
        if (term.Compare == Comparison::Equal && operand.compare(0, rest.size(), rest) == 0) {
            return {FindingKind::Inexpressible,
                    compares + ToQuotedText(term.Operand) + ", which the name may look like without a value"};
        }
    }
    return {};
}

const FormulaTermWriter::Source& FormulaTermWriter::SourceOf(std::size_t attribute)
{
    const auto [entry, isNew] = m_Sources.try_emplace(attribute);
    Source& source = entry->second;
    if (!isNew) {
        return source;
    }
    const Attribute& published = At(attribute);
    source.NamesWithin = m_Hazards.NamesWithin(published.Name);
    source.OfName = DefectOfName(published);
    source.MayBeEmpty = published.IsText() && published.MinLength.value_or(0) < 1;
    const auto measure = [&source](const std::string& text) {
        source.MayBeEmpty |= text.empty();
        source.LongestValue = std::max(source.LongestValue, text.size());
    };
    for (const Choice& choice : m_Known.Values().ChoicesOf(attribute)) {
        measure(choice.Name);
    }
    if (const Value& held = m_Known.Values().ValueOf(attribute); HasValue(held)) {
        measure(TextOf(held));
        source.OfValue = DefectOfValue(attribute);
    } else {
        source.OfValue = DefectWithoutValue(published, source.NamesWithin);
    }
    return source;
}

Defect FormulaTermWriter::DefectOfName(const Attribute& attribute) const
{
    if (attribute.Type == AttributeType::Unknown) {
        return {FindingKind::Inexpressible, "asks for " + attribute.Name + ", of which there is no setting"};
    }
    if (!m_Hazards.IsNameSafe(attribute.Name)) {
        return {FindingKind::Inexpressible,
                "asks for " + attribute.Name + ", whose name has operators or that of another setting in it"};
    }
    return {};
}

Defect FormulaTermWriter::DefectOfValue(std::size_t attribute)
{
    const Value& held = m_Known.Values().ValueOf(attribute);
    if (!m_Hazards.IsSafe(TextOf(held))) {
        return {FindingKind::ValueWithOperators, "asks for " + At(attribute).Name + ", whose value " +
                                                     ToQuotedText(held) +
                                                     " has operators or the name of a setting in it"};
    }
    if (m_Known.HoldsSeveralChoices(attribute)) {
        return {FindingKind::Inexpressible,
                "asks for " + At(attribute).Name + ", whose value is a name of several choices"};
    }
    return {};
}

/** Without a value, the name stays in the formula, and values of attributes that it ends in are put into it. */
Defect FormulaTermWriter::DefectWithoutValue(const Attribute& attribute,
                                             const std::vector<std::string_view>& within) const
{
    const SystemValues& values = m_Known.Values();
    for (const std::string_view name : within) {
        const std::optional<std::size_t> other = values.Of().Find(name);
        if (other && HasValue(values.ValueOf(*other)) && !m_Hazards.IsSafe(TextOf(values.ValueOf(*other)))) {
            return {FindingKind::ValueWithOperators, "asks for " + attribute.Name +
                                                         ", which has no value, and whose name ends in " +
                                                         At(*other).Name + ", whose value has operators"};
        }
    }
    return {};
}

json::object FormulaTermWriter::ToJson(const FormulaTerm& term)
{
    const SettingValue operand = Reveal(term.Operand);
    json::object written{{"MapFromAttribute", At(term.Source).Name},
                         {"MapFromProperty", Name(term.Of)},
                         {"MapFromCondition", Name(term.Compare)},
                         {"MapFromValue", operand ? VariantToJson(*operand) : json::value()}};
    const bool isComparison = term.Of == Property::CurrentValue && operand;
    if (isComparison && (TextOf(term.Operand).empty() || SourceOf(term.Source).MayBeEmpty)) {
        written["MapFromProperty"] = std::string(Name(term.Of)) + std::string(guard);
        written["MapFromValue"] = TextOf(term.Operand) + std::string(guard);
    }
    return written;
}

std::size_t FormulaTermWriter::FormulaBytes(const FormulaTerm& term)
{
    constexpr std::size_t tailOperatorsAndParentheses = 30;
    const std::size_t left = std::max(At(term.Source).Name.size(), SourceOf(term.Source).LongestValue);
    const std::size_t right = HasValue(term.Operand) ? TextOf(term.Operand).size() : 0;
    return left + right + tailOperatorsAndParentheses;
}

} // namespace RedfishConfig::Client
