#include "Suggest.h"

#include "common/Ascii.h"

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace RedfishConfig::App {

namespace {

constexpr std::size_t mostNames = 3;

/** Names that differ in more slips are other names; the bound also keeps a very long argument cheap. */
constexpr std::size_t mostSlips = 5;

/** A shorter text is contained in too many names to tell anything. */
constexpr std::size_t shortestPiece = 3;

/**
 * The number of slips between two texts; one that is more than @p limit may be reported as anything above it. Only
 * beginnings whose lengths differ by no more than the limit can be so near.
 */
std::size_t CountSlips(const std::string& left, const std::string& right, std::size_t limit)
{
    const std::size_t difference = left.size() > right.size() ? left.size() - right.size() : right.size() - left.size();
    if (difference > limit) {
        return limit + 1;
    }
    // rows of the table of distances between beginnings: the one before the last, the last, and the one in work
    std::vector<std::size_t> older(right.size() + 1), last(right.size() + 1), row(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j) {
        last[j] = j;
    }
    for (std::size_t i = 1; i <= left.size(); ++i) {
        const std::size_t begin = i > limit ? i - limit : 1;
        const std::size_t end = std::min(right.size(), i + limit);
        row[begin - 1] = begin == 1 ? i : limit + 1;
        if (end < right.size()) {
            row[end + 1] = limit + 1;
        }
        for (std::size_t j = begin; j <= end; ++j) {
            const std::size_t wrong = left[i - 1] == right[j - 1] ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + wrong});
            const bool changedRound = i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
            if (changedRound) {
                row[j] = std::min(row[j], older[j - 2] + 1);
            }
        }
        std::swap(older, last);
        std::swap(last, row);
    }
    return last[right.size()];
}

} // namespace

std::vector<std::string> NearestNames(const std::string& misspelt, const std::vector<std::string>& names)
{
    if (misspelt.empty()) {
        return {}; // every short name would be near
    }
    const std::string wanted = Ascii::ToLower(misspelt);
    const std::size_t limit = std::min(mostSlips, std::max<std::size_t>(1, wanted.size() / 3));

    std::vector<std::tuple<std::size_t, std::size_t>> found; // rank, position in names
    for (std::size_t position = 0; position < names.size(); ++position) {
        const std::string name = Ascii::ToLower(names[position]);
        const std::size_t slips = CountSlips(wanted, name, limit);
        if (slips <= limit) {
            found.emplace_back(slips, position);
        } else if (wanted.size() >= shortestPiece && name.find(wanted) != std::string::npos) {
            found.emplace_back(mostSlips + name.size() - wanted.size(), position);
        }
    }
    std::sort(found.begin(), found.end());

    std::vector<std::string> nearest;
    for (const auto& [rank, position] : found) {
        if (nearest.size() < mostNames) {
            nearest.push_back(names[position]);
        }
    }
    return nearest;
}

std::string JoinWithOr(const std::vector<std::string>& names)
{
    std::string joined;
    for (std::size_t position = 0; position < names.size(); ++position) {
        const bool isLast = position + 1 == names.size();
        joined += position == 0 ? "" : isLast ? " or " : ", ";
        joined += names[position];
    }
    return joined;
}

std::string DidYouMean(const std::vector<std::string>& names)
{
    return names.empty() ? "" : " Did you mean " + JoinWithOr(names) + "?";
}

} // namespace RedfishConfig::App
