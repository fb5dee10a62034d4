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

void PaintIntoBuffer(IKxImageBuffer& buffer, EKxPixelFormatNamingConvention_t ePixelFormat,
                     const std::function<void(QPainter*)>& paint)
{
    const CKxAutoPtr<IKxImageBufferReleasable> pConverted(CreateIKxImageBuffer(nullptr));
    const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverter> pConverter(
        CreateIKxConverter(KxConverterType_PixelFormat));
    pConverter->SetDestinationPixelFormat(ePixelFormat);
    pConverter->Convert(buffer.GetIKxImage(), pConverted.Get());
    const IKxImage& image = *pConverted->GetIKxImage();
    {
        // The painter writes into the converted pixels, so that no other picture of this size is needed.
        QImage picture(static_cast<uchar*>(image.GetImageBuffer()), static_cast<int>(image.GetImageWidth()),
                       static_cast<int>(image.GetImageHeight()), static_cast<int>(image.GetImageLinePitch()),
                       QImage::Format_RGB888);
        QPainter painter(&picture);
        paint(&painter);
    }
    buffer.CopyImage(pConverted->GetIKxImage());
}

} // namespace KxApi
