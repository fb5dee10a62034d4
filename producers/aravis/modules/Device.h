// SPDX-License-Identifier: Apache-2.0
// An open camera.
#pragma once

#include "common/modules/FeaturePort.h"
#include "common/modules/Producer.h"
#include "modules/DeviceFacts.h"
#include "modules/Glib.h"

#include <atomic>
#include <memory>
#include <string>

namespace KxAravis
{

class CCameraPort;
class CInterface;
class CStream;

/// Functions belong to the producer's lock, unless they say otherwise.
class CDevice final : public KxProducer::CDeviceModule, public std::enable_shared_from_this<CDevice>
{
public:
    /// Throws CError when the camera gives no description of itself.
    CDevice(std::shared_ptr<CInterface> parent, CDeviceFacts facts, GPtr<ArvDevice> device,
            GenTL::DEVICE_ACCESS_FLAGS access);
    ~CDevice() override;

    /// Gives out the handle of the camera's registers, and listens for the loss of the camera.
    void Start();
    void Close() override;
    KxProducer::CPort* GetPort() override { return &m_port; }
    KxProducer::CInfo GetInfo(GenTL::DEVICE_INFO_CMD command) override;
    void* GetParentHandle() const override;
    void* GetRemotePort() const override { return m_remotePort->GetHandle(); }
    std::string GetStreamId(uint32_t index) const override;
    std::shared_ptr<KxProducer::CStream> OpenStream(const std::string& id) override;
    void Detach(const CStream& stream);

    // Any thread, without a lock.
    const CDeviceFacts& Facts() const { return m_facts; }
    ArvDevice& Arv() const { return *m_device; }
    GenTL::DEVICE_ACCESS_FLAGS Access() const { return m_access; }
    size_t PayloadSize() const;
    /// Whether it has stopped answering, or another program has it now.
    bool IsLost() const { return m_isLost; }

protected:
    bool HasEvent(GenTL::EVENT_TYPE type) const override;

private:
    static void OnControlLost(ArvDevice* pArvDevice, CDevice* pDevice);
    std::string StreamId() const { return m_facts.id + "_Stream0"; }

    const std::shared_ptr<CInterface> m_parent;
    const CDeviceFacts m_facts;
    const GPtr<ArvDevice> m_device;
    const GenTL::DEVICE_ACCESS_FLAGS m_access;
    KxProducer::CFeaturePort m_port;
    std::shared_ptr<CCameraPort> m_cameraPort;
    std::shared_ptr<KxProducer::CRemotePort> m_remotePort;
    std::shared_ptr<CStream> m_stream;
    gulong m_signal = 0;
    std::atomic<bool> m_isLost{false};
};

} // namespace KxAravis
