// SPDX-License-Identifier: Apache-2.0
#include "ImageDecoder.h"

using namespace KxApi;

namespace KxApps
{

ImageDecoder::ImageDecoder()
    : m_filer(CreateIKxFiler(KxFilerType_StillImage))
    , m_decoded(CreateIKxImageBuffer(nullptr))
{}

IKxImage* ImageDecoder::Decode(const void* pData, size_t nSize)
{
    m_filer->LoadFromMemory(m_decoded.Get(), pData, nSize);
    return m_decoded->GetIKxImage();
}

IKxImage* ImageDecoder::Pixels(IKxStreamImage& image)
{
    return image.GetEncodedSize() == 0 ? &image : Decode(image.GetEncodedData(), image.GetEncodedSize());
}

} // namespace KxApps
