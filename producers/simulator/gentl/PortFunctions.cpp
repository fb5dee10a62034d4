// SPDX-License-Identifier: Apache-2.0
// Registers and descriptions.

#define GCTLIDLL

#include "Call.h"
#include "modules/Module.h"

namespace KxSim
{
namespace
{

CPort& PortOf(const std::shared_ptr<CModule>& module)
{
    CPort* const port = module->GetPort();
    if (!port)
        Fail(GenTL::GC_ERR_INVALID_HANDLE, "The module has no port");
    return *port;
}

/// Goes through the entries up to the first that fails, whose code is returned; their number is told.
template <class Access>
GenTL::GC_ERROR AccessStacked(GenTL::PORT_HANDLE hPort, GenTL::PORT_REGISTER_STACK_ENTRY* pEntries,
                              size_t* piNumEntries, Access&& access)
{
    return LockedCall([&] {
        const auto module = Handles().Get<CModule>(hPort);
        const size_t count = Needed(piNumEntries);
        Needed(pEntries);
        for (size_t i = 0; i < count; ++i) {
            *piNumEntries = i;
            access(PortOf(module), pEntries[i]);
        }
        *piNumEntries = count;
    });
}

} // namespace
} // namespace KxSim

namespace GenTL
{
extern "C" {

using namespace KxSim;

GC_API GCReadPort(PORT_HANDLE hPort, uint64_t iAddress, void* pBuffer, size_t* piSize)
{
    return LockedCall([&] {
        const auto module = Handles().Get<CModule>(hPort);
        PortOf(module).Read(iAddress, &Needed(static_cast<char*>(pBuffer)), Needed(piSize));
    });
}

GC_API GCWritePort(PORT_HANDLE hPort, uint64_t iAddress, const void* pBuffer, size_t* piSize)
{
    return LockedCall([&] {
        const auto module = Handles().Get<CModule>(hPort);
        PortOf(module).Write(iAddress, &Needed(static_cast<const char*>(pBuffer)), Needed(piSize));
    });
}

GC_API GCReadPortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY* pEntries, size_t* piNumEntries)
{
    return AccessStacked(hPort, pEntries, piNumEntries,
                         [](CPort& port, const PORT_REGISTER_STACK_ENTRY& entry) {
                             port.Read(entry.Address, &Needed(static_cast<char*>(entry.pBuffer)), entry.Size);
                         });
}

GC_API GCWritePortStacked(PORT_HANDLE hPort, PORT_REGISTER_STACK_ENTRY* pEntries, size_t* piNumEntries)
{
    return AccessStacked(
        hPort, pEntries, piNumEntries, [](CPort& port, const PORT_REGISTER_STACK_ENTRY& entry) {
            port.Write(entry.Address, &Needed(static_cast<const char*>(entry.pBuffer)), entry.Size);
        });
}

GC_API GCGetPortURL(PORT_HANDLE hPort, char* sURL, size_t* piSize)
{
    return LockedCall([&] {
        // A list of one, with another NUL behind it.
        const std::string url = PortOf(Handles().Get<CModule>(hPort)).GetUrl();
        ReturnBytes(std::string(url.c_str(), url.size() + 1) + '\0', sURL, piSize);
    });
}

GC_API GCGetNumPortURLs(PORT_HANDLE hPort, uint32_t* piNumURLs)
{
    return LockedCall([&] {
        PortOf(Handles().Get<CModule>(hPort));
        Needed(piNumURLs) = 1;
    });
}

GC_API GCGetPortURLInfo(PORT_HANDLE hPort, uint32_t iURLIndex, URL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType,
                        void* pBuffer, size_t* piSize)
{
    return LockedCall([&] {
        CPort& port = PortOf(Handles().Get<CModule>(hPort));
        if (iURLIndex != 0)
            Fail(GC_ERR_INVALID_INDEX, "There is one URL, none with index %u", iURLIndex);
        ReturnInfo(port.GetUrlInfo(iInfoCmd), piType, pBuffer, piSize);
    });
}

GC_API GCGetPortInfo(PORT_HANDLE hPort, PORT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                     size_t* piSize)
{
    return LockedCall([&] {
        ReturnInfo(PortOf(Handles().Get<CModule>(hPort)).GetInfo(iInfoCmd), piType, pBuffer, piSize);
    });
}

} // extern "C"
} // namespace GenTL
