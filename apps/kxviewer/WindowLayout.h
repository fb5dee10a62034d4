// SPDX-License-Identifier: Apache-2.0
// Where the docks and toolbars of the main window are.
#pragma once

#include <QByteArray>

class QMainWindow;
class ViewerSettings;

/// GUI thread. The window outlives it.
class WindowLayout
{
public:
    explicit WindowLayout(QMainWindow& window)
        : m_window(window)
    {}

    /// Arranges the docks, which are in the window already, as they are at first.
    void Arrange();
    /// As they were arranged at first.
    void Reset();

    void Recall(const ViewerSettings& settings);
    void Keep(ViewerSettings& settings) const;

private:
    QMainWindow& m_window;
    QByteArray m_first;
};
