// SPDX-License-Identifier: Apache-2.0
// Feature sets of cameras, kept beside the viewer's settings.
#pragma once

#include <QString>

namespace KxApi
{
struct IKxDeviceInfo;
}

/// For which cameras a set is kept.
enum class FeatureSetKey
{
    Serial, ///< this one camera
    Model,  ///< all of its model
};

/// The file of a camera's set, whether it is there or not.
QString FeatureSetFile(const KxApi::IKxDeviceInfo& camera, FeatureSetKey eKey);

/// The file of the set that is there for the camera: its own before its model's; empty when there is none.
QString FindFeatureSet(const KxApi::IKxDeviceInfo& camera);
