#pragma once

#include "Numbers.h"
#include "Rules.h"

#include <cctype>
#include <regex>

namespace Reference {

struct Result {
    int Code = 0;
    std::string Message = {};
    std::string Setting = {};
};

struct Options {
    bool Hex = false;
    bool IgnoreProtected = false;
};

/** A property that a rule may decide: its key, its word in reasons, and the registry's own flag. */
struct Property {
    std::string Key;
    std::string Word;
    bool Flag;
};

struct State {
    bool Value = false;
    std::string Reason = {};
};

/** A setting as the registry describes it, and everything that it can be asked. */
class Setting {
public:
    using Texts = std::map<std::string, std::string>;

    Setting(const boost::json::value& attribute, const Options& options, Lines& log) : m_Options(options), m_Log(log)
    {
        const auto text = [&](const char* key) -> std::optional<std::string> {
            const boost::json::value* member = Member(&attribute, key);
            return member != nullptr && member->is_string() ? std::optional(std::string(member->get_string()))
                                                            : std::nullopt;
        };
        const auto flag = [&](const char* key) {
            const boost::json::value* member = Member(&attribute, key);
            return member != nullptr && member->is_bool() && member->get_bool();
        };
        const auto number = [&](const char* key) { return ToInteger(Member(&attribute, key)); };
        Name = text("AttributeName").value_or("");
        Type = text("Type").value_or("");
        m_DisplayName = text("DisplayName");
        m_Help = text("HelpText");
        m_Pattern = text("ValueExpression");
        m_Warning = text("WarningText");
        Current = ToValue(Member(&attribute, "CurrentValue"));
        m_Default = ToValue(Member(&attribute, "DefaultValue"));
        m_Lower = number("LowerBound");
        m_Upper = number("UpperBound");
        m_Increment = number("ScalarIncrement");
        m_MinLength = number("MinLength");
        m_MaxLength = number("MaxLength");
        for (const char* key : {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty"}) {
            m_Flags[key] = flag(key);
        }
        const boost::json::value* choices = Member(&attribute, "Value");
        if (choices != nullptr && choices->is_array()) {
            for (const boost::json::value& choice : choices->get_array()) {
                const boost::json::value* name = Member(&choice, "ValueName");
                if (name != nullptr && name->is_string()) {
                    m_Choices.emplace(ToString(name), ToString(Member(&choice, "ValueDisplayName")));
                }
            }
        }
    }

    std::string Name;
    std::string Type;
    Value Current;
    std::map<std::string, Expression> Expressions;
    std::vector<std::string> Dependencies;

    // ---- properties

    bool Ask(const char* key)
    {
        static const std::map<std::string, std::string> words{
            {"ReadOnly", "read only"}, {"WriteOnly", "write only"}, {"Hidden", "hidden"},
            {"GrayOut", "grayout"},    {"Immutable", "immutable"},  {"IsSystemUniqueProperty", "system unique"}};
        const std::string& word = words.at(key);
        const bool flag = m_Flags.at(key);
        const bool hiddenItself = std::string(key) == "Hidden";
        const std::string is = "the setting is " + word;
        const auto found = Expressions.find(key);
        if (found == Expressions.end()) {
            if (hiddenItself) {
                return false;
            }
            if (flag) {
                m_ErrMsg = is + ".";
            }
            return flag;
        }
        const Expression& expression = found->second;
        if (!std::holds_alternative<bool>(*expression.MapToValue)) {
            Log(4, std::string("The expression is invalid or the MapToValue of ") + key + " is not a boolean value.");
            m_ErrMsg = is + " due to BMC data error.";
            return true;
        }
        const bool mapTo = std::get<bool>(*expression.MapToValue);
        bool holds = false;
        try {
            holds = Calculator(m_Log).Calculate(expression.Formula);
        } catch (const std::string& error) {
            Log(4, "Failed to calculate the " + word + " property with error:" + error);
            m_ErrMsg = is + " duo to dependency calculate error.";
            return true;
        }
        Log(4, std::string("Calculate ") + key + " formular (" + expression.Formula + ") result is " +
                   (holds ? "1" : "0"));
        std::string shown = expression.DisplayText;
        const std::string current = ".CurrentValue";
        for (std::size_t at = 0; (at = shown.find(current, at)) != std::string::npos;) {
            shown.erase(at, current.size());
        }
        const std::string isNot = "the setting is non-" + word;
        if (holds) {
            if (mapTo) {
                m_ErrMsg = is + " due to the following expression: " + shown;
            } else {
                Log(4, isNot + " due to the following expression: " + shown);
            }
            return mapTo;
        }
        if (flag) {
            m_ErrMsg = is + ".";
        } else if (mapTo) {
            m_ErrMsg = is + " if the result of the following expression is true: " + shown;
        } else {
            Log(4, isNot + " if the result of the following expression is true: " + shown);
        }
        return hiddenItself ? false : flag;
    }

    bool AskProtected()
    {
        if (m_Flags.at("Hidden")) {
            m_ErrMsg = "the setting is protected.";
        }
        return m_Flags.at("Hidden");
    }

    /** In the order of the status record: read only, write only, hidden, grayed out, immutable, unique, protected. */
    std::vector<State> Status()
    {
        const std::string before = m_ErrMsg;
        std::vector<State> states;
        for (const char* key :
             {"ReadOnly", "WriteOnly", "Hidden", "GrayOut", "Immutable", "IsSystemUniqueProperty", ""}) {
            m_ErrMsg.clear();
            const bool value = *key != '\0' ? Ask(key) : AskProtected();
            states.push_back({value, m_ErrMsg});
        }
        m_ErrMsg = before;
        return states;
    }

    bool Filter(int action)
    {
        Log(4, "Enter RedfishConfigSetting::filter() with filterAction=" + std::to_string(action));
        m_ErrMsg.clear();
        const auto ask = [&](const char* key) { return Ask(key); };
        const auto protectedUnlessIncluded = [&] { return !m_Options.IgnoreProtected && AskProtected(); };
        switch (action) {
        case 0:
            return !(ask("WriteOnly") || protectedUnlessIncluded() || ask("Hidden"));
        case 1:
            return !(ask("WriteOnly") || AskProtected() || ask("Hidden"));
        case 2:
        case 4:
            return !protectedUnlessIncluded();
        case 3:
        case 5:
            return !AskProtected();
        case 6:
        case 7:
            if (action == 6 ? protectedUnlessIncluded() : AskProtected()) {
                return false;
            }
            if (!ask("Hidden")) {
                ask("GrayOut");
            }
            return true;
        case 8:
        case 17:
        case 18:
            return !(ask("ReadOnly") || protectedUnlessIncluded() || ask("Hidden") || ask("GrayOut") ||
                     ask("Immutable"));
        case 9:
            return !(protectedUnlessIncluded() || ask("Hidden") || ask("GrayOut") || ask("Immutable"));
        case 10:
        case 11:
            return !(AskProtected() || ask("Hidden") || ask("GrayOut") || ask("Immutable"));
        case 12:
            return !(AskProtected() || ask("Hidden") || ask("GrayOut") || ask("Immutable") ||
                     ask("IsSystemUniqueProperty"));
        case 14:
        case 15:
            return !(ask("ReadOnly") || AskProtected() || ask("Hidden") || ask("GrayOut") || ask("Immutable"));
        case 16:
            return !(ask("ReadOnly") || AskProtected() || ask("Hidden") || ask("GrayOut") || ask("Immutable") ||
                     ask("IsSystemUniqueProperty"));
        default:
            return false;
        }
    }

    const std::string& ErrMsg() const { return m_ErrMsg; }

    Texts Properties()
    {
        Log(4, "Enter RedfishConfigNumericSetting::GetProperyMap() with m_AttributeName:" + Name);
        Texts texts;
        for (const auto& [key, flag] : m_Flags) {
            texts.emplace(Name + "." + key, flag ? "true" : "false");
        }
        if (Current) {
            texts.emplace(Name + ".CurrentValue", ToText(Current));
        }
        texts.emplace(Name + " not exist", Current ? "true==false" : "true==true");
        texts.emplace(Name + " exist", Current ? "true==true" : "true==false");
        if (!Current) {
            Log(4, "The setting " + Name + " has no current value property or the current value is null.");
        }
        Log(4, "Exit RedfishConfigNumericSetting::GetProperyMap() with propertyMap.size()=" +
                   std::to_string(texts.size()));
        return texts;
    }

    // ---- queries: 0 value, 1 default, 2 description, 3 valid values

    Result Query(int question, int action, std::string& answer)
    {
        if (!Filter(action)) {
            return Refuse(19, question == 3 && Is("Password") ? Name + " : " : FailsSince());
        }
        switch (question) {
        case 0:
            if (!Current) {
                m_ErrMsg = FailsSince() + "it has no current value.";
                Log(4, "m_ErrMsg:" + m_ErrMsg);
                return {9, m_ErrMsg};
            }
            answer = Show(Current);
            return {};
        case 1:
            if (!m_Default) {
                return Missing("default value");
            }
            answer = Show(m_Default);
            return {};
        case 2: {
            if (!m_Help) {
                return Missing("description");
            }
            const std::string title = m_DisplayName.value_or(Name);
            answer = title + "\n\nHelp for " + title + "\n" + std::string(26, '-') + "\n" + *m_Help;
            return {};
        }
        default: {
            std::string text;
            const Result body = ValidValues(text);
            if (body.Code == 0) {
                if (!m_ErrMsg.empty()) {
                    std::string reason = m_ErrMsg;
                    reason[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(reason[0])));
                    text += "\n\t" + reason;
                }
                answer = text;
            }
            return body;
        }
        }
    }

