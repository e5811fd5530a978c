#include "ClientTest.h"
#include "Evaluator.h"

#include "support/RegistryBuilder.h"

#include <cstdlib>
#include <memory>
#include <random>

// The same random conditions, written in every form that can say them, give the same verdicts.

namespace {

using namespace ClientTest;
using Published::Truth;

enum class Kind { Term, And, Or, Not };

struct Tree {
    Kind kind = Kind::Term;
    json::object term; ///< without a joiner
    std::vector<Tree> parts;
};

const char* Joiner(const Tree& tree)
{
    return tree.kind == Kind::And ? "AND" : "OR";
}

class Random {
public:
    explicit Random(unsigned seed) : m_Engine(seed) {}

    std::size_t Below(std::size_t bound) { return m_Engine() % bound; }

    template <class Value>
    const Value& OneOf(const std::vector<Value>& list)
    {
        return list[Below(list.size())];
    }

    Tree Term()
    {
        static const std::vector<std::string> equality{"EQU", "NEQ"};
        static const std::vector<std::string> all{"EQU", "NEQ", "GTR", "GEQ", "LSS", "LEQ"};
        const std::string name = OneOf<std::string>({"Choice", "Other", "Few", "Many", "Switch", "Text", "Gone"});
        const bool isNull = Below(10) == 0;
        Tree tree;
        tree.term = {{"MapFromAttribute", name},
                     {"MapFromProperty", "CurrentValue"},
                     {"MapFromCondition", isNull || name == "Switch" ? OneOf(equality) : OneOf(all)},
                     {"MapFromValue", isNull ? json::value() : ValueFor(name)}};
        return tree;
    }

    /** A value for an attribute, as JSON. */
    json::value ValueFor(const std::string& name)
    {
        if (name == "Few") {
            return Below(10);
        }
        if (name == "Many") {
            return 8 + Below(4); // of one digit and of two
        }
        if (name == "Switch") {
            return Below(2) == 0;
        }
        return json::value(OneOf<const char*>({"x", "y", name == "Text" ? "" : "z"}));
    }

    Tree Chain(std::size_t terms, bool onlyOr = false)
    {
        Tree chain = Term();
        for (std::size_t count = 1; count < terms; ++count) {
            chain = Pair(onlyOr || Below(2) == 0 ? Kind::Or : Kind::And, std::move(chain), Term());
        }
        return chain;
    }

    Tree Any(std::size_t terms, bool withNot)
    {
        if (withNot && Below(4) == 0) {
            Tree tree;
            tree.kind = Kind::Not;
            tree.parts.push_back(Any(terms, false));
            return tree;
        }
        if (terms == 1) {
            return Term();
        }
        const std::size_t left = 1 + Below(terms - 1);
        return Pair(Below(2) == 0 ? Kind::Or : Kind::And, Any(left, withNot), Any(terms - left, withNot));
    }

    SettingValueMap Values()
    {
        SettingValueMap values;
        for (const char* name : {"Choice", "Other", "Few", "Many", "Switch", "Text"}) {
            const json::value value = ValueFor(name);
            SettingValue& held = values[name];
            if (Below(5) == 0) {
                held = std::nullopt;
            } else if (value.is_string()) {
                held = std::string(value.get_string());
            } else if (value.is_bool()) {
                held = value.get_bool();
            } else {
                held = value.to_number<std::int64_t>();
            }
        }
        return values;
    }

private:
    static Tree Pair(Kind kind, Tree left, Tree right)
    {
        Tree tree;
        tree.kind = kind;
        tree.parts.push_back(std::move(left));
        tree.parts.push_back(std::move(right));
        return tree;
    }

