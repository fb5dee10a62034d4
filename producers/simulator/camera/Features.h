// SPDX-License-Identifier: Apache-2.0
// Groups of features that make up a camera.
#pragma once

#include "Common.h"

namespace KxSim
{

class CCamera;
struct CCameraModel;

/// Each group first tells its features and then ties what they do to a camera.
struct CFeatureGroup
{
    void (*describe)(const CCameraModel& model, CFeatureList& list);
    void (*bind)(CCamera& camera);
};

extern const CFeatureGroup kDeviceFeatures;
extern const CFeatureGroup kImageFormatFeatures;
extern const CFeatureGroup kComponentFeatures;
extern const CFeatureGroup kAcquisitionFeatures;
extern const CFeatureGroup kAnalogFeatures;
extern const CFeatureGroup kSceneFeatures;
extern const CFeatureGroup kChunkFeatures;
extern const CFeatureGroup kEventFeatures;
extern const CFeatureGroup kTransportFeatures;
extern const CFeatureGroup kFaultFeatures;
extern const CFeatureGroup kAllKindsFeatures; // of one camera
// The last one: the settings of all are what the camera comes with.
extern const CFeatureGroup kUserSetFeatures;

} // namespace KxSim
