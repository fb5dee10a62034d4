// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"
#include "Features.h"

#include <cmath>

namespace KxSim
{
namespace
{

void DescribeDevice(const CCameraModel& model, CFeatureList& list)
{
    list.Category("DeviceControl", "The device itself");
    list.Add(String("DeviceVendorName", "Maker of the device").ReadOnly().Default("Kestrix"));
    list.Add(String("DeviceModelName", "Model of the device").ReadOnly().Default(model.model));
    list.Add(String("DeviceFamilyName", "Family of the device").ReadOnly().Default("KX simulated cameras"));
    list.Add(String("DeviceManufacturerInfo", "What its maker says of it").ReadOnly().Default(model.about));
    list.Add(String("DeviceVersion", "Version of the device").ReadOnly().Default("1.0.0"));
    list.Add(String("DeviceFirmwareVersion", "Version of its firmware").ReadOnly().Default("1.0.0"));
    list.Add(String("DeviceSerialNumber", "Serial number").ReadOnly().Expert().Default(model.serial));
    list.Add(String("DeviceUserID", "Name that the user gives it").Length(16).NotStored());
    list.Add(Enumeration("DeviceTLType", "Transport technology")
                 .ReadOnly()
                 .Expert()
                 .Entries({{ConventionName(model.technology), 0, ""}}));
    list.Add(Integer("DeviceSFNCVersionMajor", "Naming convention, major version").ReadOnly().Default(2));
    list.Add(Integer("DeviceSFNCVersionMinor", "Naming convention, minor version").ReadOnly().Default(7));
    list.Add(Float("DeviceTemperature", "Temperature inside, which swings slowly")
                 .ReadOnly()
                 .Expert()
                 .Unit("C")
                 .Range("-40", "120")
                 .Volatile(2000));
    list.Add(Command("TimestampLatch", "Takes the time into TimestampLatchValue").Expert());
    list.Add(Integer("TimestampLatchValue", "Time at the last TimestampLatch")
                 .Wide()
                 .ReadOnly()
                 .Expert()
                 .Unit("ns")
                 .Volatile());
    list.Add(Command("TimestampReset", "Lets time begin anew at 0").Expert());
}

void BindDevice(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("DeviceTemperatureReg").beforeRead = [&](size_t) {
        constexpr double kMean = 42, kSwing = 1.5, kSeconds = 60;
        const double seconds = static_cast<double>(camera.Timestamp()) * 1e-9;
        map.SetReal("DeviceTemperatureReg", kMean + kSwing * std::sin(seconds / kSeconds * 6.283185307));
    };
    map.At("TimestampLatchReg").afterWrite = [&](size_t) {
        map.SetInteger("TimestampLatchValueReg", static_cast<int64_t>(camera.Timestamp()));
        map.SetInteger("TimestampLatchReg", 0);
    };
    map.At("TimestampResetReg").afterWrite = [&](size_t) {
        camera.ResetTimestamp();
        map.SetInteger("TimestampResetReg", 0);
    };
}

} // namespace

const CFeatureGroup kDeviceFeatures = {DescribeDevice, BindDevice};

} // namespace KxSim
