// SPDX-License-Identifier: Apache-2.0
#include "image/DrawingToolBar_qt.h"

#include <Base/GCBadAlloc.h>

#include <QAbstractItemView>
#include <QAction>
#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QSignalBlocker>

namespace KxApi
{
namespace
{

constexpr int kMaxGridLines = 32;
constexpr int kIconSize = 16;

/// A button; its place in the table is the kind of object.
struct CDrawingItemRow
{
    const char* szText;
    int nIconColumn; ///< left border of the icon in the strip
};

// clang-format off
constexpr CDrawingItemRow kDrawingItems[] = {
    {"Disable",         0},
    {"Select",         16},
    {"Line",           32},
    {"Rectangle",      48},
    {"Ellipse",        64},
    {"Text",           80},
    {"Angle",          96},
    {"Polygon",       112},
    {"Perpendicular", 128},
    {"Arc",           144},
    {"Bezier",        160},
    {"Freehand",      176},
    {"Cross",         224},
};
// clang-format on

/// The strips of icons: the same pictures, the second with twice the pixels for dense screens.
struct CIconStrips
{
    QImage strip{":/png/resqt/pngDrawingToolBar.png"};
    QImage denseStrip{":/png/resqt/pngDrawingToolBar@2x.png"};

    QIcon Cut(int nColumn) const
    {
        QIcon icon;
        icon.addPixmap(QPixmap::fromImage(strip.copy(nColumn, 0, kIconSize, kIconSize)), QIcon::Normal,
                       QIcon::Off);
        QPixmap dense = QPixmap::fromImage(denseStrip.copy(2 * nColumn, 0, 2 * kIconSize, 2 * kIconSize));
        dense.setDevicePixelRatio(2);
        icon.addPixmap(dense, QIcon::Normal, QIcon::Off);
        return icon;
    }
};

} // namespace

CDrawingToolBar::CDrawingToolBar()
    : QToolBar("Drawing")
{
    GenICam::GuardBadAlloc([this] {
        setIconSize({kIconSize, kIconSize});
        AddItems();
        AddGridBox(m_objGridCountH, "H Line:%d", true);
        AddGridBox(m_objGridCountV, "V Line:%d", false);
        CheckItem(0);
    });
}

void CDrawingToolBar::AddItems()
{
    const CIconStrips strips;
    for (const CDrawingItemRow& row : kDrawingItems) {
        const auto nItemType = static_cast<int>(m_vecDrawingActions.size());
        QAction* const pAction = addAction(strips.Cut(row.nIconColumn), row.szText);
        pAction->setCheckable(true);
        pAction->setData(nItemType);
        connect(
            pAction, &QAction::triggered, this,
            [this, pAction] {
                CheckItem(pAction->data().toInt());
                emit itemTriggered(pAction->data().toInt());
            },
            Qt::DirectConnection);
        m_vecDrawingActions.push_back(pAction);
    }
}

void CDrawingToolBar::AddGridBox(QComboBox& box, const char* szFormat, bool bHorizontal)
{
    for (int nCount = 0; nCount <= kMaxGridLines; ++nCount)
        box.addItem(QString::asprintf(szFormat, nCount)); // NOLINT(clang-diagnostic-format-nonliteral)
    box.view()->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    connect(&box, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this, bHorizontal](int nCount) { emit gridCountChosen(bHorizontal, nCount); });
    addWidget(&box);
}

void CDrawingToolBar::CheckItem(int nItemType)
{
    for (QAction* const pAction : m_vecDrawingActions)
        pAction->setChecked(pAction->data().toInt() == nItemType);
}

void CDrawingToolBar::SetGridCount(bool bHorizontal, int nCount)
{
    QComboBox& box = bHorizontal ? m_objGridCountH : m_objGridCountV;
    const QSignalBlocker blocker(box);
    box.setCurrentIndex(nCount);
}

} // namespace KxApi
