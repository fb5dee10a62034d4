// SPDX-License-Identifier: Apache-2.0

#include "System.h"

#include <algorithm>

namespace KxProducer
{

const CProducerFacts& ProducerFacts()
{
    static constexpr CProducerFacts kFacts = {"Kestrix.KxSimulator",
                                              "Kestrix",
                                              "KxSimulator",
                                              KXSIM_VERSION,
                                              TLTypeMixedName,
                                              "KxSimulator.cti",
                                              "Kestrix Simulated Cameras"};
    return kFacts;
}

std::unique_ptr<CProducer> MakeProducer() { return std::make_unique<KxSim::CWorld>(); }

} // namespace KxProducer

namespace KxSim
{

CSystem::CSystem(CWorld& world)
    : m_world(world)
    , m_port({"Kestrix.KxSimulator", "KxSimulator", TLTypeMixedName, "TLSystem", "TLPort"},
             EByteOrder::Little)
{
    const auto adapters = [&world] {
        std::vector<const CAdapterFacts*> facts;
        for (const auto& adapter : world.Adapters())
            facts.push_back(adapter.get());
        return facts;
    };
    PublishSystem(m_port, {"KxSimulator_System", "Simulated cameras", "TLPort", "000000000001"},
                  world.Adapters().size(), adapters, [this] { UpdateInterfaceList(); });
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

std::string CSystem::GetInterfaceId(uint32_t index) const
{
    if (index >= GetInterfaceCount())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %u interfaces, none with index %u", GetInterfaceCount(),
             index);
    return m_world.Adapters()[index]->id;
}

CAdapter& CSystem::FindAdapter(const std::string& id) const
{
    for (const auto& adapter : m_world.Adapters()) {
        if (adapter->id == id)
            return *adapter;
    }
    Fail(GenTL::GC_ERR_INVALID_ID, "There is no interface '%s'", id.c_str());
}

CInfo CSystem::GetInterfaceInfo(const std::string& id, GenTL::INTERFACE_INFO_CMD command) const
{
    const CAdapter& adapter = FindAdapter(id);
    return GetInterfaceFact(command, adapter.id, adapter.displayName, TlType(adapter.technology));
}

std::shared_ptr<CInterfaceModule> CSystem::OpenInterface(const std::string& id)
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
