// SPDX-License-Identifier: Apache-2.0
// Node maps of the modules by the naming convention of GenTL: what their features are, and what they do.
#pragma once

#include "common/modules/FeaturePort.h"
#include "common/modules/Producer.h"
#include "common/modules/Technology.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace KxProducer
{

/// What cameras are reached by.
struct CAdapterFacts
{
    ETechnology technology = ETechnology::GEV;
    std::string id;
    std::string displayName;
    uint64_t mac = 0; // this and the next of GigE Vision only
    CIpConfig ip;
};

/// Publishes the map of the system. @param adapters gives those that there are at the moment; their largest
/// number is `maxAdapters`. @param update looks for them anew.
void PublishSystem(CFeaturePort& port, const CDescriptionHead& head, size_t maxAdapters,
                   std::function<std::vector<const CAdapterFacts*>()> adapters, std::function<void()> update);

// Of an interface: first the features are added, then the port publishes them, then they are bound.
// -------------------------------------------------------------------------------------------------------
void AddInterfaceInformation(CFeatureList& list, const CAdapterFacts& adapter);
/// Devices by a selector, those of GigE Vision with their addresses and the forcing of others.
void AddDeviceEnumeration(CFeatureList& list, ETechnology technology);
void AddDiscoveryControl(CFeatureList& list);

/// Addresses of the listed devices of an interface. With the producer's lock and that of the port held.
class IGevDevices
{
public:
    virtual uint64_t GetMac(size_t index) = 0;
    virtual CIpConfig GetIp(size_t index) = 0;
    /// The address is one that a device can have, or 0 for the device's own. Throws.
    virtual void ForceIp(size_t index, const CIpConfig& config) = 0;

protected:
    ~IGevDevices() = default;
};

void BindDeviceEnumeration(CFeaturePort& port, CInterfaceModule& interface);
/// @param adapter whose address no device may have; outlives the port, as the others do.
void BindGevDevices(CFeaturePort& port, CInterfaceModule& interface, IGevDevices& devices,
                    const CAdapterFacts& adapter);

// Of a local device.
// -------------------------------------------------------------------------------------------------------
struct CDeviceFacts
{
    ETechnology technology = ETechnology::GEV;
    std::string id, serial, vendor, model, family, version, about, displayName;
    int64_t timestampFrequency = 1000000000;
    GenTL::DEVICE_ACCESS_FLAGS access = GenTL::DEVICE_ACCESS_CONTROL;
    uint64_t mac = 0;
    std::vector<std::string> streamIds;
};

/// Publishes the map of an open device. @param userId and @param ip are asked for at each read.
void PublishDevice(CFeaturePort& port, const CDescriptionHead& head, const CDeviceFacts& device,
                   std::function<std::string()> userId, const std::function<CIpConfig()>& ip);

} // namespace KxProducer
