// SPDX-License-Identifier: Apache-2.0

#include "Producer.h"

#include "common/gentl/Call.h"

#include <dlfcn.h>

namespace KxProducer
{
namespace
{

/// Path of the library that this code lies in.
std::string ProducerPath()
{
    Dl_info info{};
    return dladdr(reinterpret_cast<const void*>(&ProducerPath), &info) && info.dli_fname
               ? info.dli_fname
               : ProducerFacts().fileName;
}

} // namespace

CInfo GetProducerInfo(GenTL::TL_INFO_CMD command)
{
    const CProducerFacts& facts = ProducerFacts();
    switch (command) {
    case GenTL::TL_INFO_ID:
        return TextInfo(facts.id);
    case GenTL::TL_INFO_VENDOR:
        return TextInfo(facts.vendor);
    case GenTL::TL_INFO_MODEL:
        return TextInfo(facts.model);
    case GenTL::TL_INFO_VERSION:
        return TextInfo(facts.version);
    case GenTL::TL_INFO_TLTYPE:
        return TextInfo(facts.tlType);
    case GenTL::TL_INFO_NAME:
        return TextInfo(facts.fileName);
    case GenTL::TL_INFO_PATHNAME:
        return TextInfo(ProducerPath());
    case GenTL::TL_INFO_DISPLAYNAME:
        return TextInfo(facts.displayName);
    case GenTL::TL_INFO_CHAR_ENCODING:
        return Int32Info(GenTL::TL_CHAR_ENCODING_UTF8);
    case GenTL::TL_INFO_GENTL_VER_MAJOR:
        return UInt32Info(kGenTLMajor);
    case GenTL::TL_INFO_GENTL_VER_MINOR:
        return UInt32Info(kGenTLMinor);
    default:
        FailUnknownInfo(command);
    }
}

CInfo GetInterfaceFact(GenTL::INTERFACE_INFO_CMD command, const std::string& id,
                       const std::string& displayName, const char* tlType)
{
    switch (command) {
    case GenTL::INTERFACE_INFO_ID:
        return TextInfo(id);
    case GenTL::INTERFACE_INFO_DISPLAYNAME:
        return TextInfo(displayName);
    case GenTL::INTERFACE_INFO_TLTYPE:
        return TextInfo(tlType);
    default:
        FailUnknownInfo(command);
    }
}

bool CInterfaceModule::RunSearch(uint64_t timeoutMs)
{
    const std::lock_guard<std::mutex> search(m_searchMutex);
    Search(timeoutMs);
    const std::lock_guard<std::recursive_mutex> lock(ProducerLock());
    if (!Handles().Find<CInterfaceModule>(GetHandle()))
        Fail(GenTL::GC_ERR_ABORT, "The interface was closed while it was searched");
    return UpdateDeviceList();
}

} // namespace KxProducer
