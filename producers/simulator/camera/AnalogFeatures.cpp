// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"
#include "Features.h"

namespace KxSim
{
namespace
{

void DescribeAnalog(const CCameraModel& model, CFeatureList& list)
{
    list.Category("AnalogControl", "What happens to the signal of the sensor");
    list.Add(Enumeration("GainSelector", "Which gain").Entries({{"All", 0, "That of all pixels"}}).Expert());
    list.Add(Float("Gain", "Amplification; noise grows with it")
                 .Range("0", "24")
                 .Unit("dB")
                 .SelectedBy({"GainSelector"}));
    list.Add(Enumeration("BlackLevelSelector", "Which black level")
                 .Entries({{"All", 0, "That of all pixels"}})
                 .Expert());
    list.Add(Float("BlackLevel", "What is added to each value, in steps of an image of 8 bits")
                 .Range("0", "64")
                 .SelectedBy({"BlackLevelSelector"}));
    list.Add(Float("Gamma", "Exponent applied to each value").Range("0.25", "4").Default(1.0));
    if (model.mosaic == EMosaic::None)
        return;
    list.Add(Enumeration("BalanceRatioSelector", "Colour of BalanceRatio")
                 .Entries({{"Red", 0, ""}, {"Green", 1, ""}, {"Blue", 2, ""}}));
    list.Add(Float("BalanceRatio", "Amplification of a colour")
                 .Range("0.25", "4")
                 .Default(1.0)
                 .SelectedBy({"BalanceRatioSelector"})
                 .ChangedBy({"BalanceWhiteAuto"})
                 .LockedIf("(BalanceWhiteAuto = 2)"));
    list.Add(Enumeration("BalanceWhiteAuto", "Lets the camera make grey grey")
                 .Entries({{"Off", 0, ""}, {"Once", 1, "Back to Off when found"}, {"Continuous", 2, ""}})
                 .Volatile());
}

void BindAnalog(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("GainReg").afterWrite = [&](size_t) {
        if (map.GetInteger("ExposureAutoReg") == 2)
            camera.FindExposure();
    };
    if (!map.Has("BalanceWhiteAutoReg"))
        return;
    map.At("BalanceWhiteAutoReg").afterWrite = [&](size_t) {
        const int64_t mode = map.GetInteger("BalanceWhiteAutoReg");
        // The light of all scenes is white.
        for (size_t colour = 0; mode != 0 && colour < 3; ++colour)
            map.SetReal("BalanceRatioReg", 1, colour);
        if (mode == 1)
            map.SetInteger("BalanceWhiteAutoReg", 0);
    };
}

} // namespace

const CFeatureGroup kAnalogFeatures = {DescribeAnalog, BindAnalog};

} // namespace KxSim
