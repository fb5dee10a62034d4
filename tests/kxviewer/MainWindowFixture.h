// SPDX-License-Identifier: Apache-2.0
// The viewer's main window with simulated cameras and without a display.
#pragma once

#include "Display.h"
#include "ImageZoom.h"
#include "MainWindow.h"
#include "ViewerSettings.h"

#include <GenApi/GenApi.h>
#include <KxApi_TL/IKxPort.h>

#include <gtest/gtest.h>

#include <QAction>
#include <QTemporaryDir>
#include <QTest>

namespace KxTest
{

using namespace KxApi;

inline constexpr int kTimeoutMs = 60000;
inline constexpr const char* kCamera = "KX-U03N_1003"; // the smallest one

inline QApplication& Application()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char szName[] = "kxviewer";
    static char* argv[] = {szName, nullptr};
    static QApplication& application = *MakeApplication(argc, argv).release();
    return application;
}

class MainWindowTest : public testing::Test
{
protected:
    void SetUp() override
    {
        Application();
        // Others may use the same simulated cameras at this moment.
        qputenv("TMPDIR", m_folder.path().toUtf8());
        qputenv("XDG_STATE_HOME", m_folder.path().toUtf8());
        ViewerSettings::UseFile(m_folder.filePath("viewer.conf"));
        m_pCameras = std::make_unique<KxApps::Cameras>();
        m_pSearch = std::make_unique<CameraSearch>(*m_pCameras);
        MakeWindow();
    }
    void TearDown() override
    {
        m_pWindow.reset();
        m_pSearch.reset();
        m_pCameras.reset();
    }
    void MakeWindow()
    {
        m_pWindow.reset();
        m_pWindow = std::make_unique<MainWindow>(*m_pCameras, *m_pSearch, m_report, true);
        m_pWindow->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_pWindow.get(), kTimeoutMs));
    }
    CameraView& Open(const char* szCamera = kCamera)
    {
        m_pWindow->Open(m_pCameras->Find(szCamera), {});
        return m_pWindow->View();
    }
    void Do(const char* szAction) const
    {
        QAction* const pAction = m_pWindow->Actions().Find(szAction);
        ASSERT_NE(pAction, nullptr) << szAction;
        ASSERT_TRUE(QTest::qWaitFor([&] { return pAction->isEnabled(); }, kTimeoutMs)) << szAction;
        pAction->trigger();
    }
    static GenApi::INodeMap& Map(CameraView& view)
    {
        return *view.Session()->GetDevice().GetIKxRemotePort()->GetINodeMap();
    }
    static std::string Get(CameraView& view, const char* szName)
    {
        return GenApi::CValuePtr(Map(view).GetNode(szName))->ToString().c_str();
    }
    static void Set(CameraView& view, const char* szName, const char* szValue)
    {
        GenApi::CValuePtr(Map(view).GetNode(szName))->FromString(szValue);
    }
    static bool HasImages(CameraView& view, uint64_t nImages)
    {
        return QTest::qWaitFor([&] { return view.Session()->GetStatistics().nDelivered >= nImages; },
                               kTimeoutMs);
    }
    static bool IsIdle(CameraView& view)
    {
        return QTest::qWaitFor([&] { return !view.Session()->IsAcquiring(); }, kTimeoutMs);
    }
    /// Draws a rectangle in parts of the image, and selects it.
    static void DrawRectangle(CameraView& view, QPointF from, QPointF to)
    {
        QWidget& image = *ImageWidgetOf(view.Window());
        const auto at = [&](QPointF part) {
            return QPoint(static_cast<int>(part.x() * image.width()),
                          static_cast<int>(part.y() * image.height()));
        };
        const auto move = [&](QPoint position, Qt::MouseButtons eButtons) {
            QCursor::setPos(image.mapToGlobal(position)); // where the window asks
            QMouseEvent event(QEvent::MouseMove, position, image.mapToGlobal(position), Qt::NoButton,
                              eButtons, Qt::NoModifier);
            QApplication::sendEvent(&image, &event);
        };
        move(at(from), Qt::NoButton);
        QTest::mousePress(&image, Qt::LeftButton, Qt::NoModifier, at(from));
        move(at(to), Qt::LeftButton);
        QTest::mouseRelease(&image, Qt::LeftButton, Qt::NoModifier, at(to));
    }

    QTemporaryDir m_folder;
    RunReport m_report;
    std::unique_ptr<KxApps::Cameras> m_pCameras;
    std::unique_ptr<CameraSearch> m_pSearch;
    std::unique_ptr<MainWindow> m_pWindow;
};

} // namespace KxTest
