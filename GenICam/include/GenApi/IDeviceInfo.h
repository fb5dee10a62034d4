// SPDX-License-Identifier: Apache-2.0
// Facts about the device and the description of a node map.
#pragma once

#include <Base/GCString.h>
#include <GenApi/GenApiLinkage.h>
#include <GenApi/GenApiNamespace.h>

#include <cstdint>

namespace GenApi
{

using GenICam::Version_t;

/// What the head of the description says. Any thread.
struct GENAPI_DECL_ABSTRACT IDeviceInfo
{
    /// Model of the device.
    virtual GenICam::gcstring GetModelName() = 0;
    /// Maker of the device.
    virtual GenICam::gcstring GetVendorName() = 0;
    /// Short description of the device.
    virtual GenICam::gcstring GetToolTip() = 0;
    /// Transport standard: "None", "IIDC", "GEV", "CL" or "USB".
    virtual GenICam::gcstring GetStandardNameSpace() = 0;
    /// Version of this implementation's interface.
    virtual void GetGenApiVersion(Version_t& Version, uint16_t& Build) = 0;
    /// Version of the schema that the description follows.
    virtual void GetSchemaVersion(Version_t& Version) = 0;
    /// Version of the description.
    virtual void GetDeviceVersion(Version_t& Version) = 0;
    /// Identifier of the product.
    virtual GenICam::gcstring GetProductGuid() = 0;
    /// Identifier of this version of the description.
    virtual GenICam::gcstring GetVersionGuid() = 0;

protected:
    virtual ~IDeviceInfo() = default;
};

} // namespace GenApi
