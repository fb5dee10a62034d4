// SPDX-License-Identifier: Apache-2.0
#include "device/DeviceInfoRows_qt.h"

#include "device/GevFeatures_qt.h"
#include "frame/utility_qt.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxSDKCommon/KxAssert.h>

#include <GenTL/GenTLEnums.h>

namespace KxApi
{
namespace
{

struct CAccessRow
{
    int32_t nStatus;
    const char* szText;
    Qt::GlobalColor eColor;
    bool bSelectable;
};

// clang-format off
constexpr CAccessRow kAccess[] = {
    {GenTL::DEVICE_ACCESS_STATUS_READWRITE,      "ReadWrite(Full access)",         Qt::black, true},
    {GenTL::DEVICE_ACCESS_STATUS_READONLY,       "ReadOnly(Read-only access)",     Qt::blue,  true},
    {GenTL::DEVICE_ACCESS_STATUS_NOACCESS,       "NoAccess(Non-available device)", Qt::red,   false},
    {GenTL::DEVICE_ACCESS_STATUS_BUSY,           "Busy",                           Qt::red,   false},
    {GenTL::DEVICE_ACCESS_STATUS_OPEN_READWRITE, "OpenReadWrite",                  Qt::red,   false},
    {GenTL::DEVICE_ACCESS_STATUS_OPEN_READONLY,  "OpenRead",                       Qt::red,   false},
};
// clang-format on

CAccessRow AccessOf(int32_t nStatus, const IKxSystem* pSystem)
{
    for (const CAccessRow& row : kAccess) {
        if (row.nStatus == nStatus)
            return row;
    }
    // Our own producers open what others might not.
    const bool bOwn = pSystem && pSystem->GetKxSystemVendor() == KxSystemVendor_Kestrix;
    return {nStatus, "Unknown(Unknown status)", bOwn ? Qt::black : Qt::red, bOwn};
}

void Append(CInfoRows& rows, const char* szName, const GenICam::gcstring& strValue,
            Qt::GlobalColor eColor = Qt::black)
{
    rows.push_back({QString::fromLatin1(szName), ToQString(strValue), eColor});
}

/// A node map that lacks features, or can't be read, leaves out what it would tell.
template <class Read>
void TryNodeMap(Read read)
{
    try {
        read();
    } catch (const GenICam::GenericException&) { // NOLINT(bugprone-empty-catch): see above
    }
}

void AppendMAC(CInfoRows& rows, GenApi::INodeMap& map, const char* szFeature)
{
    const GenApi::CIntegerPtr pMAC(map.GetNode(szFeature));
    if (GenApi::IsAvailable(pMAC))
        Append(rows, "MAC Address", pMAC->ToString());
}

struct CAddressColors
{
    Qt::GlobalColor eIP = Qt::black;
    Qt::GlobalColor eMask = Qt::black;
    Qt::GlobalColor eGateway = Qt::black;
};

/// All three or none.
void AppendAddresses(CInfoRows& rows, const CGevAddressFeatures& features, const CAddressColors& colors = {})
{
    CInfoRows addresses;
    Append(addresses, "IP Address", features.pIP->ToString(), colors.eIP);
    Append(addresses, "Subnet Mask", features.pMask->ToString(), colors.eMask);
    Append(addresses, "Gateway", features.pGateway->ToString(), colors.eGateway);
    rows.insert(rows.end(), addresses.begin(), addresses.end());
}

/// Red is what keeps a camera from being reached.
CAddressColors ColorsOf(GenApi::INodeMap& map, const CGevAddressFeatures& device)
{
    const CGevFaults faults = FindFaults(CGevAddressFeatures::OfInterface(map).Read(), device.Read());
    const auto color = [](bool bFault) { return bFault ? Qt::red : Qt::black; };
    return {color(faults.bMask || faults.bSameIP || faults.bSubnet), color(faults.bMask),
            color(faults.bGateway)};
}

/// Makes the map's features of a device those of this one; false when the map doesn't know it. A map's
/// devices are in the order of the interface's list, unless one of both was updated before the other.
bool SelectDevice(GenApi::INodeMap& map, uint32_t nIndex, const GenICam::gcstring& strID)
{
    const GenApi::CIntegerPtr pSelector(map.GetNode("DeviceSelector"));
    const GenApi::CStringPtr pID(map.GetNode("DeviceID"));
    const int64_t nMax = pSelector->GetMax();
    if (nIndex > nMax)
        return false;
    pSelector->SetValue(nIndex);
    if (!GenApi::IsReadable(pID) || pID->GetValue() == strID)
        return true;
    for (int64_t nOther = 0; nOther <= nMax; ++nOther) {
        pSelector->SetValue(nOther);
        if (pID->GetValue() == strID)
            return true;
    }
    // Then the map has names of its own for the devices.
    pSelector->SetValue(nIndex);
    return true;
}

/// The rows of a GigE Vision device that only the interface's node map has.
void AppendGev(CGevFacts& facts, IKxInterface& interface, uint32_t nIndex, const IKxDeviceInfo& info)
{
    GenApi::INodeMap& map = GetNodeMap(&interface);
    const GenApi::AutoLock lock(map.GetLock());
    if (!SelectDevice(map, nIndex, info.GetID()))
        return;
    const GenApi::CCommandPtr pForceIP(map.GetNode("GevDeviceForceIP"));
    facts.bForceIP = GenApi::IsAvailable(pForceIP);
    AppendMAC(facts.rows, map, "GevDeviceMACAddress");
    const CGevAddressFeatures device = CGevAddressFeatures::OfDevice(map);
    if (!device.AreThere())
        return;
    CAddressColors colors;
    if (info.GetAccessStatus() == GenTL::DEVICE_ACCESS_STATUS_NOACCESS)
        TryNodeMap([&] { colors = ColorsOf(map, device); });
    AppendAddresses(facts.rows, device, colors);
}

} // namespace

CInfoRows ViewSystem(IKxSystem& system)
{
    const IKxSystemInfo* const pIKxSystemInfo = system.GetIKxSystemInfo();
    KX_ASSERT(pIKxSystemInfo, "pIKxSystemInfo");
    CInfoRows rows;
    Append(rows, "Vendor", pIKxSystemInfo->GetVendor());
    Append(rows, "Model", pIKxSystemInfo->GetModel());
    Append(rows, "Version", pIKxSystemInfo->GetVersion());
    Append(rows, "TL Type", pIKxSystemInfo->GetTLType());
    Append(rows, "Name", pIKxSystemInfo->GetName());
    Append(rows, "Path Name", pIKxSystemInfo->GetPathName());
    Append(rows, "Display Name", pIKxSystemInfo->GetDisplayName());
    const auto number = [](int32_t nValue) { return ToGcstring(QString::asprintf("%d", nValue)); };
    Append(rows, "GenTL Version Major", number(pIKxSystemInfo->GetGenTLVersionMajor()));
    Append(rows, "GenTL Version Minor", number(pIKxSystemInfo->GetGenTLVersionMinor()));
    return rows;
}

CGevFacts AskInterface(IKxInterface& interface)
{
    CGevFacts facts;
    if (interface.GetIKxInterfaceInfo()->GetTLType() != "GEV")
        return facts;
    TryNodeMap([&] {
        GenApi::INodeMap& map = GetNodeMap(&interface);
        AppendMAC(facts.rows, map, "GevInterfaceMACAddress");
        const CGevAddressFeatures features = CGevAddressFeatures::OfInterface(map);
        if (features.AreAvailable())
            AppendAddresses(facts.rows, features);
    });
    return facts;
}

CGevFacts AskDevice(IKxInterface& interface, uint32_t nIndex)
{
    const IKxDeviceInfo* const pIKxDeviceInfo = interface.GetIKxDeviceInfo(nIndex);
    KX_ASSERT(pIKxDeviceInfo, "pIKxDeviceInfo");
    CGevFacts facts;
    if (pIKxDeviceInfo->GetTLType() == "GEV")
        TryNodeMap([&] { AppendGev(facts, interface, nIndex, *pIKxDeviceInfo); });
    return facts;
}

CInterfaceView ViewInterface(IKxInterface& interface, const CGevFacts& facts)
{
    const IKxInterfaceInfo* const pIKxInterfaceInfo = interface.GetIKxInterfaceInfo();
    KX_ASSERT(pIKxInterfaceInfo, "pIKxInterfaceInfo");
    CInterfaceView view;
    const GenICam::gcstring strTLType = pIKxInterfaceInfo->GetTLType();
    Append(view.rows, "Display Name", pIKxInterfaceInfo->GetDisplayName());
    Append(view.rows, "TL Type", strTLType);
    view.bDiscovery = strTLType == "GEV";
    view.rows.insert(view.rows.end(), facts.rows.begin(), facts.rows.end());
    return view;
}

CDeviceView ViewDevice(IKxInterface& interface, uint32_t nIndex, const CGevFacts& facts)
{
    const IKxDeviceInfo* const pIKxDeviceInfo = interface.GetIKxDeviceInfo(nIndex);
    KX_ASSERT(pIKxDeviceInfo, "pIKxDeviceInfo");
    CDeviceView view;
    Append(view.rows, "ID", pIKxDeviceInfo->GetID());
    Append(view.rows, "Vendor", pIKxDeviceInfo->GetVendor());
    Append(view.rows, "Model", pIKxDeviceInfo->GetModel());
    Append(view.rows, "TL Type", pIKxDeviceInfo->GetTLType());
    Append(view.rows, "Display Name", pIKxDeviceInfo->GetDisplayName());
    view.rows.insert(view.rows.end(), facts.rows.begin(), facts.rows.end());
    view.bForceIP = facts.bForceIP;

    const CAccessRow access = AccessOf(pIKxDeviceInfo->GetAccessStatus(), interface.GetIKxSystem());
    view.bSelectable = access.bSelectable;
    Append(view.rows, "Access Status", ToGcstring(QString::asprintf("%s[%d]", access.szText, access.nStatus)),
           access.eColor);
    Append(view.rows, "User Defined Name", pIKxDeviceInfo->GetUserDefinedName());
    Append(view.rows, "Serial Number", pIKxDeviceInfo->GetSerialNumber());
    Append(view.rows, "Version", pIKxDeviceInfo->GetVersion());
    return view;
}

} // namespace KxApi
