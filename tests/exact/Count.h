#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <string>

/** The size of exact tests: a bounded form in every run, the full one with REDFISHCONFIG_LONG. */
namespace Exact {

inline bool IsLong()
{
    const char* const value = std::getenv("REDFISHCONFIG_LONG");
    return value != nullptr && *value != '\0';
}

/** Says how many cases were compared, and fails when they are fewer than there must be. */
inline void Report(const std::string& what, std::size_t count, std::size_t least)
{
    std::cout << count << ' ' << what << std::endl;
    EXPECT_GE(count, least) << what;
}

} // namespace Exact
