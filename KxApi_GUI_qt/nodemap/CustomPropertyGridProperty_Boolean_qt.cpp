// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Boolean_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

#include <QComboBox>

namespace KxApi
{

void CCustomPropertyGridProperty_Boolean::MakeEditor()
{
    m_pComboBox = new QComboBox(this);
    m_pComboBox->addItems({tr("False"), tr("True")});
    AddEditor(*m_pComboBox);
}

void CCustomPropertyGridProperty_Boolean::ConnectEditor()
{
    ConnectTo(m_pComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged),
              [this](int nIndex) { OnCurrentIndexChanged(nIndex); });
}

void CCustomPropertyGridProperty_Boolean::ShowValue(GenApi::EAccessMode eMode)
{
    if (!GenApi::IsAvailable(eMode))
        return;
    const QSignalBlocker block(m_pComboBox);
    const bool bValue = Value()->GetValue(false, false);
    if (GenApi::IsWritable(eMode))
        m_pComboBox->setCurrentIndex(bValue ? 1 : 0);
    else
        Label().setText(bValue ? tr("True") : tr("False"));
}

void CCustomPropertyGridProperty_Boolean::OnCurrentIndexChanged(int nIndex)
{
    Dropping([&] {
        if (IsNodeWritable())
            Value()->SetValue(nIndex != 0, true);
    });
}

QString CCustomPropertyGridProperty_Boolean::GetInterfaceSpecificDescription()
{
    return Fill("<tr><td width=\"30%\">Value</td><td width=\"70%\">%1</td></tr>",
                {Value()->GetValue() ? tr("True") : tr("False")});
}

QString CCustomPropertyGridProperty_Boolean::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::Boolean, IsNodeWritable());
}

} // namespace KxApi
