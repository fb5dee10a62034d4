// SPDX-License-Identifier: Apache-2.0
#include "ViewerDock.h"

#include <QEvent>
#include <QScrollArea>
#include <QScrollBar>

namespace
{

// What docks may be squeezed to, so that all of them fit a small screen together.
constexpr QSize kLeastDock(480, 80);

/// As large as its contents would like to be, but content with less.
class DockContents : public QScrollArea
{
public:
    using QScrollArea::QScrollArea;

    QSize sizeHint() const override { return widget()->sizeHint() + QSize(BarWidth(), 0); }
    QSize minimumSizeHint() const override
    {
        return (widget()->minimumSizeHint() + QSize(BarWidth(), 0)).boundedTo(kLeastDock);
    }

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override
    {
        const bool bDone = QScrollArea::eventFilter(pObject, pEvent);
        if (pEvent->type() == QEvent::LayoutRequest)
            updateGeometry();
        return bDone;
    }

private:
    int BarWidth() const { return verticalScrollBar()->sizeHint().width(); }
};

} // namespace

ViewerDock::ViewerDock(const QString& strTitle, const char* szName, QWidget* pParent)
    : QDockWidget(strTitle, pParent)
{
    setObjectName(QString::fromLatin1(szName));
}

void ViewerDock::SetContents(QWidget* pContents)
{
    auto* const pArea = new DockContents(this);
    pArea->setFrameShape(QFrame::NoFrame);
    pArea->setFocusPolicy(Qt::NoFocus); // the contents are what the keyboard is for
    pArea->setWidgetResizable(true);
    pArea->setWidget(pContents);
    setWidget(pArea);
}
