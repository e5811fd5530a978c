#include "FileWriter.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace RedfishConfig::App {

namespace {

[[noreturn]] void Fail(const std::string& file, const std::string& reason)
{
    throw WriteError(file + ": cannot write it: " + reason);
}

[[noreturn]] void FailWithErrno(const std::string& file)
{
    Fail(file, std::generic_category().message(errno));
}

std::string FolderOf(const std::string& file)
{
    const std::size_t slash = file.rfind('/');
    if (slash == std::string::npos) {
        return ".";
    }
    return slash == 0 ? "/" : file.substr(0, slash);
}

/** A new file beside the target, which is gone again unless it is handed on. */
class TemporaryFile {
public:
    TemporaryFile(const std::string& target, const FileCalls& calls)
        : m_Calls(calls), m_Target(target), m_Name(FolderOf(target) + "/.redfishconfig-XXXXXX")
    {
        m_Descriptor = mkstemp(m_Name.data()); // new, and with mode 0600
        if (m_Descriptor < 0) {
            m_Name.clear();
            FailWithErrno(target);
        }
    }
    ~TemporaryFile()
    {
        Close();
        if (!m_Name.empty()) {
            unlink(m_Name.c_str());
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Write(std::string_view text)
    {
        while (!text.empty()) {
            const ssize_t written = m_Calls.Write(m_Descriptor, text.data(), text.size());
            if (written > 0) {
                text.remove_prefix(static_cast<std::size_t>(written));
            } else if (written == 0) {
                Fail(m_Target, "nothing more can be written");
            } else if (errno != EINTR) {
                FailWithErrno(m_Target);
            }
        }
        if (m_Calls.Sync(m_Descriptor) != 0 || !Close()) {
            FailWithErrno(m_Target);
        }
    }

    void Replace()
    {
        if (m_Calls.Rename(m_Name.c_str(), m_Target.c_str()) != 0) {
            FailWithErrno(m_Target);
        }
        m_Name.clear();
    }

    /** Gives the file its name unless that is taken. */
    void TakeFreeName()
    {
        if (m_Calls.Link(m_Name.c_str(), m_Target.c_str()) == 0) {
            return; // the temporary name goes with this object
        }
        if (errno != EEXIST && m_Calls.RenameToFreeName(m_Name.c_str(), m_Target.c_str()) == 0) {
            m_Name.clear(); // some file systems have no second names, such as those of memory sticks
            return;
        }
        if (errno == EEXIST) {
            Fail(m_Target, "it exists already; --force replaces it");
        }
        FailWithErrno(m_Target);
    }

private:
    bool Close()
    {
        const int descriptor = m_Descriptor;
        m_Descriptor = -1;
        return descriptor < 0 || close(descriptor) == 0;
    }

    const FileCalls& m_Calls;
    std::string m_Target;
    std::string m_Name;
    int m_Descriptor = -1;
};

/** The name itself must be on disk too. A file system that cannot do that has done what it can. */
void FlushFolder(const std::string& folder)
{
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        fsync(descriptor);
        close(descriptor);
    }
}

int RenameToFreeName(const char* from, const char* to)
{
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
}

} // namespace

const FileCalls& SystemFileCalls()
{
    static constexpr FileCalls calls{::write, ::fsync, std::rename, ::link, RenameToFreeName};
    return calls;
}

void WriteFile(const std::string& file, const std::string& text, bool replace, const FileCalls& calls)
{
    struct stat existing {};
    if (lstat(file.c_str(), &existing) == 0) {
        if (!S_ISREG(existing.st_mode) && !S_ISLNK(existing.st_mode)) {
            Fail(file, S_ISDIR(existing.st_mode) ? "it is a folder" : "it is no regular file");
        }
        if (!replace) {
            Fail(file, "it exists already; --force replaces it");
        }
    }
    TemporaryFile temporary(file, calls);
    temporary.Write(text);
    if (replace) {
        temporary.Replace();
    } else {
        temporary.TakeFreeName();
    }
    FlushFolder(FolderOf(file));
}

} // namespace RedfishConfig::App
