// SPDX-License-Identifier: Apache-2.0
// What stands beside the image.
#pragma once

#include <QDockWidget>

class CameraView;

/// A dock of the viewer, which shows something of the camera view in front. Hidden docks should cost nothing:
/// they may stop what they do in hideEvent and begin it anew in showEvent. GUI thread.
///
/// Docks are listed in MakeDocks, in Docks.cpp.
class ViewerDock : public QDockWidget
{
    Q_OBJECT

public:
    /// @param strTitle for the user
    /// @param szName by which the place of the dock is remembered, such as "histogram"
    ViewerDock(const QString& strTitle, const char* szName, QWidget* pParent);

    /// The view to follow from now on, never null. Its camera may come and go: see the signals of CameraView.
    virtual void Follow(CameraView& view) = 0;
    /// The view goes; nothing of it may be used any more.
    virtual void Unfollow() = 0;

    virtual Qt::DockWidgetArea Area() const { return Qt::RightDockWidgetArea; }
    /// Whether the dock is there at the first start.
    virtual bool IsShownAtFirst() const { return true; }

protected:
    /// Puts the contents into the dock; where the screen has too little room for them, they can be scrolled.
    void SetContents(QWidget* pContents);

signals:
    /// Something that the status bar should say.
    void Told(const QString& strText);
};
