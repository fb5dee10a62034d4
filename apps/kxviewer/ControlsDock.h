// SPDX-License-Identifier: Apache-2.0
// What is set most often, within one click.
#pragma once

#include "ViewerDock.h"

#include <QTimer>
#include <memory>

class FeatureEditor;
class FeatureNotes;
class QFormLayout;

namespace GenApi
{
struct INode;
struct INodeMap;
} // namespace GenApi

/// Exposure, gain, white balance, trigger, and how the image is shown: of the features listed in the table of
/// the source file those that the camera has. GUI thread.
class ControlsDock : public ViewerDock
{
    Q_OBJECT

public:
    explicit ControlsDock(QWidget* pParent);
    ~ControlsDock() override;

    void Follow(CameraView& view) override;
    void Unfollow() override;
    Qt::DockWidgetArea Area() const override { return Qt::LeftDockWidgetArea; }

protected:
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;

private:
    void LetGo();
    void Offer();
    GenApi::INodeMap* MapOf(int nSource) const;
    void Refresh(const GenApi::INode& node);
    void Poll();

    CameraView* m_pView = nullptr;
    bool m_bOffered = false;
    QVector<FeatureEditor*> m_editors;
    std::unique_ptr<FeatureNotes> m_notes;
    QTimer m_timer; // asks features that change by themselves
};
