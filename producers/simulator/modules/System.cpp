// SPDX-License-Identifier: Apache-2.0

#include "System.h"

#include <dlfcn.h>

#include <algorithm>

namespace KxSim
{
namespace
{

constexpr char kFileName[] = "KxSimulator.cti";

} // namespace

std::string ProducerPath()
{
    Dl_info info{};
    return dladdr(reinterpret_cast<const void*>(&ProducerPath), &info) && info.dli_fname ? info.dli_fname
                                                                                         : kFileName;
}

CInfo GetSystemInfo(GenTL::TL_INFO_CMD command)
{
    switch (command) {
    case GenTL::TL_INFO_ID:
        return TextInfo("Kestrix.KxSimulator");
    case GenTL::TL_INFO_VENDOR:
        return TextInfo("Kestrix");
    case GenTL::TL_INFO_MODEL:
        return TextInfo("KxSimulator");
    case GenTL::TL_INFO_VERSION:
        return TextInfo(KXSIM_VERSION);
    case GenTL::TL_INFO_TLTYPE:
        return TextInfo(TLTypeMixedName);
    case GenTL::TL_INFO_NAME:
        return TextInfo(kFileName);
    case GenTL::TL_INFO_PATHNAME:
        return TextInfo(ProducerPath());
    case GenTL::TL_INFO_DISPLAYNAME:
        return TextInfo("Kestrix Simulated Cameras");
    case GenTL::TL_INFO_CHAR_ENCODING:
        return Int32Info(GenTL::TL_CHAR_ENCODING_UTF8);
    case GenTL::TL_INFO_GENTL_VER_MAJOR:
        return UInt32Info(1);
    case GenTL::TL_INFO_GENTL_VER_MINOR:
        return UInt32Info(6);
    default:
        FailUnknownInfo(command);
    }
}

CSystem::CSystem(CWorld& world)
    : m_world(world)
    , m_port({"Kestrix.KxSimulator", "KxSimulator", TLTypeMixedName, "TLSystem", "TLPort"},
             EByteOrder::Little)
{
    DescribePort();
}

void CSystem::Close()
{
    while (!m_open.empty())
        std::shared_ptr<CInterface>(m_open.back())->Close();
    CModule::Close();
    m_world.Detach();
}

bool CSystem::UpdateInterfaceList() { return !std::exchange(m_isListed, true); }

uint32_t CSystem::GetInterfaceCount() const
{
    return m_isListed ? static_cast<uint32_t>(m_world.Adapters().size()) : 0;
}

const CAdapter& CSystem::GetAdapter(uint32_t index) const
{
    if (index >= GetInterfaceCount())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %u interfaces, none with index %u", GetInterfaceCount(),
             index);
    return *m_world.Adapters()[index];
}

CAdapter& CSystem::FindAdapter(const std::string& id) const
{
    for (const auto& adapter : m_world.Adapters()) {
        if (adapter->id == id)
            return *adapter;
    }
    Fail(GenTL::GC_ERR_INVALID_ID, "There is no interface '%s'", id.c_str());
}

CInfo CSystem::GetInterfaceInfo(const CAdapter& adapter, GenTL::INTERFACE_INFO_CMD command)
{
    switch (command) {
    case GenTL::INTERFACE_INFO_ID:
        return TextInfo(adapter.id);
    case GenTL::INTERFACE_INFO_DISPLAYNAME:
        return TextInfo(adapter.displayName);
    case GenTL::INTERFACE_INFO_TLTYPE:
        return TextInfo(TlType(adapter.technology));
    default:
        FailUnknownInfo(command);
    }
}

CInfo CSystem::GetInterfaceInfo(const std::string& id, GenTL::INTERFACE_INFO_CMD command) const
{
    return GetInterfaceInfo(FindAdapter(id), command);
}

std::shared_ptr<CInterface> CSystem::OpenInterface(const std::string& id)
{
    CAdapter& adapter = FindAdapter(id);
    for (const std::shared_ptr<CInterface>& open : m_open) {
        if (&open->Adapter() == &adapter)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Interface '%s' is open already", id.c_str());
    }
    auto interface = std::make_shared<CInterface>(shared_from_this(), adapter);
    Handles().Add(interface);
    m_open.push_back(interface);
    return interface;
}

void CSystem::Detach(const CInterface& interface)
{
    m_open.erase(
        std::remove_if(m_open.begin(), m_open.end(),
                       [&](const std::shared_ptr<CInterface>& open) { return open.get() == &interface; }),
        m_open.end());
}

} // namespace KxSim
