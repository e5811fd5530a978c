#include "Contradictions.h"

#include "../Limits.h"
#include "../intake/Quote.h"
#include "../model/ChoiceNumbers.h"
#include "../model/ValueConversion.h"
#include "common/Numbers.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <map>
#include <numeric>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** The test as a person reads it. */
std::string Asked(const Test& test)
{
    Condition condition;
    condition.What = Condition::Kind::Test;
    condition.Asked = test;
    return Cut(ToText(condition), Limits::quotedBytes);
}

/**
 * Work is counted in texts, intervals and demands that are looked at. A condition may take some for each of its tests,
 * and a share of what all conditions of a registry have together: then a registry takes time in proportion to its size.
 */
constexpr std::size_t workOfTest = 32;
constexpr std::size_t mostSpareWork = 4 * Limits::termsOfConjunctions; // of one condition
constexpr std::size_t spareWork = 250 * Limits::termsOfConjunctions;   // of all

std::size_t WeightOf(const ValueSet& set)
{
    return 1 + set.ListedTexts().size() + set.Intervals().size();
}

Comparison Inverse(Comparison compare)
{
    switch (compare) {
    case Comparison::Equal:
        return Comparison::NotEqual;
    case Comparison::NotEqual:
        return Comparison::Equal;
    case Comparison::Greater:
        return Comparison::LessOrEqual;
    case Comparison::GreaterOrEqual:
        return Comparison::Less;
    case Comparison::Less:
        return Comparison::GreaterOrEqual;
    case Comparison::LessOrEqual:
        break;
    }
    return Comparison::Greater;
}

/** @param compare an order */
bool Compares(std::int64_t number, Comparison compare, std::int64_t operand)
{
    switch (compare) {
    case Comparison::Greater:
        return number > operand;
    case Comparison::GreaterOrEqual:
        return number >= operand;
    case Comparison::Less:
        return number < operand;
    default:
        return number <= operand;
    }
}

/** The states in which a test may be true, and those in which it is for sure. */
struct States {
    ValueSet May = ValueSet::Everything();
    ValueSet Sure = ValueSet::Nothing();
};

/** A state of an enumeration by the numbers that its names are, if they are. */
struct OrderedState {
    const std::string* Text;
    std::optional<std::int64_t> ByName;        ///< in registries whose values are names
    std::optional<std::int64_t> ByDisplayName; ///< in those whose values are display names
    bool IsClear;
};

/** Choices that share a name. Which of several is meant is not known: it depends on the names that values use. */
struct ChoiceGroup {
    std::size_t First = 0; ///< among the attribute's choices; its Name is that of the group
    bool IsClear = true;   ///< all of them are the same choice
};

/** The groups of an attribute's choices. */
class ChoiceGroups {
public:
    explicit ChoiceGroups(const std::vector<Choice>& choices) : m_Choices(choices), m_Parent(choices.size())
    {
        std::iota(m_Parent.begin(), m_Parent.end(), std::size_t{0});
        for (std::size_t choice = 0; choice < choices.size(); ++choice) {
            Take(choices[choice].Name, choice);
            Take(choices[choice].DisplayName, choice);
        }
        m_Groups.resize(choices.size());
        for (std::size_t choice = 0; choice < choices.size(); ++choice) {
            ChoiceGroup& group = m_Groups[Root(choice)];
            group.First = Root(choice);
            const Choice& first = choices[group.First];
            group.IsClear =
                group.IsClear && choices[choice].Name == first.Name && choices[choice].DisplayName == first.DisplayName;
        }
    }

    /** The group of choices that have the text for one of their names; null when none has. */
    const ChoiceGroup* Find(const std::string& text) const
    {
        const auto found = m_ChoiceOf.find(text);
        return found != m_ChoiceOf.end() ? &m_Groups[Root(found->second)] : nullptr;
    }

private:
    void Take(const std::string& text, std::size_t choice)
    {
        const auto [known, isNew] = m_ChoiceOf.emplace(text, choice);
        if (!isNew) {
            const std::size_t one = Root(known->second);
            const std::size_t other = Root(choice);
            m_Parent[std::max(one, other)] = std::min(one, other); // so that the root is the first of the group
        }
    }

