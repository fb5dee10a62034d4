// SPDX-License-Identifier: Apache-2.0
// The image window's settings. Its images are in DisplayImagePreview_qt.cpp.
#include "image/KxDisplayImageWnd_qt.h"

#include "image/COverlayParam.h"
#include "image/DisplayImageRegisters_qt.h"

#include <Base/GCException.h>

#include <QStandardPaths>

namespace KxApi
{
namespace
{

constexpr int kStatusBarIndicators = 2;

template <class T>
void CheckBelow(const char* szName, T value, long long nMax)
{
    if (static_cast<long long>(value) >= nMax)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be smaller than Max = %lld", szName,
                                     static_cast<long long>(value), nMax);
}

template <class T>
void CheckNotBelow(const char* szName, T value, long long nMin)
{
    if (static_cast<long long>(value) < nMin)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", szName,
                                     static_cast<long long>(value), nMin);
}

/// Stores a setting; false when it had the value.
template <class T>
bool Store(std::atomic<T>& member, T value)
{
    return member.exchange(value) != value;
}

} // namespace

const CWndInfo<CKxDisplayImageWnd> CKxDisplayImageWnd::m_objWndInfo{};

CKxDisplayImageWnd::CKxDisplayImageWnd(IKxAllocator* pAllocator)
    : CKxBaseWnd(KxXMLResource_DisplayImage, "GUIPort", GenApi::RW, "Display Image", kStatusBarIndicators)
    , m_regShowBuiltInDrawingToolbar(this, &CKxDisplayImageWnd::OnVisibleDrawingToolBar, 0x2070, GenApi::RW,
                                     false)
    , m_regEnableDrawingOnSavingImage(this, nullptr, 0x2074, GenApi::RW, false)
    , m_strLastSaveFolder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation))
    , m_objRing(pAllocator)
    , m_pConverter(CreateIKxConverter(KxConverterType_PixelFormat))
{
    GenICam::GuardBadAlloc([this] {
        m_objRegister.Register(m_regShowBuiltInDrawingToolbar);
        m_objRegister.Register(m_regEnableDrawingOnSavingImage);
        WatchConverter();
    });
}

CKxDisplayImageWnd::~CKxDisplayImageWnd() { DestroyNodeMap(); }

bool CKxDisplayImageWnd::mRead(unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength)
{
    return Base::mRead(pBuffer, nAddress, pnLength) ||
           ReadDisplayImageRegister(*this, pBuffer, nAddress, pnLength);
}

bool CKxDisplayImageWnd::mWrite(const unsigned char* pBuffer, int64_t nAddress, int64_t* pnLength)
{
    return Base::mWrite(pBuffer, nAddress, pnLength) ||
           WriteDisplayImageRegister(*this, pBuffer, nAddress, pnLength);
}

void CKxDisplayImageWnd::RunOverlay(COverlayParam* pParam) { m_objCallbackManager.RunCallback(pParam); }

void CKxDisplayImageWnd::SetPreviewPixelFormatMode(_EKxPreviewPixelFormatMode_t eMode)
{
    mSetPreviewPixelFormatMode(eMode, true);
}

void CKxDisplayImageWnd::mSetPreviewPixelFormatMode(_EKxPreviewPixelFormatMode_t eMode, bool bInvalidate)
{
    CheckBelow("ePPFM", eMode, 2);
    if (!Store(m_ePreviewPixelFormatMode, eMode))
        return;
    if (bInvalidate)
        InvalidateNode("PreviewPixelFormatModeReg");
    m_pConverter->SetAutoDestination(eMode == KxPreviewPixelFormatMode_Auto);
    m_bPreviewDirty = true;
    RefreshPreview();
}

void CKxDisplayImageWnd::SetRefreshInterval(uint32_t nInterval) { mSetRefreshInterval(nInterval, true); }

void CKxDisplayImageWnd::mSetRefreshInterval(uint32_t nInterval, bool bInvalidate)
{
    if (nInterval == m_nRefreshInterval)
        return;
    if (nInterval > kMaxRefreshInterval)
        throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or smaller than Max = %lld", "nInterval",
                                     static_cast<long long>(nInterval),
                                     static_cast<long long>(kMaxRefreshInterval));
    m_nRefreshInterval = nInterval;
    if (bInvalidate)
        InvalidateNode("RefreshIntervalReg");
    WithVisibleDialog([](CDisplayImagePartDlg& dialog) { dialog.UpdateRefreshInterval(); });
}

void CKxDisplayImageWnd::SetZoomMode(_EKxZoomMode_t eZoomMode) { mSetZoomMode(eZoomMode, true); }

