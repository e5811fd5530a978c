#pragma once

#include <cstddef>
#include <vector>

namespace RedfishConfig::Client {

/** A rule for an attribute reads another one. Attributes are known by their numbers. */
struct RuleEdge {
    std::size_t From = 0; ///< the rule's target
    std::size_t To = 0;   ///< what it reads
};

/** A way along edges that comes back to where it began. */
struct RuleCycle {
    std::vector<std::size_t> Edges;   ///< their positions in the list, in the order of the way
    std::vector<std::size_t> Tangled; ///< all attributes that lie on some circle with these, ascending
};

/**
 * One circle for each attribute that reads itself, and one, as short as can be, through the first attribute of each
 * group of attributes that lead to each other.
 */
std::vector<RuleCycle> FindCycles(std::size_t attributes, const std::vector<RuleEdge>& edges);

} // namespace RedfishConfig::Client
