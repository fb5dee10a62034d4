// SPDX-License-Identifier: Apache-2.0
#include "Display.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace
{

constexpr int kFailed = 1;

// What the platform said before it gave up; its own reason is the useful line, Qt's last word is a page.
std::string& FirstComplaint()
{
    static std::string text;
    return text;
}

void OnMessage(QtMsgType eType, const QMessageLogContext& /*context*/, const QString& strText)
{
    if (eType != QtFatalMsg) {
        if (FirstComplaint().empty())
            FirstComplaint() = strText.toStdString();
        return;
    }
    const std::string why = FirstComplaint().empty() ? strText.toStdString() : FirstComplaint();
    std::fprintf(
        stderr,
        "kxviewer: no window can be shown here: %s; see kxviewer --help for what works without a display\n",
        why.substr(0, why.find('\n')).c_str());
    std::_Exit(kFailed);
}

} // namespace

std::unique_ptr<QApplication> MakeApplication(int& argc, char** argv)
{
    // Screens of any scale factor; pictures are drawn for each.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    const QtMessageHandler before = qInstallMessageHandler(OnMessage);
    auto application = std::make_unique<QApplication>(argc, argv);
    qInstallMessageHandler(before);
    // Under these names settings are kept.
    QApplication::setOrganizationName("KxApi");
    QApplication::setApplicationName("kxviewer");
    return application;
}
