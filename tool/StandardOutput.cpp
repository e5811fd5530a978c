#include "StandardOutput.h"

#include <unistd.h>

#include <cerrno>
#include <string>

namespace RedfishConfigTool {

int StandardOutput::sync()
{
    const std::string text = str();
    str({});
    std::size_t written = 0;
    while (written < text.size() && m_Error == 0) {
        const ssize_t count = write(STDOUT_FILENO, text.data() + written, text.size() - written);
        if (count > 0) {
            written += static_cast<std::size_t>(count);
        } else if (count == 0) {
            m_Error = EIO; // it would never end
        } else if (errno != EINTR) {
            m_Error = errno;
        }
    }
    return m_Error == 0 ? 0 : -1;
}

} // namespace RedfishConfigTool
