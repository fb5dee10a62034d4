// SPDX-License-Identifier: Apache-2.0
// What a producer has to bring. The exported functions of GenTL, in gentl/, find these modules by their
// handles, turn what they throw into codes, and take the producer's lock.
#pragma once

#include "common/gentl/Info.h"
#include "common/modules/Module.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

namespace KxProducer
{

class CStream;

/// An open device. A handle is given out for it by whoever opened it, as for all modules. All functions are
/// called with the producer's lock held, unless they say otherwise.
class CDeviceModule : public CModule
{
public:
    virtual CInfo GetInfo(GenTL::DEVICE_INFO_CMD command) = 0;
    virtual void* GetParentHandle() const = 0;
    /// Handle of the camera's registers, a CRemotePort.
    virtual void* GetRemotePort() const = 0;
    virtual uint32_t GetStreamCount() const { return 1; }
    virtual std::string GetStreamId(uint32_t index) const = 0;
    virtual std::shared_ptr<CStream> OpenStream(const std::string& id) = 0;
};

/// An open interface.
class CInterfaceModule : public CModule
{
public:
    virtual CInfo GetInfo(GenTL::INTERFACE_INFO_CMD command) = 0;
    virtual void* GetParentHandle() const = 0;

    /// Looks for devices and keeps what it finds beside the list. Without the producer's lock: nobody waits
    /// for a search. One at a time.
    virtual void Search(uint64_t timeoutMs) { static_cast<void>(timeoutMs); }
    /// Makes what was found the list; true if it has changed.
    virtual bool UpdateDeviceList() = 0;
    virtual uint32_t GetDeviceCount() const = 0;
    /// Throws for an index that isn't there.
    virtual std::string GetDeviceId(uint32_t index) const = 0;
    virtual CInfo GetDeviceInfo(const std::string& id, GenTL::DEVICE_INFO_CMD command) = 0;
    virtual std::shared_ptr<CDeviceModule> OpenDevice(const std::string& id,
                                                      GenTL::DEVICE_ACCESS_FLAGS access) = 0;

    /// Search and UpdateDeviceList, one caller at a time. Without a lock held.
    bool RunSearch(uint64_t timeoutMs);

private:
    std::mutex m_searchMutex; // taken outside the producer's lock
};

/// The open system.
class CSystemModule : public CModule
{
public:
    /// True if the list has changed.
    virtual bool UpdateInterfaceList() = 0;
    virtual uint32_t GetInterfaceCount() const = 0;
    virtual std::string GetInterfaceId(uint32_t index) const = 0;
    virtual CInfo GetInterfaceInfo(const std::string& id, GenTL::INTERFACE_INFO_CMD command) const = 0;
    virtual std::shared_ptr<CInterfaceModule> OpenInterface(const std::string& id) = 0;
};

/// What lives from GCInitLib to GCCloseLib.
class CProducer
{
public:
    CProducer() = default;
    CProducer(const CProducer&) = delete;
    CProducer& operator=(const CProducer&) = delete;
    virtual ~CProducer() = default;
    virtual std::shared_ptr<CSystemModule> OpenSystem() = 0;
};

/// What a producer tells of itself.
struct CProducerFacts
{
    const char *id, *vendor, *model, *version, *tlType, *fileName, *displayName;
};

// Two functions that each producer defines.
// -------------------------------------------------------------------------------------------------------
const CProducerFacts& ProducerFacts();
std::unique_ptr<CProducer> MakeProducer();

/// The facts by their commands.
CInfo GetProducerInfo(GenTL::TL_INFO_CMD command);
/// What is known of an interface without opening it.
CInfo GetInterfaceFact(GenTL::INTERFACE_INFO_CMD command, const std::string& id,
                       const std::string& displayName, const char* tlType);

} // namespace KxProducer
