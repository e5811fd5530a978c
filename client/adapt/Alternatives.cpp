#include "Alternatives.h"

#include "../Limits.h"

#include <algorithm>
#include <map>
#include <utility>

namespace RedfishConfig::Client {

namespace {

/** Whether nobody but the registry decides the flag of the attribute. A formula may ask for it then. */
bool IsPlainFlag(std::size_t attribute, Property flag, const Model& model)
{
    return model.RulesFor(attribute, flag).empty() && model.IsComplete(attribute, flag) &&
           model.FlagsOf(attribute).Has(flag) == model.Attributes()[attribute].Flags.Has(flag);
}

Alternatives TooMany()
{
    return {{},
            {FindingKind::TooLarge, "takes more than " + std::to_string(Limits::conjunctions) + " alternatives or " +
                                        std::to_string(Limits::termsOfConjunctions) + " requirements in them"}};
}

/** Adds requirements to others. @return false when they contradict each other */
bool Add(const Alternative& further, Alternative& alternative)
{
    for (const Requirement& requirement : further) {
        const auto same = std::find_if(alternative.begin(), alternative.end(), [&](const Requirement& earlier) {
            return earlier.Attribute == requirement.Attribute && earlier.Flag == requirement.Flag;
        });
        if (same == alternative.end()) {
            alternative.push_back(requirement);
            continue;
        }
        same->States = same->States & requirement.States;
        if (same->States.IsEmpty()) {
            return false;
        }
    }
    return true;
}

/** Collects alternatives, each once, as long as there are not too many. */
class Collector {
public:
    /** @return false when there are too many */
    bool Add(Alternative alternative)
    {
        if (std::find(m_List.begin(), m_List.end(), alternative) != m_List.end()) {
            return true;
        }
        m_Requirements += alternative.size();
        m_List.push_back(std::move(alternative));
        return m_List.size() <= Limits::conjunctions && m_Requirements <= Limits::termsOfConjunctions;
    }

    Alternatives Take() { return {std::move(m_List), {}}; }

private:
    std::vector<Alternative> m_List;
    std::size_t m_Requirements = 0;
};

/** Sets that are joined pair by pair, so that long lists are not copied again and again. */
class Union {
public:
    void Add(ValueSet states)
    {
        std::size_t size = 1;
        while (!m_Sets.empty() && m_Sets.back().second == size) {
            states = m_Sets.back().first | states;
            m_Sets.pop_back();
            size *= 2;
        }
        m_Sets.emplace_back(std::move(states), size);
    }

    ValueSet Take() const
    {
        ValueSet states;
        for (const auto& [set, size] : m_Sets) {
            states = states | set;
        }
        return states;
    }

private:
    std::vector<std::pair<ValueSet, std::size_t>> m_Sets; // with how many are joined in each
};

bool IsOfOneValue(const Alternative& alternative)
{
    return alternative.size() == 1 && alternative.front().Flag == Property::CurrentValue;
}

/** Alternatives that ask for the value of one attribute alone become one, at the place of the first. */
std::vector<Alternative> JoinOfOneAttribute(std::vector<Alternatives> parts)
{
    std::vector<Alternative> list;
    std::map<std::size_t, std::pair<std::size_t, Union>> joined; // by attribute: where it is in the list
    for (Alternatives& part : parts) {
        for (Alternative& alternative : part.Any) {
            if (IsOfOneValue(alternative)) {
                Requirement& only = alternative.front();
                const auto [entry, isNew] = joined.try_emplace(only.Attribute, list.size(), Union());
                entry->second.second.Add(std::move(only.States));
                if (!isNew) {
                    continue;
                }
            }
            list.push_back(std::move(alternative));
        }
    }
    for (const auto& [attribute, entry] : joined) {
        list[entry.first].front().States = entry.second.Take();
    }
    return list;
}

/** A condition as one of values with the tests of flags settled. */
class Resolver {
public:
    explicit Resolver(TestStates& known) : m_Known(known) {}

    Alternatives Run(const Condition& condition, Wanted wanted)
    {
        switch (condition.What) {
        case Condition::Kind::All:
            return RunParts(condition, wanted, wanted == Wanted::True || wanted == Wanted::NotFalse);
        case Condition::Kind::Any:
            return RunParts(condition, wanted, wanted == Wanted::False || wanted == Wanted::NotTrue);
        case Condition::Kind::Not:
            return Run(condition.Parts.front(), Contrary(wanted));
        case Condition::Kind::Test:
            return condition.Asked.Of == Property::CurrentValue || condition.Asked.Source == noAttribute
                       ? OfValue(condition.Asked, wanted)
                       : OfFlag(condition.Asked, wanted);
        case Condition::Kind::Ignored:
        case Condition::Kind::Unknown:
            break;
        }
        return IsUnknownIncluded(wanted) ? Alternatives::Always() : Alternatives::Never();
    }

private:
    static Wanted Contrary(Wanted wanted)
    {
        switch (wanted) {
        case Wanted::True:
            return Wanted::False;
        case Wanted::NotFalse:
            return Wanted::NotTrue;
        case Wanted::False:
            return Wanted::True;
        case Wanted::NotTrue:
            break;
        }
        return Wanted::NotFalse;
    }

