// SPDX-License-Identifier: Apache-2.0
#include "Docks.h"

#include "ControlsDock.h"
#include "FeatureDock.h"
#include "GraphDock.h"
#include "ObjectsDock.h"
#include "RecordingDock.h"

QVector<ViewerDock*> MakeDocks(QWidget* pParent)
{
    // clang-format off
    return {
        new ControlsDock(pParent),
        new FeatureDock(pParent),
        new HistogramDock(pParent),
        new ProfileDock(pParent),
        new ObjectsDock(pParent),
        new RecordingDock(pParent),
    };
    // clang-format on
}
