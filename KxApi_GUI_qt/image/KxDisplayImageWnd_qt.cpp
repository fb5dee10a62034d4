// SPDX-License-Identifier: Apache-2.0
#include "image/KxDisplayImageWnd_qt.h"

#include "image/COverlayParam.h"
#include "image/DisplayImageRegisters_qt.h"
#include "image/PixelText_qt.h"

#include <Base/GCException.h>
#include <KxApi_GUI/KxApi_GUI.h>

#include <QCursor>
#include <QPoint>
#include <algorithm>

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
    , m_objPreview(pAllocator, [this](const GenICam::gcstring& strNode) { OnConverterChanged(strNode); })
{
    GenICam::GuardBadAlloc([this] {
        m_objRegister.Register(m_regShowBuiltInDrawingToolbar);
        m_objRegister.Register(m_regEnableDrawingOnSavingImage);
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

void CKxDisplayImageWnd::OnConverterChanged(const GenICam::gcstring& strNode)
{
    uint32_t nKinds = UpdatePicture;
    if (strNode == "ReverseY")
        nKinds |= UpdateReverseYMenu;
    if (strNode == "BayerInterpolationMethod")
        nKinds |= UpdateBayerMenu;
    UpdateDialog(nKinds);
}

void CKxDisplayImageWnd::RegisterIKxImage(IKxImage* pIKxImage)
{
    m_objPreview.Register(pIKxImage);
    // This one directly: it only leaves a note for the next refresh.
    WithDialog([](CDisplayImagePartDlg& dialog) {
        if (dialog.IsShown())
            dialog.RefreshPreviewImage(false);
    });
}

void CKxDisplayImageWnd::ScreenToImage(int* pX, int* pY)
{
    const bool bDialog = AskDialog(
        [=](CDisplayImagePartDlg& dialog) {
            if (dialog.IsShown())
                dialog.ScreenToImage(pX, pY);
            return true;
        },
        false);
    if (!bDialog || *pX < 0 || *pY < 0)
        *pX = *pY = 0;
}

void CKxDisplayImageWnd::GetStatusBarText(QStringList& listText)
{
    Base::GetStatusBarText(listText);
    QPoint pos = QCursor::pos();
    WithDialog([&](CDisplayImagePartDlg& dialog) { pos = dialog.mapFromGlobal(pos); });
    ScreenToImage(&pos.rx(), &pos.ry());
    if (HasImage())
        listText.append(PixelText(m_objPreview, pos.x(), pos.y()));
}

void CKxDisplayImageWnd::SaveImage(bool bPreview)
{
    CImageSaver::COptions options;
    options.bPreview = bPreview;
    options.bBayerAsShown =
        GetBayerInterpolationMethodForStillImageFile() == KxBayerInterpolationMethodForStillImageFile_Manual;
    options.eColorMapType = GetColorMapType();
    options.bColorMapInversion = GetColorMapInversion();
    options.nColorMapPhase = GetColorMapPhase();
    IKxDrawingToolInside* const pTool = GetIKxDrawingToolInside();
    if (pTool && GetEnableDrawingOnSavingImage())
        options.draw = [pTool](IKxImageBuffer* pBuffer) { pTool->DrawOnIKxImageBuffer(pBuffer); };

    // The application may give the window back while the user looks for a name.
    AddRef();
    try {
        m_objSaver.Save(m_objPreview, options);
    } catch (const GenICam::GenericException& e) {
        ShowErrorMessage(e);
    } catch (...) {
        DelRef();
        throw;
    }
    DelRef();
}

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
    m_objPreview.SetAutoDestination(eMode == KxPreviewPixelFormatMode_Auto);
    UpdateDialog(UpdatePicture);
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
    UpdateDialog(UpdateInterval);
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
    m_objPreview.SetDirty();
    const bool bFit = eZoomMode == KxZoomMode_FitToTheWindow;
    UpdateDialog(UpdateZoomMenu | UpdateSize | (bFit ? UpdatePicture : 0U));
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
    m_objPreview.SetDirty();
    UpdateDialog(UpdatePicture);
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
    m_objPreview.SetDirty();
    UpdateDialog(UpdateZoomMenu | UpdateSize | UpdatePicture);
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
    UpdateDialog(UpdateBackground);
}

void CKxDisplayImageWnd::SetForegroundColor(uint32_t nColor) { mSetForegroundColor(nColor, true); }

void CKxDisplayImageWnd::mSetForegroundColor(uint32_t nColor, bool bInvalidate)
{
    if (!Store(m_nForegroundColor, nColor))
        return;
    if (bInvalidate)
        InvalidateNode("ForegroundColorReg");
    UpdateDialog(UpdateBackground);
}

void CKxDisplayImageWnd::SetBackgroundColor(uint32_t nColor) { mSetBackgroundColor(nColor, true); }

void CKxDisplayImageWnd::mSetBackgroundColor(uint32_t nColor, bool bInvalidate)
{
    if (!Store(m_nBackgroundColor, nColor))
        return;
    if (bInvalidate)
        InvalidateNode("BackgroundColorReg");
    UpdateDialog(UpdateBackground);
}

void CKxDisplayImageWnd::SetColorMapType(EKxColorMapType_t eType) { mSetColorMapType(eType, true); }

void CKxDisplayImageWnd::mSetColorMapType(EKxColorMapType_t eType, bool bInvalidate)
{
    CheckBelow("eCMT", static_cast<uint32_t>(eType), 3);
    if (!Store(m_eColorMapType, eType))
        return;
    if (bInvalidate)
        InvalidateNode("ColorMapTypeReg");
    UpdateDialog(UpdatePicture);
}

void CKxDisplayImageWnd::SetColorMapInversion(bool bInversion) { mSetColorMapInversion(bInversion, true); }

void CKxDisplayImageWnd::mSetColorMapInversion(bool bInversion, bool bInvalidate)
{
    if (!Store(m_bColorMapInversion, bInversion))
        return;
    // No node has this name, so the feature keeps its cached value.
    if (bInvalidate)
        InvalidateNode("ColorMapInversonReg");
    UpdateDialog(UpdatePicture);
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
    UpdateDialog(UpdatePicture);
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

void CKxDisplayImageWnd::OnVisibleDrawingToolBar() { UpdateDialog(UpdateDrawingToolBar); }

void CKxDisplayImageWnd::SetEnableDrawingOnSavingImage(bool bEnable)
{
    m_regEnableDrawingOnSavingImage.SetValue(bEnable);
    InvalidateNode("EnableDrawingOnSavingImageReg");
}

int CKxDisplayImageWnd::ScrollPosition(uint32_t nKind, const std::atomic<int>& nWanted,
                                       int (CDisplayImagePartDlg::*get)() const,
                                       int (CDisplayImagePartDlg::*getMax)() const) const
{
    return AskDialog(
        [&](CDisplayImagePartDlg& dialog) {
            return IsUpdateWaiting(nKind) ? std::clamp(nWanted.load(), 0, (dialog.*getMax)())
                                          : (dialog.*get)();
        },
        0);
}

int CKxDisplayImageWnd::GetScrollHMax() const
{
    return AskDialog([](CDisplayImagePartDlg& dialog) { return dialog.getScrollBarHMax(); }, 0);
}

int CKxDisplayImageWnd::GetScrollHPosition() const
{
    return ScrollPosition(UpdateScrollH, m_nWantedScrollH, &CDisplayImagePartDlg::getScrollBarH,
                          &CDisplayImagePartDlg::getScrollBarHMax);
}

void CKxDisplayImageWnd::SetScrollHPosition(int nPosition) { mSetScrollHPosition(nPosition, true); }

void CKxDisplayImageWnd::mSetScrollHPosition(int nPosition, bool bInvalidate)
{
    m_nWantedScrollH = nPosition;
    UpdateDialog(UpdateScrollH);
    if (bInvalidate)
        InvalidateNode("ScrollHPositionReg");
}

int CKxDisplayImageWnd::GetScrollVMax() const
{
    return AskDialog([](CDisplayImagePartDlg& dialog) { return dialog.getScrollBarVMax(); }, 0);
}

int CKxDisplayImageWnd::GetScrollVPosition() const
{
    return ScrollPosition(UpdateScrollV, m_nWantedScrollV, &CDisplayImagePartDlg::getScrollBarV,
                          &CDisplayImagePartDlg::getScrollBarVMax);
}

void CKxDisplayImageWnd::SetScrollVPosition(int nPosition) { mSetScrollVPosition(nPosition, true); }

void CKxDisplayImageWnd::mSetScrollVPosition(int nPosition, bool bInvalidate)
{
    m_nWantedScrollV = nPosition;
    UpdateDialog(UpdateScrollV);
    if (bInvalidate)
        InvalidateNode("ScrollVPositionReg");
}

void CKxDisplayImageWnd::OnScrollPosOrRangeChanged()
{
    for (const char* const szNode :
         {"ScrollHMaxReg", "ScrollVMaxReg", "ScrollHPositionReg", "ScrollVPositionReg"})
        InvalidateNode(szNode);
}

void CKxDisplayImageWnd::OnUpdateDialog(CDisplayImagePartDlg& dialog, uint32_t nKinds)
{
    Base::OnUpdateDialog(dialog, nKinds);
    if (nKinds & UpdateScrollH)
        dialog.setScrollBarH(m_nWantedScrollH);
    if (nKinds & UpdateScrollV)
        dialog.setScrollBarV(m_nWantedScrollV);
    if (!dialog.isVisible())
        return;
    const bool bFit = GetZoomMode() == KxZoomMode_FitToTheWindow;
    if (nKinds & UpdateInterval)
        dialog.UpdateRefreshInterval();
    if (nKinds & UpdateZoomMenu)
        dialog.updateMenuZoom(bFit);
    if (nKinds & UpdateSize)
        dialog.updateImageWidgetSize(bFit);
    if (nKinds & UpdateReverseYMenu)
        dialog.updateMenuReverseY(m_objPreview.Converter().GetReverseY());
    if (nKinds & UpdateBayerMenu)
        dialog.updateMenuBayerInterpolation(m_objPreview.Converter().GetBayerInterpolationMethod());
    if (nKinds & UpdateBackground)
        dialog.RefreshBackground();
    if (nKinds & UpdateDrawingToolBar)
        dialog.PostVisibleDrawingToolBarUpdated();
    if (nKinds & UpdatePicture)
        dialog.RefreshPreviewImage(true);
}

} // namespace KxApi
