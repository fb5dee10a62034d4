// SPDX-License-Identifier: Apache-2.0
// What is done with the camera of a view at the user's wish. All raise what there is to object to.
#pragma once

#include "FeatureSets.h"

#include <QRect>
#include <QString>

class CameraSession;
class CameraView;

void SaveFeatureSet(CameraSession& session, const QString& strFile);
/// Stops the acquisition for it.
void LoadFeatureSet(CameraSession& session, const QString& strFile);

/// Sets the region to the selected rectangle, or to the whole sensor, with the acquisition stopped for it.
QRect SetRegionToSelection(CameraView& view);
QRect SetRegionFull(CameraView& view);

bool CanBeTriggered(CameraSession& session);
void Trigger(CameraSession& session);

/// One image, also while the camera acquires: it stops with it.
void TakeSingleImage(CameraSession& session);
