// SPDX-License-Identifier: Apache-2.0
// The features of the camera in front, of what leads to it, and of the windows.
#pragma once

#include "ViewerDock.h"

#include <QPointer>

class FeaturePanel;

/// Reads nothing before it is seen. GUI thread.
class FeatureDock : public ViewerDock
{
    Q_OBJECT

public:
    explicit FeatureDock(QWidget* pParent);

    void Follow(CameraView& view) override;
    void Unfollow() override;

protected:
    void showEvent(QShowEvent* pEvent) override;

private:
    /// Offers the maps of the view, if this is seen.
    void Offer();

    void LetGo();

    QWidget* const m_pPlace;          // for the panel
    FeaturePanel* m_pPanel = nullptr; // from the first show on
    QPointer<CameraView> m_pView;
    bool m_bOffered = false;
};
