#include "app/FileWriter.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

// A file is written as a whole or not at all, whatever the system refuses.

namespace {

using namespace RedfishConfig::App;
namespace fs = std::filesystem;

class FileWriting : public testing::Test {
protected:
    FileWriting() { fs::create_directory(m_Folder); }
    ~FileWriting() override { fs::remove_all(m_Folder); }

    std::string Name(const std::string& name) const { return (m_Folder / name).string(); }

    static std::string TextOf(const std::string& file)
    {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::size_t FilesInFolder() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_Folder), fs::directory_iterator()));
    }

    /** Why the text is not written; empty when it is. */
    std::string Failure(const std::string& name, bool replace, const FileCalls& calls) const
    {
        try {
            WriteFile(Name(name), "new", replace, calls);
            return "";
        } catch (const WriteError& error) {
            return std::string(error.what()).substr(Name(name).size());
        }
    }

private:
    fs::path m_Folder = fs::path(testing::TempDir()) / ("FileWriting" + std::to_string(::getpid()));
};

/** The system's calls, with those that a test replaces. */
template <class Change>
FileCalls With(Change change)
{
    FileCalls calls = SystemFileCalls();
    change(calls);
    return calls;
}

const FileCalls withoutLinks = With([](FileCalls& calls) {
    calls.Link = [](const char* /*from*/, const char* /*to*/) {
        errno = EPERM;
        return -1;
    };
});

TEST_F(FileWriting, NeedsNoSecondNamesOfTheFileSystem)
{
    EXPECT_EQ(Failure("a", false, withoutLinks), "");
    EXPECT_EQ(TextOf(Name("a")), "new");
    EXPECT_EQ(Failure("a", false, withoutLinks), ": cannot write it: it exists already; --force replaces it");
    EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileWriting, ReplacesNoFileThatAppearsAtTheLastMoment)
{
    static std::string target;
    target = Name("a");
    for (const bool hasLinks : {true, false}) {
        const FileCalls calls = With([hasLinks](FileCalls& changed) {
            changed.Link = hasLinks ? SystemFileCalls().Link : withoutLinks.Link;
            changed.Sync = [](int /*descriptor*/) {
                std::ofstream(target) << "of somebody else";
                return 0;
            };
        });
        EXPECT_EQ(Failure("a", false, calls), ": cannot write it: it exists already; --force replaces it");
        EXPECT_EQ(TextOf(target), "of somebody else");
        fs::remove(target);
    }
    EXPECT_EQ(FilesInFolder(), 0U);
}

TEST_F(FileWriting, LeavesWhatWasThereWhereAnythingFails)
{
    std::ofstream(Name("a")) << "old";
    const struct {
        FileCalls calls;
        const char* failure;
    } rows[] = {
        {With([](FileCalls& calls) {
             calls.Write = [](int /*descriptor*/, const void* /*data*/, std::size_t /*bytes*/) -> ssize_t {
                 errno = ENOSPC;
                 return -1;
             };
         }),
         ": cannot write it: No space left on device"},
        {With([](FileCalls& calls) {
             calls.Write = [](int /*descriptor*/, const void* /*data*/, std::size_t /*bytes*/) -> ssize_t { return 0; };
         }),
         ": cannot write it: nothing more can be written"},
        {With([](FileCalls& calls) {
             calls.Sync = [](int /*descriptor*/) {
                 errno = EIO;
                 return -1;
             };
         }),
         ": cannot write it: Input/output error"},
        {With([](FileCalls& calls) {
             calls.Rename = [](const char* /*from*/, const char* /*to*/) {
                 errno = EACCES;
                 return -1;
             };
         }),
         ": cannot write it: Permission denied"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Failure("a", true, row.calls), row.failure);
        EXPECT_EQ(TextOf(Name("a")), "old");
        EXPECT_EQ(FilesInFolder(), 1U);
    }
}

TEST_F(FileWriting, GoesOnAfterAPartAndASignal)
{
    static int calls = 0;
    const FileCalls slow = With([](FileCalls& changed) {
        changed.Write = [](int descriptor, const void* data, std::size_t /*bytes*/) -> ssize_t {
            if (++calls % 2 == 0) {
                errno = EINTR;
                return -1;
            }
            return SystemFileCalls().Write(descriptor, data, 1);
        };
    });
    EXPECT_EQ(Failure("a", false, slow), "");
    EXPECT_EQ(TextOf(Name("a")), "new");
    EXPECT_EQ(calls, 5);
}

TEST_F(FileWriting, AdmitsTheLongestNames)
{
    const std::string longest(255, 'n');
    EXPECT_EQ(Failure(longest, false, SystemFileCalls()), "");
    EXPECT_EQ(TextOf(Name(longest)), "new");
    EXPECT_EQ(Failure(longest + "n", false, SystemFileCalls()), ": cannot write it: File name too long");
    EXPECT_EQ(FilesInFolder(), 1U);
}

} // namespace
