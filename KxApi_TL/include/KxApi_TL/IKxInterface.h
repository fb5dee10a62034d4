// SPDX-License-Identifier: Apache-2.0
// An interface of the computer that cameras are reached by, and what is known of the cameras on it.
#pragma once

#include <Base/GCString.h>

#include <cstdint>

namespace KxApi
{

struct IKxPort;
struct IKxSystem;

/// What an interface tells of itself. Belongs to the interface. Any thread.
struct IKxInterfaceInfo
{
    virtual GenICam::gcstring GetDisplayName() const = 0;
    /// "GEV", "U3V", "CXP" and so on.
    virtual GenICam::gcstring GetTLType() const = 0;
    virtual GenICam::gcstring GetID() const = 0;

protected:
    ~IKxInterfaceInfo() = default;
};

/// What is known of a device without opening it, as of the last UpdateDeviceList. What the producer doesn't
/// tell is empty. Belongs to the interface and lives as long as the system; there is one object per ID. Any
/// thread.
struct IKxDeviceInfo
{
    virtual GenICam::gcstring GetID() const = 0;
    virtual GenICam::gcstring GetVendor() const = 0;
    virtual GenICam::gcstring GetModel() const = 0;
    virtual GenICam::gcstring GetTLType() const = 0;
    virtual GenICam::gcstring GetDisplayName() const = 0;
    /// One of GenTL::DEVICE_ACCESS_STATUS_LIST, 0 when it is unknown.
    virtual int32_t GetAccessStatus() const = 0;
    virtual GenICam::gcstring GetUserDefinedName() const = 0;
    virtual GenICam::gcstring GetSerialNumber() const = 0;
    virtual GenICam::gcstring GetVersion() const = 0;

protected:
    ~IKxDeviceInfo() = default;
};

/// An interface. Belongs to its system and lives as long as it, also when it has left the system's list. Any
/// thread. Searches of one system and its interfaces take turns; reading what is known waits for none of
/// them.
struct IKxInterface
{
    virtual IKxSystem* GetIKxSystem() const = 0;
    virtual IKxPort* GetIKxPort() = 0;
    virtual const IKxInterfaceInfo* GetIKxInterfaceInfo() const = 0;

    /// Looks for devices, for a second if the producer keeps to it; true when devices came or went, or
    /// something that is known of one changed. Readers see the old list until the new one is complete. Raises
    /// CKxGenTLErrorException, after which the old list stands.
    virtual bool UpdateDeviceList() = 0;
    virtual uint32_t GetDeviceCount() const = 0;
    /// Raises OutOfRangeException.
    virtual const IKxDeviceInfo* GetIKxDeviceInfo(uint32_t nIndex) const = 0;

protected:
    ~IKxInterface() = default;
};

} // namespace KxApi
