// SPDX-License-Identifier: Apache-2.0
// Cameras that the library beneath finds by itself: those on USB, and its own that is nothing but a program.
#pragma once

#include "modules/Interface.h"

#include <mutex>

namespace KxAravis
{

class CLocalInterface final : public CInterface
{
public:
    /// @param arv lives as long as the process
    CLocalInterface(std::shared_ptr<CSystem> parent, KxProducer::CAdapterFacts facts, ArvInterface& arv);

protected:
    std::vector<CDeviceFacts> Find(uint64_t timeoutMs) override;
    GPtr<ArvDevice> Connect(const CDeviceFacts& facts, GenTL::DEVICE_ACCESS_FLAGS access) override;

private:
    ArvInterface& m_arv;
    std::mutex m_arvMutex; // of its list, which a search rebuilds
};

} // namespace KxAravis
