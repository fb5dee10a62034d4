// SPDX-License-Identifier: Apache-2.0
#include "SavableFormat.h"

#include "ImageFileType.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <algorithm>
#include <iterator>

using namespace KxApi;

namespace KxApps
{

namespace
{

// By their bits. 24 bits of colour are asked for in the order that BMP has.
constexpr EKxPixelFormatNamingConvention_t kCandidates[] = {
    KxPixelFormat_Mono8,  KxPixelFormat_BGR8,   KxPixelFormat_Mono10,
    KxPixelFormat_RGB10,  KxPixelFormat_Mono12, KxPixelFormat_RGB12,
    KxPixelFormat_Mono14, KxPixelFormat_Mono16, KxPixelFormat_RGB16,
};

const IKxPixelFormatInfoInside& InfoOf(EKxPixelFormatNamingConvention_t format)
{
    return dynamic_cast<const IKxPixelFormatInfoInside&>(*GetIKxPixelFormatInfo(format));
}

} // namespace

EKxPixelFormatNamingConvention_t ConvertedFormat(const IKxStillImageFiler& filer,
                                                 const IKxPixelFormatConverter& converter,
                                                 EKxPixelFormatNamingConvention_t format,
                                                 EKxStillImageFileType_t type)
{
    const IKxPixelFormatInfoInside& source = InfoOf(format);
    const auto found = std::find_if(std::begin(kCandidates), std::end(kCandidates), [&](auto candidate) {
        const IKxPixelFormatInfoInside& info = InfoOf(candidate);
        return info.IsColor() == source.IsColor() && info.GetEffectiveBits() >= source.GetEffectiveBits() &&
               filer.IsSavable(candidate, type) && converter.IsConvertible(format, candidate);
    });
    if (found == std::end(kCandidates))
        throw INVALID_ARGUMENT_EXCEPTION(
            "the %zu bits of %s don't go into %s files: choose another type, or what is kept of them by "
            "--format, such as --format %s",
            source.GetEffectiveBits(), source.GetName().c_str(), EndingOf(type),
            source.IsColor() ? "BGR8" : "Mono8");
    return *found;
}

} // namespace KxApps