    std::size_t Root(std::size_t choice) const
    {
        while (m_Parent[choice] != choice) {
            m_Parent[choice] = m_Parent[m_Parent[choice]];
            choice = m_Parent[choice];
        }
        return choice;
    }

    const std::vector<Choice>& m_Choices;
    mutable std::vector<std::size_t> m_Parent;
    std::map<std::string, std::size_t> m_ChoiceOf;
    std::vector<ChoiceGroup> m_Groups; // by root
};

std::string Demanded(const ValueSet& set)
{
    return set == ValueSet::NoValue() ? "to have no value" : "to be " + ToText(set);
}

std::size_t CountTests(const Condition& condition)
{
    return std::accumulate(condition.Parts.begin(), condition.Parts.end(), std::size_t{1},
                           [](std::size_t count, const Condition& part) { return count + CountTests(part); });
}

} // namespace

/** What one attribute can be. Of choices that share a name there is one state, under the name of the first of them. */
class Contradictions::Domain {
public:
    Domain(const Model& model, std::size_t attribute)
        : m_Attribute(model.Attributes()[attribute]),
          m_Groups(m_Attribute.Choices),
          m_Numbers(m_Attribute.Choices),
          m_Possible(ValueSet::PossibleOf(model, attribute))
    {
        if (IsEnumeration() && !m_Possible.IsComplementOfTexts()) {
            std::set<std::string> texts;
            for (const std::string& text : m_Possible.ListedTexts()) {
                texts.insert(StateOf(text));
            }
            m_Possible = ValueSet::Texts(std::move(texts)) | ValueSet::NoValue();
        }
        m_WithValue = m_Possible & ValueSet::NoValue().Complement();
        if (IsEnumeration()) {
            ReadNumbers();
        }
    }

    const ValueSet& Possible() const { return m_Possible; }
    const ValueSet& WithValue() const { return m_WithValue; }

    /** How much it takes to find the states of a test. */
    std::size_t WorkFor(const Test& test) const { return IsOrderOfChoices(test) ? 2 * WeightOf(m_WithValue) : 1; }

    /** Whether no value can fulfil or fail the test for sure: only numbers have an order. */
    bool IsNeverKnown(const Test& test) const
    {
        if (IsEquality(test.Compare) || test.Of != Property::CurrentValue) {
            return false;
        }
        return IsOrderOfChoices(test) ? !LimitOf(test, false) && !LimitOf(test, true) : !NumberOf(test.Operand);
    }

    States Fulfilling(Test test) const
    {
        if (m_Attribute.IsPassword() || test.Of != Property::CurrentValue) {
            return {};
        }
        if (IsOrderOfChoices(test)) {
            return OrderOfChoices(test);
        }
        const auto* text = std::get_if<std::string>(&test.Operand);
        const ChoiceGroup* group = IsEnumeration() && text != nullptr ? m_Groups.Find(*text) : nullptr;
        if (group != nullptr) {
            test.Operand = m_Attribute.Choices[group->First].Name;
        }
        const std::optional<ValueSet> states = ValueSet::Fulfilling(test);
        if (!states) {
            return {};
        }
        if (group == nullptr || group->IsClear) {
            return {*states, *states};
        }
        return test.Compare == Comparison::Equal ? States{*states, ValueSet::Nothing()}
                                                 : States{ValueSet::NoValue().Complement(), *states};
    }

private:
    bool IsEnumeration() const { return m_Attribute.Type == AttributeType::Enumeration; }

    bool IsOrderOfChoices(const Test& test) const
    {
        return IsEnumeration() && test.Of == Property::CurrentValue && !IsEquality(test.Compare) &&
               std::holds_alternative<std::string>(test.Operand) && !m_WithValue.IsComplementOfTexts();
    }

