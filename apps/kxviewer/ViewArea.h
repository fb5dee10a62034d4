// SPDX-License-Identifier: Apache-2.0
// Where the camera views stand: one above the other with tabs, or side by side.
#pragma once

#include <QVector>
#include <QWidget>

class CameraView;
class QGridLayout;
class QTabBar;

/// Keeps the views and which of them is in front. GUI thread.
class ViewArea : public QWidget
{
    Q_OBJECT

public:
    explicit ViewArea(QWidget* pParent);

    /// The view belongs to the area from now on.
    void Add(CameraView& view);
    /// Deletes the view; another one comes to the front.
    void Remove(CameraView& view);

    const QVector<CameraView*>& Views() const { return m_views; }
    /// The view in front, which toolbar and docks speak of; null when there is none.
    CameraView* Current() const;
    void SetCurrent(CameraView& view);

    bool IsTiled() const { return m_bTiled; }
    void SetTiled(bool bTiled);

    /// Takes the titles over from the views.
    void UpdateTitles();

signals:
    void CurrentChanged();
    void CloseWanted(CameraView* pView);

private:
    void Arrange();

    QTabBar* m_pTabs;
    QGridLayout* m_pGrid;
    QVector<CameraView*> m_views; // in the order of the tabs
    bool m_bTiled = false;
};
