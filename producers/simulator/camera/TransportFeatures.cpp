// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"
#include "Features.h"

namespace KxSim
{
namespace
{

void DescribeGev(const CCameraModel& model, CFeatureList& list)
{
    list.Add(Integer("GevMACAddress", "Address of the device in the network")
                 .Wide()
                 .ReadOnly()
                 .As("MACAddress")
                 .Default(static_cast<int64_t>(model.mac)));
    for (const char* name : {"GevCurrentIPAddress", "GevCurrentSubnetMask", "GevCurrentDefaultGateway"})
        list.Add(
            Integer(name, "Of the device's present configuration").ReadOnly().As("IPV4Address").Volatile());
    list.Add(Integer("GevSCPSPacketSize", "Size of a packet of the stream")
                 .Expert()
                 .Range("576", "9000", "4")
                 .Unit("B")
                 .Default(1500));
    list.Add(Integer("GevSCPD", "Pause between packets, in ticks").Expert().Range("0", "100000"));
    list.Add(Integer("GevHeartbeatTimeout", "How long the device waits for a sign of life")
                 .Guru()
                 .Range("500", "60000")
                 .Unit("ms")
                 .Default(3000));
}

void DescribeTransport(const CCameraModel& model, CFeatureList& list)
{
    list.Category("TransportLayerControl", "How images get to the host");
    list.Add(Integer("PayloadSize", "Bytes of an image with all that is sent with it")
                 .ReadOnly()
                 .Expert()
                 .Unit("B")
                 .Volatile());
    list.Add(
        Integer("TLParamsLocked", "1 while images are taken: what their size depends on can't be changed")
            .Invisible()
            .Range("0", "1")
            .NotStored());
    if (model.technology == ETechnology::GEV)
        DescribeGev(model, list);
}

void BindTransport(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("PayloadSizeReg").beforeRead = [&](size_t) {
        map.SetInteger("PayloadSizeReg", static_cast<int64_t>(camera.PayloadSize()));
    };
    if (camera.Model().technology != ETechnology::GEV)
        return;
    const auto address = [&](const std::string& name, uint32_t CIpConfig::*part) {
        map.At(name).beforeRead = [&map, &camera, name, part](size_t) {
            map.SetInteger(name, camera.Ip().*part);
        };
    };
    address("GevCurrentIPAddressReg", &CIpConfig::address);
    address("GevCurrentSubnetMaskReg", &CIpConfig::mask);
    address("GevCurrentDefaultGatewayReg", &CIpConfig::gateway);
}

} // namespace

const CFeatureGroup kTransportFeatures = {DescribeTransport, BindTransport};

} // namespace KxSim
