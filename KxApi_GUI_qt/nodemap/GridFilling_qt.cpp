// SPDX-License-Identifier: Apache-2.0
#include "nodemap/GridFilling_qt.h"

#include "frame/utility_qt.h"

#include <utility>

namespace KxApi
{

void CGridFilling::Start(std::vector<CNodeInfo> vecNodes)
{
    Stop();
    m_vecEntries = std::move(vecNodes);
}

void CGridFilling::Stop()
{
    m_vecEntries.clear();
    m_nEntry = 0;
    m_vecLevels.clear();
}

void CGridFilling::Push(const GenApi::ICategory& category, QTreeWidgetItem* pParent)
{
    CLevel level{pParent, {}, 0};
    category.GetFeatures(level.features);
    m_vecLevels.push_back(std::move(level));
}

CGridFilling::CNext CGridFilling::TakeNode()
{
    CLevel& level = m_vecLevels.back();
    GenApi::IValue* const pFeature = level.features[level.nNext++];
    return {pFeature ? pFeature->GetNode() : nullptr, level.pParent};
}

void CGridFilling::DropFinished()
{
    while (!m_vecLevels.empty() && m_vecLevels.back().nNext == m_vecLevels.back().features.size())
        m_vecLevels.pop_back();
}

bool HasRow(GenApi::INode* pNode)
{
    if (!pNode)
        return false;
    try {
        return pNode->GetAccessMode() != GenApi::NI;
    } catch (const GenICam::GenericException&) {
        return true;
    }
}

QString RowText(GenApi::INode& node, const char* szName)
{
    QString strText = szName ? QString::fromUtf8(szName) : ToQString(node.GetDisplayName());
    GenICam::gcstring strUnit;
    if (node.GetPrincipalInterfaceType() == GenApi::intfIInteger)
        strUnit = GenApi::CIntegerPtr(&node)->GetUnit();
    else if (node.GetPrincipalInterfaceType() == GenApi::intfIFloat)
        strUnit = GenApi::CFloatPtr(&node)->GetUnit();
    if (!strUnit.empty())
        strText += " (" + ToQString(strUnit) + ") ";

    GenApi::FeatureList_t selectors;
    GenApi::CSelectorPtr(&node)->GetSelectingFeatures(selectors);
    for (auto it = selectors.rbegin(); it != selectors.rend(); ++it)
        strText += "[" + ToQString((*it)->GetNode()->GetDisplayName()) + "]";
    return strText;
}

} // namespace KxApi
