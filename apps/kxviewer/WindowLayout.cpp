// SPDX-License-Identifier: Apache-2.0
#include "WindowLayout.h"

#include "ViewerSettings.h"

#include <QDockWidget>
#include <QMainWindow>

namespace
{

constexpr int kVersion = 1;
constexpr int kFeaturesHeight = 560;
constexpr int kHistogramHeight = 380;
constexpr int kRecordingHeight = 205;
constexpr int kWideEnough = 1200; // for docks at both sides of the image
constexpr int kHighEnough = 850;  // for docks above each other

constexpr const char* kGeometry = "layout/geometry";
constexpr const char* kDocks = "layout/docks";

} // namespace

void WindowLayout::Arrange()
{
    const auto dock = [&](const char* szName) { return m_window.findChild<QDockWidget*>(szName); };
    m_window.tabifyDockWidget(dock("histogram"), dock("profile"));
    m_window.tabifyDockWidget(dock("measurements"), dock("recording"));
    // A small screen belongs to the image: one dock gives way to the other.
    if (m_window.width() < kWideEnough) {
        m_window.tabifyDockWidget(dock("features"), dock("controls"));
        dock("controls")->raise();
    }
    if (m_window.height() < kHighEnough) {
        for (const char* const szLower : {"histogram", "profile"})
            m_window.tabifyDockWidget(dock("features"), dock(szLower));
        dock("controls")->raise();
    }
    m_window.resizeDocks({dock("features"), dock("histogram")}, {kFeaturesHeight, kHistogramHeight},
                         Qt::Vertical);
    m_window.resizeDocks({dock("recording")}, {kRecordingHeight}, Qt::Vertical);
    m_first = m_window.saveState(kVersion);
}

void WindowLayout::Reset() { m_window.restoreState(m_first, kVersion); }

void WindowLayout::Recall(const ViewerSettings& settings)
{
    m_window.restoreGeometry(settings.value(kGeometry).toByteArray());
    m_window.restoreState(settings.value(kDocks).toByteArray(), kVersion);
}

void WindowLayout::Keep(ViewerSettings& settings) const
{
    settings.setValue(kGeometry, m_window.saveGeometry());
    settings.setValue(kDocks, m_window.saveState(kVersion));
}
