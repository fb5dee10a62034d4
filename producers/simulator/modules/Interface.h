// SPDX-License-Identifier: Apache-2.0
// An open interface.
#pragma once

#include "modules/Device.h"
#include "modules/World.h"

#include <memory>
#include <string>
#include <vector>

namespace KxSim
{

class CSystem;

/// Functions belong to the producer's lock.
class CInterface final : public CInterfaceModule,
                         public std::enable_shared_from_this<CInterface>,
                         private IGevDevices
{
public:
    CInterface(std::shared_ptr<CSystem> parent, CAdapter& adapter);

    void Close() override;
    CPort* GetPort() override { return &m_port; }
    void* GetParentHandle() const override;
    CAdapter& Adapter() const { return m_adapter; }

    CInfo GetInfo(GenTL::INTERFACE_INFO_CMD command) override;
    bool UpdateDeviceList() override;
    uint32_t GetDeviceCount() const override { return static_cast<uint32_t>(m_devices.size()); }
    std::string GetDeviceId(uint32_t index) const override { return ListedCamera(index).Id(); }
    CInfo GetDeviceInfo(const std::string& id, GenTL::DEVICE_INFO_CMD command) override;
    CInfo GetDeviceInfo(CCamera& camera, GenTL::DEVICE_INFO_CMD command);
    std::shared_ptr<CDeviceModule> OpenDevice(const std::string& id,
                                              GenTL::DEVICE_ACCESS_FLAGS access) override;
    void Detach(const CDevice& device);

private:
    void DescribePort();
    void BindFaults();
    void BindDiscovery();
    uint64_t GetMac(size_t index) override { return ListedCamera(index).Model().mac; }
    CIpConfig GetIp(size_t index) override { return ListedCamera(index).GetIp(); }
    void ForceIp(size_t index, const CIpConfig& config) override;

    GenTL::DEVICE_ACCESS_STATUS AccessStatus(CCamera& camera);
    CCamera& ListedCamera(size_t index) const;
    /// Throws if it isn't there.
    std::shared_ptr<CCamera> FindCamera(const std::string& id) const;
    const CDevice* FindOpen(const CCamera& camera) const;

    const std::shared_ptr<CSystem> m_parent;
    CAdapter& m_adapter;
    CFeaturePort m_port;
    std::vector<std::shared_ptr<CCamera>> m_devices; // as of the last update
    std::vector<std::shared_ptr<CDevice>> m_open;
};

} // namespace KxSim
