// SPDX-License-Identifier: Apache-2.0
// The device selection window.
#pragma once

#include "device/DisplayDeviceSelectionPartDlg_qt.h"
#include "device/ICDisplayDeviceSelectionDlgParent.h"
#include "frame/KxBaseWnd_qt.h"
#include "frame/WndInfo_qt.h"

#include <vector>

namespace KxApi
{

class CKxDeviceSelectionWnd final
    : public CKxBaseWnd<IKxDeviceSelectionWndInside, ICDisplayDeviceSelectionDlgParent,
                        CDisplayDeviceSelectionPartDlg>
{
public:
    static constexpr _EKxWindowType_t kWndType = KxWindowType_DeviceSelection;
    static constexpr const char* kWndName = "Device Selection";

    /// Raises BadAllocException.
    CKxDeviceSelectionWnd();

    const IKxWndInfo* GetIKxWndInfo() const override { return &m_objWndInfo; }

    void RegisterTargetIKxSystem(IKxSystem* pSystem) override;
    void RegisterTargetIKxSystemList(CIKxSystemPtrArray& systems) override;
    void GetSelectedDeviceInfo(IKxInterface** ppInterface, const IKxDeviceInfo** ppDeviceInfo) override;

    /// The application's text; without one, which producers can't be used.
    void GetStatusBarText(QStringList& listText) override;

    void GetSystems(std::vector<IKxSystem*>& vecSystems) override;
    void SetSelectedDeviceInfo(IKxInterface* pInterface, const IKxDeviceInfo* pDeviceInfo) override;

private:
    void OnUpdateDialog(CDisplayDeviceSelectionPartDlg&, uint32_t) override {}

    static const CWndInfo<CKxDeviceSelectionWnd> m_objWndInfo;

    // A leaf.
    GenApi::CLock m_objLock;
    IKxInterface* m_pSelectedInterface KXGC_GUARDED_BY(m_objLock) = nullptr;
    const IKxDeviceInfo* m_pSelectedDeviceInfo KXGC_GUARDED_BY(m_objLock) = nullptr;
    std::vector<IKxSystem*> m_vecSystems KXGC_GUARDED_BY(m_objLock); // not owned
};

} // namespace KxApi
