// SPDX-License-Identifier: Apache-2.0
// The open system.
#pragma once

#include "modules/Interface.h"

#include <memory>
#include <string>
#include <vector>

namespace KxSim
{

/// Functions belong to the producer's lock.
class CSystem final : public CSystemModule, public std::enable_shared_from_this<CSystem>
{
public:
    explicit CSystem(CWorld& world);

    void Close() override;
    CPort* GetPort() override { return &m_port; }

    /// True the first time: adapters neither come nor go.
    bool UpdateInterfaceList() override;
    uint32_t GetInterfaceCount() const override;
    std::string GetInterfaceId(uint32_t index) const override;
    CInfo GetInterfaceInfo(const std::string& id, GenTL::INTERFACE_INFO_CMD command) const override;
    std::shared_ptr<CInterfaceModule> OpenInterface(const std::string& id) override;
    void Detach(const CInterface& interface);

private:
    CAdapter& FindAdapter(const std::string& id) const;

    CWorld& m_world;
    CFeaturePort m_port;
    bool m_isListed = false;
    std::vector<std::shared_ptr<CInterface>> m_open;
};

} // namespace KxSim