void CKxDisplayImageWnd::mSetZoomMode(_EKxZoomMode_t eZoomMode, bool bInvalidate)
{
    CheckBelow("eZM", eZoomMode, 2);
    if (!Store(m_eZoomMode, eZoomMode))
        return;
    if (bInvalidate) {
        InvalidateNode("ZoomModeReg");
        OnScrollPosOrRangeChanged();
    }
    m_bPreviewDirty = true;
    const bool bFit = eZoomMode == KxZoomMode_FitToTheWindow;
    WithVisibleDialog([bFit](CDisplayImagePartDlg& dialog) {
        dialog.updateMenuZoom(bFit);
        dialog.updateImageWidgetSize(bFit);
        if (bFit)
            dialog.RefreshPreviewImage(true);
    });
}

void CKxDisplayImageWnd::SetStretchMode(EKxBayerInterpolationMethod_t eStretchMode)
{
    mSetStretchMode(eStretchMode, true);
}

void CKxDisplayImageWnd::mSetStretchMode(EKxBayerInterpolationMethod_t eStretchMode, bool bInvalidate)
{
    CheckNotBelow("eStretchMode", eStretchMode, 1);
    CheckBelow("eStretchMode", eStretchMode, 4);
    if (!Store(m_eStretchMode, eStretchMode))
        return;
    if (bInvalidate) {
        InvalidateNode("StretchModeReg");
        OnScrollPosOrRangeChanged();
    }
    m_bPreviewDirty = true;
    RefreshPreview();
}

void CKxDisplayImageWnd::SetManualZoomMagnification(double dMagnification)
{
    mSetManualZoomMagnification(dMagnification, true);
}

void CKxDisplayImageWnd::mSetManualZoomMagnification(double dMagnification, bool bInvalidate)
{
    if (!(dMagnification >= kMinMagnification)) // so that NaN is refused as well
        throw OUT_OF_RANGE_EXCEPTION("%s = %f must be greater than or equal %f", "value", dMagnification,
                                     kMinMagnification);
    if (dMagnification > kMaxMagnification)
        throw OUT_OF_RANGE_EXCEPTION("%s = %f must be smaller than or equal %f", "value", dMagnification,
                                     kMaxMagnification);
    if (!Store(m_dManualZoomMagnification, dMagnification))
        return;
    if (bInvalidate) {
        InvalidateNode("FixedZoomMagnificationReg");
        OnScrollPosOrRangeChanged();
    }
    m_bPreviewDirty = true;
    WithVisibleDialog([](CDisplayImagePartDlg& dialog) {
        dialog.updateMenuZoom(false);
        dialog.updateImageWidgetSize(false);
        dialog.RefreshPreviewImage(true);
    });
}

void CKxDisplayImageWnd::SetBackgroundStyle(_EKxBackgroundStyle_t eStyle)
{
    mSetBackgroundStyle(eStyle, true);
}

void CKxDisplayImageWnd::mSetBackgroundStyle(_EKxBackgroundStyle_t eStyle, bool bInvalidate)
{
    CheckBelow("eBS", eStyle, 7);
    if (!Store(m_eBackgroundStyle, eStyle))
        return;
    if (bInvalidate)
        InvalidateNode("BackgroundStyleReg");
    RefreshBackground();
}

void CKxDisplayImageWnd::SetForegroundColor(uint32_t nColor) { mSetForegroundColor(nColor, true); }

void CKxDisplayImageWnd::mSetForegroundColor(uint32_t nColor, bool bInvalidate)
{
    if (!Store(m_nForegroundColor, nColor))
        return;
    if (bInvalidate)
        InvalidateNode("ForegroundColorReg");
    RefreshBackground();
}

void CKxDisplayImageWnd::SetBackgroundColor(uint32_t nColor) { mSetBackgroundColor(nColor, true); }

void CKxDisplayImageWnd::mSetBackgroundColor(uint32_t nColor, bool bInvalidate)
{
    if (!Store(m_nBackgroundColor, nColor))
        return;
    if (bInvalidate)
        InvalidateNode("BackgroundColorReg");
    RefreshBackground();
}

void CKxDisplayImageWnd::SetColorMapType(EKxColorMapType_t eType) { mSetColorMapType(eType, true); }

void CKxDisplayImageWnd::mSetColorMapType(EKxColorMapType_t eType, bool bInvalidate)
{
    CheckBelow("eCMT", static_cast<uint32_t>(eType), 3);
    if (!Store(m_eColorMapType, eType))
        return;
    if (bInvalidate)
        InvalidateNode("ColorMapTypeReg");
    RefreshPreview();
}

