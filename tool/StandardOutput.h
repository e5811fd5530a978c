#pragma once

#include <sstream>

namespace RedfishConfigTool {

/**
 * Collects what is written and hands it to stdout when it is flushed. Unlike the standard stream it knows why a write
 * failed, so that a reader who has seen enough is told from a full disk.
 */
class StandardOutput : public std::stringbuf {
public:
    /** The errno of the write that failed, or 0. */
    int Error() const { return m_Error; }

protected:
    int sync() override;

private:
    int m_Error = 0;
};

} // namespace RedfishConfigTool
