// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Command_qt.h"

#include "nodemap/SampleCode_qt.h"

#include <QPushButton>

namespace KxApi
{

void CCustomPropertyGridProperty_Command::MakeEditor()
{
    m_pButton = new QPushButton(tr("Execute"), this);
    m_pButton->setMinimumHeight(20);
    m_pButton->setAutoDefault(false); // Return elsewhere in the dialog must not press it
    AddEditor(*m_pButton);
}

void CCustomPropertyGridProperty_Command::ConnectEditor()
{
    ConnectTo(m_pButton, &QPushButton::released, [this] { OnClick(); });
}

void CCustomPropertyGridProperty_Command::ApplyDisplayRule(GenApi::EAccessMode eMode)
{
    const bool bAvailable = GenApi::IsAvailable(eMode);
    if (bAvailable == m_bAvailable)
        return;
    m_bAvailable = bAvailable;
    Label().setText(tr("Not Available"));
    Label().setHidden(bAvailable);
    m_pButton->setEnabled(bAvailable);
    m_pButton->setHidden(!bAvailable);
}

void CCustomPropertyGridProperty_Command::OnClick()
{
    Dropping([this] {
        if (IsNodeWritable())
            Value()->Execute(true);
    });
}

QString CCustomPropertyGridProperty_Command::GetInterfaceSpecificDescriptionSampleCode()
{
    return SampleCode(ESampleCode::Command, IsNodeWritable());
}

} // namespace KxApi
