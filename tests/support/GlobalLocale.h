#pragma once

#include <locale>

namespace RegistryTest {

/** Makes a locale the C++ global one while it lives. */
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : m_Previous(std::locale::global(locale)) {}
    ~GlobalLocale() { std::locale::global(m_Previous); }

    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;

private:
    std::locale m_Previous;
};

/** Folds the Latin-1 letters \xe9 (e with acute) and \xc9 (its capital) too, as a Latin-1 locale does. */
class LatinLetters : public std::ctype<char> {
protected:
    char do_toupper(char character) const override
    {
        return character == '\xe9' ? '\xc9' : std::ctype<char>::do_toupper(character);
    }
    const char* do_toupper(char* begin, const char* end) const override
    {
        for (; begin != end; ++begin) {
            *begin = do_toupper(*begin);
        }
        return end;
    }
    char do_tolower(char character) const override
    {
        return character == '\xc9' ? '\xe9' : std::ctype<char>::do_tolower(character);
    }
    const char* do_tolower(char* begin, const char* end) const override
    {
        for (; begin != end; ++begin) {
            *begin = do_tolower(*begin);
        }
        return end;
    }
};

inline std::locale LatinLocale()
{
    return std::locale(std::locale::classic(), new LatinLetters);
}

/** Groups digits by thousands, as many locales do. */
class GroupedDigits : public std::numpunct<char> {
protected:
    char do_thousands_sep() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

inline std::locale GroupingLocale()
{
    return std::locale(std::locale::classic(), new GroupedDigits);
}

} // namespace RegistryTest