    // ---- changes

    /** @param code of a refusal by the filter */
    Result Admit(std::string& value, int action, int code, std::string& reason)
    {
        if (!Filter(action)) {
            const Result refusal = Refuse(code, FailsSince());
            reason = m_ErrMsg;
            return refusal;
        }
        const std::string given = value;
        Result check = Check(value, reason);
        if (check.Code != 0) {
            check.Message = "New value " + given + " is invalid: " + reason;
            Log(1, check.Message);
        }
        return check;
    }

    Result Patch(const std::string& value, int action, std::string& patch)
    {
        std::string copy = value;
        std::string reason;
        const Result result = Admit(copy, action, 18, reason);
        if (result.Code == 0) {
            patch = Is("Integer") || Is("Boolean") ? copy : "\"" + copy + "\"";
        }
        return result;
    }

    Result Save(int action, std::string& saved)
    {
        if (!Filter(action)) {
            return Refuse(19, FailsSince());
        }
        if (!Current) {
            Log(4, "The current value of setting " + Name + " is invalid.");
            return {8};
        }
        saved = ToText(Current);
        return {};
    }

    Result Restore(const std::string& key, const std::string& value, Texts& errors, bool withUnique)
    {
        std::string copy = value;
        std::string reason;
        const Result result = Admit(copy, withUnique ? 15 : 16, 34, reason);
        if (result.Code != 0) {
            errors[key] = reason;
        }
        return result;
    }