void CKxDisplayImageWnd::SetColorMapInversion(bool bInversion) { mSetColorMapInversion(bInversion, true); }

void CKxDisplayImageWnd::mSetColorMapInversion(bool bInversion, bool bInvalidate)
{
    if (!Store(m_bColorMapInversion, bInversion))
        return;
    // No node has this name, so the feature keeps its cached value.
    if (bInvalidate)
        InvalidateNode("ColorMapInversonReg");
    RefreshPreview();
}

void CKxDisplayImageWnd::SetColorMapPhase(int nPhase) { mSetColorMapPhase(nPhase, true); }

void CKxDisplayImageWnd::mSetColorMapPhase(int nPhase, bool bInvalidate)
{
    CheckNotBelow("nPhase", nPhase, 0);
    CheckBelow("nPhase", nPhase, 256);
    if (!Store(m_nColorMapPhase, nPhase))
        return;
    if (bInvalidate)
        InvalidateNode("ColorMapPhaseReg");
    RefreshPreview();
}

void CKxDisplayImageWnd::SetBayerInterpolationMethodForStillImageFile(
    _EKxBayerInterpolationMethodForStillImageFile_t eMethod)
{
    mSetBayerInterpolationMethodForStillImageFile(eMethod, true);
}

void CKxDisplayImageWnd::mSetBayerInterpolationMethodForStillImageFile(
    _EKxBayerInterpolationMethodForStillImageFile_t eMethod, bool bInvalidate)
{
    if (Store(m_eBayerInterpolationMethodForStillImageFile, eMethod) && bInvalidate)
        InvalidateNode("BayerInterpolationMethodForStillImageFileReg");
}

void CKxDisplayImageWnd::SetBuiltInDrawingToolbar(bool bShow)
{
    m_regShowBuiltInDrawingToolbar.SetValue(bShow);
    m_regShowBuiltInDrawingToolbar.OnWritten();
    // No node has this name, so the feature keeps its cached value.
    InvalidateNode("VisibleDrawingToolBarReg");
}

void CKxDisplayImageWnd::OnVisibleDrawingToolBar()
{
    WithVisibleDialog([](CDisplayImagePartDlg& dialog) { dialog.PostVisibleDrawingToolBarUpdated(); });
}

void CKxDisplayImageWnd::SetEnableDrawingOnSavingImage(bool bEnable)
{
    m_regEnableDrawingOnSavingImage.SetValue(bEnable);
    InvalidateNode("EnableDrawingOnSavingImageReg");
}

int CKxDisplayImageWnd::GetScrollHMax() const
{
    return AskDialog([](CDisplayImagePartDlg& dialog) { return dialog.getScrollBarHMax(); }, 0);
}

int CKxDisplayImageWnd::GetScrollHPosition() const
{
    return AskDialog([](CDisplayImagePartDlg& dialog) { return dialog.getScrollBarH(); }, 0);
}

void CKxDisplayImageWnd::SetScrollHPosition(int nPosition) { mSetScrollHPosition(nPosition, true); }

void CKxDisplayImageWnd::mSetScrollHPosition(int nPosition, bool bInvalidate)
{
    WithDialog([nPosition](CDisplayImagePartDlg& dialog) { dialog.setScrollBarH(nPosition); });
    if (bInvalidate)
        InvalidateNode("ScrollHPositionReg");
}

int CKxDisplayImageWnd::GetScrollVMax() const
{
    return AskDialog([](CDisplayImagePartDlg& dialog) { return dialog.getScrollBarVMax(); }, 0);
}

int CKxDisplayImageWnd::GetScrollVPosition() const
{
    return AskDialog([](CDisplayImagePartDlg& dialog) { return dialog.getScrollBarV(); }, 0);
}

void CKxDisplayImageWnd::SetScrollVPosition(int nPosition) { mSetScrollVPosition(nPosition, true); }

void CKxDisplayImageWnd::mSetScrollVPosition(int nPosition, bool bInvalidate)
{
    WithDialog([nPosition](CDisplayImagePartDlg& dialog) { dialog.setScrollBarV(nPosition); });
    if (bInvalidate)
        InvalidateNode("ScrollVPositionReg");
}

void CKxDisplayImageWnd::OnScrollPosOrRangeChanged()
{
    for (const char* const szNode :
         {"ScrollHMaxReg", "ScrollVMaxReg", "ScrollHPositionReg", "ScrollVPositionReg"})
        InvalidateNode(szNode);
}

} // namespace KxApi
