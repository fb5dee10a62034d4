// SPDX-License-Identifier: Apache-2.0
#include "modules/System.h"

#include "common/modules/ModuleFeatures.h"
#include "modules/GevInterface.h"
#include "modules/LocalInterface.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace KxProducer
{

const CProducerFacts& ProducerFacts()
{
    static constexpr CProducerFacts kFacts = {"Kestrix.KxAravis",
                                              "Kestrix",
                                              "KxAravis",
                                              KXARAVIS_VERSION,
                                              TLTypeMixedName,
                                              "KxAravis.cti",
                                              "GigE Vision and USB3 Vision (Aravis)"};
    return kFacts;
}

std::unique_ptr<CProducer> MakeProducer() { return std::make_unique<KxAravis::CAravis>(); }

} // namespace KxProducer

namespace KxAravis
{
namespace
{

using KxProducer::Fail;

constexpr char kCardsVariable[] = "KXAPI_ARAVIS_CARDS"; // names of network cards, with commas between them
constexpr char kFakeVariable[] = "KXAPI_ARAVIS_FAKE";   // 1 for the camera of the library beneath
constexpr size_t kMaxAdapters = 256;

std::string Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value ? value : "";
}

CAdapter Local(ETechnology technology, const char* id, const char* displayName, ArvInterface* (*find)())
{
    KxProducer::CAdapterFacts facts;
    facts.technology = technology;
    facts.id = id;
    facts.displayName = displayName;
    return {facts, [facts, find](const std::shared_ptr<CSystem>& system) {
                return std::make_shared<CLocalInterface>(system, facts, *find());
            }};
}

} // namespace

std::shared_ptr<KxProducer::CSystemModule> CAravis::OpenSystem()
{
    if (m_system)
        Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "The system is open already");
    m_system = std::make_shared<CSystem>(*this);
    KxProducer::Handles().Add(m_system);
    return m_system;
}

CSystem::CSystem(CAravis& aravis)
    : m_aravis(aravis)
    , m_port({"Kestrix.KxAravis", "KxAravis", TLTypeMixedName, "TLSystem", "TLPort"},
             KxProducer::EByteOrder::Little)
{
    const auto adapters = [this] {
        std::vector<const KxProducer::CAdapterFacts*> facts;
        for (const CAdapter& adapter : m_adapters)
            facts.push_back(&adapter.facts);
        return facts;
    };
    KxProducer::PublishSystem(m_port,
                              {"KxAravis_System", "Cameras on network and USB", "TLPort", "000000000101"},
                              kMaxAdapters, adapters, [this] { UpdateInterfaceList(); });
}

void CSystem::Close()
{
    while (!m_open.empty())
        std::shared_ptr<CInterface>(m_open.back())->Close();
    CModule::Close();
    m_aravis.Detach();
}

std::vector<CAdapter> CSystem::FindAdapters()
{
    const std::vector<CNetworkCard> cards = FindNetworkCards(Variable(kCardsVariable));
    m_early.Begin(cards);
    std::vector<CAdapter> adapters;
    adapters.reserve(cards.size() + 2); // U3V and the fake one
    for (const CNetworkCard& card : cards)
        adapters.push_back({AdapterOf(card), [this, card](const std::shared_ptr<CSystem>& system) {
                                return std::make_shared<CGevInterface>(system, card, m_early);
                            }});
    adapters.push_back(Local(ETechnology::U3V, "U3V", "USB3 Vision", &arv_uv_interface_get_instance));
    if (Variable(kFakeVariable) == "1")
        adapters.push_back(Local(ETechnology::Custom, "Fake", "Cameras that are programs",
                                 &arv_fake_interface_get_instance));
    if (adapters.size() > kMaxAdapters)
        adapters.resize(kMaxAdapters);
    return adapters;
}

bool CSystem::UpdateInterfaceList()
{
    std::vector<CAdapter> found = FindAdapters();
    const bool isSame =
        std::equal(found.begin(), found.end(), m_adapters.begin(), m_adapters.end(),
                   [](const CAdapter& a, const CAdapter& b) { return a.facts.id == b.facts.id; });
    m_adapters = std::move(found);
    return !isSame;
}

std::string CSystem::GetInterfaceId(uint32_t index) const
{
    if (index >= m_adapters.size())
        Fail(GenTL::GC_ERR_INVALID_INDEX, "There are %zu interfaces, none with index %u", m_adapters.size(),
             index);
    return m_adapters[index].facts.id;
}

const CAdapter& CSystem::FindAdapter(const std::string& id) const
{
    for (const CAdapter& adapter : m_adapters) {
        if (adapter.facts.id == id)
            return adapter;
    }
    Fail(GenTL::GC_ERR_INVALID_ID, "There is no interface '%s'", id.c_str());
}

KxProducer::CInfo CSystem::GetInterfaceInfo(const std::string& id, GenTL::INTERFACE_INFO_CMD command) const
{
    const KxProducer::CAdapterFacts& facts = FindAdapter(id).facts;
    return KxProducer::GetInterfaceFact(command, facts.id, facts.displayName,
                                        KxProducer::TlType(facts.technology));
}

std::shared_ptr<KxProducer::CInterfaceModule> CSystem::OpenInterface(const std::string& id)
{
    const CAdapter& adapter = FindAdapter(id);
    for (const std::shared_ptr<CInterface>& open : m_open) {
        if (open->Facts().id == id)
            Fail(GenTL::GC_ERR_RESOURCE_IN_USE, "Interface '%s' is open already", id.c_str());
    }
    std::shared_ptr<CInterface> interface = adapter.open(shared_from_this());
    KxProducer::Handles().Add(interface);
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

} // namespace KxAravis
