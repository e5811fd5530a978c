#pragma once

#include <cstddef>
#include <vector>

namespace RedfishConfig::Client {

/** A rule for an attribute reads another one. Attributes are known by their numbers. */
struct RuleEdge {
    std::size_t From = 0; ///< the rule's target
    std::size_t To = 0;   ///< what it reads
};

/** Edges that lead from an attribute back to it. */
struct RuleCycle {
    std::vector<std::size_t> Edges; ///< their positions in the list, each beginning where the one before ends
    std::vector<std::size_t> Group; ///< all attributes that are in some cycle with these, ascending
};

/**
 * One cycle for each attribute that reads itself, and one, as short as can be, through the first attribute of each
 * group of attributes that depend on each other. Takes time in proportion to the edges.
 */
std::vector<RuleCycle> FindCycles(std::size_t attributes, const std::vector<RuleEdge>& edges);

} // namespace RedfishConfig::Client
