// SPDX-License-Identifier: Apache-2.0
// window-pictures FOLDER: writes pictures of the windows, the image window in all its looks, for people to
// judge. On Qt's offscreen platform, unless QT_QPA_PLATFORM names another one.
#include "DrawingPictures.h"

#include <GenApi/GenApi.h>
#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>
#include <KxApi_IP/IKxPixelFormatConverter.h>
#include <KxApi_IP/KxApi_IP.h>
#include <KxApi_IP/KxImageGraph.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>

#include <QDir>
#include <QMenu>
#include <QPainter>
#include <QWidget>
#include <cstdio>
#include <stdexcept>

namespace
{

using namespace KxApi;
using BufferPtr = CKxAutoPtr<IKxImageBufferReleasable>;

/// A scene with edges, a ramp and colours.
void PaintScene(IKxImage& image)
{
    const auto nWidth = static_cast<int>(image.GetImageWidth()),
               nHeight = static_cast<int>(image.GetImageHeight());
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
}

class CPictures
{
public:
    explicit CPictures(QString strFolder)
        : m_strFolder(std::move(strFolder))
    {
        m_pWnd->SetPosition(20, 20, 520, 400);
        m_pWnd->SetUserStatusBarText("Camera 1, 30 images a second");
        m_pWnd->Show(nullptr, KxWindowMode_Modaless);
        m_pScene->CreateBuffer(640, 480, KxPixelFormat_RGB8, KxMemoryInitialization_None);
        PaintScene(*m_pScene->GetIKxImage());
    }

    void ShowScene(EKxPixelFormatNamingConvention_t ePixelFormat)
    {
        const BufferPtr pImage(CreateIKxImageBuffer(nullptr));
        const CKxAutoPtr<IKxConverterReleasable, IKxPixelFormatConverter> pConverter(
            CreateIKxConverter(KxConverterType_PixelFormat));
        pConverter->SetDestinationPixelFormat(ePixelFormat);
        pConverter->Convert(m_pScene->GetIKxImage(), pImage.Get());
        m_pWnd->RegisterIKxImage(pImage->GetIKxImage());
    }
    /// An image that no converter makes a picture of.
    void ShowData()
    {
        const BufferPtr pImage(CreateIKxImageBuffer(nullptr));
        pImage->CreateBuffer(64, 64, KxPixelFormat_Data32, KxMemoryInitialization_Zero);
        m_pWnd->RegisterIKxImage(pImage->GetIKxImage());
    }

    /// Shows another window, and saves it once it has settled.
    void SaveOther(const QString& strName, IKxWnd& wnd) const
    {
        wnd.Show(nullptr, KxWindowMode_Modaless);
        for (int i = 0; i < 20; ++i)
            processEventGUI(false, 100);
        Save(strName, *static_cast<QWidget*>(wnd.GetWindowHandle()));
        wnd.Close();
    }
    void Save(const QString& strName, QWidget& widget) const
    {
        if (!widget.grab().save(m_strFolder + "/" + strName + ".png"))
            throw std::runtime_error("can't write " + strName.toStdString() + ".png");
    }
    void Save(const QString& strName) const
    {
        for (int i = 0; i < 10; ++i)
            processEventGUI(false, 100);
        Save(strName, Dialog());
    }
    void SaveMenus() const
    {
        for (QMenu* const pMenu : Dialog().findChildren<QMenu*>()) {
            if (!pMenu->title().isEmpty())
                Save("menu-" + QString(pMenu->title()).remove('&').replace(' ', '-'), *pMenu);
        }
    }

