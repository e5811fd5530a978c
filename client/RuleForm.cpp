#include "RuleForm.h"

#include "Limits.h"
#include "Place.h"
#include "Value.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace RedfishConfig::Client {

namespace json = boost::json;

std::string_view Word(RuleForm form)
{
    switch (form) {
    case RuleForm::SingleTerm:
        return "single-term";
    case RuleForm::JoinerOnEarlier:
        return "joiner-on-earlier";
    case RuleForm::JoinerOnLater:
        return "joiner-on-later";
    case RuleForm::StackOrder:
        return "stack-order";
    case RuleForm::NoJoiner:
        return "no-joiner";
    case RuleForm::Nested:
        return "nested";
    case RuleForm::None:
        break;
    }
    return "none";
}

namespace {

/** Why a rule has no form. */
struct FormDefect : std::runtime_error {
    explicit FormDefect(const std::string& text, bool bits = false) : std::runtime_error(text), UsesBits(bits) {}
    bool UsesBits;
};

struct ListedTerm {
    const json::object* object = nullptr;
    const json::array* subexpressions = nullptr; ///< in place of a comparison
    bool negated = false;
    std::vector<Condition::Kind> joiners;
};

std::string_view Trim(std::string_view text)
{
    const std::size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

/** A negation belongs to the term that carries it, and so stands before what joins the term to others. */
void ReadJoiner(std::string_view word, ListedTerm& term)
{
    const std::string lower = LowerCase(Trim(word));
    if (lower == "and" || lower == "or") {
        term.joiners.push_back(lower == "and" ? Condition::Kind::All : Condition::Kind::Any);
    } else if (lower == "not") {
        if (!term.joiners.empty()) {
            throw FormDefect("\"NOT\" behind a joiner, which does not say what it negates");
        }
        term.negated = !term.negated;
    } else if (lower == "bitand" || lower == "bitor") {
        throw FormDefect("a condition on bits: " + Quote(word), true);
    } else {
        throw FormDefect("no joiner: " + Quote(word));
    }
}

void ReadJoiners(const json::value& value, ListedTerm& term)
{
    if (value.is_null()) {
        return;
    }
    const json::string* text = value.if_string();
    if (text == nullptr) {
        throw FormDefect(std::string("\"MapTerms\" is ") + KindOf(value));
    }
    std::string_view rest(text->data(), text->size());
    if (Trim(rest).empty()) {
        return;
    }
    for (std::size_t comma = 0; comma != std::string_view::npos;) {
        comma = rest.find(',');
        ReadJoiner(rest.substr(0, comma), term);
        rest.remove_prefix(comma == std::string_view::npos ? rest.size() : comma + 1);
    }
}

bool IsAbsent(const json::object& object, json::string_view key)
{
    const json::value* member = object.if_contains(key);
    return member == nullptr || member->is_null();
}

ListedTerm ReadTerm(const json::value& element)
{
    ListedTerm term;
    term.object = element.if_object();
    if (term.object == nullptr) {
        throw FormDefect(std::string("a term is ") + KindOf(element));
    }
    if (const json::value* mapTerms = term.object->if_contains("MapTerms")) {
        ReadJoiners(*mapTerms, term);
    }
    if (!IsAbsent(*term.object, "Subexpressions")) {
        term.subexpressions = term.object->at("Subexpressions").if_array();
        if (term.subexpressions == nullptr) {
            throw FormDefect("\"Subexpressions\" is no list");
        }
        if (term.subexpressions->empty()) {
            term.subexpressions = nullptr;
        } else if (!IsAbsent(*term.object, "MapFromAttribute")) {
            throw FormDefect("a term has both \"Subexpressions\" and an attribute");
        }
    }
    return term;
}

std::vector<ListedTerm> ReadTerms(const json::array& list)
{
    std::vector<ListedTerm> terms;
    terms.reserve(list.size());
    for (const json::value& element : list) {
        terms.push_back(ReadTerm(element));
    }
    return terms;
}

/** How the terms of one list are joined. A list of one term has the form SingleTerm. */
RuleForm FormOfList(const std::vector<ListedTerm>& terms)
{
    const auto hasNone = [](const ListedTerm& term) { return term.joiners.empty(); };
    const auto hasOne = [](const ListedTerm& term) { return term.joiners.size() == 1; };
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
        if (term.joiners.size() >= height) {
            return RuleForm::None;
        }
        height -= term.joiners.size();
    }
    return height == 1 ? RuleForm::StackOrder : RuleForm::None;
}

void SurveyList(const json::array& list, FormSurvey& survey)
{
    std::vector<ListedTerm> terms;
    try {
        terms = ReadTerms(list);
    } catch (const FormDefect&) {
        return; // told when the rule is read
    }
    if (terms.empty()) {
        return;
    }
    for (const ListedTerm& term : terms) {
        survey.HasJoiners |= !term.joiners.empty();
        if (term.subexpressions != nullptr) {
            SurveyList(*term.subexpressions, survey);
        }
    }
    const RuleForm form = FormOfList(terms);
    if (form == RuleForm::JoinerOnEarlier) {
        ++survey.EarlierLists;
    } else if (form == RuleForm::JoinerOnLater || form == RuleForm::StackOrder) {
        ++survey.LaterLists;
    }
}

/** Reads the terms of one rule into its condition. */
class RuleReader {
public:
    RuleReader(const FormSurvey& survey, FormedRule& rule) : m_Survey(survey), m_Rule(rule) {}

