// SPDX-License-Identifier: Apache-2.0
// The producer and its open system.
#pragma once

#include "common/modules/FeaturePort.h"
#include "common/modules/Producer.h"
#include "modules/EarlyDiscovery.h"
#include "modules/Interface.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace KxAravis
{

class CSystem;

/// What cameras are reached by, and how it is opened.
struct CAdapter
{
    KxProducer::CAdapterFacts facts;
    std::function<std::shared_ptr<CInterface>(const std::shared_ptr<CSystem>&)> open;
};

/// From GCInitLib to GCCloseLib. Functions belong to the producer's lock.
class CAravis final : public KxProducer::CProducer
{
public:
    std::shared_ptr<KxProducer::CSystemModule> OpenSystem() override;
    void Detach() { m_system.reset(); }

private:
    std::shared_ptr<CSystem> m_system;
};

/// Functions belong to the producer's lock.
class CSystem final : public KxProducer::CSystemModule, public std::enable_shared_from_this<CSystem>
{
public:
    explicit CSystem(CAravis& aravis);

    void Close() override;
    KxProducer::CPort* GetPort() override { return &m_port; }

    bool UpdateInterfaceList() override;
    uint32_t GetInterfaceCount() const override { return static_cast<uint32_t>(m_adapters.size()); }
    std::string GetInterfaceId(uint32_t index) const override;
    KxProducer::CInfo GetInterfaceInfo(const std::string& id,
                                       GenTL::INTERFACE_INFO_CMD command) const override;
    std::shared_ptr<KxProducer::CInterfaceModule> OpenInterface(const std::string& id) override;
    void Detach(const CInterface& interface);

private:
    std::vector<CAdapter> FindAdapters();
    const CAdapter& FindAdapter(const std::string& id) const;

    CAravis& m_aravis;
    KxProducer::CFeaturePort m_port;
    CEarlyDiscovery m_early;          // outlives the interfaces
    std::vector<CAdapter> m_adapters; // as of the last update
    std::vector<std::shared_ptr<CInterface>> m_open;
};

} // namespace KxAravis
