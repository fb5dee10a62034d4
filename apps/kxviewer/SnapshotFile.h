// SPDX-License-Identifier: Apache-2.0
// The shown image in a file.
#pragma once

#include <QString>
#include <QStringList>

class CameraView;

/// "_20261224_180000_000": the time, as names of files end.
QString FileTime();

/// Name of a file for the shown image: camera, time, ".png".
QString SnapshotName(const CameraView& view);

/// The image as it is seen, with colour map, as a PNG file with the time in its name in the folder chosen
/// last. Returns the path. Raises what there is to object to.
QString SaveSnapshot(CameraView& view);

/// The image in a file of the type that its ending tells: as the camera sent it where the type can hold that,
/// else as it is seen. Raises what there is to object to.
void SaveImageAs(CameraView& view, const QString& strFile);

/// Filters of a file dialog, such as "PNG (*.png)", the first one being that of snapshots.
QStringList ImageFileFilters();