    std::mt19937 m_Engine;
};

// The writers: a tree as the list of a rule's terms.

void Append(json::object& term, const std::string& joiner)
{
    json::value& mapTerms = term["MapTerms"];
    mapTerms = mapTerms.is_string() ? std::string(mapTerms.get_string()) + "," + joiner : joiner;
}

/** Terms, then joiners: any tree without Not. A chain comes out with one joiner on each later term. */
json::array InStackOrder(const Tree& tree)
{
    if (tree.kind == Kind::Term) {
        return {tree.term};
    }
    json::array list = InStackOrder(tree.parts[0]);
    for (json::value& term : InStackOrder(tree.parts[1])) {
        list.push_back(std::move(term));
    }
    Append(list.back().get_object(), Joiner(tree));
    return list;
}

/** A chain from its end: (a op b) op c is c op (b op a). */
json::array OnEarlier(const Tree& tree)
{
    if (tree.kind == Kind::Term) {
        return {tree.term};
    }
    json::array list{tree.parts[1].term};
    list[0].get_object()["MapTerms"] = Joiner(tree);
    for (json::value& term : OnEarlier(tree.parts[0])) {
        list.push_back(std::move(term));
    }
    return list;
}

json::array WithoutJoiners(const Tree& tree)
{
    json::array list = InStackOrder(tree);
    for (json::value& term : list) {
        term.get_object().erase("MapTerms");
    }
    return list;
}

json::array WithJoinersAtTheEnd(const Tree& tree)
{
    json::array list = WithoutJoiners(tree);
    for (std::size_t joiner = 1; joiner < list.size(); ++joiner) {
        Append(list.back().get_object(), "OR");
    }
    return list;
}

json::array Nested(const Tree& tree, bool onEarlier);

json::object NestedTerm(const Tree& tree, bool onEarlier)
{
    if (tree.kind == Kind::Term) {
        return tree.term;
    }
    if (tree.kind == Kind::Not) {
        json::object term = NestedTerm(tree.parts[0], onEarlier);
        Append(term, "NOT");
        return term;
    }
    return {{"Subexpressions", Nested(tree, onEarlier)}};
}

/** Each pair is a list of its own. */
json::array Nested(const Tree& tree, bool onEarlier)
{
    if (tree.kind == Kind::Term || tree.kind == Kind::Not) {
        return {NestedTerm(tree, onEarlier)};
    }
    json::object left = NestedTerm(tree.parts[0], onEarlier);
    json::object right = NestedTerm(tree.parts[1], onEarlier);
    Append(onEarlier ? left : right, Joiner(tree));
    return {std::move(left), std::move(right)};
}

using Writer = json::array (*)(const Tree&);

const std::map<std::string, Writer>& Writers()
{
    static const std::map<std::string, Writer> writers{
        {"on earlier", OnEarlier},
        {"stack", InStackOrder}, // of a chain: on later
        {"without", WithoutJoiners},
        {"at the end", WithJoinersAtTheEnd},
        {"nested, on earlier", [](const Tree& tree) { return Nested(tree, true); }},
        {"nested, on later", [](const Tree& tree) { return Nested(tree, false); }},
    };
    return writers;
}

RegistryTest::RegistryBuilder Attributes()
{
    using RegistryTest::RegistryBuilder;
    const json::array choices{RegistryBuilder::Choice("x", "x"), RegistryBuilder::Choice("y", "y"),
                              RegistryBuilder::Choice("z", "z")};
    RegistryBuilder registry;
    registry.Attribute("Choice", "Enumeration", {{"Value", choices}})
        .Attribute("Other", "Enumeration", {{"Value", choices}});
    registry.Attribute("Few", "Integer", {{"LowerBound", 0}, {"UpperBound", 9}});
    registry.Attribute("Many", "Integer", {{"LowerBound", 8}, {"UpperBound", 11}});
    registry.Attribute("Switch", "Boolean").Attribute("Text", "String");
    return registry;
}

/** A registry with a setting for each tree, hidden while the tree holds. */
json::value Write(const std::vector<Tree>& trees, Writer writer)
{
    RegistryTest::RegistryBuilder registry = Attributes();
    for (std::size_t position = 0; position < trees.size(); ++position) {
        const std::string name = "T" + std::to_string(position);
        registry.Attribute(name, "Boolean");
        registry.RawRule(json::object{{"Dependency",
                                       {{"MapFrom", writer(trees[position])},
                                        {"MapToAttribute", name},
                                        {"MapToProperty", "Hidden"},
                                        {"MapToValue", true}}}});
    }
    return registry.Json();
}

Truth Evaluate(const Tree& tree, const SettingValueMap& values)
{
    switch (tree.kind) {
    case Kind::And:
        return Published::And(Evaluate(tree.parts[0], values), Evaluate(tree.parts[1], values));
    case Kind::Or:
        return Published::Or(Evaluate(tree.parts[0], values), Evaluate(tree.parts[1], values));
    case Kind::Not:
        return Published::Not(Evaluate(tree.parts[0], values));
    case Kind::Term:
        break;
    }
    static const Published::Registry attributes(Attributes().Json());
    const json::value rule{{"Dependency", {{"MapFrom", json::array{tree.term}}}}};
    return attributes.Holds(rule, values);
}

/** The places of rules that are left out for their size. There is no other error. */
std::set<std::string> TooLarge(const Adaptation& adapted)
{
    std::set<std::string> places;
    for (const Finding& finding : adapted.Findings) {
        if (finding.Level == Severity::Error) {
            EXPECT_EQ(Word(finding.Kind), Word(FindingKind::TooLarge)) << finding.Found << " " << finding.Done;
            places.insert(finding.Place);
        }
    }
    return places;
}

void Compare(const std::vector<Tree>& trees, const std::vector<std::string>& forms, Random& random)
{
    for (const std::string& form : forms) {
        SCOPED_TRACE(form);
        const json::value document = Write(trees, Writers().at(form));
        const RegistryDocument registry = ReadRegistryDocument(json::serialize(document));
        for (int round = 0; round < 10; ++round) {
            ValuesDocument values;
            values.Values = random.Values();
            const Adaptation adapted = Adapt(registry, values);
            if (round == 0) {
                ExpectStable(adapted);
            }
            const std::set<std::string> tooLarge = TooLarge(adapted);
            EXPECT_LE(tooLarge.size(), 2U);
            const auto status = StatusOfAll(adapted);
            for (std::size_t position = 0; position < trees.size(); ++position) {
                if (tooLarge.count("/RegistryEntries/Dependencies/" + std::to_string(position)) > 0) {
                    continue;
                }
                const std::string name = "T" + std::to_string(position);
                const PropertyState& hidden = status.at(name).Hidden;
                EXPECT_FALSE(SaysCannotDecide(hidden.Reason)) << hidden.Reason;
                EXPECT_EQ(hidden.Value, Evaluate(trees[position], values.Values) == Truth::True)
                    << json::serialize(document.at("RegistryEntries").at("Dependencies").at(position));
            }
        }
        if (testing::Test::HasFailure()) {
            return;
        }
    }
}

class GeneratedRegistries : public testing::Test {
protected:
    template <class MakeTree>
    void CompareAll(const std::vector<std::string>& forms, MakeTree makeTree)
    {
        const char* isLong = std::getenv("REDFISHCONFIG_LONG");
        const unsigned registries = isLong != nullptr && std::string(isLong) == "1" ? 400 : 40;
        for (unsigned seed = 1; seed <= registries && !HasFailure(); ++seed) {
            SCOPED_TRACE(seed);
            Random random(seed);
            std::vector<Tree> trees{random.Chain(2, true)}; // one of several terms at least
            while (trees.size() < 20) {
                trees.push_back(makeTree(random));
            }
            Compare(trees, forms, random);
        }
    }
};

TEST_F(GeneratedRegistries, OfChainsAgree)
{
    CompareAll({"on earlier", "stack", "nested, on earlier", "nested, on later"},
               [](Random& random) { return random.Chain(1 + random.Below(5)); });
}

TEST_F(GeneratedRegistries, OfAlternativesAgree)
{
    CompareAll({"on earlier", "stack", "without", "at the end", "nested, on earlier", "nested, on later"},
               [](Random& random) { return random.Chain(1 + random.Below(5), true); });
}

TEST_F(GeneratedRegistries, OfTreesAgree)
{
    CompareAll({"stack", "nested, on earlier", "nested, on later"},
               [](Random& random) { return random.Any(1 + random.Below(6), false); });
}

TEST_F(GeneratedRegistries, OfTreesWithNegationsAgree)
{
    CompareAll({"nested, on earlier", "nested, on later"},
               [](Random& random) { return random.Any(1 + random.Below(6), true); });
}

} // namespace
