// SPDX-License-Identifier: Apache-2.0
#include "image/KxDisplayImageWnd_qt.h"

#include "image/COverlayParam.h"
#include "image/PixelText_qt.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <QCursor>
#include <QPoint>

namespace KxApi
{
namespace
{

constexpr int kImageIndicators = 2;

} // namespace

const CWndInfo<CKxDisplayImageWnd> CKxDisplayImageWnd::m_objWndInfo{};

CKxDisplayImageWnd::CKxDisplayImageWnd(IKxAllocator* pAllocator)
    : CKxBaseWnd(KxXMLResource_DisplayImage, "GUIPort", GenApi::RW, "Display Image", kImageIndicators)
    , m_objPreview(pAllocator, [this](const GenICam::gcstring& strNode) { OnConverterChanged(strNode); })
{}

CKxDisplayImageWnd::~CKxDisplayImageWnd() { DestroyNodeMap(); }

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
    UpdateDialog(UpdateImage);
}

void CKxDisplayImageWnd::ScreenToImage(int* pX, int* pY)
{
    const bool bDialog = AskDialog(
        [&](CDisplayImagePartDlg& dialog) {
            if (IsVisible())
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
    if (const CDisplayImagePartDlg* const pDialog = Dialog())
        pos = pDialog->mapFromGlobal(pos);
    ScreenToImage(&pos.rx(), &pos.ry());
    if (HasImage())
        listText.append(PixelText(m_objPreview, pos.x(), pos.y()));
}

CImageViewSettings CKxDisplayImageWnd::GetViewSettings() const
{
    return {GetZoomMode(),
            GetManualZoomMagnification(),
            GetStretchMode(),
            {GetColorMapType(), GetColorMapInversion(), GetColorMapPhase()}};
}

void CKxDisplayImageWnd::SaveImage(bool bPreview)
{
    CImageSaver::COptions options;
    options.bPreview = bPreview;
    options.bBayerAsShown =
        GetBayerInterpolationMethodForStillImageFile() == KxBayerInterpolationMethodForStillImageFile_Manual;
    options.objColorMap = GetViewSettings().objColorMap;
    if (GetEnableDrawingOnSavingImage())
        options.draw = [this](IKxImageBuffer* pBuffer) { m_objDrawingTool.DrawOnIKxImageBuffer(pBuffer); };

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

void CKxDisplayImageWnd::OnSettingChanged(uint32_t nUpdate, bool bByCall)
{
    if (bByCall && (nUpdate & ScrollRangesChange))
        OnScrollPosOrRangeChanged();
    if (nUpdate & DestinationModeChanges)
        m_objPreview.SetAutoDestination(m_ePreviewPixelFormatMode == KxPreviewPixelFormatMode_Auto);
    if (nUpdate & PreviewIsDirty)
        m_objPreview.SetDirty();
    if ((nUpdate & UpdatePictureIfFit) && m_eZoomMode == KxZoomMode_FitToTheWindow)
        nUpdate |= UpdatePicture;
    UpdateDialog(nUpdate);
}

void CKxDisplayImageWnd::OnScrollState(int nH, int nHMax, int nV, int nVMax)
{
    m_objScrollH.Note(nH, nHMax);
    m_objScrollV.Note(nV, nVMax);
}

void CKxDisplayImageWnd::OnScrollPosOrRangeChanged()
{
    for (const char* const szNode :
         {"ScrollHMaxReg", "ScrollVMaxReg", "ScrollHPositionReg", "ScrollVPositionReg"})
        InvalidateNode(szNode);
}

void CKxDisplayImageWnd::OnUpdateDialog(CDisplayImagePartDlg& dialog, uint32_t nKinds)
{
    if (nKinds & UpdateScrollH)
        dialog.setScrollBarH(m_objScrollH.nWanted);
    if (nKinds & UpdateScrollV)
        dialog.setScrollBarV(m_objScrollV.nWanted);
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
    if (nKinds & UpdateDrawingItemType)
        dialog.updateDrawingToolBar();
    if (nKinds & UpdateDrawing)
        dialog.updateDrawingObject();
    if (nKinds & UpdateImage)
        dialog.RefreshPreviewImage(false);
    if (nKinds & UpdatePicture)
        dialog.RefreshPreviewImage(true);
}

} // namespace KxApi
