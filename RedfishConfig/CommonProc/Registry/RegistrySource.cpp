#include "RegistrySource.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

namespace RedfishConfig {

namespace {

/** The sources that are in use, by a sample of their texts. */
struct Sources {
    std::mutex lock;
    std::unordered_multimap<std::size_t, std::pair<const std::string*, std::weak_ptr<RegistrySource>>> bySample;
};

Sources& AllSources()
{
    static Sources& sources = *new Sources; // never destroyed: static objects of callers may hold managers
    return sources;
}

/** Tells most texts apart at the cost of a few places of them. */
std::size_t Sample(const std::string& text)
{
    constexpr std::size_t places = 16;
    constexpr std::size_t bytes = 32;
    constexpr std::size_t factor = 31;
    std::size_t sample = text.size();
    for (std::size_t place = 0; place < places; ++place) {
        const std::size_t begin = text.size() / places * place;
        sample = sample * factor + std::hash<std::string_view>()(std::string_view(text).substr(begin, bytes));
    }
    return sample;
}

} // namespace

std::shared_ptr<RegistrySource> RegistrySource::Of(const std::string& text)
{
    const std::size_t sample = Sample(text);
    Sources& sources = AllSources();
    std::shared_ptr<RegistrySource> source; // when it cannot be kept, it is let go after the lock that this takes
    const std::lock_guard<std::mutex> guard(sources.lock);
    const auto [begin, end] = sources.bySample.equal_range(sample);
    for (auto known = begin; known != end; ++known) {
        if (*known->second.first != text) {
            continue;
        }
        source = known->second.second.lock();
        if (source != nullptr) { // else the last manager is just letting it go
            return source;
        }
    }
    source = std::make_shared<RegistrySource>(text);
    sources.bySample.emplace(sample, std::pair(&source->m_Text, std::weak_ptr<RegistrySource>(source)));
    return source;
}

RegistrySource::~RegistrySource()
{
    Sources& sources = AllSources();
    const std::lock_guard<std::mutex> guard(sources.lock);
    const auto [begin, end] = sources.bySample.equal_range(Sample(m_Text));
    const auto own = std::find_if(begin, end, [this](const auto& entry) { return entry.second.first == &m_Text; });
    if (own != end) {
        sources.bySample.erase(own);
    }
}

std::shared_ptr<const Registry> RegistrySource::Read()
{
    const std::lock_guard<std::mutex> guard(m_Lock);
    if (m_Registry == nullptr) {
        m_Registry = Registry::Read(m_Text);
    }
    return m_Registry;
}

} // namespace RedfishConfig
