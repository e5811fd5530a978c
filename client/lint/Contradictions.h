#pragma once

#include <RedfishConfig/Client/Model.h>
#include <RedfishConfig/Client/ValueSet.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace RedfishConfig::Client {

/** States of one attribute in each of which a condition is true, whatever all other attributes are. */
struct Cover {
    std::size_t Attribute = noAttribute;
    ValueSet States;
    bool AsksForValue = false; ///< some test of the condition asks whether the attribute has a value
};

/** What a condition comes to when nothing is known of the values of a system. */
struct Outlook {
    bool IsDecided = false;    ///< else the condition is too large, or no part of it counts
    bool CanHold = true;       ///< whether it can ever be true
    std::string Needs;         ///< why it cannot: "needs Fan to be Off and also to be Low"
    std::vector<Cover> Covers; ///< ascending by attribute, each attribute once
};

/** Some condition is true whatever value this attribute has. */
struct Certainty {
    std::size_t Attribute = noAttribute;
    bool WithoutValue = false; ///< also where the attribute has none
};

/**
 * Decides by sets of values which conditions can never be true, and which always are.
 *
 * A condition becomes alternatives, and each alternative a set of states for each attribute that it is about. What a
 * test comes to is known from above (states in which it may be true) and from below (those in which it is for sure).
 * The two differ where the text that a rule uses is that of several choices, and for tests that sets do not decide.
 *
 * What is reported holds for every system of the registry whose values are possible ones, whichever names of choices
 * its values use.
 */
class Contradictions {
public:
    explicit Contradictions(const Model& model);
    ~Contradictions();
    Contradictions(const Contradictions&) = delete;
    Contradictions& operator=(const Contradictions&) = delete;

    Outlook Of(const Condition& condition);

    /** Of conditions with these covers, whether one is true whatever value some attribute has. */
    std::optional<Certainty> Certain(std::vector<const Cover*> covers);

    class Domain;

private:
    const Domain& DomainOf(std::size_t attribute);
    friend class AlternativesOfCondition;

    const Model& m_Model;
    std::vector<std::unique_ptr<const Domain>> m_Domains; // by attribute; null until it is asked for
    std::size_t m_SpareWork;                              // for large conditions, all of them together
};

} // namespace RedfishConfig::Client
