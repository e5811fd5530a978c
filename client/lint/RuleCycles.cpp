#include "RuleCycles.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <utility>

namespace RedfishConfig::Client {

namespace {

constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

/** The edges by the attribute that they lead away from. */
class Graph {
public:
    Graph(std::size_t attributes, const std::vector<RuleEdge>& edges) : m_Edges(edges), m_Begin(attributes + 1, 0)
    {
        for (const RuleEdge& edge : edges) {
            ++m_Begin[edge.From + 1];
        }
        for (std::size_t attribute = 0; attribute < attributes; ++attribute) {
            m_Begin[attribute + 1] += m_Begin[attribute];
        }
        std::vector<std::size_t> next(m_Begin.begin(), m_Begin.end() - 1);
        m_Order.resize(edges.size());
        for (std::size_t edge = 0; edge < edges.size(); ++edge) {
            m_Order[next[edges[edge].From]++] = edge;
        }
    }

    std::size_t Attributes() const { return m_Begin.size() - 1; }
    std::size_t Begin(std::size_t attribute) const { return m_Begin[attribute]; }
    std::size_t End(std::size_t attribute) const { return m_Begin[attribute + 1]; }
    std::size_t EdgeAt(std::size_t index) const { return m_Order[index]; } ///< from Begin() to End()
    std::size_t TargetOf(std::size_t edge) const { return m_Edges[edge].To; }
    std::size_t OriginOf(std::size_t edge) const { return m_Edges[edge].From; }

private:
    const std::vector<RuleEdge>& m_Edges;
    std::vector<std::size_t> m_Begin;
    std::vector<std::size_t> m_Order;
};

/** Groups of attributes that lead to each other, by Tarjan's algorithm without recursion: registries may be hostile. */
class Groups {
public:
    explicit Groups(const Graph& graph)
        : m_Graph(graph),
          m_Number(graph.Attributes(), none),
          m_Lowest(graph.Attributes(), 0),
          m_GroupOf(graph.Attributes(), none)
    {
        for (std::size_t attribute = 0; attribute < graph.Attributes(); ++attribute) {
            if (m_Number[attribute] == none) {
                Visit(attribute);
            }
        }
    }

    std::vector<std::vector<std::size_t>> TakeMembers() { return std::move(m_Members); }
    std::size_t GroupOf(std::size_t attribute) const { return m_GroupOf[attribute]; }

private:
    struct Step {
        std::size_t Attribute;
        std::size_t Next; ///< the next edge to follow, an index for Graph::EdgeAt()
    };

    void Enter(std::size_t attribute)
    {
        m_Number[attribute] = m_Lowest[attribute] = m_Count++;
        m_Open.push_back(attribute);
        m_Steps.push_back({attribute, m_Graph.Begin(attribute)});
    }

    void Visit(std::size_t root)
    {
        Enter(root);
        while (!m_Steps.empty()) {
            const std::size_t attribute = m_Steps.back().Attribute;
            if (m_Steps.back().Next < m_Graph.End(attribute)) {
                const std::size_t target = m_Graph.TargetOf(m_Graph.EdgeAt(m_Steps.back().Next++));
                if (m_Number[target] == none) {
                    Enter(target);
                } else if (m_GroupOf[target] == none) {
                    m_Lowest[attribute] = std::min(m_Lowest[attribute], m_Number[target]);
                }
                continue;
            }
            m_Steps.pop_back();
            if (!m_Steps.empty()) {
                std::size_t& lowest = m_Lowest[m_Steps.back().Attribute];
                lowest = std::min(lowest, m_Lowest[attribute]);
            }
            if (m_Lowest[attribute] == m_Number[attribute]) {
                Close(attribute);
            }
        }
    }

    void Close(std::size_t first)
    {
        std::vector<std::size_t>& members = m_Members.emplace_back();
        std::size_t attribute = none;
        do {
            attribute = m_Open.back();
            m_Open.pop_back();
            m_GroupOf[attribute] = m_Members.size() - 1;
            members.push_back(attribute);
        } while (attribute != first);
        std::sort(members.begin(), members.end());
    }

    const Graph& m_Graph;
    std::size_t m_Count = 0;
    std::vector<std::size_t> m_Number; // in the order of the first visits
    std::vector<std::size_t> m_Lowest;
    std::vector<std::size_t> m_GroupOf;
    std::vector<std::size_t> m_Open;
    std::vector<Step> m_Steps;
    std::vector<std::vector<std::size_t>> m_Members;
};

/** The edges of the shortest path from an attribute back to it, over others of its group. */
std::vector<std::size_t> ShortestCycle(const Graph& graph, const Groups& groups, std::size_t start,
                                       std::vector<std::size_t>& reachedBy)
{
    std::deque<std::size_t> waiting{start};
    for (; !waiting.empty(); waiting.pop_front()) {
        const std::size_t attribute = waiting.front();
        for (std::size_t index = graph.Begin(attribute); index < graph.End(attribute); ++index) {
            const std::size_t edge = graph.EdgeAt(index);
            const std::size_t target = graph.TargetOf(edge);
            if (target == attribute || groups.GroupOf(target) != groups.GroupOf(start)) {
                continue;
            }
            if (target != start) {
                if (reachedBy[target] == none) {
                    reachedBy[target] = edge;
                    waiting.push_back(target);
                }
                continue;
            }
            std::vector<std::size_t> path{edge};
            for (std::size_t at = attribute; at != start; at = graph.OriginOf(path.back())) {
                path.push_back(reachedBy[at]);
            }
            std::reverse(path.begin(), path.end());
            return path;
        }
    }
    return {};
}

} // namespace

std::vector<RuleCycle> FindCycles(std::size_t attributes, const std::vector<RuleEdge>& edges)
{
    const Graph graph(attributes, edges);
    Groups groups(graph);
    std::vector<std::vector<std::size_t>> members = groups.TakeMembers();
    std::sort(members.begin(), members.end(),
              [](const auto& left, const auto& right) { return left.front() < right.front(); });
    std::vector<RuleCycle> cycles;
    std::vector<bool> readsItself(attributes, false);
    for (std::size_t edge = 0; edge < edges.size(); ++edge) {
        const std::size_t attribute = edges[edge].From;
        if (edges[edge].To == attribute && !readsItself[attribute]) {
            readsItself[attribute] = true;
            cycles.push_back({{edge}, {attribute}});
        }
    }
    std::vector<std::size_t> reachedBy(attributes, none);
    for (std::vector<std::size_t>& group : members) {
        if (group.size() > 1) {
            std::vector<std::size_t> path = ShortestCycle(graph, groups, group.front(), reachedBy);
            cycles.push_back({std::move(path), std::move(group)});
        }
    }
    return cycles;
}

} // namespace RedfishConfig::Client
