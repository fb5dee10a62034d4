// SPDX-License-Identifier: Apache-2.0
#include "ViewArea.h"

#include "ActionIcons.h"
#include "CameraView.h"

#include <QGridLayout>
#include <QSignalBlocker>
#include <QTabBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

namespace
{

constexpr int kCloseSide = 12;

} // namespace

ViewArea::ViewArea(QWidget* pParent)
    : QWidget(pParent)
    , m_pTabs(new QTabBar(this))
    , m_pGrid(new QGridLayout)
{
    setObjectName("views");
    auto* const pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addWidget(m_pTabs);
    pLayout->addLayout(m_pGrid, 1);
    m_pGrid->setSpacing(2);
    m_pTabs->setAccessibleName(tr("Open cameras"));
    m_pTabs->setDocumentMode(true);
    m_pTabs->setAutoHide(true);
    m_pTabs->setExpanding(false);
    connect(m_pTabs, &QTabBar::currentChanged, this, [this] {
        Arrange();
        emit CurrentChanged();
    });
}

void ViewArea::Add(CameraView& view)
{
    view.setParent(this);
    m_views.append(&view);
    connect(&view, &CameraView::Touched, this, [this, &view] { SetCurrent(view); });
    m_pTabs->addTab(view.Title());
    // The tab bar's own cross is black, whatever the palette.
    auto* const pClose = new QToolButton(m_pTabs);
    pClose->setIcon(MakeActionIcon("closeTab"));
    pClose->setIconSize(QSize(kCloseSide, kCloseSide));
    pClose->setAutoRaise(true);
    pClose->setFocusPolicy(Qt::NoFocus);
    pClose->setToolTip(tr("Close this camera"));
    pClose->setAccessibleName(pClose->toolTip());
    connect(pClose, &QToolButton::clicked, this, [this, &view] { emit CloseWanted(&view); });
    m_pTabs->setTabButton(m_pTabs->count() - 1, QTabBar::RightSide, pClose);
    Arrange();
}

void ViewArea::Remove(CameraView& view)
{
    const int nIndex = m_views.indexOf(&view);
    m_views.remove(nIndex);
    m_pGrid->removeWidget(&view);
    {
        // The tab bar tells of the change before the list and the bar agree.
        const QSignalBlocker blocker(m_pTabs);
        m_pTabs->removeTab(nIndex);
    }
    delete &view;
    Arrange();
    emit CurrentChanged();
}

CameraView* ViewArea::Current() const { return m_views.value(m_pTabs->currentIndex()); }

void ViewArea::SetCurrent(CameraView& view)
{
    if (&view != Current())
        m_pTabs->setCurrentIndex(m_views.indexOf(&view));
}

void ViewArea::SetTiled(bool bTiled)
{
    m_bTiled = bTiled;
    Arrange();
}

void ViewArea::UpdateTitles()
{
    for (int i = 0; i < m_views.size(); ++i)
        m_pTabs->setTabText(i, m_views[i]->Title());
    Arrange();
}

void ViewArea::Arrange()
{
    const bool bMany = m_views.size() > 1;
    const bool bTiled = m_bTiled && bMany;
    const int nColumns =
        bTiled ? static_cast<int>(std::ceil(std::sqrt(static_cast<double>(m_views.size())))) : 1;
    for (int i = 0; i < m_views.size(); ++i) {
        CameraView* const pView = m_views[i];
        m_pGrid->removeWidget(pView);
        m_pGrid->addWidget(pView, bTiled ? i / nColumns : 0, bTiled ? i % nColumns : 0);
        pView->ShowCaption(bTiled, pView == Current());
        pView->setVisible(bTiled || pView == Current());
    }
}
