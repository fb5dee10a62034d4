// SPDX-License-Identifier: Apache-2.0
// The status bar of all windows.
#pragma once

#include <QStatusBar>
#include <QTimer>
#include <vector>

class QLabel;

namespace KxApi
{

struct IKxStatusBarInfo;

/// Asks the window for the texts of its fields when it is shown and every 500 ms while it is visible, and
/// shows those that aren't empty. GUI thread.
class CKxStatusBar : public QStatusBar
{
    Q_OBJECT

public:
    /// @param pInfo the window, not owned. Raises BadAllocException.
    explicit CKxStatusBar(IKxStatusBarInfo* pInfo);

protected:
    void showEvent(QShowEvent* pEvent) override;

private slots:
    void OnTimer();

private:
    void AddField(int nIndex);
    void ShowTexts();

    IKxStatusBarInfo* const m_pInfo;
    QTimer m_objTimer;
    std::vector<QLabel*> m_vecLabels; // owned by this widget
};

} // namespace KxApi
