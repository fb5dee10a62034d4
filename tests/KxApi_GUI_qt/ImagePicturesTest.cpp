// SPDX-License-Identifier: Apache-2.0
// Writes pictures of the image window in all of its looks into the folder KXAPI_PICTURES, for people to
// judge.
#include "ImageViewSupport.h"
#include "image/DrawingToolBar_qt.h"

#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>

#include <QCursor>
#include <QDir>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>

namespace KxTest
{
namespace
{

using namespace KxApi;

/// A scene with edges, a ramp and colours, in a 24-bit format.
ImageBufferPtr MakeScene(int nWidth, int nHeight)
{
    const ImageBufferPtr pScene =
        MakeImage(static_cast<size_t>(nWidth), static_cast<size_t>(nHeight), KxPixelFormat_RGB8);
    IKxImage& image = *pScene->GetIKxImage();
    QImage picture(static_cast<uchar*>(image.GetImageBuffer()), nWidth, nHeight,
                   static_cast<int>(image.GetImageLinePitch()), QImage::Format_RGB888);
    QPainter painter(&picture);
    QLinearGradient ramp(0, 0, nWidth, 0);
    ramp.setColorAt(0, Qt::black);
    ramp.setColorAt(1, Qt::white);
    painter.fillRect(picture.rect(), ramp);
    const Qt::GlobalColor colors[] = {Qt::red, Qt::green, Qt::blue, Qt::cyan, Qt::magenta, Qt::yellow};
    for (int i = 0; i < 6; ++i)
        painter.fillRect(nWidth * (2 * i + 1) / 14, nHeight / 8, nWidth / 9, nHeight / 5, colors[i]);
    painter.setPen(QPen(Qt::white, 3));
    for (int i = 1; i < 6; ++i)
        painter.drawEllipse(QPoint(nWidth / 2, nHeight * 2 / 3), nHeight * i / 20, nHeight * i / 20);
    ImageBufferPtr pResult(CreateIKxImageBuffer(nullptr));
    pResult->CopyImage(&image);
    return pResult;
}

class ImagePictures : public ImageViewTest
{
protected:
    void SetUp() override
    {
        m_strFolder = QString::fromLocal8Bit(qgetenv("KXAPI_PICTURES"));
        if (m_strFolder.isEmpty())
            GTEST_SKIP() << "KXAPI_PICTURES names no folder";
        ASSERT_TRUE(QDir().mkpath(m_strFolder));
        m_pWnd->SetPosition(20, 20, 520, 400);
        m_pWnd->SetUserStatusBarText("Camera 1, 30 images a second");
        ShowWindow();
    }

    void Save(const QImage& picture, const QString& strName) const
    {
        EXPECT_TRUE(picture.save(m_strFolder + "/" + strName + ".png")) << qPrintable(strName);
    }
    void SaveWindow(const QString& strName) const
    {
        Pump();
        Save(Dialog().grab().toImage(), strName);
    }
    void ShowScene(EKxPixelFormatNamingConvention_t ePixelFormat) const
    {
        const ImageBufferPtr pScene = MakeScene(640, 480);
        const ImageBufferPtr pImage(CreateIKxImageBuffer(nullptr));
        const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverter> pConverter(CreateIKxConverter(0));
        pConverter->SetDestinationPixelFormat(ePixelFormat);
        pConverter->Convert(pScene->GetIKxImage(), pImage.Get());
        ShowImage(pImage->GetIKxImage());
    }

