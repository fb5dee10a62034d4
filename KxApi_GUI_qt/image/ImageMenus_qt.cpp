// SPDX-License-Identifier: Apache-2.0
#include "image/ImageMenus_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>

#include <QMenuBar>
#include <algorithm>
#include <iterator>

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
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 16"),  16.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 15"),  15.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 14"),  14.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 13"),  13.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 12"),  12.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 11"),  11.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 10"),  10.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 9"),    9.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 8"),    8.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 4"),    4.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 2"),    2.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 1"),    1.0},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 1/2"),  0.5},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 1/4"),  0.25},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "x 1/8"),  0.125},
};

constexpr CBayerRow kBayerMethods[] = {
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "&OFF"),               KxBayerInterpolationMethod_Off},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "&Mono"),              KxBayerInterpolationMethod_Mono},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "&Nearest Neighbor"),  KxBayerInterpolationMethod_NearestNeighbor},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "N&earest Neighbor 2"), KxBayerInterpolationMethod_NearestNeighbor2},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "&Bilinear"),          KxBayerInterpolationMethod_Bilinear},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "&Bilinear 2"),        KxBayerInterpolationMethod_Bilinear2},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "&Bilinear 3"),        KxBayerInterpolationMethod_Bilinear3},
    {QT_TRANSLATE_NOOP("KxApi::CImageMenus", "Bi&cubic"),           KxBayerInterpolationMethod_Bicubic},
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

CImageMenus::CImageMenus(QWidget* pParent)
    : m_objContextMenu(tr("Context menu"), pParent)
    , m_objMenuFile(tr("&File"), pParent)
    , m_objMenuView(tr("&View"), pParent)
    , m_objMenuSave(tr("&Save"), pParent)
    , m_objMenuZoom(tr("&Zoom"), pParent)
    , m_objMenuFixedZoom(tr("&Fixed Zoom"), pParent)
    , m_objMenuPixelConverter(tr("&Pixel Converter"), pParent)
    , m_objMenuBayer(tr("&Bayer Interpolation"), pParent)
    , m_objActionFit(tr("Fit To The &Window"))
    , m_objActionReverseY(tr("&Reverse Y"))
{
    BuildSave();
    BuildZoom();
    BuildConverter();
    m_objContextMenu.addMenu(&m_objMenuSave);
    m_objContextMenu.addSeparator();
    m_objContextMenu.addMenu(&m_objMenuZoom);
    m_objContextMenu.addMenu(&m_objMenuPixelConverter);
    m_objMenuFile.addMenu(&m_objMenuSave);
    m_objMenuView.addMenu(&m_objMenuZoom);
    m_objMenuView.addMenu(&m_objMenuPixelConverter);
    m_objMenuView.addSeparator();
}

QMenu& CImageMenus::AddTo(QMenuBar& menuBar)
{
    menuBar.addMenu(&m_objMenuFile);
    menuBar.addMenu(&m_objMenuView);
    return m_objMenuView;
}

template <class Function>
void CImageMenus::OnChoice(QAction* pAction, Function function)
{
    connect(pAction, &QAction::triggered, this, [pAction, function](bool bChecked) {
        if (bChecked)
            function();
        else
            pAction->setChecked(true);
    });
}

void CImageMenus::BuildSave()
{
    connect(m_objMenuSave.addAction(tr("&Registered Image")), &QAction::triggered, this,
            [this] { emit saveChosen(false); });
    connect(m_objMenuSave.addAction(tr("&Preview Image")), &QAction::triggered, this,
            [this] { emit saveChosen(true); });
}

void CImageMenus::BuildZoom()
{
    m_objMenuZoom.addMenu(&m_objMenuFixedZoom);
    for (const CZoomRow& row : kZooms)
        OnChoice(AddCheckable(m_objMenuFixedZoom, tr(row.szText), row.dMagnification),
                 [this, &row] { emit magnificationChosen(row.dMagnification); });
    m_objActionFit.setCheckable(true);
    m_objMenuZoom.addAction(&m_objActionFit);
    OnChoice(&m_objActionFit, [this] { emit fitChosen(); });
}

void CImageMenus::BuildConverter()
{
    m_objMenuPixelConverter.addMenu(&m_objMenuBayer);
    for (const CBayerRow& row : kBayerMethods)
        OnChoice(AddCheckable(m_objMenuBayer, tr(row.szText), static_cast<int>(row.eMethod)), [this, &row] {
            ShowBayerMethod(row.eMethod);
            emit bayerMethodChosen(row.eMethod);
        });
    m_objActionReverseY.setCheckable(true);
    m_objMenuPixelConverter.addAction(&m_objActionReverseY);
    connect(&m_objActionReverseY, &QAction::triggered, this, &CImageMenus::reverseYChosen);
}

void CImageMenus::ShowMagnification(double dMagnification)
{
    m_objActionFit.setChecked(false);
    CheckOnly(m_objMenuFixedZoom, dMagnification);
}

void CImageMenus::ShowFit()
{
    m_objActionFit.setChecked(true);
    CheckOnly(m_objMenuFixedZoom, 0.0); // which no entry has
}

void CImageMenus::ShowBayerMethod(int nMethod)
{
    const bool bHasEntry = std::any_of(std::begin(kBayerMethods), std::end(kBayerMethods),
                                       [=](const CBayerRow& row) { return row.eMethod == nMethod; });
    if (bHasEntry)
        CheckOnly(m_objMenuBayer, nMethod);
}

} // namespace KxApi
