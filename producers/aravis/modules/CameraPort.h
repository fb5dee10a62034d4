// SPDX-License-Identifier: Apache-2.0
// The registers of a camera.
#pragma once

#include "common/modules/Port.h"
#include "modules/Glib.h"

#include <atomic>

namespace KxAravis
{

/// Register access goes to the camera at once; what answers slowly keeps nobody else waiting. Any thread.
class CCameraPort final : public KxProducer::CPort
{
public:
    /// Publishes the camera's own description. The device outlives this.
    /// @param isGev a camera whose registers are of 4 bytes and in network order.
    CCameraPort(KxProducer::CPortFacts facts, ArvDevice& device, bool isGev, bool canWrite);

    /// The camera doesn't answer any more: nobody has to wait for it again. Any thread.
    void SetLost() { m_isLost = true; }

    bool NeedsProducerLock() const override { return false; }

protected:
    void ReadRegisters(uint64_t address, void* data, size_t size) override;
    void WriteRegisters(uint64_t address, const void* data, size_t size) override;
    bool CanWrite() const override { return m_canWrite; }
    /// The description is kept here, but consumers read it to see whether the camera is still there.
    size_t FileSize() const override { return m_isLost ? 0 : CPort::FileSize(); }

private:
    void CheckAccess(const char* action, size_t size) const;
    std::string Place(const char* action, uint64_t address, size_t size) const;

    ArvDevice& m_device;
    const bool m_isGev;
    const bool m_canWrite;
    std::atomic<bool> m_isLost{false};
};

} // namespace KxAravis