    /** The condition of a list, and through @p form how it is joined. */
    Condition Read(const json::array& list, RuleForm& form)
    {
        const std::vector<ListedTerm> terms = ReadTerms(list);
        if (terms.empty()) {
            throw FormDefect("no terms");
        }
        form = FormOfList(terms);
        Check(form, terms.size());
        return form == RuleForm::JoinerOnEarlier ? ReadFromTheRight(terms) : ReadStack(terms, form);
    }

    bool IsNested() const { return m_Nested; }

private:
    void Check(RuleForm form, std::size_t terms)
    {
        if (form == RuleForm::None) {
            throw FormDefect(terms == 1 ? "a joiner on the only term"
                                        : "joiners that fit neither pairs of terms nor a stack");
        }
        if (form == RuleForm::NoJoiner && m_Survey.HasJoiners) {
            throw FormDefect("several terms without a joiner, where other rules have joiners");
        }
        const bool earlier = form == RuleForm::JoinerOnEarlier;
        const bool later = form == RuleForm::JoinerOnLater || form == RuleForm::StackOrder;
        m_Rule.AgainstSurvey |= (earlier && m_Survey.LaterLists >= m_Survey.EarlierLists) ||
                                (later && m_Survey.EarlierLists > m_Survey.LaterLists);
    }

    Condition ReadFromTheRight(const std::vector<ListedTerm>& terms)
    {
        std::vector<Condition> conditions;
        conditions.reserve(terms.size());
        for (const ListedTerm& term : terms) {
            conditions.push_back(ReadOne(term));
        }
        Condition joined = std::move(conditions.back());
        for (std::size_t position = terms.size() - 1; position-- > 0;) {
            joined = Join(terms[position].joiners.front(), std::move(conditions[position]), std::move(joined));
        }
        return joined;
    }

    Condition ReadStack(const std::vector<ListedTerm>& terms, RuleForm form)
    {
        std::vector<Condition> stack;
        for (const ListedTerm& term : terms) {
            stack.push_back(ReadOne(term));
            for (const Condition::Kind joiner : term.joiners) {
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

    Condition ReadOne(const ListedTerm& term)
    {
        m_Nested |= term.negated || term.subexpressions != nullptr;
        Condition condition;
        if (term.subexpressions != nullptr) {
            RuleForm form = RuleForm::None;
            condition = Read(*term.subexpressions, form);
        } else {
            if (m_Rule.Terms.size() == Limits::termsOfRule) {
                throw FormDefect("more than " + std::to_string(Limits::termsOfRule) + " terms");
            }
            condition = TermCondition(m_Rule.Terms.size());
            m_Rule.Terms.push_back(term.object);
        }
        return term.negated ? Negate(std::move(condition)) : condition;
    }

    const FormSurvey& m_Survey;
    FormedRule& m_Rule;
    bool m_Nested = false;
};

} // namespace

const json::array* TermsOf(const json::value& rule)
{
    const json::object* object = rule.if_object();
    const json::value* dependency = object != nullptr ? object->if_contains("Dependency") : nullptr;
    const json::object* inner = dependency != nullptr ? dependency->if_object() : nullptr;
    const json::value* mapFrom = inner != nullptr ? inner->if_contains("MapFrom") : nullptr;
    return mapFrom != nullptr ? mapFrom->if_array() : nullptr;
}

FormSurvey Survey(const json::array& rules)
{
    FormSurvey survey;
    for (const json::value& rule : rules) {
        if (const json::array* terms = TermsOf(rule)) {
            SurveyList(*terms, survey);
        }
    }
    return survey;
}

FormedRule TellForm(const json::array& mapFrom, const FormSurvey& survey)
{
    FormedRule rule;
    try {
        RuleReader reader(survey, rule);
        rule.Root = reader.Read(mapFrom, rule.Form);
        rule.Form = reader.IsNested() ? RuleForm::Nested : rule.Form;
    } catch (const FormDefect& defect) {
        rule.Form = RuleForm::None;
        rule.Defect = defect.what();
        rule.UsesBits = defect.UsesBits;
    }
    return rule;
}

} // namespace RedfishConfig::Client
