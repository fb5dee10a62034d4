// SPDX-License-Identifier: Apache-2.0
// The viewer's main window as its user meets it.
#include "CameraRegion.h"
#include "DeviceDialog.h"
#include "DiagnosticArchive.h"
#include "ErrorBox.h"
#include "FeatureEditor.h"
#include "MainWindowFixture.h"
#include "ViewerDock.h"

#include <KxApi_TL/KxApi_TL.h>

#include <gmock/gmock.h>

#include <QAccessible>
#include <QComboBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QSignalSpy>
#include <QTabBar>
#include <QTreeWidget>
#include <cstring>

namespace KxTest
{
namespace
{

using testing::AllOf;
using testing::HasSubstr;

TEST_F(MainWindowTest, StartsStopsTakesSingleAndTriggeredImages)
{
    EXPECT_FALSE(m_pWindow->Actions().Find("start")->isEnabled());
    CameraView& view = Open();
    Do("start");
    EXPECT_TRUE(HasImages(view, 3));
    Do("stop");
    EXPECT_FALSE(view.Session()->IsAcquiring());
    Do("start");
    Do("single"); // also out of a running acquisition
    EXPECT_TRUE(IsIdle(view));
    EXPECT_EQ(m_pWindow->GetImageCount(), 1U);

    Set(view, "TriggerMode", "On");
    Set(view, "TriggerSource", "Software");
    Do("start");
    Do("trigger");
    EXPECT_TRUE(HasImages(view, 1));
    EXPECT_EQ(m_pWindow->GetImageCount(), 1U);
}

TEST_F(MainWindowTest, KeepsFeatureSetsOfACameraAndLoadsThemWhileItRuns)
{
    CameraView& view = Open();
    Do("start");
    Set(view, "ExposureTime", "1234");
    Do("saveSerial");
    Set(view, "ExposureTime", "2000");
    Do("loadSerial");
    EXPECT_EQ(std::stod(Get(view, "ExposureTime")), 1234);
    EXPECT_TRUE(view.Session()->IsAcquiring());
    EXPECT_EQ(QDir(m_folder.filePath("features")).entryList(QDir::Files).size(), 1);

    // There is none for the model, which is told with the details behind a button.
    Do("loadModel");
    const auto* const pBox = m_pWindow->findChild<QMessageBox*>("errorBox");
    ASSERT_NE(pBox, nullptr);
    EXPECT_FALSE(pBox->detailedText().isEmpty());
    EXPECT_FALSE((pBox->text() + pBox->informativeText()).contains(".cpp"));

    Do("loadAtOpen");
    Set(view, "ExposureTime", "2000");
    m_pWindow->CloseView(view);
    EXPECT_EQ(std::stod(Get(Open(), "ExposureTime")), 1234);
}

TEST_F(MainWindowTest, ControlsFollowTheCameraAndSetIt)
{
    CameraView& view = Open();
    const auto* const pExposure = m_pWindow->findChild<FeatureEditor*>("ExposureTime");
    ASSERT_NE(pExposure, nullptr);
    auto* const pBox = pExposure->findChild<QDoubleSpinBox*>();
    EXPECT_FALSE(pBox->accessibleName().isEmpty());
    pBox->setValue(777);
    EXPECT_EQ(std::stod(Get(view, "ExposureTime")), 777);
    std::thread([&] { Set(view, "ExposureTime", "888"); }).join(); // a thread of the application's
    EXPECT_TRUE(QTest::qWaitFor([&] { return pBox->value() == 888; }, kTimeoutMs));
    // Only what the camera has: this one sees no colours and has no polarisers.
    EXPECT_EQ(m_pWindow->findChild<FeatureEditor*>("BalanceWhiteAuto"), nullptr);
    EXPECT_EQ(m_pWindow->findChild<FeatureEditor*>("PolarizationImageTransformationMethod"), nullptr);
    m_pWindow->CloseView(view);
    EXPECT_EQ(m_pWindow->findChild<FeatureEditor*>("ExposureTime"), nullptr);
    Open("KX-G5P_2002");
    EXPECT_NE(m_pWindow->findChild<FeatureEditor*>("PolarizationImageTransformationMethod"), nullptr);
}

TEST_F(MainWindowTest, RemembersItsLayoutAndTheLastCamera)
{
    Open();
    m_pWindow->findChild<QDockWidget*>("histogram")->hide();
    m_pWindow->findChild<QDockWidget*>("profile")->show();
    Do("tile");
    Do("markExposure");
    m_pWindow->close();
    MakeWindow();
    EXPECT_FALSE(m_pWindow->findChild<QDockWidget*>("histogram")->isVisible());
    EXPECT_TRUE(m_pWindow->findChild<QDockWidget*>("profile")->isVisible());
    EXPECT_TRUE(m_pWindow->Area().IsTiled());
    EXPECT_TRUE(m_pWindow->View().Marks().MarksExposure());

    DeviceDialog dialog(*m_pCameras, ViewerSettings().value("cameras/last").toString(), m_pWindow.get());
    dialog.show();
    auto* const pTree = dialog.findChild<QTreeWidget*>("treeDevice");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !pTree->selectedItems().isEmpty(); }, kTimeoutMs));
    QTest::keyClick(pTree, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return dialog.result() == QDialog::Accepted; }, kTimeoutMs));
    EXPECT_EQ(dialog.Chosen().pInfo->GetID(), kCamera);

    Do("resetLayout");
    EXPECT_TRUE(m_pWindow->findChild<QDockWidget*>("histogram")->isVisible());
}

