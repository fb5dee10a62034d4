// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Float_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

#include <QDoubleSpinBox>
#include <QScopedValueRollback>
#include <QSlider>
#include <algorithm>
#include <cmath>
#include <limits>

namespace KxApi
{
namespace
{

constexpr int kSliderSteps = 100;
constexpr int64_t kMaxDecimals = 323; // what a spin box takes

/// What isn't a number, or none of 32 bits, becomes the smallest one; sliders limit it.
int Truncated(double dValue)
{
    constexpr double kEnd = 2147483648.0;
    return dValue > -kEnd && dValue < kEnd ? static_cast<int>(dValue) : std::numeric_limits<int>::min();
}

} // namespace

CCustomPropertyGridProperty_Float::CCustomPropertyGridProperty_Float(IKxNodeMapDisplayWndInside* pWnd,
                                                                     QWidget* pParent, GenApi::INode* pNode,
                                                                     IPropertyCtrlEvent* pEvent)
    : CPropertyOf(pWnd, pParent, pNode, pEvent)
{
    Dropping([this] {
        if (Value())
            m_nDecimals =
                static_cast<int>(std::clamp<int64_t>(Value()->GetDisplayPrecision(), 0, kMaxDecimals));
    });
}

void CCustomPropertyGridProperty_Float::MakeEditor()
{
    m_pSpinBox = new QDoubleSpinBox(this);
    m_pSpinBox->setKeyboardTracking(false); // one write for a typed number
    m_pSpinBox->setDecimals(m_nDecimals);
    AddEditor(*m_pSpinBox, 1);
    m_pSlider = new QSlider(Qt::Horizontal, this);
    m_pSlider->setRange(0, kSliderSteps);
    AddEditor(*m_pSlider, 1);
}

void CCustomPropertyGridProperty_Float::ConnectEditor()
{
    ConnectTo(m_pSpinBox, &QDoubleSpinBox::editingFinished, [this] { OnEditingFinished(); });
    ConnectTo(m_pSpinBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged),
              [this](double dValue) { OnSpinboxValueChanged(dValue); });
    ConnectTo(m_pSlider, &QSlider::sliderReleased, [this] { OnSliderReleased(); });
    ConnectTo(m_pSlider, &QSlider::valueChanged, [this](int nPosition) { OnSliderValueChanged(nPosition); });
}

void CCustomPropertyGridProperty_Float::UpdateDisplayValue()
{
    if (!m_bSettingValue)
        CPropertyOf::UpdateDisplayValue();
}

void CCustomPropertyGridProperty_Float::ShowValue(GenApi::EAccessMode eMode)
{
    if (!GenApi::IsAvailable(eMode))
        return;
    const QSignalBlocker blockSlider(m_pSlider);
    const QSignalBlocker blockSpinBox(m_pSpinBox);
    const double dValue = Value()->GetValue(false, false);
    if (GenApi::IsWritable(eMode)) {
        m_dLastValue = dValue;
        const double dInc = GetCurrentInc();
        const double dMin = GetMinForSlider();
        const double dMax = GetMaxForSlider();
        m_pSlider->setTickInterval(1);
        m_pSlider->setSingleStep(1);
        m_pSpinBox->setMinimum(Value()->GetMin());
        m_pSpinBox->setMaximum(Value()->GetMax());
        m_pSpinBox->setSingleStep(dInc);
        m_pSlider->setValue(Truncated((dValue - dMin) * kSliderSteps / (dMax - dMin)));
    } else {
        Label().setText(Text(dValue));
        m_pSlider->setValue(Truncated(dValue));
    }
    m_pSpinBox->setValue(dValue);
}

double CCustomPropertyGridProperty_Float::GetValueForSlider()
{
    double dValue = 0;
    Dropping([&] { dValue = Value()->GetValue(false, false); });
    return dValue;
}

