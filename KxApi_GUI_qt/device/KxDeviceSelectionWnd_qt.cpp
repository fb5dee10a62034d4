// SPDX-License-Identifier: Apache-2.0
#include "device/KxDeviceSelectionWnd_qt.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxApi_TL/IKxSystem.h>

namespace KxApi
{

const CWndInfo<CKxDeviceSelectionWnd> CKxDeviceSelectionWnd::m_objWndInfo;

CKxDeviceSelectionWnd::CKxDeviceSelectionWnd()
    : CKxBaseWnd(KxXMLResource_DeviceSelection, "GUIPort", GenApi::RW, "Device Selection", 1)
{
    // The bar is for texts of the application's, and for what is wrong with producers.
    SetVisibleStatusBar(false);
}

void CKxDeviceSelectionWnd::RegisterTargetIKxSystem(IKxSystem* pSystem)
{
    if (!pSystem)
        throw INVALID_ARGUMENT_EXCEPTION("pSystem must not be null.");
    GenICam::GuardBadAlloc([&] {
        const GenApi::AutoLock lock(m_objLock);
        m_vecSystems.push_back(pSystem);
    });
}

void CKxDeviceSelectionWnd::RegisterTargetIKxSystemList(CIKxSystemPtrArray& systems)
{
    const size_t nSystems = systems.GetSize();
    for (size_t nIndex = 0; nIndex < nSystems; ++nIndex)
        RegisterTargetIKxSystem(systems[nIndex]);
}

void CKxDeviceSelectionWnd::GetSelectedDeviceInfo(IKxInterface** ppInterface,
                                                  const IKxDeviceInfo** ppDeviceInfo)
{
    const GenApi::AutoLock lock(m_objLock);
    if (ppInterface)
        *ppInterface = m_pSelectedInterface;
    if (ppDeviceInfo)
        *ppDeviceInfo = m_pSelectedDeviceInfo;
}

void CKxDeviceSelectionWnd::GetStatusBarText(QStringList& listText)
{
    CKxBaseWnd::GetStatusBarText(listText);
    if (listText.first().isEmpty())
        listText.first() = QString::fromUtf8(GetKxProducersText().c_str());
}

void CKxDeviceSelectionWnd::GetSystems(std::vector<IKxSystem*>& vecSystems)
{
    GenICam::GuardBadAlloc([&] {
        const GenApi::AutoLock lock(m_objLock);
        vecSystems.insert(vecSystems.end(), m_vecSystems.begin(), m_vecSystems.end());
    });
}

void CKxDeviceSelectionWnd::SetSelectedDeviceInfo(IKxInterface* pInterface, const IKxDeviceInfo* pDeviceInfo)
{
    const GenApi::AutoLock lock(m_objLock);
    m_pSelectedInterface = pInterface;
    m_pSelectedDeviceInfo = pDeviceInfo;
}

} // namespace KxApi
