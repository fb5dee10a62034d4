// SPDX-License-Identifier: Apache-2.0

#include "ImageLayout.h"

#include <Base/GCException.h>

#include <algorithm>

namespace KxApi
{
namespace Detail
{

const IKxPixelFormatInfoInside* FindFormat(uint64_t code)
{
    if (code > UINT32_MAX)
        return nullptr;
    return dynamic_cast<const IKxPixelFormatInfoInside*>(
        GetIKxPixelFormatInfo(static_cast<EKxPixelFormatNamingConvention_t>(uint32_t(code))));
}

size_t LayOut(const IKxPixelFormatInfoInside& format, size_t linePadding, size_t size, CImageContent& image)
{
    size_t end = 0;
    const bool isTooLong =
        image.width / 8 > size || image.height > size || // a pixel has a bit at least
        __builtin_add_overflow(format.GetLinePitch(image.width, 1), linePadding, &image.linePitch) ||
        __builtin_mul_overflow(image.linePitch, image.height, &image.planePitch) ||
        __builtin_add_overflow(image.place, format.GetImageSize(image.height, image.linePitch), &end);
    if (isTooLong || end > size)
        throw RUNTIME_EXCEPTION("Image of %zu by %zu pixels %s at byte %zu does not fit into a buffer of %zu "
                                "bytes",
                                image.width, image.height, format.GetName().c_str(), image.place, size);
    return end;
}

size_t FilledLines(const CImageContent& image, size_t sizeFilled)
{
    const size_t bytes = sizeFilled - std::min(sizeFilled, image.place);
    return image.linePitch == 0 ? 0 : std::min(bytes / image.linePitch, image.height);
}

} // namespace Detail
} // namespace KxApi