TEST_F(MainWindowTest, ShowsTwoCamerasSideBySideEachWithItsOwnAcquisition)
{
    CameraView& first = Open();
    Do("start");
    CameraView& second = Open("KX-U5M_1001");
    Do("start");
    EXPECT_FALSE(first.isVisible());
    Do("tile");
    EXPECT_TRUE(first.isVisible() && second.isVisible());
    EXPECT_FALSE(first.geometry().intersects(second.geometry()));
    EXPECT_TRUE(HasImages(first, 3) && HasImages(second, 3));
    QTest::mouseClick(ImageWidgetOf(first.Window()), Qt::LeftButton);
    EXPECT_EQ(&m_pWindow->View(), &first); // toolbar and docks follow the click
    Do("disconnect");
    EXPECT_EQ(m_pWindow->Area().Views(), QVector<CameraView*>{&second});
    EXPECT_TRUE(second.Session()->IsAcquiring());
}

TEST_F(MainWindowTest, SetsTheRegionOfTheCameraToARectangleOnTheImage)
{
    CameraView& view = Open();
    Do("start");
    ASSERT_TRUE(QTest::qWaitFor([&] { return ImageWidgetOf(view.Window())->width() > 1; }, kTimeoutMs));
    Do("draw3");
    DrawRectangle(view, {0.25, 0.25}, {0.5, 0.75});
    ASSERT_TRUE(QTest::qWaitFor([&] { return SelectedPixels(view.Window()).has_value(); }, kTimeoutMs));
    const QRect selected = *SelectedPixels(view.Window());
    Do("regionSet");
    EXPECT_TRUE(view.Session()->IsAcquiring());
    const QRect region(std::stoi(Get(view, "OffsetX")), std::stoi(Get(view, "OffsetY")),
                       std::stoi(Get(view, "Width")), std::stoi(Get(view, "Height")));
    EXPECT_TRUE(region.contains(selected)) << region.x() << " " << region.width();
    EXPECT_LT(region.width() - selected.width(), 16); // the steps that the camera goes
    EXPECT_NEAR(region.width(), 160, 20);
    Do("regionFull");
    EXPECT_EQ(Get(view, "Width"), "640");
    EXPECT_EQ(Get(view, "OffsetX"), "0");

    // It is among the changes, though it is locked before and after; those are noted bit by bit.
    m_pWindow->findChild<QDockWidget*>("features")->raise();
    const auto* const pChanged = m_pWindow->findChild<QTreeWidget*>("changedFeatures");
    const auto width = [&]() -> const QTreeWidgetItem* {
        return pChanged ? pChanged->findItems("Width", Qt::MatchExactly).value(0) : nullptr;
    };
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            m_pWindow->Actions().Find(Get(view, "Width") == "640" ? "regionSet" : "regionFull")->trigger();
            QTest::qWait(500);
            return width() != nullptr;
        },
        kTimeoutMs));
    EXPECT_TRUE(width()->isDisabled());
    EXPECT_FALSE(width()->toolTip(0).isEmpty());
}

