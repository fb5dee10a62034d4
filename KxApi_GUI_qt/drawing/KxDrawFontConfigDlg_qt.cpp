// SPDX-License-Identifier: Apache-2.0
#include "drawing/KxDrawFontConfigDlg_qt.h"

#include "frame/utility_qt.h"
#include "ui_KxDrawFontConfigDlg_qt.h"

#include <QFontMetrics>
#include <QGraphicsTextItem>

namespace KxApi
{
namespace
{

constexpr int kFontDlgMargin = 4;
const char* const kSample = "Sample";

} // namespace

KxDrawFontConfigDlg::KxDrawFontConfigDlg(QWidget* pParent)
    : CStyleConfigDlg(pParent)
    , m_pUi(std::make_unique<Ui::KxDrawFontConfigDlg>())
{
    m_pUi->setupUi(this);
    for (QComboBox* const pBox : {m_pUi->comboBoxWeight, m_pUi->comboBoxStyle, m_pUi->comboBoxDecoration,
                                  m_pUi->comboBoxBackgroundMode})
        NumberEntries(*pBox);
    SetView(m_pUi->graphicsView, kFontDlgMargin);
}

KxDrawFontConfigDlg::~KxDrawFontConfigDlg() = default;

void KxDrawFontConfigDlg::ShowStyle()
{
    const CKxFont font(m_objFont);
    m_pUi->comboBoxBackgroundMode->setCurrentIndex(font.GetBkMode());
    m_pUi->comboBoxDecoration->setCurrentIndex(font.GetDecoration());
    m_pUi->comboBoxStyle->setCurrentIndex(font.GetStyle());
    m_pUi->comboBoxWeight->setCurrentIndex(font.GetWeight());
    m_pUi->spinBoxHeight->setValue(font.GetHeight());
    m_pUi->fontComboBox->setCurrentText(ToQString(font.GetFamily()));
    setButtonColor(m_pUi->pushButtonForeground, font.GetColor());
    setButtonColor(m_pUi->pushButtonBackground, font.GetBkColor());
    on_comboBoxBackgroundMode_currentIndexChanged(0);
}

void KxDrawFontConfigDlg::updateSample() { CStyleConfigDlg::updateSample(m_objFont.GetColor()); }

void KxDrawFontConfigDlg::AddSample(QGraphicsScene& scene, const QSize&)
{
    const QFont& font = *m_objFont.GetObject();
    if (m_objFont.GetBkMode() == KxBackgroundMode_Opaque) {
        const QFontMetrics metrics(font);
        const QColor color = m_objFont.GetBkColor();
        scene.addRect(QRectF(0, 0, metrics.horizontalAdvance(kSample) + 1, metrics.height() + 1), QPen(color),
                      QBrush(color));
    }
    scene.addText(kSample, font)->setDefaultTextColor(m_objFont.GetColor());
    scene.setSceneRect(scene.itemsBoundingRect()); // in the middle, or scrolled when it is larger
}

void KxDrawFontConfigDlg::on_fontComboBox_currentIndexChanged(const QString& strFamily)
{
    m_objFont.SetFamily(ToGcstring(strFamily));
    updateSample();
}

void KxDrawFontConfigDlg::on_spinBoxHeight_valueChanged(int nHeight)
{
    m_objFont.SetHeight(nHeight);
    updateSample();
}

void KxDrawFontConfigDlg::on_comboBoxWeight_currentIndexChanged(int)
{
    Take<_EKxFontWeight_t>(*m_pUi->comboBoxWeight, [this](_EKxFontWeight_t e) { m_objFont.SetWeight(e); });
}

void KxDrawFontConfigDlg::on_comboBoxStyle_currentIndexChanged(int)
{
    Take<_EKxFontStyle_t>(*m_pUi->comboBoxStyle, [this](_EKxFontStyle_t e) { m_objFont.SetStyle(e); });
}

void KxDrawFontConfigDlg::on_comboBoxDecoration_currentIndexChanged(int)
{
    Take<_EKxFontDecoration_t>(*m_pUi->comboBoxDecoration,
                               [this](_EKxFontDecoration_t e) { m_objFont.SetDecoration(e); });
}

void KxDrawFontConfigDlg::on_comboBoxBackgroundMode_currentIndexChanged(int)
{
    Take<_EKxBackgroundMode_t>(*m_pUi->comboBoxBackgroundMode,
                               [this](_EKxBackgroundMode_t e) { m_objFont.SetBkMode(e); });
    const bool bOpaque = m_objFont.GetBkMode() == KxBackgroundMode_Opaque;
    m_pUi->labelBackground->setEnabled(bOpaque);
    m_pUi->pushButtonBackground->setEnabled(bOpaque);
}

void KxDrawFontConfigDlg::on_pushButtonForeground_clicked()
{
    if (const QColor color = AskColor(m_pUi->pushButtonForeground); color.isValid())
        m_objFont.SetColor(color);
    updateSample();
}

void KxDrawFontConfigDlg::on_pushButtonBackground_clicked()
{
    if (const QColor color = AskColor(m_pUi->pushButtonBackground); color.isValid())
        m_objFont.SetBkColor(color);
    updateSample();
}

} // namespace KxApi
