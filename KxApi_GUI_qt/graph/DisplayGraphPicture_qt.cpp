// SPDX-License-Identifier: Apache-2.0
// The graph window's pictures.
#include "graph/KxDisplayGraphWnd_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxSDKCommon/KxAssert.h>

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cstring>

namespace KxApi
{
namespace
{
constexpr uint32_t kMaxSize = 32767; // how far painters see
}

void CKxDisplayGraphWnd::DrawInside(QPainter* pPainter, CDrawGraphParam& param, EKxGraphDataIndex_t eIndex)
{
    const CGraphAppearance appearance = Appearance();
    DrawGraphBackground(*pPainter, param.TotalWidth(), param.TotalHeight(), appearance);
    DrawGraphArea(*pPainter, param, appearance, m_objStyle, *GetGraphData(eIndex, true));
}

void CKxDisplayGraphWnd::Draw(void* pPainter, uint32_t nWidth, uint32_t nHeight)
{
    if (!pPainter)
        throw INVALID_ARGUMENT_EXCEPTION("There is no painter to draw the graph with.");
    CDrawGraphParam param;
    GetCDrawGraphParam(param);
    param.Fit(static_cast<int>(std::min(nWidth, kMaxSize)), static_cast<int>(std::min(nHeight, kMaxSize)));
    const GenApi::AutoLock lock(m_lockDraw);
    DrawInside(static_cast<QPainter*>(pPainter), param, KxGraphDataIndex_Draw);
}

void CKxDisplayGraphWnd::GetIKxImage(IKxImageBuffer* pBuffer, size_t, size_t)
{
    if (!pBuffer)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    CDrawGraphParam param;
    GetCDrawGraphParam(param);
    const int nWidth = param.TotalWidth();
    const int nHeight = param.TotalHeight();
    if (nWidth < 1 || nHeight < 1)
        throw INVALID_ARGUMENT_EXCEPTION("A graph of %d x %d pixels has no picture.", nWidth, nHeight);
    // No pixmap, which would be for the GUI thread alone.
    QImage picture(nWidth, nHeight, QImage::Format_RGB32);
    if (picture.isNull())
        throw BAD_ALLOC_EXCEPTION("No memory for a graph of %d x %d pixels", nWidth, nHeight);
    picture.fill(Qt::white);
    {
        const GenApi::AutoLock lock(m_lockGetImage);
        QPainter painter(&picture);
        DrawInside(&painter, param, KxGraphDataIndex_GetIKxImage);
    }
    picture = picture.convertToFormat(QImage::Format_RGB888);
    pBuffer->SetSize(static_cast<size_t>(nWidth), static_cast<size_t>(nHeight), KxPixelFormat_RGB8, 0);
    IKxImage& image = *pBuffer->GetIKxImage();
    constexpr size_t kPixelBytes = 3;
    for (int y = 0; y < nHeight; ++y)
        std::memcpy(static_cast<uint8_t*>(image.GetImageBuffer()) +
                        static_cast<size_t>(y) * image.GetImageLinePitch(),
                    picture.constScanLine(y), static_cast<size_t>(nWidth) * kPixelBytes);
}

} // namespace KxApi
