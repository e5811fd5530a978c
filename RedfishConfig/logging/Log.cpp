#include <RedfishConfig/Log.h>

#include "LogLine.h"

#include <iostream>
#include <locale>
#include <memory>
#include <mutex>
#include <utility>

namespace RedfishConfig {

std::atomic<unsigned> currentLogLevel{0};

namespace {

void WriteToStderr(unsigned level, std::string_view file, int line, std::string_view text)
{
    std::ostringstream whole; // one write, so that lines of several threads do not mix
    whole.imbue(std::locale::classic());
    whole << '[' << level << "] " << file << ':' << line << ": ";
    for (const char character : text) { // a line feed in a name or value must not begin a line
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7f) {
            constexpr char hexDigits[] = "0123456789abcdef";
            whole << "\\x" << hexDigits[byte >> 4U] << hexDigits[byte & 0xfU];
        } else {
            whole << character;
        }
    }
    whole << '\n';
    std::cerr << whole.str();
}

/** The process's sink. A line is emitted outside the lock, so a sink may log or replace itself. */
struct SinkHolder {
    std::mutex lock;
    std::shared_ptr<const LogSink> sink = std::make_shared<const LogSink>(WriteToStderr);
};

SinkHolder& Holder()
{
    static SinkHolder& holder = *new SinkHolder; // never destroyed: static objects of callers may log to the end
    return holder;
}

} // namespace

Log::Log(unsigned level, const char* file, int line)
    : m_Level(level), m_IsOn(LogIsOn(level)), m_File(file), m_Line(line)
{
    m_Stream.imbue(std::locale::classic()); // no grouping of digits, whatever the global locale has
}

Log::~Log()
{
    if (!m_IsOn) {
        return;
    }
    try {
        std::shared_ptr<const LogSink> sink;
        {
            SinkHolder& holder = Holder();
            const std::lock_guard<std::mutex> guard(holder.lock);
            sink = holder.sink;
        }
        (*sink)(m_Level, m_File, m_Line, m_Stream.str());
    } catch (...) {
        // A line that cannot be emitted is lost; the operation that logs it goes on.
    }
}

std::ostringstream& Log::Stream()
{
    return m_Stream;
}

void SetLogSink(LogSink sink)
{
    auto next = std::make_shared<const LogSink>(sink ? std::move(sink) : LogSink(WriteToStderr));
    SinkHolder& holder = Holder();
    const std::lock_guard<std::mutex> guard(holder.lock);
    holder.sink.swap(next);
}

void SetLogLevel(unsigned level)
{
    currentLogLevel.store(level, std::memory_order_relaxed);
}

unsigned LogLevel()
{
    return currentLogLevel.load(std::memory_order_relaxed);
}

LogEntryAndExit::LogEntryAndExit(const char* name, const char* file, int line)
    : m_Name(name), m_File(file), m_Line(line)
{
    if (LogIsOn(LogDetail)) {
        Log(LogDetail, m_File, m_Line).Stream() << "Entering  " << m_Name;
    }
}

LogEntryAndExit::~LogEntryAndExit()
{
    if (LogIsOn(LogDetail)) {
        Log(LogDetail, m_File, m_Line).Stream() << "Exiting  " << m_Name;
    }
}

} // namespace RedfishConfig
