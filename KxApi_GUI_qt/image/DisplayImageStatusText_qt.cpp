// SPDX-License-Identifier: Apache-2.0
// The image window's status bar: the pixel under the cursor.
#include "image/KxDisplayImageWnd_qt.h"

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <QCursor>
#include <QPoint>

namespace KxApi
{
namespace
{

/// The values of a pixel with the format's name. The values are read into an object of our own, since that of
/// the image is the application's.
struct CPixel
{
    CPixel(IKxImage* pImage, int x, int y)
        : pInfo(GetIKxPixelFormatInfo(pImage->GetImagePixelFormat()))
    {
        values.SetPixelComponent(pImage, static_cast<size_t>(x), static_cast<size_t>(y));
    }

    const IKxPixelFormatInfo* pInfo;
    CKxPixelComponent values;
};

void Append(QString& strText, const CPixel& pixel)
{
    strText += ToQString(pixel.pInfo->GetName());
    for (size_t k = 0; k < pixel.values.GetComponentCount(); ++k) {
        const auto nValue = static_cast<long>(pixel.values.GetValue(k));
        if (pixel.pInfo->IsSingleComponent())
            strText += QString::asprintf("%4ld", nValue);
        else
            strText += QString::asprintf("%s%s=%4ld", k == 0 ? ":" : ",",
                                         GetIKxPixelComponentInfo(pixel.values.GetType(k))->GetName().c_str(),
                                         nValue);
    }
}

} // namespace

void CKxDisplayImageWnd::ScreenToImage(int* pX, int* pY)
{
    const bool bDialog = AskDialog(
        [=](CDisplayImagePartDlg& dialog) {
            if (dialog.isVisible())
                dialog.ScreenToImage(pX, pY);
            return true;
        },
        false);
    if (!bDialog || *pX < 0 || *pY < 0)
        *pX = *pY = 0;
}

QString CKxDisplayImageWnd::PixelText(int x, int y)
{
    QString strText;
    try {
        const CPixel raw =
            m_objRing.Look(CImageRing::RawLatest, [=](IKxImage* pImage) { return CPixel(pImage, x, y); });
        strText = QString::asprintf("(%4u, %4u)", static_cast<unsigned>(x), static_cast<unsigned>(y));
        strText += "  ";
        Append(strText, raw);

        // As GetConvertedIKxImage, but what the application got by that stays what it is.
        const GenApi::AutoLock lock(m_lockPreview);
        MakePreview();
        const CPixel converted = m_objRing.Look(CImageRing::ConvertedLatest,
                                                [=](IKxImage* pImage) { return CPixel(pImage, x, y); });
        if (converted.pInfo != raw.pInfo) {
            strText += " -> ";
            Append(strText, converted);
        }
    } catch (...) { // NOLINT(bugprone-empty-catch): what is known is shown
    }
    return strText;
}

void CKxDisplayImageWnd::GetStatusBarText(QStringList& listText)
{
    Base::GetStatusBarText(listText);
    QPoint pos = QCursor::pos();
    WithDialog([&](CDisplayImagePartDlg& dialog) { pos = dialog.mapFromGlobal(pos); });
    int x = pos.x(), y = pos.y();
    ScreenToImage(&x, &y);
    if (HasImage())
        listText.append(PixelText(x, y));
}

} // namespace KxApi
