// SPDX-License-Identifier: Apache-2.0
#include "HelpPage.h"

#include "ActionTable.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QIcon>
#include <QMessageBox>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace
{

QString TranslatedHelp(const char* szText) { return QCoreApplication::translate("Help", szText); }

constexpr const char* kMouse[][2] = {
    {QT_TRANSLATE_NOOP("Help", "Drag"),
     QT_TRANSLATE_NOOP("Help", "moves the image while no drawing tool is chosen")},
    {QT_TRANSLATE_NOOP("Help", "Middle button"), QT_TRANSLATE_NOOP("Help", "moves the image always")},
    {QT_TRANSLATE_NOOP("Help", "Wheel"), QT_TRANSLATE_NOOP("Help", "scrolls up and down")},
    {QT_TRANSLATE_NOOP("Help", "Ctrl and wheel"), QT_TRANSLATE_NOOP("Help", "zooms where the mouse is")},
    {QT_TRANSLATE_NOOP("Help", "Right button"),
     QT_TRANSLATE_NOOP("Help", "opens the menu of the image, or of what is drawn on it")},
};

QString MouseAsHtml()
{
    QString strHtml = "<table cellspacing='6'>";
    for (const auto& row : kMouse)
        strHtml += QString("<tr><td><b>%1</b></td><td>%2</td></tr>")
                       .arg(TranslatedHelp(row[0]).toHtmlEscaped(), TranslatedHelp(row[1]).toHtmlEscaped());
    return strHtml + "</table>";
}

} // namespace

void ShowHelp(QWidget* pParent, const ActionTable& actions)
{
    auto* const pDialog = new QDialog(pParent);
    pDialog->setObjectName("help");
    pDialog->setAttribute(Qt::WA_DeleteOnClose);
    pDialog->setWindowTitle(TranslatedHelp(QT_TRANSLATE_NOOP("Help", "Mouse and keys")));
    auto* const pText = new QTextBrowser(pDialog);
    pText->setAccessibleName(pDialog->windowTitle());
    pText->setHtml("<h3>" + TranslatedHelp(QT_TRANSLATE_NOOP("Help", "Mouse over the image")) + "</h3>" +
                   MouseAsHtml() + "<h3>" + TranslatedHelp(QT_TRANSLATE_NOOP("Help", "Keys")) + "</h3>" +
                   actions.KeysAsHtml());
    auto* const pButtons = new QDialogButtonBox(QDialogButtonBox::Close, pDialog);
    QObject::connect(pButtons, &QDialogButtonBox::rejected, pDialog, &QDialog::reject);
    auto* const pLayout = new QVBoxLayout(pDialog);
    pLayout->addWidget(pText);
    pLayout->addWidget(pButtons);
    pDialog->resize(520, 620);
    pDialog->show();
}

void ShowAbout(QWidget* pParent)
{
    auto* const pBox = new QMessageBox(pParent);
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->setWindowTitle(TranslatedHelp(QT_TRANSLATE_NOOP("Help", "About the viewer")));
    pBox->setIconPixmap(pParent->windowIcon().pixmap(64));
    pBox->setText(TranslatedHelp(QT_TRANSLATE_NOOP("Help", "KxApi viewer %1")).arg(KX_VERSION));
    pBox->setInformativeText(TranslatedHelp(QT_TRANSLATE_NOOP(
        "Help", "Live images of GenICam cameras in the windows of KxApi.\nApache License 2.0")));
    pBox->open();
}
