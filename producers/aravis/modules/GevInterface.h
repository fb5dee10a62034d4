// SPDX-License-Identifier: Apache-2.0
// A network card, and the GigE Vision cameras on it.
#pragma once

#include "modules/Interface.h"
#include "net/Discovery.h"

#include <mutex>

namespace KxAravis
{

class CEarlyDiscovery;

/// What a card is as an adapter.
KxProducer::CAdapterFacts AdapterOf(const CNetworkCard& card);

class CGevInterface final : public CInterface, private KxProducer::IGevDevices
{
public:
    CGevInterface(std::shared_ptr<CSystem> parent, CNetworkCard card, CEarlyDiscovery& early);

protected:
    std::vector<CDeviceFacts> Find(uint64_t timeoutMs) override;
    GPtr<ArvDevice> Connect(const CDeviceFacts& facts, GenTL::DEVICE_ACCESS_FLAGS access) override;
    GenTL::DEVICE_ACCESS_STATUS StatusOf(const CDeviceFacts& facts) const override;
    void AddFeatures(KxProducer::CFeatureList& list) override { KxProducer::AddDiscoveryControl(list); }

private:
    uint64_t GetMac(size_t index) override { return Listed(index).gev.mac; }
    KxProducer::CIpConfig GetIp(size_t index) override { return Listed(index).gev.ip; }
    void ForceIp(size_t index, const KxProducer::CIpConfig& config) override;

    const CNetworkCard m_card;
    CEarlyDiscovery& m_early;
    std::mutex m_settingsMutex;    // a leaf
    CDiscoverySettings m_settings; // guarded by it
};

} // namespace KxAravis
