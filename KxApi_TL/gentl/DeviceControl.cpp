// SPDX-License-Identifier: Apache-2.0

#include "DeviceControl.h"

#include <GenApi/ICommand.h>
#include <GenApi/IInteger.h>
#include <GenApi/INode.h>
#include <GenApi/INodeMap.h>

#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

void Execute(const GenApi::INodeMap& map, const char* szCommand)
{
    if (auto* const pCommand = dynamic_cast<GenApi::ICommand*>(map.GetNode(szCommand)))
        pCommand->Execute();
}

} // namespace

void CDeviceControl::SetLock(int nValue)
{
    // The second name is that of older descriptions.
    for (const char* const szName : {"TLParamsLocked", "TLParamsLock"}) {
        auto* const pLock = dynamic_cast<GenApi::IInteger*>(m_map.GetNode(szName));
        if (pLock && GenApi::IsWritable(pLock->GetAccessMode())) {
            pLock->SetValue(nValue);
            return;
        }
    }
}

void CDeviceControl::Lock()
{
    m_isLocked = true;
    SetLock(1);
}

void CDeviceControl::Start()
{
    m_isStarted = true; // even if it fails half-way
    Execute(m_map, "AcquisitionStart");
}

void CDeviceControl::Stop()
{
    if (std::exchange(m_isStarted, false))
        Execute(m_map, "AcquisitionStop");
}

void CDeviceControl::Unlock()
{
    if (std::exchange(m_isLocked, false))
        SetLock(0);
}

} // namespace Detail
} // namespace KxApi
