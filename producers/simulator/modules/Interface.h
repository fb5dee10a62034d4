// SPDX-License-Identifier: Apache-2.0
// An open interface.
#pragma once

#include "modules/Device.h"
#include "modules/Module.h"
#include "modules/World.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace KxSim
{

class CSystem;

/// Functions belong to the producer's lock.
class CInterface final : public CModule, public std::enable_shared_from_this<CInterface>
{
public:
    CInterface(std::shared_ptr<CSystem> parent, CAdapter& adapter);

    void Close() override;
    CPort* GetPort() override { return &m_port; }
    CSystem& Parent() const { return *m_parent; }
    CAdapter& Adapter() const { return m_adapter; }

    /// True if the list has changed.
    bool UpdateDeviceList();
    size_t GetDeviceCount() const { return m_devices.size(); }
    const std::string& GetDeviceId(uint32_t index) const;
    CInfo GetDeviceInfo(const std::string& id, GenTL::DEVICE_INFO_CMD command);
    CInfo GetDeviceInfo(CCamera& camera, GenTL::DEVICE_INFO_CMD command);
    GenTL::DEVICE_ACCESS_STATUS AccessStatus(CCamera& camera);
    std::shared_ptr<CDevice> OpenDevice(const std::string& id, GenTL::DEVICE_ACCESS_FLAGS access);
    void Detach(const CDevice& device);

private:
    void DescribePort();
    void BindDevices();
    void BindFaults();
    void BindGev();
    void ForceIp(CCamera& camera);
    CCamera& ListedCamera(size_t index) const;
    std::shared_ptr<CCamera> FindCamera(const std::string& id) const;
    const CDevice* FindOpen(const CCamera& camera) const;

    const std::shared_ptr<CSystem> m_parent;
    CAdapter& m_adapter;
    CPort m_port;
    std::vector<std::shared_ptr<CCamera>> m_devices; // as of the last update
    std::vector<std::shared_ptr<CDevice>> m_open;
    std::map<std::string, std::optional<CIpConfig>>
        m_forced; // addresses written but not given yet, by device
};

} // namespace KxSim
