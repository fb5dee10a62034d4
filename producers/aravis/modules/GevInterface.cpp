// SPDX-License-Identifier: Apache-2.0
#include "modules/GevInterface.h"

#include "modules/EarlyDiscovery.h"

#include <algorithm>
#include <utility>

namespace KxAravis
{
namespace
{

using KxProducer::Fail;
using KxProducer::Format;

GPtr<GInetAddress> InetAddress(uint32_t address)
{
    return GPtr<GInetAddress>(g_inet_address_new_from_string(AddressText(address).c_str()));
}

CDeviceFacts FactsOf(const CGevCamera& camera)
{
    CDeviceFacts facts;
    facts.technology = ETechnology::GEV;
    facts.id = Format("GEV_%012llx", static_cast<unsigned long long>(camera.mac));
    facts.vendor = camera.vendor;
    facts.model = camera.model;
    facts.serial = camera.serial;
    facts.userName = camera.userName;
    facts.version = camera.version;
    facts.gev = camera;
    return facts;
}

} // namespace

KxProducer::CAdapterFacts AdapterOf(const CNetworkCard& card)
{
    KxProducer::CAdapterFacts facts;
    facts.technology = ETechnology::GEV;
    facts.id = card.name + "_" + AddressText(card.ip.address);
    facts.displayName = "GigE Vision " + card.name + " (" + AddressText(card.ip.address) + ")";
    facts.mac = card.mac;
    facts.ip = card.ip;
    return facts;
}

CGevInterface::CGevInterface(std::shared_ptr<CSystem> parent, CNetworkCard card, CEarlyDiscovery& early)
    : CInterface(std::move(parent), AdapterOf(card))
    , m_card(std::move(card))
    , m_early(early)
{
    DescribePort();
    auto& port = static_cast<KxProducer::CFeaturePort&>(*GetPort());
    KxProducer::BindGevDevices(port, *this, *this, Facts());
    port.BindWrite("GevDeviceDiscoveryCommandDestinationIPAddress", [this](int64_t value, size_t) {
        const std::lock_guard<std::mutex> lock(m_settingsMutex);
        m_settings.destination = static_cast<uint32_t>(value);
    });
    port.BindWrite("GevDiscoveryAllowsBroadcastOfAcknowledge", [this](int64_t value, size_t) {
        const std::lock_guard<std::mutex> lock(m_settingsMutex);
        m_settings.isAnswerToAll = value != 0;
    });
}

std::vector<CDeviceFacts> CGevInterface::Find(uint64_t timeoutMs)
{
    CDiscoverySettings settings;
    {
        const std::lock_guard<std::mutex> lock(m_settingsMutex);
        settings = m_settings;
    }
    std::vector<CDeviceFacts> found;
    for (const CGevCamera& camera : m_early.Discover(m_card, settings, timeoutMs))
        found.push_back(FactsOf(camera));
    return found;
}

GenTL::DEVICE_ACCESS_STATUS CGevInterface::StatusOf(const CDeviceFacts& facts) const
{
    if (!IsInSubnet(m_card, facts.gev))
        return GenTL::DEVICE_ACCESS_STATUS_NOACCESS;
    return facts.gev.control.value_or(0) != 0 ? GenTL::DEVICE_ACCESS_STATUS_BUSY
                                              : GenTL::DEVICE_ACCESS_STATUS_READWRITE;
}

GPtr<ArvDevice> CGevInterface::Connect(const CDeviceFacts& facts, GenTL::DEVICE_ACCESS_FLAGS access)
{
    if (!IsInSubnet(m_card, facts.gev))
        Fail(GenTL::GC_ERR_ACCESS_DENIED,
             "Device '%s' with the address %s lies in another subnet than interface '%s'", facts.id.c_str(),
             AddressText(facts.gev.ip.address).c_str(), Facts().id.c_str());
    CArvError error;
    GPtr<ArvDevice> device(arv_gv_device_new(InetAddress(m_card.ip.address).get(),
                                             InetAddress(facts.gev.ip.address).get(), &error));
    error.Check("Device '" + facts.id + "' at " + AddressText(facts.gev.ip.address) + " can't be opened");
    if (!device)
        Fail(GenTL::GC_ERR_IO, "Device '%s' can't be opened", facts.id.c_str());
    auto* const pGev = ARV_GV_DEVICE(device.get());
    if (access == GenTL::DEVICE_ACCESS_READONLY && arv_gv_device_is_controller(pGev)) {
        CArvError ignored; // others can take it after the heartbeat
        arv_gv_device_leave_control(pGev, &ignored);
    } else if (access != GenTL::DEVICE_ACCESS_READONLY && !arv_gv_device_is_controller(pGev)) {
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is controlled by another program", facts.id.c_str());
    }
    return device;
}

void CGevInterface::ForceIp(size_t index, const KxProducer::CIpConfig& config)
{
    const CDeviceFacts& facts = Listed(index);
    const GenTL::DEVICE_ACCESS_STATUS status = AccessStatus(facts);
    if (status != GenTL::DEVICE_ACCESS_STATUS_READWRITE && status != GenTL::DEVICE_ACCESS_STATUS_NOACCESS)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "Device '%s' is in use, its address can't be forced",
             facts.id.c_str());
    KxAravis::ForceIp(m_card, facts.gev.mac, config);
}

} // namespace KxAravis