    IKxImageDisplayWnd& Wnd() { return *m_pWnd; }
    IKxImage* Scene() { return m_pScene->GetIKxImage(); }
    QWidget& Dialog() const { return *static_cast<QWidget*>(m_pWnd->GetWindowHandle()); }

private:
    const QString m_strFolder;
    const CIKxWndPtrT<IKxImageDisplayWnd> m_pWnd{CreateIKxWnd(KxWindowType_ImageDisplay)};
    const BufferPtr m_pScene{CreateIKxImageBuffer(nullptr)};
};

void WritePictures(CPictures& pictures)
{
    IKxImageDisplayWnd& wnd = pictures.Wnd();
    pictures.Save("no-image");
    pictures.ShowScene(KxPixelFormat_BGR8);
    for (const double dMagnification : {0.25, 1.0, 16.0}) {
        wnd.SetManualZoomMagnification(dMagnification);
        pictures.Save("zoom-" + QString::number(dMagnification));
    }
    pictures.SaveMenus();
    wnd.SetManualZoomMagnification(0.5);
    for (unsigned n = 0; n <= KxBackgroundStyle_DiagCross; ++n) {
        wnd.SetBackgroundStyle(static_cast<_EKxBackgroundStyle_t>(n));
        pictures.Save("background-" + QString::number(n));
    }
    wnd.SetZoomMode(KxZoomMode_FitToTheWindow);
    for (const auto ePixelFormat : {KxPixelFormat_RGB8, KxPixelFormat_BGRa8, KxPixelFormat_RGB10p32,
                                    KxPixelFormat_Mono12, KxPixelFormat_Mono8})
    {
        pictures.ShowScene(ePixelFormat);
        pictures.Save(QString("format-") + GetIKxPixelFormatInfo(ePixelFormat)->GetName().c_str());
    }
    for (int n = 0; n < 6; ++n) {
        wnd.SetColorMapType(static_cast<EKxColorMapType_t>(n / 2));
        wnd.SetColorMapInversion(n % 2 != 0);
        pictures.Save("colours-" + QString::number(n / 2) + (n % 2 ? "-inverted" : ""));
    }
    pictures.ShowData();
    pictures.Save("format-not-shown");
    pictures.ShowScene(KxPixelFormat_BGR8);
    wnd.SetBuiltInDrawingToolbar(true);
    pictures.Dialog().resize(900, 400);
    pictures.Save("toolbar");
}

void WriteOtherWindows(CPictures& pictures)
{
    const CIKxWndPtrT<IKxGraphDisplayWnd> pGraph(CreateIKxWnd(KxWindowType_GraphDisplay));
    const CKxAutoPtr<IKxGraphDataBufferListResizable> pList(CreateIKxGraphDataBufferListResizable(nullptr));
    AppendHistogram(pictures.Scene(), nullptr, pList.Get());
    pGraph->RegisterIKxGraphDataBufferList(pList.Get());
    pGraph->SetPosition(20, 20, 640, 420);
    pictures.SaveOther("graph", *pGraph);

    const CIKxWndPtrT<IKxNodeMapDisplayWnd> pNodes(CreateIKxWnd(KxWindowType_NodeMapDisplay));
    pNodes->RegisterINode(pictures.Wnd().GetINodeMap()->GetNode("Root"), "");
    pNodes->SetPosition(20, 20, 520, 640);
    pictures.SaveOther("nodemap", *pNodes);

    CIKxSystemPtrArray systems;
    OpenIKxSystems(systems);
    const CIKxWndPtrT<IKxDeviceSelectionWnd> pDevices(CreateIKxWnd(KxWindowType_DeviceSelection));
    pDevices->RegisterTargetIKxSystemList(systems);
    pDevices->SetPosition(20, 20, 900, 480);
    pictures.SaveOther("devices", *pDevices);
}

} // namespace

int main(int nArguments, char** pArguments)
{
    if (nArguments != 2 || !QDir().mkpath(pArguments[1])) {
        std::fprintf(stderr, "usage: window-pictures FOLDER\n");
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    try {
        const CKxApiAutoInitTerm sdk;
        CPictures pictures(QString::fromLocal8Bit(pArguments[1]));
        WritePictures(pictures);
        WriteDrawingPictures(
            pictures.Wnd(), pictures.Dialog(), [&](const QString& strName) { pictures.Save(strName); },
            [&](const QString& strName, QWidget& widget) { pictures.Save(strName, widget); });
        WriteOtherWindows(pictures);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "window-pictures: %s\n", e.what());
        return 1;
    }
    return 0;
}