TEST_F(MainWindowTest, MarksOverexposedPixelsAndWritesValuesIntoLargeOnes)
{
    CameraView& view = Open();
    Set(view, "ExposureTime", "20000"); // all white
    Do("single");
    ASSERT_TRUE(IsIdle(view) && HasImages(view, 1));
    QWidget& image = *ImageWidgetOf(view.Window());
    ASSERT_TRUE(QTest::qWaitFor([&] { return image.width() > 1; }, kTimeoutMs));
    const auto middle = [&] {
        const QRect visible = image.visibleRegion().boundingRect();
        return image.grab(visible).toImage();
    };
    const auto count = [&](const QImage& picture, const std::function<bool(QRgb)>& counts) {
        int nPixels = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                nPixels += counts(picture.pixel(x, y)) ? 1 : 0;
        return nPixels;
    };
    const auto kRed = [](QRgb colour) { return qRed(colour) == 255 && qGreen(colour) < 64; };
    const auto kDark = [](QRgb colour) { return qGray(colour) < 128; };
    EXPECT_EQ(count(middle(), kRed), 0);
    Do("markExposure");
    EXPECT_GT(count(middle(), kRed), 1000);
    Do("markExposure");
    EXPECT_EQ(count(middle(), kRed), 0);

    ImageZoom(view.Window()).Set(31);
    QTest::qWait(0);
    EXPECT_EQ(count(middle(), kDark), 0); // white alone
    ImageZoom(view.Window()).Set(32);
    ASSERT_TRUE(QTest::qWaitFor([&] { return count(middle(), kDark) > 0; }, kTimeoutMs));
    // What isn't on the screen yet changes nothing there, the numbers as little as the picture.
    const auto copy = [&] {
        CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> pCopy(CreateIKxImageBuffer(nullptr));
        pCopy->CopyImage(view.Window().GetRegisteredIKxImage());
        return pCopy;
    };
    const auto pWhite = copy();
    const auto pBlack = copy();
    const IKxImage& black = *pBlack->GetIKxImage();
    std::memset(black.GetImageBuffer(), 0, black.GetImageLinePitch() * black.GetImageHeight());
    const QImage before = middle();
    QCursor::setPos(image.mapToGlobal(image.visibleRegion().boundingRect().center()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !view.PixelText().isEmpty(); }, kTimeoutMs));
    view.Window().RegisterIKxImage(pBlack->GetIKxImage());
    EXPECT_EQ(middle(), before);
    QCursor::setPos(QCursor::pos() + QPoint(40, 0));
    EXPECT_TRUE(view.PixelText().endsWith(" 255")) << view.PixelText().toStdString();
    view.Window().RegisterIKxImage(pWhite->GetIKxImage());
    Do("pixelValues");
    EXPECT_EQ(count(middle(), kDark), 0);
}

TEST_F(MainWindowTest, KeysZoomScrollAndStart)
{
    CameraView& view = Open();
    QTest::keyClick(m_pWindow.get(), Qt::Key_F6);
    ASSERT_TRUE(HasImages(view, 1));
    ASSERT_TRUE(QTest::qWaitFor([&] { return ImageWidgetOf(view.Window())->width() > 1; }, kTimeoutMs));
    QWidget* const pFocus = view.focusProxy();
    pFocus->setFocus();
    const ImageZoom zoom(view.Window());
    EXPECT_TRUE(zoom.IsFit());
    const double dFit = zoom.Get();
    QTest::keyClick(pFocus, Qt::Key_Plus);
    EXPECT_FALSE(zoom.IsFit());
    EXPECT_GT(zoom.Get(), dFit);
    QTest::keyClick(pFocus, Qt::Key_1);
    EXPECT_EQ(zoom.Get(), 1);
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(pFocus, Qt::Key_Plus);
    EXPECT_EQ(zoom.Get(), 4);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view.Window().GetScrollHMax() > 0; }, kTimeoutMs));
    view.Window().SetScrollHPosition(0);
    QTest::keyClick(pFocus, Qt::Key_Right);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view.Window().GetScrollHPosition() > 0; }, kTimeoutMs));
    QTest::keyClick(pFocus, Qt::Key_F);
    EXPECT_TRUE(zoom.IsFit());
    EXPECT_TRUE(m_pWindow->Actions().KeysAsHtml().contains("F11"));
}

/// What a screen reader says of a widget that the keyboard reaches; empty when it has nothing to say. Dialogs
/// and panes of the toolkit's own name theirs.
QString SpokenName(const QWidget& widget)
{
    for (const QLabel* const pLabel : widget.window()->findChildren<QLabel*>())
        if (pLabel->buddy() == &widget)
            return pLabel->text();
    const QAccessibleInterface* const pInterface =
        QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
    return pInterface ? pInterface->text(QAccessible::Name) : QString();
}

