// SPDX-License-Identifier: Apache-2.0
#include "nodemap/KxDisplayNodeMapWnd_qt.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>

#include <algorithm>

namespace KxApi
{

const CWndInfo<CKxDisplayNodeMapWnd> CKxDisplayNodeMapWnd::m_objWndInfo{};

CKxDisplayNodeMapWnd::CKxDisplayNodeMapWnd()
    : CKxBaseWnd(KxXMLResource_NodeMap, "GUIPort", GenApi::RW, "Node Map", 1)
{
    // The bar is there for texts of the application's.
    SetVisibleStatusBar(false);
}

void* CKxDisplayNodeMapWnd::RegisterINode(GenApi::INode* pNode, const GenICam::gcstring& strName)
{
    return GenICam::GuardBadAlloc([&] {
        auto pInfo = std::make_unique<CNodeInfo>(CNodeInfo{strName, pNode});
        CNodeInfo* const hRegistered = pInfo.get();
        const GenApi::AutoLock lock(m_lockNodes);
        m_vecNodes.push_back(std::move(pInfo));
        ++m_nRegisteredAndUnregisteredNodeCount;
        return hRegistered;
    });
}

void CKxDisplayNodeMapWnd::DeregisterINode(void* hRegistered)
{
    const GenApi::AutoLock lock(m_lockNodes);
    const auto found = std::find_if(m_vecNodes.begin(), m_vecNodes.end(),
                                    [&](const auto& pInfo) { return pInfo.get() == hRegistered; });
    if (found == m_vecNodes.end())
        throw INVALID_ARGUMENT_EXCEPTION("hRegistered is invalid.");
    m_vecNodes.erase(found);
    ++m_nRegisteredAndUnregisteredNodeCount;
}

void CKxDisplayNodeMapWnd::GetNodeInfo(std::vector<CNodeInfo*>& vecNodes)
{
    GenICam::GuardBadAlloc([&] {
        const GenApi::AutoLock lock(m_lockNodes);
        for (const auto& pInfo : m_vecNodes)
            vecNodes.push_back(pInfo.get());
    });
}

std::vector<CNodeInfo> CKxDisplayNodeMapWnd::CopyNodeInfo()
{
    return GenICam::GuardBadAlloc([&] {
        const GenApi::AutoLock lock(m_lockNodes); // which may be taken again
        std::vector<CNodeInfo*> vecInfos;
        GetNodeInfo(vecInfos);
        std::vector<CNodeInfo> vecNodes;
        vecNodes.reserve(vecInfos.size());
        for (const CNodeInfo* const pInfo : vecInfos)
            vecNodes.push_back(*pInfo);
        return vecNodes;
    });
}

void CKxDisplayNodeMapWnd::Fold(uint32_t nCommand, bool bExpanded)
{
    if (nCommand != 1)
        return;
    m_bWantExpanded = bExpanded;
    UpdateDialog(UpdateFolding);
}

void CKxDisplayNodeMapWnd::OnRefresh()
{
    if (m_nRefresh == 1)
        UpdateDialog(UpdateValues);
}

void CKxDisplayNodeMapWnd::OnUpdateDialog(CDisplayNodeMapPartDlg& dialog, uint32_t nKinds)
{
    if (nKinds & UpdateAlphabetic)
        emit dialog.doSetAlphabeticModeSignal(m_bAlphabeticMode);
    if (nKinds & UpdateLevel)
        emit dialog.doSetVisibilitySignal(m_eVisibility);
    if (nKinds & UpdatePolling)
        emit dialog.doSetEnablePollingSignal(m_bEnablePolling);
    if (nKinds & UpdateFilterEnable)
        emit dialog.doSetEnableFilterSignal(m_bEnableFilter);
    if (nKinds & UpdateRegex)
        emit dialog.doSetEnableRegularExpressionSignal(m_bEnableRegularExpression);
    if (nKinds & UpdateFilterText) {
        QString strText = ToQString(GetFilterText());
        emit dialog.doSetFilterTextSignal(strText);
    }
    ShowTools(dialog, nKinds);
    if (!dialog.isVisible())
        return;
    if (nKinds & UpdateValues)
        emit dialog.doRefreshSignal();
    if ((nKinds & UpdateFolding) && m_bWantExpanded)
        emit dialog.doExpandSignal();
    else if (nKinds & UpdateFolding)
        emit dialog.doCollapseSignal();
}

void CKxDisplayNodeMapWnd::ShowTools(CDisplayNodeMapPartDlg& dialog, uint32_t nKinds)
{
    using Dlg = CDisplayNodeMapPartDlg;
    const struct
    {
        uint32_t nKind;
        Dlg::ETool eTool;
        bool bVisible;
    } rows[] = {
        {UpdateToolAlphabetic, Dlg::ToolAlphabetic, m_bVisibleAlphabeticMode},
        {UpdateToolExpand, Dlg::ToolExpand, m_bVisibleExpand},
        {UpdateToolCollapse, Dlg::ToolCollapse, m_bVisibleCollapse},
        {UpdateToolRefresh, Dlg::ToolRefresh, m_bVisibleRefresh},
        {UpdateToolPolling, Dlg::ToolPolling, m_bVisiblePolling},
        {UpdateToolLevel, Dlg::ToolVisibility, m_bVisibleVisibility},
        {UpdateToolDescription, Dlg::ToolDescription, m_bVisibleDescription},
        {UpdateToolFilter, Dlg::ToolFilter, m_bVisibleFilter},
    };
    for (const auto& row : rows) {
        if (nKinds & row.nKind)
            emit dialog.setWidgetVisibleSignal(row.eTool, row.bVisible);
    }
}

} // namespace KxApi
