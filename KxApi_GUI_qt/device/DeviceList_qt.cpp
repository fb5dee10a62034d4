// SPDX-License-Identifier: Apache-2.0
#include "device/DeviceList_qt.h"

#include "frame/utility_qt.h"

#include <KxApi_TL/IKxInterface.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxSDKCommon/KxAssert.h>

#include <GenTL/GenTLEnums.h>

#include <algorithm>
#include <new>
#include <tuple>
#include <utility>

namespace KxApi
{
namespace
{

constexpr char kSystemIcon[] = ":/icon/resqt/genicam.bmp";

struct CIconRow
{
    const char* szTLType;
    const char* szInterface;
    const char* szDevice;
};

// clang-format off
constexpr CIconRow kIcons[] = {
    {"CXP", ":/icon/resqt/Board.bmp",   ":/icon/resqt/coaxpress.bmp"},
    {"GEV", ":/icon/resqt/Network.bmp", ":/icon/resqt/gev.bmp"},
    {"U3V", ":/icon/resqt/USB.bmp",     ":/icon/resqt/usb3_vision.bmp"},
};
// clang-format on

const char* IconOf(const GenICam::gcstring& strTLType, const char* CIconRow::*column)
{
    for (const CIconRow& row : kIcons) {
        if (strTLType == row.szTLType)
            return row.*column;
    }
    return nullptr;
}

/// Runs a step of the walk: a module that fails takes no other one with it.
template <class Step>
void Try(Step step)
{
    try {
        step();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) { // NOLINT(bugprone-empty-catch): the next search of the worker asks again
    }
}

/// Builds the list from top to bottom.
class CWalk
{
public:
    explicit CWalk(bool bNotAccessible)
        : m_bNotAccessible(bNotAccessible)
    {}

    CDeviceList list;

    void AppendSystem(IKxSystem& system)
    {
        const IKxSystemInfo* const pIKxSystemInfo = system.GetIKxSystemInfo();
        KX_ASSERT(pIKxSystemInfo, "pIKxSystemInfo");
        CDeviceListItemData row;
        row.pSystem = &system;
        row.strText = ToQString(pIKxSystemInfo->GetDisplayName());
        row.szIcon = kSystemIcon;
        Append(std::move(row));
        // Counts are asked for anew each time, since the worker may change the lists meanwhile.
        for (uint32_t nIndex = 0; nIndex < system.GetInterfaceCount(); ++nIndex)
            Try([&] { AppendInterface(system, *system.GetIKxInterface(nIndex)); });
    }

private:
    void AppendInterface(IKxSystem& system, IKxInterface& interface)
    {
        const IKxInterfaceInfo* const pIKxInterfaceInfo = interface.GetIKxInterfaceInfo();
        KX_ASSERT(pIKxInterfaceInfo, "pIKxInterfaceInfo");
        CDeviceListItemData row;
        row.pSystem = &system;
        row.pInterface = &interface;
        row.strText = ToQString(pIKxInterfaceInfo->GetDisplayName());
        row.szIcon = IconOf(pIKxInterfaceInfo->GetTLType(), &CIconRow::szInterface);
        Append(std::move(row));
        for (uint32_t nIndex = 0; nIndex < interface.GetDeviceCount(); ++nIndex)
            Try([&] { AppendDevice(system, interface, nIndex); });
    }

    void AppendDevice(IKxSystem& system, IKxInterface& interface, uint32_t nIndex)
    {
        const IKxDeviceInfo* const pIKxDeviceInfo = interface.GetIKxDeviceInfo(nIndex);
        KX_ASSERT(pIKxDeviceInfo, "pIKxDeviceInfo");
        if (!m_bNotAccessible && pIKxDeviceInfo->GetAccessStatus() == GenTL::DEVICE_ACCESS_STATUS_NOACCESS)
            return;
        CDeviceListItemData row;
        row.pSystem = &system;
        row.pInterface = &interface;
        row.nDevice = static_cast<int32_t>(nIndex);
        row.strID = pIKxDeviceInfo->GetID();
        row.strText = ToQString(pIKxDeviceInfo->GetDisplayName());
        row.szIcon = IconOf(pIKxDeviceInfo->GetTLType(), &CIconRow::szDevice);
        Append(std::move(row));
    }

    void Append(CDeviceListItemData row)
    {
        list.push_back(std::make_unique<CDeviceListItemData>(std::move(row)));
    }

    const bool m_bNotAccessible;
};

auto Looks(const CDeviceListItemData& row)
{
    return std::tie(row.pSystem, row.pInterface, row.nDevice, row.strID, row.strText, row.szIcon);
}

} // namespace

bool CDeviceListItemData::IsSameThing(const CDeviceListItemData& other) const
{
    return pSystem == other.pSystem && pInterface == other.pInterface && IsDevice() == other.IsDevice() &&
           strID == other.strID;
}

CDeviceList ListDevices(const std::vector<IKxSystem*>& vecSystems, bool bNotAccessible)
{
    CWalk walk(bNotAccessible);
    for (IKxSystem* const pSystem : vecSystems)
        Try([&] { walk.AppendSystem(*pSystem); });
    return std::move(walk.list);
}

bool AreSameRows(const CDeviceList& list, const CDeviceList& other)
{
    return std::equal(list.begin(), list.end(), other.begin(), other.end(),
                      [](const auto& row, const auto& otherRow) { return Looks(*row) == Looks(*otherRow); });
}

std::optional<uint32_t> FindDevice(const CDeviceListItemData& row)
{
    if (!row.IsDevice())
        return std::nullopt;
    const auto isThere = [&row](uint32_t nIndex) {
        return nIndex < row.pInterface->GetDeviceCount() &&
               row.pInterface->GetIKxDeviceInfo(nIndex)->GetID() == row.strID;
    };
    // Where it stood is where it stands, unless the worker has found changes that aren't shown yet.
    const auto nListed = static_cast<uint32_t>(row.nDevice);
    if (isThere(nListed))
        return nListed;
    const uint32_t nCount = row.pInterface->GetDeviceCount();
    for (uint32_t nIndex = 0; nIndex < nCount; ++nIndex) {
        if (isThere(nIndex))
            return nIndex;
    }
    return std::nullopt;
}

} // namespace KxApi
