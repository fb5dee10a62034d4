// SPDX-License-Identifier: Apache-2.0
// The adapters of the host with the cameras on them, from GCInitLib to GCCloseLib.
#pragma once

#include "camera/Camera.h"
#include "common/modules/ModuleFeatures.h"
#include "common/modules/Producer.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace KxSim
{

class CSystem;

/// Functions belong to the producer's lock.
struct CAdapter : CAdapterFacts
{
    uint32_t discoveryDestination = 0xFFFFFFFF;
    bool allowsBroadcastAnswers = true;
    std::vector<std::shared_ptr<CCamera>> cameras;

    /// Whether a camera could be opened. Only GigE Vision knows subnets.
    bool Reaches(const CCamera& camera) const;
    /// Whether a camera hears the adapter's search, and its answer comes back.
    bool Hears(const CCamera& camera) const;
};

class CWorld final : public CProducer
{
public:
    CWorld();
    ~CWorld() override;

    const std::vector<std::unique_ptr<CAdapter>>& Adapters() const { return m_adapters; }
    std::shared_ptr<CSystemModule> OpenSystem() override;
    void Detach() { m_system.reset(); }

private:
    std::vector<std::unique_ptr<CAdapter>> m_adapters;
    std::shared_ptr<CSystem> m_system;
};

} // namespace KxSim
