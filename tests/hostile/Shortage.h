#pragma once

#include <cstddef>

/** Memory that runs out: the program's own operator new fails where a test says so. */
namespace HostileTest {

enum class Fails {
    Never,
    Once,       ///< the Nth allocation that raises its failure, alone
    FromThere,  ///< that one and every later one
    AllNothrow, ///< every one that answers null instead
};

/** Allocations of this thread fail while it lives. */
class Shortage {
public:
    explicit Shortage(Fails how, std::size_t nth = 0);
    ~Shortage();

    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;

    /** Whether an allocation has failed. */
    bool Felt() const;
};

} // namespace HostileTest
