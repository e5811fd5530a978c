#include "Shortage.h"

#include <cstdlib>
#include <new>

namespace HostileTest {

namespace {

thread_local Fails fails = Fails::Never;
thread_local std::size_t allocationsLeft = 0;
thread_local bool hasFailed = false;

bool AllocationFails(bool nothrow)
{
    bool failsNow = false;
    if (fails == Fails::AllNothrow) {
        failsNow = nothrow;
    } else if (fails != Fails::Never && !nothrow) {
        if (allocationsLeft > 0) {
            --allocationsLeft;
        }
        failsNow = allocationsLeft == 0 && (fails == Fails::FromThere || !hasFailed);
    }
    hasFailed = hasFailed || failsNow;
    return failsNow;
}

void* Allocate(std::size_t size, bool nothrow)
{
    return AllocationFails(nothrow) ? nullptr : std::malloc(size > 0 ? size : 1);
}

} // namespace

Shortage::Shortage(Fails how, std::size_t nth)
{
    hasFailed = false;
    allocationsLeft = nth;
    fails = how;
}

Shortage::~Shortage()
{
    fails = Fails::Never;
}

bool Shortage::Felt() const
{
    return hasFailed;
}

} // namespace HostileTest

void* operator new(std::size_t size)
{
    void* memory = HostileTest::Allocate(size, false);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return HostileTest::Allocate(size, true);
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
