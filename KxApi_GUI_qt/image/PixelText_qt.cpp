// SPDX-License-Identifier: Apache-2.0
#include "image/PixelText_qt.h"

#include "frame/utility_qt.h"
#include "image/ImagePreview_qt.h"

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

namespace KxApi
{
namespace
{

/// The format of an image, and the values of a pixel, which are none when they can't be read. They lie in an
/// object of our own, since that of the image is the application's.
struct CPixel
{
    const IKxPixelFormatInfo* pInfo = nullptr;
    CKxPixelComponent values;
    bool bHasValues = false;

    void Read(IKxImage* pImage, int x, int y)
    {
        pInfo = GetIKxPixelFormatInfo(pImage->GetImagePixelFormat());
        try {
            values.SetPixelComponent(pImage, static_cast<size_t>(x), static_cast<size_t>(y));
            bHasValues = true;
        } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): told without
        }
    }

    QString Text() const
    {
        QString strText = ToQString(pInfo->GetName());
        for (size_t k = 0; bHasValues && k < values.GetComponentCount(); ++k) {
            const auto nValue = static_cast<long>(values.GetValue(k));
            if (pInfo->IsSingleComponent())
                strText += QString::asprintf("%4ld", nValue);
            else
                strText +=
                    QString::asprintf("%s%s=%4ld", k == 0 ? ":" : ",",
                                      GetIKxPixelComponentInfo(values.GetType(k))->GetName().c_str(), nValue);
        }
        return strText;
    }
};

} // namespace

QString PixelText(CImagePreview& preview, int x, int y)
{
    QString strText;
    try {
        CPixel raw, converted;
        preview.LookAtRegistered([&](IKxImage* pImage) { raw.Read(pImage, x, y); });
        strText = QString::asprintf("(%4u, %4u)  ", static_cast<unsigned>(x), static_cast<unsigned>(y));
        strText += raw.Text();
        preview.LookAtConverted([&](IKxImage* pImage) { converted.Read(pImage, x, y); });
        if (converted.pInfo != raw.pInfo)
            strText += " -> " + converted.Text();
    } catch (...) { // NOLINT(bugprone-empty-catch): what is known is shown
    }
    return strText;
}

} // namespace KxApi