    /** The number that the operand of an order of choices stands for. */
    std::optional<std::int64_t> LimitOf(const Test& test, bool displayNamesAreValues) const
    {
        return m_Numbers.NumberFor(std::get<std::string>(test.Operand), displayNamesAreValues);
    }

    std::string StateOf(const std::string& text) const
    {
        const ChoiceGroup* group = m_Groups.Find(text);
        return group != nullptr ? m_Attribute.Choices[group->First].Name : text;
    }

    void ReadNumbers()
    {
        for (const std::string& state : m_WithValue.ListedTexts()) {
            const ChoiceGroup* group = m_Groups.Find(state);
            if (group == nullptr) {
                m_Ordered.push_back({&state, Numbers::ReadDecimal(state), Numbers::ReadDecimal(state), true});
                continue;
            }
            const Choice& choice = m_Attribute.Choices[group->First];
            m_Ordered.push_back(
                {&state, Numbers::ReadDecimal(choice.Name), Numbers::ReadDecimal(choice.DisplayName), group->IsClear});
        }
    }

    /** The choices are compared by their numbers; one that is no number is neither above nor below the operand. */
    States OrderOfChoices(const Test& test) const
    {
        const std::optional<std::int64_t> limit = LimitOf(test, false);
        const std::optional<std::int64_t> limitAsShown = LimitOf(test, true);
        const auto compares = [&](const std::optional<std::int64_t>& number, const std::optional<std::int64_t>& with) {
            return number && with && Compares(*number, test.Compare, *with);
        };
        std::set<std::string> may;
        std::set<std::string> sure;
        for (const OrderedState& state : m_Ordered) {
            const bool byName = compares(state.ByName, limit);
            const bool byDisplayName = compares(state.ByDisplayName, limitAsShown);
            if (byName || byDisplayName || !state.IsClear) {
                may.insert(may.end(), *state.Text);
            }
            if (byName && byDisplayName && state.IsClear) {
                sure.insert(sure.end(), *state.Text);
            }
        }
        return {ValueSet::Texts(std::move(may)), ValueSet::Texts(std::move(sure))};
    }

    const Attribute& m_Attribute;
    ChoiceGroups m_Groups;
    ChoiceNumbers m_Numbers;
    ValueSet m_Possible;
    ValueSet m_WithValue;
    std::vector<OrderedState> m_Ordered; // of an enumeration
};

/** One condition as alternatives. Negations are brought down to the tests, where they turn the comparison round. */
class AlternativesOfCondition {
public:
    AlternativesOfCondition(Contradictions& domains, std::size_t work) : m_Domains(domains), m_Work(work)
    {
        m_Sets.push_back(ValueSet::Nothing());
        m_Sets.push_back(ValueSet::Everything());
    }

    Outlook Read(const Condition& condition)
    {
        Outlook outlook;
        std::optional<Alternatives> alternatives = Of(condition, false);
        if (alternatives && !m_IsTooLarge) {
            MergeSingle(*alternatives);
        }
        if (!alternatives || m_IsTooLarge) {
            return outlook;
        }
        outlook.IsDecided = true;
        outlook.CanHold = !alternatives->empty();
        if (!outlook.CanHold) {
            outlook.Needs = m_Contradiction + (m_HasAlternatives ? ", or something as impossible" : "");
        }
        for (const Alternative& alternative : *alternatives) {
            const bool isCover = alternative.size() == 1 && alternative.front().Sure != nothing && !m_HasUnknown;
            if (isCover) {
                const Demand& only = alternative.front();
                outlook.Covers.push_back({only.Attribute, m_Sets[only.Sure], only.AsksForValue});
            }
        }
        return outlook;
    }

    std::size_t WorkLeft() const { return m_Work; }

private:
    static constexpr std::size_t nothing = 0; // in m_Sets
    static constexpr std::size_t everything = 1;