    QString m_strFolder;
};

TEST_F(ImagePictures, Zoom)
{
    SaveWindow("zoom-none");
    ShowScene(KxPixelFormat_BGR8);
    QCursor::setPos(Dialog().mapToGlobal(QPoint(260, 200)));
    EXPECT_TRUE(PumpUntil([this] { return !m_pWnd->GetTitle().empty(); }));
    for (const double dMagnification : {0.25, 0.5, 1.0, 2.0, 16.0}) {
        m_pWnd->SetManualZoomMagnification(dMagnification);
        SaveWindow("zoom-" + QString::number(dMagnification));
    }
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    SaveWindow("zoom-fit");
    for (const QString strMenu : {"&File", "&View"}) {
        QMenuBar& menuBar = *static_cast<CBaseDialogEx&>(Dialog()).getMenu();
        for (QAction* const pAction : menuBar.actions()) {
            if (pAction->text() == strMenu) {
                pAction->menu()->ensurePolished();
                Save(pAction->menu()->grab().toImage(), "menu-" + QString(strMenu).remove('&'));
            }
        }
    }
    for (const QString strEntry : {"x 2", "&OFF", "Fit To The &Window", "&Reverse Y", "&Registered Image"}) {
        auto* const pMenu = Entry(strEntry)->associatedWidgets().first();
        Save(pMenu->grab().toImage(), "menu-with-" + QString(strEntry).remove('&').replace(' ', '-'));
    }
    EXPECT_TRUE(PumpUntil([this] { return !Dialog().findChildren<QMenu*>().isEmpty(); }));
    for (QMenu* const pMenu : Dialog().findChildren<QMenu*>()) {
        if (pMenu->title() == "Context menu")
            Save(pMenu->grab().toImage(), "menu-context");
    }
}

TEST_F(ImagePictures, Backgrounds)
{
    ShowScene(KxPixelFormat_Mono8);
    m_pWnd->SetManualZoomMagnification(0.5);
    const char* const names[] = {"none",      "horizontal", "vertical", "fdiagonal",
                                 "bdiagonal", "cross",      "diagcross"};
    for (unsigned n = 0; n < 7; ++n) {
        m_pWnd->SetBackgroundStyle(static_cast<_EKxBackgroundStyle_t>(n));
        SaveWindow(QString("background-") + names[n]);
    }
    m_pWnd->SetBackgroundColor(0x402000);
    m_pWnd->SetForegroundColor(0x00C0FF);
    SaveWindow("background-coloured");
}

TEST_F(ImagePictures, Formats)
{
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    for (const auto ePixelFormat : {KxPixelFormat_Mono8, KxPixelFormat_Mono12, KxPixelFormat_RGB8,
                                    KxPixelFormat_BGR8, KxPixelFormat_BGRa8, KxPixelFormat_RGB10p32})
    {
        ShowScene(ePixelFormat);
        SaveWindow(QString("format-") + GetIKxPixelFormatInfo(ePixelFormat)->GetName().c_str());
    }
    ShowImage(MakeImage(64, 64, KxPixelFormat_Data32)->GetIKxImage());
    SaveWindow("format-not-shown");
}

TEST_F(ImagePictures, ColourMaps)
{
    m_pWnd->SetZoomMode(KxZoomMode_FitToTheWindow);
    ShowScene(KxPixelFormat_Mono8);
    const char* const names[] = {"normal", "bgr", "bgrb"};
    for (int n = 0; n < 3; ++n) {
        m_pWnd->SetColorMapType(static_cast<EKxColorMapType_t>(n));
        for (const bool bInversion : {false, true}) {
            m_pWnd->SetColorMapInversion(bInversion);
            SaveWindow(QString("map-") + names[n] + (bInversion ? "-inverted" : ""));
        }
    }
}

TEST_F(ImagePictures, ToolBarAndStatusBar)
{
    ShowScene(KxPixelFormat_BGR8);
    Dialog().resize(900, 400);
    m_pWnd->SetBuiltInDrawingToolbar(true);
    QCursor::setPos(Dialog().mapToGlobal(QPoint(260, 200)));
    EXPECT_TRUE(PumpUntil([this] {
        QStringList listText;
        for (const QLabel* const pLabel : Dialog().findChildren<QLabel*>())
            listText += pLabel->text();
        return listText.join(' ').contains("BGR8");
    }));
    SaveWindow("toolbar-without-tool");
    CDrawingToolBar& toolBar = *Dialog().findChild<CDrawingToolBar*>();
    toolBar.setEnabled(true);
    SaveWindow("toolbar");
}

} // namespace
} // namespace KxTest
