#pragma once

#include <RedfishConfig/Client/Attribute.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

/**
 * The names of an enumeration's choices as numbers. Two texts name the same choice when they have a number in common.
 * A text that is a value name stands for that; else, as a display name, for the value names of its choices. Where
 * display names are the values it is the other way round.
 */
class ChoiceNumbers {
public:
    /** @param choices stay where they are as long as this is used */
    explicit ChoiceNumbers(const std::vector<Choice>& choices);

    /** Ascending; empty for a text that names no choice. */
    std::vector<std::uint32_t> Of(std::string_view text, bool displayNamesAreValues) const;

    /** Whether two texts are one text, or name the same choice. */
    bool AreSame(std::string_view left, std::string_view right, bool displayNamesAreValues) const;

    /** The value that a text stands for, where that is clear; else the text. */
    std::string_view ValueFor(std::string_view text, bool displayNamesAreValues) const;

    /** The number that such a value is, if it is one. */
    std::optional<std::int64_t> NumberFor(std::string_view text, bool displayNamesAreValues) const;

    /** Whether a text is one of the names. */
    bool Has(std::string_view text) const;

private:
    struct Entry {
        std::string_view Text;
        std::uint32_t Number;
    };
    /** The entries of one kind of names, in the order of their texts. */
    using Entries = std::vector<Entry>;

    static void Sort(Entries& entries);
    using Range = std::pair<Entries::const_iterator, Entries::const_iterator>;

    static Entries::const_iterator Find(const Entries& entries, std::string_view text);
    static Range RangeOf(const Entries& entries, std::string_view text);
    Range RangeOf(std::string_view text, bool displayNamesAreValues) const;

    const std::vector<Choice>* m_Choices;
    Entries m_Names, m_DisplayNames;
};

/** The choice numbers of all attributes, each made when it is asked for. */
class ChoiceNumbersOfAll {
public:
    /** @param attributes stay where they are as long as this is used */
    explicit ChoiceNumbersOfAll(const std::vector<Attribute>& attributes);

    /** Stays where it is. */
    const ChoiceNumbers& Of(std::size_t attribute);

    /** Null when nobody has asked for it. */
    const ChoiceNumbers* Find(std::size_t attribute) const { return m_Numbers[attribute].get(); }

private:
    const std::vector<Attribute>* m_Attributes;
    std::vector<std::unique_ptr<const ChoiceNumbers>> m_Numbers; // by attribute
};

} // namespace RedfishConfig::Client
