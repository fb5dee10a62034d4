// SPDX-License-Identifier: Apache-2.0
// Menus of the image dialog.
#include "frame/ConnectGuarded_qt.h"
#include "image/DisplayImagePartDlg_qt.h"
#include "image/ICDisplayImageDlgParent.h"
#include "ui_DisplayImagePartDlg_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

namespace KxApi
{
namespace
{

struct CZoomRow
{
    const char* szText;
    double dMagnification;
};

struct CBayerRow
{
    const char* szText;
    EKxBayerInterpolationMethod_t eMethod;
};

// clang-format off
constexpr CZoomRow kZooms[] = {
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 16"),  16.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 15"),  15.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 14"),  14.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 13"),  13.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 12"),  12.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 11"),  11.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 10"),  10.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 9"),    9.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 8"),    8.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 4"),    4.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 2"),    2.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 1"),    1.0},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 1/2"),  0.5},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 1/4"),  0.25},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "x 1/8"),  0.125},
};

constexpr CBayerRow kBayerMethods[] = {
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "&OFF"),               KxBayerInterpolationMethod_Off},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "&Mono"),              KxBayerInterpolationMethod_Mono},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "&Nearest Neighbor"),  KxBayerInterpolationMethod_NearestNeighbor},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "N&earest Neighbor 2"), KxBayerInterpolationMethod_NearestNeighbor2},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "&Bilinear"),          KxBayerInterpolationMethod_Bilinear},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "&Bilinear 2"),        KxBayerInterpolationMethod_Bilinear2},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "&Bilinear 3"),        KxBayerInterpolationMethod_Bilinear3},
    {QT_TRANSLATE_NOOP("KxApi::CDisplayImagePartDlg", "Bi&cubic"),           KxBayerInterpolationMethod_Bicubic},
};
// clang-format on

QAction* AddCheckable(QMenu& menu, const QString& strText, const QVariant& varData)
{
    QAction* const pAction = menu.addAction(strText);
    pAction->setCheckable(true);
    pAction->setData(varData);
    return pAction;
}

/// Checks the entry of a menu, if it has one, whose data are these, and no other.
template <class Value>
void CheckOnly(const QMenu& menu, Value value)
{
    for (QAction* const pAction : menu.actions())
        pAction->setChecked(pAction->data().value<Value>() == value);
}

} // namespace

void CDisplayImagePartDlg::BuildMenus(bool bCreateMenuBar)
{
    BuildSaveMenu();
    BuildZoomMenu();
    BuildConverterMenu();
    if (bCreateMenuBar)
        BuildMenuBar();

    m_objContextMenu.setTitle(tr("Context menu"));
    m_objContextMenu.addMenu(&m_objMenuSave);
    m_objContextMenu.addSeparator();
    m_objContextMenu.addMenu(&m_objMenuZoom);
    m_objContextMenu.addMenu(&m_objMenuPixelConverter);
    setContextMenuPolicy(Qt::CustomContextMenu);
    ConnectGuarded(this, this, &QWidget::customContextMenuRequested,
                   [this](const QPoint& pos) { doShowContextMenu(pos); });
}

void CDisplayImagePartDlg::BuildMenuBar()
{
    m_objMenuFile.setTitle(tr("&File"));
    m_objMenuFile.addMenu(&m_objMenuSave);
    m_objMenuBar.addMenu(&m_objMenuFile);

    m_objMenuView.setTitle(tr("&View"));
    m_objMenuView.addMenu(&m_objMenuZoom);
    m_objMenuView.addMenu(&m_objMenuPixelConverter);
    m_objMenuView.addSeparator();
    AddStatusBarAction(m_objMenuView);
    m_objMenuBar.addMenu(&m_objMenuView);
}

void CDisplayImagePartDlg::BuildSaveMenu()
{
    m_objMenuSave.setTitle(tr("&Save"));
    const auto add = [this](const QString& strText, bool bPreview) {
        ConnectGuarded(this, m_objMenuSave.addAction(strText), &QAction::triggered, [this, bPreview] {
            if (ICDisplayImageDlgParent* const pDlgParent = GetICDisplayImageDlgParent())
                pDlgParent->SaveImage(bPreview);
        });
    };
    add(tr("&Registered Image"), false);
    add(tr("&Preview Image"), true);
}

