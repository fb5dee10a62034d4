// SPDX-License-Identifier: Apache-2.0
#include "drawing/StyleConfigDlg_qt.h"

#include <QColorDialog>
#include <QGraphicsView>
#include <QPushButton>

namespace KxApi
{
namespace
{

constexpr int kLight = 160; // lightness of colours that can't be seen on white

} // namespace

CStyleConfigDlg::CStyleConfigDlg(QWidget* pParent)
    : QDialog(pParent)
{}

void CStyleConfigDlg::SetView(QGraphicsView* pView, int nMargin)
{
    m_pView = pView;
    m_nMargin = nMargin;
    m_pView->setScene(&m_objScene);
}

void CStyleConfigDlg::showEvent(QShowEvent* pEvent)
{
    ShowStyle();
    updateSample();
    QDialog::showEvent(pEvent);
}

void CStyleConfigDlg::resizeEvent(QResizeEvent* pEvent)
{
    QDialog::resizeEvent(pEvent);
    updateSample();
}

void CStyleConfigDlg::updateSample(const QColor& color)
{
    const QRect rcFrame = m_pView->frameRect();
    const QSize size(rcFrame.right() - rcFrame.left() - m_nMargin,
                     rcFrame.bottom() - rcFrame.top() - m_nMargin);
    // The palette may be as dark as the sample.
    m_pView->setBackgroundBrush(color.lightness() > kLight ? QColor(Qt::darkGray) : QColor(Qt::white));
    m_objScene.clear();
    m_objScene.setSceneRect(0, 0, size.width(), size.height());
    AddSample(m_objScene, size);
    m_pView->update();
}

void CStyleConfigDlg::setButtonColor(QPushButton* pButton, const QColor& color)
{
    QPalette palette = pButton->palette();
    palette.setBrush(QPalette::Button, QBrush(color));
    pButton->setPalette(palette);
    pButton->setAutoFillBackground(true);
    pButton->update();
}

QColor CStyleConfigDlg::getButtonColor(const QPushButton* pButton)
{
    return pButton->palette().color(QPalette::Button);
}

QColor CStyleConfigDlg::AskColor(QPushButton* pButton)
{
    QColor color = QColorDialog::getColor(getButtonColor(pButton), nullptr, "Select Color",
                                          QColorDialog::DontUseNativeDialog);
    if (color.isValid())
        setButtonColor(pButton, color);
    return color;
}

void CStyleConfigDlg::NumberEntries(QComboBox& box)
{
    for (int i = 0; i < box.count(); ++i)
        box.setItemData(i, i);
}

} // namespace KxApi