double CCustomPropertyGridProperty_Float::GetMinForSlider()
{
    double dMin = 0;
    Dropping([&] {
        const double dNodeMin = Value()->GetMin();
        dMin = IsLogarithmic() && dNodeMin * 2 < m_dLastValue ? m_dLastValue * 0.5 : dNodeMin;
    });
    return dMin;
}

double CCustomPropertyGridProperty_Float::GetMaxForSlider()
{
    double dMax = 0;
    Dropping([&] {
        const double dNodeMax = Value()->GetMax();
        const bool bWindow = IsLogarithmic() && m_dLastValue > 0 && m_dLastValue * 2 < dNodeMax;
        dMax = bWindow ? m_dLastValue * 2 : dNodeMax;
    });
    return dMax;
}

double CCustomPropertyGridProperty_Float::GetCurrentInc()
{
    double dInc = 0.1;
    Dropping([&] {
        if (Value()->HasInc())
            dInc = Value()->GetInc();
        else if (IsLogarithmic())
            dInc = Value()->GetValue(false, false) * 0.5;
        else if (m_nDecimals >= 1)
            dInc = 1.0 / std::pow(10.0, m_nDecimals);
    });
    return dInc;
}

double CCustomPropertyGridProperty_Float::ValueAt(int nPosition)
{
    const double dMin = GetMinForSlider();
    return nPosition * (GetMaxForSlider() - dMin) / kSliderSteps + dMin;
}

void CCustomPropertyGridProperty_Float::SetValueForSlider(double dValue)
{
    Dropping([&] { Value()->SetValue(dValue, true); });
}

void CCustomPropertyGridProperty_Float::WriteMuted(double dValue)
{
    const QScopedValueRollback<bool> setting(m_bSettingValue, true);
    SetValueForSlider(dValue);
}

void CCustomPropertyGridProperty_Float::OnSliderValueChanged(int nPosition)
{
    if (!IsNodeWritable())
        return;
    const double dValue = ValueAt(nPosition);
    WriteMuted(dValue);
    const QSignalBlocker block(m_pSpinBox);
    m_pSpinBox->setValue(dValue);
}

void CCustomPropertyGridProperty_Float::OnSliderReleased()
{
    if (IsNodeWritable())
        SetValueForSlider(ValueAt(m_pSlider->value()));
}

void CCustomPropertyGridProperty_Float::OnSpinboxValueChanged(double dValue)
{
    if (!IsNodeWritable())
        return;
    WriteMuted(dValue);
    const QSignalBlocker block(m_pSlider);
    const double dMin = GetMinForSlider();
    const double dMax = GetMaxForSlider();
    m_pSlider->setValue(Truncated((dValue - dMin) / (dMax - dMin) * kSliderSteps));
}

void CCustomPropertyGridProperty_Float::OnEditingFinished()
{
    if (IsNodeWritable())
        setValueForSpinbox(m_pSpinBox->value());
}

QString CCustomPropertyGridProperty_Float::Text(double dValue) const
{
    return QString("%1").arg(dValue, 0, 'f', m_nDecimals, ' ');
}

QString CCustomPropertyGridProperty_Float::GetInterfaceSpecificDescription()
{
    return Fill(
        "<tr><td width=\"30%\">Value</td><td width=\"70%\">%1</td></tr><tr><td>Minimum</td><td>%2</td>"
        "</tr><tr><td>Maximum</td><td>%3</td></tr>%4<tr><td>Representation</td><td>%5</td></tr>"
        "<tr><td>Display Precision</td><td>%6</td></tr>",
        {Text(Value()->GetValue()), Text(Value()->GetMin()), Text(Value()->GetMax()),
         UnitRow(Value()->GetUnit()), WordOf(Value()->GetRepresentation()),
         QString::number(Value()->GetDisplayPrecision())});
}

QString CCustomPropertyGridProperty_Float::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::Float, IsNodeWritable(), ToQString(m_pNode->GetName()));
}

} // namespace KxApi
