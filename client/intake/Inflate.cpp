#include "Inflate.h"

#include "../Limits.h"

#include <zlib.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace RedfishConfig::Client {

namespace {

constexpr std::string_view gzipMark = "\x1F\x8B";

/** zlib's state of one decompression. */
class InflateStream {
public:
    InflateStream()
    {
        constexpr int gzipOnly = 16 + MAX_WBITS;
        m_Ready = inflateInit2(&m_Stream, gzipOnly) == Z_OK;
    }
    InflateStream(const InflateStream&) = delete;
    InflateStream& operator=(const InflateStream&) = delete;
    ~InflateStream()
    {
        if (m_Ready) {
            inflateEnd(&m_Stream);
        }
    }

    bool Ready() const { return m_Ready; }
    z_stream& operator*() { return m_Stream; }

private:
    z_stream m_Stream{};
    bool m_Ready = false;
};

} // namespace

bool IsGzip(std::string_view bytes)
{
    return bytes.substr(0, gzipMark.size()) == gzipMark;
}

std::string Inflate(std::string_view bytes, std::string& text)
{
    InflateStream state;
    if (!state.Ready()) {
        return "the decompression cannot be started";
    }
    z_stream& stream = *state;
    std::vector<Bytef> in(bytes.begin(), bytes.end()); // zlib's interface is not const
    std::size_t given = 0;
    std::vector<Bytef> block(1U << 18U);
    int result = Z_OK;
    do {
        if (stream.avail_in == 0) {
            const std::size_t next = std::min<std::size_t>(in.size() - given, std::numeric_limits<uInt>::max());
            if (next == 0) {
                return "the gzip data is cut off";
            }
            stream.next_in = in.data() + given;
            stream.avail_in = static_cast<uInt>(next);
            given += next;
        }
        stream.next_out = block.data();
        stream.avail_out = static_cast<uInt>(block.size());
        result = inflate(&stream, Z_NO_FLUSH);
        if (result != Z_OK && result != Z_STREAM_END && result != Z_BUF_ERROR) {
            return stream.msg != nullptr ? std::string("the gzip data is damaged: ") + stream.msg
                                         : std::string("the gzip data is damaged");
        }
        text.append(block.begin(), block.end() - static_cast<std::ptrdiff_t>(stream.avail_out));
        if (text.size() > Limits::documentBytes) {
            return "the decompressed text is longer than " + std::to_string(Limits::documentBytes) + " bytes";
        }
        const std::string_view rest = bytes.substr(given - stream.avail_in);
        if (result == Z_STREAM_END && IsGzip(rest)) { // what follows the members is padding
            result = inflateReset(&stream);
        }
    } while (result != Z_STREAM_END);
    return {};
}

} // namespace RedfishConfig::Client
