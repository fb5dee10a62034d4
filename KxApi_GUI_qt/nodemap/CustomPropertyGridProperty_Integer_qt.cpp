// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Integer_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

#include <QScopedValueRollback>
#include <QSlider>
#include <QSpinBox>
#include <algorithm>
#include <limits>

namespace KxApi
{
namespace
{

// Sums of what lies at both ends of 64 bits.
__extension__ using Wide = __int128;

int Fitted(int64_t nValue)
{
    return static_cast<int>(
        std::clamp<int64_t>(nValue, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

/// Moves from the present value by whole increments, at least as far as the wanted one.
int64_t Stepped(int64_t nCurrent, int64_t nWanted, int64_t nInc, int64_t nMin, int64_t nMax)
{
    const auto steps = [nInc](Wide nDistance) { return nInc * ((nDistance + nInc - 1) / nInc); };
    const Wide nTarget = nWanted > nCurrent ? nCurrent + steps(Wide(nWanted) - nCurrent)
                                            : nCurrent - steps(Wide(nCurrent) - nWanted);
    return static_cast<int64_t>(std::max<Wide>(nMin, std::min<Wide>(nMax, nTarget)));
}

} // namespace

CCustomPropertyGridProperty_Integer::CCustomPropertyGridProperty_Integer(IKxNodeMapDisplayWndInside* pWnd,
                                                                         QWidget* pParent,
                                                                         GenApi::INode* pNode,
                                                                         IPropertyCtrlEvent* pEvent,
                                                                         std::optional<bool> bUseLineEdit)
    : CPropertyOf(pWnd, pParent, pNode, pEvent)
    , m_bUseLineEdit(bUseLineEdit)
{}

void CCustomPropertyGridProperty_Integer::MakeEditor()
{
    if (!m_bUseLineEdit) {
        bool bTooLarge = true;
        Dropping([&] { bTooLarge = Value()->GetMax() > std::numeric_limits<int>::max(); });
        m_bUseLineEdit = bTooLarge;
    }
    if (*m_bUseLineEdit) {
        m_pLineEdit = new QLineEdit(this);
        AddEditor(*m_pLineEdit);
        return;
    }
    m_pSpinBox = new QSpinBox(this);
    m_pSpinBox->setKeyboardTracking(false); // one write for a typed number
    AddEditor(*m_pSpinBox, 1);
    m_pSlider = new QSlider(Qt::Horizontal, this);
    AddEditor(*m_pSlider, 1);
}

void CCustomPropertyGridProperty_Integer::ConnectEditor()
{
    if (m_pLineEdit) {
        ConnectTo(m_pLineEdit, &QLineEdit::editingFinished, [this] { OnEditingFinished(); });
        return;
    }
    ConnectTo(m_pSpinBox, &QSpinBox::editingFinished, [this] { OnEditingFinished(); });
    ConnectTo(m_pSpinBox, QOverload<int>::of(&QSpinBox::valueChanged),
              [this](int nValue) { OnSliderSpinboxValueChanged(nValue); });
    ConnectTo(m_pSlider, &QSlider::sliderReleased, [this] { OnSliderReleased(); });
    ConnectTo(m_pSlider, &QSlider::valueChanged, [this](int nValue) { OnSliderSpinboxValueChanged(nValue); });
}

void CCustomPropertyGridProperty_Integer::UpdateDisplayValue()
{
    if (!m_bSettingValue)
        CPropertyOf::UpdateDisplayValue();
}

void CCustomPropertyGridProperty_Integer::ShowValue(GenApi::EAccessMode eMode)
{
    if (!GenApi::IsReadable(eMode))
        return;
    if (GenApi::IsWritable(eMode) && !m_pLineEdit) {
        FillSpinBox();
        return;
    }
    const QString strText = ToQString(Value()->ToString(false, false));
    if (GenApi::IsWritable(eMode))
        m_pLineEdit->setText(strText);
    else
        Label().setText(strText);
}

void CCustomPropertyGridProperty_Integer::FillSpinBox()
{
    const QSignalBlocker blockSlider(m_pSlider);
    const QSignalBlocker blockSpinBox(m_pSpinBox);
    m_nLastValue = Value()->GetValue(false, false);
    const int64_t nInc = Value()->GetInc();
    const int nStep = nInc == 0 ? 1 : Fitted(nInc);
    m_pSlider->setMinimum(Fitted(GetMinForSlider()));
    m_pSlider->setMaximum(Fitted(GetMaxForSlider()));
    m_pSlider->setTickInterval(nStep);
    m_pSlider->setSingleStep(nStep);
    m_pSpinBox->setMinimum(Fitted(Value()->GetMin()));
    m_pSpinBox->setMaximum(Fitted(Value()->GetMax()));
    m_pSpinBox->setSingleStep(nStep);
    m_pSlider->setValue(Fitted(m_nLastValue));
    m_pSpinBox->setValue(Fitted(m_nLastValue));
}

int64_t CCustomPropertyGridProperty_Integer::GetValueForSlider()
{
    int64_t nValue = 0;
    Dropping([&] { nValue = Value()->GetValue(false, false); });
    return nValue;
}

int64_t CCustomPropertyGridProperty_Integer::GetMinForSlider()
{
    int64_t nMin = 0;
    Dropping([&] {
        nMin = Value()->GetMin();
        if (IsLogarithmic() && m_nLastValue > Wide(nMin) * 2)
            nMin = m_nLastValue / 2;
    });
    return nMin;
}

int64_t CCustomPropertyGridProperty_Integer::GetMaxForSlider()
{
    int64_t nMax = 0;
    Dropping([&] {
        nMax = Value()->GetMax();
        if (IsLogarithmic() && m_nLastValue > 0)
            nMax = static_cast<int64_t>(std::min<Wide>(nMax, Wide(m_nLastValue) * 2));
    });
    return nMax;
}

void CCustomPropertyGridProperty_Integer::setValueForSpinbox(int64_t nValue)
{
    const int64_t nInc = Value()->GetInc();
    if (nInc > 1)
        nValue = Stepped(Value()->GetValue(), nValue, nInc, Value()->GetMin(), Value()->GetMax());
    Value()->SetValue(nValue, true);
}

void CCustomPropertyGridProperty_Integer::OnSliderSpinboxValueChanged(int nValue)
{
    if (!IsNodeWritable())
        return;
    const int64_t nInc = Value()->GetInc();
    const int64_t nWanted = nInc > 0 ? nValue - nValue % nInc : nValue;
    {
        const QScopedValueRollback<bool> setting(m_bSettingValue, true);
        setValueForSpinbox(nWanted);
    }
    const QSignalBlocker blockSlider(m_pSlider);
    const QSignalBlocker blockSpinBox(m_pSpinBox);
    m_pSlider->setValue(static_cast<int>(nWanted));
    m_pSpinBox->setValue(static_cast<int>(nWanted));
}

void CCustomPropertyGridProperty_Integer::OnSliderReleased()
{
    if (IsNodeWritable())
        setValueForSpinbox(m_pSlider->value());
}

void CCustomPropertyGridProperty_Integer::OnEditingFinished()
{
    Dropping([this] {
        if (!IsNodeWritable())
            return;
        if (m_pLineEdit)
            Value()->SetValue(StringToIntegerValue(m_pLineEdit->text()), true);
        else
            setValueForSpinbox(m_pSpinBox->value());
    });
}

int64_t CCustomPropertyGridProperty_Integer::StringToIntegerValue(const QString& strText)
{
    const bool bHex = Value()->GetRepresentation() == GenApi::HexNumber;
    return strText.toLongLong(nullptr, bHex ? 16 : 10);
}

QString CCustomPropertyGridProperty_Integer::ValueSuffix(int64_t nValue)
{
    switch (Value()->GetRepresentation()) {
    case GenApi::HexNumber:
        return QString::asprintf(" (0x%llx)", static_cast<unsigned long long>(nValue));
    case GenApi::IPV4Address:
    case GenApi::MACAddress:
        return Fill(" (%1)", {ToQString(Value()->ToString())});
    case GenApi::Boolean:
        return nValue != 0 ? tr(" (True)") : tr(" (False)");
    default:
        return {};
    }
}

QString CCustomPropertyGridProperty_Integer::GetInterfaceSpecificDescription()
{
    const int64_t nValue = Value()->GetValue();
    return Fill("<tr><td width=\"30%\">Value</td><td width=\"70%\">%1%2</td></tr>",
                {QString::number(nValue), ValueSuffix(nValue).toHtmlEscaped()}) +
           IntegerRows(*Value());
}

QString CCustomPropertyGridProperty_Integer::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::Integer, IsNodeWritable());
}

} // namespace KxApi
