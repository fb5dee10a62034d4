// SPDX-License-Identifier: Apache-2.0
// Pixels of what cameras send compressed.
#pragma once

#include <KxApi_IP/IKxStillImageFiler.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxStream.h>

#include <cstddef>

namespace KxApps
{

/// Decodes JPEG images one after the other, into memory that is kept. One thread at a time.
class ImageDecoder
{
public:
    ImageDecoder();

    /// The decoded image, valid until the next call. Raises RuntimeException when it is no JPEG, or a broken
    /// one.
    KxApi::IKxImage* Decode(const void* pData, size_t nSize);
    /// The image itself where it has pixels.
    KxApi::IKxImage* Pixels(KxApi::IKxStreamImage& image);

private:
    const KxApi::CKxAutoPtr<KxApi::IKxFilerReleasable, KxApi::IKxStillImageFiler> m_filer;
    const KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable, KxApi::IKxImageBuffer> m_decoded;
};

} // namespace KxApps
