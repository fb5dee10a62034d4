// SPDX-License-Identifier: Apache-2.0
// The node-map window.
#pragma once

#include "frame/KxBaseWnd_qt.h"
#include "frame/WndInfo_qt.h"
#include "nodemap/DisplayNodeMapPartDlg_qt.h"
#include "nodemap/ICDisplayNodeMapDlgParent.h"

#include <atomic>
#include <memory>
#include <vector>

namespace KxApi
{

/// Keeps the registered nodes and the settings of the view.
class CKxDisplayNodeMapWnd final
    : public CKxBaseWnd<IKxNodeMapDisplayWndInside, ICDisplayNodeMapDlgParent, CDisplayNodeMapPartDlg>
{
public:
    static constexpr _EKxWindowType_t kWndType = KxWindowType_NodeMapDisplay;
    static constexpr const char* kWndName = "Node map display";

    /// Raises BadAllocException.
    CKxDisplayNodeMapWnd();
    ~CKxDisplayNodeMapWnd() override { DestroyNodeMap(); }

    static const char* SourceFile() noexcept { return KXGC_SOURCE_FILE; }

    const IKxWndInfo* GetIKxWndInfo() const override { return &m_objWndInfo; }

    void* RegisterINode(GenApi::INode* pNode, const GenICam::gcstring& strName) override;
    void DeregisterINode(void* hRegistered) override;
    uint64_t GetRegisteredAndUnregisteredNodeCount() const override
    {
        return m_nRegisteredAndUnregisteredNodeCount;
    }
    void GetNodeInfo(std::vector<CNodeInfo*>& vecNodes) override;
    std::vector<CNodeInfo> CopyNodeInfo() override;
    IKxNodeMapDisplayWndInside* GetIKxNodeMapDisplayWndInside() override { return this; }

    bool GetAlphabeticMode() const override { return m_bAlphabeticMode; }
    void SetAlphabeticMode(bool bAlphabetic) override { m_bAlphabeticMode.Set(bAlphabetic); }
    GenApi::EVisibility GetVisibility() const override { return m_eVisibility; }
    void SetVisibility(GenApi::EVisibility eVisibility) override { m_eVisibility.Set(eVisibility); }
    void Expand() override { m_nExpand.Set(1); }
    void Collapse() override { m_nCollapse.Set(1); }
    void Refresh() override { m_nRefresh.Set(1); }
    bool GetEnablePolling() const override { return m_bEnablePolling; }
    void SetEnablePolling(bool bEnable) override { m_bEnablePolling.Set(bEnable); }

    bool GetVisibleAlphabeticMode() const override { return m_bVisibleAlphabeticMode; }
    void SetVisibleAlphabeticMode(bool bVisible) override { m_bVisibleAlphabeticMode.Set(bVisible); }
    bool GetVisibleExpand() const override { return m_bVisibleExpand; }
    void SetVisibleExpand(bool bVisible) override { m_bVisibleExpand.Set(bVisible); }
    bool GetVisibleCollapse() const override { return m_bVisibleCollapse; }
    void SetVisibleCollapse(bool bVisible) override { m_bVisibleCollapse.Set(bVisible); }
    bool GetVisibleRefresh() const override { return m_bVisibleRefresh; }
    void SetVisibleRefresh(bool bVisible) override { m_bVisibleRefresh.Set(bVisible); }
    bool GetVisiblePolling() const override { return m_bVisiblePolling; }
    void SetVisiblePolling(bool bVisible) override { m_bVisiblePolling.Set(bVisible); }
    bool GetVisibleVisibility() const override { return m_bVisibleVisibility; }
    void SetVisibleVisibility(bool bVisible) override { m_bVisibleVisibility.Set(bVisible); }
    bool GetVisibleDescription() const override { return m_bVisibleDescription; }
    void SetVisibleDescription(bool bVisible) override { m_bVisibleDescription.Set(bVisible); }
    bool GetVisibleDescriptionSampleCode() const override { return m_bVisibleDescriptionSampleCode; }
    void SetVisibleDescriptionSampleCode(bool b) override { m_bVisibleDescriptionSampleCode.Set(b); }
    bool GetVisibleFilter() const override { return m_bVisibleFilter; }
    void SetVisibleFilter(bool bVisible) override { m_bVisibleFilter.Set(bVisible); }

    GenICam::gcstring GetFilterText() const override { return m_strFilterText.GetText(); }
    void SetFilterText(const GenICam::gcstring& strText) override { m_strFilterText.Set(strText); }
    bool GetEnableFilter() const override { return m_bEnableFilter; }
    void SetEnableFilter(bool bEnable) override { m_bEnableFilter.Set(bEnable); }
    bool GetEnableRegularExpression() const override { return m_bEnableRegularExpression; }
    void SetEnableRegularExpression(bool b) override { m_bEnableRegularExpression.Set(b); }

private:
    using MethodW = void (CKxDisplayNodeMapWnd::*)();
    template <class T>
    using Numeric = CRegisterParamNumeric<CKxDisplayNodeMapWnd, MethodW, T>;
    using Text = CRegisterParamText<CKxDisplayNodeMapWnd, MethodW>;

    enum ENodeMapUpdate : uint32_t
    {
        UpdateAlphabetic = UpdateFirstOfWindow << 0,
        UpdateLevel = UpdateFirstOfWindow << 1,
        UpdateFolding = UpdateFirstOfWindow << 2,
        UpdateValues = UpdateFirstOfWindow << 3,
        UpdatePolling = UpdateFirstOfWindow << 4,
        UpdateFilterEnable = UpdateFirstOfWindow << 5,
        UpdateRegex = UpdateFirstOfWindow << 6,
        UpdateFilterText = UpdateFirstOfWindow << 7,
        UpdateToolAlphabetic = UpdateFirstOfWindow << 8,
        UpdateToolExpand = UpdateFirstOfWindow << 9,
        UpdateToolCollapse = UpdateFirstOfWindow << 10,
        UpdateToolRefresh = UpdateFirstOfWindow << 11,
        UpdateToolPolling = UpdateFirstOfWindow << 12,
        UpdateToolLevel = UpdateFirstOfWindow << 13,
        UpdateToolDescription = UpdateFirstOfWindow << 14,
        UpdateToolFilter = UpdateFirstOfWindow << 15,
    };
    void OnUpdateDialog(CDisplayNodeMapPartDlg& dialog, uint32_t nKinds) override;
    void ShowTools(CDisplayNodeMapPartDlg& dialog, uint32_t nKinds);
    void OnExpand() { Fold(m_nExpand, true); }
    void OnCollapse() { Fold(m_nCollapse, false); }
    void OnRefresh();
    void Fold(uint32_t nCommand, bool bExpanded);

    static const CWndInfo<CKxDisplayNodeMapWnd> m_objWndInfo;

    // A leaf.
    GenApi::CLock m_lockNodes;
    std::vector<std::unique_ptr<CNodeInfo>> m_vecNodes KXGC_GUARDED_BY(m_lockNodes);
    std::atomic<uint64_t> m_nRegisteredAndUnregisteredNodeCount{0};
    std::atomic<bool> m_bWantExpanded{true}; // what UpdateFolding brings to the dialog

    static constexpr uint32_t kAlways = KxRegister_AlwaysTold;
    static constexpr int64_t kMaxFilterText = 1024;

    // clang-format off
    // Address, node and what shows a change; first value; range, method.
    Numeric<bool> m_bAlphabeticMode{this, {0x1000, "AlphabeticModeReg", UpdateAlphabetic}, false};
    Numeric<GenApi::EVisibility> m_eVisibility{this, {0x1004, "VisibilityReg", UpdateLevel}, GenApi::Guru, UpTo("eV", GenApi::Guru)};
    Numeric<uint32_t> m_nExpand{this, {0x1008, nullptr, 0, kAlways, GenApi::WO}, 0, {}, &CKxDisplayNodeMapWnd::OnExpand};
    Numeric<uint32_t> m_nCollapse{this, {0x100C, nullptr, 0, kAlways, GenApi::WO}, 0, {}, &CKxDisplayNodeMapWnd::OnCollapse};
    Numeric<uint32_t> m_nRefresh{this, {0x1010, nullptr, 0, kAlways, GenApi::WO}, 0, {}, &CKxDisplayNodeMapWnd::OnRefresh};
    Numeric<bool> m_bEnablePolling{this, {0x1020, "EnablePollingReg", UpdatePolling}, false};
    Numeric<bool> m_bVisibleAlphabeticMode{this, {0x1030, "VisibleAlphabeticModeReg", UpdateToolAlphabetic}, true};
    Numeric<bool> m_bVisibleExpand{this, {0x1034, "VisibleExpandReg", UpdateToolExpand}, true};
    Numeric<bool> m_bVisibleCollapse{this, {0x1038, "VisibleCollapseReg", UpdateToolCollapse}, true};
    Numeric<bool> m_bVisibleRefresh{this, {0x1040, "VisibleRefreshReg", UpdateToolRefresh}, true};
    Numeric<bool> m_bVisiblePolling{this, {0x1044, "VisiblePollingReg", UpdateToolPolling}, true};
    Numeric<bool> m_bVisibleVisibility{this, {0x1048, "VisibleVisibilityReg", UpdateToolLevel}, true};
    Numeric<bool> m_bVisibleDescription{this, {0x104C, "VisibleDescriptionReg", UpdateToolDescription}, true};
    Numeric<bool> m_bVisibleDescriptionSampleCode{this, {0x1050, "VisibleDescriptionSampleCodeReg", UpdateToolDescription}, true};
    Numeric<bool> m_bVisibleFilter{this, {0x1070, "VisibleFilterReg", UpdateToolFilter}, false};
    Numeric<bool> m_bEnableFilter{this, {0x1074, "EnableFilterReg", UpdateFilterEnable}, false};
    Numeric<bool> m_bEnableRegularExpression{this, {0x1078, "EnableRegularExpressionFilterReg", UpdateRegex}, false};
    Text m_strFilterText{this, {0x1100, "FilterText", UpdateFilterText}, kMaxFilterText};
    // clang-format on
};

} // namespace KxApi