    const Value& Default() const { return m_Default; }

private:
    void Log(unsigned level, const std::string& text) { m_Log.emplace_back(level, text); }
    bool Is(const char* type) const { return Upper(Type) == Upper(type); }
    std::string FailsSince() const { return "The operation on setting " + Name + " fails since "; }

    Result Refuse(int code, const std::string& words)
    {
        m_ErrMsg = words + m_ErrMsg;
        Log(4, "m_ErrMsg:" + m_ErrMsg);
        return {code, m_ErrMsg};
    }

    Result Missing(const char* what)
    {
        m_ErrMsg = FailsSince() + "it has no " + what + ".";
        Log(1, m_ErrMsg);
        return {9, m_ErrMsg};
    }

    std::string ShowNumber(std::int64_t number) const
    {
        if (!m_Options.Hex) {
            return std::to_string(number);
        }
        std::string digits;
        auto bits = static_cast<std::uint64_t>(number);
        do {
            digits.insert(digits.begin(), "0123456789abcdef"[bits % 16]);
            bits /= 16;
        } while (bits != 0);
        return "0x" + digits;
    }

    std::string Show(const Value& value) const
    {
        const auto* number = std::get_if<std::int64_t>(&*value);
        return number != nullptr ? ShowNumber(*number) : ToText(value);
    }

