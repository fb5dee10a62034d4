// SPDX-License-Identifier: Apache-2.0
// Windows of the SDK as parts of a Qt program's own window: the live image, and beside it the camera's
// features.
#include "FirstCamera.h"

#include <KxApi_GUI/KxApi_GUI.h>
#include <KxApi_GUI/KxWndPtrList.h>

#include <QApplication>
#include <QHBoxLayout>
#include <QMainWindow>
#include <QSplitter>
#include <QTimer>

using namespace KxApi;

// A place for a child: a widget with a layout, into which the child goes.
static QWidget* NewPlace(QSplitter& splitter)
{
    auto* const pPlace = new QWidget(&splitter);
    auto* const pLayout = new QHBoxLayout(pPlace);
    pLayout->setContentsMargins(0, 0, 0, 0);
    return pPlace;
}

int main(int argc, char** argv)
try {
    const QApplication app(argc, argv);
    const CKxApiAutoInitTerm sdk;
    Samples::FirstCamera camera; // outlives the window that shows its features
    IKxStream& stream = camera.Stream();

    QMainWindow mainWindow;
    auto* const pSplitter = new QSplitter(&mainWindow);
    mainWindow.setCentralWidget(pSplitter);
    mainWindow.resize(1200, 700);

    const CIKxWndPtrT<IKxImageDisplayWnd> image(CreateIKxWnd(KxWindowType_ImageDisplay));
    image->SetZoomMode(KxZoomMode_FitToTheWindow);
    image->Show(NewPlace(*pSplitter), KxWindowMode_Child);

    const CIKxWndPtrT<IKxNodeMapDisplayWnd> features(CreateIKxWnd(KxWindowType_NodeMapDisplay));
    features->RegisterINode(camera.Features().GetNode("Root"), "");
    features->Show(NewPlace(*pSplitter), KxWindowMode_Child);
    pSplitter->setSizes({800, 400});
    mainWindow.show();

    Samples::ForEachImage toWindow([&](IKxStreamImage& frame) { image->RegisterIKxImage(&frame); });
    stream.StartAcquisition(&toWindow, Samples::ImagesOf(argc, argv));
    QTimer timer; // looks whether that was the last image
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (!stream.IsAcquiring())
            mainWindow.close(); // the last window of the program, which ends with it
    });
    timer.start(10);
    const int nResult = QApplication::exec();
    stream.StopAcquisition(); // before the windows go
    std::cout << stream.GetStatistics().nDelivered << " images\n";
    return nResult;
} catch (const GenICam::GenericException& e) {
    std::cerr << e.GetDescription() << "\n";
    return 1;
}
