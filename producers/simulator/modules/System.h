// SPDX-License-Identifier: Apache-2.0
// The open system.
#pragma once

#include "modules/Interface.h"
#include "modules/Module.h"

#include <memory>
#include <string>
#include <vector>

namespace KxSim
{

/// Facts of the producer, which need no open system.
CInfo GetSystemInfo(GenTL::TL_INFO_CMD command);
/// Path of the library that this code lies in.
std::string ProducerPath();

/// Functions belong to the producer's lock.
class CSystem final : public CModule, public std::enable_shared_from_this<CSystem>
{
public:
    explicit CSystem(CWorld& world);

    void Close() override;
    CPort* GetPort() override { return &m_port; }

    /// True if the list has changed, which it only does the first time.
    bool UpdateInterfaceList();
    uint32_t GetInterfaceCount() const;
    const CAdapter& GetAdapter(uint32_t index) const;
    CInfo GetInterfaceInfo(const std::string& id, GenTL::INTERFACE_INFO_CMD command) const;
    static CInfo GetInterfaceInfo(const CAdapter& adapter, GenTL::INTERFACE_INFO_CMD command);
    std::shared_ptr<CInterface> OpenInterface(const std::string& id);
    void Detach(const CInterface& interface);

private:
    void DescribePort();
    CAdapter& FindAdapter(const std::string& id) const;

    CWorld& m_world;
    CPort m_port;
    bool m_isListed = false;
    std::vector<std::shared_ptr<CInterface>> m_open;
};

} // namespace KxSim
