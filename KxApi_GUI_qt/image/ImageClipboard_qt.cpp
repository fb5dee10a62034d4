// SPDX-License-Identifier: Apache-2.0
// Images on the system's clipboard.
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/KxApi_TL.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMutex>
#include <QMutexLocker>
#include <algorithm>
#include <cstring>

namespace KxApi
{
namespace
{

constexpr int kConversionThreads = 4;
constexpr size_t kLineAlignment = 4;

// These live as long as the library, since the clipboard may point at the picture's memory for as long.
QMutex clipboardMutex;
CKxAutoPtr<IKxImageBufferReleasable> clipboardImageBufferPtr;
QImage clipboardImage;

struct CFormatRow
{
    EKxPixelFormatNamingConvention_t ePixelFormat;
    QImage::Format eFormat;
};

// Blue and red change places.
constexpr CFormatRow kFormats[] = {
    {KxPixelFormat_BGR8, QImage::Format_RGB888},
    {KxPixelFormat_Mono8, QImage::Format_Grayscale8},
    {KxPixelFormat_RGBa8, QImage::Format_RGBX8888},
    {KxPixelFormat_BGRa8, QImage::Format_RGBX8888},
};

/// Whether an image buffer can copy it, and the clipboard take the copy.
bool GoesAsItIs(const IKxImage& image)
{
    if (!dynamic_cast<const IKxImageInside*>(&image))
        return false;
    const EKxPixelFormatNamingConvention_t ePixelFormat = image.GetImagePixelFormat();
    return image.GetImageLinePitch() % kLineAlignment == 0 &&
           (ePixelFormat == KxPixelFormat_Mono8 || ePixelFormat == KxPixelFormat_BGR8 ||
            ePixelFormat == KxPixelFormat_BGRa8);
}

/// Converts an image for the clipboard.
void Convert(IKxImage* pImage, IKxImageBuffer* pTarget)
{
    const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverter> pConverter(
        CreateIKxConverter(KxConverterType_PixelFormat));
    const IKxPixelFormatInfo* const pInfo = GetIKxPixelFormatInfo(pImage->GetImagePixelFormat());
    pConverter->SetDestinationPixelFormat(pInfo && pInfo->IsSingleComponent() ? KxPixelFormat_Mono8
                                                                              : KxPixelFormat_BGR8);
    pConverter->SetBayerInterpolationMethod(KxBayerInterpolationMethod_Bilinear3);
    pConverter->SetConversionOption(kConversionThreads);
    pConverter->Convert(pImage, pTarget);
}

/// A picture with the bytes of an image; null when it can't be one.
QImage PictureOf(const IKxImage& image)
{
    const auto* const pRow =
        std::find_if(std::begin(kFormats), std::end(kFormats),
                     [&](const CFormatRow& row) { return row.ePixelFormat == image.GetImagePixelFormat(); });
    const size_t nWidth = image.GetImageWidth(), nHeight = image.GetImageHeight();
    if (nWidth == 0 || nHeight == 0 || pRow == std::end(kFormats))
        return {};
    QImage picture(static_cast<int>(nWidth), static_cast<int>(nHeight), pRow->eFormat);
    if (picture.isNull())
        return picture;
    const auto* pLine = static_cast<const unsigned char*>(image.GetImageBuffer());
    const size_t nBytes = std::min(image.GetImageLinePitch(), static_cast<size_t>(picture.bytesPerLine()));
    for (int y = 0; y < picture.height(); ++y, pLine += image.GetImageLinePitch())
        std::memcpy(picture.scanLine(y), pLine, nBytes);
    return picture;
}

} // namespace

void SetIKxImageToClipboard(IKxImage* pIKxImage)
{
    const QMutexLocker lock(&clipboardMutex);
    CheckKxApiInitialized();
    if (!pIKxImage)
        return;
    clipboardImageBufferPtr.Reset(CreateIKxImageBuffer(nullptr));
    if (GoesAsItIs(*pIKxImage))
        clipboardImageBufferPtr->CopyImage(pIKxImage);
    else
        Convert(pIKxImage, clipboardImageBufferPtr.Get());
    clipboardImage = PictureOf(*clipboardImageBufferPtr->GetIKxImage());
    if (!clipboardImage.isNull())
        QGuiApplication::clipboard()->setImage(clipboardImage, QClipboard::Clipboard);
}

} // namespace KxApi