    static bool IsUnknownIncluded(Wanted wanted) { return wanted == Wanted::NotFalse || wanted == Wanted::NotTrue; }

    Alternatives RunParts(const Condition& condition, Wanted wanted, bool areAllNeeded)
    {
        std::vector<Alternatives> parts;
        parts.reserve(condition.Parts.size());
        for (const Condition& part : condition.Parts) {
            if (Counts(part)) {
                parts.push_back(Run(part, wanted));
            }
        }
        if (!areAllNeeded) {
            return Either(std::move(parts));
        }
        if (std::any_of(parts.begin(), parts.end(), [](const Alternatives& part) { return part.IsNever(); })) {
            return Alternatives::Never(); // whatever the others are
        }
        return parts.empty() ? Alternatives::Always() : All(parts, 0, parts.size());
    }

    /** Half by half, so that long lists are not copied again and again. */
    Alternatives All(std::vector<Alternatives>& parts, std::size_t begin, std::size_t end)
    {
        if (end - begin == 1) {
            return std::move(parts[begin]);
        }
        const std::size_t middle = begin + (end - begin) / 2;
        Alternatives left = All(parts, begin, middle);
        return Both(std::move(left), All(parts, middle, end));
    }

    Alternatives OfValue(const Test& test, Wanted wanted)
    {
        const StatesOfTest states = m_Known.Of(test);
        if (!states.Defect.empty()) {
            return {{}, {FindingKind::Inexpressible, states.Defect}};
        }
        ValueSet set = SetFor(wanted, states);
        if (set == ValueSet::Everything()) {
            return Alternatives::Always();
        }
        return set.IsEmpty() ? Alternatives::Never()
                             : Alternatives{{{{test.Source, std::move(set), Property::CurrentValue}}}, {}};
    }

    static ValueSet SetFor(Wanted wanted, const StatesOfTest& states)
    {
        switch (wanted) {
        case Wanted::True:
            return states.True;
        case Wanted::NotFalse:
            return states.False.Complement();
        case Wanted::False:
            return states.False;
        case Wanted::NotTrue:
            break;
        }
        return states.True.Complement();
    }

    Alternatives OfFlag(const Test& test, Wanted wanted)
    {
        const Model& model = m_Known.Values().Of();
        const bool isSet = model.Attributes()[test.Source].Flags.Has(test.Of);
        const bool isEqual = test.Operand == Value(isSet);
        const bool holds = isEqual == (test.Compare == Comparison::Equal);
        if (holds != (wanted == Wanted::True || wanted == Wanted::NotFalse)) {
            return Alternatives::Never();
        }
        if (!IsPlainFlag(test.Source, test.Of, model)) {
            return Alternatives::Always();
        }
        return {{{{test.Source, ValueSet::Of(isSet), test.Of}}}, {}};
    }

    TestStates& m_Known;
};

} // namespace

Alternatives Both(Alternatives left, Alternatives right)
{
    if (left.IsNever() || right.IsNever()) {
        return Alternatives::Never();
    }
    if (left.Reason || right.IsAlways()) {
        return left;
    }
    if (right.Reason || left.IsAlways()) {
        return right;
    }
    Collector collector;
    for (const Alternative& one : left.Any) {
        for (const Alternative& other : right.Any) {
            Alternative both = one;
            if (Add(other, both) && !collector.Add(std::move(both))) {
                return TooMany();
            }
        }
    }
    return collector.Take();
}

Alternatives Either(std::vector<Alternatives> parts)
{
    for (const Alternatives& part : parts) {
        if (part.IsAlways()) {
            return Alternatives::Always();
        }
    }
    for (Alternatives& part : parts) {
        if (part.Reason) {
            return std::move(part);
        }
    }
    Collector collector;
    for (Alternative& alternative : JoinOfOneAttribute(std::move(parts))) {
        if (IsOfOneValue(alternative) && alternative.front().States == ValueSet::Everything()) {
            return Alternatives::Always();
        }
        if (!collector.Add(std::move(alternative))) {
            return TooMany();
        }
    }
    return collector.Take();
}

Alternatives Resolve(const Condition& condition, Wanted wanted, TestStates& known)
{
    if (!Counts(condition)) { // such a rule is false
        return wanted == Wanted::True || wanted == Wanted::NotFalse ? Alternatives::Never() : Alternatives::Always();
    }
    return Resolver(known).Run(condition, wanted);
}

} // namespace RedfishConfig::Client
