#pragma once

#include <memory>
#include <mutex>

namespace RedfishConfig {

/** A value that is made when it is first asked for, also when several threads ask at a time. */
template <class Value>
class Lazily {
public:
    /** @param make answers the value. What it throws goes to the caller, and the next one tries again. */
    template <class Make>
    const Value& Get(Make make) const
    {
        const std::lock_guard<std::mutex> guard(m_Lock);
        if (m_Value == nullptr) {
            m_Value = std::make_unique<const Value>(make());
        }
        return *m_Value;
    }

private:
    mutable std::mutex m_Lock;
    mutable std::unique_ptr<const Value> m_Value;
};

} // namespace RedfishConfig
