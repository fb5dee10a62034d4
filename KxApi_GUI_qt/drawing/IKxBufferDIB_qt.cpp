// SPDX-License-Identifier: Apache-2.0
#include "drawing/IKxBufferDIB_qt.h"

#include <KxApi_IP/KxApi_IP.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>

#include <QImage>
#include <QPainter>

namespace KxApi
{
namespace
{

constexpr int kThreads = 4; // of a conversion, as for the preview

} // namespace

void PaintIntoBuffer(IKxImageBuffer& buffer, EKxPixelFormatNamingConvention_t ePixelFormat,
                     const std::function<void(QPainter*)>& paint)
{
    const CKxAutoPtr<IKxImageBufferReleasable> pPainted(CreateIKxImageBuffer(nullptr));
    const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverter> pConverter(
        CreateIKxConverter(KxConverterType_PixelFormat));
    pConverter->SetConversionOption(kThreads);
    // Texts are painted several times as fast on pixels of 32 bits, which outweighs a second conversion.
    pConverter->SetDestinationPixelFormat(KxPixelFormat_BGRa8);
    pConverter->Convert(buffer.GetIKxImage(), pPainted.Get());
    const IKxImage& image = *pPainted->GetIKxImage();
    {
        QImage picture(static_cast<uchar*>(image.GetImageBuffer()), static_cast<int>(image.GetImageWidth()),
                       static_cast<int>(image.GetImageHeight()), static_cast<int>(image.GetImageLinePitch()),
                       QImage::Format_RGB32);
        QPainter painter(&picture);
        paint(&painter);
    }
    pConverter->SetDestinationPixelFormat(ePixelFormat);
    pConverter->Convert(pPainted->GetIKxImage(), &buffer);
}

} // namespace KxApi
