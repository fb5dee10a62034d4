// SPDX-License-Identifier: Apache-2.0
// Pictures that cameras held askew have saved.

#include "Decoding.h"
#include "PixelReader.h"

#include <Base/GCBadAlloc.h>

#include <cstring>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

struct CTurn
{
    bool isTransposed; ///< lines are the columns of the picture
    bool isFromRight;  ///< columns of the picture run against its lines
    bool isFromBottom;
};

/// By the number of the orientation, as TIFF and Exif have it.
constexpr CTurn kTurns[] = {{false, false, false}, {false, false, false}, {false, true, false},
                            {false, true, true},   {false, false, true},  {true, false, false},
                            {true, true, false},   {true, true, true},    {true, false, true}};
constexpr unsigned kTurnCount = sizeof kTurns / sizeof *kTurns;

template <size_t kBytes>
void CopyPixels(const uint8_t* source, ptrdiff_t step, size_t count, uint8_t* target)
{
    for (; count > 0; --count, source += step, target += kBytes)
        std::memcpy(target, source, kBytes);
}

using CCopyPixels = void (*)(const uint8_t*, ptrdiff_t, size_t, uint8_t*);

/// By the bytes of a pixel.
constexpr CCopyPixels kCopies[] = {nullptr, CopyPixels<1>, CopyPixels<2>, CopyPixels<3>, CopyPixels<4>,
                                   nullptr, CopyPixels<6>, nullptr,       CopyPixels<8>};

} // namespace

CDecodedImage Upright(CDecodedImage image, unsigned orientation)
{
    const CPixelFormatRow& row = *FindFormat(image.format);
    // A mosaic turned would be another one; it comes from a sensor and lies as that does.
    if (orientation < 2 || orientation >= kTurnCount || row.mosaic != 0)
        return image;
    const CTurn turn = kTurns[orientation];
    const size_t pixelBytes = row.bits / 8U;
    CDecodedImage result;
    result.format = image.format;
    result.width = turn.isTransposed ? image.height : image.width;
    result.height = turn.isTransposed ? image.width : image.height;
    result.linePitch = result.width * pixelBytes;
    result.pixels = GenICam::GuardBadAlloc([&] { return CBytes(result.linePitch * result.height); });
    const auto across = static_cast<ptrdiff_t>(turn.isTransposed ? image.linePitch : pixelBytes);
    for (size_t y = 0; y < result.height; ++y) {
        // The pixel of the file that is the first of the line, and the way to the next.
        const size_t line = turn.isFromBottom ? result.height - 1 - y : y;
        const size_t column = turn.isFromRight ? result.width - 1 : 0;
        const uint8_t* const first = turn.isTransposed ? image.Line(column) + line * pixelBytes
                                                       : image.Line(line) + column * pixelBytes;
        kCopies[pixelBytes](first, turn.isFromRight ? -across : across, result.width, result.Line(y));
    }
    return result;
}

} // namespace Detail
} // namespace KxApi
