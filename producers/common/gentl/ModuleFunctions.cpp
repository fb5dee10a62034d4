// SPDX-License-Identifier: Apache-2.0
// System, interfaces and devices.

#include "Call.h"
#include "Info.h"
#include "common/modules/Producer.h"
#include "common/modules/Stream.h"

namespace GenTL
{
extern "C" {

using namespace KxProducer;

GC_API TLOpen(TL_HANDLE* phTL)
{
    return LockedCall([&] { Needed(phTL) = Producer().OpenSystem()->GetHandle(); });
}

GC_API TLClose(TL_HANDLE hTL)
{
    return LockedCall([&] { Handles().Get<CSystemModule>(hTL)->Close(); });
}

GC_API TLGetInfo(TL_HANDLE hTL, TL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    return LockedCall([&] {
        Handles().Get<CSystemModule>(hTL);
        ReturnInfo(GetProducerInfo(iInfoCmd), piType, pBuffer, piSize);
    });
}

GC_API TLUpdateInterfaceList(TL_HANDLE hTL, bool8_t* pbChanged, uint64_t)
{
    return LockedCall([&] {
        const bool hasChanged = Handles().Get<CSystemModule>(hTL)->UpdateInterfaceList();
        if (pbChanged)
            *pbChanged = hasChanged;
    });
}

GC_API TLGetNumInterfaces(TL_HANDLE hTL, uint32_t* piNumIfaces)
{
    return LockedCall([&] { Needed(piNumIfaces) = Handles().Get<CSystemModule>(hTL)->GetInterfaceCount(); });
}

GC_API TLGetInterfaceID(TL_HANDLE hTL, uint32_t iIndex, char* sID, size_t* piSize)
{
    return LockedCall([&] {
        ReturnBytes(TextInfo(Handles().Get<CSystemModule>(hTL)->GetInterfaceId(iIndex)).bytes, sID, piSize);
    });
}

GC_API TLGetInterfaceInfo(TL_HANDLE hTL, const char* sIfaceID, INTERFACE_INFO_CMD iInfoCmd,
                          INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    return LockedCall([&] {
        ReturnInfo(Handles().Get<CSystemModule>(hTL)->GetInterfaceInfo(&Needed(sIfaceID), iInfoCmd), piType,
                   pBuffer, piSize);
    });
}

GC_API TLOpenInterface(TL_HANDLE hTL, const char* sIfaceID, IF_HANDLE* phIface)
{
    return LockedCall([&] {
        Needed(phIface) = Handles().Get<CSystemModule>(hTL)->OpenInterface(&Needed(sIfaceID))->GetHandle();
    });
}

GC_API IFClose(IF_HANDLE hIface)
{
    return LockedCall([&] { Handles().Get<CInterfaceModule>(hIface)->Close(); });
}

GC_API IFGetInfo(IF_HANDLE hIface, INTERFACE_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                 size_t* piSize)
{
    return LockedCall([&] {
        ReturnInfo(Handles().Get<CInterfaceModule>(hIface)->GetInfo(iInfoCmd), piType, pBuffer, piSize);
    });
}

GC_API IFGetParentTL(IF_HANDLE hIface, TL_HANDLE* phSystem)
{
    return LockedCall([&] { Needed(phSystem) = Handles().Get<CInterfaceModule>(hIface)->GetParentHandle(); });
}

GC_API IFUpdateDeviceList(IF_HANDLE hIface, bool8_t* pbChanged, uint64_t iTimeout)
{
    return Call([&] {
        const bool hasChanged = Handles().Get<CInterfaceModule>(hIface)->RunSearch(iTimeout);
        if (pbChanged)
            *pbChanged = hasChanged;
    });
}

GC_API IFGetNumDevices(IF_HANDLE hIface, uint32_t* piNumDevices)
{
    return LockedCall(
        [&] { Needed(piNumDevices) = Handles().Get<CInterfaceModule>(hIface)->GetDeviceCount(); });
}

GC_API IFGetDeviceID(IF_HANDLE hIface, uint32_t iIndex, char* sIDeviceID, size_t* piSize)
{
    return LockedCall([&] {
        ReturnBytes(TextInfo(Handles().Get<CInterfaceModule>(hIface)->GetDeviceId(iIndex)).bytes, sIDeviceID,
                    piSize);
    });
}

GC_API IFGetDeviceInfo(IF_HANDLE hIface, const char* sDeviceID, DEVICE_INFO_CMD iInfoCmd,
                       INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    return LockedCall([&] {
        ReturnInfo(Handles().Get<CInterfaceModule>(hIface)->GetDeviceInfo(&Needed(sDeviceID), iInfoCmd),
                   piType, pBuffer, piSize);
    });
}

GC_API IFOpenDevice(IF_HANDLE hIface, const char* sDeviceID, DEVICE_ACCESS_FLAGS iOpenFlag,
                    DEV_HANDLE* phDevice)
{
    return LockedCall([&] {
        Needed(phDevice);
        *phDevice =
            Handles().Get<CInterfaceModule>(hIface)->OpenDevice(&Needed(sDeviceID), iOpenFlag)->GetHandle();
    });
}

GC_API DevClose(DEV_HANDLE hDevice)
{
    return LockedCall([&] { Handles().Get<CDeviceModule>(hDevice)->Close(); });
}

GC_API DevGetInfo(DEV_HANDLE hDevice, DEVICE_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                  size_t* piSize)
{
    return LockedCall([&] {
        ReturnInfo(Handles().Get<CDeviceModule>(hDevice)->GetInfo(iInfoCmd), piType, pBuffer, piSize);
    });
}

GC_API DevGetPort(DEV_HANDLE hDevice, PORT_HANDLE* phRemoteDevice)
{
    return LockedCall(
        [&] { Needed(phRemoteDevice) = Handles().Get<CDeviceModule>(hDevice)->GetRemotePort(); });
}

GC_API DevGetParentIF(DEV_HANDLE hDevice, IF_HANDLE* phIface)
{
    return LockedCall([&] { Needed(phIface) = Handles().Get<CDeviceModule>(hDevice)->GetParentHandle(); });
}

GC_API DevGetNumDataStreams(DEV_HANDLE hDevice, uint32_t* piNumDataStreams)
{
    return LockedCall(
        [&] { Needed(piNumDataStreams) = Handles().Get<CDeviceModule>(hDevice)->GetStreamCount(); });
}

GC_API DevGetDataStreamID(DEV_HANDLE hDevice, uint32_t iIndex, char* sDataStreamID, size_t* piSize)
{
    return LockedCall([&] {
        ReturnBytes(TextInfo(Handles().Get<CDeviceModule>(hDevice)->GetStreamId(iIndex)).bytes, sDataStreamID,
                    piSize);
    });
}

GC_API DevOpenDataStream(DEV_HANDLE hDevice, const char* sDataStreamID, DS_HANDLE* phDataStream)
{
    return LockedCall([&] {
        Needed(phDataStream);
        *phDataStream =
            Handles().Get<CDeviceModule>(hDevice)->OpenStream(&Needed(sDataStreamID))->GetHandle();
    });
}

} // extern "C"
} // namespace GenTL
