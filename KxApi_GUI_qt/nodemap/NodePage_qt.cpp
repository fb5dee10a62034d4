// SPDX-License-Identifier: Apache-2.0
#include "nodemap/NodePage_qt.h"

#include "nodemap/CustomPropertyGridProperty_Base_qt.h"
#include "nodemap/ICDisplayNodeMapDlgParent.h"

#include <QTextEdit>

namespace KxApi
{
namespace
{

struct CWord
{
    int nNumber;
    const char* szWord;
};

constexpr CWord kNameSpaces[] = {{GenApi::Custom, "Custom"},
                                 {GenApi::Standard, "Standard"},
                                 {GenApi::_UndefinedNameSpace, "Object is not yet initialized"}};
constexpr CWord kAccessModes[] = {
    {GenApi::NI, "<i>Not implemented</i>"},
    {GenApi::NA, "<i>Not available</i>"},
    {GenApi::WO, "Write Only"},
    {GenApi::RO, "Read Only"},
    {GenApi::RW, "Read and Write"},
    {GenApi::_UndefinedAccesMode, "Object is not yet initialized"},
    {GenApi::_CycleDetectAccesMode, "used internally for AccessMode cycle detection"}};
constexpr CWord kYesNo[] = {
    {GenApi::No, "No"}, {GenApi::Yes, "Yes"}, {GenApi::_UndefinedYesNo, "Object is not yet initialized"}};
constexpr CWord kVisibilities[] = {{GenApi::Beginner, "Beginner"},
                                   {GenApi::Expert, "Expert"},
                                   {GenApi::Guru, "Guru"},
                                   {GenApi::Invisible, "Invisible"},
                                   {GenApi::_UndefinedVisibility, "Object is not yet initialized"}};
constexpr CWord kCachingModes[] = {{GenApi::NoCache, "Does not use cache"},
                                   {GenApi::WriteThrough, "Write to cache and register"},
                                   {GenApi::WriteAround, "Write to register, write to cache on read"},
                                   {GenApi::_UndefinedCachingMode, "Not yet initialized"}};
constexpr CWord kRepresentations[] = {
    {GenApi::Linear, "Linear"},         {GenApi::Logarithmic, "Logarithmic"},
    {GenApi::Boolean, "Boolean"},       {GenApi::PureNumber, "PureNumber"},
    {GenApi::HexNumber, "HexNumber"},   {GenApi::IPV4Address, "IPV4Address"},
    {GenApi::MACAddress, "MACAddress"},
};

template <size_t N>
QString Word(const CWord (&words)[N], int nNumber)
{
    for (const CWord& word : words) {
        if (word.nNumber == nNumber)
            return word.szWord;
    }
    return {};
}

QString Table(const char* szTitleRow, const QString& strRows)
{
    return "<br /><table width=\"100%\" border=\"1\" cellpadding=\"2\" cellspacing=\"0\" "
           "style=\"border-style:solid; border-color:#333333;\">" +
           QString(szTitleRow) + strRows + "</table>";
}

QString PollingRow(int64_t nPollingTime)
{
    if (nPollingTime < 0)
        return {};
    return Fill("<tr><td>Polling Time</td><td>%1[ms]</td></tr>", {QString::number(nPollingTime)});
}

} // namespace

QString Fill(const char* szTemplate, std::initializer_list<QString> texts)
{
    const QString strTemplate = szTemplate;
    QString strFilled;
    int nFrom = 0;
    for (;;) {
        const int nMark = strTemplate.indexOf('%', nFrom);
        if (nMark < 0)
            break;
        int nEnd = nMark + 1;
        while (nEnd < strTemplate.size() && strTemplate[nEnd].isDigit())
            ++nEnd;
        const size_t nNumber = strTemplate.midRef(nMark + 1, nEnd - nMark - 1).toUInt();
        strFilled += strTemplate.midRef(nFrom, nMark - nFrom);
        if (nNumber >= 1 && nNumber <= texts.size())
            strFilled += texts.begin()[nNumber - 1];
        else
            strFilled += strTemplate.midRef(nMark, nEnd - nMark); // a percentage
        nFrom = nEnd;
    }
    return strFilled + strTemplate.mid(nFrom);
}

QString WordOf(GenApi::ERepresentation eRepresentation) { return Word(kRepresentations, eRepresentation); }

QString InterfaceWord(GenApi::INode& node) { return ToQString(GenApi::GetInterfaceName(&node)); }

QString UnitRow(const GenICam::gcstring& strUnit)
{
    if (strUnit.empty())
        return {};
    return Fill("<tr><td>Unit</td><td>%1</td></tr>", {HtmlOf(strUnit)});
}

QString IntegerRows(GenApi::IInteger& integer)
{
    return Fill("<tr><td>Minimum</td><td>%1</td></tr><tr><td>Maximum</td><td>%2</td></tr><tr><td>Increment"
                "</td><td>%3</td></tr>%4<tr><td>Representation</td><td>%5</td></tr>",
                {QString::number(integer.GetMin()), QString::number(integer.GetMax()),
                 QString::number(integer.GetInc()), UnitRow(integer.GetUnit()),
                 WordOf(integer.GetRepresentation())});
}

QString BasicTable(GenApi::INode& node)
{
    return Table(
        "<tr><td colspan=\"2\" style=\"background-color:#333333;color:#ffffff;font-weight:bold;\">Basic "
        "Information</td></tr>",
        Fill("<tr><td width=\"30%\">Tooltip</td><td width=\"70%\">%1</td></tr><tr><td>Description</td>"
             "<td>%2</td></tr><tr><td>Name</td><td>%3</td></tr><tr><td>Name Space</td><td>%4</td></tr>"
             "<tr><td>Interface Type</td><td>%5</td></tr><tr><td>Access Mode</td><td>%6</td></tr><tr>"
             "<td>Is Access Mode Cacheable</td><td>%7</td></tr><tr><td>Visibility</td><td>%8</td></tr>"
             "<tr><td>Caching Mode</td><td>%9</td></tr>%10<tr><td>Is Streamable</td><td>%11</td></tr>",
             {HtmlOf(node.GetToolTip()), HtmlOf(node.GetDescription()), HtmlOf(node.GetName()),
              Word(kNameSpaces, node.GetNameSpace()), InterfaceWord(node),
              Word(kAccessModes, node.GetAccessMode()), Word(kYesNo, node.IsAccessModeCacheable()),
              Word(kVisibilities, node.GetVisibility()), Word(kCachingModes, node.GetCachingMode()),
              PollingRow(node.GetPollingTime()), node.IsStreamable() ? "Yes" : "No"}));
}

QString ValueTable(const QString& strRows)
{
    return Table(
        "<tr><td colspan=\"2\" style=\"background-color:#333333;color:#ffffff;font-weight:bold;\">Value "
        "Information</td></tr>",
        strRows);
}

QString SampleCodeTable(const QString& strCode)
{
    return Table("<tr><td style=\"background-color:#333333;color:#ffffff;font-weight:bold;\">C++ Sample "
                 "Code</td></tr>",
                 "<tr><td style=\"white-space: pre-wrap;\">" + strCode + "</td></tr>");
}

void CCustomPropertyGridProperty_Base::UpdateDescription(QTextEdit* pEdit)
{
    GenApi::INode& node = *m_pNode;
    pEdit->insertHtml(
        Fill("<h1>%1%2</h1>", {HtmlOf(node.GetDisplayName()), node.IsDeprecated() ? " (Depricated)" : ""}));
    pEdit->insertHtml(BasicTable(node));
    const QString strRows = GetInterfaceSpecificDescription();
    if (!strRows.isEmpty())
        pEdit->insertHtml(ValueTable(strRows));
    if (!m_pWnd || !m_pWnd->GetVisibleDescriptionSampleCode())
        return;
    QString strSelectors;
    AddSelectorDescription(strSelectors, &node, true);
    if (!strSelectors.isEmpty())
        strSelectors = "<pre style=\"white-space:pre-wrap;\">" + strSelectors + "</pre>";
    pEdit->insertHtml(SampleCodeTable(strSelectors + GetDescription_GetNodeAndCheckAccess() +
                                      GetInterfaceSpecificDescriptionSampleCode()));
}

} // namespace KxApi
