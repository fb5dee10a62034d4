// SPDX-License-Identifier: Apache-2.0
// The right half of the viewer's status bar.
#pragma once

#include <QObject>
#include <QVector>

class CameraView;
class QLabel;
class QStatusBar;

/// Rates, losses, bandwidth, and the pixel below the mouse. GUI thread.
class ViewerStatus : public QObject
{
    Q_OBJECT

public:
    explicit ViewerStatus(QStatusBar& bar);

    /// Shows a view's figures, or in place of those a text while no camera is open.
    void Show(CameraView& view, const QString& strWithoutCamera);
    void ShowPixel(const QString& strText);
    /// Width that the figures leave.
    int RoomForMessages() const;
    /// A line at the left that stays, such as what keeps producers from being used; empty for none.
    void ShowWarning(const QString& strText);

private:
    QLabel* Add(QStatusBar& bar, const char* szName, const QString& strTitle, int nWidest);

    QLabel* m_pWarning;
    QLabel* m_pPixel;
    QVector<QLabel*> m_figures;
};
