#pragma once

/**
 * @file
 * What a registry publishes, understood: its attributes, menus and rules. Read once, never changed, and shared by all
 * systems that have the registry.
 */

#include <RedfishConfig/Client/Attribute.h>
#include <RedfishConfig/Client/Documents.h>
#include <RedfishConfig/Client/Finding.h>
#include <RedfishConfig/Client/Json.h>
#include <RedfishConfig/Client/Rule.h>
#include <RedfishConfig/Export.h>

#include <bitset>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace RedfishConfig::Client {

class ConditionPrograms;
class Findings;
class NameTable;

/** Positions in one of the lists of a model, ascending. */
struct IndexRange {
    const std::size_t* First = nullptr;
    const std::size_t* Last = nullptr;
    const std::size_t* begin() const { return First; }
    const std::size_t* end() const { return Last; }
    std::size_t size() const { return static_cast<std::size_t>(Last - First); }
    bool empty() const { return First == Last; }
    std::size_t operator[](std::size_t place) const { return First[place]; }
};

/** What became of the published rules of one form. */
struct RuleCount {
    std::size_t Published = 0;
    std::size_t Read = 0;    ///< in Model::Rules()
    std::size_t LeftOut = 0; ///< those that Model leaves out; with a finding
};

/**
 * The attributes, menus and rules of a registry. Attributes, menus and rules are known by their index in these lists;
 * Position is that in the published document.
 *
 * An attribute whose name differs from an earlier one in the case of letters alone is left out, with a finding, as are
 * those without a name. A rule is left out, with a finding, when its target is neither an attribute nor a menu, its
 * property is none of an attribute (or, on a menu, one of a single setting), or its outcome is none that the property
 * can have, or when more menus are targets of rules than can be kept. A rule that gives CurrentValue or DefaultValue a
 * value of another type than the attribute's stays as it is. So does one with terms that have no meaning: these terms
 * are never known.
 *
 * May be read by several threads.
 */
class REDFISHCONFIG_EXPORT Model {
public:
    /** Reads a registry. Never throws for what is in it; of a document that is not Usable() the model is empty. */
    static std::shared_ptr<const Model> Read(const RegistryDocument& document);

    ~Model();
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    const std::vector<Attribute>& Attributes() const { return m_Attributes; }
    const std::vector<Menu>& Menus() const { return m_Menus; }

    /** In the order of the registry. */
    const std::vector<Rule>& Rules() const { return m_Rules; }

    /** The index of the attribute of that name; else of one that differs in the case of ASCII letters alone. */
    std::optional<std::size_t> Find(std::string_view name) const;

    /** The rules that decide a property of an attribute, those on menus that it is in among them; indices. */
    IndexRange RulesFor(std::size_t attribute, Property property) const;

    /** The rules that read the value of an attribute, as terms without a meaning do; indices. Tests of flags are none.
     */
    IndexRange RulesReading(std::size_t attribute) const;

    /** The menus that an attribute is in, as far as the registry describes them; indices. */
    IndexRange MenusOf(std::size_t attribute) const;

    /** The attribute's own flags and those of its menus. */
    FlagSet FlagsOf(std::size_t attribute) const;

    /**
     * Whether all rules and flags of menus that decide a property of an attribute are kept. Where a limit leaves some
     * out, with a finding, what they would say is not known.
     */
    bool IsComplete(std::size_t attribute, Property property) const;

    /** What is found in the registry alone, whatever the values of a system are. */
    const std::vector<Finding>& Findings() const { return m_Findings; }

    /** The published rules by form. */
    const std::map<RuleForm, RuleCount>& Forms() const { return m_Forms; }

    /** "Id", "Language" and "RegistryVersion" of the registry; empty where it has none. */
    const std::string& Id() const { return m_Id; }
    const std::string& Language() const { return m_Language; }
    const std::string& RegistryVersion() const { return m_RegistryVersion; }

    /** JSON Pointers into the document as it was given. */
    std::string PointerToAttribute(std::size_t attribute) const;
    std::string PointerToRule(std::size_t rule) const;

    /** To a member of an attribute, under the key that the document has; under that of today where it has none. */
    std::string PointerToMember(std::size_t attribute, Property property) const;

    /** The document that the model was read from. */
    const RegistryDocument& Document() const { return m_Document; }

    /** The conditions as programs over tests, for Evaluation. */
    const ConditionPrograms& Programs() const { return *m_Programs; }

private:
    friend class ModelReader;
    using PropertySet = std::bitset<propertyCount>;
    Model();
    struct MenuRuleRoom;
    void BuildIndices(std::vector<PropertySet> leftOutOnMenus, Client::Findings& findings);
    void FindMenus(std::vector<std::vector<std::size_t>>& below, PropertySet decidedByMenus,
                   Client::Findings& findings);
    PropertySet DecidedByMenus(const std::vector<PropertySet>& leftOutOnMenus) const;
    void MarkIncomplete(std::size_t attribute, PropertySet properties);
    std::optional<std::vector<std::size_t>> TargetsOf(std::size_t index,
                                                      const std::vector<std::vector<std::size_t>>& below,
                                                      MenuRuleRoom& room, Client::Findings& findings) const;

    RegistryDocument m_Document; // its findings are not kept here
    std::string m_Id, m_Language, m_RegistryVersion;
    std::vector<Attribute> m_Attributes;
    std::vector<Menu> m_Menus;
    std::vector<Rule> m_Rules;
    std::vector<Finding> m_Findings;
    std::map<RuleForm, RuleCount> m_Forms;
    std::unique_ptr<const NameTable> m_Names;
    std::unique_ptr<const ConditionPrograms> m_Programs;

    // lists of lists, one behind the other: that of key N is from begin[N] to begin[N + 1]
    struct Lists {
        Lists() = default;
        Lists(std::size_t keys, const std::vector<std::pair<std::size_t, std::size_t>>& pairs);
        std::vector<std::size_t> Begin;
        std::vector<std::size_t> Items;
        IndexRange Of(std::size_t key) const;
    };
    Lists m_RulesFor;     // by attribute and property
    Lists m_RulesReading; // by attribute
    Lists m_MenusOf;      // by attribute

    std::vector<JsonValue> m_Published;    // the attributes
    std::vector<PropertySet> m_Incomplete; // by attribute: those that are not complete; empty where all are
};

} // namespace RedfishConfig::Client
