// SPDX-License-Identifier: Apache-2.0
// What the interfaces have in common, whatever cameras are reached by.
#pragma once

#include "common/modules/FeaturePort.h"
#include "common/modules/ModuleFeatures.h"
#include "common/modules/Producer.h"
#include "modules/DeviceFacts.h"
#include "modules/Glib.h"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace KxAravis
{

class CDevice;
class CSystem;

/// An open interface. Functions belong to the producer's lock, unless they say otherwise. Derived classes
/// know how cameras are found and connected.
class CInterface : public KxProducer::CInterfaceModule, public std::enable_shared_from_this<CInterface>
{
public:
    CInterface(std::shared_ptr<CSystem> parent, KxProducer::CAdapterFacts facts);

    void Close() override;
    KxProducer::CPort* GetPort() override { return &m_port; }
    void* GetParentHandle() const override;
    const KxProducer::CAdapterFacts& Facts() const { return m_facts; }

    KxProducer::CInfo GetInfo(GenTL::INTERFACE_INFO_CMD command) override;
    void Search(uint64_t timeoutMs) override;
    bool UpdateDeviceList() override;
    uint32_t GetDeviceCount() const override { return static_cast<uint32_t>(m_devices.size()); }
    std::string GetDeviceId(uint32_t index) const override { return Listed(index).id; }
    KxProducer::CInfo GetDeviceInfo(const std::string& id, GenTL::DEVICE_INFO_CMD command) override;
    KxProducer::CInfo GetDeviceInfo(const CDeviceFacts& facts, GenTL::DEVICE_INFO_CMD command) const;
    std::shared_ptr<KxProducer::CDeviceModule> OpenDevice(const std::string& id,
                                                          GenTL::DEVICE_ACCESS_FLAGS access) override;
    void Detach(const CDevice& device);

protected:
    /// Looks for cameras, in an order that stays. Without a lock held.
    virtual std::vector<CDeviceFacts> Find(uint64_t timeoutMs) = 0;
    /// Throws CError when the camera can't be had so.
    virtual GPtr<ArvDevice> Connect(const CDeviceFacts& facts, GenTL::DEVICE_ACCESS_FLAGS access) = 0;
    /// Of a camera that isn't open here.
    virtual GenTL::DEVICE_ACCESS_STATUS StatusOf(const CDeviceFacts& /*facts*/) const
    {
        return GenTL::DEVICE_ACCESS_STATUS_READWRITE;
    }
    /// Features of the derived class's own, before those that all have are bound.
    virtual void AddFeatures(KxProducer::CFeatureList& /*list*/) {}
    /// Once, by the constructor of the derived class.
    void DescribePort();

    GenTL::DEVICE_ACCESS_STATUS AccessStatus(const CDeviceFacts& facts) const;
    const CDeviceFacts& Listed(size_t index) const;

private:
    /// Throws if it isn't listed.
    const CDeviceFacts& FindListed(const std::string& id) const;
    const CDevice* FindOpen(const std::string& id) const;
    void KeepOpenOnes(std::vector<CDeviceFacts>& found) const;

    const std::shared_ptr<CSystem> m_parent;
    const KxProducer::CAdapterFacts m_facts;
    KxProducer::CFeaturePort m_port;
    std::vector<CDeviceFacts> m_devices; // as of the last update
    std::vector<std::shared_ptr<CDevice>> m_open;
    std::mutex m_foundMutex;           // a leaf
    std::vector<CDeviceFacts> m_found; // by the last search; guarded by it
};

} // namespace KxAravis
