// SPDX-License-Identifier: Apache-2.0
// What is drawn over the image and what it measures.
#pragma once

#include "ViewerDock.h"

#include <QStringList>
#include <QTimer>
#include <cstdint>

class QPushButton;
class QTableWidget;

namespace KxApi
{
struct CKxDrawingMeasurement;
struct IKxDrawingMeasurements;
} // namespace KxApi

/// A table of the drawn objects with their measured values, to be copied and saved as CSV. It follows the
/// drawing while it is shown; a row that is clicked selects its object over the image.
class ObjectsDock : public ViewerDock
{
    Q_OBJECT

public:
    explicit ObjectsDock(QWidget* pParent);

    void Follow(CameraView& view) override;
    void Unfollow() override;
    Qt::DockWidgetArea Area() const override { return Qt::BottomDockWidgetArea; }
    bool IsShownAtFirst() const override { return false; }

    /// The table as text with decimal points, the head first; fields are told apart by `separator` and quoted
    /// where they hold it.
    QString Text(QChar separator) const;

protected:
    void showEvent(QShowEvent* pEvent) override;
    void hideEvent(QHideEvent* pEvent) override;

private:
    /// Units and digits as the features of the drawing tool tell them.
    struct Formats;

    void Refresh();
    void ShowRow(int nRow, const KxApi::CKxDrawingMeasurement& measurement, const Formats& formats);
    void SelectObject(int nRow);
    void Copy() const;
    void Save();

    CameraView* m_pView = nullptr;
    KxApi::IKxDrawingMeasurements* m_pMeasurements = nullptr; // of the view
    uint64_t m_nRevision = 0;                                 // that is shown
    QTableWidget* m_pTable;
    QPushButton* m_pCopy;
    QPushButton* m_pSave;
    QTimer m_timer;
};
