// SPDX-License-Identifier: Apache-2.0
#include "device/GevFeatures_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxPort.h>

#include <arpa/inet.h>

namespace KxApi
{

CGevFaults FindFaults(const CGevAddresses& host, const CGevAddresses& device)
{
    CGevFaults faults;
    faults.bMask = host.nMask != device.nMask;
    faults.bGateway = device.nGateway != 0 && ((device.nIP ^ device.nGateway) & device.nMask) != 0;
    faults.bSameIP = host.nIP == device.nIP;
    faults.bSubnet = (host.nIP & host.nMask) != (device.nIP & device.nMask);
    return faults;
}

uint32_t ParseAddress(const QString& strText) { return ntohl(inet_addr(strText.toUtf8().constData())); }

GenApi::INodeMap& GetNodeMap(IKxInterface* pInterface)
{
    IKxPort* const pPort = pInterface ? pInterface->GetIKxPort() : nullptr;
    GenApi::INodeMap* const pMap = pPort ? pPort->GetINodeMap() : nullptr;
    if (!pMap)
        throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
    return *pMap;
}

CGevAddressFeatures CGevAddressFeatures::OfInterface(GenApi::INodeMap& map)
{
    return {map.GetNode("GevInterfaceSubnetIPAddress"), map.GetNode("GevInterfaceSubnetMask"),
            map.GetNode("GevInterfaceGateway")};
}

CGevAddressFeatures CGevAddressFeatures::OfDevice(GenApi::INodeMap& map)
{
    return {map.GetNode("GevDeviceIPAddress"), map.GetNode("GevDeviceSubnetMask"),
            map.GetNode("GevDeviceGateway")};
}

CGevAddresses CGevAddressFeatures::Read() const
{
    const auto read = [](const GenApi::CIntegerPtr& pFeature) {
        return static_cast<uint32_t>(pFeature->GetValue());
    };
    return {read(pIP), read(pMask), read(pGateway)};
}

} // namespace KxApi