    Result Scope(const Number& lower, const Number& upper, std::string& text)
    {
        const bool integer = Is("Integer");
        if (lower) {
            text = (integer ? "LowerBound=" + ShowNumber(*lower) : "MinLength=" + std::to_string(*lower)) + " ";
        }
        if (upper) {
            text += (integer ? "UpperBound=" + ShowNumber(*upper) : "MaxLength=" + std::to_string(*upper)) + " ";
        }
        if (lower && upper && *lower > *upper) {
            Log(1, "Setting " + Name + " bounder is invalid: lower is " + std::to_string(*lower) + " upper is " +
                       std::to_string(*upper));
            return {8};
        }
        return {};
    }

    Result ValidValues(std::string& text)
    {
        if (Is("Boolean")) {
            if (!m_Default) {
                text = "true=false";
            } else {
                const std::string shown = ToText(m_Default);
                text = "<" + shown + ">" +
                       (Upper(shown) == "TRUE"    ? "=false"
                        : Upper(shown) == "FALSE" ? "=true"
                                                  : "=true=false");
            }
            return {};
        }
        if (Is("Enumeration")) {
            const std::string marked = m_Default ? ToText(m_Default) : "";
            if (m_Default) {
                text = "<" + marked + ">";
            }
            for (const auto& [name, display] : m_Choices) {
                if (!m_Default || name != marked) {
                    text += (text.empty() ? "" : "=") + name;
                }
            }
            for (const auto& [name, display] : m_Choices) {
                if (name != display) {
                    text += "\n\t[" + name + "] : " + display;
                }
            }
            return {};
        }
        std::string scope;
        const bool integer = Is("Integer");
        const Result result = Scope(integer ? m_Lower : m_MinLength, integer ? m_Upper : m_MaxLength, scope);
        if (result.Code != 0) {
            return result;
        }
        text = (integer ? "Integer " : Is("Password") ? "Password " : "String ") + scope;
        if (integer && m_Increment) {
            text += "ScalarIncrement=" + ShowNumber(*m_Increment) + " ";
        }
        if (integer && m_Default) {
            text += "default=" + Show(m_Default) + " ";
        }
        if (!integer && m_Pattern) {
            text += "Pattern=" + *m_Pattern + " ";
        }
        return {};
    }

    int CheckBounds(Wide value, const Number& lower, const Number& upper, bool nonNegative)
    {
        const int verdict = CheckScope(value, lower, upper, nonNegative);
        const bool negative = nonNegative && (lower.value_or(0) < 0 || upper.value_or(0) < 0);
        if (verdict == 4 && !negative) {
            Log(1,
                "data logical error: " + std::to_string(*lower) + "(lower) > " + std::to_string(*upper) + "(upper).");
        }
        return verdict;
    }

    int CheckPattern(const std::string& value, std::string& reason)
    {
        Log(4, "Entering  RedfishConfigSetting::CheckNewValueIsValid");
        int code = 0;
        if (m_Pattern) {
            try {
                if (!std::regex_match(value, std::regex(*m_Pattern))) {
                    reason = m_Warning ? *m_Warning : "Expression check failed, pattern=" + *m_Pattern;
                    code = 10;
                }
            } catch (const std::exception& error) {
                Log(4, std::string("Exception message : ") + error.what());
                reason = error.what();
                code = 10;
            }
        }
        Log(4, "Exiting  RedfishConfigSetting::CheckNewValueIsValid");
        return code;
    }