QStringList NamelessIn(const QWidget& window)
{
    QStringList nameless;
    for (const QWidget* const pWidget : window.findChildren<QWidget*>()) {
        // Parts of a widget, such as the field of a spin box, are named by it.
        const bool bPart = qobject_cast<const QAbstractSpinBox*>(pWidget->parentWidget()) ||
                           qobject_cast<const QComboBox*>(pWidget->parentWidget()) ||
                           pWidget->objectName().startsWith("qt_") || qobject_cast<const QTabBar*>(pWidget) ||
                           qobject_cast<const QMenu*>(pWidget);
        if (!bPart && pWidget->window() == &window && (pWidget->focusPolicy() & Qt::TabFocus) &&
            pWidget->isEnabledTo(&window) && SpokenName(*pWidget).isEmpty())
            nameless += QString("%1 '%2' in '%3'")
                            .arg(pWidget->metaObject()->className(), pWidget->objectName(),
                                 pWidget->parentWidget()->objectName());
    }
    return nameless;
}

TEST_F(MainWindowTest, FitsSmallScreensWithAllDocksShown)
{
    Open();
    for (ViewerDock* const pDock : m_pWindow->findChildren<ViewerDock*>())
        pDock->show();
    for (const char* const szDock : {"controls", "features", "histogram"}) // above each other
        m_pWindow->addDockWidget(Qt::RightDockWidgetArea, m_pWindow->findChild<QDockWidget*>(szDock));
    m_pWindow->findChild<QLineEdit*>("featureSearch")->setText("Width");
    QTest::qWait(0);
    const QSize least = m_pWindow->minimumSizeHint();
    EXPECT_LE(least.width(), 1024);
    EXPECT_LE(least.height(), 720);
}

TEST_F(MainWindowTest, NamesEveryWidgetThatTheKeyboardReaches)
{
    Open("KX-G1C_2001");
    Do("single");
    for (QDockWidget* const pDock : m_pWindow->findChildren<QDockWidget*>())
        pDock->show();
    QTest::qWait(0);
    EXPECT_EQ(NamelessIn(*m_pWindow).join("\n").toStdString(), "");
    DeviceDialog dialog(*m_pCameras, {}, m_pWindow.get());
    dialog.show();
    EXPECT_EQ(NamelessIn(dialog).join("\n").toStdString(), "");
    Do("help");
    Do("about");
    Do("loadModel"); // there is none, which a box tells
    for (const QDialog* const pDialog : m_pWindow->findChildren<QDialog*>())
        EXPECT_EQ(NamelessIn(*pDialog).join("\n").toStdString(), "") << pDialog->windowTitle().toStdString();
}

TEST_F(MainWindowTest, TellsWhyADiagnosticArchiveIsntMade)
{
    const QString strTool = m_folder.filePath("tool"), strFile = m_folder.filePath("all.zip");
    const auto outcome = [&](const char* szScript, QFile::Permissions permissions) {
        QFile::remove(strTool);
        QFile tool(strTool);
        EXPECT_TRUE(tool.open(QIODevice::WriteOnly) && tool.write(szScript) > 0);
        tool.setPermissions(permissions);
        tool.close();
        DiagnosticArchive archive(strTool, m_pWindow.get());
        const QSignalSpy failed(&archive, &DiagnosticArchive::Failed),
            cancelled(&archive, &DiagnosticArchive::Cancelled);
        archive.Make(strFile, {});
        auto* const pProgress = m_pWindow->findChild<QProgressDialog*>("archiveProgress");
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return failed.count() > 0 || pProgress->labelText().contains("hanging"); }, kTimeoutMs));
        if (failed.isEmpty())
            pProgress->close();
        EXPECT_TRUE(QTest::qWaitFor([&] { return failed.count() + cancelled.count() > 0; }, kTimeoutMs));
        EXPECT_FALSE(archive.IsBusy() || QFile::exists(strFile));
        return failed.isEmpty() ? "cancelled" : failed.first().first().toString().toStdString();
    };
    const auto executable = QFile::ReadOwner | QFile::ExeOwner;
    EXPECT_THAT(outcome("#!/bin/sh\n", QFile::ReadOwner),
                AllOf(HasSubstr(strTool.toStdString()), HasSubstr("can't be started: ")));
    EXPECT_THAT(outcome("#!/bin/sh\n>$3; echo at camera 7 >&2; kill -SEGV $$", executable),
                AllOf(HasSubstr("crashed"), HasSubstr("at camera 7")));
    EXPECT_EQ(outcome("#!/bin/sh\n>$3; echo hanging >&2; exec sleep 600", executable), "cancelled");
}

} // namespace
} // namespace KxTest
