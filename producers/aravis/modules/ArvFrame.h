// SPDX-License-Identifier: Apache-2.0
// What a buffer of the library beneath tells, in GenTL's terms.
#pragma once

#include "common/modules/StreamBuffers.h"
#include "modules/Glib.h"

namespace KxAravis
{

/// What became of a buffer.
enum class EArvBuffer
{
    Image,      ///< complete
    Incomplete, ///< parts are missing
    Nothing     ///< it was given back without an image
};
EArvBuffer ResultOf(ArvBuffer& buffer);

/// What the images of an acquisition are like, since the library beneath doesn't tell it of incomplete ones.
struct CUsualImage
{
    size_t width = 0, height = 0, offsetX = 0, offsetY = 0;
    uint64_t pixelFormat = 0;
};
/// As the device is set; 0 for what it doesn't tell.
CUsualImage UsualImageOf(ArvDevice& device);

/// @param isBigEndian the order of the bytes that the chunks' own lengths are in.
KxProducer::CFrameInfo FrameOf(ArvBuffer& buffer, const CUsualImage& usual, bool isBigEndian);

} // namespace KxAravis
