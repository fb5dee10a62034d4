// SPDX-License-Identifier: Apache-2.0
// Reads whatever comes as an image file, whose type its first bytes tell, and as graph data. What is accepted
// has to fit into the memory that was made for it.
//
// Only exceptions of the GenICam family may leave a call.

#include "CImageValues.h"
#include "Decoding.h"
#include "GraphLines.h"
#include "RawContainer.h"

#include <Base/GCException.h>

#include <xxhash.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <vector>

using namespace KxApi;
using namespace KxApi::Detail;

namespace
{

constexpr uint64_t kMaxImage = uint64_t{1} << 20;

void Put(uint8_t* bytes, uint64_t value)
{
    for (size_t i = 0; i < sizeof value; ++i)
        bytes[i] = static_cast<uint8_t>(value >> (8 * i));
}

/// Makes size and checksums of a raw file right, which chance wouldn't.
void MendRaw(std::vector<uint8_t>& bytes)
{
    if (bytes.size() < kRawHeaderSize || !std::equal(kRawMagic.begin(), kRawMagic.end(), bytes.begin()))
        return;
    const size_t size = bytes.size() - kRawHeaderSize;
    Put(&bytes[16], size);
    Put(&bytes[24], XXH64(bytes.data() + kRawHeaderSize, size, 0));
    Put(&bytes[56], XXH64(bytes.data(), 56, 0));
}

template <typename Call>
void Try(const Call& call)
{
    try {
        call();
    } catch (const GenICam::GenericException& e) {
        if (std::strlen(e.GetDescription()) > 255)
            std::abort(); // messages stay short whatever the file
    }
}

void CheckImage(CDecodedImage image)
{
    const size_t planePitch = image.height * image.linePitch;
    const CImageValues values(image.format, image.width, image.height,
                              {image.pixels.data.get(), image.linePitch, planePitch});
    if (values.Size() != image.pixels.size || image.pixels.size > kMaxImage)
        std::abort();
    // Memory that no decoder has written would show here, were the sanitizer for that on.
    const uint8_t* const pixels = image.pixels.data.get();
    if (std::accumulate(pixels, pixels + image.pixels.size, uint64_t{0}) > ~uint64_t{0} / 2)
        std::abort();
    for (size_t k = 0; k < values.ComponentCount(); ++k)
        values.Bits(k, image.width - 1, image.height - 1);
}

void CheckGraph(const CGraphLines& lines)
{
    for (const CGraphLine& line : lines) {
        if (!IsSound(line.description))
            std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<uint8_t> bytes(data, data + size);
    for (const bool isMended : {false, true}) {
        if (isMended)
            MendRaw(bytes);
        const CFileContent content{bytes.data(), bytes.size(), kMaxImage, "file"};
        Try([&] { CheckImage(DecodeImageFile(content)); });
        Try([&] { CheckGraph(ReadGraphFile(content)); });
    }
    return 0;
}
