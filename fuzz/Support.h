#pragma once

#include <RedfishConfig/Log.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

/** What the fuzz targets share. */
namespace Fuzz {

/** Nothing catches it in a fuzzer, which takes it for a crash. */
struct BrokenProperty : std::logic_error {
    using std::logic_error::logic_error;
};

inline void Require(bool holds, const char* property, const std::string& detail = {})
{
    if (!holds) {
        throw BrokenProperty(std::string("Broken property: ") + property + "\n" + detail);
    }
}

/** Two texts that have to be the same. */
inline void RequireSame(const std::string& left, const std::string& right, const char* property)
{
    if (left != right) {
        const auto [one, other] = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
        Require(false, property,
                "one:\n" + left + "\nthe other:\n" + right + "\nthey part at:\n" + std::string(one, left.end()) +
                    "\nand:\n" + std::string(other, right.end()));
    }
}

/** Takes decisions from bytes. When they are used up every further one is 0. */
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Size(size) {}

    bool Empty() const { return m_Size == 0; }

    unsigned Byte()
    {
        if (m_Size == 0) {
            return 0;
        }
        --m_Size;
        return *m_Data++;
    }

    unsigned Below(std::size_t limit) { return Byte() % static_cast<unsigned>(limit); }

    bool Flag() { return (Byte() & 1U) != 0; }

    template <class List>
    auto Pick(const List& list)
    {
        return list[Below(std::size(list))];
    }

    std::string Rest()
    {
        std::string rest(m_Data, m_Data + m_Size);
        m_Size = 0;
        return rest;
    }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Size;
};

using LogLines = std::vector<std::pair<unsigned, std::string>>;

/** The log at its highest level while it lives; the lines are kept. */
class LogOn {
public:
    LogOn()
    {
        RedfishConfig::SetLogSink([this](unsigned level, std::string_view, int, std::string_view text) {
            m_Lines.emplace_back(level, std::string(text));
        });
        RedfishConfig::SetLogLevel(4);
    }
    ~LogOn()
    {
        RedfishConfig::SetLogLevel(0);
        RedfishConfig::SetLogSink({});
    }

    LogOn(const LogOn&) = delete;
    LogOn& operator=(const LogOn&) = delete;

    const LogLines& Lines() const { return m_Lines; }

private:
    LogLines m_Lines;
};

/** A folder for input files, removed when it ends. */
class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string path = (std::filesystem::temp_directory_path() / "redfishconfig-fuzz-XXXXXX").string();
        if (mkdtemp(path.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        m_Path = path;
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_Path, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_Path; }

    /** Writes a file and returns its path. */
    std::string Write(const std::string& name, const std::string& text) const
    {
        const std::filesystem::path path = m_Path / name;
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file << text;
        file.close();
        Require(file.good(), "the temporary folder can be written", path.string());
        return path.string();
    }

private:
    std::filesystem::path m_Path;
};

} // namespace Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
