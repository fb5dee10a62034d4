// SPDX-License-Identifier: Apache-2.0
#include "DescriptionViewer.h"

#include "FeaturePanel.h"
#include "LoadedDescription.h"
#include "MainWindow.h"
#include "Pictures.h"

#include <KxApi_TL/KxApi_TL.h>

#include <QApplication>
#include <QFileInfo>
#include <QMainWindow>
#include <QTimer>
#include <iostream>

int ShowDescription(const std::string& strFile, const std::string& strPictures)
{
    constexpr int kPaintMs = 500; // what is seen at once has been read and painted within this time
    Kx::LoadedDescription description(strFile);
    const KxApi::CKxApiAutoInitTerm sdk;
    QMainWindow window;
    auto* const pPanel = new FeaturePanel(&window);
    window.setCentralWidget(pPanel);
    window.setWindowTitle(
        MainWindow::tr("%1 - KxApi viewer").arg(QFileInfo(QString::fromStdString(strFile)).fileName()));
    ;
    window.resize(620, 900);
    window.show();
    const auto& map = description.Map();
    pPanel->SetMaps({{MainWindow::tr("Description"),
                      QString::fromUtf8(map._GetModelName().c_str()),
                      {},
                      {},
                      [&] { return map._Ptr; }},
                     {MainWindow::tr("This window"), "NodeMapWindow", {}, {}, [=] {
                          return pPanel->Window().GetINodeMap();
                      }}});
    int nResult = 0;
    if (!strPictures.empty())
        QTimer::singleShot(kPaintMs, [&] {
            try {
                for (const QString& strPath :
                     SavePictures(QString::fromStdString(strPictures), {{"features", &window}}))
                    std::cout << "saved " << strPath.toStdString() << "\n";
            } catch (const GenICam::GenericException& e) {
                std::cerr << "kxviewer: " << e.GetDescription() << "\n";
                nResult = 1;
            }
            QApplication::quit();
        });
    QApplication::exec();
    pPanel->SetMaps({}); // before the map goes
    return nResult;
}
