// SPDX-License-Identifier: Apache-2.0
#include "nodemap/CustomPropertyGridProperty_Enumeration_qt.h"

#include "nodemap/NodePage_qt.h"
#include "nodemap/SampleCode_qt.h"

#include <QComboBox>
#include <QSet>

namespace KxApi
{
namespace
{

QString DisplayNameOf(GenApi::CEnumEntryPtr& pEntry)
{
    return ToQString(pEntry->GetNode()->GetDisplayName());
}

} // namespace

void CCustomPropertyGridProperty_Enumeration::MakeEditor()
{
    m_pComboBox = new QComboBox(this);
    m_pComboBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    AddEditor(*m_pComboBox, 1);
}

void CCustomPropertyGridProperty_Enumeration::ConnectEditor()
{
    ConnectTo(m_pComboBox, QOverload<int>::of(&QComboBox::currentIndexChanged),
              [this](int nIndex) { OnCurrentIndexChanged(m_pComboBox->itemText(nIndex)); });
}

bool CCustomPropertyGridProperty_Enumeration::SetVisibility(GenApi::EVisibility eVisibility, bool bForce,
                                                            bool bAdjustSize)
{
    const bool bVisible = CPropertyOf::SetVisibility(eVisibility, bForce, bAdjustSize);
    TellChanged();
    return bVisible;
}

GenApi::CEnumEntryPtr CCustomPropertyGridProperty_Enumeration::CurrentEntry()
{
    return GenApi::CEnumEntryPtr(Value()->GetCurrentEntry(false, false));
}

bool CCustomPropertyGridProperty_Enumeration::IsSelfClearing()
{
    if (IsUpdateRequested())
        Dropping([this] { m_bSelfClearing = CurrentEntry()->IsSelfClearing(); });
    return m_bSelfClearing;
}

void CCustomPropertyGridProperty_Enumeration::ShowValue(GenApi::EAccessMode eMode)
{
    if (!GenApi::IsAvailable(eMode))
        return;
    GenApi::CEnumEntryPtr pCurrent = CurrentEntry();
    m_bSelfClearing = pCurrent->IsSelfClearing();
    if (GenApi::IsWritable(eMode))
        FillComboBox(DisplayNameOf(pCurrent));
    else
        Label().setText(DisplayNameOf(pCurrent));
}

QStringList CCustomPropertyGridProperty_Enumeration::AvailableEntries()
{
    GenApi::NodeList_t entries;
    Value()->GetEntries(entries);
    QStringList listNames;
    QSet<QString> setNames;
    for (GenApi::INode* const pNode : entries) {
        GenApi::CEnumEntryPtr pEntry(pNode);
        if (!pEntry || !GenApi::IsAvailable(pNode))
            continue;
        const QString strName = DisplayNameOf(pEntry);
        if (setNames.contains(strName))
            continue;
        setNames.insert(strName);
        listNames.append(strName);
    }
    return listNames;
}

void CCustomPropertyGridProperty_Enumeration::FillComboBox(const QString& strCurrent)
{
    // On purpose no blocker: while the entries can't be read, a choice among the old ones writes nothing.
    m_pComboBox->blockSignals(true);
    const QStringList listNames = AvailableEntries();
    if (listNames != m_listShown) {
        m_pComboBox->clear();
        m_pComboBox->addItems(listNames);
        m_listShown = listNames;
    }
    m_pComboBox->setCurrentIndex(listNames.indexOf(strCurrent));
    m_pComboBox->blockSignals(false);
}

void CCustomPropertyGridProperty_Enumeration::OnCurrentIndexChanged(const QString& strText)
{
    if (!Value() || !IsNodeWritable())
        return;
    GenApi::NodeList_t entries;
    Value()->GetEntries(entries);
    for (GenApi::INode* const pNode : entries) {
        GenApi::CEnumEntryPtr pEntry(pNode);
        if (DisplayNameOf(pEntry) == strText) {
            Value()->SetIntValue(pEntry->GetValue(), true);
            return;
        }
    }
}

QString CCustomPropertyGridProperty_Enumeration::EntryRows(int64_t nValue)
{
    const bool bOnlyPresent = m_pNode->GetAccessMode() == GenApi::RO;
    GenApi::NodeList_t entries;
    Value()->GetEntries(entries);
    QString strRows;
    for (GenApi::INode* const pNode : entries) {
        GenApi::CEnumEntryPtr pEntry(pNode);
        if (GenApi::IsImplemented(pNode) && (!bOnlyPresent || pEntry->GetValue() == nValue))
            strRows += Fill(
                "<tr><td style=\"background-color:#dddddd; color:#000;\" colspan=\"2\">Display Name: "
                "%1</td></tr><tr><td width=\"30%\">ToolTip</td><td width=\"70%\">%2</td></tr><tr><td>"
                "Description</td><td>%3</td></tr><tr><td>Name</td><td>%4</td></tr><tr><td>Symbolic</td><td>"
                "%5</td></tr><tr><td>Value</td><td>%6</td></tr><tr><td>Numeric Value</td><td>%7</td></tr><tr>"
                "<td>Interface Type</td><td>%8</td></tr><tr><td colspan=\"2\" height=\"5px\"/></tr>",
                {HtmlOf(pNode->GetDisplayName()), HtmlOf(pNode->GetToolTip()),
                 HtmlOf(pNode->GetDescription()), HtmlOf(pNode->GetName()), HtmlOf(pEntry->GetSymbolic()),
                 QString::number(pEntry->GetValue()),
                 QString("%1").arg(pEntry->GetNumericValue(), 0, 'g', -1, ' '), InterfaceWord(*pNode)});
    }
    return strRows;
}

QString CCustomPropertyGridProperty_Enumeration::GetInterfaceSpecificDescription()
{
    const int64_t nValue = Value()->GetIntValue();
    QString strRows = EntryRows(nValue);
    if (!strRows.isEmpty())
        strRows =
            "<tr><td>Enumeration Entries</td><td><table border=\"1\" cellspacing=\"0\" cellpadding=\"1\" "
            "style=\"border-style:solid; border-color:#dddddd;\">>" +
            strRows + "</table></td></tr>";
    return Fill("<tr><td width=\"30%\">Int Value</td><td width=\"70%\">%1</td></tr>%2",
                {QString::number(nValue), strRows});
}

QString CCustomPropertyGridProperty_Enumeration::GetInterfaceSpecificDescriptionSampleCode()
{
    const bool bWritable = IsNodeWritable();
    return SampleCode(ESampleCode::Enumeration, bWritable,
                      bWritable ? ToQString(CurrentEntry()->GetSymbolic()) : QString());
}

} // namespace KxApi
