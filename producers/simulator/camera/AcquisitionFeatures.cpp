// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"
#include "Features.h"

namespace KxSim
{
namespace
{

void DescribeAcquisition(const CCameraModel&, CFeatureList& list)
{
    list.Category("AcquisitionControl", "When images are taken");
    list.Add(Enumeration("AcquisitionMode", "How many images a start takes")
                 .Entries({{"SingleFrame", 0, "One"},
                           {"MultiFrame", 1, "AcquisitionFrameCount"},
                           {"Continuous", 2, "Until the stop"}})
                 .Default(2));
    list.Add(Command("AcquisitionStart", "Starts taking images"));
    list.Add(Command("AcquisitionStop", "Stops after the image that is being taken"));
    list.Add(Integer("AcquisitionFrameCount", "Images that a start takes in mode MultiFrame")
                 .Range("1", "65535")
                 .Default(1)
                 .AvailableIf("(AcquisitionMode = 1)"));
    list.Add(Boolean("AcquisitionFrameRateEnable",
                     "Whether AcquisitionFrameRate counts; otherwise images come as fast "
                     "as the sensor can")
                 .Expert()
                 .Default(1));
    list.Add(
        Float("AcquisitionFrameRate", "Images per second")
            .Range("0.1", "KxFrameRateLimit")
            .Unit("Hz")
            .Default(30.0)
            .ChangedBy({"Height", "BinningVertical", "DecimationVertical", "ExposureTime", "ExposureAuto"})
            .AvailableIf("(AcquisitionFrameRateEnable = 1)"));
    list.Add(Float("KxFrameRateLimit", "Largest frame rate with the present height and exposure")
                 .Custom()
                 .ReadOnly()
                 .Expert()
                 .Unit("Hz")
                 .Volatile());
    list.Add(Boolean("AcquisitionStatus", "Whether images are being taken").ReadOnly().Expert().Volatile());
    list.Add(Enumeration("TriggerSelector", "What TriggerMode and its kin are about")
                 .Entries({{"FrameStart", 0, "Each image"}}));
    list.Add(Enumeration("TriggerMode", "Whether triggers are waited for")
                 .Entries({{"Off", 0, ""}, {"On", 1, ""}})
                 .SelectedBy({"TriggerSelector"}));
    list.Add(Enumeration("TriggerSource", "Where triggers come from")
                 .Entries({{"Software", 0, "TriggerSoftware"}})
                 .SelectedBy({"TriggerSelector"}));
    list.Add(Command("TriggerSoftware", "Gives a trigger")
                 .SelectedBy({"TriggerSelector"})
                 .AvailableIf("(TriggerMode = 1)"));
    list.Add(Float("TriggerDelay", "From the trigger to the exposure")
                 .Range("0", "1000000")
                 .Unit("us")
                 .Expert()
                 .SelectedBy({"TriggerSelector"}));
    list.Add(Enumeration("ExposureMode", "What tells the exposure")
                 .Entries({{"Timed", 0, "ExposureTime"}})
                 .Expert());
    list.Add(Float("ExposureTime", "How long light is gathered")
                 .Range("10", "1000000")
                 .Unit("us")
                 .Default(CFrameRenderer::kUsualExposureUs)
                 .ChangedBy({"ExposureAuto", "Gain"})
                 .LockedIf("(ExposureAuto = 2)"));
    list.Add(Enumeration("ExposureAuto", "Lets the camera find the exposure that makes up for the gain")
                 .Entries({{"Off", 0, ""}, {"Once", 1, "Back to Off when found"}, {"Continuous", 2, ""}})
                 .Volatile());
}

void BindAcquisition(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    const auto command = [&](const std::string& name, void (CCamera::*action)()) {
        map.At(name).afterWrite = [&map, &camera, name, action](size_t) {
            map.SetInteger(name, 0);
            (camera.*action)();
        };
    };
    command("AcquisitionStartReg", &CCamera::StartAcquisition);
    command("AcquisitionStopReg", &CCamera::StopAcquisition);
    command("TriggerSoftwareReg", &CCamera::Trigger);
    map.At("KxFrameRateLimitReg").beforeRead = [&](size_t) {
        map.SetReal("KxFrameRateLimitReg", camera.FrameRateLimit());
    };
    map.At("AcquisitionStatusReg").beforeRead = [&](size_t) {
        map.SetInteger("AcquisitionStatusReg", camera.IsAcquiring() ? 1 : 0);
    };
    // A rate that has become too high comes down.
    map.At("AcquisitionFrameRateReg").beforeRead = [&](size_t) {
        const double limit = camera.FrameRateLimit();
        if (map.GetReal("AcquisitionFrameRateReg") > limit)
            map.SetReal("AcquisitionFrameRateReg", limit);
    };
    map.At("AcquisitionFrameRateReg").afterWrite = [&](size_t) {
        const double rate = map.GetReal("AcquisitionFrameRateReg"), limit = camera.FrameRateLimit();
        if (rate < 0.1 || rate > limit * (1 + 1e-9))
            Fail(GenTL::GC_ERR_INVALID_VALUE,
                 "'AcquisitionFrameRate' = %g must lie from Min = 0.1 to Max = %g", rate, limit);
        camera.ChangeSettings();
    };
    for (const char* name : {"TriggerModeReg", "AcquisitionFrameRateEnableReg"})
        map.At(name).afterWrite = [&](size_t) { camera.ChangeSettings(); };
    map.At("ExposureAutoReg").afterWrite = [&](size_t) {
        const int64_t mode = map.GetInteger("ExposureAutoReg");
        if (mode != 0)
            camera.FindExposure();
        if (mode == 1)
            map.SetInteger("ExposureAutoReg", 0);
    };
}

} // namespace

const CFeatureGroup kAcquisitionFeatures = {DescribeAcquisition, BindAcquisition};

} // namespace KxSim
