// SPDX-License-Identifier: Apache-2.0

#include "Description.h"
#include "common/gentl/Error.h"

#include <zlib.h>

namespace KxProducer
{
namespace
{

void Put(std::string& out, uint64_t value, int bytes)
{
    for (int i = 0; i < bytes; ++i)
        out += static_cast<char>(value >> (8 * i));
}

std::string Deflate(const std::string& content)
{
    z_stream stream{};
    // No header of zlib's own, as archives want it.
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        Fail(GenTL::GC_ERR_OUT_OF_MEMORY, "There is no memory to compress %zu bytes", content.size());
    std::string out(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    std::string in = content; // zlib's interface wants to be allowed to write
    stream.next_in = reinterpret_cast<Bytef*>(in.data());
    stream.avail_in = static_cast<uInt>(in.size());
    stream.next_out = reinterpret_cast<Bytef*>(out.data());
    stream.avail_out = static_cast<uInt>(out.size());
    const int result = deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END)
        Fail(GenTL::GC_ERR_ERROR, "Compressing ended with %d", result);
    return out;
}

} // namespace

std::string Zip(const std::string& name, const std::string& content)
{
    constexpr uint64_t kLocalHeader = 0x04034B50, kCentralHeader = 0x02014B50, kEnd = 0x06054B50;
    constexpr uint64_t kDate = (2026 - 1980) << 9 | 1 << 5 | 1; // archives are the same in each run
    const std::string packed = Deflate(content);
    const uint64_t checksum =
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));

    std::string common;
    Put(common, 20, 2); // version that can read it
    Put(common, 0, 2);
    Put(common, Z_DEFLATED, 2);
    Put(common, 0, 2);
    Put(common, kDate, 2);
    Put(common, checksum, 4);
    Put(common, packed.size(), 4);
    Put(common, content.size(), 4);
    Put(common, name.size(), 2);
    Put(common, 0, 2);

    std::string out;
    Put(out, kLocalHeader, 4);
    out += common + name + packed;
    const size_t directory = out.size();
    Put(out, kCentralHeader, 4);
    Put(out, 20, 2);
    out += common;
    out.append(14, '\0'); // no comment, one volume, no attributes; the file begins at 0
    out += name;
    const size_t directorySize = out.size() - directory;
    Put(out, kEnd, 4);
    Put(out, 0, 4);
    Put(out, 1, 2);
    Put(out, 1, 2);
    Put(out, directorySize, 4);
    Put(out, directory, 4);
    Put(out, 0, 2);
    return out;
}

} // namespace KxProducer