    /** What an alternative asks of one attribute; sets are known by their index in m_Sets. */
    struct Demand {
        std::size_t Attribute = noAttribute;
        std::size_t May = everything;
        std::size_t Sure = nothing;
        bool AsksForValue = false;
    };

    using Alternative = std::vector<Demand>; // ascending by attribute
    using Alternatives = std::vector<Alternative>;

    /** @return nothing when no part of the condition counts */
    std::optional<Alternatives> Of(const Condition& condition, bool isNegated)
    {
        switch (condition.What) {
        case Condition::Kind::Test:
            return OfTest(condition.Asked, isNegated);
        case Condition::Kind::Not:
            return condition.Parts.empty() ? std::nullopt : Of(condition.Parts.front(), !isNegated);
        case Condition::Kind::All:
        case Condition::Kind::Any:
            return OfParts(condition, isNegated);
        case Condition::Kind::Unknown:
            return NeverKnown();
        case Condition::Kind::Ignored:
            break;
        }
        return std::nullopt;
    }

    std::optional<Alternatives> OfParts(const Condition& condition, bool isNegated)
    {
        std::vector<Alternatives> parts;
        for (const Condition& part : condition.Parts) {
            if (auto alternatives = Of(part, isNegated)) {
                parts.push_back(std::move(*alternatives));
            }
        }
        if (parts.empty() || m_IsTooLarge) {
            return m_IsTooLarge ? std::optional(Alternatives()) : std::nullopt;
        }
        const bool areAllNeeded = (condition.What == Condition::Kind::All) != isNegated;
        m_HasAlternatives = m_HasAlternatives || (!areAllNeeded && parts.size() > 1);
        if (!areAllNeeded) {
            return Union(parts);
        }
        const auto isImpossible = [](const Alternatives& part) { return part.empty(); };
        return std::any_of(parts.begin(), parts.end(), isImpossible) ? Alternatives() : Product(parts, 0, parts.size());
    }

    Alternatives OfTest(Test test, bool isNegated)
    {
        if (isNegated) {
            test.Compare = Inverse(test.Compare);
        }
        if (test.Source == noAttribute) {
            return NeverKnown();
        }
        const Contradictions::Domain& domain = m_Domains.DomainOf(test.Source);
        if (!Spend(domain.WorkFor(test))) {
            return {};
        }
        if (domain.IsNeverKnown(test)) {
            return NeverKnown();
        }
        States states = domain.Fulfilling(test);
        if (!states.May.Meets(domain.Possible())) {
            Contradict(states.May.IsEmpty() ? "needs " + Asked(test)
                                            : "needs " + ShortName(NameOf(test.Source)) + " " + Demanded(states.May));
            return {};
        }
        Demand demand;
        demand.Attribute = test.Source;
        demand.AsksForValue = test.Of == Property::CurrentValue && !HasValue(test.Operand);
        const bool isExact = states.May == states.Sure;
        demand.May = Add(std::move(states.May));
        demand.Sure = isExact ? demand.May : Add(std::move(states.Sure));
        return {{demand}};
    }

    /** For all that is known it may hold, and it proves nothing. */
    Alternatives NeverKnown()
    {
        m_HasUnknown = true;
        return {{}};
    }

    const std::string& NameOf(std::size_t attribute) const { return m_Domains.m_Model.Attributes()[attribute].Name; }

    /** All of the parts hold. Halves are multiplied, so that many tests of one attribute do not take square time. */
    Alternatives Product(std::vector<Alternatives>& parts, std::size_t begin, std::size_t end)
    {
        if (end - begin == 1) {
            return std::move(parts[begin]);
        }
        const std::size_t middle = begin + (end - begin) / 2;
        const Alternatives left = Product(parts, begin, middle);
        const Alternatives right = Product(parts, middle, end);
        Alternatives product;
        std::size_t terms = 0;
        for (const Alternative& one : left) {
            for (const Alternative& other : right) {
                if (!Spend(one.size() + other.size())) {
                    return {};
                }
                if (auto both = Both(one, other)) {
                    terms += both->size();
                    product.push_back(std::move(*both));
                }
            }
        }
        MergeSingle(product);
        m_IsTooLarge = m_IsTooLarge || terms > Limits::termsOfConjunctions;
        return product;
    }

