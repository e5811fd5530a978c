#pragma once

#include "Attributes.h"

#include <string>
#include <string_view>
#include <vector>

namespace RedfishConfig::Client {

/**
 * What happens to texts in the library's formulas. It puts values in place of keys ("NAME.CurrentValue", "NAME exist"),
 * key by key in the order of their bytes, wherever a key stands, and without quotation marks; then the formula is split
 * at operators and parentheses.
 */
class FormulaText {
public:
    explicit FormulaText(const Attributes& attributes);

    /** Whether a text would be split, or taken for a key in part. */
    bool IsSafe(std::string_view text) const;

    /**
     * The attributes whose names are endings of @p name, so that their keys stand within its key.
     */
    std::vector<std::string_view> NamesEnding(std::string_view name) const;

private:
    std::vector<std::string> m_Reversed; ///< all names, from the last byte to the first, in order
};

/** Whether the text has an operator character or a parenthesis. */
bool HasOperators(std::string_view text);

} // namespace RedfishConfig::Client
