#pragma once

#include "AppNames.h"
#include "app/Secrets.h"

#include <ostream>

namespace RedfishConfigTool {

/** Writes the library's log to a stream while it lives, a line each, with no password in it. */
class Trace {
public:
    /** @param level the highest level that is written, 0 for none. @p out and @p secrets must outlive the object. */
    Trace(unsigned level, std::ostream& out, const Secrets& secrets);
    ~Trace();

    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;
};

} // namespace RedfishConfigTool
