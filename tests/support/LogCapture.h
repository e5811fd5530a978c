#pragma once

#include <RedfishConfig/Log.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace RegistryTest {

/** A level and a text of the log. */
using LogLine = std::pair<unsigned, std::string>;

/** Collects the log's lines while it lives; the log is off again afterwards. */
class LogCapture {
public:
    explicit LogCapture(unsigned level = 4)
    {
        RedfishConfig::SetLogSink([this](unsigned lineLevel, std::string_view, int, std::string_view text) {
            m_Lines.emplace_back(lineLevel, std::string(text));
        });
        RedfishConfig::SetLogLevel(level);
    }

    ~LogCapture()
    {
        RedfishConfig::SetLogLevel(0);
        RedfishConfig::SetLogSink({});
    }

    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    const std::vector<LogLine>& Lines() const { return m_Lines; }

    /** The texts of one level, in order. */
    std::vector<std::string> Texts(unsigned level) const
    {
        std::vector<std::string> texts;
        for (const LogLine& line : m_Lines) {
            if (line.first == level) {
                texts.push_back(line.second);
            }
        }
        return texts;
    }

    bool Has(unsigned level, const std::string& text) const { return Count(level, text) > 0; }

    std::size_t Count(unsigned level, const std::string& text) const
    {
        return static_cast<std::size_t>(std::count(m_Lines.begin(), m_Lines.end(), LogLine(level, text)));
    }

    void Clear() { m_Lines.clear(); }

private:
    std::vector<LogLine> m_Lines;
};

} // namespace RegistryTest
