// SPDX-License-Identifier: Apache-2.0
// What is on the screen of an image window.
#pragma once

#include "frame/BaseDialog_qt.h"
#include "image/DrawingToolControl_qt.h"
#include "image/IDisplayImageWidgetParent.h"
#include "image/ImageMenus_qt.h"

#include <cstdint>
#include <memory>
#include <vector>

class Ui_CDisplayImagePartDlg;

namespace KxApi
{

struct IKxImageDisplayWndInside;
enum EKxBayerInterpolationMethod_t : int32_t;

/// The image with its scroll bars, menus, context menu, toolbar and status bar. It turns what the user does
/// into calls of the window, and shows what the window's settings are.
///
/// The window calls it under its dialog lock, from any thread where it says so here: what touches widgets is
/// then left to the GUI thread.
class CDisplayImagePartDlg final : public CBaseDialogEx, public IDisplayImageWidgetParent
{
    Q_OBJECT

public:
    /// @param pDlgParent the window, which has the form ICDisplayImageDlgParent and outlives the dialog.
    /// Raises BadAllocException.
    CDisplayImagePartDlg(QWidget* pParent, IDlgParent* pDlgParent, bool bCreateMenuBar);
    CDisplayImagePartDlg(const CDisplayImagePartDlg&) = delete;
    CDisplayImagePartDlg& operator=(const CDisplayImagePartDlg&) = delete;
    ~CDisplayImagePartDlg() override;

    /// bNow: a setting changed, which shows at once, and not a new image.
    void RefreshPreviewImage(bool bNow);
    void RefreshBackground();
    void UpdateRefreshInterval();

    bool updateImageWidgetSize(bool bFit) override;
    void updateMenuZoom(bool bFit);
    void updateMenuBayerInterpolation(EKxBayerInterpolationMethod_t eMethod);
    void updateMenuReverseY(bool bReverseY);

    /// Turns a place in the dialog into the nearest image pixel; -1, -1 before the first paint. Any thread.
    void ScreenToImage(int* pX, int* pY) const;

    void setScrollBarH(int nPosition);
    void setScrollBarV(int nPosition);

    void PostVisibleDrawingToolBarUpdated();
    /// The tool changed its kind of object.
    void updateDrawingToolBar();
    /// The drawing changed.
    void updateDrawingObject();

    IKxImage* GetImage() override;
    ICDisplayImageDlgParent* GetICDisplayImageDlgParent() const override { return m_pImageDlgParent; }
    bool HasImage() const override;
    const std::vector<IKxMouseObserverInside*>& getIKxMouseObserverList() const override
    {
        return m_vecMouseObservers;
    }
    const std::vector<IKxKeyObserverInside*>& getIKxKeyObserverList() const override
    {
        return m_vecKeyObservers;
    }

signals:
    void onDrawingToolBarSignal();
    void onDrawingItemChangedSignal();
    void onDisplayGridCountHSignal();
    void onDisplayGridCountVSignal();

protected:
    void initDialog() override;
    void onClosed() override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    bool IsFitMode() const;
    void ConnectMenus();
    void ConnectScrollArea();
    void ConnectDrawingTool();
    void OnContextMenu(const QPoint& pos);
    void ResizeImageWidget(bool bFit);
    void SizeToFit();
    void doNotifyScrollChanges();
    void NoteScrollState();
    void onDrawingToolBarSlot();

    ICDisplayImageDlgParent* const m_pImageDlgParent;
    IKxImageDisplayWndInside* const m_pWnd;
    const std::unique_ptr<Ui_CDisplayImagePartDlg> m_pUi;
    uint64_t m_nImageWidth = 0; // of the last image
    uint64_t m_nImageHeight = 0;

    CImageMenus m_objMenus{this};
    CDrawingToolControl m_objDrawingTool;
    std::vector<IKxMouseObserverInside*> m_vecMouseObservers; // not owned
    std::vector<IKxKeyObserverInside*> m_vecKeyObservers;
};

} // namespace KxApi