    Result Check(std::string& value, std::string& reason)
    {
        if (Is("Enumeration")) {
            return CheckChoice(value, reason);
        }
        if (m_Default && value == ToText(m_Default)) {
            return {};
        }
        if (Is("Boolean")) {
            value = Lower(value);
            if (value == "true" || value == "false") {
                return {};
            }
            reason = "Acceptable values include: Only true and false.";
            return {10};
        }
        return Is("Integer") ? CheckInteger(value, reason) : CheckText(value, reason);
    }

    static std::string Common(const std::string& value)
    {
        const std::string lower = Lower(value);
        return lower == "enable" ? "enabled" : lower == "disable" ? "disabled" : lower;
    }

    Result CheckChoice(std::string& value, std::string& reason)
    {
        if (m_Choices.empty()) {
            reason = "Enumerate setting " + Name + " has no valid value.";
            return {10};
        }
        for (const auto& [name, display] : m_Choices) {
            if (Common(name) == Common(value) || (name != display && Common(display) == Common(value))) {
                value = name;
                return {CheckPattern(value, reason)};
            }
        }
        reason = "value " + value + " is not a valid value for setting " + Name + ".\nAcceptable values include:";
        for (const auto& [name, display] : m_Choices) {
            reason += " <" + name + ">";
        }
        reason += ".";
        return {10};
    }

    Result CheckInteger(const std::string& value, std::string& reason)
    {
        const Number number = ReadInteger(value);
        if (!number) {
            Log(1, "Failed to transfer value to int: bad lexical cast: source type value could not be interpreted as "
                   "target");
            reason = "The value " + value + " is invalid." + Name + " can only be set to an integer.";
            return {10};
        }
        if (CheckPattern(value, reason) != 0) {
            return {10};
        }
        const int verdict = CheckBounds(*number, m_Lower, m_Upper, false);
        if (verdict == 4) {
            return {8};
        }
        if (verdict != 0) {
            reason = ScopeReason(verdict, "The value", "LowerBound", m_Lower, "UpperBound", m_Upper);
            return {10};
        }
        if (m_Increment.value_or(0) == 0 || (!Current && !m_Lower)) {
            return {};
        }
        if (Current && !std::holds_alternative<std::int64_t>(*Current)) {
            Log(1, "Failed to Check Scalar Increment.");
            reason = "The value is invalid for setting " + Name + ".";
            return {10};
        }
        if (!FitsIncrement(*number, Current ? std::get<std::int64_t>(*Current) : *m_Lower, *m_Increment)) {
            Log(1, "Value rejected : numeric scalar increment issue.");
            reason = "scalar increment mismatch. The scalar increment should be: " + std::to_string(*m_Increment);
            return {10};
        }
        return {};
    }

    Result CheckText(const std::string& value, std::string& reason)
    {
        const bool password = Is("Password");
        const int verdict = CheckBounds(static_cast<Wide>(value.size()), m_MinLength, m_MaxLength, true);
        if (verdict == 0) {
            const int pattern = CheckPattern(value, reason);
            return {password ? 0 : pattern};
        }
        if (verdict == 4) {
            reason = password ? reason : "BMC data error.";
            return {8};
        }
        reason = ScopeReason(verdict, "The value length", "MinLength", m_MinLength, "MaxLength", m_MaxLength);
        return {10};
    }

    std::string m_ErrMsg;
    std::optional<std::string> m_DisplayName;
    std::optional<std::string> m_Help;
    std::optional<std::string> m_Pattern;
    std::optional<std::string> m_Warning;
    Value m_Default;
    Number m_Lower;
    Number m_Upper;
    Number m_Increment;
    Number m_MinLength;
    Number m_MaxLength;
    std::map<std::string, bool> m_Flags;
    std::map<std::string, std::string> m_Choices;
    Options m_Options;
    Lines& m_Log;
};

} // namespace Reference