    /** @return nothing when the two contradict each other */
    std::optional<Alternative> Both(const Alternative& one, const Alternative& other)
    {
        Alternative both;
        both.reserve(one.size() + other.size());
        auto left = one.begin();
        auto right = other.begin();
        while (left != one.end() && right != other.end()) {
            if (left->Attribute != right->Attribute) {
                both.push_back(left->Attribute < right->Attribute ? *left++ : *right++);
                continue;
            }
            const Demand demand = Both(*left, *right);
            if (!m_Sets[demand.May].Meets(m_Domains.DomainOf(demand.Attribute).Possible())) {
                ContradictBoth(*left, *right);
                return std::nullopt;
            }
            both.push_back(demand);
            ++left;
            ++right;
        }
        both.insert(both.end(), left, one.end());
        both.insert(both.end(), right, other.end());
        return both;
    }

    Demand Both(const Demand& left, const Demand& right)
    {
        return Combine(left, right, [this](std::size_t one, std::size_t other) { return Intersection(one, other); });
    }

    /** @param combine makes one set of two; called once where both demands are exact */
    template <typename Combination>
    static Demand Combine(const Demand& left, const Demand& right, const Combination& combine)
    {
        Demand combined;
        combined.Attribute = left.Attribute;
        combined.AsksForValue = left.AsksForValue || right.AsksForValue;
        combined.May = combine(left.May, right.May);
        const bool isExact = left.May == left.Sure && right.May == right.Sure;
        combined.Sure = isExact ? combined.May : combine(left.Sure, right.Sure);
        return combined;
    }

    /** Some part holds. */
    Alternatives Union(std::vector<Alternatives>& parts)
    {
        Alternatives all;
        for (Alternatives& part : parts) {
            std::move(part.begin(), part.end(), std::back_inserter(all));
        }
        MergeSingle(all);
        return all;
    }

    /** Makes one of all alternatives that are about the same attribute alone. These come first then. */
    void MergeSingle(Alternatives& alternatives)
    {
        const auto isSingle = [](const Alternative& alternative) { return alternative.size() == 1; };
        const auto begin = alternatives.begin();
        const auto end = std::stable_partition(begin, alternatives.end(), isSingle);
        const auto attributeOf = [](const Alternative& alternative) { return alternative.front().Attribute; };
        std::stable_sort(begin, end, [&](const Alternative& one, const Alternative& other) {
            return attributeOf(one) < attributeOf(other);
        });
        auto merged = begin;
        for (auto first = begin; first != end;) {
            const auto last = std::find_if(
                first, end, [&](const Alternative& other) { return attributeOf(other) != attributeOf(*first); });
            const Demand either = Either(first, last);
            *merged++ = {either};
            first = last;
        }
        alternatives.erase(merged, end);
    }

    Demand Either(Alternatives::const_iterator first, Alternatives::const_iterator last)
    {
        if (last - first == 1) {
            return first->front();
        }
        const auto middle = first + (last - first) / 2;
        const Demand left = Either(first, middle);
        const Demand right = Either(middle, last);
        return Combine(left, right, [this](std::size_t one, std::size_t other) { return Union(one, other); });
    }

    std::size_t Intersection(std::size_t left, std::size_t right)
    {
        if (left == right || left == nothing || right == everything) {
            return left;
        }
        if (right == nothing || left == everything) {
            return right;
        }
        return Spend(WeightOf(m_Sets[left]) + WeightOf(m_Sets[right])) ? Add(m_Sets[left] & m_Sets[right]) : left;
    }