void CDisplayImagePartDlg::BuildZoomMenu()
{
    m_objMenuZoom.setTitle(tr("&Zoom"));
    m_objMenuFixedZoom.setTitle(tr("&Fixed Zoom"));
    m_objMenuZoom.addMenu(&m_objMenuFixedZoom);
    for (const CZoomRow& row : kZooms)
        AddCheckable(m_objMenuFixedZoom, tr(row.szText), row.dMagnification);
    m_objActionFit.setText(tr("Fit To The &Window"));
    m_objActionFit.setCheckable(true);
    m_objMenuZoom.addAction(&m_objActionFit);

    QList<QAction*> listActions = m_objMenuFixedZoom.actions();
    listActions.append(&m_objActionFit);
    for (QAction* const pAction : listActions)
        ConnectGuarded(this, pAction, &QAction::triggered,
                       [this, pAction](bool bChecked) { doZoomTriggered(*pAction, bChecked); });
}

void CDisplayImagePartDlg::BuildConverterMenu()
{
    m_objMenuPixelConverter.setTitle(tr("&Pixel Converter"));
    m_objMenuBayer.setTitle(tr("&Bayer Interpolation"));
    m_objMenuPixelConverter.addMenu(&m_objMenuBayer);
    for (const CBayerRow& row : kBayerMethods) {
        QAction* const pAction = AddCheckable(m_objMenuBayer, tr(row.szText), static_cast<int>(row.eMethod));
        ConnectGuarded(this, pAction, &QAction::triggered,
                       [this, pAction](bool bChecked) { doBayerTriggered(*pAction, bChecked); });
    }
    m_objActionReverseY.setText(tr("&Reverse Y"));
    m_objActionReverseY.setCheckable(true);
    m_objMenuPixelConverter.addAction(&m_objActionReverseY);
    ConnectGuarded(this, &m_objActionReverseY, &QAction::triggered,
                   [this](bool bChecked) { doReverseYTriggered(bChecked); });
}

void CDisplayImagePartDlg::doZoomTriggered(QAction& action, bool bChecked)
{
    IKxImageDisplayWndInside* const pWnd = Window();
    if (!bChecked) {
        action.setChecked(true);
        return;
    }
    if (!pWnd)
        return;
    if (&action == &m_objActionFit) {
        pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
        return;
    }
    pWnd->SetZoomMode(KxZoomMode_FixedZoom);
    m_objActionFit.setChecked(false);
    pWnd->SetManualZoomMagnification(action.data().toDouble());
}

void CDisplayImagePartDlg::updateMenuZoom(bool bFit)
{
    InGuiThread([this, bFit] {
        const IKxImageDisplayWndInside* const pWnd = Window();
        m_objActionFit.setChecked(bFit);
        // No entry has the magnification 0.
        CheckOnly(m_objMenuFixedZoom, bFit || !pWnd ? 0.0 : pWnd->GetManualZoomMagnification());
    });
}

IKxPixelFormatConverter* CDisplayImagePartDlg::Converter() const
{
    const IKxImageDisplayWndInside* const pWnd = Window();
    return pWnd ? pWnd->GetIKxPixelFormatConverter() : nullptr;
}

void CDisplayImagePartDlg::ShowConverterSettings()
{
    if (const IKxPixelFormatConverter* const pConverter = Converter()) {
        updateMenuBayerInterpolation(pConverter->GetBayerInterpolationMethod());
        updateMenuReverseY(pConverter->GetReverseY());
    }
}

void CDisplayImagePartDlg::doBayerTriggered(QAction& action, bool bChecked)
{
    if (!bChecked) {
        action.setChecked(true);
        return;
    }
    const int nMethod = action.data().toInt();
    CheckOnly(m_objMenuBayer, nMethod);
    if (IKxPixelFormatConverter* const pConverter = Converter())
        pConverter->SetBayerInterpolationMethod(static_cast<EKxBayerInterpolationMethod_t>(nMethod));
}

void CDisplayImagePartDlg::updateMenuBayerInterpolation(EKxBayerInterpolationMethod_t eMethod)
{
    if (eMethod < KxBayerInterpolationMethod_Off || eMethod > KxBayerInterpolationMethod_Bilinear3)
        return;
    InGuiThread([this, eMethod] { CheckOnly(m_objMenuBayer, static_cast<int>(eMethod)); });
}

void CDisplayImagePartDlg::doReverseYTriggered(bool bChecked)
{
    if (IKxPixelFormatConverter* const pConverter = Converter())
        pConverter->SetReverseY(bChecked);
}

void CDisplayImagePartDlg::updateMenuReverseY(bool bReverseY)
{
    InGuiThread([this, bReverseY] { m_objActionReverseY.setChecked(bReverseY); });
}

void CDisplayImagePartDlg::doShowContextMenu(const QPoint& pos)
{
    const QPoint ptGlobal = mapToGlobal(pos);
    const IKxDrawingToolInside* const pTool = DrawingTool();
    if (pTool && pTool->GetDrawingItemType() != KxDrawingItemType_None)
        OfferRightRelease(ptGlobal);
    else
        m_objContextMenu.exec(ptGlobal);
}

} // namespace KxApi
