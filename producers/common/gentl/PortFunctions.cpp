// SPDX-License-Identifier: Apache-2.0
// Registers and descriptions.

#include "Call.h"
#include "common/modules/Module.h"

namespace KxProducer
{
namespace
{

/// Runs something on the port of a module, with the producer's lock if the port belongs to it.
template <class Use>
GenTL::GC_ERROR CallPort(GenTL::PORT_HANDLE hPort, Use&& use)
{
    return Call([&] {
        const auto module = Handles().Get<CModule>(hPort);
        CPort* const port = module->GetPort();
        if (!port)
            Fail(GenTL::GC_ERR_INVALID_HANDLE, "The module has no port");
        if (!port->NeedsProducerLock())
            return use(*port);
        const std::lock_guard<std::recursive_mutex> lock(ProducerLock());
        Producer();
        if (!Handles().Find<CModule>(hPort))
            Fail(GenTL::GC_ERR_INVALID_HANDLE, "The module has been closed");
        use(*port);
    });
}

/// Goes through the entries up to the first that fails, whose code is returned; their number is told.
template <class Access>
GenTL::GC_ERROR AccessStacked(GenTL::PORT_HANDLE hPort, GenTL::PORT_REGISTER_STACK_ENTRY* pEntries,
                              size_t* piNumEntries, Access&& access)
{
    return CallPort(hPort, [&](CPort& port) {
        const size_t count = Needed(piNumEntries);
        Needed(pEntries);
        for (size_t i = 0; i < count; ++i) {
            *piNumEntries = i;
            access(port, pEntries[i]);
        }
        *piNumEntries = count;
    });
}

} // namespace
} // namespace KxProducer

namespace GenTL
{
extern "C" {

using namespace KxProducer;

GC_API GCReadPort(PORT_HANDLE hPort, uint64_t iAddress, void* pBuffer, size_t* piSize)
{
    return CallPort(hPort, [&](CPort& port) {
        port.Read(iAddress, &Needed(static_cast<char*>(pBuffer)), Needed(piSize));
    });
}

GC_API GCWritePort(PORT_HANDLE hPort, uint64_t iAddress, const void* pBuffer, size_t* piSize)
{
    return CallPort(hPort, [&](CPort& port) {
        port.Write(iAddress, &Needed(static_cast<const char*>(pBuffer)), Needed(piSize));
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
    return CallPort(hPort, [&](const CPort& port) {
        // A list of one, with another NUL behind it.
        const std::string url = port.GetUrl();
        ReturnBytes(std::string(url.c_str(), url.size() + 1) + '\0', sURL, piSize);
    });
}

GC_API GCGetNumPortURLs(PORT_HANDLE hPort, uint32_t* piNumURLs)
{
    return CallPort(hPort, [&](const CPort&) { Needed(piNumURLs) = 1; });
}

GC_API GCGetPortURLInfo(PORT_HANDLE hPort, uint32_t iURLIndex, URL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType,
                        void* pBuffer, size_t* piSize)
{
    return CallPort(hPort, [&](const CPort& port) {
        if (iURLIndex != 0)
            Fail(GC_ERR_INVALID_INDEX, "There is one URL, none with index %u", iURLIndex);
        ReturnInfo(port.GetUrlInfo(iInfoCmd), piType, pBuffer, piSize);
    });
}

GC_API GCGetPortInfo(PORT_HANDLE hPort, PORT_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer,
                     size_t* piSize)
{
    return CallPort(hPort,
                    [&](const CPort& port) { ReturnInfo(port.GetInfo(iInfoCmd), piType, pBuffer, piSize); });
}

} // extern "C"
} // namespace GenTL
