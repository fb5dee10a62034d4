// SPDX-License-Identifier: Apache-2.0
// The SDK's device selection with what the viewer tells around it.
#pragma once

#include "Cameras.h"

#include <KxApi_GUI/KxApi_GUI.h>

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;
class QTreeWidget;

/// Lets the user choose a camera: the one opened last is selected at first, Return opens what is selected. A
/// line below tells that a search runs or has failed, how many cameras are hidden, and which producers could
/// not be used. GUI thread.
class DeviceDialog : public QDialog, private KxApi::IKxCallback
{
    Q_OBJECT

public:
    /// @param strLast ID of the camera to be selected at first, empty for none
    DeviceDialog(KxApps::Cameras& cameras, const QString& strLast, QWidget* pParent);
    ~DeviceDialog() override;

    /// The chosen camera; its info is null when there is none.
    KxApps::Camera Chosen() const;

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void OnCallback(KxApi::IKxCallbackParamBase* pParam) override;
    void Release() override {} // the dialog outlives its window
    void Search();
    void SelectLast();
    void ShowState();
    QTreeWidget* Tree() const;

    KxApps::Cameras& m_cameras;
    QString m_strLast;    // still to be selected
    QString m_strFailure; // that ended the search; empty while it runs
    bool m_bSearching = false;
    QWidget* m_pPlace;
    QLabel* m_pState;
    QPushButton* m_pAgain;
    QTimer m_timer;
    void* m_hCallback = nullptr;
    KxApi::CKxAutoPtr<KxApi::IKxWndReleasable, KxApi::IKxDeviceSelectionWnd> m_selection;
};
