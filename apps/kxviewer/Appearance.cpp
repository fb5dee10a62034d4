// SPDX-License-Identifier: Apache-2.0
#include "Appearance.h"

#include <QApplication>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>
#include <QToolTip>
#include <QTranslator>

namespace
{

struct ColourRow
{
    QPalette::ColorRole eRole;
    QRgb colour;
    QRgb disabled;
};

constexpr ColourRow kDark[] = {
    {QPalette::Window, 0xff363a3f, 0xff363a3f},      {QPalette::WindowText, 0xffe3e5e8, 0xff85888c},
    {QPalette::Base, 0xff1c1e20, 0xff2c2f33},        {QPalette::AlternateBase, 0xff25282b, 0xff25282b},
    {QPalette::Text, 0xffe3e5e8, 0xff85888c},        {QPalette::Button, 0xff4a4f55, 0xff3e4247},
    {QPalette::ButtonText, 0xffe3e5e8, 0xff85888c},  {QPalette::BrightText, 0xffff6060, 0xffff6060},
    {QPalette::Highlight, 0xff2f6fb5, 0xff4b4f55},   {QPalette::HighlightedText, 0xffffffff, 0xffb0b3b8},
    {QPalette::Link, 0xff6cb0ff, 0xff6cb0ff},        {QPalette::ToolTipBase, 0xff3c4045, 0xff3c4045},
    {QPalette::ToolTipText, 0xffe3e5e8, 0xffe3e5e8}, {QPalette::PlaceholderText, 0xff8d9196, 0xff6d7176},
    {QPalette::Light, 0xff4c5056, 0xff4c5056},       {QPalette::Midlight, 0xff42464b, 0xff42464b},
    {QPalette::Mid, 0xff232528, 0xff232528},         {QPalette::Dark, 0xff1a1c1e, 0xff1a1c1e},
    {QPalette::Shadow, 0xff0e0f10, 0xff0e0f10},
};

} // namespace

/// The resources of a static library are there once this has been called, outside of any namespace.
static void InitResources() { Q_INIT_RESOURCE(kxviewer); }

bool IsDark() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

void SetDark(bool bDark)
{
    if (bDark == IsDark())
        return;
    QStyle* const pStyle = QStyleFactory::create("Fusion"); // the style that goes wholly by the palette
    QPalette palette = pStyle->standardPalette();
    if (bDark) {
        for (const ColourRow& row : kDark) {
            palette.setColor(row.eRole, QColor(row.colour));
            palette.setColor(QPalette::Disabled, row.eRole, QColor(row.disabled));
        }
    }
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    // Last, since widgets with a style sheet take a palette only along with a style.
    QApplication::setStyle(pStyle);
}

QIcon ViewerIcon()
{
    InitResources();
    return QIcon::fromTheme("kxviewer", QIcon(":/kxviewer.png"));
}

void SetLanguage(const QString& strLanguage)
{
    InitResources();
    const QLocale locale = strLanguage.isEmpty() ? QLocale() : QLocale(strLanguage);
    QLocale::setDefault(locale); // numbers are written as the words beside them
    const auto install = [](const QLocale& language, const QString& strName, const QString& strFolder) {
        auto* const pTranslator = new QTranslator(qApp);
        if (pTranslator->load(language, strName, "_", strFolder))
            QApplication::installTranslator(pTranslator);
        else
            delete pTranslator;
    };
    // English has plurals too, and stands in for languages that there is nothing of.
    install(QLocale(QLocale::English), "kxviewer", ":/translations");
    install(locale, "qtbase", QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    // The SDK's libraries bring no translations along; Qt's come in a package that may be missing.
    for (const char* const szName : {"qt", "windows", "kxviewer"})
        install(locale, szName, ":/translations");
}
