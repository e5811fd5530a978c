#include "RuleForm.h"

#include "../Limits.h"
#include "../intake/Quote.h"
#include "ValueConversion.h"
#include "common/Ascii.h"

#include <algorithm>
#include <utility>

namespace RedfishConfig::Client {

namespace {

std::string_view Trim(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

/** How the terms of one list are joined. A list of one term has the form SingleTerm. */
RuleForm FormOfList(const std::vector<ListedTerm>& terms)
{
    const auto hasNone = [](const ListedTerm& term) { return term.Joiners.empty(); };
    const auto hasOne = [](const ListedTerm& term) { return term.Joiners.size() == 1; };
    if (std::all_of(terms.begin(), terms.end(), hasNone)) {
        return terms.size() == 1 ? RuleForm::SingleTerm : RuleForm::NoJoiner;
    }
    if (std::all_of(terms.begin(), terms.end() - 1, hasOne) && hasNone(terms.back())) {
        return RuleForm::JoinerOnEarlier;
    }
    if (hasNone(terms.front()) && std::all_of(terms.begin() + 1, terms.end(), hasOne)) {
        return RuleForm::JoinerOnLater;
    }
    std::size_t height = 0; // of the stack
    for (const ListedTerm& term : terms) {
        ++height;
        if (term.Joiners.size() >= height) {
            return RuleForm::None;
        }
        height -= term.Joiners.size();
    }
    return height == 1 ? RuleForm::StackOrder : RuleForm::None;
}

/** Joins two conditions; a left one that is joined in the same way already takes the right one up. */
Condition Join(Condition::Kind kind, Condition left, Condition right)
{
    if (left.What == kind) {
        left.Parts.push_back(std::move(right));
        return left;
    }
    Condition joined;
    joined.What = kind;
    joined.Parts.reserve(2);
    joined.Parts.push_back(std::move(left));
    joined.Parts.push_back(std::move(right));
    return joined;
}

Condition Negate(Condition condition)
{
    Condition negated;
    negated.What = Condition::Kind::Not;
    negated.Parts.push_back(std::move(condition));
    return negated;
}

/** Looks at how the terms of a rule are joined, before any of them is read. */
class FormInspection {
public:
    FormInspection(const FormSurvey& survey, FormedRule& rule) : m_Survey(survey), m_Rule(rule) {}

    void Run(const std::vector<ListedTerm>& terms)
    {
        if (terms.empty()) {
            Refuse("no terms");
            return;
        }
        const RuleForm form = FormOfList(terms);
        m_Rule.Form = m_Terms == 0 ? form : m_Rule.Form; // that of the outermost list
        for (const ListedTerm& term : terms) {
            if (!term.Defect.empty()) {
                m_Rule.UsesBits |= m_Defect.empty() && term.UsesBits;
                Refuse(term.Defect);
            }
            m_IsNested |= term.IsNegated || !term.Nested.empty();
            if (++m_Terms > Limits::termsOfRule) {
                Refuse("more than " + std::to_string(Limits::termsOfRule) + " terms");
                return;
            }
            if (!term.Nested.empty()) {
                Run(term.Nested);
            }
        }
        Check(form, terms.size());
    }

    bool IsNested() const { return m_IsNested; }

    /** Why the rule has no form; empty when it has one. */
    const std::string& Defect() const { return m_Defect; }

private:
    void Refuse(std::string defect)
    {
        if (m_Defect.empty()) {
            m_Defect = std::move(defect);
        }
    }

    void Check(RuleForm form, std::size_t terms)
    {
        if (form == RuleForm::None) {
            Refuse(terms == 1 ? "a joiner on the only term" : "joiners that fit neither pairs of terms nor a stack");
        }
        if (form == RuleForm::NoJoiner && m_Survey.HasJoiners) {
            Refuse("several terms without a joiner, where other rules have joiners");
        }
        const bool earlier = form == RuleForm::JoinerOnEarlier;
        const bool later = form == RuleForm::JoinerOnLater || form == RuleForm::StackOrder;
        m_Rule.AgainstSurvey |= (earlier && m_Survey.LaterLists >= m_Survey.EarlierLists) ||
                                (later && m_Survey.EarlierLists > m_Survey.LaterLists);
    }

    const FormSurvey& m_Survey;
    FormedRule& m_Rule;
    std::size_t m_Terms = 0;
    bool m_IsNested = false;
    std::string m_Defect;
};

/** Reads the terms of a rule that has a form, and joins them. */
class TermJoiner {
public:
    explicit TermJoiner(const TermReading& readTerm) : m_ReadTerm(readTerm) {}

    Condition Run(const std::vector<ListedTerm>& terms) const
    {
        if (terms.size() == 1) {
            return Read(terms.front());
        }
        std::vector<Condition> conditions;
        conditions.reserve(terms.size());
        for (const ListedTerm& term : terms) {
            conditions.push_back(Read(term));
        }
        const RuleForm form = FormOfList(terms);
        return form == RuleForm::JoinerOnEarlier ? JoinFromTheRight(terms, std::move(conditions))
                                                 : JoinStack(terms, std::move(conditions), form);
    }

    /** The terms alone, of a rule that has no form. */
    void Collect(const std::vector<ListedTerm>& terms, std::vector<Condition>& conditions) const
    {
        for (const ListedTerm& term : terms) {
            if (conditions.size() < Limits::termsOfRule && !term.Nested.empty()) {
                Collect(term.Nested, conditions);
            } else if (conditions.size() < Limits::termsOfRule && term.Defect.empty()) {
                conditions.push_back(m_ReadTerm(term.Members));
            }
        }
    }

private:
    /** Terms that are joined in the same way become one list, without copying what it has again and again. */
    static Condition JoinFromTheRight(const std::vector<ListedTerm>& terms, std::vector<Condition> conditions)
    {
        Condition::Kind kind = Condition::Kind::Any;
        std::vector<Condition> parts; // from the right
        const auto close = [&] {
            std::reverse(parts.begin(), parts.end());
            Condition joined;
            joined.What = kind;
            joined.Parts = std::exchange(parts, {});
            parts.push_back(std::move(joined));
        };
        parts.push_back(std::move(conditions.back()));
        for (std::size_t position = terms.size() - 1; position-- > 0;) {
            const Condition::Kind joiner = terms[position].Joiners.front();
            if (parts.size() > 1 && joiner != kind) {
                close();
            }
            kind = joiner;
            parts.push_back(std::move(conditions[position]));
        }
        if (parts.size() > 1) {
            close();
        }
        return std::move(parts.front());
    }

    static Condition JoinStack(const std::vector<ListedTerm>& terms, std::vector<Condition> conditions, RuleForm form)
    {
        std::vector<Condition> stack;
        for (std::size_t position = 0; position < terms.size(); ++position) {
            stack.push_back(std::move(conditions[position]));
            for (const Condition::Kind joiner : terms[position].Joiners) {
                JoinTop(stack, joiner);
            }
            if (form == RuleForm::NoJoiner && stack.size() == 2) {
                JoinTop(stack, Condition::Kind::Any);
            }
        }
        return std::move(stack.front());
    }

    static void JoinTop(std::vector<Condition>& stack, Condition::Kind joiner)
    {
        Condition right = std::move(stack.back());
        stack.pop_back();
        stack.back() = Join(joiner, std::move(stack.back()), std::move(right));
    }

    Condition Read(const ListedTerm& term) const
    {
        Condition condition = term.Nested.empty() ? m_ReadTerm(term.Members) : Run(term.Nested);
        return term.IsNegated ? Negate(std::move(condition)) : condition;
    }

    const TermReading& m_ReadTerm;
};

} // namespace

ListedTerm::ListedTerm(const JsonValue& element, KeyOrder& order) : Members(element, order)
{
    if (!element.IsObject()) {
        Refuse(std::string("a term is ") + KindOf(element));
        return;
    }
    ReadJoiners(Members[TermKey::MapTerms]);
    ReadNested(order);
}

void ListedTerm::ReadNested(KeyOrder& order)
{
    const JsonValue list = Members[TermKey::Subexpressions];
    if (!list.Exists() || list.IsNull()) {
        return;
    }
    const JsonValue attribute = Members[TermKey::MapFromAttribute];
    if (!list.IsArray()) {
        Refuse("\"Subexpressions\" is no list");
    } else if (list.Size() > 0 && attribute.Exists() && !attribute.IsNull()) {
        Refuse("a term has both \"Subexpressions\" and an attribute");
    } else {
        Nested = ListTerms(list, order);
    }
}

void ListedTerm::Refuse(std::string defect)
{
    if (Defect.empty()) {
        Defect = std::move(defect);
    }
}

void ListedTerm::ReadJoiners(const JsonValue& mapTerms)
{
    if (!mapTerms.Exists() || mapTerms.IsNull()) {
        return;
    }
    if (!mapTerms.IsText()) {
        Refuse(std::string("\"MapTerms\" is ") + KindOf(mapTerms));
        return;
    }
    std::string_view rest = mapTerms.Text();
    if (Trim(rest).empty()) {
        return;
    }
    for (std::size_t comma = 0; comma != std::string_view::npos;) {
        comma = rest.find(',');
        ReadJoiner(Trim(rest.substr(0, comma)));
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
}

/** A negation belongs to the term that carries it, and so it is before what joins the term to others. */
void ListedTerm::ReadJoiner(std::string_view word)
{
    const auto is = [&](std::string_view known) { return Ascii::EqualIgnoringCase(word, known); };
    if (is("and") || is("or")) {
        Joiners.push_back(is("and") ? Condition::Kind::All : Condition::Kind::Any);
    } else if (is("not")) {
        if (!Joiners.empty()) {
            Refuse("\"NOT\" behind a joiner, which does not say what it negates");
        }
        IsNegated = !IsNegated;
    } else if (is("bitand") || is("bitor")) {
        UsesBits |= Defect.empty();
        Refuse("a condition on bits");
    } else {
        Refuse("a joiner that is neither AND nor OR nor NOT");
    }
}

std::vector<ListedTerm> ListTerms(const JsonValue& mapFrom, KeyOrder& order)
{
    std::vector<ListedTerm> terms;
    terms.reserve(mapFrom.Size());
    for (const JsonMember& element : mapFrom) {
        terms.emplace_back(element.Value, order);
    }
    return terms;
}

void FormSurvey::Add(const std::vector<ListedTerm>& terms)
{
    const bool isDefective =
        std::any_of(terms.begin(), terms.end(), [](const ListedTerm& term) { return !term.Defect.empty(); });
    if (terms.empty() || isDefective) {
        return; // which is reported when the rule is read
    }
    for (const ListedTerm& term : terms) {
        HasJoiners |= !term.Joiners.empty();
        Add(term.Nested);
    }
    const RuleForm form = FormOfList(terms);
    if (form == RuleForm::JoinerOnEarlier) {
        ++EarlierLists;
    } else if (form == RuleForm::JoinerOnLater || form == RuleForm::StackOrder) {
        ++LaterLists;
    }
}

FormedRule JoinTerms(const std::vector<ListedTerm>& terms, const FormSurvey& survey, const TermReading& readTerm)
{
    FormedRule rule;
    FormInspection inspection(survey, rule);
    inspection.Run(terms);
    const TermJoiner joiner(readTerm);
    if (!inspection.Defect().empty()) {
        rule.Form = RuleForm::None;
        rule.When.Cause = inspection.Defect();
        joiner.Collect(terms, rule.When.Parts);
        return rule;
    }
    rule.When = joiner.Run(terms);
    rule.Form = inspection.IsNested() ? RuleForm::Nested : rule.Form;
    return rule;
}

} // namespace RedfishConfig::Client
