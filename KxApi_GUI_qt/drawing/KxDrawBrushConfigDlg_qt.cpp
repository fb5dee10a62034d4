// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawBrushConfigDlg_qt.h"

#include "ui_KxDrawBrushConfigDlg_qt.h"

#include <QGraphicsPolygonItem>
#include <algorithm>

namespace KxApi
{
namespace
{

constexpr int kMargin = 4;

} // namespace

KxDrawBrushConfigDlg::KxDrawBrushConfigDlg(QWidget* pParent)
    : CStyleConfigDlg(pParent)
    , m_pUi(std::make_unique<Ui::KxDrawBrushConfigDlg>())
{
    m_pUi->setupUi(this);
    for (QComboBox* const pBox :
         {m_pUi->comboBoxStyle, m_pUi->comboBoxBackgroundMode, m_pUi->comboBoxPollyFillMode})
        NumberEntries(*pBox);
    SetView(m_pUi->graphicsView, kMargin);
}

KxDrawBrushConfigDlg::~KxDrawBrushConfigDlg() = default;

void KxDrawBrushConfigDlg::ShowStyle()
{
    const CKxBrush brush(m_objBrush);
    m_pUi->comboBoxStyle->setCurrentIndex(brush.GetStyle());
    m_pUi->comboBoxBackgroundMode->setCurrentIndex(brush.GetBkMode());
    m_pUi->comboBoxPollyFillMode->setCurrentIndex(brush.GetPolyFillMode());
    setButtonColor(m_pUi->pushButtonForegroundColor, brush.GetColor());
    setButtonColor(m_pUi->pushButtonBackgroundColor, brush.GetBkColor());
    EnableBackground();
}

void KxDrawBrushConfigDlg::updateSample() { CStyleConfigDlg::updateSample(m_objBrush.GetColor()); }

void KxDrawBrushConfigDlg::AddSample(QGraphicsScene& scene, const QSize& size)
{
    // A star, whose middle tells the fill rule.
    const int s = static_cast<int>(std::min(size.width(), size.height()) - 5.0);
    const QPolygonF star(QPolygon({{0, s / 3}, {s, s / 3}, {0, s}, {s / 2, 0}, {s, s}}));
    const auto add = [&](const QBrush& brush) {
        scene.addPolygon(star, *m_objPen.GetHPen(), brush)->setFillRule(ToQt(m_objBrush.GetPolyFillMode()));
    };
    if (m_objBrush.GetStyle() > KxBrushStyle_Solid)
        add(QBrush(m_objBrush.GetBkColor()));
    add(*m_objBrush.GetHBrush());
}

void KxDrawBrushConfigDlg::EnableBackground()
{
    const bool bHatch = m_objBrush.GetStyle() > KxBrushStyle_Solid;
    const bool bOpaque = m_pUi->comboBoxBackgroundMode->currentData().toInt() == KxBackgroundMode_Opaque;
    m_pUi->labelBackgroundMode->setEnabled(bHatch);
    m_pUi->comboBoxBackgroundMode->setEnabled(bHatch);
    m_pUi->labelBackgroundColor->setEnabled(bHatch && bOpaque);
    m_pUi->pushButtonBackgroundColor->setEnabled(bHatch && bOpaque);
}

void KxDrawBrushConfigDlg::on_comboBoxStyle_currentIndexChanged(int)
{
    Take<_EKxBrushStyle_t>(*m_pUi->comboBoxStyle, [this](_EKxBrushStyle_t e) { m_objBrush.SetStyle(e); });
    EnableBackground();
}

void KxDrawBrushConfigDlg::on_comboBoxBackgroundMode_currentIndexChanged(int)
{
    Take<_EKxBackgroundMode_t>(*m_pUi->comboBoxBackgroundMode,
                               [this](_EKxBackgroundMode_t e) { m_objBrush.SetBkMode(e); });
    EnableBackground();
}

void KxDrawBrushConfigDlg::on_comboBoxPollyFillMode_currentIndexChanged(int)
{
    Take<_EKxPolyFillMode_t>(*m_pUi->comboBoxPollyFillMode,
                             [this](_EKxPolyFillMode_t e) { m_objBrush.SetPolyFillMode(e); });
}

void KxDrawBrushConfigDlg::on_pushButtonForegroundColor_clicked()
{
    if (const QColor color = AskColor(m_pUi->pushButtonForegroundColor); color.isValid())
        m_objBrush.SetColor(color);
    updateSample();
}

void KxDrawBrushConfigDlg::on_pushButtonBackgroundColor_clicked()
{
    if (const QColor color = AskColor(m_pUi->pushButtonBackgroundColor); color.isValid())
        m_objBrush.SetBkColor(color);
    updateSample();
}

} // namespace KxApi