    std::size_t Union(std::size_t left, std::size_t right)
    {
        if (left == right || left == everything || right == nothing) {
            return left;
        }
        if (right == everything || left == nothing) {
            return right;
        }
        return Spend(WeightOf(m_Sets[left]) + WeightOf(m_Sets[right])) ? Add(m_Sets[left] | m_Sets[right]) : left;
    }

    std::size_t Add(ValueSet set)
    {
        m_Sets.push_back(std::move(set));
        return m_Sets.size() - 1;
    }

    bool Spend(std::size_t work)
    {
        m_IsTooLarge = m_IsTooLarge || work > m_Work;
        m_Work -= m_IsTooLarge ? 0 : work;
        return !m_IsTooLarge;
    }

    /** Of several contradictions the first is reported. */
    void Contradict(std::string needs)
    {
        if (m_Contradiction.empty()) {
            m_Contradiction = std::move(needs);
        }
    }

    void ContradictBoth(const Demand& left, const Demand& right)
    {
        if (m_Contradiction.empty()) {
            Contradict("needs " + ShortName(NameOf(left.Attribute)) + " " + Demanded(m_Sets[left.May]) + " and also " +
                       Demanded(m_Sets[right.May]));
        }
    }

    Contradictions& m_Domains;
    std::size_t m_Work;
    bool m_IsTooLarge = false;
    bool m_HasUnknown = false;
    bool m_HasAlternatives = false;
    std::deque<ValueSet> m_Sets;
    std::string m_Contradiction;
};

namespace {

using CoverIterator = std::vector<const Cover*>::const_iterator;

/** Halves are joined, so that many covers do not take square time. */
ValueSet Joined(CoverIterator first, CoverIterator last)
{
    if (last - first == 1) {
        return (*first)->States;
    }
    const auto middle = first + (last - first) / 2;
    return Joined(first, middle) | Joined(middle, last);
}

} // namespace

Contradictions::Contradictions(const Model& model)
    : m_Model(model), m_Domains(model.Attributes().size()), m_SpareWork(spareWork)
{
}

Contradictions::~Contradictions() = default;

const Contradictions::Domain& Contradictions::DomainOf(std::size_t attribute)
{
    if (m_Domains[attribute] == nullptr) {
        m_Domains[attribute] = std::make_unique<const Domain>(m_Model, attribute);
    }
    return *m_Domains[attribute];
}

Outlook Contradictions::Of(const Condition& condition)
{
    const std::size_t own = workOfTest * CountTests(condition);
    const std::size_t spare = std::min(m_SpareWork, mostSpareWork);
    AlternativesOfCondition alternatives(*this, own + spare);
    Outlook outlook = alternatives.Read(condition);
    const std::size_t used = own + spare - alternatives.WorkLeft();
    m_SpareWork -= used > own ? used - own : 0;
    return outlook;
}

std::optional<Certainty> Contradictions::Certain(std::vector<const Cover*> covers)
{
    std::stable_sort(covers.begin(), covers.end(),
                     [](const Cover* left, const Cover* right) { return left->Attribute < right->Attribute; });
    for (auto first = covers.cbegin(); first != covers.cend();) {
        const std::size_t attribute = (*first)->Attribute;
        const auto last = std::find_if(first, covers.cend(),
                                       [attribute](const Cover* other) { return other->Attribute != attribute; });
        const ValueSet states = Joined(first, last);
        const bool asksForValue = std::any_of(first, last, [](const Cover* cover) { return cover->AsksForValue; });
        // rules that ask whether there is a value are meant to hold for all that there are
        const bool isMeantSo = asksForValue && !states.HasNoValue();
        if (!isMeantSo && DomainOf(attribute).WithValue().IsSubsetOf(states)) {
            return Certainty{attribute, states.HasNoValue()};
        }
        first = last;
    }
    return std::nullopt;
}

} // namespace RedfishConfig::Client
