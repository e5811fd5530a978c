#include "DeepStack.h"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <system_error>

#include <pthread.h>

namespace RedfishConfig {

namespace {

constexpr std::size_t freeBytes = 6U << 20U;
constexpr std::size_t threadBytes = 8U << 20U;

/** Where the stack of the calling thread is: from the lowest address to behind the highest; empty when not known. */
struct StackRange {
    std::uintptr_t Begin = 0, End = 0;
};

StackRange StackOfThread()
{
    StackRange range;
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) == 0) {
        void* begin = nullptr;
        std::size_t size = 0;
        if (pthread_attr_getstack(&attributes, &begin, &size) == 0) {
            range.Begin = reinterpret_cast<std::uintptr_t>(begin);
            range.End = range.Begin + size;
        }
        pthread_attr_destroy(&attributes);
    }
    return range;
}

/** How much of the calling thread's stack is free; nothing when the thread runs on another one, as coroutines do. */
std::size_t FreeStack()
{
    static thread_local const StackRange stack = StackOfThread();
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    return here >= stack.Begin && here < stack.End ? here - stack.Begin : 0;
}

struct Call {
    const std::function<void()>& Function;
    std::exception_ptr Failure;
};

void* Run(void* argument)
{
    Call& call = *static_cast<Call*>(argument);
    try {
        call.Function();
    } catch (...) {
        call.Failure = std::current_exception();
    }
    return nullptr;
}

void RunOnThread(const std::function<void()>& function)
{
    pthread_attr_t attributes;
    int error = pthread_attr_init(&attributes);
    Call call{function, nullptr};
    pthread_t thread{};
    if (error == 0) {
        error = pthread_attr_setstacksize(&attributes, threadBytes);
        error = error == 0 ? pthread_create(&thread, &attributes, Run, &call) : error;
        pthread_attr_destroy(&attributes);
    }
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), "no stack to match the pattern on");
    }
    pthread_join(thread, nullptr);
    if (call.Failure != nullptr) {
        std::rethrow_exception(call.Failure);
    }
}

} // namespace

void RunOnDeepStack(const std::function<void()>& function)
{
    if (FreeStack() >= freeBytes) {
        function();
    } else {
        RunOnThread(function);
    }
}

} // namespace RedfishConfig
