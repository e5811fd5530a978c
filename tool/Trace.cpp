#include "Trace.h"

#include "Text.h"

#include <RedfishConfig/Log.h>

#include <string>
#include <string_view>

namespace RedfishConfigTool {

Trace::Trace(unsigned level, std::ostream& out, const Secrets& secrets)
{
    RedfishConfig::SetLogSink([&out, &secrets](unsigned lineLevel, std::string_view, int, std::string_view text) {
        out << '[' << lineLevel << "] " << Escape(secrets.ConcealInTrace(std::string(text))) << '\n';
    });
    RedfishConfig::SetLogLevel(level);
}

Trace::~Trace()
{
    RedfishConfig::SetLogLevel(0);
    RedfishConfig::SetLogSink({});
}

} // namespace RedfishConfigTool
