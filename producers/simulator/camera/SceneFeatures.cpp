// SPDX-License-Identifier: Apache-2.0

#include "Camera.h"
#include "Features.h"

#include <cstdlib>

namespace KxSim
{
namespace
{

constexpr char kFolderVariable[] = "KXSIM_IMAGE_FOLDER";

void DescribeScene(const CCameraModel& model, CFeatureList& list)
{
    const char* const folder = std::getenv(kFolderVariable);
    const bool hasFolder = folder && *folder;
    list.Category("KxSceneControl", "What the camera looks at");
    list.Add(Enumeration("KxSceneSource", "The scene")
                 .Custom()
                 .Entries({{"MovingShapes", 0, "Parts of known sizes on a belt", true},
                           {"Chart", 1, "Grey steps, ramps, colour bars and a star", true},
                           {"PolarizationChart", 2, "Fields of known polarisation", true},
                           {"Noise", 3, "A grey field with the sensor's noise", true},
                           {"ImageFolder", 4, "The images of KxSceneFolder, one after the other", true}})
                 .Default(static_cast<int64_t>(hasFolder ? ESource::ImageFolder : model.source)));
    list.Add(String("KxSceneFolder",
                    "Folder with images (.pgm, .ppm, .bmp, .png); at first that of KXSIM_IMAGE_FOLDER")
                 .Custom()
                 .Length(512)
                 .Default(hasFolder ? folder : ""));
    list.Add(Integer("KxSceneStep", "How far the scene moves from one image to the next; 0 stands still")
                 .Custom()
                 .Range("0", "64", std::to_string(kWidthStep))
                 .Unit("px")
                 .Default(kWidthStep));
    list.Add(Boolean("KxSensorNoise", "Adds the noise of the sensor, by light and gain").Custom());
}

void BindScene(CCamera& camera)
{
    CRegisterMap& map = camera.Registers();
    map.At("KxSceneStepReg").afterWrite = [&](size_t) {
        if (const int64_t step = map.GetInteger("KxSceneStepReg"); step % kWidthStep != 0)
            Fail(GenTL::GC_ERR_INVALID_VALUE, "'KxSceneStep' = %lld must be a multiple of %d",
                 static_cast<long long>(step), kWidthStep);
    };
}

} // namespace

const CFeatureGroup kSceneFeatures = {DescribeScene, BindScene};

} // namespace KxSim
