// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawLineConfigDlg_qt.h"

#include "ui_KxDrawLineConfigDlg_qt.h"

#include <QPainterPath>

namespace KxApi
{
namespace
{

constexpr int kLineDlgMargin = 19;
constexpr int kInset = 20;

} // namespace

KxDrawLineConfigDlg::KxDrawLineConfigDlg(QWidget* pParent)
    : CStyleConfigDlg(pParent)
    , m_pUi(std::make_unique<Ui::KxDrawLineConfigDlg>())
{
    m_pUi->setupUi(this);
    for (QComboBox* const pBox : {m_pUi->comboBoxStyle, m_pUi->comboBoxEndcap, m_pUi->comboBoxJoin})
        NumberEntries(*pBox);
    SetView(m_pUi->graphicsView, kLineDlgMargin);
}

KxDrawLineConfigDlg::~KxDrawLineConfigDlg() = default;

void KxDrawLineConfigDlg::ShowStyle()
{
    // What is put in changes the pen, as far as the controls can't hold it.
    const CKxPen pen(m_objPen);
    m_pUi->labelEndcap->setHidden(m_bHideEndcap);
    m_pUi->comboBoxEndcap->setHidden(m_bHideEndcap);
    m_pUi->labelJoin->setHidden(m_bHideJoin);
    m_pUi->comboBoxJoin->setHidden(m_bHideJoin);
    m_pUi->spinBoxWidth->setValue(pen.GetSize());
    m_pUi->comboBoxStyle->setCurrentIndex(pen.GetStyle());
    m_pUi->comboBoxEndcap->setCurrentIndex(pen.GetEndcap());
    m_pUi->comboBoxJoin->setCurrentIndex(pen.GetJoin());
    setButtonColor(m_pUi->pushButtonColor, pen.GetColor());
}

void KxDrawLineConfigDlg::updateSample() { CStyleConfigDlg::updateSample(m_objPen.GetColor()); }

void KxDrawLineConfigDlg::AddSample(QGraphicsScene& scene, const QSize& size)
{
    // Shows joins and end caps.
    const int nRight = size.width() - kInset;
    const int nBottom = size.height() - kInset;
    QPainterPath path(QPointF(kInset, kInset));
    path.lineTo(nRight, kInset);
    path.lineTo(kInset, nBottom);
    path.lineTo(nRight, nBottom);
    scene.addPath(path, *m_objPen.GetHPen(), QBrush());
}

void KxDrawLineConfigDlg::on_spinBoxWidth_valueChanged(int nWidth)
{
    m_objPen.SetSize(nWidth);
    updateSample();
}

void KxDrawLineConfigDlg::on_comboBoxStyle_currentIndexChanged(int)
{
    Take<_EKxLineStyle_t>(*m_pUi->comboBoxStyle, [this](_EKxLineStyle_t e) { m_objPen.SetStyle(e); });
}

void KxDrawLineConfigDlg::on_comboBoxEndcap_currentIndexChanged(int)
{
    Take<_EKxLineEndcap_t>(*m_pUi->comboBoxEndcap, [this](_EKxLineEndcap_t e) { m_objPen.SetEndcap(e); });
}

void KxDrawLineConfigDlg::on_comboBoxJoin_currentIndexChanged(int)
{
    Take<_EKxLineJoin_t>(*m_pUi->comboBoxJoin, [this](_EKxLineJoin_t e) { m_objPen.SetJoin(e); });
}

void KxDrawLineConfigDlg::on_pushButtonColor_clicked()
{
    if (const QColor color = AskColor(m_pUi->pushButtonColor); color.isValid())
        m_objPen.SetColor(color);
    updateSample();
}

} // namespace KxApi
