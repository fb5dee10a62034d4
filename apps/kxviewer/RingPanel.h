// SPDX-License-Identifier: Apache-2.0
// The last seconds of the camera in front: kept, stepped through, saved.
#pragma once

#include "StoredImage.h"

#include <QGroupBox>
#include <vector>

class CameraRecording;
class QCheckBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QSlider;
class QSpinBox;
class QToolButton;

/// GUI thread.
class RingPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit RingPanel(QWidget* pParent);

    /// Null for no camera view.
    void Follow(CameraRecording* pRecording);
    /// Brings figures and buttons up to date.
    void Refresh(bool bRecorderBusy);

signals:
    /// The images are to be saved.
    void SaveWanted();

private:
    void Layout();
    void Keep();
    void Hold(bool bHold);
    void Step(int nImages);
    void Show(int nImage);

    CameraRecording* m_pRecording = nullptr;
    std::vector<KxApps::StoredImagePtr> m_images; // while it is held
    QDoubleSpinBox* m_pSeconds;
    QSpinBox* m_pMegabytes;
    QPushButton* m_pHold;
    QPushButton* m_pSave;
    QToolButton* m_pBack;
    QToolButton* m_pForward;
    QSlider* m_pPlace;
    QLabel* m_pText;
};
