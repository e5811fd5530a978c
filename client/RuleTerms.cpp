#include "RuleTerms.h"

#include "Limits.h"
#include "Place.h"
#include "Value.h"

#include <algorithm>
#include <string_view>

namespace RedfishConfig::Client {

namespace json = boost::json;

namespace {

/** Terms on this attribute test the controller itself, and the library leaves them out. */
constexpr std::string_view controllerAttribute = "SYSACS";

/**
 * Behind both sides of a comparison where one of them may be empty: an empty operand would be none. The blanks change
 * nothing about what equals what, nor about the order of texts without control characters.
 */
constexpr std::string_view guard = " ";

constexpr std::string_view currentValue = "CurrentValue";

std::string TextMember(const json::object& term, std::string_view key)
{
    const json::value* member = term.if_contains(key);
    const json::string* text = member != nullptr ? member->if_string() : nullptr;
    return text != nullptr ? std::string(*text) : std::string();
}

std::string UpperCase(std::string_view text)
{
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
    return upper;
}

/** The condition of a term: one of the schema's, and "EQ", which controllers publish as well. */
std::string ReadCondition(const json::object& term)
{
    const std::string published = TextMember(term, "MapFromCondition");
    std::string condition = UpperCase(published);
    if (condition == "EQ") {
        condition = "EQU";
    }
    constexpr std::string_view known[] = {"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ"};
    if (std::find(std::begin(known), std::end(known), condition) == std::end(known)) {
        throw TermDefect(FindingKind::UnsupportedCondition, "the condition " + Quote(published));
    }
    return condition;
}

SettingValue ReadTermValue(const json::object& term)
{
    const json::value* member = term.if_contains("MapFromValue");
    if (member == nullptr || member->is_null()) {
        return std::nullopt;
    }
    SettingValue value = ReadValue(*member);
    if (!value) {
        throw TermDefect(FindingKind::UnusableRule, std::string("a comparison with ") + KindOf(*member));
    }
    return value;
}

bool NeedsGuard(const Test& test)
{
    return test.Property == currentValue && test.Value &&
           (test.Value == SettingValue(std::string()) || test.Source->MayBeEmpty);
}

/** Takes the guard of a term that was adapted before. */
std::string WithoutGuard(std::string property, SettingValue& value)
{
    const auto endsWithGuard = [](const std::string& text) {
        return text.size() >= guard.size() && text.compare(text.size() - guard.size(), guard.size(), guard) == 0;
    };
    auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    if (text != nullptr && endsWithGuard(*text) && endsWithGuard(property)) {
        property.erase(property.size() - guard.size());
        text->erase(text->size() - guard.size());
    }
    return property;
}

TermMeaning Meaning(Literal literal)
{
    return {true, {{literal}}, {{Contrary(literal)}}};
}

TermMeaning Turned(TermMeaning meaning, bool contrary)
{
    if (contrary) {
        std::swap(meaning.Holds, meaning.DoesNotHold);
    }
    return meaning;
}

std::size_t DigitsOf(std::int64_t number)
{
    return std::to_string(number).size();
}

/** Whether the numbers from @p lower to @p upper, and @p number, order as their texts do. */
bool OrdersAsText(std::int64_t lower, std::int64_t upper, std::int64_t number)
{
    return lower >= 0 && number >= 0 && DigitsOf(lower) == DigitsOf(upper) && DigitsOf(number) == DigitsOf(lower);
}

bool Fulfils(std::int64_t number, const std::string& condition, std::int64_t limit)
{
    if (condition == "GTR") {
        return number > limit;
    }
    if (condition == "GEQ") {
        return number >= limit;
    }
    return condition == "LSS" ? number < limit : number <= limit;
}

} // namespace

const char* FindFlag(std::string_view property)
{
    constexpr const char* flags[] = {"ReadOnly", "WriteOnly", "Hidden",
                                     "GrayOut",  "Immutable", "IsSystemUniqueProperty"};
    const std::string lower = LowerCase(property);
    const auto* const found =
        std::find_if(std::begin(flags), std::end(flags), [&](const char* flag) { return LowerCase(flag) == lower; });
    return found != std::end(flags) ? *found : nullptr;
}

Literal RuleTests::Add(const Test& test)
{
    const std::string text = test.Value ? GetOptionalVarAsString(test.Value) : std::string();
    const auto [entry, isNew] = m_Known.try_emplace(Key{test.What, test.Source->Name, test.Property, text},
                                                    static_cast<Literal>(2 * m_Tests.size()));
    if (isNew) {
        m_Tests.push_back(test);
    }
    return entry->second;
}

json::object RuleTests::Write(Literal literal) const
{
    const Test& test = m_Tests[literal / 2];
    const bool contrary = literal % 2 == 1;
    const char* condition = contrary ? "NEQ" : "EQU";
    if (test.What == Test::Kind::Exists) {
        condition = contrary ? "EQU" : "NEQ"; // unequal to null: there is a value
    } else if (test.What == Test::Kind::Greater) {
        condition = contrary ? "LEQ" : "GTR";
    } else if (test.What == Test::Kind::Less) {
        condition = contrary ? "GEQ" : "LSS";
    }
    json::object term{{"MapFromAttribute", test.Source->Name},
                      {"MapFromProperty", test.Property},
                      {"MapFromCondition", condition},
                      {"MapFromValue", ToJson(test.Value)}};
    if (NeedsGuard(test)) {
        term["MapFromProperty"] = test.Property + std::string(guard);
        term["MapFromValue"] = GetOptionalVarAsString(test.Value) + std::string(guard);
    }
    return term;
}

std::size_t RuleTests::FormulaBytes(Literal literal) const
{
    constexpr std::size_t operatorsAndParentheses = 10;
    const Test& test = m_Tests[literal / 2];
    const std::size_t left = std::max(test.Source->Name.size() + test.Property.size(), test.Source->LongestValue);
    return left + (test.Value ? GetOptionalVarAsString(test.Value).size() : 0) + operatorsAndParentheses;
}

TermMeaning TermReader::Read(const json::object& term, const std::string& place, RuleTests& tests)
{
    const std::string name = TextMember(term, "MapFromAttribute");
    if (name == controllerAttribute) {
        m_Findings.Add(Severity::Note, FindingKind::ControllerTerm, place, "a term on the controller itself",
                       "the term does not count");
        return {false, {}, {}};
    }
    if (name.empty()) {
        throw TermDefect(FindingKind::UnusableRule, "a term without an attribute");
    }
    const std::string condition = ReadCondition(term);
    SettingValue value = ReadTermValue(term);
    const std::string property = WithoutGuard(TextMember(term, "MapFromProperty"), value);
    const char* flag = FindFlag(property);
    if (flag == nullptr && LowerCase(property) != LowerCase(currentValue)) {
        throw TermDefect(FindingKind::UnsupportedSourceProperty, "a term on the property " + Quote(property));
    }
    const Attribute* source = m_Attributes.Find(name);
    if (source == nullptr || !source->IsSetting) {
        TellUnknown(name, place);
        return {true, {}, {}};
    }
    if (source->Name != name) {
        m_Findings.Add(Severity::Note, FindingKind::NameInOtherCase, place, "a term on " + Quote(name),
                       "read as " + Quote(source->Name));
    }
    return flag != nullptr ? ReadFlagTerm(*source, flag, condition, value, tests)
                           : ReadCurrentValueTerm(*source, condition, std::move(value), place, tests);
}

/** Once for a name and a rule. */
void TermReader::TellUnknown(const std::string& name, const std::string& place)
{
    if (place != m_UnknownIn) {
        m_UnknownIn = place;
        m_Unknown.clear();
    }
    if (m_Unknown.insert(name).second) {
        m_Findings.Add(Severity::Warning, FindingKind::UnknownSource, place,
                       "terms on " + Quote(name) + ", which is no setting of the registry",
                       "what needs them never holds");
    }
}

TermMeaning TermReader::ReadFlagTerm(const Attribute& source, const std::string& property, const std::string& condition,
                                     const SettingValue& value, RuleTests& tests)
{
    const SettingValue flag = ConvertToType(value, "boolean");
    if (!IsBoolenSetting(flag) || (condition != "EQU" && condition != "NEQ")) {
        throw TermDefect(FindingKind::UnsupportedCondition,
                         "a flag compared with " + Quote(ToJson(value)) + " by " + condition);
    }
    CheckSource(source, property, "");
    return Turned(Meaning(tests.Add({Test::Kind::Equal, &source, property, flag})), condition == "NEQ");
}

TermMeaning TermReader::ReadCurrentValueTerm(const Attribute& source, const std::string& condition, SettingValue value,
                                             const std::string& place, RuleTests& tests)
{
    const bool isEquality = condition == "EQU" || condition == "NEQ";
    const std::string property(currentValue);
    if (!value) {
        if (!isEquality) {
            throw TermDefect(FindingKind::UnsupportedCondition, "an order relative to no value");
        }
        CheckSource(source, property, "");
        return Turned(Meaning(tests.Add({Test::Kind::Exists, &source, property, std::nullopt})), condition == "EQU");
    }
    value = TranslateValue(source, value, Document::Registry, place, "the value that a term compares with", m_Findings);
    CheckSource(source, property, GetOptionalVarAsString(value));
    if (!isEquality) {
        return ReadOrder(source, condition, value, tests);
    }
    return Turned(Meaning(tests.Add({Test::Kind::Equal, &source, property, value})), condition == "NEQ");
}

/** The library orders texts, so numbers are compared by their texts where that is the same, and one by one elsewhere.
 */
TermMeaning TermReader::ReadOrder(const Attribute& source, const std::string& condition, const SettingValue& value,
                                  RuleTests& tests)
{
    const std::string property(currentValue);
    const Literal exists = tests.Add({Test::Kind::Exists, &source, property, std::nullopt});
    const bool isNumber = source.Type == "integer";
    if (source.Type == "boolean" || isNumber != IsNumSetting(value)) {
        throw TermDefect(FindingKind::UnsupportedCondition, "an order of values that have none");
    }
    if (isNumber) {
        const auto limit = std::get<std::int64_t>(*value);
        const auto& lower = source.LowerBound;
        const auto& upper = source.UpperBound;
        const bool isHeldWithin = !source.Held || (lower && upper && IsNumSetting(source.Held) &&
                                                   std::get<std::int64_t>(*source.Held) >= *lower &&
                                                   std::get<std::int64_t>(*source.Held) <= *upper);
        if (!lower || !upper || *lower > *upper || !isHeldWithin) {
            throw TermDefect(FindingKind::Inexpressible, "an order of numbers without bounds, of " + source.Name);
        }
        if (!OrdersAsText(*lower, *upper, limit)) {
            const auto count = static_cast<std::uint64_t>(*upper) - static_cast<std::uint64_t>(*lower);
            if (count >= Limits::enumeratedNumbers) {
                throw TermDefect(FindingKind::Inexpressible, "an order of too many numbers, of " + source.Name);
            }
            TermMeaning meaning{true, {}, {{Contrary(exists)}}};
            for (std::int64_t number = *lower;; ++number) {
                auto& list = Fulfils(number, condition, limit) ? meaning.Holds : meaning.DoesNotHold;
                list.push_back({tests.Add({Test::Kind::Equal, &source, property, number})});
                if (number == *upper) {
                    return meaning;
                }
            }
        }
    }
    const std::string text = GetOptionalVarAsString(value);
    if (std::any_of(text.begin(), text.end(), [](char character) { return character >= 0 && character < ' '; })) {
        throw TermDefect(FindingKind::Inexpressible, "an order relative to a text with control characters");
    }
    const bool isGreater = condition == "GTR" || condition == "LEQ";
    const Literal order = tests.Add({isGreater ? Test::Kind::Greater : Test::Kind::Less, &source, property, value});
    const bool isStrict = condition == "GTR" || condition == "LSS";
    const Literal holds = isStrict ? order : Contrary(order);
    // of an attribute without a value no order holds
    return {true, {{exists, holds}}, {{Contrary(exists)}, {exists, Contrary(holds)}}};
}

void TermReader::CheckSource(const Attribute& source, const std::string& property, const std::string& value)
{
    if (!m_Formulas.IsSafe(value)) {
        throw TermDefect(FindingKind::Inexpressible,
                         "a comparison with " + (source.Type == "password" ? std::string("a text") : Quote(value)) +
                             ", which a formula of the library cannot hold");
    }
    if (HasOperators(source.Name)) {
        throw TermDefect(FindingKind::Inexpressible,
                         "a term on " + Quote(source.Name) + ", whose name a formula of the library cannot hold");
    }
    auto [endings, isNew] = m_Endings.try_emplace(&source);
    if (isNew) {
        endings->second = m_Formulas.NamesEnding(source.Name);
    }
    for (const std::string_view ending : endings->second) {
        const std::string_view rest = std::string_view(source.Name).substr(0, source.Name.size() - ending.size());
        const bool isReplacedFirst =
            std::string(ending) + "." < source.Name + "." || std::string(ending) + " " < source.Name + " ";
        const bool mayLookEqual =
            property == currentValue && !value.empty() && value.compare(0, rest.size(), rest) == 0;
        if (isReplacedFirst || mayLookEqual) {
            throw TermDefect(FindingKind::Inexpressible, "a term on " + Quote(source.Name) +
                                                             ", whose name ends in that of " + Quote(ending) +
                                                             ", which the library puts a value for first");
        }
    }
}

} // namespace RedfishConfig::Client
